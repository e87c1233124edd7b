#include "treefilter.h"

#include "latestmessagesource.h"
#include "message.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "senderrow.h"
#include "subjectrow.h"
#include "treerow.h"
#include "treerows.h"

#include <QElapsedTimer>
#include <QSignalBlocker>

#include <algorithm>

static const int FollowMilliseconds = 50;
static const int MostMilliseconds = 8;   // of the event loop at a time
static const int FirstMilliseconds = 15; // when the text changed: what somebody waits for

/** What a row of a type or of a sender is about. */
static Subject subjectOf(const QTreeWidgetItem* item)
{
    if (const auto* const row = dynamic_cast<const SubjectRow*>(item))
        return row->getSubject();
    const auto* const sender = dynamic_cast<const SenderRow*>(item);
    return {nullptr, sender ? sender->getSender() : QString()};
}

TreeFilter::TreeFilter(MessageTreeWidget* tree, TreeRows* rows, LatestMessageSource* latest, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_rows(rows)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &TreeFilter::followChanges);
    connect(latest, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(tree->model(), &QAbstractItemModel::rowsInserted, this, &TreeFilter::processRows);
    const auto lookAgain = [this]() {
        if (isActive())
            updateAll();
    };
    connect(tree->model(), &QAbstractItemModel::columnsInserted, this, lookAgain);
    connect(rows, &TreeRows::rearranged, this, [this, lookAgain]() {
        m_expanded.clear();
        m_matches.clear();
        lookAgain();
    });
}

void TreeFilter::setText(const QString& text)
{
    const bool wasActive = isActive();
    m_matcher.setText(text);
    m_changed.clear();
    m_matches.clear();
    m_isLooking = false;
    if (isActive()) {
        updateAll();
        return;
    }
    m_matchCount = 0;
    if (wasActive) {
        m_tree->setUpdatesEnabled(false);
        for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
            showAll(m_tree->topLevelItem(i));
        m_tree->setUpdatesEnabled(true);
        m_expanded.clear();
        // Scrolling to a row would expand everything that it lies in.
        const QTreeWidgetItem* above = m_tree->currentItem();
        while (above && (!above->parent() || above->parent()->isExpanded()))
            above = above->parent();
        if (!above && m_tree->currentItem())
            m_tree->scrollToItem(m_tree->currentItem());
    }
    Q_EMIT matchCountChanged(0);
}

void TreeFilter::processMessage(const Message* message)
{
    if (!isActive() || m_matcher.isPath())
        return;
    m_changed.insert(m_rows->getSubject(message->getInfo(), message->getSender()));
    if (!m_timer.isActive())
        m_timer.start(FollowMilliseconds);
}

void TreeFilter::processRows(const QModelIndex& parent, int first, int last)
{
    if (!isActive())
        return;
    if (!parent.isValid())
        for (int i = first; i <= last; ++i)
            note(m_tree->topLevelItem(i));
    else
        note(static_cast<QTreeWidgetItem*>(parent.internalPointer())); // as in every index of this model
    if (!m_timer.isActive())
        m_timer.start(FollowMilliseconds);
}

/** The row of a type or a sender in which @p item lies is to be looked at. */
void TreeFilter::note(QTreeWidgetItem* item)
{
    while (item && !dynamic_cast<SubjectRow*>(item) && !dynamic_cast<SenderRow*>(item))
        item = item->parent();
    if (item)
        m_changed.insert(subjectOf(item));
}

void TreeFilter::followChanges()
{
    QElapsedTimer timer;
    timer.start();
    if (m_isLooking) {
        lookFor(MostMilliseconds);
        return;
    }
    while (!m_changed.isEmpty() && timer.elapsed() < MostMilliseconds) {
        const Subject subject = *m_changed.constBegin();
        m_changed.erase(m_changed.constBegin());
        follow(subject);
    }
    if (!m_changed.isEmpty())
        m_timer.start(FollowMilliseconds);
    countMatches();
}

/** Looks again at the row of a type or a sender, and at the sender that it lies below. */
void TreeFilter::follow(const Subject& subject)
{
    SubjectRow* const row = subject.info ? m_rows->find(subject) : nullptr;
    SenderRow* const sender = m_rows->getSenderRows().value(subject.sender);
    if (row)
        updateType(row, wordsAbove(row));
    if (sender && (!row || sender->isHidden() != (matchesIn(sender) == 0)))
        updateSender(sender);
}

void TreeFilter::updateAll()
{
    m_matches.clear();
    m_changed.clear();
    m_toLookAt.clear();
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        m_toLookAt.append(subjectOf(m_tree->topLevelItem(i)));
    m_next = 0;
    m_isLooking = true;
    lookFor(FirstMilliseconds);
}

void TreeFilter::lookFor(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    m_tree->setUpdatesEnabled(false);
    while (m_next < m_toLookAt.size() && timer.elapsed() < milliseconds)
        follow(m_toLookAt.at(m_next++));
    m_tree->setUpdatesEnabled(true);
    m_isLooking = m_next < m_toLookAt.size();
    if (m_isLooking || !m_changed.isEmpty())
        m_timer.start(m_isLooking ? 0 : FollowMilliseconds);
    countMatches();
    if (!m_isLooking && !m_toLookAt.isEmpty()) {
        m_toLookAt.clear();
        Q_EMIT matchCountChanged(m_matchCount); // also the same one, which is all there is now
    }
}

void TreeFilter::countMatches()
{
    int count = 0;
    for (const int matches : std::as_const(m_matches))
        count += matches;
    if (count == m_matchCount && isActive())
        return;
    m_matchCount = count;
    Q_EMIT matchCountChanged(count);
}

RowMatcher::Words TreeFilter::wordsAbove(const QTreeWidgetItem* row) const
{
    const auto* const sender = row->parent() ? dynamic_cast<const SenderRow*>(row->parent()) : nullptr;
    return sender ? m_matcher.findInName(sender->getSender()) : 0;
}

int TreeFilter::matchesIn(const QTreeWidgetItem* row) const
{
    int matches = m_matches.value(subjectOf(row));
    const auto* const sender = dynamic_cast<const SenderRow*>(row);
    for (int i = 0; sender && i < row->childCount(); ++i)
        matches += m_matches.value(subjectOf(row->child(i)));
    return matches;
}

bool TreeFilter::updateSender(SenderRow* row)
{
    const RowMatcher::Words words = m_matcher.findInName(row->getSender());
    const bool isMatch = !m_matcher.isPath() && words == m_matcher.getAllWords();
    m_matches.insert(subjectOf(row), isMatch ? 1 : 0);
    bool below = false;
    if (isMatch) {
        for (int i = 0; i < row->childCount(); ++i)
            showAll(row->child(i));
    } else {
        if (canMatchBelow(row, words))
            m_rows->open(row);
        for (int i = 0; i < row->childCount(); ++i)
            if (auto* const type = dynamic_cast<SubjectRow*>(row->child(i)))
                below = updateType(type, words) || below;
    }
    if (row->isHidden() == (isMatch || below))
        row->setHidden(!isMatch && !below);
    if (below)
        expand(row);
    return isMatch || below;
}

bool TreeFilter::updateType(SubjectRow* row, RowMatcher::Words above)
{
    int matches = 0;
    bool shown = above == m_matcher.getAllWords() && !m_matcher.isPath(); // below its sender, which is looked for
    // Below a type that is hidden itself, rows stay as they are: fewer rows for the view to remember as hidden.
    const RowMatcher::Words names = above | m_matcher.findInName(row->getNameText());
    if (!shown && (row->isFilled() || canMatchBelow(row->getSubject(), names))) {
        if (!m_matcher.isPath() || m_matcher.mayMatch(row->getSubject().info)) {
            m_rows->open(row);
            shown = updateRow(row, above, false, &matches);
        }
    } else if (!shown && !m_matcher.isPath() && isMatch(row, &above)) {
        shown = true;
        matches = 1;
    }
    m_matches.insert(row->getSubject(), matches);
    if (row->isHidden() == shown)
        row->setHidden(!shown);
    return shown;
}

/** Whether a row of a field may match; rather once too often, as it is asked before there are any. */
bool TreeFilter::canMatchBelow(const Subject& subject, RowMatcher::Words above) const
{
    if (m_matcher.isPath())
        return m_matcher.mayMatch(subject.info);
    const RowMatcher::Words inFields = m_matcher.findInFields(subject.info);
    const RowMatcher::Words inNames = above | inFields;
    if (inFields != 0 && inNames == m_matcher.getAllWords())
        return true;
    const MessageReference latest = m_rows->getLatest(subject);
    const RowMatcher::Words inValues = latest.isNull() ? 0 : m_matcher.findInValues(latest.get(), isRawShown());
    return (inFields | inValues) != 0 && (inNames | inValues) == m_matcher.getAllWords();
}

bool TreeFilter::canMatchBelow(const SenderRow* row, RowMatcher::Words above) const
{
    if (row->isFilled())
        return true;
    for (const MessageInfo* info : row->getTypes()) {
        const RowMatcher::Words name = m_matcher.isPath() ? 0 : m_matcher.findInName(info->getName());
        if (name != 0 && (above | name) == m_matcher.getAllWords())
            return true;
        if (canMatchBelow({info, row->getSender()}, above | name))
            return true;
    }
    return false;
}

bool TreeFilter::isRawShown() const
{
    return m_tree->hasColumn(MessageTreeWidget::RawValueColumn);
}

bool TreeFilter::isMatch(QTreeWidgetItem* item, RowMatcher::Words* names) const
{
    if (m_matcher.isPath())
        return m_matcher.matches(TreeRow(item));
    RowMatcher::Words own = 0;
    const QVector<MessageTreeWidget::ColumnType> columns = m_tree->getColumns();
    auto* const row = dynamic_cast<AbstractMessageTreeWidgetItem*>(item);
    // What the row of a type says beside its name is about its messages and no value of theirs.
    for (int column = 0; column < columns.size() && row && row->getFieldInfo(); ++column)
        if (columns.at(column) == MessageTreeWidget::ValueColumn ||
            columns.at(column) == MessageTreeWidget::RawValueColumn)
            own |= m_matcher.findInValue(item->text(column));
    const RowMatcher::Words inName = row ? m_matcher.findInName(row->getNameText()) : 0;
    const RowMatcher::Words all = m_matcher.getAllWords();
    const bool matches = ((*names | own | inName) == all) && (own | inName) != 0;
    *names |= inName;
    return matches;
}

// Returns whether the row is to be shown. Words found in the names above count for a row, values above do not.
bool TreeFilter::updateRow(QTreeWidgetItem* item, RowMatcher::Words above, bool insideMatch, int* matches)
{
    const bool matched = isMatch(item, &above);
    *matches += matched ? 1 : 0;
    // What lies below a name that was looked for is shown with it; below a value it would only be in the way.
    insideMatch = insideMatch || (matched && (m_matcher.isPath() || above == m_matcher.getAllWords()));
    bool childMatches = false;
    QVector<QPair<QTreeWidgetItem*, bool>> children;
    for (int i = 0; i < item->childCount(); ++i) {
        const int before = *matches;
        const bool shown = updateRow(item->child(i), above, insideMatch, matches);
        childMatches = childMatches || *matches > before;
        children.append({item->child(i), shown});
    }
    if (!insideMatch && !matched && !childMatches)
        return false;
    for (const auto& child : std::as_const(children))
        if (child.first->isHidden() == child.second)
            child.first->setHidden(!child.second);
    if (childMatches)
        expand(item);
    return true;
}

void TreeFilter::expand(QTreeWidgetItem* item)
{
    if (item->isExpanded() || m_expanded.contains(item))
        return; // what the user collapsed meanwhile stays so
    const QSignalBlocker blocker(m_tree);
    item->setExpanded(true);
    m_expanded.insert(item);
}

void TreeFilter::showAll(QTreeWidgetItem* item)
{
    if (item->isHidden())
        item->setHidden(false);
    if (m_expanded.contains(item) && item->isExpanded()) {
        const QSignalBlocker blocker(m_tree);
        item->setExpanded(false);
    }
    for (int i = 0; i < item->childCount(); ++i)
        showAll(item->child(i));
}

void TreeFilter::collectMatches(QTreeWidgetItem* item, RowMatcher::Words above, QList<QTreeWidgetItem*>* matches) const
{
    if (isMatch(item, &above))
        matches->append(item);
    for (int i = 0; i < item->childCount(); ++i)
        collectMatches(item->child(i), above, matches);
}

// Where a row stands: comparing two of these tells which row is above the other.
static QVector<int> wayTo(const MessageTreeWidget* tree, const QTreeWidgetItem* item)
{
    QVector<int> way;
    for (auto* step = const_cast<QTreeWidgetItem*>(item); step; step = step->parent())
        way.prepend(step->parent() ? step->parent()->indexOfChild(step) : tree->indexOfTopLevelItem(step));
    return way;
}

bool TreeFilter::goToMatch(bool forward)
{
    QList<QTreeWidgetItem*> matches;
    for (int i = 0; i < m_tree->topLevelItemCount() && isActive(); ++i) {
        QTreeWidgetItem* const top = m_tree->topLevelItem(i);
        if (matchesIn(top) == 0)
            continue;
        if (!dynamic_cast<SenderRow*>(top))
            collectMatches(top, 0, &matches);
        else if (m_matches.value(subjectOf(top)) > 0)
            matches.append(top);
        else
            for (int j = 0; j < top->childCount(); ++j)
                if (matchesIn(top->child(j)) > 0)
                    collectMatches(top->child(j), wordsAbove(top->child(j)), &matches);
    }
    if (matches.isEmpty())
        return false;
    const QVector<int> here = wayTo(m_tree, m_tree->currentItem());
    const auto isAbove = [this](const QTreeWidgetItem* match, const QVector<int>& place) {
        const QVector<int> way = wayTo(m_tree, match);
        return std::lexicographical_compare(way.begin(), way.end(), place.begin(), place.end());
    };
    const int count = int(matches.size());
    int next = int(std::lower_bound(matches.begin(), matches.end(), here, isAbove) - matches.begin());
    if (!forward)
        next += count - 1;
    else if (next < count && matches.at(next) == m_tree->currentItem())
        ++next;
    QTreeWidgetItem* const match = matches.at(next % count);
    for (QTreeWidgetItem* item = match->parent(); item; item = item->parent())
        if (!item->isExpanded())
            item->setExpanded(true); // this time it is what the user asks for
    m_tree->setCurrentItem(match);
    m_tree->scrollToItem(match);
    return true;
}

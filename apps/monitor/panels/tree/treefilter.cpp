#include "treefilter.h"

#include "latestmessagesource.h"
#include "message.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "treerow.h"

#include <QElapsedTimer>
#include <QSignalBlocker>

#include <algorithm>

static const int FollowMilliseconds = 50;
static const int MostMilliseconds = 8; // of the event loop at a time

static const MessageInfo* infoOf(const QTreeWidgetItem* row)
{
    const auto* const message = dynamic_cast<const MessageTreeWidgetItem*>(row);
    return message ? message->getMessageInfo() : nullptr;
}

TreeFilter::TreeFilter(MessageTreeWidget* tree, LatestMessageSource* latest, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
{
    m_timer.setSingleShot(true);
    m_timer.setInterval(FollowMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &TreeFilter::followChanges);
    connect(latest, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(tree->model(), &QAbstractItemModel::rowsInserted, this, &TreeFilter::processRows);
    connect(tree->model(), &QAbstractItemModel::columnsInserted, this, [this]() {
        if (isActive())
            updateAll();
    });
}

void TreeFilter::setText(const QString& text)
{
    const bool wasActive = isActive();
    m_matcher.setText(text);
    m_changed.clear();
    m_matches.clear();
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
    m_changed.insert(message->getInfo());
    if (!m_timer.isActive())
        m_timer.start();
}

void TreeFilter::processRows(const QModelIndex& parent, int first, int last)
{
    if (!isActive())
        return;
    if (!parent.isValid()) {
        for (int i = first; i <= last; ++i)
            m_changed.insert(infoOf(m_tree->topLevelItem(i)));
    } else {
        QModelIndex top = parent;
        while (top.parent().isValid())
            top = top.parent();
        m_changed.insert(infoOf(m_tree->topLevelItem(top.row())));
    }
    if (!m_timer.isActive())
        m_timer.start();
}

void TreeFilter::followChanges()
{
    QElapsedTimer timer;
    timer.start();
    for (int i = 0; i < m_tree->topLevelItemCount() && !m_changed.isEmpty(); ++i) {
        QTreeWidgetItem* const row = m_tree->topLevelItem(i);
        if (m_changed.remove(infoOf(row)))
            updateType(row);
        if (timer.elapsed() >= MostMilliseconds && !m_changed.isEmpty()) {
            m_timer.start();
            countMatches();
            return;
        }
    }
    m_changed.clear();
    countMatches();
}

void TreeFilter::updateAll()
{
    m_tree->setUpdatesEnabled(false);
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        updateType(m_tree->topLevelItem(i));
    m_tree->setUpdatesEnabled(true);
    countMatches();
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

bool TreeFilter::updateType(QTreeWidgetItem* row)
{
    int matches = 0;
    bool shown = false;
    // Below a type that is hidden itself, rows stay as they are: fewer rows for the view to remember as hidden.
    if (!m_matcher.isPath() || m_matcher.mayMatch(infoOf(row)))
        shown = updateRow(row, 0, false, &matches);
    m_matches.insert(infoOf(row), matches);
    if (row->isHidden() == shown)
        row->setHidden(!shown);
    return shown;
}

bool TreeFilter::isMatch(QTreeWidgetItem* item, RowMatcher::Words* names) const
{
    if (m_matcher.isPath())
        return m_matcher.matches(TreeRow(item));
    RowMatcher::Words own = 0;
    const QVector<MessageTreeWidget::ColumnType> columns = m_tree->getColumns();
    for (int column = 0; column < columns.size(); ++column)
        if (columns.at(column) == MessageTreeWidget::ValueColumn ||
            columns.at(column) == MessageTreeWidget::RawValueColumn)
            own |= m_matcher.findInValue(item->text(column));
    auto* const row = dynamic_cast<AbstractMessageTreeWidgetItem*>(item);
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
    for (int i = 0; i < m_tree->topLevelItemCount() && isActive(); ++i)
        if (m_matches.value(infoOf(m_tree->topLevelItem(i))) > 0)
            collectMatches(m_tree->topLevelItem(i), 0, &matches);
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

#include "treerows.h"

#include "desk.h"
#include "message.h"
#include "messagetreewidget.h"
#include "naturalorder.h"
#include "pinnedtypes.h"
#include "senderrow.h"
#include "subjectrow.h"

#include <QSettings>
#include <QSignalBlocker>

#include <algorithm>

static const int MostUnfoldedSenders = 4; // of a type; the rows of more than that start folded
static const int MostUnfoldedRows = 3000; // of types, by "Expand All"; nobody reads more
static const char* const ArrangementNames[] = {"type", "typeAndSender", "sender"};

namespace
{

/** What decides where a row stands among others. */
struct Place
{
    bool isPinned;
    QString name;
    QString sender;

    bool isBefore(const Place& other) const
    {
        if (isPinned != other.isPinned)
            return isPinned;
        const int names = NaturalOrder::compare(name, other.name);
        return names != 0 ? names < 0 : NaturalOrder::isBefore(sender, other.sender);
    }
};

Place placeOf(QTreeWidgetItem* item)
{
    if (auto* const row = dynamic_cast<SubjectRow*>(item))
        return {row->isPinned(), row->getSubject().info->getName(), row->getSubject().sender};
    if (auto* const row = dynamic_cast<SenderRow*>(item))
        return {row->isPinned(), row->getSender(), QString()};
    return {false, QString(), QString()};
}

} // namespace

TreeRows::TreeRows(MessageTreeWidget* tree, PinnedTypes* pins, Desk* desk, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_pins(pins)
    , m_desk(desk)
{
    MessageTypeModel* const types = desk->getTypes();
    connect(desk->getLatest(), SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(desk->getLatest(), &LatestMessageSource::senderChanged, this, [this]() {
        if (m_arrangement != ByType)
            makeRows();
    });
    connect(types, &MessageTypeModel::seen, this, &TreeRows::processSeen);
    connect(types, &MessageTypeModel::gone, this, [this](const QVector<Subject>& subjects) {
        set(subjects, false);
        followNames();
    });
    connect(types, &MessageTypeModel::inTreeRequested, this, &TreeRows::choose);
    connect(desk, &Desk::senderRenamed, this, &TreeRows::renameSender);
    connect(tree, &QTreeWidget::itemExpanded, this, &TreeRows::open);
    // The tree itself forgets at the end of the program what was folded.
    const auto remember = [this](QTreeWidgetItem* item) {
        auto* const row = dynamic_cast<SubjectRow*>(item);
        if (row)
            row->noteExpansion();
        if (row && row->isExpanded())
            m_folded.remove(PinnedTypes::getName({row->getSubject().info, QString()}));
        else if (row)
            m_folded.insert(PinnedTypes::getName({row->getSubject().info, QString()}));
    };
    connect(tree, &QTreeWidget::itemExpanded, this, remember);
    connect(tree, &QTreeWidget::itemCollapsed, this, remember);
    // What is chosen can be copied, and for that there has to be a message.
    connect(tree, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (auto* const row = dynamic_cast<SubjectRow*>(item))
            fill(row);
    });
}

Subject TreeRows::getSubject(const MessageInfo* info, const QString& sender) const
{
    return {info, m_arrangement == ByType ? QString() : sender};
}

void TreeRows::processMessage(const Message* message)
{
    const Subject from = {message->getInfo(), message->getSender()};
    if (m_arrangement == ByType && !m_subjects.contains(from))
        return; // a sender that the user does not want to see
    SubjectRow* const row = find(getSubject(from.info, from.sender));
    if (row && row->isFilled())
        row->processMessage(message);
}

void TreeRows::setArrangement(Arrangement arrangement)
{
    if (m_arrangement == arrangement)
        return;
    m_arrangement = arrangement;
    makeRows();
}

void TreeRows::makeRows()
{
    m_rows.clear();
    m_senderRows.clear();
    m_tree->clear();
    addRows(QVector<Subject>(m_subjects.cbegin(), m_subjects.cend()));
    Q_EMIT rearranged();
    Q_EMIT changed();
}

void TreeRows::forget(const MessageInfo* info)
{
    for (const QPointer<SubjectRow>& row : std::as_const(m_rows))
        if (row && row->getMessageInfo() == info)
            row->clear();
}

void TreeRows::set(const QVector<Subject>& subjects, bool inTree)
{
    QVector<Subject> added;
    for (const Subject& subject : subjects) {
        if (inTree == m_subjects.contains(subject))
            continue;
        if (inTree) {
            m_subjects.insert(subject);
            added.append(subject);
        } else {
            m_subjects.remove(subject);
            removeRow(subject);
        }
    }
    addRows(added);
    m_desk->getTypes()->setInTree(subjects, inTree);
    Q_EMIT changed();
}

bool TreeRows::isToBeShown(const Subject& subject) const
{
    const QString chosen = m_desk->getLatest()->getSender();
    return m_arrangement == ByType || chosen.isEmpty() || subject.sender == chosen;
}

SubjectRow* TreeRows::createRow(const Subject& subject)
{
    SubjectRow* const row = new SubjectRow(m_tree, subject);
    const bool several = m_desk->getTypes()->isFromSeveral(subject.info);
    row->setSenderShown(m_arrangement == ByTypeAndSender && several && !subject.sender.isEmpty());
    m_rows.insert(subject, row);
    row->setPinned(m_pins->isPinned(getPinned(row)));
    return row;
}

void TreeRows::addRows(const QVector<Subject>& subjects)
{
    if (m_arrangement == BySender) {
        addSenderRows(subjects);
        return;
    }
    Rows rows;
    for (const Subject& subject : subjects) {
        if (!isToBeShown(subject))
            continue;
        const Subject name = getSubject(subject.info, subject.sender);
        if (SubjectRow* const row = find(name)) { // of another sender of the type
            const MessageReference latest = m_desk->getLatest()->getLatest(subject.info, subject.sender);
            if (!latest.isNull() && row->isFilled())
                row->processMessage(latest.get());
        } else {
            rows.append(createRow(name));
        }
    }
    insertRows(m_tree->invisibleRootItem(), rows);
    followNames();
    for (AbstractMessageTreeWidgetItem* item : std::as_const(rows)) {
        auto* const row = dynamic_cast<SubjectRow*>(item);
        int senders = 0;
        if (m_arrangement == ByTypeAndSender)
            senders = m_desk->getTypes()->getSenderCount(row->getSubject().info);
        if (senders > MostUnfoldedSenders)
            continue;
        const bool isFolded = m_folded.contains(PinnedTypes::getName({row->getSubject().info, QString()}));
        fill(row);
        row->restoreExpansion();
        if (isFolded)
            row->setExpanded(false);
    }
}

void TreeRows::addSenderRows(const QVector<Subject>& subjects)
{
    QHash<QString, QVector<const MessageInfo*>> types;
    for (const Subject& subject : subjects)
        if (isToBeShown(subject))
            types[subject.sender].append(subject.info);
    Rows added;
    for (auto sender = types.constBegin(); sender != types.constEnd(); ++sender) {
        SenderRow*& row = m_senderRows[sender.key()];
        if (!row) {
            row = new SenderRow(m_tree, sender.key());
            row->setPinned(m_pins->isPinned(getPinned(row)));
            added.append(row);
        }
        for (const MessageInfo* info : *sender)
            row->addType(info);
        if (row->isFilled())
            insertRowsOfTypes(row, *sender);
    }
    insertRows(m_tree->invisibleRootItem(), added);
    if (m_senderRows.size() > MostUnfoldedSenders)
        return;
    for (AbstractMessageTreeWidgetItem* row : std::as_const(added))
        row->setExpanded(true);
}

void TreeRows::insertRowsOfTypes(SenderRow* parent, const QVector<const MessageInfo*>& types)
{
    Rows rows;
    for (const MessageInfo* info : types)
        rows.append(createRow({info, parent->getSender()}));
    insertRows(parent, rows);
}

void TreeRows::insertRows(QTreeWidgetItem* parent, Rows rows)
{
    std::vector<std::pair<Place, QTreeWidgetItem*>> sorted;
    for (AbstractMessageTreeWidgetItem* row : std::as_const(rows))
        sorted.emplace_back(placeOf(row), row);
    std::sort(sorted.begin(), sorted.end(),
              [](const auto& left, const auto& right) { return left.first.isBefore(right.first); });
    int place = 0;
    for (std::size_t i = 0; i < sorted.size();) {
        int end = parent->childCount();
        while (place < end) { // the first row that stands behind it
            const int middle = place + (end - place) / 2;
            if (placeOf(parent->child(middle)).isBefore(sorted[i].first))
                place = middle + 1;
            else
                end = middle;
        }
        // All that stand between the same two go there at once.
        QList<QTreeWidgetItem*> together{sorted[i++].second};
        const bool isLast = place == parent->childCount();
        const Place next = isLast ? Place() : placeOf(parent->child(place));
        while (i < sorted.size() && (isLast || sorted[i].first.isBefore(next)))
            together.append(sorted[i++].second);
        parent->insertChildren(place, together);
        place += int(together.size());
    }
    for (const auto& row : sorted)
        m_pins->mark(row.second, row.first.isPinned);
}

void TreeRows::removeRow(const Subject& subject)
{
    const Subject name = getSubject(subject.info, subject.sender);
    if (m_arrangement == ByType) {
        const bool isNeeded = std::any_of(m_subjects.cbegin(), m_subjects.cend(),
                                          [&](const Subject& other) { return other.info == subject.info; });
        SubjectRow* const row = find(name);
        const Message* const shown = isNeeded && row ? row->getDisplayedMessage() : nullptr;
        if (shown && shown->getSender() == subject.sender)
            row->processMessage(getLatest(name).get());
        if (isNeeded)
            return;
    }
    delete m_rows.take(name).data();
    SenderRow* const sender = m_senderRows.value(subject.sender);
    if (!sender)
        return;
    sender->removeType(subject.info);
    if (!sender->getTypes().isEmpty())
        return;
    m_senderRows.remove(subject.sender);
    delete sender;
}

// The row of all senders shows those that the user wants to see.
MessageReference TreeRows::getLatest(const Subject& subject) const
{
    const LatestMessageSource* const source = m_desk->getLatest();
    if (m_arrangement != ByType)
        return source->getLatest(subject.info, subject.sender);
    MessageReference latest = source->getLatest(subject.info);
    if (latest.isNull() || m_subjects.contains({subject.info, latest->getSender()}))
        return latest;
    latest = MessageReference();
    for (const Subject& each : m_subjects) {
        const MessageReference message =
            each.info == subject.info ? source->getLatest(each.info, each.sender) : MessageReference();
        if (!message.isNull() && (latest.isNull() || message->getTime() > latest->getTime()))
            latest = message;
    }
    return latest;
}

void TreeRows::fill(SubjectRow* row)
{
    if (row->isFilled())
        return;
    // A view that is to lay out its rows anyhow does not look for the place of each text that changes. It does so when
    // a delegate is set, whichever.
    m_tree->setItemDelegateForColumn(0, m_tree->itemDelegateForColumn(0));
    row->fill(getLatest(row->getSubject()).get());
}

void TreeRows::open(QTreeWidgetItem* item)
{
    if (auto* const row = dynamic_cast<SubjectRow*>(item)) {
        fill(row);
        return;
    }
    auto* const sender = dynamic_cast<SenderRow*>(item);
    if (!sender || sender->isFilled())
        return;
    sender->setFilled();
    insertRowsOfTypes(sender, sender->getTypes());
}

void TreeRows::reveal(const Subject& subject)
{
    SenderRow* const sender = m_senderRows.value(subject.sender);
    if (sender && subject.info)
        open(sender);
    QTreeWidgetItem* row = sender;
    if (subject.info)
        row = find(getSubject(subject.info, subject.sender));
    if (!row || row->isHidden())
        return;
    m_tree->setCurrentItem(row);
    m_tree->scrollToItem(row, QAbstractItemView::PositionAtTop);
}

/** The row of a field below another one, or with a number that of one of its values. */
static QTreeWidgetItem* rowBelow(QTreeWidgetItem* parent, const FieldInfo* field, int index)
{
    for (int i = 0; i < parent->childCount(); ++i) {
        auto* const row = dynamic_cast<AbstractMessageTreeWidgetItem*>(parent->child(i));
        if (row && row->getFieldInfo() == field && (index < 0 || row->getIndex() == index))
            return row;
    }
    return nullptr;
}

void TreeRows::revealField(const FieldPath& path, const QString& sender)
{
    const Subject subject{path.getMessageInfo(), sender};
    QTreeWidgetItem* found = find(getSubject(subject.info, subject.sender));
    if (!found) {
        reveal(subject); // which makes rows below that of a sender
        found = find(getSubject(subject.info, subject.sender));
    }
    if (!found)
        return;
    open(found);
    for (const FieldPath::Step& step : path.getSteps()) {
        QTreeWidgetItem* const whole = rowBelow(found, step.field, -1);
        if (!whole)
            break;
        found->setExpanded(true); // which may make rows
        QTreeWidgetItem* const row = step.index < 0 ? nullptr : rowBelow(whole, step.field, step.index);
        found = row ? row : whole;
    }
    m_tree->setCurrentItem(found);
    m_tree->scrollToItem(found);
}

static void expandBelow(QTreeWidgetItem* item)
{
    item->setExpanded(true);
    for (int i = 0; i < item->childCount(); ++i)
        if (item->child(i)->childCount() > 0)
            expandBelow(item->child(i));
}

void TreeRows::expandAll()
{
    const QSignalBlocker blocker(m_tree); // it is no wish about one type or another
    int left = MostUnfoldedRows;
    for (int i = 0; i < m_tree->topLevelItemCount() && left > 0; ++i) {
        QTreeWidgetItem* const top = m_tree->topLevelItem(i);
        open(top);
        const bool isSender = dynamic_cast<SenderRow*>(top) != nullptr;
        for (int j = 0; isSender && j < top->childCount(); ++j)
            open(top->child(j));
        left -= isSender ? top->childCount() : 1;
        expandBelow(top);
    }
}

Subject TreeRows::getPinned(QTreeWidgetItem* item) const
{
    if (auto* const sender = dynamic_cast<SenderRow*>(item))
        return {nullptr, sender->getSender()};
    auto* const row = dynamic_cast<SubjectRow*>(item);
    if (!row)
        return item ? getPinned(item->parent()) : Subject{nullptr, QString()};
    return {row->getSubject().info, row->isSenderShown() ? row->getSubject().sender : QString()};
}

Subject TreeRows::getPinned(const Subject& subject) const
{
    if (SubjectRow* const row = find(getSubject(subject.info, subject.sender)))
        return getPinned(row);
    return m_desk->getTypes()->isFromSeveral(subject.info) ? subject : Subject{subject.info, QString()};
}

bool TreeRows::isPinned(const Subject& subject) const
{
    return m_pins->isPinned(subject);
}

void TreeRows::followPalette()
{
    m_pins->followPalette();
    for (const QPointer<SubjectRow>& row : std::as_const(m_rows))
        if (row && row->isPinned())
            m_pins->mark(row, true);
    for (SenderRow* const row : std::as_const(m_senderRows))
        if (row->isPinned())
            m_pins->mark(row, true);
}

void TreeRows::setPinned(const Subject& subject, bool pinned)
{
    m_pins->setPinned(subject, pinned);
    const auto follow = [this](auto* row) {
        const bool isPinned = m_pins->isPinned(getPinned(row));
        if (row->isPinned() == isPinned)
            return;
        row->setPinned(isPinned);
        move(row);
    };
    for (const QPointer<SubjectRow>& row : std::as_const(m_rows))
        if (row && row->getSubject().info == subject.info)
            follow(row.data());
    for (SenderRow* const row : std::as_const(m_senderRows))
        follow(row);
}

static void collectExpanded(QTreeWidgetItem* item, QList<QTreeWidgetItem*>* expanded)
{
    if (item->isExpanded())
        expanded->append(item);
    for (int i = 0; i < item->childCount(); ++i)
        collectExpanded(item->child(i), expanded);
}

void TreeRows::move(QTreeWidgetItem* item)
{
    // A row that is taken out forgets how it was shown.
    QList<QTreeWidgetItem*> expanded;
    collectExpanded(item, &expanded);
    const bool isCurrent = m_tree->currentItem() == item;
    QTreeWidgetItem* const parent = item->parent() ? item->parent() : m_tree->invisibleRootItem();
    parent->removeChild(item);
    insertRows(parent, {dynamic_cast<AbstractMessageTreeWidgetItem*>(item)});
    const QSignalBlocker blocker(m_tree);
    for (QTreeWidgetItem* row : std::as_const(expanded))
        row->setExpanded(true);
    if (isCurrent)
        m_tree->setCurrentItem(item);
}

// A sender is told where several send a type.
void TreeRows::followNames()
{
    if (m_arrangement != ByTypeAndSender)
        return;
    const MessageTypeModel* const types = m_desk->getTypes();
    for (const QPointer<SubjectRow>& row : std::as_const(m_rows))
        if (row)
            row->setSenderShown(types->isFromSeveral(row->getSubject().info) && !row->getSubject().sender.isEmpty());
}

void TreeRows::renameSender(const QString& before, const QString& now)
{
    const auto renamed = [&](const Subject& subject) { return Subject{subject.info, now}; };
    m_pins->renameSender(before, now);
    const QSet<Subject> subjects = m_subjects;
    for (const Subject& subject : subjects) {
        if (subject.sender != before)
            continue;
        m_subjects.remove(subject);
        m_subjects.insert(renamed(subject));
        if (m_arrangement == ByType)
            continue;
        const QPointer<SubjectRow> row = m_rows.take(subject);
        if (!row)
            continue;
        m_rows.insert(renamed(subject), row);
        row->setSender(now);
    }
    const QHash<QString, bool> choices = m_choices;
    for (auto choice = choices.constBegin(); choice != choices.constEnd(); ++choice) {
        if (!PinnedTypes::isOf(choice.key(), before))
            continue;
        m_choices.remove(choice.key());
        m_choices.insert(PinnedTypes::rename(choice.key(), now), *choice);
    }
    if (SenderRow* const row = m_senderRows.take(before)) {
        m_senderRows.insert(now, row);
        row->setName(now);
    }
    followNames();
}

void TreeRows::processSeen(const QVector<Subject>& subjects)
{
    QVector<Subject> wanted;
    for (const Subject& subject : subjects) {
        const bool ofType = m_choices.value(PinnedTypes::getName({subject.info, QString()}), m_addAutomatically);
        if (m_choices.value(PinnedTypes::getName(subject), ofType))
            wanted.append(subject);
    }
    set(wanted, true);
    followNames();
}

// What the user chose holds over jumps, other definitions and restarts.
void TreeRows::choose(const QVector<Subject>& subjects, bool inTree)
{
    for (const Subject& subject : subjects) {
        if (m_desk->getTypes()->isFromSeveral(subject.info)) {
            m_choices.insert(PinnedTypes::getName(subject), inTree);
            continue;
        }
        m_choices.remove(PinnedTypes::getName(subject)); // from when others sent it, too
        m_choices.insert(PinnedTypes::getName({subject.info, QString()}), inTree);
    }
    set(subjects, inTree);
}

void TreeRows::chooseAll(bool inTree)
{
    const MessageTypeModel* const types = m_desk->getTypes();
    QVector<Subject> subjects;
    for (int row = 0; row < types->getCount(); ++row) {
        const Subject subject = types->getSubject(row);
        if (!subject.info)
            continue;
        subjects.append(subject);
        m_choices.remove(PinnedTypes::getName(subject));
        m_choices.insert(PinnedTypes::getName({subject.info, QString()}), inTree);
    }
    set(subjects, inTree);
}

void TreeRows::saveSettings(QSettings& settings) const
{
    m_pins->saveSettings(settings);
    settings.setValue(QLatin1String("rows"), QLatin1String(ArrangementNames[m_arrangement]));
    settings.setValue(QLatin1String("addAutomatically"), m_addAutomatically);
    settings.setValue(QLatin1String("added"), QStringList(m_choices.keys(true)));
    settings.setValue(QLatin1String("removed"), QStringList(m_choices.keys(false)));
    settings.setValue(QLatin1String("folded"), QStringList(m_folded.values()));
}

void TreeRows::restoreSettings(QSettings& settings)
{
    m_pins->restoreSettings(settings);
    const QString arrangement = settings.value(QLatin1String("rows")).toString();
    for (const Arrangement each : {ByType, ByTypeAndSender, BySender})
        if (arrangement == QLatin1String(ArrangementNames[each]))
            setArrangement(each);
    m_addAutomatically = settings.value(QLatin1String("addAutomatically"), true).toBool();
    for (const bool isAdded : {true, false}) {
        const QStringList names = settings.value(QLatin1String(isAdded ? "added" : "removed")).toStringList();
        for (const QString& name : names)
            m_choices.insert(name, isAdded);
    }
    const QStringList folded = settings.value(QLatin1String("folded")).toStringList();
    for (const QString& type : folded)
        m_folded.insert(type);
}

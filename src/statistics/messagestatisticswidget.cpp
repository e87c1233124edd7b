#include "messagestatisticswidget.h"

#include "borrowed.h"
#include "diagnostics.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagestatisticscoordinator.h"
#include "statisticscells.h"
#include "statisticsrefresh.h"
#include "statisticstexts.h"
#include "valuecells.h"

#include <QHeaderView>
#include <QSet>
#include <QSettings>
#include <QStringList>
#include <QVarLengthArray>

#include <algorithm>

CORVEL_DIAGNOSTICS("MessageStatisticsWidget");
#include "owntext.h"

static const int GapsColumn = 3;
static const int DefaultNameWidth = 150;

/** A row of the histogram of intervals, without its count. */
static QTreeWidgetItem* createCountRow(const QString& name, const QString& toolTip)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidgetItem* row = new QTreeWidgetItem(QTreeWidgetItem::Type);
    row->setData(0, Qt::DisplayRole, name);
    StatisticsTexts::writeCountToolTip(row, toolTip);
    return row;
}

// Sorting moves the rows of gaps; they bear numbers that ascend in the order of the gaps.
static const int GapNumberRole = Qt::UserRole;

static QTreeWidgetItem* createGapRow(int number)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidgetItem* row = new QTreeWidgetItem(QTreeWidgetItem::Type);
    row->setData(0, GapNumberRole, number);
    StatisticsTexts::writeGapToolTips(row);
    return row;
}

static int gapNumber(const QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    return row->data(0, GapNumberRole).toInt();
}

static bool standsBefore(const QTreeWidgetItem* one, const QTreeWidgetItem* other)
{
    CORVEL_DEBUG_HOOK();
    return gapNumber(one) < gapNumber(other);
}

/** The rows below @p parent in the order of their gaps. */
static QVector<QTreeWidgetItem*> gapRowsBelow(const QTreeWidgetItem* parent)
{
    CORVEL_DEBUG_HOOK();
    QVector<QTreeWidgetItem*> rows;
    rows.reserve(parent->childCount());
    for (int i = 0; i < parent->childCount(); ++i)
        rows.append(parent->child(i));
    std::stable_sort(rows.begin(), rows.end(), standsBefore);
    return rows;
}

static bool isSameGap(const MessageStatistics::Gap& one, const MessageStatistics::Gap& other)
{
    CORVEL_DEBUG_HOOK();
    return one.start == other.start && one.missingEpochs == other.missingEpochs && one.interval == other.interval;
}

MessageStatisticsWidget::MessageStatisticsWidget(MessageStatisticsCoordinator* coordinator, QWidget* parent)
    : QTreeWidget(parent)
    , m_coordinator(coordinator)
    , m_firstNew(0)
    , m_turn(0)
    , m_turnHadGaps(false)
    , m_stepTime(0)
    , m_sortTime(0)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageStatisticsWidget");
    setSortingEnabled(true);
    setIndentation(10);
    new ValueCells(this);
    setupColumns();
    setColumnWidth(0, DefaultNameWidth);
    m_crcErrorsItem = nullptr;
    Borrowed::watch(coordinator, this, &letGo);
    connect(this, SIGNAL(itemExpanded(QTreeWidgetItem*)), this, SLOT(processItemExpanded(QTreeWidgetItem*)));
}

MessageStatisticsWidget::~MessageStatisticsWidget()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageStatisticsWidget");
    Borrowed::leaveAll(this);
}

void MessageStatisticsWidget::letGo(void* widget, const QObject*, bool show)
{
    CORVEL_DEBUG_HOOK();
    MessageStatisticsWidget* const self = static_cast<MessageStatisticsWidget*>(widget);
    if (show) {
        self->updateTree();
        return;
    }
    self->m_coordinator = nullptr;
    self->m_listed.clear();
    self->m_firstNew = 0;
    self->m_turn = 0;
}

QList<MessageStatistics*> MessageStatisticsWidget::getStatistics() const
{
    CORVEL_DEBUG_HOOK();
    return m_coordinator ? m_coordinator->getAllMessageStatistics() : QList<MessageStatistics*>();
}

void MessageStatisticsWidget::setupColumns()
{
    CORVEL_DEBUG_HOOK();
    const QStringList labels = getHeaderTexts();
    setColumnCount(static_cast<int>(labels.size()));
    for (int i = 0; i < labels.size(); ++i)
        OwnText::writeHeader(model(), i, labels.at(i));
    setGapsColumnVisible(false);
    sortByColumn(0, Qt::AscendingOrder);
}

void MessageStatisticsWidget::setGapsColumnVisible(bool visible)
{
    CORVEL_DEBUG_HOOK();
    // Only a change may resize a column: the user's width is to survive the refreshes.
    if (isColumnHidden(GapsColumn) == !visible)
        return;
    setColumnHidden(GapsColumn, !visible);
    resizeColumnToContents(2);
}

QTreeWidgetItem* MessageStatisticsWidget::getFormatItem(const FormatInfo* format)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidgetItem* item = m_formatItems.value(format);
    if (item)
        return item;
    item = new QTreeWidgetItem(QTreeWidgetItem::Type);
    item->setText(0, format->getName());
    item->setToolTip(0, StatisticsTexts::getFormatToolTip(format->getName()));
    StatisticsCells::insertRow(invisibleRootItem(), topLevelItemCount(), item);
    item->setExpanded(true);
    m_formatItems.insert(format, item);
    return item;
}

MessageStatisticsTreeWidgetItem* MessageStatisticsWidget::getAndUpdateItemFor(MessageStatistics* statistics)
{
    CORVEL_DEBUG_HOOK();
    MessageStatisticsTreeWidgetItem* item = m_statisticsItems.value(statistics);
    if (item) {
        item->updateNow();
        return item;
    }
    item = new MessageStatisticsTreeWidgetItem(statistics);
    m_statisticsItems.insert(statistics, item);
    QTreeWidgetItem* formatItem = getFormatItem(statistics->getFormatInfo());
    StatisticsCells::insertRow(formatItem, formatItem->childCount(), item);
    StatisticsCells::keepCounts(item->m_intervalsItem);
    return item;
}

void MessageStatisticsWidget::deleteEmptyFormatItems()
{
    CORVEL_DEBUG_HOOK();
    Q_FOREACH (const FormatInfo* format, m_formatItems.keys()) {
        if (m_formatItems.value(format)->childCount() == 0)
            delete m_formatItems.take(format);
    }
}

void MessageStatisticsWidget::updateTree()
{
    CORVEL_DEBUG_HOOK();
    StatisticsRefresh* current = StatisticsRefresh::find(this, nullptr);
    if (current) {
        current->again = true;
        return;
    }
    StatisticsRefresh refresh(this, nullptr);
    do {
        refresh.again = false;
        refresh.begin();
        const bool anyGaps = updateItems();
        // Before a column is fitted, as it is as wide as its header, to which the sort indicator belongs.
        refresh.end();
        setGapsColumnVisible(anyGaps);
        refresh.begin();
        updateCrcErrorsItem();
        refresh.end();
    } while (refresh.again);
}

bool MessageStatisticsWidget::updateItems()
{
    CORVEL_DEBUG_HOOK();
    removeStaleItems();
    bool anyGaps = false;
    Q_FOREACH (MessageStatistics* statistics, getStatistics()) {
        if (!m_coordinator) // gone since, with all of them
            break;
        getAndUpdateItemFor(statistics);
        if (!statistics->getGaps().isEmpty())
            anyGaps = true;
    }
    return anyGaps;
}

void MessageStatisticsWidget::updateCrcErrorsItem()
{
    CORVEL_DEBUG_HOOK();
    const unsigned int crcErrors = m_coordinator ? m_coordinator->getEventCount(CorvelEvent::CrcError) : 0;
    if (crcErrors == 0) {
        delete m_crcErrorsItem;
        m_crcErrorsItem = nullptr;
        return;
    }
    if (!m_crcErrorsItem) {
        m_crcErrorsItem = new QTreeWidgetItem(QTreeWidgetItem::Type);
        m_crcErrorsItem->setText(0, tr("CRC Errors"));
        StatisticsCells::insertRow(invisibleRootItem(), 0, m_crcErrorsItem);
    }
    StatisticsCells::writeCount(m_crcErrorsItem, crcErrors);
}

void MessageStatisticsWidget::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight)
{
    CORVEL_DEBUG_HOOK();
    StatisticsCells::noteChange(itemFromIndex(topLeft));
    QTreeWidget::dataChanged(topLeft, bottomRight);
}

void MessageStatisticsWidget::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight,
                                          const QVector<int>&)
{
    CORVEL_DEBUG_HOOK();
    dataChanged(topLeft, bottomRight);
}

void MessageStatisticsWidget::processItemExpanded(QTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    // The view may tell of a row that somebody who was told first has deleted.
    if (!item || !item->treeWidget() || !item->isExpanded())
        return;
    MessageStatisticsTreeWidgetItem* statisticsItem = dynamic_cast<MessageStatisticsTreeWidgetItem*>(item);
    if (!statisticsItem)
        return;
    MessageStatistics* statistics = statisticsItem->getMessageStatistics();
    statisticsItem->fullExpand();
    // What is below a folded row is not followed in steps. Somebody who was told may have had the row removed, and
    // statistics that are not listed any more may be gone.
    if (!m_listed.isEmpty() && getStatistics() == m_listed && m_statisticsItems.value(statistics) == statisticsItem)
        statisticsItem->updateContents();
}

void MessageStatisticsWidget::writeSettings(QSettings& settings)
{
    CORVEL_DEBUG_HOOK();
    settings.setValue(QLatin1String("headerstate"), header()->saveState());
    settings.setValue(QLatin1String("sortColumn"), header()->sortIndicatorSection());
    settings.setValue(QLatin1String("sortOrder"), static_cast<int>(header()->sortIndicatorOrder()));
}

void MessageStatisticsWidget::readSettings(QSettings& settings)
{
    CORVEL_DEBUG_HOOK();
    const QByteArray headerState = settings.value(QLatin1String("headerstate"), QVariant()).toByteArray();
    if (!headerState.isEmpty())
        header()->restoreState(headerState);
    else
        setColumnWidth(0, DefaultNameWidth);
    setSortingEnabled(true);
    const int column = settings.value(QLatin1String("sortColumn"), 0).toInt();
    const int order = settings.value(QLatin1String("sortOrder"), 0).toInt();
    sortByColumn(column, static_cast<Qt::SortOrder>(order));
}

MessageStatisticsTreeWidgetItem::MessageStatisticsTreeWidgetItem(MessageStatistics* statistics)
    : QTreeWidgetItem(QTreeWidgetItem::Type)
    , m_statistics(statistics)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageStatisticsTreeWidgetItem");
    const QString name = statistics->getMessageName();
    const MessageInfo* info = statistics->getMessageInfo();
    setData(0, Qt::DisplayRole, name);
    if (info)
        setData(0, Qt::ToolTipRole, info->getShortDescriptiveText());
    else
        setData(0, OwnText::Role, name); // its tool tip says that it is unknown
    m_intervalsItem = new QTreeWidgetItem(QTreeWidgetItem::Type);
    m_noTimeItem = nullptr;
    m_unknownIntervalItem = nullptr;
    m_gapsItem = nullptr;
    writeFixedTexts();
    addChild(m_intervalsItem);
    updateNow();
}

MessageStatisticsTreeWidgetItem::~MessageStatisticsTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageStatisticsTreeWidgetItem");
    StatisticsCells::dropCounts(m_intervalsItem);
}

MessageStatistics* MessageStatisticsTreeWidgetItem::getMessageStatistics()
{
    CORVEL_DEBUG_HOOK();
    return m_statistics;
}

const MessageStatistics::Gap* MessageStatisticsTreeWidgetItem::getGap(const QTreeWidgetItem* item) const
{
    CORVEL_DEBUG_HOOK();
    if (!item || !m_gapsItem || indexOfChild(m_gapsItem) < 0 || item->parent() != m_gapsItem)
        return nullptr;
    const int index = static_cast<int>(gapRowsBelow(m_gapsItem).indexOf(const_cast<QTreeWidgetItem*>(item)));
    // Surplus rows show what is no gap any more. And where rows were deleted, the places of the others tell nothing.
    const bool known = index < m_shownGaps.size() && m_shownGaps.size() <= m_gapsItem->childCount();
    return known ? &m_shownGaps.at(index) : nullptr;
}

void MessageStatisticsTreeWidgetItem::fullExpand()
{
    CORVEL_DEBUG_HOOK();
    MessageStatisticsWidget* tree = dynamic_cast<MessageStatisticsWidget*>(treeWidget());
    bool again;
    {
        // No refresh, but something that none may come between.
        StatisticsRefresh expansion(tree, nullptr);
        if (treeWidget())
            setExpanded(true);
        if (m_intervalsItem->treeWidget())
            m_intervalsItem->setExpanded(true);
        again = expansion.again;
    }
    // From here on the row may be gone.
    if (again)
        tree->updateTree();
}

void MessageStatisticsTreeWidgetItem::updateContents()
{
    CORVEL_DEBUG_HOOK();
    MessageStatisticsWidget* tree = dynamic_cast<MessageStatisticsWidget*>(treeWidget());
    StatisticsRefresh* current = StatisticsRefresh::find(tree, this);
    if (current) {
        current->again = true;
        return;
    }
    bool again;
    {
        StatisticsRefresh refresh(tree, this);
        do {
            refresh.again = false;
            refresh.begin();
            updateNow();
            refresh.end();
        } while (refresh.again && !tree);
        again = refresh.again;
    }
    // From here on the row may be gone.
    if (again)
        tree->updateTree();
}

void MessageStatisticsTreeWidgetItem::updateCells()
{
    CORVEL_DEBUG_HOOK();
    // A number, so that the column sorts as numbers do; the counts of the sub-rows are deliberately texts.
    StatisticsCells::writeNumber(this, 1, m_statistics->getCount());
    StatisticsCells::writeText(this, 2,
                               m_statistics->isCurrentlyRegular()
                                   ? MessageStatistics::getIntervalString(m_statistics->getLastInterval())
                                   : QObject::tr("N/A"));
    const int gaps = m_statistics->getNumberOfGaps();
    StatisticsCells::writeText(
        this, 3,
        gaps <= 0 ? QString() : QObject::tr("%1 (%2 epochs)").arg(gaps).arg(m_statistics->getNumberOfMissingEpochs()));
}

void MessageStatisticsTreeWidgetItem::updateNow()
{
    CORVEL_DEBUG_HOOK();
    updateCells();
    updateIntervalSubItems();
    updateGapSubItems();
}

void MessageStatisticsTreeWidgetItem::updateIntervalSubItems()
{
    CORVEL_DEBUG_HOOK();
    if (m_statistics->getCountWithUnknownTime() == 0) {
        delete m_noTimeItem;
        m_noTimeItem = nullptr;
    } else {
        if (!m_noTimeItem) {
            m_noTimeItem = createCountRow(QObject::tr("No time"), StatisticsTexts::getNoTimeToolTip());
            StatisticsCells::insertRow(m_intervalsItem, 0, m_noTimeItem);
        }
        StatisticsCells::writeCount(m_noTimeItem, m_statistics->getCountWithUnknownTime());
    }

    if (m_statistics->getCountWithKnownTimeButUnknownInterval() == 0) {
        delete m_unknownIntervalItem;
        m_unknownIntervalItem = nullptr;
    } else {
        if (!m_unknownIntervalItem) {
            m_unknownIntervalItem =
                createCountRow(QObject::tr("Unknown interval/rate"), StatisticsTexts::getUnknownIntervalToolTip());
            StatisticsCells::insertRow(m_intervalsItem, 0, m_unknownIntervalItem);
        }
        StatisticsCells::writeCount(m_unknownIntervalItem, m_statistics->getCountWithKnownTimeButUnknownInterval());
    }

    const QVector<IntervalCount> known = StatisticsCells::takeKnownCounts(m_intervalsItem);
    QVarLengthArray<IntervalCount, 64> confirmed;
    bool anyNews = false;
    Q_FOREACH (long long interval, m_statistics->getIntervalsSortedOnFrequency(-1)) {
        const unsigned int count = m_statistics->getIntervalCountHash().value(interval, 0);
        if (count == 0)
            continue;
        const int position = static_cast<int>(confirmed.size());
        const IntervalCount now = {interval, count};
        confirmed.append(now);
        if (position < known.size() && known.at(position).interval == interval && known.at(position).count == count)
            continue;
        anyNews = true;
        QTreeWidgetItem* item = m_intervalItems.value(interval);
        if (!item) {
            const QString text = MessageStatistics::getIntervalString(static_cast<unsigned long long>(interval));
            item = createCountRow(text, StatisticsTexts::getIntervalToolTip(interval, text));
            StatisticsCells::insertRow(m_intervalsItem, m_intervalsItem->childCount(), item);
            m_intervalItems.insert(interval, item);
        }
        StatisticsCells::writeCount(item, count);
    }
    if (!anyNews && !known.isEmpty() && confirmed.size() == known.size())
        return;
    StatisticsCells::setKnownCounts(m_intervalsItem, confirmed.constData(), static_cast<int>(confirmed.size()));
    // Rows are hardly ever left over, which their numbers tell; an interval may have been listed more than once.
    QVarLengthArray<long long, 64> intervals;
    for (int i = 0; i < confirmed.size(); ++i)
        intervals.append(confirmed.at(i).interval);
    std::sort(intervals.begin(), intervals.end());
    long long* const end = std::unique(intervals.begin(), intervals.end());
    if (end - intervals.begin() == m_intervalItems.size())
        return;
    Q_FOREACH (long long interval, m_intervalItems.keys()) {
        if (!std::binary_search(intervals.begin(), end, interval))
            delete m_intervalItems.take(interval);
    }
}

void MessageStatisticsTreeWidgetItem::updateGapSubItems()
{
    CORVEL_DEBUG_HOOK();
    const QVector<MessageStatistics::Gap> gaps = m_statistics->getGaps(); // somebody who listens may add to them
    const int count = static_cast<int>(gaps.size());
    if (m_gapsItem && indexOfChild(m_gapsItem) < 0) {
        m_gapsItem = nullptr; // deleted by the application
        m_shownGaps.clear();
    }
    if (count == 0) {
        delete m_gapsItem;
        m_gapsItem = nullptr;
        m_shownGaps.clear();
        return;
    }
    if (!m_gapsItem) {
        m_gapsItem = new QTreeWidgetItem(QTreeWidgetItem::Type);
        StatisticsTexts::writeGapsToolTip(m_gapsItem);
        StatisticsCells::insertRow(this, childCount(), m_gapsItem);
    }
    StatisticsCells::writeText(
        m_gapsItem, 0, m_statistics->hasUnstoredGaps() ? QObject::tr("Gaps (incomplete list)") : QObject::tr("Gaps"));
    if (indexOfChild(m_gapsItem) < 0 || !updateGapRows(gaps))
        m_shownGaps.clear();
}

/** @return false when an application deleted rows meanwhile, so that the next refresh has to look at all of them */
bool MessageStatisticsTreeWidgetItem::updateGapRows(const QVector<MessageStatistics::Gap>& gaps)
{
    CORVEL_DEBUG_HOOK();
    const int count = static_cast<int>(gaps.size());
    if (m_gapsItem->childCount() == count && m_shownGaps.size() == count &&
        std::equal(gaps.constBegin(), gaps.constEnd(), m_shownGaps.constBegin(), isSameGap))
        return true;

    QVector<QTreeWidgetItem*> rows = gapRowsBelow(m_gapsItem);
    if (rows.size() < m_shownGaps.size())
        m_shownGaps.clear(); // rows were deleted by the application, and those behind them have moved up
    while (rows.size() < count) {
        rows.append(createGapRow(rows.isEmpty() ? 0 : gapNumber(rows.last()) + 1));
        StatisticsCells::insertRow(m_gapsItem, m_gapsItem->childCount(), rows.last());
    }
    // Deliberately advances while the later rows move up, so that every other surplus row stays for a later refresh.
    for (int i = count; i < rows.size(); ++i) {
        if (!hasGapRows(rows.size()))
            return false;
        delete rows.at(i);
        rows.remove(i);
    }
    if (m_shownGaps.size() > count)
        m_shownGaps.resize(count);
    for (int i = 0; i < count; ++i) {
        const MessageStatistics::Gap& gap = gaps.at(i);
        if (i < m_shownGaps.size() && isSameGap(gap, m_shownGaps.at(i)))
            continue;
        const QString texts[] = {m_statistics->getTimeString(gap.start), QString::number(gap.missingEpochs),
                                 StatisticsTexts::getDurationText(gap)};
        for (int column = 0; column < 3; ++column) {
            if (!hasGapRows(rows.size()))
                return false;
            StatisticsCells::writeText(rows.at(i), column, texts[column]);
        }
        if (i < m_shownGaps.size())
            m_shownGaps[i] = gap;
        else
            m_shownGaps.append(gap);
    }
    return true;
}

bool MessageStatisticsTreeWidgetItem::hasGapRows(int count) const
{
    CORVEL_DEBUG_HOOK();
    return indexOfChild(m_gapsItem) >= 0 && m_gapsItem->childCount() == count;
}

#include "messagestatisticswidget.h"

#include "diagnostics.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagestatisticscoordinator.h"
#include "qtcompat.h"

#include <QHeaderView>
#include <QSettings>
#include <QStringList>
#include <QVarLengthArray>

#include <algorithm>

CORVEL_DIAGNOSTICS("MessageStatisticsWidget");

static const int GapsColumn = 3;
static const int DefaultNameWidth = 150;

// The tree whose rows are being brought up to date, if it was sorted when that began.
static QTreeWidget* s_refreshedSortedTree = nullptr;

/**
 * Suspends the sorting of @p item's tree for the rest of the refresh, if there is one going on.
 *
 * To be called before rows appear in a tree or move in it: one sort at the end is cheaper than one for each of them.
 * Where nothing moves, the refresh must not pay for a sort either.
 */
static void suspendSorting(const QTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidget* tree = item->treeWidget();
    if (tree && tree == s_refreshedSortedTree && tree->isSortingEnabled())
        tree->setSortingEnabled(false);
}

static void insertRow(QTreeWidgetItem* parent, int index, QTreeWidgetItem* child)
{
    CORVEL_DEBUG_HOOK();
    suspendSorting(parent);
    parent->insertChild(index, child);
}

static void writeValue(QTreeWidgetItem* item, int column, const QVariant& value)
{
    CORVEL_DEBUG_HOOK();
    if (item->treeWidget() && item->treeWidget()->header()->sortIndicatorSection() == column)
        suspendSorting(item);
    item->setData(column, Qt::DisplayRole, value);
}

/** Writes @p text into @p column unless it stands there. Nearly all calls of a refresh find that it does. */
static void writeText(QTreeWidgetItem* item, int column, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    const QVariant shown = item->data(column, Qt::DisplayRole);
    if (shown.userType() != QMetaType::QString || *static_cast<const QString*>(shown.constData()) != text)
        writeValue(item, column, text);
}

/** Writes @p number, as a number, into @p column unless it stands there. */
static void writeNumber(QTreeWidgetItem* item, int column, qulonglong number)
{
    CORVEL_DEBUG_HOOK();
    const QVariant shown = item->data(column, Qt::DisplayRole);
    if (shown.userType() != QMetaType::ULongLong || shown.toULongLong() != number)
        writeValue(item, column, number);
}

/** A row of the histogram of intervals, without its count. */
static QTreeWidgetItem* createCountRow(const QString& name, const QString& toolTip)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidgetItem* row = new QTreeWidgetItem(QTreeWidgetItem::Type);
    row->setData(0, Qt::DisplayRole, name);
    row->setData(0, Qt::ToolTipRole, toolTip);
    row->setData(1, Qt::ToolTipRole, toolTip);
    return row;
}

static QTreeWidgetItem* createGapRow()
{
    CORVEL_DEBUG_HOOK();
    QTreeWidgetItem* row = new QTreeWidgetItem(QTreeWidgetItem::Type);
    row->setData(0, Qt::ToolTipRole, QObject::tr("Gaps start"));
    row->setData(1, Qt::ToolTipRole, QObject::tr("Missing epochs"));
    row->setData(2, Qt::ToolTipRole, QObject::tr("Duration"));
    return row;
}

static bool isSameGap(const MessageStatistics::Gap& one, const MessageStatistics::Gap& other)
{
    CORVEL_DEBUG_HOOK();
    return one.start == other.start && one.missingEpochs == other.missingEpochs && one.interval == other.interval;
}

static QString getDurationText(const MessageStatistics::Gap& gap)
{
    CORVEL_DEBUG_HOOK();
    // Deliberately cut to 32 bits: a duration of 2^31 ms (25 days) or more shows as a wrapped value.
    const qint32 duration = static_cast<qint32>(static_cast<quint32>(gap.missingEpochs * gap.interval));
    if (duration <= 999)
        return QObject::tr("%1 ms").arg(duration);
    return QObject::tr("%1 s").arg(duration / 1000.0);
}

MessageStatisticsWidget::MessageStatisticsWidget(MessageStatisticsCoordinator* coordinator, QWidget* parent)
    : QTreeWidget(parent)
    , m_coordinator(coordinator)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageStatisticsWidget");
    setSortingEnabled(true);
    setIndentation(10);
    setupColumns();
    setColumnWidth(0, DefaultNameWidth);
    m_crcErrorsItem = nullptr;
    connect(this, SIGNAL(itemExpanded(QTreeWidgetItem*)), this, SLOT(processItemExpanded(QTreeWidgetItem*)));
}

MessageStatisticsWidget::~MessageStatisticsWidget()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageStatisticsWidget");
}

void MessageStatisticsWidget::setupColumns()
{
    CORVEL_DEBUG_HOOK();
    const QStringList labels = QStringList()
                               << tr("Message") << tr("Count") << tr("Current rate/interval") << tr("Gaps");
    setHeaderLabels(labels);
    setColumnCount(labels.size());
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
    item->setToolTip(0, QObject::tr("Message statistics for the messages\nin the %1 format.").arg(format->getName()));
    insertRow(invisibleRootItem(), topLevelItemCount(), item);
    item->setExpanded(true);
    m_formatItems.insert(format, item);
    return item;
}

MessageStatisticsTreeWidgetItem* MessageStatisticsWidget::getAndUpdateItemFor(MessageStatistics* statistics)
{
    CORVEL_DEBUG_HOOK();
    MessageStatisticsTreeWidgetItem* item = m_statisticsItems.value(statistics);
    if (item) {
        item->updateContents();
        return item;
    }
    item = new MessageStatisticsTreeWidgetItem(statistics);
    m_statisticsItems.insert(statistics, item);
    QTreeWidgetItem* formatItem = getFormatItem(statistics->getFormatInfo());
    insertRow(formatItem, formatItem->childCount(), item);
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
    QTreeWidget* const outerTree = s_refreshedSortedTree;
    const bool sorted = isSortingEnabled();
    const bool indicatorShown = header()->isSortIndicatorShown();
    const bool clickable = QtCompat::sectionsClickable(header());
    s_refreshedSortedTree = sorted ? this : nullptr;
    updateItems();
    s_refreshedSortedTree = outerTree;
    if (sorted && !isSortingEnabled()) {
        setSortingEnabled(true);
        // Enabling makes the header clickable and shows the indicator, which the application may not want.
        header()->setSortIndicatorShown(indicatorShown);
        QtCompat::setSectionsClickable(header(), clickable);
    }
}

void MessageStatisticsWidget::updateItems()
{
    CORVEL_DEBUG_HOOK();
    Q_FOREACH (MessageStatistics* statistics, m_statisticsItems.keys()) {
        MessageStatisticsTreeWidgetItem* item = m_statisticsItems.value(statistics);
        // The list is deliberately asked for again for every row.
        if (!m_coordinator->getAllMessageStatistics().contains(statistics) || !item ||
            item->getMessageStatistics() != statistics) {
            m_statisticsItems.remove(statistics);
            delete item;
        }
    }
    deleteEmptyFormatItems();

    bool anyGaps = false;
    Q_FOREACH (MessageStatistics* statistics, m_coordinator->getAllMessageStatistics()) {
        getAndUpdateItemFor(statistics);
        if (!statistics->getGaps().isEmpty())
            anyGaps = true;
    }
    setGapsColumnVisible(anyGaps);

    const unsigned int crcErrors = m_coordinator->getEventCount(CorvelEvent::CrcError);
    if (crcErrors == 0) {
        delete m_crcErrorsItem;
        m_crcErrorsItem = nullptr;
        return;
    }
    if (!m_crcErrorsItem) {
        m_crcErrorsItem = new QTreeWidgetItem(QTreeWidgetItem::Type);
        m_crcErrorsItem->setText(0, tr("CRC Errors"));
        insertRow(invisibleRootItem(), 0, m_crcErrorsItem);
    }
    writeText(m_crcErrorsItem, 1, QString::number(crcErrors));
}

void MessageStatisticsWidget::processItemExpanded(QTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    if (!item->treeWidget() || !item->isExpanded())
        return;
    MessageStatisticsTreeWidgetItem* statisticsItem = dynamic_cast<MessageStatisticsTreeWidgetItem*>(item);
    if (statisticsItem)
        statisticsItem->fullExpand();
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
    setData(0, Qt::ToolTipRole, info ? info->getShortDescriptiveText() : QObject::tr("%1 (unknown)").arg(name));
    setData(1, Qt::ToolTipRole, QObject::tr("Number of times the %1\nmessage has been received.").arg(name));
    setData(2, Qt::ToolTipRole,
            QObject::tr("Most recent regular rate/interval at which the %1\nmessage has been received.").arg(name));
    setData(3, Qt::ToolTipRole, QObject::tr("Detected gaps in regular data segments with valid time, if any."));
    m_intervalsItem = new QTreeWidgetItem(QTreeWidgetItem::Type);
    m_intervalsItem->setData(0, Qt::DisplayRole, QObject::tr("Rates/Intervals"));
    m_intervalsItem->setData(0, Qt::ToolTipRole,
                             QObject::tr("The rates/intervals in which this message has been received,\n"
                                         "together with the corresponding count."));
    addChild(m_intervalsItem);
    m_noTimeItem = nullptr;
    m_unknownIntervalItem = nullptr;
    m_gapsItem = nullptr;
    updateContents();
}

MessageStatisticsTreeWidgetItem::~MessageStatisticsTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageStatisticsTreeWidgetItem");
}

MessageStatistics* MessageStatisticsTreeWidgetItem::getMessageStatistics()
{
    CORVEL_DEBUG_HOOK();
    return m_statistics;
}

const MessageStatistics::Gap* MessageStatisticsTreeWidgetItem::getGap(const QTreeWidgetItem* item) const
{
    CORVEL_DEBUG_HOOK();
    const int index = static_cast<int>(m_gapItems.indexOf(const_cast<QTreeWidgetItem*>(item)));
    // Surplus rows show what is no gap any more.
    return index >= 0 && index < m_shownGaps.size() ? &m_shownGaps.at(index) : nullptr;
}

void MessageStatisticsTreeWidgetItem::fullExpand()
{
    CORVEL_DEBUG_HOOK();
    if (treeWidget())
        setExpanded(true);
    if (m_intervalsItem->treeWidget())
        m_intervalsItem->setExpanded(true);
}

void MessageStatisticsTreeWidgetItem::updateContents()
{
    CORVEL_DEBUG_HOOK();
    // A number, so that the column sorts as numbers do; the counts of the sub-rows are deliberately texts.
    writeNumber(this, 1, m_statistics->getCount());
    writeText(this, 2,
              m_statistics->isCurrentlyRegular() ? MessageStatistics::getIntervalString(m_statistics->getLastInterval())
                                                 : QObject::tr("N/A"));
    const int gaps = m_statistics->getNumberOfGaps();
    writeText(this, 3,
              gaps <= 0 ? QString()
                        : QObject::tr("%1 (%2 epochs)").arg(gaps).arg(m_statistics->getNumberOfMissingEpochs()));
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
            m_noTimeItem = createCountRow(
                QObject::tr("No time"),
                QObject::tr("The number of times this message \nhas been received without a valid time tag."));
            insertRow(m_intervalsItem, 0, m_noTimeItem);
        }
        writeText(m_noTimeItem, 1, QString::number(m_statistics->getCountWithUnknownTime()));
    }

    if (m_statistics->getCountWithKnownTimeButUnknownInterval() == 0) {
        delete m_unknownIntervalItem;
        m_unknownIntervalItem = nullptr;
    } else {
        if (!m_unknownIntervalItem) {
            m_unknownIntervalItem = createCountRow(
                QObject::tr("Unknown interval/rate"),
                QObject::tr("Number of times this message has been received \nwith a valid time tag but for which "
                            "the interval \ncould not be determined: \nthere was no previous message with valid "
                            "time, \nand the following messages did not \ncome in at a regular rate."));
            insertRow(m_intervalsItem, 0, m_unknownIntervalItem);
        }
        writeText(m_unknownIntervalItem, 1, QString::number(m_statistics->getCountWithKnownTimeButUnknownInterval()));
    }

    QVarLengthArray<long long, 64> confirmed;
    Q_FOREACH (long long interval, m_statistics->getIntervalsSortedOnFrequency(-1)) {
        const unsigned int count = m_statistics->getIntervalCountHash().value(interval, 0);
        if (count == 0)
            continue;
        confirmed.append(interval);
        if (m_shownCounts.value(interval, 0) == count)
            continue;
        QTreeWidgetItem* item = m_intervalItems.value(interval);
        if (!item) {
            const QString text = MessageStatistics::getIntervalString(static_cast<unsigned long long>(interval));
            item = createCountRow(
                text,
                interval == 0
                    ? QObject::tr("Number of times the messages was received\nwith the same time stamp as previous.")
                    : QObject::tr("Number of times the message was received at %1.").arg(text));
            insertRow(m_intervalsItem, m_intervalsItem->childCount(), item);
            m_intervalItems.insert(interval, item);
        }
        writeText(item, 1, QString::number(count));
        m_shownCounts.insert(interval, count);
    }
    // Rows are hardly ever left over: a set of them is not made before it is needed.
    if (confirmed.size() == m_intervalItems.size())
        return;
    Q_FOREACH (long long interval, m_intervalItems.keys()) {
        if (std::find(confirmed.constBegin(), confirmed.constEnd(), interval) == confirmed.constEnd()) {
            delete m_intervalItems.take(interval);
            m_shownCounts.remove(interval);
        }
    }
}

void MessageStatisticsTreeWidgetItem::updateGapSubItems()
{
    CORVEL_DEBUG_HOOK();
    const QVector<MessageStatistics::Gap>& gaps = m_statistics->getGaps();
    const int count = static_cast<int>(gaps.size());
    if (count == 0) {
        delete m_gapsItem;
        m_gapsItem = nullptr;
        m_gapItems.clear();
        m_shownGaps.clear();
        return;
    }
    if (!m_gapsItem) {
        m_gapsItem = new QTreeWidgetItem(QTreeWidgetItem::Type);
        m_gapsItem->setData(0, Qt::ToolTipRole, QObject::tr("Gaps, with time and duration"));
        insertRow(this, childCount(), m_gapsItem);
    }
    writeText(m_gapsItem, 0,
              m_statistics->hasUnstoredGaps() ? QObject::tr("Gaps (incomplete list)") : QObject::tr("Gaps"));

    while (m_gapItems.size() < count) {
        QTreeWidgetItem* row = createGapRow();
        insertRow(m_gapsItem, m_gapsItem->childCount(), row);
        m_gapItems.append(row);
    }
    // Deliberately advances while the later rows move up, so that every other surplus row stays for a later refresh.
    for (int i = count; i < m_gapItems.size(); ++i) {
        delete m_gapItems.at(i);
        m_gapItems.remove(i);
    }
    if (m_shownGaps.size() > count)
        m_shownGaps.resize(count);
    for (int i = 0; i < count; ++i) {
        const MessageStatistics::Gap& gap = gaps.at(i);
        if (i < m_shownGaps.size() && isSameGap(gap, m_shownGaps.at(i)))
            continue;
        QTreeWidgetItem* row = m_gapItems.at(i);
        writeText(row, 0, m_statistics->getTimeString(gap.start));
        writeText(row, 1, QString::number(gap.missingEpochs));
        writeText(row, 2, getDurationText(gap));
        if (i < m_shownGaps.size())
            m_shownGaps[i] = gap;
        else
            m_shownGaps.append(gap);
    }
}

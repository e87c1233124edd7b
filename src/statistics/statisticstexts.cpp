#include "statisticstexts.h"

#include "diagnostics.h"
#include "messagestatisticswidget.h"
#include "statisticscells.h"
#include "statisticsrefresh.h"

#include <QCoreApplication>
#include <QEvent>
#include <QStringList>

CORVEL_DIAGNOSTICS("StatisticsTexts");
#include "owntext.h"

QString StatisticsTexts::getDurationText(const MessageStatistics::Gap& gap)
{
    CORVEL_DEBUG_HOOK();
    // Deliberately cut to 32 bits: a duration of 2^31 ms (25 days) or more shows as a wrapped value.
    const qint32 duration = static_cast<qint32>(static_cast<quint32>(gap.missingEpochs * gap.interval));
    if (duration <= 999)
        return QObject::tr("%1 ms").arg(duration);
    return QObject::tr("%1 s").arg(duration / 1000.0);
}

QString StatisticsTexts::getFormatToolTip(const QString& name)
{
    CORVEL_DEBUG_HOOK();
    return QObject::tr("Message statistics for the messages\nin the %1 format.").arg(name);
}

QString StatisticsTexts::getNoTimeToolTip()
{
    CORVEL_DEBUG_HOOK();
    return QObject::tr("The number of times this message \nhas been received without a valid time tag.");
}

QString StatisticsTexts::getUnknownIntervalToolTip()
{
    CORVEL_DEBUG_HOOK();
    return QObject::tr("Number of times this message has been received \nwith a valid time tag but for which "
                       "the interval \ncould not be determined: \nthere was no previous message with valid "
                       "time, \nand the following messages did not \ncome in at a regular rate.");
}

QString StatisticsTexts::getIntervalToolTip(long long interval, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    return interval == 0
               ? QObject::tr("Number of times the messages was received\nwith the same time stamp as previous.")
               : QObject::tr("Number of times the message was received at %1.").arg(text);
}

void StatisticsTexts::writeCountToolTip(QTreeWidgetItem* row, const QString& toolTip)
{
    CORVEL_DEBUG_HOOK();
    row->setData(0, Qt::ToolTipRole, toolTip);
    row->setData(1, Qt::ToolTipRole, toolTip);
}

void StatisticsTexts::writeGapToolTips(QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    row->setData(0, Qt::ToolTipRole, QObject::tr("Gaps start"));
    row->setData(1, Qt::ToolTipRole, QObject::tr("Missing epochs"));
    row->setData(2, Qt::ToolTipRole, QObject::tr("Duration"));
}

void StatisticsTexts::writeGapsToolTip(QTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    item->setData(0, Qt::ToolTipRole, QObject::tr("Gaps, with time and duration"));
}

QStringList MessageStatisticsWidget::getHeaderTexts()
{
    CORVEL_DEBUG_HOOK();
    return QStringList() << tr("Message") << tr("Count") << tr("Current rate/interval") << tr("Gaps");
}

void MessageStatisticsWidget::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        translate();
}

// Without a look at the statistics: they only have to be there for a refresh.
void MessageStatisticsWidget::translate()
{
    CORVEL_DEBUG_HOOK();
    if (StatisticsRefresh::find(this, nullptr)) {
        QCoreApplication::postEvent(this, new QEvent(QEvent::LanguageChange)); // rows are not to change meanwhile
        return;
    }
    bool again;
    {
        StatisticsRefresh refresh(this, nullptr);
        refresh.begin();
        const QStringList labels = getHeaderTexts();
        for (int i = 0; i < labels.size(); ++i)
            OwnText::translateHeader(model(), i, labels.at(i));
        Q_FOREACH (QTreeWidgetItem* item, m_formatItems)
            item->setToolTip(0, StatisticsTexts::getFormatToolTip(item->text(0)));
        if (m_crcErrorsItem)
            StatisticsCells::writeText(m_crcErrorsItem, 0, tr("CRC Errors"));
        Q_FOREACH (MessageStatisticsTreeWidgetItem* item, m_statisticsItems)
            item->writeFixedTexts();
        refresh.end();
        again = refresh.again;
    }
    if (again)
        updateTree();
}

void MessageStatisticsTreeWidgetItem::writeFixedTexts()
{
    CORVEL_DEBUG_HOOK();
    const QString name = text(0);
    if (data(0, OwnText::Role).isValid())
        setData(0, Qt::ToolTipRole, QObject::tr("%1 (unknown)").arg(name));
    setData(1, Qt::ToolTipRole, QObject::tr("Number of times the %1\nmessage has been received.").arg(name));
    setData(2, Qt::ToolTipRole,
            QObject::tr("Most recent regular rate/interval at which the %1\nmessage has been received.").arg(name));
    setData(3, Qt::ToolTipRole, QObject::tr("Detected gaps in regular data segments with valid time, if any."));
    StatisticsCells::writeText(m_intervalsItem, 0, QObject::tr("Rates/Intervals"));
    m_intervalsItem->setData(0, Qt::ToolTipRole,
                             QObject::tr("The rates/intervals in which this message has been received,\n"
                                         "together with the corresponding count."));
    if (m_noTimeItem) {
        StatisticsCells::writeText(m_noTimeItem, 0, QObject::tr("No time"));
        StatisticsTexts::writeCountToolTip(m_noTimeItem, StatisticsTexts::getNoTimeToolTip());
    }
    if (m_unknownIntervalItem) {
        StatisticsCells::writeText(m_unknownIntervalItem, 0, QObject::tr("Unknown interval/rate"));
        StatisticsTexts::writeCountToolTip(m_unknownIntervalItem, StatisticsTexts::getUnknownIntervalToolTip());
    }
    QHash<long long, QTreeWidgetItem*>::const_iterator it = m_intervalItems.constBegin();
    for (; it != m_intervalItems.constEnd(); ++it)
        StatisticsTexts::writeCountToolTip(it.value(),
                                           StatisticsTexts::getIntervalToolTip(it.key(), it.value()->text(0)));
    if (!m_gapsItem || indexOfChild(m_gapsItem) < 0)
        return;
    StatisticsTexts::writeGapsToolTip(m_gapsItem);
    for (int i = 0; i < m_gapsItem->childCount(); ++i)
        StatisticsTexts::writeGapToolTips(m_gapsItem->child(i));
}

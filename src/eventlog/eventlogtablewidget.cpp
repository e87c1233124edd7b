#include "eventlogtablewidget.h"

#include "diagnostics.h"

#include <QStringList>

CORVEL_DIAGNOSTICS("EventLogTableWidget");

static QTableWidgetItem* createCell(const QString& text)
{
    CORVEL_DEBUG_HOOK();
    QTableWidgetItem* cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled);
    return cell;
}

EventLogTableWidget::EventLogTableWidget(EventLog* eventLog, QWidget* parent)
    : QTableWidget(parent)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("EventLogTableWidget");
    const QStringList labels = QStringList() << tr("Time") << tr("Message");
    setColumnCount(labels.size());
    setHorizontalHeaderLabels(labels);
    setEventLog(eventLog);
}

EventLogTableWidget::~EventLogTableWidget()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("EventLogTableWidget");
}

void EventLogTableWidget::setEventLog(EventLog* eventLog)
{
    CORVEL_DEBUG_HOOK();
    // The rows and the connections of a log set before are deliberately kept.
    m_eventLog = eventLog;
    connect(eventLog, SIGNAL(newEntry(EventLog::Entry)), this, SLOT(addEntry(EventLog::Entry)));
    connect(eventLog, SIGNAL(cleared()), this, SLOT(clear()));
    Q_FOREACH (const EventLog::Entry& entry, eventLog->getEntries())
        addEntry(entry);
}

void EventLogTableWidget::addEntry(EventLog::Entry entry)
{
    CORVEL_DEBUG_HOOK();
    const int row = rowCount();
    insertRow(row);
    setItem(row, 0, createCell(entry.time.isValid() ? entry.time.toString(Qt::ISODate) : tr("N/A")));
    setItem(row, 1, createCell(entry.event.getMessage()));
}

void EventLogTableWidget::clear()
{
    CORVEL_DEBUG_HOOK();
    // All at once: row by row, a hundred thousand rows take many seconds.
    setRowCount(0);
}

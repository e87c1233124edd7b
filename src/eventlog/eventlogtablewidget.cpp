#include "eventlogtablewidget.h"

#include "diagnostics.h"

#include <QItemSelectionModel>
#include <QStringList>

CORVEL_DIAGNOSTICS("EventLogTableWidget");

static void fillCell(QTableWidget* table, const QModelIndex& place, int column, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    // Somebody who listens may have cleared the log since the row was inserted, and even have logged anew.
    if (!place.isValid() || table->item(place.row(), column))
        return;
    QTableWidgetItem* cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled);
    table->setItem(place.row(), column, cell);
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
    const QPersistentModelIndex place(model()->index(row, 0)); // a table that an application lets sort moves the row
    fillCell(this, place, 0, entry.time.isValid() ? entry.time.toString(Qt::ISODate) : tr("N/A"));
    fillCell(this, place, 1, entry.event.getMessage());
}

void EventLogTableWidget::clear()
{
    CORVEL_DEBUG_HOOK();
    // What is current and selected goes first: who listens to that may log or clear, which a table that is removing
    // rows does not survive.
    selectionModel()->clear();
    // All at once: row by row, a hundred thousand rows take many seconds.
    setRowCount(0);
}

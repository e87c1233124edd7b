#include "eventlogtablewidget.h"

#include "diagnostics.h"
#include "valuecells.h"

#include <QEvent>
#include <QItemSelectionModel>
#include <QStringList>

CORVEL_DIAGNOSTICS("EventLogTableWidget");
#include "owntext.h"

static void fillCell(QTableWidget* table, const QModelIndex& place, int column, const QString& text,
                     const QVariant& ownText = QVariant())
{
    CORVEL_DEBUG_HOOK();
    // Somebody who listens may have cleared the log since the row was inserted, and even have logged anew.
    if (!place.isValid() || table->item(place.row(), column))
        return;
    QTableWidgetItem* cell = new QTableWidgetItem(text);
    cell->setFlags(Qt::ItemIsEnabled);
    if (ownText.isValid())
        cell->setData(OwnText::Role, ownText);
    table->setItem(place.row(), column, cell);
}

EventLogTableWidget::EventLogTableWidget(EventLog* eventLog, QWidget* parent)
    : QTableWidget(parent)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("EventLogTableWidget");
    new ValueCells(this);
    setColumnCount(2);
    setHorizontalHeaderLabels(QStringList() << QString() << QString());
    OwnText::writeHeader(model(), 0, tr("Time"));
    OwnText::writeHeader(model(), 1, tr("Message"));
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
    if (entry.time.isValid())
        fillCell(this, place, 0, entry.time.toString(Qt::ISODate));
    else
        fillCell(this, place, 0, tr("N/A"), tr("N/A"));
    fillCell(this, place, 1, entry.event.getMessage());
}

void EventLogTableWidget::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QTableWidget::changeEvent(event);
    if (event->type() != QEvent::LanguageChange)
        return;
    OwnText::translateHeader(model(), 0, tr("Time"));
    OwnText::translateHeader(model(), 1, tr("Message"));
    // By a list of its own: whoever listens may clear the log, and a table that sorts moves the rows.
    QList<QPersistentModelIndex> cells;
    for (int row = 0; row < rowCount(); ++row) {
        const QModelIndex cell = model()->index(row, 0);
        if (cell.data(OwnText::Role).isValid() && cell.data(OwnText::Role) == cell.data())
            cells.append(cell);
    }
    Q_FOREACH (const QPersistentModelIndex& cell, cells) {
        if (!cell.isValid())
            continue;
        model()->setData(cell, tr("N/A"), OwnText::Role);
        if (cell.isValid())
            model()->setData(cell, tr("N/A"), Qt::DisplayRole);
    }
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

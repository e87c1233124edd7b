#ifndef CORVEL_EVENTLOGTABLEWIDGET_H
#define CORVEL_EVENTLOGTABLEWIDGET_H

#include "corvelgui_export.h"
#include "eventlog.h"

#include <QTableWidget>

/**
 * A table of the events of a log: time and text, oldest first.
 *
 * It shows what was logged so far and follows the log from then on. The rows can be neither edited nor selected.
 * Columns are as wide as those of any table, which is less than a time needs, until the application says otherwise:
 *
 * @code
 * EventLogTableWidget* table = new EventLogTableWidget(eventLog, parent);
 * const QRect time = table->fontMetrics().boundingRect("0000-00-00T00:00:00Z");
 * table->horizontalHeader()->resizeSection(0, time.width() + 12);
 * table->horizontalHeader()->setStretchLastSection(true);
 * @endcode
 */
class CORVELGUI_EXPORT EventLogTableWidget : public QTableWidget
{
    Q_OBJECT

public:
    /**
     * @param eventLog  the log to show; not null. Borrowed; when it is destroyed the table keeps its rows.
     * @param parent    may be null
     */
    EventLogTableWidget(EventLog* eventLog, QWidget* parent);
    virtual ~EventLogTableWidget();

    /**
     * Adds the entries of @p eventLog, which must not be null, below the rows there are, and follows it.
     *
     * A log set before is followed too: the table then shows both.
     */
    void setEventLog(EventLog* eventLog);

protected:
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void addEntry(EventLog::Entry entry);
    void clear();

private:
    Q_DISABLE_COPY(EventLogTableWidget)

    EventLog* m_eventLog;
};

#endif

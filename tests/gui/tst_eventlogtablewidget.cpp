#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "messagefixtures.h"
#include "shown.h"
#include "testbase.h"

#include <memory>

class tst_EventLogTableWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsWhatWasLoggedAndWhatComes();
    void clearingKeepsTheHeaders();
    void aSecondLogIsAdded();
    void whoHearsOfARowMayClearTheLog();
};

static CorvelEvent eventOf(const char* message)
{
    return CorvelEvent(CorvelEvent::SourceEvent, text(message));
}

/** What a table shows, the header first. */
static QStringList shown(const QTableWidget& table)
{
    QStringList rows(table.horizontalHeaderItem(0)->text() + text(" | ") + table.horizontalHeaderItem(1)->text());
    for (int row = 0; row < table.rowCount(); ++row)
        rows.append(table.item(row, 0)->text() + text(" | ") + table.item(row, 1)->text());
    return rows;
}

void tst_EventLogTableWidget::showsWhatWasLoggedAndWhatComes()
{
    const QDateTime noon(QDate(2024, 5, 6), QTime(12, 0, 0, 250), Qt::UTC);
    std::unique_ptr<EventLog> log(new EventLog);
    log->append(eventOf("checksum failure, id 142"), noon);
    log->append(eventOf("source lost"), QDateTime());
    EventLogTableWidget table(log.get(), nullptr);
    log->append(eventOf(""), noon.addSecs(-1));
    log.reset(); // what it logged stays
    QCOMPARE(shown(table), lines("Time | Message\n2024-05-06T12:00:00Z | checksum failure, id 142\n"
                                 "N/A | source lost\n2024-05-06T11:59:59Z | "));
    for (int column = 0; column < 2; ++column)
        QCOMPARE(table.item(0, column)->flags(), Qt::ItemFlags(Qt::ItemIsEnabled));
}

void tst_EventLogTableWidget::clearingKeepsTheHeaders()
{
    EventLog log;
    const EventLogTableWidget table(&log, nullptr);
    for (int i = 0; i < 2; ++i) {
        log.append(eventOf("event"), QDateTime());
        QCOMPARE(shown(table), lines("Time | Message\nN/A | event"));
        log.clear();
        QCOMPARE(shown(table), lines("Time | Message"));
    }
}

void tst_EventLogTableWidget::aSecondLogIsAdded()
{
    EventLog one;
    EventLog two;
    one.append(eventOf("one"), QDateTime());
    two.append(eventOf("two"), QDateTime());
    EventLogTableWidget table(&one, nullptr);
    table.setEventLog(&two);
    one.append(eventOf("one again"), QDateTime());
    two.append(eventOf("two again"), QDateTime());
    QCOMPARE(shown(table), lines("Time | Message\nN/A | one\nN/A | two\nN/A | one again\nN/A | two again"));
    table.setSortingEnabled(true);
    table.sortByColumn(0, Qt::AscendingOrder);
    two.append(eventOf("timed"), QDateTime(QDate(2024, 5, 6), QTime(12, 0), Qt::UTC));
    QCOMPARE(shown(table).at(1), text("2024-05-06T12:00:00Z | timed"));
    one.clear();
    QCOMPARE(table.rowCount(), 0);
}

void tst_EventLogTableWidget::whoHearsOfARowMayClearTheLog()
{
    const char* const signalsOfARow[] = {SIGNAL(rowsInserted(QModelIndex, int, int)),
                                         SIGNAL(dataChanged(QModelIndex, QModelIndex))};
    for (int i = 0; i < 2; ++i) {
        EventLog log;
        const EventLogTableWidget table(&log, nullptr);
        const auto restart = [&log] {
            log.clear();
            log.append(eventOf("restarted"), QDateTime());
        };
        const Answer answer(table.model(), signalsOfARow[i], restart, 1);
        log.append(eventOf("lost"), QDateTime::currentDateTime());
        QCOMPARE(shown(table), lines("Time | Message\nN/A | restarted"));
    }
}

QTEST_MAIN(tst_EventLogTableWidget)
#include "tst_eventlogtablewidget.moc"

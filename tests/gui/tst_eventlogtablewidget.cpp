#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "testbase.h"

#include <QApplication>

class tst_EventLogTableWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void startsWithHeadersAlone();
    void showsWhatWasLoggedAndWhatComes();
    void clearingKeepsTheHeaders();
    void cellsCanBeNeitherSelectedNorEdited();
    void aSecondLogIsAdded();
    void outlivesItsLog();
};

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

static const QDateTime Noon(QDate(2024, 5, 6), QTime(12, 0, 0, 250), Qt::UTC);

/** What a table shows, the header first. */
static QStringList shown(const QTableWidget& table)
{
    QStringList rows(table.horizontalHeaderItem(0)->text() + text(" | ") + table.horizontalHeaderItem(1)->text());
    for (int row = 0; row < table.rowCount(); ++row)
        rows.append(table.item(row, 0)->text() + text(" | ") + table.item(row, 1)->text());
    return rows;
}

void tst_EventLogTableWidget::startsWithHeadersAlone()
{
    EventLog log;
    const EventLogTableWidget table(&log, nullptr);
    QCOMPARE(table.columnCount(), 2);
    QCOMPARE(shown(table), QStringList(text("Time | Message")));
}

void tst_EventLogTableWidget::showsWhatWasLoggedAndWhatComes()
{
    EventLog log;
    log.add(Noon, text("checksum failure, id 142"));
    log.add(QDateTime(), text("source lost"));
    const EventLogTableWidget table(&log, nullptr);
    log.add(Noon.addSecs(-1), QString());
    QCOMPARE(shown(table), QStringList() << text("Time | Message")
                                         << text("2024-05-06T12:00:00Z | checksum failure, id 142")
                                         << text("N/A | source lost") << text("2024-05-06T11:59:59Z | "));
}

void tst_EventLogTableWidget::clearingKeepsTheHeaders()
{
    EventLog log;
    for (int i = 0; i < 1000; ++i)
        log.add(Noon, QString::number(i));
    const EventLogTableWidget table(&log, nullptr);
    QCOMPARE(table.rowCount(), 1000);
    for (int i = 0; i < 2; ++i) {
        log.clear();
        QCOMPARE(shown(table), QStringList(text("Time | Message")));
    }
    log.add(QDateTime(), text("again"));
    QCOMPARE(shown(table), QStringList() << text("Time | Message") << text("N/A | again"));
}

void tst_EventLogTableWidget::cellsCanBeNeitherSelectedNorEdited()
{
    EventLog log;
    log.add(QDateTime(), text("event"));
    EventLogTableWidget table(&log, nullptr);
    for (int column = 0; column < 2; ++column)
        QCOMPARE(table.item(0, column)->flags(), Qt::ItemFlags(Qt::ItemIsEnabled));
    table.selectAll();
    QVERIFY(table.selectedItems().isEmpty());
}

void tst_EventLogTableWidget::aSecondLogIsAdded()
{
    EventLog one;
    EventLog two;
    one.add(QDateTime(), text("one"));
    two.add(QDateTime(), text("two"));
    EventLogTableWidget table(&one, nullptr);
    table.setEventLog(&two);
    one.add(QDateTime(), text("one again"));
    two.add(QDateTime(), text("two again"));
    QCOMPARE(shown(table), QStringList() << text("Time | Message") << text("N/A | one") << text("N/A | two")
                                         << text("N/A | one again") << text("N/A | two again"));
    one.clear();
    QCOMPARE(table.rowCount(), 0);
}

void tst_EventLogTableWidget::outlivesItsLog()
{
    EventLog* log = new EventLog;
    log->add(QDateTime(), text("event"));
    const EventLogTableWidget table(log, nullptr);
    delete log;
    QCOMPARE(table.rowCount(), 1);
}

QTEST_MAIN(tst_EventLogTableWidget)
#include "tst_eventlogtablewidget.moc"

#include "eventlog.h"
#include "testbase.h"

#include <QSignalSpy>

class tst_EventLog : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void entriesAreAnnouncedAndKept();
    void stormIsOneEntryAtOnceAndItsNumberLater();
    void stormThatPausedBeginsAnew();
    void windowsGrow();
    void differentEventsAreFoldedApart();
    void kindFoldsTextsThatDiffer();
    void noiseOfEverNewTextsIsBounded();
    void fullLogSaysSo();
    void clearingForgetsWhatIsCounted();
    void csv();
};

static QStringList texts(const EventLog& log)
{
    QStringList list;
    Q_FOREACH (const EventLog::Entry& entry, log.getEntries())
        list += entry.event.getMessage();
    return list;
}

static CorvelEvent crcError(const char* text = "checksum failure, id 142, sender 255:190")
{
    return CorvelEvent(CorvelEvent::CrcError, QLatin1String(text));
}

static QDateTime at(int second)
{
    return QDateTime(QDate(2015, 7, 5), QTime(0, 30), Qt::UTC).addSecs(second);
}

void tst_EventLog::entriesAreAnnouncedAndKept()
{
    EventLog log;
    QSignalSpy entries(&log, SIGNAL(newEntry(EventLog::Entry)));
    QSignalSpy clearings(&log, SIGNAL(cleared()));
    log.append(crcError(), at(1));
    log.append(crcError(), QDateTime());
    QCOMPARE(int(entries.count()), 2);
    const EventLog::Entry announced = entries.first().first().value<EventLog::Entry>();
    QCOMPARE(announced.time, at(1));
    QCOMPARE(announced.event.getType(), CorvelEvent::CrcError);
    QCOMPARE(announced.event.getMessage(), crcError().getMessage());
    QVERIFY(!log.getEntries().last().time.isValid());
    log.clear();
    QCOMPARE(int(clearings.count()), 1);
    QVERIFY(log.getEntries().isEmpty());
}

void tst_EventLog::stormIsOneEntryAtOnceAndItsNumberLater()
{
    EventLog log;
    for (int i = 0; i < 1314; ++i)
        log.log(crcError(), at(i), 100);
    QCOMPARE(texts(log), QStringList(crcError().getMessage()));
    log.flush(1099);
    QCOMPARE(int(log.getEntries().size()), 1);
    log.flush(1100);
    QCOMPARE(texts(log).last(), QString::fromLatin1("1,313 x checksum failure, id 142, sender 255:190 (1,314 in all)"));
    QCOMPARE(log.getEntries().last().time, at(1313));
    QCOMPARE(log.getEntries().last().event.getType(), CorvelEvent::CrcError);
    log.flushAll();
    QCOMPARE(int(log.getEntries().size()), 2);
}

void tst_EventLog::stormThatPausedBeginsAnew()
{
    EventLog log;
    log.log(crcError(), at(0), 0);
    log.log(crcError(), at(5), 5000);
    QCOMPARE(texts(log), QStringList() << crcError().getMessage() << crcError().getMessage());
    log.log(crcError(), at(5), 5500);
    log.flushAll();
    QCOMPARE(texts(log).last(), QString::fromLatin1("1 x checksum failure, id 142, sender 255:190 (2 in all)"));
}

void tst_EventLog::windowsGrow()
{
    EventLog log;
    const int seconds = 24 * 3600;
    for (int i = 0; i < seconds * 2; ++i)
        log.log(crcError(), QDateTime(), qint64(i) * 500);
    // 1, 2, 4 ... 512 seconds, then every ten minutes.
    QVERIFY2(log.getEntries().size() > 140 && log.getEntries().size() < 160,
             qPrintable(QString::number(log.getEntries().size())));
    log.flushAll();
    QVERIFY(texts(log).last().endsWith(QLatin1String("(172,800 in all)")));
}

void tst_EventLog::differentEventsAreFoldedApart()
{
    EventLog log;
    for (int i = 0; i < 3; ++i) {
        log.log(crcError("a"), at(i), 0);
        log.log(crcError("b"), at(i), 0);
        log.log(CorvelEvent(CorvelEvent::ClockJump, QLatin1String("a")), at(i), 0);
    }
    log.flushAll();
    QCOMPARE(texts(log),
             QString::fromLatin1("a;b;a;2 x a (3 in all);2 x b (3 in all);2 x a (3 in all)").split(QLatin1Char(';')));
}

void tst_EventLog::kindFoldsTextsThatDiffer()
{
    EventLog log;
    for (int i = 1; i < 5; ++i)
        log.log(CorvelEvent(CorvelEvent::Resynchronisation, QString::fromLatin1("%1 bytes skipped").arg(i)), at(i), 0,
                QLatin1String("bytes skipped"));
    log.flushAll();
    QCOMPARE(texts(log),
             QStringList() << QLatin1String("1 bytes skipped") << QLatin1String("3 x bytes skipped (4 in all)"));
}

void tst_EventLog::noiseOfEverNewTextsIsBounded()
{
    EventLog log;
    for (int i = 0; i < 100000; ++i)
        log.log(CorvelEvent(CorvelEvent::UnknownMessage, QString::fromLatin1("unknown message id %1").arg(i)), at(0),
                i / 100);
    log.flushAll();
    QVERIFY2(log.getEntries().size() < 100, qPrintable(QString::number(log.getEntries().size())));
    QCOMPARE(texts(log).filter(QLatin1String("Unknown message, various")).isEmpty(), false);
}

void tst_EventLog::fullLogSaysSo()
{
    EventLog log;
    log.setEntryLimit(3);
    QSignalSpy entries(&log, SIGNAL(newEntry(EventLog::Entry)));
    for (int i = 0; i < 10; ++i)
        log.append(crcError("x"), at(i));
    QCOMPARE(int(entries.count()), 3);
    QCOMPARE(texts(log).mid(0, 2), QStringList() << QLatin1String("x") << QLatin1String("x"));
    QVERIFY(texts(log).last().startsWith(QLatin1String("The log is full with 3 entries")));
    log.clear();
    log.append(crcError("y"), at(0));
    QCOMPARE(texts(log), QStringList(QLatin1String("y")));
}

void tst_EventLog::clearingForgetsWhatIsCounted()
{
    EventLog log;
    log.log(crcError(), at(0), 0);
    log.log(crcError(), at(0), 0);
    log.clear();
    log.flushAll();
    QVERIFY(log.getEntries().isEmpty());
    log.log(crcError(), at(1), 1);
    QCOMPARE(texts(log), QStringList(crcError().getMessage()));
}

void tst_EventLog::csv()
{
    EventLog log;
    QCOMPARE(log.toCsv(), QByteArray("Time,Type,Message\r\n"));
    log.append(crcError(), at(1).addMSecs(5));
    log.append(CorvelEvent(CorvelEvent::SourceEvent, QString::fromUtf8("\"b\u00e4d\"\nfile")), QDateTime());
    log.append(CorvelEvent(), at(2));
    QCOMPARE(log.toCsv(),
             QByteArray("Time,Type,Message\r\n"
                        "2015-07-05T00:30:01.005Z,CRC error,\"checksum failure, id 142, sender 255:190\"\r\n"
                        ",Source,\"\"\"b\xc3\xa4"
                        "d\"\"\nfile\"\r\n"
                        "2015-07-05T00:30:02.000Z,Other,\r\n"));
}

QTEST_GUILESS_MAIN(tst_EventLog)
#include "tst_eventlog.moc"

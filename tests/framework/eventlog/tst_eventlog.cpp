#include "eventlog.h"
#include "testbase.h"
#include "textrows.h"

#include <QSignalSpy>

static QString textsOf(const EventLog& log)
{
    QStringList list;
    Q_FOREACH (const EventLog::Entry& entry, log.getEntries())
        list += entry.event.getMessage();
    return list.join(QLatin1String("; "));
}

static CorvelEvent crc(const char* message, CorvelEvent::Type type = CorvelEvent::CrcError)
{
    return CorvelEvent(type, text(message));
}

static QDateTime at(int second)
{
    return QDateTime(QDate(2015, 7, 5), QTime(0, 30), Qt::UTC).addSecs(second);
}

class tst_EventLog : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void stormIsOneEntryAtOnceAndItsNumberLater()
    {
        EventLog log;
        for (int i = 0; i < 1314; ++i)
            log.log(crc("bad"), at(i), 100);
        log.flush(1099);
        QCOMPARE(textsOf(log), text("bad"));
        log.flush(1100);
        QCOMPARE(textsOf(log), text("bad; 1,313 x bad (1,314 in all)"));
        QCOMPARE(log.getEntries().last().time, at(1313));
        // When it paused, it begins anew.
        log.log(crc("bad"), at(2000), 5000);
        log.log(crc("bad"), at(2000), 5500);
        log.flushAll();
        log.flushAll();
        QCOMPARE(textsOf(log), text("bad; 1,313 x bad (1,314 in all); bad; 1 x bad (2 in all)"));
    }

    void windowsGrow()
    {
        EventLog log;
        for (int i = 0; i < 24 * 3600 * 2; ++i)
            log.log(crc("bad"), QDateTime(), qint64(i) * 500);
        // 1, 2, 4 ... 512 seconds, then every ten minutes.
        QVERIFY2(log.getEntries().size() > 140 && log.getEntries().size() < 160, qPrintable(textsOf(log)));
        log.flushAll();
        QVERIFY(textsOf(log).endsWith(QLatin1String("(172,800 in all)")));
    }

    void eventsAreFoldedByTypeAndKind()
    {
        EventLog log;
        for (int i = 0; i < 3; ++i) {
            log.log(crc("a"), at(i), 0);
            log.log(crc("b"), at(i), 0);
            log.log(crc("a", CorvelEvent::ClockJump), at(i), 0);
            log.log(CorvelEvent(CorvelEvent::Resynchronisation, QString::number(i)), at(i), 0, text("skipped"));
        }
        log.flushAll();
        QCOMPARE(textsOf(log), text("a; b; a; 0; 2 x a (3 in all); 2 x b (3 in all); 2 x a (3 in all); "
                                    "2 x skipped (3 in all)"));
    }

    void aCauseIsEnteredWithWhatFollowsIt()
    {
        EventLog log;
        log.expect(crc("alone"), at(1), 0, text("of alone"));
        log.expect(crc("cause"), at(1), 0, text("of cause"));
        log.log(crc("cause"), at(2), 500, text("of cause"));
        QCOMPARE(textsOf(log), QString());
        log.flush(1000);
        QCOMPARE(textsOf(log), text("alone; 1 x of cause"));
        log.expect(crc("cause"), at(3), 1500, text("of cause"));
        log.expect(crc("late"), at(3), 1500, text("of late"));
        log.flushAll();
        QCOMPARE(textsOf(log), text("alone; 1 x of cause; 1 x of cause (2 in all); late"));
    }

    void noiseOfEverNewTextsIsBounded()
    {
        EventLog log;
        for (int i = 0; i < 100000; ++i)
            log.log(CorvelEvent(CorvelEvent::UnknownMessage, QString::number(i)), at(0), i / 100);
        log.flushAll();
        QVERIFY2(log.getEntries().size() < 100, qPrintable(textsOf(log)));
        QVERIFY(textsOf(log).contains(QLatin1String("Unknown message, various")));
    }

    void fullLogSaysSoUntilItIsCleared()
    {
        EventLog log;
        log.setEntryLimit(3);
        QSignalSpy entries(&log, SIGNAL(newEntry(EventLog::Entry)));
        QSignalSpy clearings(&log, SIGNAL(cleared()));
        for (int i = 0; i < 10; ++i)
            log.append(crc("x"), at(i));
        QCOMPARE(int(entries.count()), 3);
        QCOMPARE(entries.first().first().value<EventLog::Entry>().time, at(0));
        QVERIFY2(textsOf(log).startsWith(QLatin1String("x; x; The log is full with 3 entries")),
                 qPrintable(textsOf(log)));
        log.log(crc("x"), at(0), 0);
        log.log(crc("x"), at(0), 0);
        log.clear();
        log.flushAll();
        QCOMPARE(textsOf(log), QString());
        QCOMPARE(int(clearings.count()), 1);
        log.log(crc("x"), at(1), 1);
        log.log(crc("x"), at(1), 1);
        log.clear();
        log.log(crc("x"), at(1), 1);
        QCOMPARE(textsOf(log), text("x"));
    }

    void csv()
    {
        EventLog log;
        log.append(crc("checksum failure, id 142"), at(1).addMSecs(5));
        log.append(crc("\"b\303\244d\"\nfile", CorvelEvent::SourceEvent), QDateTime());
        log.append(CorvelEvent(), at(2));
        QCOMPARE(QString::fromUtf8(log.toCsv().constData()),
                 text("Time,Type,Message\r\n"
                      "2015-07-05T00:30:01.005Z,CRC error,\"checksum failure, id 142\"\r\n"
                      ",Source,\"\"\"b\303\244d\"\"\nfile\"\r\n"
                      "2015-07-05T00:30:02.000Z,Other,\r\n"));
    }
};

QTEST_GUILESS_MAIN(tst_EventLog)
#include "tst_eventlog.moc"

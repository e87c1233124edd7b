#include "formatinfo.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "testbase.h"
#include "textrows.h"

typedef MessageStatisticsCoordinator::SenderStatistics SenderStatistics;

/** A coordinator of a stream, and the two types of its format. */
struct Coordination
{
    Coordination()
        : format(text("Format"))
        , heartbeat(new MessageInfo(text("HEARTBEAT")))
        , attitude(new MessageInfo(text("ATTITUDE")))
        , stream(coordinator.addStream())
    {
        format.addMessageInfo(heartbeat);
        format.addMessageInfo(attitude);
    }

    MessageStatistics* receive(int from, const MessageInfo* info, quint32 id, quint32 sender, qint64 time = 0)
    {
        MessageStatistics* const statistics = make(from, info, id, sender);
        statistics->addReception(time);
        return statistics;
    }

    MessageStatistics* make(int from, const MessageInfo* info, quint32 id, quint32 sender)
    {
        const QString name = QString::fromLatin1("%1:%2").arg(sender >> 8).arg(sender & 255);
        return coordinator.findOrCreate(
            from, rowOf(id, sender),
            MessageStatisticsCoordinator::Origin(info, int(sender), name, QString::fromLatin1("Unknown %1").arg(id)));
    }

    /** As a StreamIdentities does it. */
    int rowOf(quint32 id, quint32 sender)
    {
        const quint64 key = quint64(id) << 32 | sender;
        if (!m_rows.contains(key))
            m_rows.insert(key, int(m_rows.size()));
        return m_rows.value(key);
    }
    MessageStatistics* find(quint32 id, quint32 sender) { return coordinator.find(stream, rowOf(id, sender)); }

    QStringList rowList() const
    {
        QStringList texts;
        Q_FOREACH (const MessageStatistics* statistics, coordinator.getAllMessageStatistics())
            texts += QString::fromLatin1("%1 | %2").arg(statistics->getMessageName()).arg(statistics->getCount());
        return texts;
    }
    QString rows() const { return rowList().join(QLatin1String("; ")); }

    FormatInfo format;
    MessageInfo* heartbeat;
    MessageInfo* attitude;
    MessageStatisticsCoordinator coordinator;
    int stream;

private:
    QHash<quint64, int> m_rows;
};

static QString lossesOf(const SenderStatistics& sender)
{
    const quint64 counts[] = {sender.lost, sender.repeated, sender.late, sender.restarts, sender.failed};
    const char* const names[] = {"lost", "repeated", "late", "restarts", "failed"};
    QString told = QString::fromLatin1("%1 received").arg(sender.received);
    for (int i = 0; i < 5; ++i)
        if (counts[i])
            told += QString::fromLatin1(", %1 %2").arg(counts[i]).arg(text(names[i]));
    return sender.numbered ? told : told + QLatin1String(", no numbers");
}

class tst_MessageStatisticsCoordinator : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void allTypesShareALimitOfGaps()
    {
        Coordination c;
        c.coordinator.setGapLimit(12);
        QStringList stored;
        for (int i = 0; i < 3; ++i) {
            if (i == 2)
                c.coordinator.clearStream(c.stream);
            const MessageInfo* const info = i == 1 ? c.heartbeat : c.attitude;
            qint64 time = 1000000;
            for (int message = 0; message < 80; ++message)
                c.receive(c.stream, info, quint32(i & 1), 1, time += message < 20 || message % 3 ? 50000 : 100000);
            const MessageStatistics* const statistics = c.find(quint32(i & 1), 1);
            stored +=
                QString::fromLatin1("%1 of %2").arg(statistics->getGaps().size()).arg(statistics->getNumberOfGaps());
        }
        QCOMPARE(stored.join(text("; ")), text("12 of 20; 10 of 20; 12 of 20"));
    }

    void secondSenderNamesAllOfTheStream()
    {
        Coordination c;
        QVERIFY(!c.find(0, 0x101));
        for (int i = 0; i < 20; ++i)
            c.receive(c.stream, c.heartbeat, 0, 0x101, i * 1000000);
        c.receive(c.stream, 0, 203, 0x101);
        c.receive(c.stream, 0, 77777, 0x2233); // noise, and no second sender
        QCOMPARE(c.rows(), text("HEARTBEAT | 20; Unknown 203 | 1; Unknown 77777 | 1"));
        const QList<MessageStatistics*> before = c.coordinator.getAllMessageStatistics();
        QVERIFY(before.first()->getMessageInfo() == c.heartbeat && !before.last()->getMessageInfo());
        QCOMPARE(before.first()->getFormatInfo()->getName() + before.last()->getFormatInfo()->getName(),
                 text("FormatUnknown"));

        c.receive(c.stream, c.attitude, 30, 0x102);
        QCOMPARE(c.rows(),
                 text("HEARTBEAT (1:1) | 20; Unknown 203 (1:1) | 1; Unknown 77777 (34:51) | 1; ATTITUDE (1:2) | 1"));
        // Other objects, so that whoever shows them makes new rows.
        Q_FOREACH (MessageStatistics* statistics, before)
            QVERIFY(!c.coordinator.getAllMessageStatistics().contains(statistics));
        MessageStatistics* const heartbeat = c.find(0, 0x101);
        QVERIFY(heartbeat->isCurrentlyRegular());
        QCOMPARE(c.receive(c.stream, c.heartbeat, 0, 0x101, 20 * 1000000), heartbeat);
        QCOMPARE(heartbeat->getIntervalCountHash().value(1000), 21u);
        // Once is enough.
        c.receive(c.stream, c.attitude, 30, 0x103);
        QCOMPARE(c.find(0, 0x101), heartbeat);
        QCOMPARE(c.rowList().last(), text("ATTITUDE (1:3) | 1"));
    }

    void messageIsCountedAtOnceOrNotAtAll()
    {
        Coordination c;
        const auto count = [&c](quint32 id, qint64 time, qint64 number) {
            return c.coordinator.countMessage(c.stream, c.rowOf(id, 0x101), id ? c.attitude : c.heartbeat, time, number,
                                              256);
        };
        QVERIFY(!count(0, 0, 1));
        MessageStatistics* const alone = c.make(c.stream, c.heartbeat, 0, 0x101);
        QVERIFY(!count(0, 0, 1)); // of a sender that is not known
        QCOMPARE(alone->getCount(), 0u);
        c.coordinator.countNumber(c.stream, 0x101, text("1:1"), 254, 256);
        for (int i = 0; i < 20; ++i)
            QVERIFY(count(0, i * 1000000, i < 1 ? 255 : i + 1));
        QVERIFY(alone->isCurrentlyRegular());
        QCOMPARE(lossesOf(c.coordinator.getSenderStatistics().first()), text("21 received, 2 lost"));

        c.receive(c.stream, c.attitude, 30, 0x102); // the statistics get another name and are other objects
        QVERIFY(count(0, 20 * 1000000, 21));
        MessageStatistics* const named = c.find(0, 0x101);
        QVERIFY(named != alone && named->getCount() == 21 && named->isCurrentlyRegular());
        c.receive(c.stream, c.attitude, 30, 0x101);
        QVERIFY(count(30, 30 * 1000000, 22)); // meanwhile the other type fell silent
        QVERIFY(!named->isCurrentlyRegular());

        c.coordinator.clearStream(c.stream);
        QVERIFY(!count(0, 0, 1));
        // What comes again has the object that it had under that name, which began anew.
        QCOMPARE(c.make(c.stream, c.heartbeat, 0, 0x101), alone);
        QVERIFY(alone->getCount() == 0 && named->getCount() == 0 && named->getGaps().isEmpty());
        c.coordinator.removeStream(c.stream);
        QVERIFY(!count(0, 0, 1));
    }

    void aTypeThatBecomesAnotherKeepsItsCounts()
    {
        Coordination c;
        c.receive(c.stream, 0, 203, 0x101);
        c.receive(c.stream, c.heartbeat, 0, 0x102);
        QCOMPARE(c.rows(), text("Unknown 203 | 1; HEARTBEAT | 1"));
        QVERIFY(!c.coordinator.countMessage(c.stream, c.rowOf(203, 0x101), c.attitude, 0, 1, 256));
        c.receive(c.stream, c.attitude, 203, 0x101);
        QCOMPARE(c.rows(), text("ATTITUDE (1:1) | 2; HEARTBEAT (1:2) | 1")); // from two senders, as is known now
        QCOMPARE(c.find(203, 0x101)->getMessageInfo(), static_cast<const MessageInfo*>(c.attitude));
        c.receive(c.stream, 0, 203, 0x101);
        QCOMPARE(c.rows(), text("Unknown 203 | 3; HEARTBEAT | 1"));
    }

    void streamsAreApart()
    {
        Coordination c;
        const int second = c.coordinator.addStream();
        c.receive(c.stream, c.heartbeat, 0, 0x101);
        c.receive(second, c.heartbeat, 0, 0x101);
        c.receive(second, c.heartbeat, 0, 0x102);
        c.coordinator.countNumber(second, 0x101, QString(), 0, 256);
        c.coordinator.countEvent(CorvelEvent::CrcError);
        c.coordinator.countEvent(CorvelEvent::CrcError, 5);
        c.coordinator.countEvent(CorvelEvent::ClockJump);
        QCOMPARE(c.rows(), text("HEARTBEAT | 1; HEARTBEAT (1:1) | 1; HEARTBEAT (1:2) | 1"));
        c.coordinator.removeStream(c.stream);
        QCOMPARE(c.rows(), text("HEARTBEAT (1:1) | 1; HEARTBEAT (1:2) | 1"));
        QVERIFY(!c.find(0, 0x101));
        QCOMPARE(c.coordinator.getEventCount(CorvelEvent::CrcError), 6u);
        QCOMPARE(c.coordinator.getEventCount(CorvelEvent::ClockJump), 1u);

        c.coordinator.clear();
        QVERIFY(c.rows().isEmpty() && c.coordinator.getSenderStatistics().isEmpty());
        QCOMPARE(c.coordinator.getEventCount(CorvelEvent::CrcError), 0u);
        c.receive(second, c.attitude, 30, 0x101);
        QCOMPARE(c.rows(), text("ATTITUDE | 1"));
    }

    void unknownTypesAreBounded()
    {
        Coordination c;
        for (quint32 id = 0; id < 5000; ++id)
            c.receive(c.stream, 0, 1000 + id, id);
        QCOMPARE(int(c.rowList().size()), 1001);
        c.receive(c.stream, c.heartbeat, 0, 0x101);
        c.receive(c.stream, c.heartbeat, 0, 0x102);
        QCOMPARE(c.rowList().at(0), text("Unknown 1000 (0:0) | 1"));
        QCOMPARE(c.rowList().at(1000), text("Unknown, others | 4000"));
        c.receive(c.stream, 0, 999999, 0x101);
        QCOMPARE(c.rowList().at(1000), text("Unknown, others | 4001"));
    }

    void silentTypeStopsBeingRegular()
    {
        Coordination c;
        for (int i = 0; i < 20; ++i)
            c.receive(c.stream, c.heartbeat, 0, 0x101, i * 1000000);
        const MessageStatistics* const heartbeat = c.find(0, 0x101);
        c.coordinator.setCurrentTime(c.stream, 20 * 1000000);
        QVERIFY(heartbeat->isCurrentlyRegular());
        c.coordinator.setCurrentTime(c.stream, 22 * 1000000);
        QVERIFY(!heartbeat->isCurrentlyRegular());
        QCOMPARE(heartbeat->getLastInterval(), 1000ULL);
    }

private:
    // "a5" is the number 5 of 2^32 from a, "z5" is from one without numbers, "5" that of 256 from the only one, and F a
    // frame of it that failed.
    static QString lossesOfAll(const QString& numbers)
    {
        Coordination c;
        Q_FOREACH (const QString& word, numbers.split(QLatin1Char(' '))) {
            const bool isNamed = word.at(0).isLetter() && word.size() > 1;
            if (word == QLatin1String("F")) // of an unknown sender there is no row
                c.coordinator.countFailure(c.stream, 'a');
            else
                c.coordinator.countNumber(c.stream, isNamed ? word.at(0).unicode() : quint32('a'),
                                          isNamed ? word.left(1) : text("a"), word.mid(isNamed).toLongLong(),
                                          !isNamed                            ? 256
                                          : word.startsWith(QLatin1Char('z')) ? 0
                                                                              : Q_INT64_C(1) << 32);
        }
        QStringList told;
        Q_FOREACH (const SenderStatistics& sender, c.coordinator.getSenderStatistics())
            told.append((sender.sender < 0 ? text("all") : sender.name) + QLatin1String(": ") + lossesOf(sender));
        return told.size() > 1 ? told.join(QLatin1String("; ")) : told.join(QString()).mid(3);
    }

    /** "a1 a3 a5", up to a number. */
    static QByteArray everyOther(int last)
    {
        QByteArray numbers("a1");
        for (int number = 3; number <= last; number += 2)
            numbers += " a" + QByteArray::number(number);
        return numbers;
    }

private Q_SLOTS:
    void numbersTellLosses()
    {
        const QByteArray full = everyOther(139) + " a14 a12 a140";
        const QByteArray tooFull = everyOther(139) + " a12 a10";
        const TextRow rows[] = {{"5 6 7 8", "4 received"},
                                {"254 255 0 1", "4 received"},
                                {"5 6 9 10", "4 received, 2 lost"},
                                {"254 1 2", "3 received, 2 lost"},
                                {"10 210 211", "3 received, 199 lost"},
                                {"250 0 1", "3 received, 5 lost"}, // that it ends at 0 is chance
                                {"2 2 5 5", "4 received, 2 lost, 2 repeated"},
                                {"1 3 2 4", "4 received, 1 late"},
                                {"254 0 255 1", "4 received, 1 late"},
                                {"1 2 3 2 4", "5 received, 1 repeated"},
                                {"1 2 4 2 5", "5 received, 1 lost, 1 repeated"},
                                {"1 3 2 2 4", "5 received, 1 repeated, 1 late"},
                                {"100 101 0 1 2", "5 received, 1 restarts"},
                                {"-1 -1 -1", "3 received, no numbers"},
                                {"-1 5 6", "3 received"},
                                {"5 -1 6", "3 received"},
                                {"F 1 F 3", "2 received, 1 lost, 1 failed"},
                                {"a1 a2 a3", "3 received"},
                                {"a1 z0 a2 z0", "a: 2 received; z: 2 received, no numbers"},
                                {"a7000 a7003", "2 received, 2 lost"},
                                {"a100 a101 a1 a2", "4 received, 1 restarts"},
                                {"a100 a3000000000 a3000000001", "3 received, 1 restarts"},
                                {"a1 a4 a2 a5 a3 a6", "6 received, 2 late"},
                                // A part that comes late as a whole.
                                {"a100 a301 a302 a101 a102 a303", "6 received, 198 lost, 2 late"},
                                // Only the newest 64 holes are remembered.
                                {full.constData(), "73 received, 67 lost, 2 late"},
                                {tooFull.constData(), "72 received, 68 lost, 1 late, 1 restarts"},
                                {"a5 a5 a6 a5", "4 received, 2 repeated"},
                                // Much may be lost of one while others go on.
                                {"a1 b1 b2 b3 b4 b5 a1080 b6 b7", "a: 2 received, 1078 lost; b: 7 received"},
                                {"a1 a1080", "2 received, 1 restarts"},
                                {"a-1 b7 a-1 b8", "a: 2 received, no numbers; b: 2 received"},
                                {"a1 b1 a2 b2 a3 b3 a4 b4 a5 b5 a6 b6", "a: 6 received; b: 6 received"},
                                // One counts what both of them send.
                                {"a1 b2 a3 a4 b5 a6 b7 b8 a9 a10 b11 a12",
                                 "a: 7 received, no numbers; b: 5 received, no numbers; "
                                 "all: 12 received"},
                                {"a1 b2 a3 a4 b5 a6 b7 b8 a11 a12 b13 a14 b15 a16 a17 b18 b19 a20",
                                 "a: 10 received, no numbers; b: 8 received, no numbers; all: 18 received, 2 lost"}};
        checkRows(rows, lossesOfAll);
    }
};

QTEST_APPLESS_MAIN(tst_MessageStatisticsCoordinator)
#include "tst_messagestatisticscoordinator.moc"

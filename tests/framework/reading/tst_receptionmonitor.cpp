#include "eventlog.h"
#include "message.h"
#include "messageneed.h"
#include "messagereference.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "receptionmonitor.h"
#include "streamfixtures.h"
#include "streamsource.h"
#include "testbase.h"
#include "textrows.h"
#include "waitfor.h"

namespace
{

/** A monitor with what it writes to, and a clock that is set. */
struct Monitored
{
    class Clock : public ReceptionMonitor::Clock
    {
    public:
        explicit Clock(const qint64* time)
            : m_time(time)
        {
        }
        qint64 now() const override { return *m_time; }

    private:
        const qint64* m_time;
    };

    Monitored() { monitor->setClock(new Clock(&now)); }

    /** Begins a stream of "A@1000", a message of that type at that time in milliseconds, and of "!3", a kind of problem
     * with 17 bytes; returns what is told of it. */
    QString receive(const QString& words, StreamDecoder* from = nullptr)
    {
        monitor->begin(from ? from : &decoder);
        for (const QString& word : words.split(QLatin1Char(' '))) {
            if (word.startsWith(QLatin1Char('!'))) {
                StreamProblem problem;
                problem.kind = static_cast<StreamProblem::Kind>(word.mid(1).toInt());
                problem.length = 17;
                monitor->processProblem(problem);
                continue;
            }
            ReceivedMessage message;
            message.info = format.getMessageInfo(word.left(1));
            message.id = static_cast<quint32>(word.at(0).unicode());
            message.sender = 1;
            message.time = word.mid(2).toLongLong() * 1000;
            monitor->processReceived(message);
        }
        return entries();
    }

    /** What the source of the script left, once it is at its end. */
    QString play(const QList<QByteArray>& script, ByteInput::Status last = ByteInput::End)
    {
        StreamSource source(new ScriptedInput(script, last), new LineDecoder(&format, true));
        StreamSource::Playback fast;
        fast.factor = 0;
        source.setPlayback(fast);
        QObject::connect(&source, &StreamSource::newMessage,
                         [this] { countAtDelivery = coordinator.getAllMessageStatistics().constFirst()->getCount(); });
        monitor->follow(&source, text("script"));
        if (isToVanish)
            monitor.reset();
        source.start();
        if (!waitFor([&] { return source.getState() >= StreamSource::Finished; }))
            return text("no end");
        return entries();
    }

    QString entries() const
    {
        QStringList list;
        for (const EventLog::Entry& entry : log.getEntries())
            list += CorvelEvent::getTypeName(entry.event.getType()) + QLatin1String(": ") + entry.event.getMessage();
        return list.join(QLatin1String("; "));
    }

    LineFormat format;
    LineDecoder decoder{&format, true};
    MessageStatisticsCoordinator coordinator;
    EventLog log;
    qint64 now = 0;
    bool isToVanish = false; // before the source
    unsigned int countAtDelivery = 0;
    std::unique_ptr<ReceptionMonitor> monitor{new ReceptionMonitor(&coordinator, &log)};
};

} // namespace

/** What a stream leaves in statistics and log. */
class TestReceptionMonitor : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void countsWhatNobodyNeedsBeforeItIsDelivered()
    {
        Monitored m;
        QByteArray script;
        for (int i = 0; i < 10; ++i)
            script += QByteArray::number(1000 + 100 * i) + " A\n" + QByteArray::number(1050 + 100 * i) + " B\n";
        MessageNeed need(nullptr);
        need.setMessageNeeded(m.format.type("A"));
        QCOMPARE(m.play({script, "! A\n! A\n"}),
                 text("Source: script: opened; CRC error: checksum failure, id 65, sender sender 1; "
                      "CRC error: 1 x checksum failure, id 65, sender sender 1 (2 in all); Source: script: ended"));
        QCOMPARE(m.coordinator.getAllMessageStatistics().size(), 2);
        QCOMPARE(m.coordinator.getAllMessageStatistics().at(1)->getMessageName(), text("B"));
        QCOMPARE(m.coordinator.getAllMessageStatistics().at(1)->getIntervalCountHash().value(100), 10u);
        QCOMPARE(m.countAtDelivery, 10u);
        QCOMPARE(m.coordinator.getEventCount(CorvelEvent::CrcError), 2u);
        QCOMPARE(m.log.getEntries().at(1).time.toMSecsSinceEpoch(), 1950);
    }

    void sourceMayFailOrOutliveItsMonitor()
    {
        Monitored failing;
        QVERIFY(failing.play({}, ByteInput::Failed).endsWith(text("Source: script: failed: it is gone")));
        QVERIFY(failing.log.getEntries().constLast().time.isValid());
        Monitored vanishing;
        vanishing.isToVanish = true;
        QCOMPARE(vanishing.play({"1000 A\n"}), QString());
        QVERIFY(vanishing.coordinator.getAllMessageStatistics().isEmpty());
    }

    void problemsUnknownTypesAndClockJumpsAreEvents()
    {
        Monitored unknown;
        QCOMPARE(unknown.receive(text("Z@0 Z@1000 Z@2000")),
                 text("Unknown message: unknown message id 90, sender sender 1"));
        QCOMPARE(unknown.coordinator.getEventCount(CorvelEvent::UnknownMessage), 3u);
        QCOMPARE(unknown.coordinator.getAllMessageStatistics().constFirst()->getMessageName(), text("Unknown 90"));
        const TextRow rows[] = {
            {"A@10000 A@9500 A@20000 A@15000 A@7215000",
             "Clock jump: the time of messages goes back by 5.0 s; Clock jump: the time of messages leaps by 7200.0 s"},
            {"!0 !1 !2 !3 !4 !5",
             "CRC error: checksum failure; Unsupported message: length does not fit the message type; "
             "Unsupported message: frame with an unsupported feature; Resynchronisation: 17 bytes skipped; "
             "Truncated message: stream ends inside a frame, after 17 bytes; Source: reading failed"}};
        checkRows(rows, [](const QString& words) { return Monitored().receive(words); });
        Monitored m;
        m.receive(text("!1 !2"));
        QCOMPARE(m.coordinator.getEventCount(CorvelEvent::UnsupportedMessage), 2u);
        QVERIFY(!m.log.getEntries().constFirst().time.isValid()); // nothing tells the time yet
    }

    void anySourceOfMessagesIsFollowed()
    {
        Monitored m;
        MessageNeed need(nullptr);
        need.setMessageNeeded(m.format.type("A"));
        std::unique_ptr<MessageSource> source(new MessageSource);
        m.monitor->follow(source.get(), text("oven"));
        // "A@1000 SENDER", as above; without a time, "A", as it comes.
        const auto deliver = [&](const QString& words) {
            Message* const message = new Message(m.format.getMessageInfo(words.left(1)));
            if (words.contains(QLatin1Char('@')))
                message->setTime(words.section(QLatin1Char(' '), 0, 0).mid(2).toLongLong() * 1000);
            message->setSender(words.section(QLatin1Char(' '), 1));
            message->setSequence(m.coordinator.getAllMessageStatistics().size());
            source->deliver(MessageReference::adopt(message).get());
        };
        for (int i = 0; i < 10; ++i) {
            deliver(text("A@%1 left").arg(1000 + 100 * i));
            deliver(text("B@%1 left").arg(1000 + 100 * i));
        }
        const auto counted = [&m] {
            QStringList texts;
            for (const MessageStatistics* statistics : m.coordinator.getAllMessageStatistics())
                texts += text("%1 %2").arg(statistics->getMessageName()).arg(statistics->getCount());
            return texts.join(text(", "));
        };
        QCOMPARE(counted(), text("A 10, B 10"));
        QCOMPARE(m.coordinator.getAllMessageStatistics().at(1)->getIntervalCountHash().value(100), 10u);
        deliver(text("A@9000000 right"));
        QCOMPARE(counted(), text("A (left) 10, B (left) 10, A (right) 1"));
        deliver(text("B left"));
        const MessageStatistics* const last = m.coordinator.getAllMessageStatistics().at(1);
        QCOMPARE(last->getCount(), 11u);
        QCOMPARE(last->getCountWithUnknownTime(), 0u);
        QCOMPARE(m.coordinator.getSenderStatistics().constFirst().lastNumber, qint64(3));
        source.reset();
        QCOMPARE(m.entries(), text("Source: oven: receiving; Clock jump: the time of messages leaps by 8998.1 s; "
                                   "Source: oven: ended"));
    }

    void stormIsFoldedAndCountedExactly()
    {
        Monitored m;
        m.monitor->begin(&m.decoder);
        StreamProblem problem;
        for (int i = 0; i < 2001; ++i) {
            problem.length = quint64(17 + i);
            m.monitor->processProblem(problem);
        }
        m.now = 1000;
        m.monitor->refresh();
        QCOMPARE(m.entries(), text("Resynchronisation: 17 bytes skipped; "
                                   "Resynchronisation: 2,000 x bytes skipped (2,001 in all)"));
        QCOMPARE(m.coordinator.getEventCount(CorvelEvent::Resynchronisation), 2001u);
    }

    void silenceOfALiveStreamEndsRegularity()
    {
        Monitored m;
        LineDecoder live(&m.format, false);
        m.monitor.reset(new ReceptionMonitor(&m.coordinator)); // works without a log, too
        const qint64 minuteAgo = QDateTime::currentMSecsSinceEpoch() - 60000;
        QString words;
        for (int i = 0; i < 20; ++i)
            words += text("A@%1 ").arg(minuteAgo + 100 * i);
        m.receive(words + text("!3"), &live);
        QCOMPARE(m.coordinator.getEventCount(CorvelEvent::Resynchronisation), 1u);
        const MessageStatistics* const statistics = m.coordinator.getAllMessageStatistics().constFirst();
        QVERIFY(statistics->isCurrentlyRegular());
        m.monitor->refresh();
        QVERIFY(!statistics->isCurrentlyRegular());
        m.monitor->finish();
    }
};

QTEST_GUILESS_MAIN(TestReceptionMonitor)
#include "tst_receptionmonitor.moc"

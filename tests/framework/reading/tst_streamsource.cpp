#include "messageneed.h"
#include "streamfixtures.h"
#include "streamsource.h"
#include "testbase.h"
#include "textrows.h"
#include "waitfor.h"

#include <QThread>
#include <QTimer>

#include <functional>
#include <memory>

namespace
{

const int Live = ScriptedInput::Live;

// What a view that needs the types A and C would have seen of a source, in order.
class Recorder : public QObject
{
public:
    explicit Recorder(StreamSource* source, const LineFormat& format)
    {
        m_need.setMessagesNeeded({format.type("A"), format.type("C")});
        const auto note = [this](const QString& line) { m_lines.append(line); };
        connect(source, &StreamSource::newMessage, this, [this, note](const Message* message) {
            QVERIFY(QThread::currentThread() == thread());
            QCOMPARE(message->getReferenceCount(), 1);
            ++messages;
            if (onMessage)
                onMessage();
            else
                note(QString::fromLatin1(message->getData()) + text(" from ") + message->getSender());
        });
        connect(source, &StreamSource::problem, this, note);
        connect(source, &StreamSource::stateChanged, this, [source, note](int state) {
            static const char* const names[] = {"idle", "opening", "running", "finished", "failed: "};
            note(text(names[state]) + source->getErrorString());
        });
    }

    QString told() const { return m_lines.join(QLatin1String("; ")); }

    int messages = 0;
    std::function<void()> onMessage; // instead of lines

private:
    MessageNeed m_need{nullptr};
    QStringList m_lines;
};

QList<QByteArray> manyLines(int count)
{
    QList<QByteArray> pieces;
    for (int i = 0; i < count; ++i) {
        if (i % 1000 == 0)
            pieces.append(QByteArray());
        pieces.last() += QByteArray::number(i) + " A\n";
    }
    return pieces;
}

bool waitUntilOver(const StreamSource& source)
{
    return waitFor([&] { return source.getState() >= StreamSource::Finished; }, 60000);
}

void yieldUntil(const std::function<bool()>& condition)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition() && timer.elapsed() < 10000)
        QThread::yieldCurrentThread();
}

StreamSource::Playback playback(double factor, double rate = 0)
{
    StreamSource::Playback result;
    result.factor = factor;
    result.messagesPerSecond = rate;
    return result;
}

} // namespace

class TestStreamSource : public TestBase
{
    Q_OBJECT

private:
    LineFormat m_format;

    std::unique_ptr<StreamSource> unpaced(const QList<QByteArray>& pieces, ByteInput::Status last = ByteInput::End,
                                          int flags = ScriptedInput::Recording)
    {
        std::unique_ptr<StreamSource> source(
            new StreamSource(new ScriptedInput(pieces, last, flags), new LineDecoder(&m_format, false)));
        source->setPlayback(playback(0));
        return source;
    }

    // Everything that a source brings to its end.
    QString allOf(const QString& given)
    {
        QList<QByteArray> pieces = given.toLatin1().replace(',', '\n').split('|');
        const QByteArray kind = pieces.takeFirst();
        const int flags = kind == "locked"      ? ScriptedInput::NotToBeOpened
                          : kind == "datagrams" ? Live | ScriptedInput::Datagrams
                          : kind == "live"      ? Live
                                                : ScriptedInput::Recording;
        const std::unique_ptr<StreamSource> source =
            unpaced(pieces, kind == "failed" ? ByteInput::Failed : ByteInput::End, flags);
        Recorder recorder(source.get(), m_format);
        source->start();
        source->start();
        if (!waitUntilOver(*source))
            return text("no end");
        const ReceptionCounters& counters = source->getCounters();
        return recorder.told() + text("; %1 known, %2 unknown, %3 failed")
                                     .arg(counters.getMessageCount())
                                     .arg(counters.getUnknownCount())
                                     .arg(counters.getChecksumFailureCount());
    }

private Q_SLOTS:
    void cleanupTestCase() { QCOMPARE(int(ScriptedInput::alive), 0); }

    void whatComesIsToldAndCounted()
    {
        // The end or the kind of input, and the pieces.
        const TextRow rows[] = {
            {"end|1 A,2 B,3 |C,4 X,5 A", "opening; running; 1 A from sender 1; 3 C from sender 1; 5 A from sender 1; "
                                         "finished; 4 known, 1 unknown, 0 failed"},
            // An end in trouble keeps what was shown.
            {"failed|1 A,2 A", "opening; running; 1 A from sender 1; 2 A from sender 1; failed: script: it is gone; "
                               "2 known, 0 unknown, 0 failed"},
            {"locked|1 A,", "opening; failed: script: it is locked; 0 known, 0 unknown, 0 failed"},
            // Problems are folded and counted exactly.
            {"end|!1 A,!2 A,!3 B,!4 A,!5 A,!6 B,",
             "opening; running; script at byte 0: checksum failure, id 65, sender sender 1; "
             "script at byte 10: checksum failure, id 66, sender sender 1; "
             "script at byte 20: checksum failure, id 65, sender sender 1 (3 times since byte 5); "
             "script at byte 25: checksum failure, id 66, sender sender 1; finished; 0 known, 0 unknown, 6 failed"},
            // A datagram ends what it began.
            {"datagrams|1 A||2 A,3 A", "opening; running; 1 A from sender 1; 2 A from sender 1; 3 A from sender 1; "
                                       "finished; 3 known, 0 unknown, 0 failed"},
            {"live|1 A||2 A,3 A", "opening; running; 1 A2 A from sender 1; 3 A from sender 1; finished; "
                                  "2 known, 0 unknown, 0 failed"}};
        checkRows(rows, [this](const QString& given) { return allOf(given); });
    }

    // A live input gives its few messages at once and does not wait for more to come.
    void arrivalIsStampedOncePerReadAndShownSoon()
    {
        const std::unique_ptr<StreamSource> source = unpaced({"1 A\n2 A\n", "3 A\n"}, ByteInput::Nothing, Live);
        source->setClock(new FakeClock);
        Recorder recorder(source.get(), m_format);
        QList<qint64> times;
        connect(source.get(), &StreamSource::newMessage, this,
                [&](const Message* message) { times.append(message->getTime()); });
        source->start();
        QVERIFY(waitFor([&] { return times.size() == 3; }));
        QCOMPARE(times, QList<qint64>() << 1000000 << 1000000 << 2000000);
        QCOMPARE(source->getState(), StreamSource::Running);
    }

    void messagesArePacedByTheirTimes()
    {
        // "timed" or not, "live" or from a file, the factor, the rate, the messages; each as the millisecond at which
        // it was let through is told.
        const TextRow rows[] = {
            {"timed file 1 0 500 A,500 B,700 A,60700 B", "500 A @0,500 B @0,700 A @200,60700 B @60200"},
            {"timed file 2 0 0 A,1000 A,3000 A", "0 A @0,1000 A @500,3000 A @1500"},
            {"timed file 0.5 0 0 A,1000 A", "0 A @0,1000 A @2000"},
            {"timed file 0 9 0 A,5000 A", "0 A @0,5000 A @0"}, // as fast as possible
            {"timed file 1 0 0 A,1000 A,900 B,1100 A", "0 A @0,1000 A @1000,900 B @1000,1100 A @1100"},
            // Clocks that are set back, to today, and to anything.
            {"timed file 1 0 9000 A,9500 A,100 A,400 A", "9000 A @0,9500 A @500,100 A @500,400 A @800"},
            {"timed file 1 0 100 A,200 A,1400000000000 A,1400000000100 A",
             "100 A @0,200 A @100,1400000000000 A @100,1400000000100 A @200"},
            {"timed file 0.001 0 9000000000000000 A,-9000000000000000 A,10 A",
             "9000000000000000 A @0,-9000000000000000 A @0,10 A @0"},
            {"plain file 2 10 1 A,2 A,3 A", "1 A @0,2 A @50,3 A @100"},
            {"plain file 1 0 1 A,2 A", "1 A @0,2 A @0"},
            {"plain live 1 10 1 A,2 A", "1 A @0,2 A @0"},
            {"timed live 1 0 1 A,101 A", "1 A @0,101 A @100"}}; // a recording through a pipe
        checkRows(rows, [this](const QString& given) {
            const QStringList words = given.split(QLatin1Char(' '));
            FakeClock* const clock = new FakeClock;
            LineDecoder* const decoder = new LineDecoder(&m_format, words.at(0) == text("timed"), clock);
            QString lines = given.section(QLatin1Char(' '), 4) + QLatin1Char('\n');
            lines.replace(QLatin1Char(','), QLatin1Char('\n'));
            StreamSource source(
                new ScriptedInput({lines.toLatin1()}, ByteInput::End, words.at(1) == text("live") ? Live : 0), decoder);
            source.setClock(clock);
            source.setPlayback(playback(words.at(2).toDouble(), words.at(3).toDouble()));
            source.start();
            return waitUntilOver(source) ? decoder->played.join(QLatin1Char(',')) : text("no end");
        });
    }

    void theSpeedCanChangeInTheMiddleOfAGap()
    {
        StreamSource source(new ScriptedInput({"0 A\n3600000 A\n7200000 A\n"}, ByteInput::End),
                            new LineDecoder(&m_format, true));
        source.start();
        QVERIFY(waitFor([&] { return source.getCounters().getMessageCount() == 1; }));
        source.setPlayback(playback(0));
        QVERIFY(waitUntilOver(source));
        QCOMPARE(source.getCounters().getMessageCount(), quint64(3));
    }

    void aFastReaderWaitsAndNothingIsLost()
    {
        const int count = 120000;
        LineDecoder* const decoder = new LineDecoder(&m_format, false);
        StreamSource source(new ScriptedInput(manyLines(count), ByteInput::End), decoder);
        source.setPlayback(playback(0));
        source.setClock(new FakeClock); // batches are full ones however slow the machine is
        Recorder recorder(&source, m_format);
        int furthestAhead = 0;
        recorder.onMessage = [&] {
            if (recorder.messages == 1) // until the reader cannot go on
                yieldUntil([&] { return decoder->decoded >= 8 * 2000; });
            furthestAhead = qMax(furthestAhead, decoder->decoded - recorder.messages);
        };
        source.start();
        QVERIFY(waitUntilOver(source));
        QCOMPARE(recorder.messages, count);
        QCOMPARE(source.getCounters().getMessageCount(), quint64(count));
        // 8 batches in the queue, one being filled, one being worked off.
        QVERIFY2(furthestAhead >= 7 * 2000 && furthestAhead <= 10 * 2000, qPrintable(QString::number(furthestAhead)));
    }

    void slowViewsDoNotStarveTheEventLoop()
    {
        const std::unique_ptr<StreamSource> source = unpaced(manyLines(4000));
        Recorder recorder(source.get(), m_format);
        recorder.onMessage = [] {
            QElapsedTimer timer;
            timer.start();
            while (timer.nsecsElapsed() < 100000) {
            }
        };
        // 4,000 times 0.1 ms of work are about 40 turns of 10 ms.
        int ticks = 0;
        QTimer ticker;
        connect(&ticker, &QTimer::timeout, this, [&] { ++ticks; });
        ticker.start(0);
        source->start();
        QVERIFY(waitFor([&] { return recorder.messages > 0; }));
        ticks = 0;
        QVERIFY(waitUntilOver(*source));
        QCOMPARE(recorder.messages, 4000);
        QVERIFY2(ticks >= 10, qPrintable(QString::number(ticks)));
    }

    void stoppingEndsEveryKindOfWaiting()
    {
        enum
        {
            ForBytes,
            ForTheTime, // of a message
            ForRoom     // in the queue
        };
        for (int waiting = ForBytes; waiting <= ForRoom; ++waiting) {
            for (const bool deleteIt : {false, true}) {
                const bool hasTimes = waiting == ForTheTime;
                const int counts[] = {0, 1000, 50000};
                LineDecoder* const decoder = new LineDecoder(&m_format, hasTimes);
                std::unique_ptr<StreamSource> source(
                    new StreamSource(new ScriptedInput(manyLines(counts[waiting]),
                                                       waiting == ForBytes ? ByteInput::Nothing : ByteInput::End),
                                     decoder));
                source->setPlayback(playback(hasTimes ? 0.0001 : 0.0));
                if (!hasTimes)
                    source->setClock(new FakeClock); // batches are full ones however slow the machine is
                Recorder recorder(source.get(), m_format);
                source->start();
                // Without a turn of the event loop, so that the queue fills; one of its batches is the state Running.
                const int waitsAt[] = {0, 1, 7 * 2000};
                yieldUntil([&] { return decoder->decoded >= waitsAt[waiting]; });
                QElapsedTimer timer;
                timer.start();
                if (deleteIt) {
                    source.reset();
                } else {
                    source->stop();
                    QVERIFY(waitFor([] { return ScriptedInput::alive == 0; }));
                    QCoreApplication::processEvents();
                    QCOMPARE(recorder.told(), text("opening; finished"));
                }
                QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
                QCOMPARE(int(ScriptedInput::alive), 0);
            }
        }
    }

    void aReceiverMayDeleteItOrWait()
    {
        StreamSource* const deleted = unpaced({"1 A\n2 A\n3 A\n"}).release();
        Recorder before(deleted, m_format);
        before.onMessage = [&] {
            if (before.messages == 2)
                delete deleted;
        };
        deleted->start();
        QVERIFY(waitFor([] { return ScriptedInput::alive == 0; }));
        QCoreApplication::processEvents();
        QCOMPARE(before.told() + text("; %1 messages").arg(before.messages), text("opening; running; 2 messages"));

        const std::unique_ptr<StreamSource> source = unpaced(manyLines(5000));
        Recorder recorder(source.get(), m_format);
        bool nested = false;
        recorder.onMessage = [&] {
            if (recorder.messages == 10)
                nested = waitUntilOver(*source);
        };
        source->start();
        QVERIFY(waitFor([&] { return nested; }));
        QCOMPARE(recorder.messages, 5000);
    }

    void whoeverStopsItHearsNoMore()
    {
        struct Observer : StreamSink
        {
            void processReceived(const ReceivedMessage&) override { stop(); }
            void processProblem(const StreamProblem&) override {}
            std::function<void()> stop = [] {};
        };
        // Within the change to Opening, the one to Running, and then by the kind of what comes.
        const char* const ends[] = {
            "opening; finished",
            "opening; running; finished",
            "opening; running; finished",
            "opening; running; 1 A from sender 1; finished",
            "opening; running; 1 A from sender 1; script at byte 4: checksum failure, id 65, sender sender 1; finished",
            "opening; running; 1 A from sender 1; script at byte 4: checksum failure, id 65, sender sender 1; "
            "2 A from sender 1; finished"};
        ScriptedInput::opened = 0;
        for (int from = 0; from < 6; ++from) {
            // It would fail next.
            std::unique_ptr<StreamSource> source = unpaced({"1 A\n!1 A\n2 A\n"}, ByteInput::Failed);
            Recorder recorder(source.get(), m_format);
            Observer observer;
            source->addObserver(&observer);
            const auto stop = [&] {
                if (source->getState() == (from == 0 ? StreamSource::Opening : StreamSource::Running))
                    source->stop();
            };
            if (from <= 1)
                connect(source.get(), &StreamSource::stateChanged, this, stop);
            else if (from == 2)
                observer.stop = stop;
            else if (from == 3)
                connect(source.get(), &StreamSource::newMessage, this, stop);
            else if (from == 4)
                connect(source.get(), &StreamSource::problem, this, stop);
            else
                connect(source.get(), &StreamSource::received, this, stop);
            source->start();
            QVERIFY(from == 0 || waitFor([] { return ScriptedInput::alive == 0; }));
            QCoreApplication::processEvents();
            QCOMPARE(recorder.told() + source->getErrorString(), text(ends[from]));
            source.reset();
            QCOMPARE(int(ScriptedInput::opened), from); // whoever stops it while it opens has none opened
        }
    }

    void stoppedBeforeItBegan()
    {
        const std::unique_ptr<StreamSource> source = unpaced({"1 A\n"});
        Recorder recorder(source.get(), m_format);
        source->stop();
        source->start();
        QCoreApplication::processEvents();
        QCOMPARE(recorder.told(), text("finished"));
    }
};

QTEST_GUILESS_MAIN(TestStreamSource)
#include "tst_streamsource.moc"

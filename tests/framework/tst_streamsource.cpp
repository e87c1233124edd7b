#include "messageneed.h"
#include "streamfixtures.h"
#include "streamsource.h"
#include "testbase.h"
#include "waitfor.h"

#include <QThread>
#include <QTimer>

#include <functional>
#include <memory>

std::atomic<int> ScriptedInput::alive(0);

namespace
{

// What a view would have seen of a source, in order.
class Recorder : public QObject
{
    Q_OBJECT

public:
    explicit Recorder(StreamSource* source)
        : m_source(source)
    {
        connect(source, SIGNAL(newMessage(const Message*)), this, SLOT(noteMessage(const Message*)));
        connect(source, SIGNAL(problem(QString)), this, SLOT(noteProblem(QString)));
        connect(source, SIGNAL(stateChanged(int)), this, SLOT(noteState(int)));
    }

    QStringList lines;
    int messages = 0;
    bool keepLines = true;
    std::function<void()> onMessage;

public Q_SLOTS:
    void noteMessage(const Message* message)
    {
        QVERIFY(QThread::currentThread() == thread());
        QCOMPARE(message->getReferenceCount(), 1);
        ++messages;
        if (keepLines)
            lines.append(QString::fromLatin1(message->getData()) + QLatin1String(" from ") + message->getSender());
        if (onMessage)
            onMessage();
    }
    void noteProblem(const QString& text) { lines.append(text); }
    void noteState(int state)
    {
        static const char* const names[] = {"idle", "opening", "running", "finished", "failed"};
        lines.append(QString::fromLatin1(names[state]));
        if (state == StreamSource::Failed)
            lines.last() += QLatin1String(": ") + m_source->getErrorString();
    }

private:
    StreamSource* m_source;
};

QList<QByteArray> manyLines(int count)
{
    QList<QByteArray> pieces;
    for (int i = 0; i < count; i += 1000) {
        QByteArray piece;
        for (int k = i; k < i + 1000; ++k)
            piece += QByteArray::number(k) + " A\n";
        pieces.append(piece);
    }
    return pieces;
}

} // namespace

class TestStreamSource : public TestBase
{
    Q_OBJECT

private:
    LineFormat m_format;

    static bool isOver(const StreamSource* source)
    {
        return source->getState() == StreamSource::Finished || source->getState() == StreamSource::Failed;
    }

    static StreamSource::Playback playback(double factor, double rate = 0)
    {
        StreamSource::Playback result;
        result.factor = factor;
        result.messagesPerSecond = rate;
        return result;
    }

    std::unique_ptr<StreamSource> unpaced(ByteInput* input)
    {
        std::unique_ptr<StreamSource> source(new StreamSource(input, new LineDecoder(&m_format, false)));
        source->setPlayback(playback(0));
        return source;
    }

    // Everything that a source brings to its end.
    QStringList allOf(ByteInput* input)
    {
        const std::unique_ptr<StreamSource> source = unpaced(input);
        Recorder recorder(source.get());
        source->start();
        if (!waitFor([&] { return isOver(source.get()); }))
            recorder.lines.append("no end");
        return recorder.lines;
    }

private Q_SLOTS:
    void cleanupTestCase() { QCOMPARE(int(ScriptedInput::alive), 0); }

    void messagesAreCountedAlwaysAndMadeWhenNeeded()
    {
        MessageNeed need(nullptr);
        need.setMessagesNeeded(QVector<const MessageInfo*>() << m_format.type("A") << m_format.type("C"));
        const std::unique_ptr<StreamSource> source =
            unpaced(new ScriptedInput({"1 A\n2 B\n3 ", "C\n4 X\n5 A"}, ByteInput::End));
        Recorder recorder(source.get());
        QCOMPARE(source->getState(), StreamSource::Idle);
        source->start();
        source->start();
        QVERIFY(waitFor([&] { return isOver(source.get()); }));
        QCOMPARE(recorder.lines, QStringList() << "opening"
                                               << "running"
                                               << "1 A from sender 1"
                                               << "3 C from sender 1"
                                               << "5 A from sender 1"
                                               << "finished");
        QCOMPARE(source->getCounters().getMessageCount(), quint64(4));
        QCOMPARE(source->getCounters().getUnknownCount(), quint64(1));
        QCOMPARE(source->getFormatInfo(), static_cast<const FormatInfo*>(&m_format));
    }

    void anEndInTroubleKeepsWhatWasShown()
    {
        MessageNeed need(nullptr);
        need.setMessageNeeded(m_format.type("A"));
        QCOMPARE(allOf(new ScriptedInput({"1 A\n2 A"}, ByteInput::Failed)), QStringList()
                                                                                << "opening"
                                                                                << "running"
                                                                                << "1 A from sender 1"
                                                                                << "2 A from sender 1"
                                                                                << "failed: script: it is gone");
        QCOMPARE(allOf(new ScriptedInput({"1 A\n"}, ByteInput::End, ScriptedInput::NotToBeOpened)),
                 QStringList() << "opening"
                               << "failed: script: it is locked");
    }

    void problemsAreFoldedAndCountedExactly()
    {
        const std::unique_ptr<StreamSource> source =
            unpaced(new ScriptedInput({"!1 A\n!2 A\n!3 B\n!4 A\n!5 A\n!6 B\n"}, ByteInput::End));
        Recorder recorder(source.get());
        source->start();
        QVERIFY(waitFor([&] { return isOver(source.get()); }));
        QCOMPARE(recorder.lines,
                 QStringList() << "opening"
                               << "running"
                               << "script at byte 0: checksum failure, id 65, sender sender 1"
                               << "script at byte 10: checksum failure, id 66, sender sender 1"
                               << "script at byte 20: checksum failure, id 65, sender sender 1 (3 times since byte 5)"
                               << "script at byte 25: checksum failure, id 66, sender sender 1"
                               << "finished");
        QCOMPARE(source->getCounters().getChecksumFailures().value('A'), quint64(4));
        QCOMPARE(source->getCounters().getChecksumFailures().value('B'), quint64(2));
    }

    void aDatagramEndsWhatItBegan()
    {
        MessageNeed need(nullptr);
        need.setMessageNeeded(m_format.type("A"));
        const int live = ScriptedInput::Live;
        QCOMPARE(
            allOf(new ScriptedInput({"1 A", "", "2 A\n3 A"}, ByteInput::End, live | ScriptedInput::Datagrams)).mid(2),
            QStringList() << "1 A from sender 1"
                          << "2 A from sender 1"
                          << "3 A from sender 1"
                          << "finished");
        QCOMPARE(allOf(new ScriptedInput({"1 A", "", "2 A\n3 A"}, ByteInput::End, live)).mid(2),
                 QStringList() << "1 A2 A from sender 1"
                               << "3 A from sender 1"
                               << "finished");
    }

    // A live input gives its few messages at once and does not wait for more to come.
    void arrivalIsStampedOncePerReadAndShownSoon()
    {
        MessageNeed need(nullptr);
        need.setMessageNeeded(m_format.type("A"));
        StreamSource source(new ScriptedInput({"1 A\n2 A\n", "3 A\n"}, ByteInput::Nothing, ScriptedInput::Live),
                            new LineDecoder(&m_format, false));
        source.setClock(new FakeClock);
        QList<qint64> times;
        connect(&source, &StreamSource::newMessage, this,
                [&](const Message* message) { times.append(message->getTime()); });
        source.start();
        QVERIFY(waitFor([&] { return times.size() == 3; }));
        QCOMPARE(times, QList<qint64>() << 1000000 << 1000000 << 2000000);
        QCOMPARE(source.getState(), StreamSource::Running);
    }

    // The last column is each message with the millisecond at which it was let through.
    void playback_data()
    {
        QTest::addColumn<bool>("hasTimes");
        QTest::addColumn<int>("flags");
        QTest::addColumn<double>("factor");
        QTest::addColumn<double>("rate");
        QTest::addColumn<QString>("input");
        QTest::addColumn<QString>("played");
        const int live = ScriptedInput::Live;
        QTest::newRow("real time") << true << 0 << 1.0 << 0.0 << "500 A,500 B,700 A,60700 B"
                                   << "500 A @0,500 B @0,700 A @200,60700 B @60200";
        QTest::newRow("twice as fast") << true << 0 << 2.0 << 0.0 << "0 A,1000 A,3000 A"
                                       << "0 A @0,1000 A @500,3000 A @1500";
        QTest::newRow("slow motion") << true << 0 << 0.5 << 0.0 << "0 A,1000 A"
                                     << "0 A @0,1000 A @2000";
        QTest::newRow("as fast as possible") << true << 0 << 0.0 << 9.0 << "0 A,5000 A"
                                             << "0 A @0,5000 A @0";
        QTest::newRow("out of order") << true << 0 << 1.0 << 0.0 << "0 A,1000 A,900 B,1100 A"
                                      << "0 A @0,1000 A @1000,900 B @1000,1100 A @1100";
        QTest::newRow("clock set back") << true << 0 << 1.0 << 0.0 << "9000 A,9500 A,100 A,400 A"
                                        << "9000 A @0,9500 A @500,100 A @500,400 A @800";
        QTest::newRow("clock set to today") << true << 0 << 1.0 << 0.0 << "100 A,200 A,1400000000000 A,1400000000100 A"
                                            << "100 A @0,200 A @100,1400000000000 A @100,1400000000100 A @200";
        QTest::newRow("absurd times") << true << 0 << 0.001 << 0.0 << "9000000000000000 A,-9000000000000000 A,10 A"
                                      << "9000000000000000 A @0,-9000000000000000 A @0,10 A @0";
        QTest::newRow("rate") << false << 0 << 2.0 << 10.0 << "1 A,2 A,3 A"
                              << "1 A @0,2 A @50,3 A @100";
        QTest::newRow("no rate") << false << 0 << 1.0 << 0.0 << "1 A,2 A"
                                 << "1 A @0,2 A @0";
        QTest::newRow("live") << false << live << 1.0 << 10.0 << "1 A,2 A"
                              << "1 A @0,2 A @0";
        QTest::newRow("recording through a pipe") << true << live << 1.0 << 0.0 << "1 A,101 A"
                                                  << "1 A @0,101 A @100";
    }

    void playback()
    {
        QFETCH(bool, hasTimes);
        QFETCH(int, flags);
        QFETCH(double, factor);
        QFETCH(double, rate);
        QFETCH(QString, input);
        QFETCH(QString, played);
        FakeClock* const clock = new FakeClock;
        LineDecoder* const decoder = new LineDecoder(&m_format, hasTimes, clock);
        const QByteArray bytes = input.replace(',', '\n').toLatin1() + '\n';
        StreamSource source(new ScriptedInput({bytes}, ByteInput::End, flags), decoder);
        source.setClock(clock);
        source.setPlayback(playback(factor, rate));
        source.start();
        QVERIFY(waitFor([&] { return isOver(&source); }));
        QCOMPARE(decoder->played.join(','), played);
    }

    void theSpeedCanChangeInTheMiddleOfAGap()
    {
        StreamSource source(new ScriptedInput({"0 A\n3600000 A\n7200000 A\n"}, ByteInput::End),
                            new LineDecoder(&m_format, true));
        source.start();
        QVERIFY(waitFor([&] { return source.getCounters().getMessageCount() == 1; }));
        source.setPlayback(playback(0));
        QVERIFY(waitFor([&] { return isOver(&source); }));
        QCOMPARE(source.getCounters().getMessageCount(), quint64(3));
    }

    void aFastReaderWaitsAndNothingIsLost()
    {
        const int count = 120000;
        // 8 batches in the queue, one being filled, one being worked off.
        const int mostAhead = 10 * 2000;
        MessageNeed need(nullptr);
        need.setMessageNeeded(m_format.type("A"));
        LineDecoder* const decoder = new LineDecoder(&m_format, false);
        StreamSource source(new ScriptedInput(manyLines(count), ByteInput::End), decoder);
        source.setPlayback(playback(0));
        source.setClock(new FakeClock); // batches are full ones however slow the machine is
        Recorder recorder(&source);
        recorder.keepLines = false;
        int furthestAhead = 0;
        recorder.onMessage = [&] {
            // The first time, until the reader cannot go on.
            QElapsedTimer timer;
            timer.start();
            while (recorder.messages == 1 && decoder->decoded < 8 * 2000 && timer.elapsed() < 10000)
                QThread::yieldCurrentThread();
            furthestAhead = qMax(furthestAhead, decoder->decoded - recorder.messages);
        };
        source.start();
        QVERIFY(waitFor([&] { return isOver(&source); }, 60000));
        QCOMPARE(recorder.messages, count);
        QCOMPARE(source.getCounters().getMessageCount(), quint64(count));
        QVERIFY2(furthestAhead >= 7 * 2000 && furthestAhead <= mostAhead, qPrintable(QString::number(furthestAhead)));
    }

    void slowViewsDoNotStarveTheEventLoop()
    {
        MessageNeed need(nullptr);
        need.setMessageNeeded(m_format.type("A"));
        const std::unique_ptr<StreamSource> source = unpaced(new ScriptedInput(manyLines(4000), ByteInput::End));
        Recorder recorder(source.get());
        recorder.keepLines = false;
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
        QVERIFY(waitFor([&] { return isOver(source.get()); }));
        QCOMPARE(recorder.messages, 4000);
        QVERIFY2(ticks >= 10, qPrintable(QString::number(ticks)));
    }

    void stoppingEndsEveryKindOfWaiting_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("last");
        QTest::addColumn<bool>("hasTimes");
        QTest::newRow("for bytes") << 0 << int(ByteInput::Nothing) << false;
        QTest::newRow("for the time of a message") << 1000 << int(ByteInput::End) << true;
        QTest::newRow("for room in the queue") << 50000 << int(ByteInput::End) << false;
    }

    void stoppingEndsEveryKindOfWaiting()
    {
        QFETCH(int, count);
        QFETCH(int, last);
        QFETCH(bool, hasTimes);
        for (const bool deleteIt : {false, true}) {
            LineDecoder* const decoder = new LineDecoder(&m_format, hasTimes);
            std::unique_ptr<StreamSource> source(
                new StreamSource(new ScriptedInput(manyLines(count), ByteInput::Status(last)), decoder));
            source->setPlayback(playback(hasTimes ? 0.0001 : 0.0));
            if (!hasTimes)
                source->setClock(new FakeClock); // batches are full ones however slow the machine is
            Recorder recorder(source.get());
            source->start();
            // Without a turn of the event loop, so that the queue fills; one of its batches is the state Running.
            const int waitsAt = count > 1000 ? 7 * 2000 : hasTimes ? 1 : 0;
            QElapsedTimer timer;
            timer.start();
            while (decoder->decoded < waitsAt && timer.elapsed() < 10000)
                QThread::yieldCurrentThread();
            timer.start();
            if (deleteIt) {
                source.reset();
            } else {
                source->stop();
                QVERIFY(waitFor([] { return ScriptedInput::alive == 0; }));
                QCOMPARE(recorder.lines, QStringList() << "opening"
                                                       << "finished");
                QCoreApplication::processEvents();
                QCOMPARE(recorder.lines.size(), qsizetype(2));
            }
            QVERIFY2(timer.elapsed() < 1000, qPrintable(QString::number(timer.elapsed())));
        }
        QCOMPARE(int(ScriptedInput::alive), 0);
    }

    void aReceiverMayStopOrDeleteTheSource()
    {
        MessageNeed need(nullptr);
        need.setMessageNeeded(m_format.type("A"));
        for (const bool deleteIt : {false, true}) {
            StreamSource* const source = unpaced(new ScriptedInput({"1 A\n2 A\n3 A\n"}, ByteInput::End)).release();
            Recorder recorder(source);
            recorder.onMessage = [&] {
                if (recorder.messages != 2)
                    return;
                if (deleteIt)
                    delete source;
                else
                    source->stop();
            };
            source->start();
            QVERIFY(waitFor([] { return ScriptedInput::alive == 0; }));
            QCoreApplication::processEvents();
            QCOMPARE(recorder.messages, 2);
            if (!deleteIt) {
                QCOMPARE(recorder.lines.last(), QString("finished"));
                delete source;
            }
        }
    }

    void aReceiverMayRunAnEventLoop()
    {
        MessageNeed need(nullptr);
        need.setMessageNeeded(m_format.type("A"));
        const std::unique_ptr<StreamSource> source = unpaced(new ScriptedInput(manyLines(5000), ByteInput::End));
        Recorder recorder(source.get());
        bool nested = false;
        recorder.onMessage = [&] {
            if (recorder.messages != 10)
                return;
            nested = waitFor([&] { return isOver(source.get()); });
        };
        source->start();
        QVERIFY(waitFor([&] { return isOver(source.get()) && nested; }));
        QCOMPARE(recorder.messages, 5000);
    }

    void stoppedBeforeItBegan()
    {
        const std::unique_ptr<StreamSource> source = unpaced(new ScriptedInput({"1 A\n"}, ByteInput::End));
        Recorder recorder(source.get());
        source->stop();
        source->start();
        QCoreApplication::processEvents();
        QCOMPARE(recorder.lines, QStringList("finished"));

        const std::unique_ptr<StreamSource> other = unpaced(new ScriptedInput({"1 A\n"}, ByteInput::End));
        connect(other.get(), &StreamSource::stateChanged, other.get(), &StreamSource::stop);
        other->start();
        QCOMPARE(other->getState(), StreamSource::Finished);
    }
};

QTEST_GUILESS_MAIN(TestStreamSource)
#include "tst_streamsource.moc"

#include "mavlinkdialectreader.h"
#include "mavlinkframes.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "streamsource.h"
#include "testbase.h"
#include "testfolder.h"
#include "tlogindex.h"
#include "waitfor.h"

namespace
{

const qint64 Start = Q_INT64_C(1600000000000000);
const int Count = 10000;

qint64 timeOf(int tenths)
{
    return Start + tenths * Q_INT64_C(100000);
}

} // namespace

/** Jumps, pauses and steps in a recording of 1,000 s: a message ten times a second, numbered 0 to 99 and again. */
class tst_playback : public TestBase, private StreamSink
{
    Q_OBJECT

private:
    void processReceived(const ReceivedMessage& message) override
    {
        m_lastTime = (message.time - Start) / 100000;
        if (m_times.size() < 10)
            m_times.append(m_lastTime);
        m_unknown += message.info ? 0 : 1;
    }
    void processProblem(const StreamProblem& problem) override
    {
        if (problem.kind == StreamProblem::SkippedBytes)
            m_skipped += QByteArray(problem.data ? problem.data : "?", problem.data ? int(problem.length) : 1);
    }

    std::unique_ptr<StreamSource> open()
    {
        m_times.clear();
        m_skipped.clear();
        m_unknown = 0;
        m_lastTime = -1;
        std::unique_ptr<StreamSource> source(
            new StreamSource(ByteInput::create(InputAddress::ofFile(m_path)),
                             new MavlinkStreamDecoder(m_dialect.get(), MavlinkStreamDecoder::TlogLayout)));
        source->setIndex(new TlogIndex(m_path, m_dialect.get()));
        StreamSource::Playback playback;
        playback.factor = 0;
        source->setPlayback(playback);
        source->addObserver(this);
        return source;
    }

    static bool isOver(const std::unique_ptr<StreamSource>& source)
    {
        return source->getState() == StreamSource::Finished;
    }

    const TestFolder m_folder;
    const QString m_path = m_folder.filePath("flight.tlog");
    QByteArray m_noise;
    std::unique_ptr<MavlinkDialect> m_dialect{MavlinkDialect::loadBuiltIn()};
    QVector<qint64> m_times; // of the first messages, in tenths of a second
    qint64 m_lastTime = -1;
    int m_unknown = 0;
    QByteArray m_skipped;

private Q_SLOTS:
    void initTestCase()
    {
        for (int i = 0; i < 3000; ++i)
            m_noise += char(i * 7 % 250);
        QByteArray bytes;
        for (int i = 0; i < Count; ++i)
            bytes += timed(quint64(timeOf(i)), plainFrame(m_dialect->find(0), frameHeader(2, i % 100))) +
                     (i == 5000 ? m_noise : QByteArray());
        m_folder.write("flight.tlog", bytes + "and an end in a word");
    }

    void theIndexFindsTimesInADamagedFile()
    {
        TlogIndex index(m_path, m_dialect.get());
        QCOMPARE(index.getStartTime(), Start);
        QCOMPARE(index.getEndTime(), timeOf(Count - 1));
        QCOMPARE(index.findOffset(Start - 5), quint64(0));
        const quint64 frame = quint64(QFileInfo(m_path).size() - m_noise.size()) / Count;
        for (int wanted = 0; wanted < Count; wanted += 611) {
            const quint64 offset = index.findOffset(timeOf(wanted));
            const quint64 place = quint64(wanted) * frame + (wanted > 5000 ? quint64(m_noise.size()) : 0);
            QVERIFY2(offset <= place && place - offset < 100000, qPrintable(QString::number(wanted)));
        }
        QCOMPARE(TlogIndex(m_folder.filePath("missing"), m_dialect.get()).getEndTime(), qint64(Message::NoTime));
    }

    void aJumpGoesOnAtItsTime()
    {
        // The noise stands before 5001.
        for (const int tenths : {-50, 4321, 5001, Count - 1, Count + 100}) {
            const int rest = qBound(0, Count - tenths, Count);
            // Once after the end, and once while messages are on their way.
            for (const bool atEnd : {true, false}) {
                const std::unique_ptr<StreamSource> source = open();
                qint64 sought = 0;
                connect(source.get(), &StreamSource::sought, this, [&](qint64 time) {
                    sought = time;
                    m_times.clear();
                });
                source->start();
                QVERIFY(waitFor([&]() { return atEnd ? isOver(source) : !m_times.isEmpty(); }));
                if (atEnd) {
                    QCOMPARE(source->getCounters().getMessageCount(), quint64(Count));
                    QCOMPARE(m_skipped, m_noise + "and an end in a word");
                    QCOMPARE(source->getPosition(), source->getSize() - 20);
                }
                QVERIFY(source->isSeekable());
                source->seek(timeOf(tenths));
                QVERIFY(waitFor([&]() { return sought != 0 && isOver(source); }));
                QCOMPARE(sought, timeOf(tenths));
                QCOMPARE(m_times.value(0, -1), qint64(rest == 0 ? -1 : Count - rest));
                QCOMPARE(source->getCounters().getMessageCount(), quint64(rest));
                if (rest > 0)
                    QCOMPARE(source->getPosition(), source->getSize() - 20);
            }
        }
    }

    void aPausedRecordingIsSteppedThrough()
    {
        const std::unique_ptr<StreamSource> source = open();
        source->setPaused(true);
        source->start();
        QVERIFY(waitFor([&]() { return source->getState() == StreamSource::Running; }));
        source->step();
        source->step();
        QVERIFY(waitFor([&]() { return m_times.size() == 2; }));
        source->seek(timeOf(7000)); // which shows one message
        QVERIFY(waitFor([&]() { return m_times.size() == 3; }));
        source->step();
        QVERIFY(waitFor([&]() { return m_times.size() == 4; }));
        QCOMPARE(m_times, QVector<qint64>() << 0 << 1 << 7000 << 7001);
        source->setPaused(false);
        QVERIFY(waitFor([&]() { return isOver(source); }));
        QCOMPARE(source->getCounters().getMessageCount(), quint64(Count - 7000));
    }

    void otherDefinitionsTakeOverWithoutALoss()
    {
        const std::unique_ptr<MavlinkDialect> poor(
            MavlinkDialectReader::readBytes("poor.xml",
                                            "<mavlink><messages><message id='4711' name='OTHER'><field type='char' "
                                            "name='a'/></message></messages></mavlink>",
                                            nullptr));
        const std::unique_ptr<StreamSource> source = open();
        source->setPaused(true);
        source->start();
        for (int i = 1; i <= 10; ++i)
            source->step();
        QVERIFY(waitFor([&]() { return m_lastTime == 9; }));
        QCOMPARE(m_unknown, 0);
        bool changed = false;
        connect(source.get(), &StreamSource::decoderChanged, this, [&]() { changed = true; });
        source->setDecoder(new MavlinkStreamDecoder(poor.get(), MavlinkStreamDecoder::TlogLayout));
        QVERIFY(waitFor([&]() { return changed; }));
        source->setPaused(false);
        QVERIFY(waitFor([&]() { return isOver(source); }));
        // A frame of an unknown type is none unless another follows: not so before the noise, nor at the end.
        QCOMPARE(m_lastTime, qint64(Count - 2));
        QCOMPARE(m_unknown, Count - 10 - 2);
    }

    void lookingThroughARecordingIsCancelledByStopping()
    {
        class Endless : public RecordingIndex
        {
        public:
            bool prepare(const GoOn& goOn) override
            {
                while (goOn(42)) {
                }
                return false;
            }
            qint64 getStartTime() const override { return Message::NoTime; }
            qint64 getEndTime() const override { return Message::NoTime; }
            quint64 findOffset(qint64) override { return 0; }
        };
        const std::unique_ptr<StreamSource> source = open();
        source->setIndex(new Endless);
        QCOMPARE(source->getPreparedPercent(), -1);
        source->start();
        QVERIFY(waitFor([&]() { return source->getPreparedPercent() == 42; }));
        QCOMPARE(int(source->getState()), int(StreamSource::Opening));
        source->stop();
        QVERIFY(waitFor([&]() { return source->getPreparedPercent() == -1; }));
        QCOMPARE(int(source->getState()), int(StreamSource::Finished));
        QCOMPARE(source->getCounters().getMessageCount(), quint64(0));
    }
};

QTEST_GUILESS_MAIN(tst_playback)
#include "tst_playback.moc"

#include "streamrelay.h"
#include "testbase.h"

#include <thread>

namespace
{

/** Notes the offsets of what comes, those of problems negated, and the thread. */
class Notes : public StreamSink
{
public:
    void processReceived(const ReceivedMessage& message) override { note(qint64(message.offset)); }
    void processProblem(const StreamProblem& problem) override { note(-qint64(problem.offset)); }

    QVector<qint64> offsets;
    bool isOneThread = true;

private:
    void note(qint64 offset)
    {
        offsets.append(offset);
        isOneThread = isOneThread && std::this_thread::get_id() == m_thread;
    }

    const std::thread::id m_thread = std::this_thread::get_id();
};

} // namespace

class TestStreamRelay : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void keepsTheOrderOverManyBatches()
    {
        for (const int count : {0, 1, 999, 1000, 1001, 100000}) {
            StreamRelay relay;
            QVector<qint64> sent;
            std::thread thread([&] {
                for (int i = 1; i <= count; ++i) {
                    ReceivedMessage message = ReceivedMessage();
                    StreamProblem problem;
                    message.offset = problem.offset = quint64(i);
                    // Alone, one after the other, and at the ends of batches.
                    const bool isProblem = i % 7 == 0 || i % 1000 < 2 || i / 3000 % 5 == 4;
                    sent.append(isProblem ? -i : i);
                    if (isProblem)
                        relay.processProblem(problem);
                    else
                        relay.processReceived(message);
                }
                relay.end();
            });
            Notes notes;
            relay.passTo(&notes);
            thread.join();
            QCOMPARE(notes.offsets, sent);
            QVERIFY(notes.isOneThread);
        }
    }
};

QTEST_GUILESS_MAIN(TestStreamRelay)

#include "tst_streamrelay.moc"

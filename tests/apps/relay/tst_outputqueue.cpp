#include "outputqueue.h"
#include "publishedstream.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"

#include <QDirIterator>

/** What waits for an output, in memory and on disk. */
class TestOutputQueue : public TestBase
{
    Q_OBJECT

private:
    TestFolder m_folder;
    int m_folders = 0;

    OutputQueue::Settings settings(bool isKept, bool isAcknowledged, qint64 limit = 100 << 20)
    {
        OutputQueue::Settings settings;
        settings.folder = m_folder.filePath(QString("q%1").arg(++m_folders));
        settings.run = text("this");
        settings.isKept = isKept;
        settings.isAcknowledged = isAcknowledged;
        settings.limit = limit;
        return settings;
    }

    /** Adds messages of those numbers, of @p size bytes each, of a channel of that number. */
    static void append(OutputQueue* queue, int from, int to, int size = 10, quint32 channel = 3)
    {
        const QByteArray bytes(size, 'x');
        for (int i = from; i <= to; ++i) {
            ReceivedMessage message;
            message.id = channel;
            message.offset = quint64(i);
            message.data = bytes.constData();
            message.size = size;
            QByteArray record;
            PublishedStream::appendMessage(message, &record);
            queue->append(&channel, record, [](quint32 number) {
                PublishedChannel described;
                described.number = number;
                described.sender = QString("s%1").arg(number);
                described.schema.name = text("t");
                described.schema.data = QByteArray(2000, 's');
                return PublishedStream::channelRecord(described);
            });
        }
        queue->seal();
    }

    /** Takes everything: "s3:1-5 s4:6", with ", " between runs of numbers. */
    class Reader : public StreamSink
    {
    public:
        QString take(OutputQueue* queue, int blocks = 1 << 30)
        {
            m_ranges.clear();
            OutputQueue::Block block;
            for (int i = 0; i < blocks && queue->take(&block); ++i)
                m_stream.feed(block.records.constData(), int(block.records.size()), 0, this);
            return m_ranges.join(text(" "));
        }
        void processReceived(const ReceivedMessage& message) override
        {
            const QString sender = m_stream.getSenderName(message.sender);
            if (m_ranges.isEmpty() || sender != m_sender || message.offset != m_last + 1) {
                m_first = message.offset;
                m_ranges.append(QString());
            }
            m_sender = sender;
            m_last = message.offset;
            m_ranges.last() = QString("%1:%2-%3").arg(sender).arg(m_first).arg(m_last);
            if (m_stream.getChannel(message.id).schema.data.size() != 2000)
                m_ranges.last() += text(" without a schema");
        }
        void processProblem(const StreamProblem&) override { m_ranges.append(text("damage")); }

    private:
        PublishedStream m_stream{QString()};
        QStringList m_ranges;
        QString m_sender;
        quint64 m_first = 0;
        quint64 m_last = 0;
    };

    /** What is left after the program was killed: a copy of the folder. */
    OutputQueue::Settings killed(OutputQueue::Settings settings)
    {
        const QString from = settings.folder;
        settings.folder = m_folder.filePath(QString("q%1").arg(++m_folders));
        QDir().mkpath(settings.folder);
        for (QDirIterator files(from, QDir::Files); files.hasNext();) {
            files.next();
            QFile::copy(files.filePath(), settings.folder + '/' + files.fileName());
        }
        return settings;
    }
    QString reopened(const OutputQueue::Settings& settings)
    {
        OutputQueue queue(settings);
        QString error;
        if (!queue.open(&error))
            return error;
        const QString problem = queue.takeProblem();
        return Reader().take(&queue) + (problem.isEmpty() ? QString() : text(" ") + problem.section(": ", 1, -1));
    }

private Q_SLOTS:
    void whatFitsStaysInMemory()
    {
        const OutputQueue::Settings some = settings(false, false);
        OutputQueue queue(some);
        append(&queue, 1, 1000);
        QCOMPARE(int(queue.getCounts().waitingMessages), 1000);
        QVERIFY(!QFileInfo::exists(some.folder));
        QCOMPARE(Reader().take(&queue), text("s3:1-1000"));
        QCOMPARE(queue.getCounts().waitingBytes, qint64(0));
    }

    void whatDoesNotFitGoesToDiskInOrder()
    {
        const OutputQueue::Settings some = settings(false, false);
        {
            OutputQueue queue(some);
            Reader reader;
            append(&queue, 1, 6000, 1000);
            QVERIFY(queue.getCounts().bytesOnDisk > 1 << 20);
            const QString first = reader.take(&queue, 10);
            append(&queue, 6001, 6010);
            const QString rest = reader.take(&queue);
            QCOMPARE(first.section('-', 0, 0) + '-' + rest.section('-', 1), text("s3:1-6010"));
            QVERIFY(!queue.isFull());
        }
        QVERIFY(!QFileInfo::exists(some.folder)); // and leaves nothing
    }

    void theOldestIsDroppedBeyondTheLimit()
    {
        OutputQueue queue(settings(true, true, 1 << 20));
        QString error;
        QVERIFY(queue.open(&error));
        Reader reader;
        append(&queue, 1, 100, 1000);
        append(&queue, 101, 200, 1000, 4);
        const QString taken = reader.take(&queue, 1); // is under way, and stays
        append(&queue, 201, 5000, 1000);
        const int dropped = int(queue.getCounts().dropped);
        QVERIFY(dropped > 1000 && queue.getCounts().bytesOnDisk <= 1 << 20);
        const QString rest = reader.take(&queue);
        QVERIFY2(rest.startsWith(text("s3:")) && rest.endsWith(text("-5000")) && !rest.contains(' '), qPrintable(rest));
        const int first = rest.section(':', 1).section('-', 0, 0).toInt();
        QCOMPARE(first - 1 - taken.section('-', 1).toInt(), dropped);
    }

    void whatWasNotConfirmedOutlivesAKill()
    {
        const OutputQueue::Settings some = settings(true, true);
        OutputQueue queue(some);
        QString error;
        QVERIFY(queue.open(&error));
        for (int i = 0; i < 5; ++i)
            append(&queue, 10 * i + 1, 10 * i + 10);
        QCOMPARE(reopened(killed(some)), text("s3:1-50"));
        Reader().take(&queue);
        queue.confirm(25); // of a block either all is confirmed or none
        QCOMPARE(reopened(killed(some)), text("s3:21-50"));
        QCOMPARE(int(queue.getCounts().waitingMessages), 30);

        // The end of what was written when the power went.
        const OutputQueue::Settings cut = killed(some);
        QFile file(cut.folder + text("/0000000001.waiting"));
        QVERIFY(file.resize(file.size() - 5));
        QVERIFY(reopened(cut).startsWith("s3:21-40 it is damaged at byte "));
        const OutputQueue::Settings damaged = killed(some);
        QFile other(damaged.folder + text("/0000000001.waiting"));
        QVERIFY(other.open(QIODevice::ReadWrite) && other.seek(other.size() - 400) && other.write("y") == 1);
        other.close();
        QVERIFY(reopened(damaged).startsWith("s3:21-40 it is damaged at byte "));
        queue.confirm(25);
        QCOMPARE(reopened(killed(some)), QString());
    }

    void sendersOfATypeShareItsSchema()
    {
        const OutputQueue::Settings some = settings(true, true, 1 << 20);
        OutputQueue queue(some);
        QString error;
        QVERIFY(queue.open(&error));
        QStringList expected;
        for (quint32 sender = 0; sender < 100; ++sender) {
            append(&queue, 1, 5, 10, 99 - sender);
            expected.append(QString("s%1:1-5").arg(99 - sender));
        }
        QVERIFY(queue.getCounts().bytesOnDisk < 64 * 1024);
        QCOMPARE(reopened(killed(some)), expected.join(' '));
        // The first one is told in every file, also when nothing of it is there.
        append(&queue, 6, 20000, 100, 7);
        const QString rest = reopened(killed(some));
        QVERIFY2(rest.startsWith("s7:") && rest.endsWith("-20000") && !rest.contains(' '), qPrintable(rest.left(100)));
    }

    void whatCannotBeConfirmedGoesOutOnce()
    {
        const OutputQueue::Settings some = settings(true, false);
        OutputQueue queue(some);
        QString error;
        QVERIFY(queue.open(&error));
        Reader reader;
        append(&queue, 1, 6000, 1000);
        const int last = reader.take(&queue, 80).section('-', 1).toInt();
        QCOMPARE(reopened(killed(some)), QString("s3:%1-6000").arg(last + 1));
        queue.keep();
        QCOMPARE(reopened(killed(some)), QString("s3:%1-6000").arg(last + 1));
    }
};

QTEST_GUILESS_MAIN(TestOutputQueue)
#include "tst_outputqueue.moc"

#include "definitions.h"
#include "mcapfixtures.h"
#include "mcapindex.h"
#include "mcapstreamdecoder.h"
#include "mcapwriter.h"
#include "message.h"
#include "messageinfo.h"
#include "testbase.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>

#include <zstd.h>

using namespace McapFixtures;

namespace
{

/** Writes down what is found: "/a #3 40: <payload>", and problems as "100+20 text". */
class Lines : public StreamSink
{
public:
    explicit Lines(const StreamDecoder* decoder)
        : m_decoder(decoder)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        messages.append(
            QStringLiteral("%1 #%2 %3: %4")
                .arg(message.info ? m_decoder->getSenderName(message.sender) : m_decoder->describeUnknown(message.id))
                .arg(message.sequence)
                .arg(message.time)
                .arg(QString::fromLatin1(QByteArray(message.data, message.size).toHex())));
        times.append(message.time);
    }

    void processProblem(const StreamProblem& problem) override
    {
        problems.append(QStringLiteral("%1+%2 %3").arg(problem.offset).arg(problem.length).arg(problem.describe({})));
    }

    QStringList messages;
    QVector<qint64> times;
    QStringList problems;

private:
    const StreamDecoder* m_decoder;
};

/** Everything that is found in some bytes. */
struct Decoded
{
    explicit Decoded(const QByteArray& bytes, int piece = 1 << 20, const McapIndex* index = nullptr, quint64 from = 0,
                     Definitions* shared = nullptr)
        : own(shared ? nullptr : new Definitions)
        , decoder(shared ? shared : own.get())
        , lines(&decoder)
    {
        if (index)
            decoder.setIndex(index);
        if (from > 0)
            decoder.restart(from);
        for (int i = int(from); i < bytes.size(); i += piece)
            decoder.feed(bytes.constData() + i, qMin(piece, int(bytes.size()) - i), Message::NoTime, &lines);
        decoder.finish(&lines);
    }

    std::unique_ptr<Definitions> own;
    McapStreamDecoder decoder;
    Lines lines;
};

QString line(const char* topic, int sequence, qint64 time, const QByteArray& payload)
{
    return QStringLiteral("%1 #%2 %3: %4")
        .arg(QLatin1String(topic))
        .arg(sequence > 0 ? sequence : qint64(Message::NoSequence))
        .arg(time)
        .arg(QString::fromLatin1(payload.toHex()));
}

/** 300 messages on two channels, 1 ms apart. */
QByteArray recording(const McapWriter::Settings& settings, QStringList* expected, int count = 300)
{
    Recording recording(settings);
    const quint16 a = recording.addPoints("/a");
    const quint16 b = recording.addPoints("/b");
    for (int i = 0; i < count; ++i) {
        const QByteArray payload = point(i, i % 7 * 20);
        recording.writer.writeMessage(i % 3 ? a : b, quint32(i), quint64(i) * Millisecond, payload);
        expected->append(line(i % 3 ? "/a" : "/b", i, i * 1000, payload));
    }
    return recording.finished();
}

/** The most memory that was used since the last call, in KiB. */
qint64 takePeak()
{
    QFile status(QStringLiteral("/proc/self/status"));
    qint64 peak = -1;
    if (status.open(QIODevice::ReadOnly)) {
        const QByteArray text = status.readAll();
        peak = text.mid(text.indexOf("VmHWM:") + 6).trimmed().split(' ').constFirst().toLongLong();
    }
    QFile reset(QStringLiteral("/proc/self/clear_refs"));
    if (reset.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
        reset.write("5");
    return peak;
}

// The address sanitizer keeps what was freed.
#if defined(__SANITIZE_ADDRESS__)
const qint64 Slack = 1024 * 1024;
#else
const qint64 Slack = 4 * 1024;
#endif

} // namespace

class TestMcapStreamDecoder : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void whatIsWrittenIsRead_data()
    {
        QTest::addColumn<int>("compression");
        QTest::addColumn<int>("chunkSize");
        QTest::addColumn<int>("chunks");
        QTest::newRow("none") << int(McapWriter::NoCompression) << 4000 << 8;
        QTest::newRow("lz4") << int(McapWriter::Lz4) << 4000 << 8;
        QTest::newRow("zstd") << int(McapWriter::Zstd) << 4000 << 8;
        QTest::newRow("without chunks") << int(McapWriter::Zstd) << 0 << 1;
    }

    void whatIsWrittenIsRead()
    {
        QFETCH(int, compression);
        QFETCH(int, chunkSize);
        QFETCH(int, chunks);
        QStringList expected;
        const QByteArray bytes =
            recording(settings(static_cast<McapWriter::Compression>(compression), chunkSize), &expected);
        const QString path = write(bytes);
        QString error;
        const std::unique_ptr<McapIndex> index(McapIndex::load(path, &error));
        QVERIFY2(index, qPrintable(error));
        QCOMPARE(index->hasSummary(), chunkSize > 0);
        QCOMPARE(index->getMessageCount(), chunkSize > 0 ? 300 : -1);
        QCOMPARE(index->getStartTime(), qint64(0));
        QCOMPARE(index->getEndTime(), qint64(299 * 1000));
        QCOMPARE(index->getDefinitions().size(), 4);
        QCOMPARE(int(index->getChunks().size()), chunks);

        for (const int piece : {1, 7, 1000, 1 << 20}) {
            const Decoded decoded(bytes, piece, piece == 7 ? index.get() : nullptr);
            QCOMPARE(decoded.lines.problems, QStringList());
            QCOMPARE(decoded.lines.messages, expected);
        }
        for (const int time : {-5, 0, 1000, 150000, 298500, 299000}) {
            const quint64 from = index->findOffset(time);
            QCOMPARE(from == 0, time <= 1000 || chunkSize == 0);
            const Decoded decoded(bytes, 1 << 20, index.get(), from);
            const int missing = int(expected.size() - decoded.lines.messages.size());
            QVERIFY(missing * 1000 <= qMax(0, time));
            QCOMPARE(decoded.lines.messages, expected.mid(missing));
            QCOMPARE(decoded.lines.problems, QStringList());
        }
        QVERIFY(index->findOffset(300000) > quint64(bytes.size()) / 3);
    }

    void aRecordingThatWasCutAnywhereKeepsWhatCameBefore()
    {
        for (const McapWriter::Compression compression :
             {McapWriter::NoCompression, McapWriter::Lz4, McapWriter::Zstd}) {
            QStringList expected;
            const QByteArray bytes = recording(settings(compression, 700), &expected, 40);
            Definitions definitions;
            int before = 0;
            for (int size = 1; size < bytes.size(); ++size) {
                const Decoded decoded(bytes.left(size), 1 << 20, nullptr, 0, &definitions);
                QCOMPARE(decoded.lines.messages, expected.mid(0, decoded.lines.messages.size()));
                QVERIFY(decoded.lines.messages.size() >= before);
                before = int(decoded.lines.messages.size());
                QCOMPARE(int(decoded.lines.problems.size()), 1);
                QVERIFY(decoded.lines.problems.constFirst().contains(QLatin1String("stream ends")));
            }
            QCOMPARE(before, 40);

            // Killed: what comes behind the second chunk was not written. The index is made by walking.
            const int second = int(bytes.indexOf(QByteArray("\x06"), bytes.indexOf(QByteArray("\x07", 1), 400)));
            QString error;
            const std::unique_ptr<McapIndex> index(McapIndex::load(write(bytes.left(second + 500)), &error));
            QVERIFY(!index->hasSummary());
            QVERIFY(!index->getChunks().isEmpty());
            QCOMPARE(int(index->getDefinitions().size()), 4);
        }
    }

    void aFlippedByteIsNoticedAndMakesNoMessageUp()
    {
        QStringList expected;
        const QByteArray bytes = recording(settings(McapWriter::Zstd, 700), &expected, 40);
        const int dataEnd = int(bytes.lastIndexOf(QByteArray("\x0f\x04\0\0\0\0\0\0\0", 9)));
        QVERIFY(dataEnd > 0);
        QString error;
        const std::unique_ptr<McapIndex> index(McapIndex::load(write(bytes), &error));
        QCOMPARE(int(index->getChunks().size()), 6);
        Definitions definitions;
        int losses = 0;
        for (int i = 0; i < bytes.size(); ++i) {
            QByteArray damaged = bytes;
            damaged[i] = char(damaged.at(i) ^ (1 << i % 8));
            // An index outside of chunks that becomes a message is one until the end, where the checksum of it all is.
            if (bytes.at(i) == 7 && damaged.at(i) == 5)
                continue;
            const Decoded decoded(damaged, 1 << 20, nullptr, 0, &definitions);
            if (i < dataEnd)
                QVERIFY2(!decoded.lines.problems.isEmpty(), qPrintable(QString::number(i)));
            const bool waited = !decoded.lines.problems.filter(QLatin1String("had to wait")).isEmpty();
            QStringList rest = expected;
            for (const QString& message : decoded.lines.messages) {
                // A channel's name may be what was damaged; then the checksum of it all is wrong.
                const QString payload = message.section(QLatin1Char('#'), 1);
                const auto isSame = [&](const QString& line) { return line.endsWith(QLatin1Char('#') + payload); };
                const auto found = std::find_if(rest.begin(), rest.end(), isSame);
                QVERIFY2(found != rest.end(), qPrintable(QStringLiteral("%1: %2").arg(i).arg(message)));
                rest.erase(waited ? found : rest.begin(), found + 1);
            }
            losses += int(decoded.lines.messages.size()) < 40;
            for (const McapIndex::Chunk& chunk : index->getChunks())
                if (quint64(i) > chunk.offset && quint64(i) < chunk.offset + chunk.length)
                    QVERIFY2(decoded.lines.messages.size() >= 28, qPrintable(QString::number(i)));
        }
        QVERIFY(losses > 100);
    }

    void messagesOfOverlappingChunksComeInOrder()
    {
        Recording recording(settings(McapWriter::Zstd, 1 << 20));
        const quint16 channel = recording.addPoints("/a");
        // Chunks that overlap their neighbours, and at the end one that belongs to the beginning.
        const QVector<QVector<int>> chunks{{30, 10, 50}, {20, 40, 60, 60}, {55, 90}, {80, 70, 100}, {5, 15, 95}};
        for (const QVector<int>& times : chunks) {
            for (const int time : times)
                recording.writer.writeMessage(channel, 0, quint64(time) * 1000, point(time));
            recording.writer.flush();
        }
        const QByteArray bytes = recording.finished();

        const QVector<qint64> withoutIndex{10, 20, 30, 40, 50, 55, 60, 60, 70, 80, 90, 5, 15, 95, 100};
        const Decoded decoded(bytes, 100);
        QCOMPARE(decoded.lines.times, withoutIndex);
        QString error;
        const std::unique_ptr<McapIndex> index(McapIndex::load(write(bytes), &error));
        const Decoded ordered(bytes, 100, index.get());
        const QVector<qint64> exact{5, 10, 15, 20, 30, 40, 50, 55, 60, 60, 70, 80, 90, 95, 100};
        QCOMPARE(ordered.lines.times, exact);
        QCOMPARE(index->findOffset(96), quint64(index->getChunks().at(3).offset));
    }

    void whatCannotBeDecodedIsCountedAndNamed()
    {
        Recording recording(settings(McapWriter::Lz4, 100));
        McapWriter& writer = recording.writer;
        const quint16 good = recording.addPoints("/good");
        const quint16 broken = writer.addChannel(
            "/broken", "protobuf", writer.addSchema("demo.Other", "protobuf", QByteArray("\xff\xff nonsense")));
        const QVector<quint16> channels{writer.addChannel("\xef\xbb\xbf/json", "json", 0),
                                        writer.addChannel("/bare", "protobuf", 0), broken, quint16(77), good};
        for (int i = 0; i < 10; ++i)
            writer.writeMessage(channels.at(i % 5), 0, quint64(i) * 1000, "{}");
        const QByteArray bytes = recording.finished();
        QString error;
        const std::unique_ptr<McapIndex> index(McapIndex::load(write(bytes), &error));
        const Decoded decoded(bytes, 1 << 20, index.get());
        QStringList names;
        for (const QString& message : decoded.lines.messages.mid(0, 5))
            names.append(message.section(QLatin1String(" #"), 0, 0));
        QCOMPARE(names,
                 QStringList({QStringLiteral("\uFEFF/json (json, not decodable)"),
                              QStringLiteral("/bare (protobuf without a schema, not decodable)"),
                              QStringLiteral("/broken (demo.Other, not decodable)"),
                              QStringLiteral("channel 77 (not announced, not decodable)"), QStringLiteral("/good")}));
        QCOMPARE(int(decoded.lines.messages.size()), 10);
        QCOMPARE(int(decoded.lines.problems.size()), 4);
        QVERIFY(decoded.lines.problems.at(0).endsWith(
                    QLatin1String("not decodable: /broken: the schema demo.Other cannot be used: ")) ||
                decoded.lines.problems.at(0).contains(QLatin1String("/broken: the schema demo.Other cannot be used")));
        QVERIFY(
            decoded.lines.problems.at(1).endsWith(QStringLiteral("not decodable: \uFEFF/json (json, not decodable)")));
        QVERIFY(decoded.lines.problems.at(2).endsWith(QLatin1String("/bare: the channel has no schema")));
        QVERIFY(decoded.lines.problems.at(3).contains(QLatin1String("channel 77, which was not announced")));
    }

    void schemasThatAreTheSameGiveTheSameType()
    {
        QStringList expected;
        const QByteArray bytes = recording(settings(McapWriter::Zstd, 700), &expected, 40);
        Definitions definitions;
        QSet<const MessageInfo*> infos;
        class Sink : public StreamSink
        {
        public:
            explicit Sink(QSet<const MessageInfo*>* seen)
                : m_seen(seen)
            {
            }
            void processReceived(const ReceivedMessage& message) override { m_seen->insert(message.info); }
            void processProblem(const StreamProblem&) override {}

        private:
            QSet<const MessageInfo*>* m_seen;
        } sink(&infos);
        for (int i = 0; i < 2; ++i) {
            McapStreamDecoder decoder(&definitions);
            decoder.feed(bytes.constData(), int(bytes.size()), Message::NoTime, &sink);
            QStringList problems;
            decoder.publishTypes(&problems);
        }
        QCOMPARE(int(infos.size()), 1);
        QCOMPARE((*infos.constBegin())->getName(), QStringLiteral("demo.Point"));
        QCOMPARE((*infos.constBegin())->getFormatInfo(), definitions.getFormat(QStringLiteral("protobuf")));
    }

    void claimsOfTooMuchArePassedOver_data()
    {
        QTest::addColumn<QByteArray>("hostile");
        QTest::addColumn<QString>("problem");
        const quint64 huge = quint64(100) << 30;
        const QByteArray zeros(64 << 20, '\0');
        QByteArray bomb(int(ZSTD_compressBound(std::size_t(zeros.size()))), '\0');
        bomb.resize(
            int(ZSTD_compress(bomb.data(), std::size_t(bomb.size()), zeros.constData(), std::size_t(zeros.size()), 1)));
        const QByteArray some(50, 'x');
        const QByteArray size = QByteArray::number(huge);
        QTest::newRow("uncompressed size")
            << chunk("zstd", some, huge, 50) << QStringLiteral("a chunk that holds 107374182400 bytes was passed over");
        QTest::newRow("length of the records")
            << chunk("zstd", some, 100, huge) << QStringLiteral("a chunk whose lengths contradict each other");
        QByteArray consistent = chunk("zstd", some, 100, huge);
        qToLittleEndian(huge + 44, consistent.data() + 1);
        QTest::newRow("all lengths") << consistent << QStringLiteral("a chunk of 107374182444 bytes");
        QTest::newRow("message") << "\x05" + little(huge) + some << QStringLiteral("a message of 107374182400 bytes");
        QTest::newRow("number 0") << record(0, some) << QStringLiteral("no record has the number 0");
        QTest::newRow("bomb") << chunk("zstd", bomb, 1000, quint64(bomb.size()))
                              << QStringLiteral("a chunk that does not decompress was dropped");
        QTest::newRow("compression") << chunk("brotli", some, 100, 50)
                                     << QStringLiteral("a chunk with the compression \"brotli\"");
        QTest::newRow("noise in lz4") << chunk("lz4", some, 100, 50)
                                      << QStringLiteral("a chunk that does not decompress was dropped");
        QTest::newRow("record in a chunk")
            << chunk("", "\x05" + little(huge) + some, 59, 59) << QStringLiteral("a record in a chunk has");
    }

    void claimsOfTooMuchArePassedOver()
    {
        QFETCH(QByteArray, hostile);
        QFETCH(QString, problem);
        Recording recording(settings(McapWriter::Zstd, 100));
        const quint16 channel = recording.addPoints("/a");
        for (int i = 0; i < 20; ++i) {
            if (i == 10) {
                recording.writer.flush();
                recording.buffer.write(hostile);
            }
            recording.writer.writeMessage(channel, 0, quint64(i) * 1000, point(i));
        }
        const QByteArray bytes = recording.finished();
        takePeak();
        const qint64 memory = takePeak();
        const Decoded decoded(bytes, 10);
        QVERIFY(takePeak() - memory < Slack);
        QCOMPARE(int(decoded.lines.messages.size()), 20);
        const QString report = decoded.lines.problems.join(QLatin1Char('\n'));
        QVERIFY2(report.contains(problem), qPrintable(report));
    }

    void aRecordThatIsNoneCostsOnlyItself_data()
    {
        QTest::addColumn<int>("chunkSize");
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<QString>("problem");
        for (const int chunkSize : {0, 300}) {
            const char* const where = chunkSize == 0 ? "unchunked" : "chunks";
            QTest::addRow("short message, %s", where)
                << chunkSize << record(5, QByteArray(21, 'x')) << QStringLiteral("30 bytes skipped: a message of 21");
            QTest::addRow("number 0, %s", where)
                << chunkSize << record(0, QByteArray(5000, 'x')) << QStringLiteral("5009 bytes skipped: no record has");
            QTest::addRow("several, %s", where)
                << chunkSize << record(0, "x") + record(6, QByteArray(3, 'x')) + record(0x0f, QByteArray())
                << QStringLiteral("31 bytes skipped: no record has");
            QTest::addRow("short messages in a chunk, %s", where)
                << chunkSize
                << chunk("", record(5, QByteArray(21, 'x')) + record(0, "x") + record(5, QByteArray()), 49, 49)
                << QStringLiteral("does not fit the message type: a message of 0 bytes");
        }
    }

    void aRecordThatIsNoneCostsOnlyItself()
    {
        QFETCH(int, chunkSize);
        QFETCH(QByteArray, record);
        QFETCH(QString, problem);
        for (const int before : {0, 10, 20}) {
            Recording recording(settings(McapWriter::NoCompression, chunkSize));
            const quint16 channel = recording.addPoints("/a");
            for (int i = 0; i <= 20; ++i) {
                if (i == before) {
                    recording.writer.flush();
                    recording.buffer.write(record);
                }
                if (i < 20)
                    recording.writer.writeMessage(channel, 0, quint64(i) * 1000, point(i));
            }
            const QByteArray bytes = recording.finished();
            for (const int piece : {1, 1 << 20}) {
                const Decoded decoded(bytes, piece);
                QCOMPARE(int(decoded.lines.messages.size()), 20);
                const QString problems = decoded.lines.problems.join(QLatin1String(", "));
                QVERIFY2(problems.contains(problem), qPrintable(problems));
            }
            QString error;
            const std::unique_ptr<McapIndex> index(McapIndex::load(write(bytes), &error));
            QCOMPARE(index->getEndTime(), qint64(19));
        }
    }

    void piecesDoNotDecideWhatARecordIs()
    {
        const QByteArray beyondAllEnds = "\x09" + little(~quint64(600));
        const QByteArray bytes =
            QByteArray("\x89MCAP0\r\n") + record(5, QByteArray()) + beyondAllEnds + QByteArray(1000, 'x');
        QCOMPARE(Decoded(bytes, 1).lines.problems, Decoded(bytes).lines.problems);
    }

    void manyChunksTakeNoMoreMemoryThanAFew()
    {
        Recording recording(settings(McapWriter::Zstd, 1 << 20));
        const quint16 channel = recording.addPoints("/a");
        const QByteArray head = recording.buffer.data();
        for (int i = 0; i < 9000; ++i)
            recording.writer.writeMessage(channel, 0, quint64(i) * 1000, point(i, 100));
        recording.writer.flush();
        const QByteArray chunk = recording.buffer.data().mid(head.size());

        class Counter : public StreamSink
        {
        public:
            void processReceived(const ReceivedMessage&) override { ++messages; }
            void processProblem(const StreamProblem& problem) override
            {
                if (problem.kind != StreamProblem::DisorderedTimes) // it is the same chunk again and again
                    qWarning("%s", qPrintable(problem.text));
            }
            int messages = 0;
        } counter;
        Definitions definitions;
        McapStreamDecoder decoder(&definitions, McapStreamDecoder::Live);
        const auto feed = [&](const QByteArray& bytes) {
            for (int i = 0; i < bytes.size(); i += 65536)
                decoder.feed(bytes.constData() + i, qMin(65536, int(bytes.size()) - i), Message::NoTime, &counter);
        };
        feed(head);
        for (int i = 0; i < 5; ++i)
            feed(chunk);
        takePeak();
        const qint64 memory = takePeak();
        for (int i = 0; i < 60; ++i)
            feed(chunk);
        QVERIFY(takePeak() - memory < Slack);
        decoder.finish(&counter);
        QCOMPARE(counter.messages, 65 * 9000);
    }

    void aWriterSaysWhenItCannotWrite()
    {
        QBuffer closed;
        McapWriter writer(&closed);
        // The buffer warns too.
        QVERIFY(!writer.open());
        takeWarnings();
        QVERIFY(!writer.getErrorString().isEmpty());
        QVERIFY(!writer.writeMessage(1, 0, 0, QByteArray()));
        QVERIFY(!writer.close());
    }

private:
    QString write(const QByteArray& bytes)
    {
        const QString path = m_folder.filePath(QString::number(++m_files));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qWarning("%s cannot be written", qPrintable(path));
        return path;
    }

    QTemporaryDir m_folder;
    int m_files = 0;
};

QTEST_GUILESS_MAIN(TestMcapStreamDecoder)
#include "tst_mcapstreamdecoder.moc"

#include "encoding.h"
#include "fieldinfo.h"
#include "mcapdecoding.h"
#include "messageinfo.h"
#include "testbase.h"
#include "textrows.h"

#include <algorithm>

#include <zstd.h>

namespace
{

/** 300 messages on two channels, 1 ms apart. */
QByteArray recording(const McapWriter::Settings& settings, QStringList* expected, int count = 300)
{
    Recording recording(settings);
    const quint16 a = recording.addPoints("/a");
    const quint16 b = recording.addPoints("/b");
    for (int i = 0; i < count; ++i) {
        const QByteArray payload = point(i, i % 7 * 20);
        recording.writer.writeMessage(i % 3 ? a : b, quint32(i + 1), quint64(i) * Millisecond, payload);
        expected->append(text("demo.Point /%1 #%2 @%3 %4")
                             .arg(text(i % 3 ? "a" : "b"), QString::number(i + 1), QString::number(i * 1000),
                                  QString::fromLatin1(payload.toHex())));
    }
    return recording.finished();
}

/** Twenty messages of one channel, 1 us apart, and before that of a number @p stranger, which is no message. */
QByteArray recordingWith(const QByteArray& stranger, int before, const McapWriter::Settings& settings)
{
    Recording recording(settings);
    const quint16 channel = recording.addPoints("/a");
    for (int i = 0; i <= 20; ++i) {
        if (i == before) {
            recording.writer.flush();
            recording.buffer.write(stranger);
        }
        if (i < 20)
            recording.writer.writeMessage(channel, 0, quint64(i) * 1000, point(i));
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
    void whatIsWrittenIsRead()
    {
        static const struct
        {
            McapWriter::Compression compression;
            int chunkSize;
            int chunks;
        } rows[] = {{McapWriter::NoCompression, 4000, 8},
                    {McapWriter::Lz4, 4000, 8},
                    {McapWriter::Zstd, 4000, 8},
                    {McapWriter::Zstd, 0, 1}}; // without chunks
        for (const auto& row : rows) {
            QStringList expected;
            const QByteArray bytes = recording(settings(row.compression, row.chunkSize), &expected);
            const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
            QCOMPARE(QStringLiteral("summary %1, %2 messages, %3 to %4, %5 definitions, %6 chunks")
                         .arg(index->hasSummary())
                         .arg(index->getMessageCount())
                         .arg(index->getStartTime())
                         .arg(index->getEndTime())
                         .arg(index->getDefinitions().size())
                         .arg(index->getChunks().size()),
                     text("summary %1, %2 messages, 0 to 299000, 4 definitions, %3 chunks")
                         .arg(row.chunkSize > 0)
                         .arg(row.chunkSize > 0 ? 300 : -1)
                         .arg(row.chunks));
            for (const int piece : {1, 7, 1000, 1 << 20}) {
                const Decoded decoded(bytes, piece == 7 ? index.get() : nullptr, 0, piece);
                QCOMPARE(decoded.problems, QStringList());
                QCOMPARE(decoded.contents(), expected);
            }
            for (const int time : {-5, 0, 1000, 150000, 298500, 299000}) {
                const quint64 from = index->findOffset(time);
                QCOMPARE(from == 0, time <= 1000 || row.chunkSize == 0);
                const Decoded decoded(bytes, index.get(), from);
                const int missing = int(expected.size() - decoded.messages.size());
                QVERIFY(missing * 1000 <= qMax(0, time));
                QCOMPARE(decoded.contents(), expected.mid(missing));
                QCOMPARE(decoded.problems, QStringList());
            }
            QVERIFY(index->findOffset(300000) > quint64(bytes.size()) / 3);
        }
    }

    void aRecordingThatWasCutAnywhereKeepsWhatCameBefore()
    {
        for (const McapWriter::Compression compression :
             {McapWriter::NoCompression, McapWriter::Lz4, McapWriter::Zstd}) {
            QStringList expected;
            const QByteArray bytes = recording(settings(compression, 700), &expected, 40);
            const auto definitions = std::make_shared<Definitions>();
            int before = 0;
            for (int size = 1; size < bytes.size(); ++size) {
                const Decoded decoded(bytes.left(size), definitions);
                QCOMPARE(decoded.contents(), expected.mid(0, decoded.messages.size()));
                QVERIFY(decoded.messages.size() >= before);
                before = int(decoded.messages.size());
                QVERIFY(decoded.problems.size() == 1 && decoded.problems.at(0).contains(text("stream ends")));
            }
            QCOMPARE(before, 40);

            // Killed: what comes behind the second chunk was not written. The index is made by walking.
            const int second = int(bytes.indexOf(QByteArray("\x06"), bytes.indexOf(QByteArray("\x07", 1), 400)));
            const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes.left(second + 500));
            QVERIFY(!index->hasSummary() && !index->getChunks().isEmpty() && index->getDefinitions().size() == 4);
        }
    }

    void aFlippedByteIsNoticedAndMakesNoMessageUp()
    {
        QStringList expected;
        const QByteArray bytes = recording(settings(McapWriter::Zstd, 700), &expected, 40);
        const int dataEnd = int(bytes.lastIndexOf(QByteArray("\x0f\x04\0\0\0\0\0\0\0", 9)));
        QVERIFY(dataEnd > 0);
        const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
        QCOMPARE(int(index->getChunks().size()), 6);
        const auto definitions = std::make_shared<Definitions>();
        int losses = 0;
        for (int i = 0; i < bytes.size(); ++i) {
            QByteArray damaged = bytes;
            damaged[i] = char(damaged.at(i) ^ (1 << i % 8));
            // An index outside of chunks that becomes a message is one until the end, where the checksum of it all is.
            if (bytes.at(i) == 7 && damaged.at(i) == 5)
                continue;
            const Decoded decoded(damaged, definitions);
            QVERIFY2(i >= dataEnd || !decoded.problems.isEmpty(), qPrintable(QString::number(i)));
            const bool waited = !decoded.problems.filter(text("had to wait")).isEmpty();
            QStringList rest = expected;
            for (const QString& message : decoded.contents()) {
                // A channel's name may be what was damaged; then the checksum of it all is wrong.
                const QString content = text(" #") + message.section(text(" #"), -1);
                const auto isSame = [&](const QString& line) { return line.endsWith(content); };
                const auto found = std::find_if(rest.begin(), rest.end(), isSame);
                QVERIFY2(found != rest.end(), qPrintable(text("%1: %2").arg(i).arg(message)));
                rest.erase(waited ? found : rest.begin(), found + 1);
            }
            losses += int(decoded.messages.size()) < 40;
            for (const McapIndex::Chunk& chunk : index->getChunks())
                if (quint64(i) > chunk.offset && quint64(i) < chunk.offset + chunk.length)
                    QVERIFY2(decoded.messages.size() >= 28, qPrintable(QString::number(i)));
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
        const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
        const auto times = [&bytes](const McapIndex* index) {
            return Decoded(bytes, index, 0, 100).messages.join(QLatin1Char(' ')).remove(text("demo.Point /a @"));
        };
        QCOMPARE(times(nullptr), text("10 20 30 40 50 55 60 60 70 80 90 5 15 95 100"));
        QCOMPARE(times(index.get()), text("5 10 15 20 30 40 50 55 60 60 70 80 90 95 100"));
        QCOMPARE(index->findOffset(96), quint64(index->getChunks().at(3).offset));
    }

    void whatCannotBeDecodedIsCountedAndNamed()
    {
        Recording recording(settings(McapWriter::Lz4, 100));
        McapWriter& writer = recording.writer;
        const quint16 good = recording.addPoints("/good");
        const quint16 broken = writer.addChannel(
            "/broken", "protobuf", writer.addSchema("demo.Other", "protobuf", QByteArray("\xff\xff nonsense")));
        const quint16 channels[] = {writer.addChannel("\xef\xbb\xbf/xml", "xml", 0),
                                    writer.addChannel("/bare", "protobuf", 0), broken, 77, good};
        for (int i = 0; i < 10; ++i)
            writer.writeMessage(channels[i % 5], 0, quint64(i) * 1000, "{}");
        const QByteArray bytes = recording.finished();
        const Decoded decoded(bytes, m_files.indexOf(bytes).get());
        QCOMPARE(decoded.messages.mid(0, 5).join(text("; ")),
                 QChar(0xfeff) + text("/xml (xml, not decodable) \xef\xbb\xbf/xml @0; "
                                      "/bare (protobuf without a schema, not decodable) /bare @1; "
                                      "/broken (demo.Other, not decodable) /broken @2; "
                                      "channel 77 (not announced, not decodable) channel 77 @3; demo.Point /good @4"));
        QCOMPARE(int(decoded.messages.size()), 10);
        const TextRow problems[] = {{"0", "not decodable: /broken: the schema demo.Other cannot be used"},
                                    {"1", "not decodable: \xef\xbb\xbf/xml (xml, not decodable)"},
                                    {"2", "not decodable: /bare: the channel has no schema"},
                                    {"3", "not decodable: messages of channel 77, which was not announced"},
                                    {"4", ""}};
        for (const TextRow& row : problems) {
            const QString problem = decoded.problems.value(std::atoi(row.given));
            QVERIFY2(row.expected[0] ? problem.startsWith(text(row.expected)) : problem.isEmpty(), qPrintable(problem));
        }
    }

    void whatDescribesItselfNeedsNoSchema()
    {
        Recording recording(settings(McapWriter::NoCompression, 0));
        McapWriter& writer = recording.writer;
        writer.writeMessage(1, 0, 0, "{\"early\":1}");
        QVector<quint16> channels{writer.addChannel("/none", "json", 0)};
        for (const char* encoding : {"", "protobuf"})
            channels.append(writer.addChannel("/a", "json", writer.addSchema("Named", encoding, "")));
        channels.append(writer.addChannel("/b", "json", 4711));
        for (const quint16 channel : std::as_const(channels))
            writer.writeMessage(channel, 0, Millisecond, "{\"a\":1}");
        const QByteArray bytes = recording.finished();
        const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
        for (const McapIndex* known : {index.get(), static_cast<McapIndex*>(nullptr)}) {
            const Decoded decoded(bytes, known, 0, 100);
            QCOMPARE(decoded.messages.join(text("; ")),
                     text("/none /none @0; /none /none @1000; Named /a @1000; Named /a @1000; /b /b @1000"));
            QCOMPARE(decoded.problems.filter(text("schema")).join(text("; ")),
                     text("not decodable: /a: the schema Named is protobuf and the messages are json; "
                          "not decodable: /b: the channel's schema 4711 was not announced"));
            QString error;
            const MessageInfo* const type =
                decoded.definitions->find(text("json"))
                    ->makeType({text("/none"), "json", QByteArray(), QByteArray(), "{}"}, &error);
            QCOMPARE(type->getFieldInfos().constFirst()->getName(), text("early"));
        }
    }

    void namesOfSchemasAreFoundInFiles()
    {
        Recording recording(settings(McapWriter::NoCompression, 0));
        McapWriter& writer = recording.writer;
        writer.writeMessage(writer.addChannel("/a", "cdr", writer.addSchema("p/msg/T", "", "")), 0, 0,
                            QByteArray::fromHex("0001000007"));
        const QByteArray bytes = recording.finished();
        const SharedDefinitions definitions = std::make_shared<Definitions>();
        QStringList errors;
        const Decoded before(bytes, definitions);
        QVERIFY(definitions->load(m_files.write(text("p/msg/T.msg"), "uint8 a"), QStringList(), &errors));
        const Decoded decoded(bytes, definitions);
        QCOMPARE(before.messages.join(text("; ")), text("/a (p/msg/T, not decodable) /a @0"));
        QCOMPARE(decoded.messages.join(text("; ")), text("p/msg/T /a @0"));
        QCOMPARE(decoded.problems.join(text("; ")), QString());
    }

    void filesFollowOneAnother()
    {
        Recording first(settings(McapWriter::Lz4, 60));
        const quint16 a = first.addPoints("/a");
        Recording second(settings(McapWriter::Zstd, 60));
        const quint16 json = second.writer.addChannel("/json", "json", 0); // the number that /a had
        const quint16 again = second.addPoints("/a");
        for (int i = 0; i < 4; ++i) {
            first.writer.writeMessage(a, 0, quint64(i) * Millisecond, point(i));
            second.writer.writeMessage(i % 2 ? again : json, 0, quint64(i + 4) * Millisecond, i % 2 ? point(i) : "{}");
        }
        const QByteArray whole = first.finished();
        const QByteArray last = second.finished();
        const QString rest = text("/json /json @4000; demo.Point /a @5000; /json /json @6000; demo.Point /a @7000");
        for (const int cut : {0, 300}) {
            const QByteArray one = whole.left(whole.size() - cut);
            const QVector<InputFile> files{{m_files.write(one), one.size()}, {m_files.write(last), last.size()}};
            QString error;
            const std::unique_ptr<McapIndex> index(McapIndex::load(files, &error));
            QCOMPARE(index->getStartTime(), qint64(0));
            QCOMPARE(index->getEndTime(), qint64(7000));
            for (const qint64 since : {0, 6000}) {
                McapDecoding decoding(std::make_shared<Definitions>(), McapStreamDecoder::Recording);
                Transcript found(&decoding.decoder, false);
                decoding.decoder.setIndex(index.get());
                decoding.decoder.setFiles(files);
                const quint64 from = index->findOffset(since);
                decoding.decoder.restart(from);
                feedAll(&decoding.decoder, one + last, &found, 100, from);
                const QString all = found.messages.join(text("; "));
                QVERIFY2(since ? rest.endsWith(all) && all.contains(text("@6000")) : all.endsWith(rest),
                         qPrintable(all));
                QVERIFY(since || all.startsWith(text("demo.Point /a @0; demo.Point /a @1000")));
                QCOMPARE(found.problems.isEmpty(), since || !cut);
                decoding.decoder.restart(0);
                feedAll(&decoding.decoder, one + last, &found, 100, 0);
                QCOMPARE(int(found.rows.size()), 2); // whatever numbers the channels have
            }
        }
    }

    void whatNobodyWantsIsNotRead()
    {
        Recording recording(settings(McapWriter::Zstd, 600));
        const quint16 a = recording.addPoints("/a");
        const quint16 b = recording.writer.addChannel(
            "/b", "protobuf", recording.writer.addSchema("other.Point", "protobuf", schema("other")));
        QStringList expected;
        for (int i = 0; i < 100; ++i) { // some of both, then only b, then only a
            const bool isWanted = i < 10 ? i % 2 : i >= 70;
            recording.writer.writeMessage(isWanted ? a : b, 0, quint64(i) * Millisecond, point(i, 40));
            if (isWanted)
                expected.append(text("demo.Point /a @%1").arg(i * 1000));
        }
        QByteArray bytes = recording.finished();
        const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
        int unwanted = 0;
        for (const McapIndex::Chunk& chunk : index->getChunks()) {
            if (chunk.channels != std::vector<quint16>{b})
                continue;
            ++unwanted;
            bytes.data()[chunk.offset + chunk.length / 2] ^= 1; // who reads it complains
        }
        QVERIFY(unwanted > 2 && !Decoded(bytes, index.get()).problems.isEmpty());
        McapDecoding decoding(std::make_shared<Definitions>(), McapStreamDecoder::Recording);
        Transcript found(&decoding.decoder, false);
        decoding.decoder.setIndex(index.get());
        decoding.decoder.setTypeFilter(
            [](const MessageInfo* info) { return info && info->getName() == text("demo.Point"); });
        feedAll(&decoding.decoder, bytes, &found, 100, 0);
        QCOMPARE(found.problems, QStringList());
        QCOMPARE(found.messages, expected);
    }

    void schemasThatAreTheSameGiveTheSameType()
    {
        QStringList expected;
        const QByteArray bytes = recording(settings(McapWriter::Zstd, 700), &expected, 40);
        const auto definitions = std::make_shared<Definitions>();
        QVector<const MessageInfo*> infos;
        for (int i = 0; i < 2; ++i) {
            const Decoded decoded(bytes, definitions);
            QStringList problems;
            decoded.decoder.publishTypes(&problems);
            infos += decoded.infos;
        }
        QCOMPARE(int(infos.count(infos.first())), 80);
        QCOMPARE(infos.first()->getName(), text("demo.Point"));
        QCOMPARE(infos.first()->getFormatInfo(), definitions->getFormat(text("protobuf")));
    }

    void whatIsNoMessageCostsOnlyItself_data()
    {
        QTest::addColumn<QByteArray>("hostile");
        QTest::addColumn<QString>("problem");
        QTest::addColumn<bool>("onlyBesideChunks"); // where nothing tells how long it is
        const quint64 huge = quint64(100) << 30;
        const QByteArray zeros(64 << 20, '\0');
        QByteArray bomb(int(ZSTD_compressBound(std::size_t(zeros.size()))), '\0');
        bomb.resize(
            int(ZSTD_compress(bomb.data(), std::size_t(bomb.size()), zeros.constData(), std::size_t(zeros.size()), 1)));
        const QByteArray some(50, 'x');
        QByteArray consistent = chunk("zstd", some, 100, huge);
        qToLittleEndian(huge + 44, consistent.data() + 1);
        const QByteArray shortMessage = record(5, QByteArray(21, 'x'));
        const auto row = [](const char* problem, const QByteArray& hostile, bool onlyBesideChunks = false) {
            QTest::newRow(problem) << hostile << text(problem) << onlyBesideChunks;
        };
        row("a chunk that holds 107374182400 bytes was passed over", chunk("zstd", some, huge, 50));
        row("a chunk whose lengths contradict each other", chunk("zstd", some, 100, huge), true);
        row("a chunk of 107374182444 bytes", consistent, true);
        row("a message of 107374182400 bytes", "\x05" + little(huge) + some, true);
        row("59 bytes skipped: no record has the number 0", record(0, some));
        row("a chunk that does not decompress was dropped", chunk("zstd", bomb, 1000, quint64(bomb.size())));
        row("a chunk with the compression \"brotli\"", chunk("brotli", some, 100, 50));
        row("a chunk that does not decompress was dropped", chunk("lz4", some, 100, 50));
        row("a record in a chunk has", chunk("", "\x05" + little(huge) + some, 59, 59));
        row("30 bytes skipped: a message of 21", shortMessage);
        row("5009 bytes skipped: no record has", record(0, QByteArray(5000, 'x')));
        row("31 bytes skipped: no record has", record(0, "x") + record(6, "xxx") + record(0x0f, QByteArray()));
        row("does not fit the message type: a message of 0 bytes",
            chunk("", shortMessage + record(0, "x") + record(5, QByteArray()), 49, 49));
    }

    void whatIsNoMessageCostsOnlyItself()
    {
        QFETCH(QByteArray, hostile);
        QFETCH(QString, problem);
        QFETCH(bool, onlyBesideChunks);
        for (const int chunkSize : {onlyBesideChunks ? 100 : 0, 300}) {
            for (const int before : {0, 10, 20}) {
                const QByteArray bytes = recordingWith(hostile, before, settings(McapWriter::NoCompression, chunkSize));
                for (const int piece : {1, 1 << 20}) {
                    takePeak();
                    const qint64 memory = takePeak();
                    const Decoded decoded(bytes, nullptr, 0, piece);
                    QVERIFY(takePeak() - memory < Slack);
                    QCOMPARE(int(decoded.messages.size()), 20);
                    const QString problems = decoded.problems.join(text(", "));
                    QVERIFY2(problems.contains(problem), qPrintable(problems));
                }
                QVERIFY(onlyBesideChunks || m_files.indexOf(bytes)->getEndTime() == 19);
            }
        }
    }

    void piecesDoNotDecideWhatARecordIs()
    {
        const QByteArray beyondAllEnds = "\x09" + little(~quint64(600));
        const QByteArray bytes =
            QByteArray("\x89MCAP0\r\n") + record(5, QByteArray()) + beyondAllEnds + QByteArray(1000, 'x');
        QCOMPARE(Decoded(bytes, nullptr, 0, 1).problems, Decoded(bytes).problems);
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
    McapFiles m_files;
};

QTEST_GUILESS_MAIN(TestMcapStreamDecoder)
#include "tst_mcapstreamdecoder.moc"

#include "definitions.h"
#include "mcapfixtures.h"
#include "mcapindex.h"
#include "mcapstreamdecoder.h"
#include "message.h"
#include "messageinfo.h"
#include "streamopener.h"
#include "testbase.h"

#include <QFile>
#include <QTemporaryDir>

#include <algorithm>
#include <memory>

using namespace McapFixtures;

namespace
{

QByteArray text(const QByteArray& bytes)
{
    return little(quint32(bytes.size())) + bytes;
}

QByteArray schemaRecord(int id, const QByteArray& package)
{
    return record(3, little(quint16(id)) + text(package + ".Point") + text("protobuf") + text(schema(package)));
}

QByteArray channelRecord(int id, int schema, const QByteArray& topic)
{
    return record(4, little(quint16(id)) + little(quint16(schema)) + text(topic) + text("protobuf") + text({}));
}

QByteArray messageRecord(int channel, int milliseconds)
{
    const quint64 time = quint64(milliseconds) * Millisecond;
    return record(5, little(quint16(channel)) + little(quint32(0)) + little(time) + little(time) + point(milliseconds));
}

/** A chunk of one message, with more records before it, and the index of it when there is to be one. */
QByteArray chunkOf(int channel, int milliseconds, const QByteArray& records, bool indexed)
{
    const QByteArray content = records + messageRecord(channel, milliseconds);
    const quint64 time = quint64(milliseconds) * Millisecond;
    const QByteArray head = little(time) + little(time) + little(quint64(content.size())) + little(quint32(0)) +
                            text({}) + little(quint64(content.size()));
    const QByteArray index = record(7, little(quint16(channel)) + text(little(time) + little(quint64(records.size()))));
    return record(6, head + content) + (indexed ? index : QByteArray());
}

/** What comes: "demo.Point /topic 5", the time in milliseconds; problems as they are. */
class Lines : public StreamSink
{
public:
    explicit Lines(const StreamDecoder* decoder)
        : m_decoder(decoder)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        lines.append(QStringLiteral("%1 %2 %3")
                         .arg(message.info ? message.info->getName() : m_decoder->describeUnknown(message.id),
                              m_decoder->getSenderName(message.sender))
                         .arg(message.time / 1000));
    }
    void processProblem(const StreamProblem& problem) override { lines.append(problem.describe(QString())); }

    QStringList lines;

private:
    const StreamDecoder* m_decoder;
};

QString join(const QStringList& lines)
{
    return lines.join(QLatin1String(", "));
}

} // namespace

/** Indexes of recordings that have no summary, and what a decoder makes of them. */
class TestMcapIndex : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aJumpKnowsChannelsOfTheChunksItSkips_data()
    {
        QTest::addColumn<bool>("indexed");
        QTest::newRow("chunks with an index of their messages") << true;
        QTest::newRow("chunks without one") << false;
    }

    void aJumpKnowsChannelsOfTheChunksItSkips()
    {
        QFETCH(bool, indexed);
        // Channel 3 is announced where nobody can see that it is; channel 2 where it is used first.
        const QByteArray first = schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        const QByteArray silent = schemaRecord(2, "late") + channelRecord(3, 2, "/c");
        const QByteArray bytes = header() + chunkOf(1, 10, first, indexed) + chunkOf(1, 20, silent, indexed) +
                                 chunkOf(2, 30, channelRecord(2, 1, "/b"), indexed) + chunkOf(3, 40, {}, indexed) +
                                 chunkOf(2, 50, {}, indexed) + chunkOf(1, 60, {}, indexed);
        const std::unique_ptr<McapIndex> index(load(bytes));
        QVERIFY(index && !index->hasSummary());
        QCOMPARE(int(index->getDefinitions().size()), 5);

        const QStringList all{QStringLiteral("demo.Point /a 10"), QStringLiteral("demo.Point /a 20"),
                              QStringLiteral("demo.Point /b 30"), QStringLiteral("late.Point /c 40"),
                              QStringLiteral("demo.Point /b 50"), QStringLiteral("demo.Point /a 60")};
        for (int skipped = 0; skipped < all.size(); ++skipped) {
            const quint64 from = index->findOffset((skipped + 1) * 10000);
            QCOMPARE(join(decode(bytes, index.get(), from)), join(all.mid(skipped)));
        }
    }

    void aNumberThatIsGivenAnewIsDecodedByWhatItMeansThen()
    {
        const QByteArray announcement = channelRecord(1, 1, "/a");
        const QByteArray bytes = header() + chunkOf(1, 10, schemaRecord(1, "demo") + announcement, true) +
                                 schemaRecord(1, "other") + announcement + chunkOf(1, 20, {}, true) +
                                 channelRecord(1, 1, "/b") + messageRecord(1, 30);
        const std::unique_ptr<McapIndex> index(load(bytes));
        const QString expected = QStringLiteral("demo.Point /a 10, other.Point /a 20, other.Point /b 30");
        QCOMPARE(join(decode(bytes, nullptr, 0)), expected);
        QCOMPARE(join(decode(bytes, index.get(), 0)), expected);
        QCOMPARE(join(decode(bytes, index.get(), index->findOffset(20000))), expected.section(QStringLiteral(", "), 1));
    }

    void anOrderThatIsLostIsTold()
    {
        QByteArray bytes = header() + schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        for (const int time : {50, 60, 10, 20, 70})
            bytes += chunkOf(1, time, {}, true);
        const QStringList lines = decode(bytes, nullptr, 0);
        QCOMPARE(int(lines.filter(QStringLiteral("not in the order of their times")).size()), 1);
        QCOMPARE(int(lines.size()), 6);
        const std::unique_ptr<McapIndex> index(load(bytes));
        QCOMPARE(int(decode(bytes, index.get(), 0).filter(QStringLiteral("order")).size()), 0);
    }

    void whatADamagedChunkAnnouncedIsFoundInTheSummary()
    {
        const QByteArray definitions = schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        QByteArray damaged = chunkOf(1, 10, definitions, true);
        damaged[9 + 24] = 1; // its checksum
        const QByteArray rest = header() + damaged + chunkOf(1, 30, {}, true);
        const QByteArray bytes = rest + messageRecord(1, 20) + ended(definitions);
        const auto linesOf = [&](const QByteArray& of, const McapIndex* index, McapStreamDecoder::Mode mode) {
            return join(decode(of, index, 0, mode)).section(QStringLiteral(", "), 3); // behind the failure
        };
        const QString found = QStringLiteral("demo.Point /a 20, demo.Point /a 30");
        const std::unique_ptr<McapIndex> index(load(bytes));
        QCOMPARE(linesOf(bytes, index.get(), McapStreamDecoder::Recording), found);
        QCOMPARE(linesOf(bytes, nullptr, McapStreamDecoder::Recording),
                 QStringLiteral("messages are not in the order of their times: 2 messages of /a had to wait until it "
                                "was announced, ") +
                     found);
        const QString missing = QStringLiteral("not decodable: messages of channel 1, which was not announced in what "
                                               "could be read, channel 1 (not announced, not decodable) channel 1 %1, "
                                               "channel 1 (not announced, not decodable) channel 1 %2");
        QCOMPARE(linesOf(rest + messageRecord(1, 20) + ended({}), nullptr, McapStreamDecoder::Recording),
                 missing.arg(20).arg(30));
        // Of a live stream nobody knows whether it has an end.
        QCOMPARE(linesOf(bytes, nullptr, McapStreamDecoder::Live), missing.arg(20).arg(30));

        // A channel that came, of a schema that was lost.
        const QByteArray half = rest.left(rest.size() - int(chunkOf(1, 30, {}, true).size())) +
                                chunkOf(1, 30, channelRecord(1, 1, "/a"), true) + ended(definitions);
        const std::unique_ptr<McapIndex> other(load(half));
        QCOMPARE(linesOf(half, other.get(), McapStreamDecoder::Recording), found.section(QStringLiteral(", "), 1));
    }

    void messagesOutsideOfChunksComeInOrder_data()
    {
        QTest::addColumn<QString>("parts");
        QTest::addColumn<QString>("piped");
        QTest::newRow("in order") << "5 10 20 30 40"
                                  << "5 10 20 30 40";
        QTest::newRow("not in order") << "20 10 5 60 30 50 40"
                                      << "5 10 20 30 40 50 60";
        // Where nothing can be sought in, a second or what lies between two chunks is put in order.
        QTest::newRow("seconds apart") << "2000 10 4000 3000 6000 20 5000"
                                       << "10 2000 3000 4000 20 5000 6000";
        QTest::newRow("beside chunks") << "30 20 (10) 5 60 (40)"
                                       << "10 20 30 5 40 60";
    }

    void messagesOutsideOfChunksComeInOrder()
    {
        QFETCH(QString, parts);
        QFETCH(QString, piped);
        QByteArray data = header() + schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        QByteArray indexes;
        QVector<int> sorted;
        for (const QString& part : parts.split(QLatin1Char(' '))) {
            const bool isChunk = part.startsWith(QLatin1Char('('));
            sorted.append(isChunk ? part.mid(1).chopped(1).toInt() : part.toInt());
            const QByteArray bytes = isChunk ? chunkOf(1, sorted.last(), {}, true) : messageRecord(1, sorted.last());
            if (isChunk) {
                const quint64 time = quint64(sorted.last()) * Millisecond;
                indexes += record(8, little(time) + little(time) + little(quint64(data.size())) +
                                         little(quint64(bytes.size() - 31)) + text(QByteArray(10, '\1')) +
                                         little(quint64(31)));
            }
            data += bytes;
        }
        std::sort(sorted.begin(), sorted.end());
        QStringList expected;
        for (const int time : sorted)
            expected.append(QString::number(time));
        // The summary has as many chunks as there are, and more messages than these.
        const QByteArray statistics =
            record(11, little(quint64(sorted.size())) + QByteArray(10, '\0') +
                           little(quint32(indexes.count(QByteArray(10, '\1')))) + QByteArray(24, '\0'));
        data += ended(indexes + statistics, quint64(data.size()) + 13);
        const auto times = [&](const McapIndex* index) {
            return join(decode(data, index, 0, McapStreamDecoder::Recording).filter(QStringLiteral("demo.Point")))
                .remove(QStringLiteral("demo.Point /a "))
                .remove(QLatin1Char(','));
        };
        const std::unique_ptr<McapIndex> index(load(data));
        QVERIFY(index && !index->hasSummary());
        QCOMPARE(times(index.get()), expected.join(QLatin1Char(' ')));
        QCOMPARE(times(nullptr), piped);
    }

    void lookingThroughTellsHowFarItIsAndCanBeCancelled()
    {
        QByteArray bytes = header() + schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        for (int i = 0; i < 1000; ++i)
            bytes += messageRecord(1, i);
        const InputAddress address = InputAddress::ofFile(write(bytes));
        Definitions definitions;
        StreamOptions options;
        options.definitions = &definitions;
        const OpenedInput opened = openStream(address, options);
        QVERIFY2(opened.input && opened.stream.index, qPrintable(opened.error));

        QVector<int> percents;
        QVERIFY(!opened.stream.index->prepare([&](int percent) {
            percents.append(percent);
            return percent < 50;
        }));
        QCOMPARE(opened.stream.index->getEndTime(), qint64(Message::NoTime));
        QVERIFY(percents.size() > 5 && std::is_sorted(percents.begin(), percents.end()));
        QVERIFY(percents.constLast() < 60);

        QVERIFY(opened.stream.index->prepare(RecordingIndex::GoOn()));
        QCOMPARE(opened.stream.index->getEndTime(), qint64(999000));
    }

private:
    static QByteArray header() { return QByteArray("\x89MCAP0\r\n") + record(1, text({}) + text({})); }

    /** What stands behind the data. */
    static QByteArray ended(const QByteArray& summary, quint64 start = 0)
    {
        return record(0x0f, QByteArray(4, '\0')) + summary + record(2, little(start) + QByteArray(12, '\0')) +
               QByteArray("\x89MCAP0\r\n");
    }

    QStringList decode(const QByteArray& bytes, const McapIndex* index, quint64 from,
                       McapStreamDecoder::Mode mode = McapStreamDecoder::Live)
    {
        McapStreamDecoder decoder(&m_definitions, mode);
        Lines found(&decoder);
        if (index)
            decoder.setIndex(index);
        if (from > 0)
            decoder.restart(from);
        decoder.feed(bytes.constData() + from, int(bytes.size()) - int(from), Message::NoTime, &found);
        decoder.finish(&found);
        return found.lines;
    }

    McapIndex* load(const QByteArray& bytes)
    {
        QString error;
        return McapIndex::load(write(bytes), &error);
    }

    QString write(const QByteArray& bytes)
    {
        const QString path = m_folder.filePath(QString::number(++m_files));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qWarning("%s cannot be written", qPrintable(path));
        return path;
    }

    QTemporaryDir m_folder;
    Definitions m_definitions;
    int m_files = 0;
};

QTEST_GUILESS_MAIN(TestMcapIndex)
#include "tst_mcapindex.moc"

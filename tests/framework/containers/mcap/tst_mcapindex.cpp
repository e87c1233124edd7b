#include "mcapdecoding.h"
#include "streamopener.h"
#include "testbase.h"
#include "textrows.h"

#include <QRegularExpression>

#include <algorithm>

namespace
{

QByteArray sized(const QByteArray& bytes)
{
    return little(quint32(bytes.size())) + bytes;
}

QByteArray schemaRecord(int id, const QByteArray& package)
{
    return record(3, little(quint16(id)) + sized(package + ".Point") + sized("protobuf") + sized(schema(package)));
}

QByteArray channelRecord(int id, int schema, const QByteArray& topic)
{
    return record(4, little(quint16(id)) + little(quint16(schema)) + sized(topic) + sized("protobuf") + sized({}));
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
                            sized({}) + little(quint64(content.size()));
    const QByteArray index =
        record(7, little(quint16(channel)) + sized(little(time) + little(quint64(records.size()))));
    return record(6, head + content) + (indexed ? index : QByteArray());
}

} // namespace

/** Indexes of recordings that have no summary, and what a decoder makes of them. */
class TestMcapIndex : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aJumpKnowsChannelsOfTheChunksItSkips()
    {
        for (const bool indexed : {true, false}) { // the chunks, by their messages
            // Channel 3 is announced where nobody can see that it is; channel 2 where it is used first.
            const QByteArray first = schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
            const QByteArray silent = schemaRecord(2, "late") + channelRecord(3, 2, "/c");
            const QByteArray bytes = header() + chunkOf(1, 10, first, indexed) + chunkOf(1, 20, silent, indexed) +
                                     chunkOf(2, 30, channelRecord(2, 1, "/b"), indexed) + chunkOf(3, 40, {}, indexed) +
                                     chunkOf(2, 50, {}, indexed) + chunkOf(1, 60, {}, indexed);
            const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
            QVERIFY(index && !index->hasSummary());
            QCOMPARE(int(index->getDefinitions().size()), 5);
            const QString all = text("demo.Point /a 10, demo.Point /a 20, demo.Point /b 30, late.Point /c 40, "
                                     "demo.Point /b 50, demo.Point /a 60");
            for (int skipped = 0; skipped < 6; ++skipped)
                QCOMPARE(decode(bytes, index.get(), index->findOffset((skipped + 1) * 10000)),
                         all.section(text(", "), skipped));
        }
    }

    void aNumberThatIsGivenAnewIsDecodedByWhatItMeansThen()
    {
        const QByteArray announcement = channelRecord(1, 1, "/a");
        const QByteArray bytes = header() + chunkOf(1, 10, schemaRecord(1, "demo") + announcement, true) +
                                 schemaRecord(1, "other") + announcement + chunkOf(1, 20, {}, true) +
                                 channelRecord(1, 1, "/b") + messageRecord(1, 30);
        const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
        const QString expected = text("demo.Point /a 10, other.Point /a 20, other.Point /b 30");
        QCOMPARE(decode(bytes, nullptr, 0), expected);
        QCOMPARE(decode(bytes, index.get(), 0), expected);
        QCOMPARE(decode(bytes, index.get(), index->findOffset(20000)), expected.section(text(", "), 1));
    }

    void anOrderThatIsLostIsTold()
    {
        QByteArray bytes = header() + schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        for (const int time : {50, 60, 10, 20, 70})
            bytes += chunkOf(1, time, {}, true);
        const QString lines = decode(bytes);
        QCOMPARE(int(lines.count(text("not in the order of their times"))), 1);
        QCOMPARE(int(lines.count(text("demo.Point /a"))), 5);
        QVERIFY(!decode(bytes, m_files.indexOf(bytes).get()).contains(text("order")));
    }

    void whatADamagedChunkAnnouncedIsFoundInTheSummary()
    {
        const QByteArray definitions = schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        QByteArray damaged = chunkOf(1, 10, definitions, true);
        damaged[9 + 24] = 1; // its checksum
        const QByteArray rest = header() + damaged + chunkOf(1, 30, {}, true);
        const QByteArray bytes = rest + messageRecord(1, 20) + ended(definitions);
        const auto linesOf = [&](const QByteArray& of, const McapIndex* index, McapStreamDecoder::Mode mode) {
            return decode(of, index, 0, mode).section(text(", "), 3); // behind the failure
        };
        const QString found = text("demo.Point /a 20, demo.Point /a 30");
        const std::unique_ptr<McapIndex> index = m_files.indexOf(bytes);
        QCOMPARE(linesOf(bytes, index.get(), McapStreamDecoder::Recording), found);
        QCOMPARE(linesOf(bytes, nullptr, McapStreamDecoder::Recording),
                 text("messages are not in the order of their times: 2 messages of /a had to wait until it "
                      "was announced, ") +
                     found);
        const QString missing = text("not decodable: messages of channel 1, which was not announced in what "
                                     "could be read, channel 1 (not announced, not decodable) channel 1 %1, "
                                     "channel 1 (not announced, not decodable) channel 1 %2");
        QCOMPARE(linesOf(rest + messageRecord(1, 20) + ended({}), nullptr, McapStreamDecoder::Recording),
                 missing.arg(20).arg(30));
        // Of a live stream nobody knows whether it has an end.
        QCOMPARE(linesOf(bytes, nullptr, McapStreamDecoder::Live), missing.arg(20).arg(30));

        // A channel that came, of a schema that was lost.
        const QByteArray half = rest.left(rest.size() - int(chunkOf(1, 30, {}, true).size())) +
                                chunkOf(1, 30, channelRecord(1, 1, "/a"), true) + ended(definitions);
        const std::unique_ptr<McapIndex> other = m_files.indexOf(half);
        QCOMPARE(linesOf(half, other.get(), McapStreamDecoder::Recording), found.section(text(", "), 1));
    }

    void messagesOutsideOfChunksComeInOrder()
    {
        const TextRow rows[] = {{"5 10 20 30 40", "5 10 20 30 40"},
                                {"20 10 5 60 30 50 40", "5 10 20 30 40 50 60"},
                                // Where nothing can be sought in, a second or what lies between two chunks is in order.
                                {"2000 10 4000 3000 6000 20 5000", "10 2000 3000 4000 20 5000 6000"},
                                {"30 20 (10) 5 60 (40)", "10 20 30 5 40 60"}}; // beside chunks
        checkRows(rows, [this](const QString& parts) { return timesOf(parts); });
    }

    void lookingThroughTellsHowFarItIsAndCanBeCancelled()
    {
        QByteArray bytes = header() + schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        for (int i = 0; i < 1000; ++i)
            bytes += messageRecord(1, i);
        const InputAddress address = InputAddress::ofFile(m_files.write(bytes));
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
    static QByteArray header() { return QByteArray("\x89MCAP0\r\n") + record(1, sized({}) + sized({})); }

    /** What stands behind the data. */
    static QByteArray ended(const QByteArray& summary, quint64 start = 0)
    {
        return record(0x0f, QByteArray(4, '\0')) + summary + record(2, little(start) + QByteArray(12, '\0')) +
               QByteArray("\x89MCAP0\r\n");
    }

    /** What comes: "demo.Point /topic 5", the time in milliseconds; problems as they are. */
    static QString decode(const QByteArray& bytes, const McapIndex* index = nullptr, quint64 from = 0,
                          McapStreamDecoder::Mode mode = McapStreamDecoder::Live)
    {
        return Decoded(bytes, index, from, 1 << 20, mode)
            .lines.join(text(", "))
            .replace(QRegularExpression(text("@(\\d+)000\\b")), text("\\1"));
    }

    /** The times of messages, in brackets those of chunks, as they come without an index, when with one all are sorted.
     */
    QString timesOf(const QString& parts)
    {
        QByteArray data = header() + schemaRecord(1, "demo") + channelRecord(1, 1, "/a");
        QByteArray indexes;
        QVector<int> sorted;
        for (const QString& part : parts.split(QLatin1Char(' '))) {
            const bool isChunk = part.startsWith(QLatin1Char('('));
            sorted.append(isChunk ? part.mid(1).chopped(1).toInt() : part.toInt());
            const QByteArray bytes = isChunk ? chunkOf(1, sorted.last(), {}, true) : messageRecord(1, sorted.last());
            const QByteArray time = little(quint64(sorted.last()) * Millisecond);
            if (isChunk)
                indexes += record(8, time + time + little(quint64(data.size())) + little(quint64(bytes.size() - 31)) +
                                         sized(QByteArray(10, '\1')) + little(quint64(31)));
            data += bytes;
        }
        std::sort(sorted.begin(), sorted.end());
        // The summary has as many chunks as there are, and more messages than these.
        const QByteArray statistics =
            record(11, little(quint64(sorted.size())) + QByteArray(10, '\0') +
                           little(quint32(indexes.count(QByteArray(10, '\1')))) + QByteArray(24, '\0'));
        data += ended(indexes + statistics, quint64(data.size()) + 13);
        const auto times = [&data](const McapIndex* index) {
            QStringList all;
            for (const QString& line : Decoded(data, index).messages)
                all.append(line.section(QLatin1Char('@'), -1).chopped(3));
            return all.join(QLatin1Char(' '));
        };
        QStringList expected;
        for (const int time : std::as_const(sorted))
            expected.append(QString::number(time));
        const std::unique_ptr<McapIndex> index = m_files.indexOf(data);
        return !index->hasSummary() && times(index.get()) == expected.join(QLatin1Char(' ')) ? times(nullptr)
                                                                                             : times(index.get());
    }

    McapFiles m_files;
};

QTEST_GUILESS_MAIN(TestMcapIndex)
#include "tst_mcapindex.moc"

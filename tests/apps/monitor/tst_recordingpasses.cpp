#include "definitions.h"
#include "fieldpass.h"
#include "formatregistry.h"
#include "mavlinkframes.h"
#include "mcapfixtures.h"
#include "message.h"
#include "messageinfo.h"
#include "messagepass.h"
#include "recordingindex.h"
#include "testbase.h"
#include "testfolder.h"
#include "waitfor.h"

#include <QReadWriteLock>

#include <cstring>

/** What passes read of a part of a recording, or in parts: the same as when all of it is read in one go. */
class tst_recordingpasses : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void twoThreadsReadWhatOneReads_data() { addRecordings(); }
    void twoThreadsReadWhatOneReads();
    void theLastMessagesBeforeAPlaceAreRead_data() { addRecordings(); }
    void theLastMessagesBeforeAPlaceAreRead();
    void aPassEndsWhereverItIs();

private:
    void addRecordings() const;
    SourceParts open(const QString& path)
    {
        SourceOptions options;
        options.address = path;
        SourceParts parts;
        QString error;
        if (!m_factory.create(options, &parts, &error))
            qWarning("%s", qPrintable(error));
        return parts;
    }

    SourceFactory m_factory;
    const TestFolder m_folder;
    QStringList m_recordings;
};

namespace
{

/** All messages of a recording, in one go, and how far that was after each. */
struct WholeRecording : StreamSink
{
    explicit WholeRecording(SourceParts parts)
        : input(std::move(parts.input), std::move(parts.opener))
    {
        OpenedStream stream;
        if (!input.open(&stream) || !stream.index->prepare(RecordingIndex::GoOn()))
            return;
        decoder = stream.decoder.get();
        input.decode(stream, 0, PassInput::Everything, this, nullptr, [](qint64) { return true; });
        index = std::move(stream.index);
    }

    void processReceived(const ReceivedMessage& message) override
    {
        if (!message.info)
            return;
        tap.processReceived(message);
        types.insert(message.info);
        places.append(tap.getPlace());
        texts.append(textOf(message.info, decoder->getSenderName(message.sender), message.time,
                            QByteArray(message.data, message.size)));
    }
    void processProblem(const StreamProblem&) override {}

    static QString textOf(const MessageInfo* info, const QString& sender, qint64 time, const QByteArray& data)
    {
        return QString("%1 %2 %3 %4").arg(info->getName(), sender).arg(time).arg(qHash(data));
    }

    /** Before how many messages what was sought begins. */
    int findSought(qint64 time) const
    {
        const quint64 offset = index->findOffset(time);
        for (int i = 0; i < texts.size(); ++i)
            if (places.at(i).offset >= offset && places.at(i).time >= time)
                return i;
        return int(texts.size());
    }

    PassInput input;
    const StreamDecoder* decoder = nullptr;
    SessionTap tap{nullptr, nullptr};
    QSet<const MessageInfo*> types;
    QVector<StreamPlace> places;
    QStringList texts;
    std::unique_ptr<RecordingIndex> index;
};

/** "0 1:1: 8000 values", and all of them, of each field and sender in their order. */
QStringList seriesOf(FieldPass* pass)
{
    QStringList names;
    QHash<QString, QByteArray> series;
    FieldPass::Piece piece;
    pass->start();
    bool isThere = false;
    while (waitFor([&]() { return (isThere = pass->take(&piece)) || pass->isOver(); }) && isThere) {
        const QString name = QString("%1 %2").arg(piece.path).arg(piece.sender);
        if (!series.contains(name))
            names.append(name);
        series[name].append(reinterpret_cast<const char*>(piece.values.data()),
                            int(piece.values.size() * sizeof(FieldPass::Value)));
        piece.values.clear();
    }
    for (QString& name : names)
        name += ": " + QString::fromLatin1(series.value(name).toHex());
    return names;
}

} // namespace

void tst_recordingpasses::initTestCase()
{
    const MavlinkScript script;
    QByteArray log;
    for (int i = 0; i < 9000; ++i) {
        // Clocks that were set, and several messages of one time.
        const int time = 3000000 + i / 3 * 1000 - (i > 4000 ? 2500000 : 0) - (i % 11 == 0 ? 40000 : 0);
        log += script.bytes(QString("%1:%2%3").arg(time).arg("AAHBA"[i % 5]).arg(1 + i % 250));
        if (i % 97 == 0)
            log += script.bytes("noise 7:A3~20 5:A4<9 7:U3");
    }
    m_recordings.append(m_folder.write("log.tlog", log));
    const auto write = [this](const char* name, McapWriter::Compression compression, int chunkSize, int disorder) {
        McapFixtures::Recording recording(McapFixtures::settings(compression, chunkSize));
        const quint16 here = recording.addPoints("/here");
        const quint16 there = recording.addPoints("/there");
        for (int i = 0; i < 5000; ++i) {
            // Chunks overlap for a while, and several messages have one time.
            const int time = 100 + i / 4 + (i / 500 % 2 ? i % 7 * disorder : 0);
            recording.writer.writeMessage(i > 40 && i % 3 ? here : there, quint32(i), quint64(time) * 1000000,
                                          McapFixtures::point(i));
        }
        m_recordings.append(m_folder.write(name, recording.finished()));
    };
    write("plain.mcap", McapWriter::NoCompression, 1000, 0);
    write("zstd.mcap", McapWriter::Zstd, 2000, 3);
    write("lz4.mcap", McapWriter::Lz4, 3000, 40);
    // One that nobody finished has no summary.
    QFile file(m_folder.filePath("zstd.mcap"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    m_recordings.append(m_folder.write("cut.mcap", file.read(file.size() * 3 / 4)));
    for (const FormatInfo* const format : m_factory.getDefinitions()->getSchemaFormats())
        FormatRegistry::getInstance()->addFormat(format);
}

void tst_recordingpasses::addRecordings() const
{
    QTest::addColumn<QString>("path");
    for (const QString& path : m_recordings)
        QTest::newRow(path.section('/', -1).toLatin1().constData()) << path;
}

void tst_recordingpasses::twoThreadsReadWhatOneReads()
{
    QFETCH(QString, path);
    QStringList problems;
    const WholeRecording whole(open(path)); // for its types
    m_factory.getDefinitions()->publish(&problems);
    QVector<FieldPath> paths;
    for (const MessageInfo* const info : whole.types)
        for (const char* const name : {"roll", "custom_mode", "n", "x"}) {
            FieldPath field(info);
            if (field.append(name))
                paths.append(field);
        }
    QVERIFY(paths.size() >= 2);
    FieldPass one(open(path), SourceParts(), paths, m_factory.getDescriptionLock());
    const QStringList expected = seriesOf(&one);
    QVERIFY(expected.size() >= 2 && expected.join(' ').size() > 50000);
    for (int i = 0; i < 5; ++i) { // whichever comes first
        FieldPass again(open(path), open(path), paths, m_factory.getDescriptionLock(), 5000);
        QVERIFY(seriesOf(&again) == expected);
        QVERIFY(again.getSectionCount() > 1);
    }
    QCOMPARE(one.getSectionCount(), 1);
    QCOMPARE(one.getErrorString(), QString());
    QCOMPARE(one.getPercent(), 100);
}

void tst_recordingpasses::theLastMessagesBeforeAPlaceAreRead()
{
    QFETCH(QString, path);
    const WholeRecording whole(open(path));
    const int count = int(whole.texts.size());
    QVERIFY(count > 3000);
    const auto read = [&](const StreamPlace& place, int most, const QString& sender) {
        MessagePass::Wish wish{
            [&](const MessageInfo*, const QString& from) { return sender.isEmpty() || from == sender; },
            whole.types,
            place,
            most,
            1 << 20,
            3000};
        MessagePass pass(open(path), open(path), wish);
        pass.start();
        QStringList texts;
        std::vector<EarlierMessage> messages;
        while (waitFor([&]() { return pass.take(&messages) || pass.isOver(); }) && !messages.empty()) {
            QStringList before;
            for (const EarlierMessage& message : messages)
                before.append(WholeRecording::textOf(message.info, message.sender, message.time, message.data));
            texts = before + texts;
            messages.clear();
        }
        return pass.isGood() ? texts.join(", ") : "cannot be read " + pass.getErrorString();
    };
    const QString sender = whole.texts.at(0).section(' ', 1, 1);
    const QStringList ofSender = whole.texts.filter(' ' + sender + ' ');
    for (int i = 1; i < 40; ++i) {
        const int end = i * 7919 % count; // in no order
        QCOMPARE(read(whole.places.at(end), 700, QString()),
                 whole.texts.mid(qMax(0, end - 699), qMin(end + 1, 700)).join(", "));
        StreamPlace sought;
        sought.isKnown = sought.isSought = true;
        sought.time = whole.places.at(end).time + i % 2;
        const int before = whole.findSought(sought.time);
        QCOMPARE(read(sought, 90, QString()), whole.texts.mid(qMax(0, before - 90), qMin(before, 90)).join(", "));
    }
    QCOMPARE(read(whole.places.last(), 100000, QString()), whole.texts.join(", "));
    QCOMPARE(read(whole.places.last(), 300, sender),
             QStringList(ofSender.mid(qMax(0, int(ofSender.size()) - 300))).join(", "));
    StreamPlace elsewhere = whole.places.at(5);
    elsewhere.timeRest = 77;
    QCOMPARE(read(elsewhere, 300, QString()), QString("cannot be read "));
}

void tst_recordingpasses::aPassEndsWhereverItIs()
{
    const WholeRecording whole(open(m_recordings.at(0)));
    for (int i = 0; i < 20; ++i) {
        MessagePass pass(open(m_recordings.at(0)), open(m_recordings.at(0)),
                         {[](const MessageInfo*, const QString&) { return true; }, whole.types, whole.places.last(),
                          100000, 1 << 30, 3000});
        pass.start();
        QVERIFY(waitFor([&]() { return pass.getPercent() >= i * 5 || pass.isOver(); }));
    }
}

QTEST_MAIN(tst_recordingpasses)
#include "tst_recordingpasses.moc"

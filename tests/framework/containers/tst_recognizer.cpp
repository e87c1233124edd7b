#include "../reading/streamfixtures.h"
#include "byteinput.h"
#include "container.h"
#include "definitions.h"
#include "inputkind.h"
#include "mcapfixtures.h"
#include "streamopener.h"
#include "streamrecorder.h"
#include "streamsource.h"
#include "testbase.h"
#include "textrows.h"
#include "waitfor.h"

std::atomic<int> ScriptedInput::alive{0};

/** What streams are, and what becomes of those that nobody recognises, whether they come from files or not. */
class tst_Recognizer : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void streamsAreRecognised();
    void sourcesFindOutWhatComes();

private:
    /** The bytes that "mcap", "tlog", "raw", "noise" and so on stand for. */
    QByteArray bytesOf(const QString& name) const;
    QString recognize(const QString& given);
    QString receive(const QString& given);

    std::unique_ptr<MavlinkDialect> m_dialect{MavlinkDialect::loadBuiltIn()};
    Definitions m_definitions;
};

QByteArray tst_Recognizer::bytesOf(const QString& name) const
{
    const MavlinkMessageInfo* const heartbeat = m_dialect->find(0);
    const auto frame = [&](int number) { return plainFrame(heartbeat, frameHeader(2, number)); };
    QByteArray bytes;
    if (name == QLatin1String("mcap"))
        return McapFixtures::Recording(McapFixtures::settings(McapWriter::Zstd, 700)).finished();
    if (name == QLatin1String("noise"))
        return QByteArray("stray bytes, twenty.");
    if (name == QLatin1String("muchnoise"))
        return QByteArray(65536, 'x');
    if (name == QLatin1String("varint") || name == QLatin1String("u32"))
        for (const QByteArray& point : {McapFixtures::point(1), McapFixtures::point(2)})
            bytes += (name == QLatin1String("u32") ? McapFixtures::little(quint32(point.size()))
                                                   : QByteArray(1, char(point.size()))) +
                     point;
    else if (name.startsWith(QLatin1String("frame")))
        bytes = frame(name.mid(5).toInt());
    else if (name == QLatin1String("cut"))
        bytes = frame(1).left(9);
    else if (name == QLatin1String("tlog"))
        for (int i = 0; i < 5; ++i)
            bytes += timed(Q_UINT64_C(1700000000000000) + quint64(i), frame(i));
    return bytes;
}

/** "NAME+NAME OPTION...": what the stream is, after how many bytes when these come one by one. */
QString tst_Recognizer::recognize(const QString& given)
{
    StreamOptions options;
    options.definitions = &m_definitions;
    StreamHead head;
    const QStringList words = given.split(QLatin1Char(' '));
    for (const QString& option : words.mid(1)) {
        if (option == QLatin1String("live"))
            head.isLive = true;
        else if (option == QLatin1String("typed"))
            options.typeName = QStringLiteral("demo.Point");
        else
            options.container = option;
    }
    QByteArray bytes;
    for (const QString& name : words.first().split(QLatin1Char('+')))
        bytes += bytesOf(name);
    StreamHead whole = head;
    whole.bytes = bytes;
    whole.isAll = true;
    const Recognition atOnce = Recognition::recognize(whole, options);
    Recognition found{Container::More, nullptr};
    for (int size = 0; found.answer == Container::More && size <= bytes.size(); ++size) {
        head.bytes = bytes.left(size);
        found = Recognition::recognize(head, options);
    }
    if (found.answer == Container::More) {
        head.isAll = true;
        found = Recognition::recognize(head, options);
    }
    if (found.container != atOnce.container)
        return QStringLiteral("%1, but %2 at once")
            .arg(QLatin1String(found.container ? found.container->name : "none"),
                 QLatin1String(atOnce.container ? atOnce.container->name : "none"));
    return found.container ? QStringLiteral("%1 %2").arg(QLatin1String(found.container->name)).arg(head.bytes.size())
                           : QStringLiteral("none");
}

void tst_Recognizer::streamsAreRecognised()
{
    static const TextRow rows[] = {
        {"mcap", "mcap 8"},
        {"mcap typed", "mcap 8"},
        {"mcap raw", "raw 0"},
        {"frame1+frame2", "raw 21"},
        {"frame1+frame2 live", "raw 21"},
        {"noise+frame1+frame2+frame3+frame4", "raw 41"}, // proven by its checksum
        {"cut+frame1+frame2", "raw 21"},
        {"tlog", "tlog 29"},
        {"noise+tlog", "tlog 78"},
        {"tlog mcap", "none"},
        {"varint typed", "delimited 14"},
        {"u32 typed", "delimited 17"},
        {"u32 delimited", "delimited 17"},
        {"varint typed live", "delimited 0"},
        {"varint", "none"},
        {"noise", "none"},
        {"noise delimited", "none"},
        {"nothing", "none"},
    };
    QCOMPARE(differences(rows, [this](const QString& given) { return recognize(given); }), QString());
}

/** "ADDRESS NAME+NAME, NAME": states and messages of a source that brings these pieces and then nothing, or its end. */
QString tst_Recognizer::receive(const QString& given)
{
    const QString kind = given.section(QLatin1Char(' '), 0, 0);
    const bool ends = kind.endsWith(QLatin1Char('.'));
    InputAddress address;
    QString error;
    InputAddress::parse(kind.section(QLatin1Char('.'), 0, 0), &address, &error);
    QList<QByteArray> pieces;
    for (const QString& piece : given.section(QLatin1Char(' '), 1).split(QLatin1String(", "))) {
        QByteArray bytes;
        for (const QString& name : piece.split(QLatin1Char('+')))
            bytes += bytesOf(name);
        if (!bytes.isEmpty())
            pieces.append(bytes);
    }
    StreamOptions options;
    options.definitions = &m_definitions;
    int flags = ScriptedInput::Live; // as a pipe is, too
    if (address.kind->isDatagram())
        flags |= ScriptedInput::Datagrams;
    StreamSource source(new ScriptedInput(pieces, ends ? ByteInput::End : ByteInput::Nothing, flags),
                        new StreamOpener(address, options));
    StreamRecorder found(source.getDecoder());
    QStringList states;
    source.addObserver(&found);
    connect(&source, &StreamSource::stateChanged, this, [&](int state) {
        static const char* const names[] = {"idle", "opening", "running", "finished", "failed"};
        states.append(QLatin1String(names[state]));
    });
    bool isRecognized = false;
    connect(&source, &StreamSource::recognized, this, [&]() { isRecognized = true; });
    source.start();
    const bool waits = !ends && !pieces.isEmpty();
    waitFor([&]() {
        return ends ? source.getState() >= StreamSource::Finished
                    : source.getState() == StreamSource::Running && (!waits || !found.lines.isEmpty());
    });
    QStringList lines = states;
    if (isRecognized)
        lines.append(QLatin1String(source.getDecoder()->getContainer()->name));
    for (const QString& line : std::as_const(found.lines))
        lines.append(line.section(QLatin1String(" @"), 0, 0));
    if (!source.getErrorString().isEmpty())
        lines.append(source.getErrorString());
    return lines.join(QLatin1Char('|')).replace(QLatin1String("MCAP recordings (mcap), "), QLatin1String("..."));
}

void tst_Recognizer::sourcesFindOutWhatComes()
{
    static const TextRow rows[] = {
        // A first frame is there at once, and nobody waits for what does not come.
        {"udp: frame1", "opening|running|raw|0 HEARTBEAT 1:1 #1"},
        {"udp: noise, frame1", "opening|running|raw|0+20 20 bytes skipped|20 HEARTBEAT 1:1 #1"},
        {"tcp:x noise+frame1", "opening|running|raw|0+20 20 bytes skipped|20 HEARTBEAT 1:1 #1"},
        {"udp: nothing", "opening|running"},
        {"tcp:x. nothing", "opening|running|finished"},
        {"-. frame1, frame2", "opening|running|finished|raw|0 HEARTBEAT 1:1 #1|21 HEARTBEAT 1:1 #2"},
    };
    QCOMPARE(differences(rows, [this](const QString& given) { return receive(given); }), QString());

    const QString lost = receive(QStringLiteral("-. noise"));
    QVERIFY2(
        lost.startsWith(QStringLiteral("opening|running|failed|script: not recognised: it begins with 73 74 72 61 79 "
                                       "20 62 79 74 65 73 2C 20 74 77 65; what can be read: ...")),
        qPrintable(lost));
    QVERIFY2(receive(QStringLiteral("-. nothing")).endsWith(QStringLiteral("|failed|script: the input is empty")),
             qPrintable(receive(QStringLiteral("-. nothing"))));
    // What comes as it happens is passed over with a word, and the search goes on.
    const QString live = receive(QStringLiteral("udp:. muchnoise, frame1, frame2"));
    QVERIFY2(live.startsWith(QStringLiteral("opening|running|finished|raw|0+0 not recognised: it "
                                            "begins with 78")) &&
                 live.endsWith(QStringLiteral("|65536 HEARTBEAT 1:1 #1|65557 HEARTBEAT 1:1 #2")),
             qPrintable(live));
}

QTEST_GUILESS_MAIN(tst_Recognizer)
#include "tst_recognizer.moc"

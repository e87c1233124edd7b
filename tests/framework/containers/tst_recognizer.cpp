#include "../reading/streamfixtures.h"
#include "byteinput.h"
#include "container.h"
#include "definitions.h"
#include "inputkind.h"
#include "mavlinkframes.h"
#include "mcapfixtures.h"
#include "streamopener.h"
#include "streamsource.h"
#include "testbase.h"
#include "textrows.h"
#include "transcript.h"
#include "waitfor.h"

#include <QRegularExpression>

/** What streams are, and what becomes of those that nobody recognises, whether they come from files or not. */
class tst_Recognizer : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void streamsAreRecognised();
    void sourcesFindOutWhatComes();

private:
    QString recognize(const QString& given);
    QString receive(const QString& given);

    MavlinkScript m_script;
    Definitions m_definitions;
};

void tst_Recognizer::initTestCase()
{
    using namespace McapFixtures;
    m_script.define("mcap", Recording(settings(McapWriter::Zstd, 700)).finished());
    m_script.define("envelopes", "\x89"
                                 "CVE\x20");
    m_script.define("noise", "stray bytes, twenty.");
    m_script.define("muchnoise", QByteArray(65536, 'x'));
    m_script.define("nothing", "");
    m_script.define("tlog", m_script.bytes(text("0:H1 1:H2 2:H3 3:H4 4:H5")));
    const QByteArray points[] = {point(1), point(2)};
    m_script.define("varint", char(points[0].size()) + points[0] + char(points[1].size()) + points[1]);
    const QByteArray size = little(quint32(points[0].size()));
    m_script.define("u32", size + points[0] + size + points[1]);
}

/** "WORD WORD, OPTION...": what the stream is, after how many bytes when these come one by one. */
QString tst_Recognizer::recognize(const QString& given)
{
    StreamOptions options;
    options.definitions = &m_definitions;
    StreamHead head;
    for (const QString& option : given.section(text(", "), 1).split(QLatin1Char(' '))) {
        if (option == QLatin1String("live"))
            head.isLive = true;
        else if (option == QLatin1String("typed"))
            options.typeName = QStringLiteral("demo.Point");
        else
            options.container = option;
    }
    const QByteArray bytes = m_script.bytes(given.section(text(", "), 0, 0));
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
    const auto nameOf = [](const Recognition& of) { return text(of.container ? of.container->name : "none"); };
    if (found.container != atOnce.container)
        return nameOf(found) + text(", but at once ") + nameOf(atOnce);
    return found.container ? text("%1 %2").arg(nameOf(found)).arg(head.bytes.size()) : nameOf(found);
}

void tst_Recognizer::streamsAreRecognised()
{
    static const TextRow rows[] = {
        {"mcap", "mcap 8"},
        {"mcap, typed", "mcap 8"},
        {"mcap, raw", "raw 0"},
        {"H1 H2", "raw 21"},
        {"H1 H2, live", "raw 21"},
        {"envelopes", "envelopes 4"},
        {"noise H1 H2 H3 H4", "raw 41"}, // proven by its checksum
        {"H1<9 H1 H2", "raw 21"},
        {"tlog", "tlog 29"},
        {"noise tlog", "tlog 78"},
        {"tlog, mcap", "none"},
        {"varint, typed", "delimited 14"},
        {"u32, typed", "delimited 17"},
        {"u32, delimited", "delimited 17"},
        {"varint, typed live", "delimited 0"},
        {"varint", "none"},
        {"noise", "none"},
        {"noise, delimited", "none"},
        {"nothing", "none"},
    };
    checkRows(rows, [this](const QString& given) { return recognize(given); });
}

/** "ADDRESS WORD WORD, WORD": states and messages of a source that brings these pieces and then nothing, or its end. */
QString tst_Recognizer::receive(const QString& given)
{
    const QString kind = given.section(QLatin1Char(' '), 0, 0);
    const bool ends = kind.endsWith(QLatin1Char('.'));
    InputAddress address;
    QString error;
    InputAddress::parse(kind.section(QLatin1Char('.'), 0, 0), &address, &error);
    QList<QByteArray> pieces;
    for (const QString& piece : given.section(QLatin1Char(' '), 1).split(QLatin1String(", ")))
        if (piece != text("nothing"))
            pieces.append(m_script.bytes(piece));
    StreamOptions options;
    options.definitions = &m_definitions;
    int flags = ScriptedInput::Live; // as a pipe is, too
    if (address.kind->isDatagram())
        flags |= ScriptedInput::Datagrams;
    StreamSource source(new ScriptedInput(pieces, ends ? ByteInput::End : ByteInput::Nothing, flags),
                        new StreamOpener(address, options));
    Transcript found(source.getDecoder());
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
    return lines.join(QLatin1Char('|')).remove(QRegularExpression(text("; what can be read: MCAP[^|]*")));
}

void tst_Recognizer::sourcesFindOutWhatComes()
{
    static const TextRow rows[] = {
        // A first frame is there at once, and nobody waits for what does not come.
        {"udp: H1", "opening|running|raw|0 HEARTBEAT 1:1 #1"},
        {"udp: noise, H1", "opening|running|raw|0+20 20 bytes skipped|20 HEARTBEAT 1:1 #1"},
        {"tcp:x noise H1", "opening|running|raw|0+20 20 bytes skipped|20 HEARTBEAT 1:1 #1"},
        {"udp: nothing", "opening|running"},
        {"tcp:x. nothing", "opening|running|finished"},
        {"-. H1, H2", "opening|running|finished|raw|0 HEARTBEAT 1:1 #1|21 HEARTBEAT 1:1 #2"},
        {"-. nothing", "opening|running|failed|script: the input is empty"},
        {"-. noise",
         "opening|running|failed|script: not recognised: it begins with 73 74 72 61 79 20 62 79 74 65 73 2C "
         "20 74 77 65"},
        // What comes as it happens is passed over with a word, and the search goes on.
        {"udp:. muchnoise, H1, H2",
         "opening|running|finished|raw|0+0 not recognised: it begins with 78 78 78 78 78 78 78 78 78 78 78 78 78 78 78 "
         "78|0+65536 65536 bytes skipped|65536 HEARTBEAT 1:1 #1|65557 HEARTBEAT 1:1 #2"},
    };
    checkRows(rows, [this](const QString& given) { return receive(given); });
}

QTEST_GUILESS_MAIN(tst_Recognizer)
#include "tst_recognizer.moc"

#include "mavlinkstreamdecoder.h"

#include "mavlinkframes.h"
#include "testbase.h"
#include "textrows.h"
#include "transcript.h"

#include <QRandomGenerator>

namespace
{

typedef MavlinkStreamDecoder::Layout Layout;
const Layout Raw = MavlinkStreamDecoder::RawLayout;
const Layout Tlog = MavlinkStreamDecoder::TlogLayout;

QByteArray randomBytes(int size, quint32 seed)
{
    QRandomGenerator generator(seed);
    QByteArray bytes(size, '\0');
    for (char& byte : bytes)
        byte = char(generator.generate());
    return bytes;
}

} // namespace

class TestMavlinkStreamDecoder : public TestBase
{
    Q_OBJECT

private:
    QByteArray bytes(const char* script) const { return m_script.bytes(text(script)); }
    QByteArray withPayload(quint32 id, int sequence, int version, const QByteArray& payload) const
    {
        return MavlinkEncoder::toFrame(frameHeader(version, sequence), id, m_script.info(id)->getCrcExtra(), payload);
    }

    QStringList decodePieces(const QByteArray& bytes, Layout layout, int piece) const
    {
        MavlinkStreamDecoder decoder(m_script.dialect.get(), layout);
        Transcript found(&decoder);
        feedAll(&decoder, bytes, &found, piece);
        const QString uncovered = found.uncovered(quint64(bytes.size()));
        for (int i = 0; i < found.messages.size(); ++i)
            if (!bytes.mid(found.messages.at(i).section(QLatin1Char(' '), 0, 0).toInt())
                     .startsWith(found.payloads.at(i)))
                found.lines.append(text("other bytes than came"));
        return uncovered.isEmpty() ? found.lines : found.lines << uncovered;
    }

    /** What is reported of the bytes, "; " between the lines; the same however they are cut into pieces. */
    QString decode(const QByteArray& bytes, Layout layout = Raw) const
    {
        const QString whole = decodePieces(bytes, layout, qMax(1, int(bytes.size()))).join(text("; "));
        for (const int piece : {1, 7, 300, 4096}) {
            const QString same = decodePieces(bytes, layout, piece).join(text("; "));
            if (same != whole)
                return QStringLiteral("in pieces of %1: %2, whole: %3").arg(piece).arg(same, whole);
        }
        return whole;
    }

    /** "raw", "tlog" or "none" */
    static QString layoutOf(const QByteArray& head)
    {
        Layout found = Raw;
        Layout other = Tlog;
        const bool detected = MavlinkStreamDecoder::detectLayout(head, &found);
        if (MavlinkStreamDecoder::detectLayout(head, &other) != detected || (found == other) != detected)
            return text("that depends");
        return text(!detected ? "none" : found == Raw ? "raw" : "tlog");
    }

    MavlinkScript m_script;

private Q_SLOTS:
    void initTestCase()
    {
        MavlinkEncoder::FrameHeader other = frameHeader(2, 255, 1);
        other.system = 255;
        other.component = 190;
        m_script.define("signed", plainFrame(m_script.info(0), other));
        // Version 2 alone has payloads of other lengths.
        m_script.define("short", withPayload(30, 1, 2, "ab"));
        m_script.define("long", withPayload(30, 2, 2, QByteArray(255, 'x')));
        m_script.define("short1", withPayload(30, 3, 1, QByteArray(27, 'x')));
        m_script.define("carrier", withPayload(253, 1, 2, "x" + bytes("H2") + "y"));
        QByteArray special = bytes("A2~20");
        for (int i = 12; i < 36; i += 3)
            special[i] = char(0xfe);
        m_script.define("magic", special); // not failures of their own
        special = bytes("H1");
        special[1] = char(special.at(1) + 4);
        m_script.define("longer", special); // than it is
        m_script.define("sealed", plainFrame(m_script.info(0), frameHeader(2, 1, 1)));
        m_script.define("strange", plainFrame(m_script.info(0), frameHeader(2, 2, 2)));
        m_script.define("FE", "\xfe");
        m_script.define("FDs", QByteArray(5, char(0xfd)));
        m_script.define("claim", "xx\xfe\xff\x01\x01\x01\x99");
        m_script.define("header", QByteArray("\xfe\x40\x01\x01\x01\x1e", 6));
        m_script.define("never", timed(~quint64(0), bytes("H6")));
        m_script.define("early", timed(47, bytes("H5")));
    }

    void framesAreFoundAndTheRestIsReported()
    {
        const TextRow rows[] = {
            {"", ""},
            {"h3 signed A4", "0 HEARTBEAT 1:1 #3; 17 HEARTBEAT 255:190 #255; 51 ATTITUDE 1:1 #4"},
            {"short long short1 H9",
             "0 ATTITUDE 1:1 #1; 14 ATTITUDE 1:1 #2; 281+35 length does not fit the message type, id "
             "30, sender 1:1: 27 bytes of payload instead of 28; 316 HEARTBEAT 1:1 #9"},
            {"H1 A2~20", "0 HEARTBEAT 1:1 #1; 21+40 checksum failure, id 30, sender 1:1"},
            {"H1 A2~20 A2~20 H3",
             "0 HEARTBEAT 1:1 #1; 21+40 checksum failure, id 30, sender 1:1; 61+40 checksum failure, "
             "id 30, sender 1:1; 101 HEARTBEAT 1:1 #3"},
            {"H1 magic H3", "0 HEARTBEAT 1:1 #1; 21+40 checksum failure, id 30, sender 1:1; 61 HEARTBEAT 1:1 #3"},
            // Noise, and a header that claims more than there is.
            {"Booting...ready\r\n H1 A2", "0+17 17 bytes skipped; 17 HEARTBEAT 1:1 #1; 38 ATTITUDE 1:1 #2"},
            {"FE H1 A2", "0+1 1 byte skipped; 1 HEARTBEAT 1:1 #1; 22 ATTITUDE 1:1 #2"},
            {"FDs H1 A2", "0+5 5 bytes skipped; 5 HEARTBEAT 1:1 #1; 26 ATTITUDE 1:1 #2"},
            {"claim H1 A2", "0+8 8 bytes skipped; 8 HEARTBEAT 1:1 #1; 29 ATTITUDE 1:1 #2"},
            {"A1>15 H1 A2", "0+25 25 bytes skipped; 25 HEARTBEAT 1:1 #1; 46 ATTITUDE 1:1 #2"},
            // A whole header of a known type where one is expected is a frame that was cut.
            {"header H1", "0+6 checksum failure, id 30, sender 1:1; 6 HEARTBEAT 1:1 #1"},
            // The sender was interrupted after 15 bytes; the frame that follows lies within what the first one claims.
            {"A1<15 H2 A3", "0+15 checksum failure, id 30, sender 1:1; 15 HEARTBEAT 1:1 #2; 36 ATTITUDE 1:1 #3"},
            // Of a header that is not even whole nothing can be told.
            {"A1<8 H2", "0+8 8 bytes skipped; 8 HEARTBEAT 1:1 #2"},
            // A frame inside a good one is none, nor when a bad frame stands before it and claims its beginning.
            {"carrier H3", "0 STATUSTEXT 1:1 #1; 35 HEARTBEAT 1:1 #3"},
            {"longer carrier H3", "0+21 checksum failure, id 0, sender 1:1; 21 STATUSTEXT 1:1 #1; 56 HEARTBEAT 1:1 #3"},
            // A good frame inside what the end cuts off comes first.
            {"A2<12 H3", "0+12 checksum failure, id 30, sender 1:1; 12 HEARTBEAT 1:1 #3"},
            // What the checksum covers may be another matter with an unknown flag.
            {"H1 strange H3", "0 HEARTBEAT 1:1 #1; 21+21 frame with an unsupported feature, id 0, sender 1:1: "
                              "incompatibility flags 0x02; 42 HEARTBEAT 1:1 #3"},
            {"H1 strange~20 H3", "0 HEARTBEAT 1:1 #1; 21+21 frame with an unsupported feature, id 0, sender 1:1: "
                                 "incompatibility flags 0x02; 42 HEARTBEAT 1:1 #3"},
            // A signature that breaks off costs only itself.
            {"sealed<21 A2", "0 HEARTBEAT 1:1 #1; 21+0 0 bytes skipped: a signature breaks off; 21 ATTITUDE 1:1 #2"},
            {"sealed<22", "0 HEARTBEAT 1:1 #1; 21+1 1 byte skipped: a signature breaks off"},
            {"sealed<33 A2", "0 HEARTBEAT 1:1 #1; 21+12 12 bytes skipped: a signature breaks off; 33 ATTITUDE 1:1 #2"},
            {"sealed A2", "0 HEARTBEAT 1:1 #1; 34 ATTITUDE 1:1 #2"},
            // Unknown types are passed between frames only, where no definition tells the checksum.
            {"H1 U2 U3 H4 U5",
             "0 HEARTBEAT 1:1 #1; 21 id 70000 1:1 #2; 63 id 70000 1:1 #3; 105 HEARTBEAT 1:1 #4; 126 id 70000 1:1 #5"},
            {"H1 U2~20 H3", "0 HEARTBEAT 1:1 #1; 21+42 checksum failure, id 70000, sender 1:1; 63 HEARTBEAT 1:1 #3"},
            {"noise U2~20 H3", "0+47 47 bytes skipped; 47 HEARTBEAT 1:1 #3"},
            {"noise U2 noise H4", "0+52 52 bytes skipped; 52 HEARTBEAT 1:1 #4"},
            // Behind noise a magic byte at its end is not enough: a header that fits its definition is.
            {"noise U2 FE more H4", "0+52 52 bytes skipped; 52 HEARTBEAT 1:1 #4"},
            {"noise U2 H4", "0+5 5 bytes skipped; 5 id 70000 1:1 #2; 47 HEARTBEAT 1:1 #4"},
            {"U2<20 H4 A5", "0+20 20 bytes skipped; 20 HEARTBEAT 1:1 #4; 41 ATTITUDE 1:1 #5"},
        };
        checkRows(rows, [this](const QString& given) { return decode(m_script.bytes(given)); });
    }

    void timesOfATlogAreRead()
    {
        const TextRow rows[] = {
            {"0:h1 6:h3~7 7:U4 early never",
             "8 HEARTBEAT 1:1 #1 @noon; 33+17 checksum failure, id 0, sender 1:1; "
             "58 id 70000 1:1 #4 @noon+7; 108 HEARTBEAT 1:1 #5 @47; 137 HEARTBEAT 1:1 #6"},
            {"0:H1 garbage 1:H2", "8 HEARTBEAT 1:1 #1 @noon; 29+7 7 bytes skipped; 44 HEARTBEAT 1:1 #2 @noon+1"},
            // A time stamp is missing, or is none.
            {"0:H1 A7 1:H2", "8 HEARTBEAT 1:1 #1 @noon; 29 ATTITUDE 1:1 #7; 77 HEARTBEAT 1:1 #2 @noon+1"},
            {"0:H1 garbage,no,time A7 1:H2",
             "8 HEARTBEAT 1:1 #1 @noon; 29+15 15 bytes skipped; 44 ATTITUDE 1:1 #7; 92 HEARTBEAT 1:1 #2 @noon+1"},
            // A frame was cut: the time stamp of the next is not part of it.
            {"0:H1 1:A7<22 1:H2",
             "8 HEARTBEAT 1:1 #1 @noon; 37+22 checksum failure, id 30, sender 1:1; 67 HEARTBEAT 1:1 #2 @noon+1"},
            // So is a signature.
            {"0:sealed<33 1:H2", "8 HEARTBEAT 1:1 #1 @noon; 29+12 12 bytes skipped: a signature breaks off; "
                                 "49 HEARTBEAT 1:1 #2 @noon+1"},
            {"0:sealed 1:H2", "8 HEARTBEAT 1:1 #1 @noon; 50 HEARTBEAT 1:1 #2 @noon+1"},
            {"0:H1 begin", "8 HEARTBEAT 1:1 #1 @noon; 29+5 stream ends inside a frame, after 5 bytes"},
            {"0:H1 1:H2<3", "8 HEARTBEAT 1:1 #1 @noon; 37+3 stream ends inside a frame, after 3 bytes"},
        };
        const auto decoded = [this](const QString& given) {
            return decode(m_script.bytes(given), Tlog)
                .replace(text("@170000000000000"), text("@noon+"))
                .replace(text("noon+0"), text("noon"));
        };
        checkRows(rows, decoded);
    }

    void losesNoNeighbourOfADamagedFrame()
    {
        for (const char* script : {"H1 A2 H3 S4", "h1 a2 h3 s4", "1:H1 1:A2 1:H3 1:S4", "1:h1 1:a2 1:h3 1:s4"}) {
            const Layout layout = QByteArray(script).contains(':') ? Tlog : Raw;
            const QByteArray whole = bytes(script);
            const int begin = int(m_script.bytes(text(script).section(QLatin1Char(' '), 0, 0)).size());
            const int end = int(m_script.bytes(text(script).section(QLatin1Char(' '), 0, 1)).size());
            for (int position = begin; position < end; ++position) {
                // Every value where it changes what the frame claims, some where it changes the payload.
                for (int value = 0; value < 256; value += position < begin + 18 ? 1 : 15) {
                    QByteArray damaged = whole;
                    damaged[position] = char(value);
                    for (const int piece : {3, 1000}) {
                        const QString lines = decodePieces(damaged, layout, piece).join(text("; "));
                        QVERIFY2(lines.contains(text("HEARTBEAT 1:1 #1")) && lines.contains(text("HEARTBEAT 1:1 #3")) &&
                                     lines.contains(text("SYS_STATUS 1:1 #4")) && !lines.contains(text(" behind ")),
                                 qPrintable(text("byte %1 as %2: %3").arg(position).arg(value).arg(lines)));
                    }
                }
            }
        }
    }

    void losesNoNeighbourOfACutFrame()
    {
        for (int from = 0; from < 40; ++from) {
            for (int count = 1; from + count <= 40; ++count) {
                const QString lines = decode(bytes("H1") + bytes("A2").remove(from, count) + bytes("H3 H4"));
                QVERIFY2(lines.startsWith(text("0 HEARTBEAT 1:1 #1")) && lines.contains(text("HEARTBEAT 1:1 #3")) &&
                             lines.endsWith(text("HEARTBEAT 1:1 #4")) && !lines.contains(text("ATTITUDE")),
                         qPrintable(text("%1 bytes from %2: %3").arg(count).arg(from).arg(lines)));
            }
        }
        for (int size = 1; size < 40; ++size)
            QCOMPARE(decode(bytes("H1") + bytes("A2").left(size)),
                     text("0 HEARTBEAT 1:1 #1; 21+%1 stream ends inside a frame, after %1 byte%2%3")
                         .arg(size)
                         .arg(text(size == 1 ? "" : "s"), text(size < 10 ? "" : ", id 30, sender 1:1")));
    }

    void holdsNothingBack()
    {
        MavlinkStreamDecoder waiting(m_script.dialect.get(), Raw);
        Transcript found(&waiting);
        const QByteArray beat = bytes("H1");
        waiting.feed(beat.constData(), 20, 10, &found);
        QCOMPARE(found.told(), QString());
        waiting.feed(beat.constData() + 20, 1, 30, &found);
        QCOMPARE(found.told(), text("0 HEARTBEAT 1:1 #1 @30"));

        // Each claims 200 bytes and more: a type with another length, an unknown type, an unknown feature.
        for (const QByteArray& header :
             {QByteArray("\xfe\xc8\x01\x01\x01\x1e", 6), QByteArray("\xfe\xc8\x01\x01\x01\xf0", 6),
              QByteArray("\xfd\xc8\x00\x00\x01\x01\x01\x77\x77\x77", 10),
              QByteArray("\xfd\xc8\x04\x00\x01\x01\x01\x1e\x00\x00", 10)}) {
            MavlinkStreamDecoder behind(m_script.dialect.get(), Raw);
            Transcript lines(&behind);
            behind.feed((header + beat).constData(), int(header.size()) + 21, Message::NoTime, &lines);
            QCOMPARE(lines.lines.value(1), text("%1 HEARTBEAT 1:1 #1").arg(header.size()));
        }

        const QByteArray noise(20000, 'n'); // reported before it ends
        MavlinkStreamDecoder noisy(m_script.dialect.get(), Raw);
        Transcript skipped(&noisy);
        noisy.feed(noise.constData(), int(noise.size()), Message::NoTime, &skipped);
        QCOMPARE(skipped.told(), text("0+16384 16384 bytes skipped"));
        noisy.finish(&skipped);
        QCOMPARE(skipped.lines.value(1), text("16384+3616 3616 bytes skipped"));
    }

    void goesOnAfterTheEndOfADatagramAndElsewhere()
    {
        MavlinkStreamDecoder datagrams(m_script.dialect.get(), Raw);
        Transcript found(&datagrams);
        for (const char* datagram : {"A1<30", "H2 U3", "", "H4 tail"})
            feedAll(&datagrams, bytes(datagram), &found);
        QCOMPARE(found.told(), text("0+30 stream ends inside a frame, after 30 bytes, id 30, sender 1:1; "
                                    "30 HEARTBEAT 1:1 #2; 51 id 70000 1:1 #3; 93 HEARTBEAT 1:1 #4; "
                                    "114+4 4 bytes skipped"));
        QCOMPARE(found.uncovered(118), QString());
        // After a jump nothing is left of what was begun before it.
        datagrams.feed(bytes("A1").constData(), 30, Message::NoTime, &found);
        datagrams.restart(1000);
        feedAll(&datagrams, bytes("H5"), &found);
        QCOMPARE(found.lines.mid(5).join(text("; ")), text("1000 HEARTBEAT 1:1 #5"));
    }

    void survivesHostileBytes()
    {
        const int size = 60000;
        QByteArray magic = randomBytes(size, 1);
        for (int i = 0; i < size; i += 2)
            magic[i] = char(magic.at(i) & 1 ? 0xfe : 0xfd);
        // The last ones are headers that fit their definition: each has its checksum computed.
        for (const QByteArray& hostile :
             {randomBytes(size, 1), magic, QByteArray(size, char(0xfe)), QByteArray(size, char(0xfd)),
              QByteArray(size, '\0'), QByteArray("\xfe\x33\x01\x01\x01\xfd", 6).repeated(size / 6),
              QByteArray("\xfd\xff\x00\x00\x01\x01\x01\x1e\x00\x00", 10).repeated(size / 10)}) {
            // The frame at the end must be found; nothing here has a right checksum but by one chance in many.
            for (const Layout layout : {Raw, Tlog}) {
                const QStringList lines = decodePieces(hostile + bytes("H77"), layout, 65536);
                QVERIFY(lines.last().endsWith(text("HEARTBEAT 1:1 #77")));
                QVERIFY(layout == Tlog || lines.filter(text("HEARTBEAT")).size() == 1);
                QCOMPARE(decodePieces(hostile + bytes("H77"), layout, layout == Raw ? 1 : 11), lines);
            }
        }
    }

    void detectsTheLayout()
    {
        m_script.define("login", "login: \xfe\xfe\xfdok\r\n");
        m_script.define("boot", timed(47333000, bytes("B1")) + QByteArray(14, '\0')); // a time since the start
        m_script.define("xml", QByteArray("<?xml version=\"1.0\"?>\n").repeated(50));
        m_script.define("zeros", QByteArray(4096, '\0'));
        const TextRow rows[] = {{"h1 A2 H3 s4 A5", "raw"},
                                {"h1 A2 H3 s4 A5<30", "raw"},
                                {"H1", "raw"},
                                {"login h1 A2 H3 s4 A5", "raw"},
                                {"12345678 h1 A2 H3 s4 A5", "raw"},
                                {"U1 U2", "raw"},
                                {"0:h1 0:A2 0:H3", "tlog"},
                                {"0:h1 0:A2<30", "tlog"},
                                {"0:H1", "tlog"},
                                {"cut,off,frame 0:h1 0:A2 0:H3", "tlog"},
                                {"boot", "tlog"},
                                {"", "none"},
                                {"xml", "none"},
                                {"zeros", "none"},
                                {"FE", "none"},
                                {"A2<30", "none"}};
        checkRows(rows, [this](const QString& given) { return layoutOf(m_script.bytes(given)); });
        for (quint32 seed = 0; seed < 50; ++seed)
            QCOMPARE(layoutOf(randomBytes(4096, seed)), text("none"));
    }
};

QTEST_GUILESS_MAIN(TestMavlinkStreamDecoder)
#include "tst_mavlinkstreamdecoder.moc"

#include "mavlinkstreamdecoder.h"

#include "streamrecorder.h"
#include "testbase.h"
#include "textrows.h"

#include <QRandomGenerator>
#include <QScopedPointer>

namespace
{

typedef MavlinkStreamDecoder::Layout Layout;
const Layout Raw = MavlinkStreamDecoder::RawLayout;
const Layout Tlog = MavlinkStreamDecoder::TlogLayout;
const quint64 Noon = Q_UINT64_C(1700000000000000);

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
    const MavlinkMessageInfo* info(const char* type) const
    {
        return static_cast<const MavlinkMessageInfo*>(m_dialect->getMessageInfo(QLatin1String(type)));
    }
    QByteArray frame(const char* type, int sequence, int version = 2, quint8 flags = 0) const
    {
        return plainFrame(info(type), frameHeader(version, sequence, flags));
    }
    QByteArray heartbeat(int sequence) const { return frame("HEARTBEAT", sequence); }
    QByteArray attitude(int sequence) const { return frame("ATTITUDE", sequence); }
    QByteArray withPayload(const char* type, int sequence, int version, const QByteArray& payload) const
    {
        return MavlinkEncoder::toFrame(frameHeader(version, sequence), info(type)->getId(), info(type)->getCrcExtra(),
                                       payload);
    }
    static QByteArray unknown(int sequence, int size)
    {
        return MavlinkEncoder::toFrame(frameHeader(2, sequence), 70000, 77, QByteArray(size, 'u'));
    }

    StreamRecorder decodePieces(const QByteArray& bytes, Layout layout, int piece) const
    {
        MavlinkStreamDecoder decoder(m_dialect.data(), layout);
        StreamRecorder recorder(&decoder);
        for (int i = 0; i < bytes.size(); i += piece) {
            // A buffer of its own, so that a sanitizer sees every byte read beyond the piece.
            const QByteArray part(bytes.constData() + i, qMin(piece, int(bytes.size()) - i));
            decoder.feed(part.constData(), int(part.size()), Message::NoTime, &recorder);
        }
        decoder.finish(&recorder);
        const QString uncovered = recorder.uncovered(quint64(bytes.size()));
        if (!uncovered.isEmpty())
            recorder.lines.append(uncovered);
        return recorder;
    }

    /** What is reported of the bytes, "; " between the lines; the same however they are cut into pieces. */
    QString decode(const QByteArray& bytes, Layout layout = Raw) const
    {
        const QString whole = decodePieces(bytes, layout, qMax(1, int(bytes.size()))).lines.join(QLatin1String("; "));
        for (const int piece : {1, 7, 300, 4096}) {
            const QString same = decodePieces(bytes, layout, piece).lines.join(QLatin1String("; "));
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
            return QStringLiteral("that depends");
        return !detected ? QStringLiteral("none") : found == Raw ? QStringLiteral("raw") : QStringLiteral("tlog");
    }

    QScopedPointer<MavlinkDialect> m_dialect{MavlinkDialect::loadBuiltIn()};

private Q_SLOTS:
    void handsOutEveryKindOfFrame()
    {
        MavlinkEncoder::FrameHeader other = frameHeader(2, 255, 1);
        other.system = 255;
        other.component = 190;
        const QByteArray signedFrame = plainFrame(info("HEARTBEAT"), other);
        const QByteArray bytes = frame("HEARTBEAT", 3, 1) + signedFrame + attitude(4);
        QCOMPARE(decode(bytes), text("0 HEARTBEAT 1:1 #3; 17 HEARTBEAT 255:190 #255; 51 ATTITUDE 1:1 #4"));
        QCOMPARE(decodePieces(bytes, Raw, 20).frames,
                 QVector<QByteArray>({frame("HEARTBEAT", 3, 1), signedFrame, attitude(4)}));
        // Version 2 alone has payloads of other lengths.
        QCOMPARE(decode(withPayload("ATTITUDE", 1, 2, "ab") + withPayload("ATTITUDE", 2, 2, QByteArray(255, 'x')) +
                        withPayload("ATTITUDE", 3, 1, QByteArray(27, 'x')) + heartbeat(9)),
                 text("0 ATTITUDE 1:1 #1; 14 ATTITUDE 1:1 #2; 281+35 length does not fit the message type, id 30, "
                      "sender 1:1: 27 bytes of payload instead of 28; 316 HEARTBEAT 1:1 #9"));
    }

    void reportsABadChecksumOnce()
    {
        QByteArray bad = attitude(2);
        bad[20] = 'X';
        const QString failed = text("0 HEARTBEAT 1:1 #1; 21+40 checksum failure, id 30, sender 1:1");
        QCOMPARE(decode(heartbeat(1) + bad), failed);
        QCOMPARE(decode(heartbeat(1) + bad + bad + heartbeat(3)),
                 failed + text("; 61+40 checksum failure, id 30, sender 1:1; 101 HEARTBEAT 1:1 #3"));
        // The magic bytes in its payload are not failures of their own.
        for (int i = 12; i < 36; i += 3)
            bad[i] = char(0xfe);
        QCOMPARE(decode(heartbeat(1) + bad + heartbeat(3)), failed + text("; 61 HEARTBEAT 1:1 #3"));
    }

    void findsFramesBehindNoise()
    {
        const QByteArray noises[] = {"Booting... ready\r\n", "\xfe", QByteArray(5, char(0xfd)),
                                     // A header that claims more than there is.
                                     "xx\xfe\xff\x01\x01\x01\x99", attitude(1).mid(15)};
        for (const QByteArray& noise : noises) {
            const int size = int(noise.size());
            QCOMPARE(decode(noise + heartbeat(1) + attitude(2)),
                     QStringLiteral("0+%1 %1 byte%2 skipped; %1 HEARTBEAT 1:1 #1; %3 ATTITUDE 1:1 #2")
                         .arg(size)
                         .arg(size == 1 ? QString() : text("s"))
                         .arg(size + 21));
        }
        // A whole header of a known type where one is expected is a frame that was cut.
        QCOMPARE(decode(QByteArray("\xfe\x40\x01\x01\x01\x1e", 6) + heartbeat(1)),
                 text("0+6 checksum failure, id 30, sender 1:1; 6 HEARTBEAT 1:1 #1"));
    }

    void losesNoNeighbourOfADamagedFrame()
    {
        for (const Layout layout : {Raw, Tlog}) {
            for (const int version : {1, 2}) {
                QByteArray parts[] = {frame("HEARTBEAT", 1, version), frame("ATTITUDE", 2, version),
                                      frame("HEARTBEAT", 3, version), frame("SYS_STATUS", 4, version)};
                for (QByteArray& part : parts)
                    if (layout == Tlog)
                        part = timed(Noon, part);
                for (int position = 0; position < parts[1].size(); ++position) {
                    // Every value where it changes what the frame claims, some where it changes the payload.
                    for (int value = 0; value < 256; value += position < 18 ? 1 : 15) {
                        QByteArray damaged = parts[1];
                        damaged[position] = char(value);
                        const QByteArray bytes = parts[0] + damaged + parts[2] + parts[3];
                        for (const int piece : {int(bytes.size()), 3}) {
                            const StreamRecorder recorder = decodePieces(bytes, layout, piece);
                            const QString lines = recorder.lines.join(QLatin1String("; "));
                            if (!lines.contains(text("HEARTBEAT 1:1 #1")) ||
                                !lines.contains(text("HEARTBEAT 1:1 #3")) ||
                                !lines.contains(text("SYS_STATUS 1:1 #4")) ||
                                !recorder.uncovered(quint64(bytes.size())).isEmpty())
                                QFAIL(qPrintable(
                                    QStringLiteral("byte %1 as %2: %3").arg(position).arg(value).arg(lines)));
                        }
                    }
                }
            }
        }
    }

    void losesNoNeighbourOfACutFrame()
    {
        for (int from = 0; from < attitude(2).size(); ++from) {
            for (int count = 1; from + count <= attitude(2).size(); ++count) {
                const QByteArray rest = attitude(2).remove(from, count);
                const QString lines = decode(heartbeat(1) + rest + heartbeat(3) + heartbeat(4));
                if (!lines.startsWith(text("0 HEARTBEAT 1:1 #1")) || !lines.contains(text("HEARTBEAT 1:1 #3")) ||
                    !lines.endsWith(text("HEARTBEAT 1:1 #4")) || lines.contains(text("ATTITUDE")))
                    QFAIL(qPrintable(QStringLiteral("%1 bytes from %2: %3").arg(count).arg(from).arg(lines)));
            }
        }
    }

    void aSignatureThatBreaksOffCostsOnlyItself()
    {
        const QByteArray whole = frame("HEARTBEAT", 1, 2, 1);
        for (const Layout layout : {Raw, Tlog}) {
            const int timeSize = layout == Tlog ? 8 : 0;
            const auto part = [&](const QByteArray& bytes) { return layout == Tlog ? timed(Noon, bytes) : bytes; };
            const QString time = layout == Tlog ? text(" @1700000000000000") : QString();
            for (int left = 0; left <= 13; ++left) {
                const QString first = QStringLiteral("%1 HEARTBEAT 1:1 #1%2").arg(timeSize).arg(time) +
                                      (left == 13 ? QString()
                                                  : QStringLiteral("; %1+%2 %2 byte%3 skipped: a signature breaks off")
                                                        .arg(21 + timeSize)
                                                        .arg(left)
                                                        .arg(text(left == 1 ? "" : "s")));
                const QByteArray bytes = part(whole.left(21 + left));
                QCOMPARE(decode(bytes, layout), first);
                QCOMPARE(decode(bytes + part(attitude(2)) + part(heartbeat(3)), layout),
                         first + QStringLiteral("; %1 ATTITUDE 1:1 #2%3; %2 HEARTBEAT 1:1 #3%3")
                                     .arg(bytes.size() + timeSize)
                                     .arg(bytes.size() + 40 + 2 * timeSize)
                                     .arg(time));
            }
        }
    }

    void takesAFrameInsideABadOneOnly()
    {
        // The sender was interrupted after 15 bytes; the frame that follows lies within what the first one claims.
        QCOMPARE(decode(attitude(1).left(15) + heartbeat(2) + attitude(3)),
                 text("0+15 checksum failure, id 30, sender 1:1; 15 HEARTBEAT 1:1 #2; 36 ATTITUDE 1:1 #3"));
        // Of a header that is not even whole nothing can be told.
        QCOMPARE(decode(attitude(1).left(8) + heartbeat(2)), text("0+8 8 bytes skipped; 8 HEARTBEAT 1:1 #2"));

        const QByteArray carrier = withPayload("STATUSTEXT", 1, 2, "x" + heartbeat(2) + "y");
        QCOMPARE(decode(carrier + heartbeat(3)), text("0 STATUSTEXT 1:1 #1; 35 HEARTBEAT 1:1 #3"));
        // Nor when a bad frame stands before it and claims its beginning.
        QByteArray bad = heartbeat(0);
        bad[1] = char(bad.at(1) + 4);
        QCOMPARE(decode(bad + carrier + heartbeat(3)),
                 text("0+21 checksum failure, id 0, sender 1:1; 21 STATUSTEXT 1:1 #1; 56 HEARTBEAT 1:1 #3"));
    }

    void reportsWhatTheEndCutsOff()
    {
        for (int size = 1; size < attitude(2).size(); ++size)
            QCOMPARE(decode(heartbeat(1) + attitude(2).left(size)),
                     QStringLiteral("0 HEARTBEAT 1:1 #1; 21+%1 stream ends inside a frame, after %1 byte%2%3")
                         .arg(size)
                         .arg(text(size == 1 ? "" : "s"), text(size < 10 ? "" : ", id 30, sender 1:1")));
        // A good frame inside what is cut off comes first.
        QCOMPARE(decode(attitude(2).left(12) + heartbeat(3)),
                 text("0+12 checksum failure, id 30, sender 1:1; 12 HEARTBEAT 1:1 #3"));
        QCOMPARE(decode(QByteArray()), QString());
    }

    void dropsFramesWithUnknownFeatures()
    {
        QByteArray strange = frame("HEARTBEAT", 2, 2, 2);
        for (int added = 0; added < 2; ++added) {
            // What the checksum covers may be another matter with such a flag.
            strange[20] = char(strange.at(20) + added);
            QCOMPARE(decode(heartbeat(1) + strange + heartbeat(3)),
                     text("0 HEARTBEAT 1:1 #1; 21+21 frame with an unsupported feature, id 0, sender 1:1: "
                          "incompatibility flags 0x02; 42 HEARTBEAT 1:1 #3"));
        }
    }

    void passesUnknownTypesBetweenFramesOnly()
    {
        QCOMPARE(decode(heartbeat(1) + unknown(2, 30) + unknown(3, 5) + heartbeat(4) + unknown(5, 6)),
                 text("0 HEARTBEAT 1:1 #1; 21 unknown 70000 1:1 #2; 63 unknown 70000 1:1 #3; 80 HEARTBEAT 1:1 #4; "
                      "101 unknown 70000 1:1 #5"));
        // Damaged, as no definition has a checksum like that.
        QByteArray damaged = unknown(2, 30);
        damaged[20] = 'X';
        QCOMPARE(decode(heartbeat(1) + damaged + heartbeat(3)),
                 text("0 HEARTBEAT 1:1 #1; 21+42 checksum failure, id 70000, sender 1:1; 63 HEARTBEAT 1:1 #3"));
        QCOMPARE(decode("noise" + damaged + heartbeat(3)), text("0+47 47 bytes skipped; 47 HEARTBEAT 1:1 #3"));
        QCOMPARE(decode("noise" + unknown(2, 30) + "noise" + heartbeat(4)),
                 text("0+52 52 bytes skipped; 52 HEARTBEAT 1:1 #4"));
        // Behind noise a magic byte at its end is not enough: a header that fits its definition is.
        QCOMPARE(decode("noise" + unknown(2, 30) + "\xfe, more noise" + heartbeat(4)),
                 text("0+60 60 bytes skipped; 60 HEARTBEAT 1:1 #4"));
        QCOMPARE(decode("noise" + unknown(2, 30) + heartbeat(4)),
                 text("0+5 5 bytes skipped; 5 unknown 70000 1:1 #2; 47 HEARTBEAT 1:1 #4"));
        QCOMPARE(decode(unknown(2, 60).left(20) + heartbeat(4) + attitude(5)),
                 text("0+20 20 bytes skipped; 20 HEARTBEAT 1:1 #4; 41 ATTITUDE 1:1 #5"));
    }

    void readsTheTimesOfATlog()
    {
        QByteArray bad = frame("HEARTBEAT", 3, 1);
        bad[7] = 'X';
        QCOMPARE(decode(timed(Noon, frame("HEARTBEAT", 1, 1)) + timed(Noon + 6, bad) + timed(Noon + 7, unknown(4, 4)) +
                            timed(47, heartbeat(5)) + timed(~quint64(0), heartbeat(6)),
                        Tlog),
                 text("8 HEARTBEAT 1:1 #1 @1700000000000000; 33+17 checksum failure, id 0, sender 1:1; "
                      "58 unknown 70000 1:1 #4 @1700000000000007; 82 HEARTBEAT 1:1 #5 @47; 111 HEARTBEAT 1:1 #6"));
    }

    void findsItsWayBackInATlog()
    {
        const QByteArray first = timed(Noon, heartbeat(1));
        const QByteArray last = timed(Noon + 1, heartbeat(2));
        const auto between = [&](const QByteArray& bytes) {
            const QString lines = decode(first + bytes, Tlog);
            return lines.section(text("@1700000000000000; "), 1).replace(text("1700000000000001"), text("last"));
        };
        QCOMPARE(between("some garbage" + last), text("29+12 12 bytes skipped; 49 HEARTBEAT 1:1 #2 @last"));
        // A time stamp is missing, or is none.
        QCOMPARE(between(attitude(7) + last), text("29 ATTITUDE 1:1 #7; 77 HEARTBEAT 1:1 #2 @last"));
        QCOMPARE(between("garbage, no time" + attitude(7) + last),
                 text("29+16 16 bytes skipped; 45 ATTITUDE 1:1 #7; 93 HEARTBEAT 1:1 #2 @last"));
        // A frame was cut: the time stamp of the next is not part of it.
        QCOMPARE(between(timed(Noon + 1, attitude(7)).left(30) + last),
                 text("37+22 checksum failure, id 30, sender 1:1; 67 HEARTBEAT 1:1 #2 @last"));
        QCOMPARE(between(last.left(5)), text("29+5 stream ends inside a frame, after 5 bytes"));
        QCOMPARE(between(last.left(11)), text("37+3 stream ends inside a frame, after 3 bytes"));
    }

    void holdsNothingBack()
    {
        const QByteArray bytes = heartbeat(1);
        MavlinkStreamDecoder decoder(m_dialect.data(), Raw);
        StreamRecorder recorder(&decoder);
        decoder.feed(bytes.constData(), 20, 10, &recorder);
        QCOMPARE(recorder.lines, QStringList());
        decoder.feed(bytes.constData() + 20, 1, 30, &recorder);
        QCOMPARE(recorder.lines, QStringList(text("0 HEARTBEAT 1:1 #1 @30")));

        // Each claims 200 bytes and more: a type with another length, an unknown type, an unknown feature.
        const QByteArray headers[] = {QByteArray("\xfe\xc8\x01\x01\x01\x1e", 6),
                                      QByteArray("\xfe\xc8\x01\x01\x01\xf0", 6),
                                      QByteArray("\xfd\xc8\x00\x00\x01\x01\x01\x77\x77\x77", 10),
                                      QByteArray("\xfd\xc8\x04\x00\x01\x01\x01\x1e\x00\x00", 10)};
        for (const QByteArray& header : headers) {
            MavlinkStreamDecoder behind(m_dialect.data(), Raw);
            StreamRecorder lines(&behind);
            behind.feed((header + bytes).constData(), int(header.size() + bytes.size()), Message::NoTime, &lines);
            QCOMPARE(lines.lines.value(1), QStringLiteral("%1 HEARTBEAT 1:1 #1").arg(header.size()));
        }

        const QByteArray noise(20000, 'n'); // reported before it ends
        MavlinkStreamDecoder noisy(m_dialect.data(), Raw);
        StreamRecorder skipped(&noisy);
        noisy.feed(noise.constData(), int(noise.size()), Message::NoTime, &skipped);
        QCOMPARE(skipped.lines, QStringList(text("0+16384 16384 bytes skipped")));
        noisy.finish(&skipped);
        QCOMPARE(skipped.lines.value(1), text("16384+3616 3616 bytes skipped"));
    }

    void goesOnAfterTheEndOfADatagram()
    {
        MavlinkStreamDecoder decoder(m_dialect.data(), Raw);
        StreamRecorder recorder(&decoder);
        for (const QByteArray& datagram :
             {attitude(1).left(30), heartbeat(2) + unknown(3, 4), QByteArray(), heartbeat(4) + "tail"}) {
            decoder.feed(datagram.constData(), int(datagram.size()), 5, &recorder);
            decoder.finish(&recorder);
        }
        QCOMPARE(recorder.lines.join(QLatin1String("; ")),
                 text("0+30 stream ends inside a frame, after 30 bytes, id 30, sender 1:1; 30 HEARTBEAT 1:1 #2 @5; "
                      "51 unknown 70000 1:1 #3 @5; 67 HEARTBEAT 1:1 #4 @5; 88+4 4 bytes skipped"));
        QCOMPARE(recorder.uncovered(92), QString());
    }

    void survivesHostileBytes()
    {
        const int size = 60000;
        QByteArray magic = randomBytes(size, 1);
        for (int i = 0; i < size; i += 2)
            magic[i] = char(magic.at(i) & 1 ? 0xfe : 0xfd);
        const QByteArray hostile[] = {
            randomBytes(size, 1), magic, QByteArray(size, char(0xfe)), QByteArray(size, char(0xfd)),
            // Headers that fit their definition: each has its checksum computed.
            QByteArray("\xfe\x33\x01\x01\x01\xfd", 6).repeated(size / 6),
            QByteArray("\xfd\xff\x00\x00\x01\x01\x01\x1e\x00\x00", 10).repeated(size / 10), QByteArray(size, '\0')};
        for (const QByteArray& bytes : hostile) {
            // The frame at the end must be found; nothing here has a right checksum but by one chance in many.
            const QByteArray whole = bytes + heartbeat(77);
            const QStringList raw = decodePieces(whole, Raw, 65536).lines;
            QVERIFY(raw.last().endsWith(text("HEARTBEAT 1:1 #77")));
            QCOMPARE(raw.filter(text("HEARTBEAT")).size(), 1);
            QCOMPARE(decodePieces(whole, Raw, 1).lines, raw);
            const QStringList tlog = decodePieces(whole, Tlog, 65536).lines;
            QVERIFY(tlog.last().endsWith(text("HEARTBEAT 1:1 #77")));
            QCOMPARE(decodePieces(whole, Tlog, 11).lines, tlog);
        }
    }

    void detectsTheLayout()
    {
        const QByteArray frames =
            frame("HEARTBEAT", 1, 1) + attitude(2) + heartbeat(3) + frame("SYS_STATUS", 4, 1) + attitude(5);
        for (const QByteArray& head : {frames, frames.left(200), heartbeat(1), "login: \xfe\xfe\xfdok\r\n" + frames,
                                       "12345678" + frames, unknown(1, 20) + unknown(2, 7)})
            QCOMPARE(layoutOf(head), text("raw"));
        const QByteArray times =
            timed(Noon, frame("HEARTBEAT", 1, 1)) + timed(Noon, attitude(2)) + timed(Noon, heartbeat(3));
        // One has a time since the start, and a rest.
        for (const QByteArray& head : {times, times.left(60), timed(Noon, heartbeat(1)), "cut off frame" + times,
                                       timed(47333000, frame("BATTERY_STATUS", 1)) + QByteArray(14, '\0')})
            QCOMPARE(layoutOf(head), text("tlog"));
        for (const QByteArray& head : {QByteArray(), QByteArray("<?xml version=\"1.0\"?>\n").repeated(50),
                                       QByteArray(4096, '\0'), QByteArray("\xfe"), attitude(2).left(30)})
            QCOMPARE(layoutOf(head), text("none"));
        for (quint32 seed = 0; seed < 50; ++seed)
            QCOMPARE(layoutOf(randomBytes(4096, seed)), text("none"));
    }
};

QTEST_GUILESS_MAIN(TestMavlinkStreamDecoder)
#include "tst_mavlinkstreamdecoder.moc"

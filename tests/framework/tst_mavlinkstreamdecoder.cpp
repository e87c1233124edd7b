#include "mavlinkstreamdecoder.h"

#include "streamrecorder.h"
#include "testbase.h"

#include <QRandomGenerator>
#include <QScopedPointer>

namespace
{

const quint64 Noon = Q_UINT64_C(1700000000000000);

} // namespace

class TestMavlinkStreamDecoder : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void handsOutEveryKindOfFrame();
    void acceptsShortAndLongPayloadsOfVersion2Only();
    void reportsABadChecksumOnce();
    void findsFramesBehindNoise_data();
    void findsFramesBehindNoise();
    void losesNoNeighbourOfADamagedFrame_data();
    void losesNoNeighbourOfADamagedFrame();
    void losesNoNeighbourOfACutFrame();
    void takesAFrameInsideABadOne();
    void leavesAFrameInsideAGoodOneAlone();
    void reportsWhatTheEndCutsOff();
    void dropsFramesWithUnknownFeatures();
    void passesUnknownTypesBetweenFramesOnly();
    void readsTheTimesOfATlog();
    void findsItsWayBackInATlog();
    void handsOutAFrameWithItsLastByte();
    void holdsNothingBackForAHeaderThatFitsNothing();
    void goesOnAfterTheEndOfADatagram();
    void survivesHostileBytes_data();
    void survivesHostileBytes();
    void reportsLongNoiseBeforeItEnds();
    void describesProblemsInALine();
    void makesAMessageOfWhatWasReceived();
    void detectsTheLayout_data();
    void detectsTheLayout();

private:
    QByteArray frame(const char* type, int sequence, int version = 2, quint8 flags = 0) const;
    QByteArray withPayload(const char* type, int sequence, int version, const QByteArray& payload) const;
    QByteArray unknown(int sequence, int size) const;
    StreamRecorder decodePieces(const QByteArray& bytes, MavlinkStreamDecoder::Layout layout, int piece) const;
    QString decode(const QByteArray& bytes,
                   MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout) const;

    QScopedPointer<MavlinkDialect> m_dialect;
};

void TestMavlinkStreamDecoder::initTestCase()
{
    m_dialect.reset(MavlinkDialect::loadBuiltIn());
}

QByteArray TestMavlinkStreamDecoder::frame(const char* type, int sequence, int version, quint8 flags) const
{
    const MessageInfo* const info = m_dialect->getMessageInfo(QLatin1String(type));
    return plainFrame(static_cast<const MavlinkMessageInfo*>(info), frameHeader(version, sequence, flags));
}

QByteArray TestMavlinkStreamDecoder::withPayload(const char* type, int sequence, int version,
                                                 const QByteArray& payload) const
{
    const MavlinkMessageInfo* const info =
        static_cast<const MavlinkMessageInfo*>(m_dialect->getMessageInfo(QLatin1String(type)));
    return MavlinkEncoder::toFrame(frameHeader(version, sequence), info->getId(), info->getCrcExtra(), payload);
}

QByteArray TestMavlinkStreamDecoder::unknown(int sequence, int size) const
{
    return MavlinkEncoder::toFrame(frameHeader(2, sequence), 70000, 77, QByteArray(size, 'u'));
}

StreamRecorder TestMavlinkStreamDecoder::decodePieces(const QByteArray& bytes, MavlinkStreamDecoder::Layout layout,
                                                      int piece) const
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
QString TestMavlinkStreamDecoder::decode(const QByteArray& bytes, MavlinkStreamDecoder::Layout layout) const
{
    const QString whole = decodePieces(bytes, layout, qMax(1, int(bytes.size()))).lines.join(QLatin1String("; "));
    const int pieces[] = {1, 7, 300, 4096};
    for (const int piece : pieces) {
        const QString same = decodePieces(bytes, layout, piece).lines.join(QLatin1String("; "));
        if (same != whole)
            return QStringLiteral("in pieces of %1: %2, whole: %3").arg(piece).arg(same, whole);
    }
    return whole;
}

void TestMavlinkStreamDecoder::handsOutEveryKindOfFrame()
{
    MavlinkEncoder::FrameHeader other = frameHeader(2, 255, 1);
    other.system = 255;
    other.component = 190;
    const QByteArray signedFrame = plainFrame(
        static_cast<const MavlinkMessageInfo*>(m_dialect->getMessageInfo(QStringLiteral("HEARTBEAT"))), other);
    const QByteArray bytes = frame("HEARTBEAT", 3, 1) + signedFrame + frame("ATTITUDE", 4);
    QCOMPARE(decode(bytes), QStringLiteral("0 HEARTBEAT 1:1 #3; 17 HEARTBEAT 255:190 #255; 51 ATTITUDE 1:1 #4"));

    const StreamRecorder recorder = decodePieces(bytes, MavlinkStreamDecoder::RawLayout, 20);
    QCOMPARE(recorder.frames.value(0), frame("HEARTBEAT", 3, 1));
    QCOMPARE(recorder.frames.value(1), signedFrame);
    QCOMPARE(recorder.frames.value(2), frame("ATTITUDE", 4));
}

void TestMavlinkStreamDecoder::acceptsShortAndLongPayloadsOfVersion2Only()
{
    const QByteArray next = frame("HEARTBEAT", 9);
    QCOMPARE(decode(withPayload("ATTITUDE", 1, 2, QByteArray("ab")) + next),
             QStringLiteral("0 ATTITUDE 1:1 #1; 14 HEARTBEAT 1:1 #9"));
    QCOMPARE(decode(withPayload("ATTITUDE", 1, 2, QByteArray(255, 'x')) + next),
             QStringLiteral("0 ATTITUDE 1:1 #1; 267 HEARTBEAT 1:1 #9"));
    QCOMPARE(decode(withPayload("ATTITUDE", 1, 1, QByteArray(27, 'x')) + next),
             QStringLiteral("0+35 length does not fit the message type, id 30, sender 1:1: "
                            "27 bytes of payload instead of 28; 35 HEARTBEAT 1:1 #9"));
}

void TestMavlinkStreamDecoder::reportsABadChecksumOnce()
{
    QByteArray bad = frame("ATTITUDE", 2);
    bad[20] = 'X';
    const QString failure = QStringLiteral("21+40 checksum failure, id 30, sender 1:1");
    QCOMPARE(decode(frame("HEARTBEAT", 1) + bad), QStringLiteral("0 HEARTBEAT 1:1 #1; ") + failure);
    QCOMPARE(decode(frame("HEARTBEAT", 1) + bad + frame("HEARTBEAT", 3)),
             QStringLiteral("0 HEARTBEAT 1:1 #1; ") + failure + QStringLiteral("; 61 HEARTBEAT 1:1 #3"));
    QCOMPARE(decode(frame("HEARTBEAT", 1) + bad + bad + frame("HEARTBEAT", 3)),
             QStringLiteral("0 HEARTBEAT 1:1 #1; ") + failure +
                 QStringLiteral("; 61+40 checksum failure, id 30, sender 1:1; 101 HEARTBEAT 1:1 #3"));
    // The magic bytes in its payload are not failures of their own.
    for (int i = 12; i < 36; i += 3)
        bad[i] = char(0xfe);
    QCOMPARE(decode(frame("HEARTBEAT", 1) + bad + frame("HEARTBEAT", 3)),
             QStringLiteral("0 HEARTBEAT 1:1 #1; ") + failure + QStringLiteral("; 61 HEARTBEAT 1:1 #3"));
}

void TestMavlinkStreamDecoder::findsFramesBehindNoise_data()
{
    QTest::addColumn<QByteArray>("noise");
    QTest::newRow("text") << QByteArray("Booting... ready\r\n");
    QTest::newRow("one magic byte") << QByteArray("\xfe");
    QTest::newRow("magic bytes") << QByteArray(5, char(0xfd));
    QTest::newRow("a header that claims the frame") << QByteArray("\xfe\x40\x01\x01\x01\x1e", 6);
    QTest::newRow("a header that claims more than there is") << QByteArray("xx\xfe\xff\x01\x01\x01\x99", 8);
    QTest::newRow("the end of a frame") << frame("ATTITUDE", 1).mid(15);
}

void TestMavlinkStreamDecoder::findsFramesBehindNoise()
{
    QFETCH(QByteArray, noise);
    const int size = int(noise.size());
    const QString text = decode(noise + frame("HEARTBEAT", 1) + frame("ATTITUDE", 2));
    const QString skipped =
        QStringLiteral("0+%1 %1 byte%2 skipped").arg(size).arg(size == 1 ? QString() : QStringLiteral("s"));
    const QString failed = QStringLiteral("0+%1 checksum failure, id 30, sender 1:1").arg(size);
    const QString found = QStringLiteral("; %1 HEARTBEAT 1:1 #1; %2 ATTITUDE 1:1 #2").arg(size).arg(size + 21);
    // A whole header of a known type where one is expected is a frame that was cut.
    QCOMPARE(text, (noise.startsWith("\xfe\x40") ? failed : skipped) + found);
}

void TestMavlinkStreamDecoder::losesNoNeighbourOfADamagedFrame_data()
{
    QTest::addColumn<int>("version");
    QTest::addColumn<bool>("tlog");
    QTest::newRow("v1") << 1 << false;
    QTest::newRow("v2") << 2 << false;
    QTest::newRow("v1 with times") << 1 << true;
    QTest::newRow("v2 with times") << 2 << true;
}

void TestMavlinkStreamDecoder::losesNoNeighbourOfADamagedFrame()
{
    QFETCH(int, version);
    QFETCH(bool, tlog);
    const MavlinkStreamDecoder::Layout layout =
        tlog ? MavlinkStreamDecoder::TlogLayout : MavlinkStreamDecoder::RawLayout;
    QByteArray parts[] = {frame("HEARTBEAT", 1, version), frame("ATTITUDE", 2, version), frame("HEARTBEAT", 3, version),
                          frame("SYS_STATUS", 4, version)};
    if (tlog) {
        for (QByteArray& part : parts)
            part.prepend(timed(Noon, QByteArray()));
    }
    for (int position = 0; position < parts[1].size(); ++position) {
        // Every value where it changes what the frame claims, some where it changes the payload.
        const int step = position < 18 ? 1 : 15;
        for (int value = 0; value < 256; value += step) {
            QByteArray damaged = parts[1];
            damaged[position] = char(value);
            const QByteArray bytes = parts[0] + damaged + parts[2] + parts[3];
            for (const int piece : {int(bytes.size()), 3}) {
                const StreamRecorder recorder = decodePieces(bytes, layout, piece);
                const QString lines = recorder.lines.join(QLatin1String("; "));
                const bool found = lines.contains(QLatin1String("HEARTBEAT 1:1 #1")) &&
                                   lines.contains(QLatin1String("HEARTBEAT 1:1 #3")) &&
                                   lines.contains(QLatin1String("SYS_STATUS 1:1 #4"));
                const bool covered = recorder.uncovered(quint64(bytes.size())).isEmpty();
                if (!found || !covered)
                    QFAIL(qPrintable(QStringLiteral("byte %1 as %2: %3").arg(position).arg(value).arg(lines)));
            }
        }
    }
}

void TestMavlinkStreamDecoder::losesNoNeighbourOfACutFrame()
{
    const QByteArray cut = frame("ATTITUDE", 2);
    for (int from = 0; from < cut.size(); ++from) {
        for (int count = 1; from + count <= cut.size(); ++count) {
            QByteArray rest = cut;
            rest.remove(from, count);
            const QString lines = decode(frame("HEARTBEAT", 1) + rest + frame("HEARTBEAT", 3) + frame("HEARTBEAT", 4));
            const bool found = lines.startsWith(QLatin1String("0 HEARTBEAT 1:1 #1")) &&
                               lines.contains(QLatin1String("HEARTBEAT 1:1 #3")) &&
                               lines.endsWith(QLatin1String("HEARTBEAT 1:1 #4")) &&
                               !lines.contains(QLatin1String("ATTITUDE"));
            if (!found)
                QFAIL(qPrintable(QStringLiteral("%1 bytes from %2: %3").arg(count).arg(from).arg(lines)));
        }
    }
}

void TestMavlinkStreamDecoder::takesAFrameInsideABadOne()
{
    // The sender was interrupted after 15 bytes; the frame that follows lies within what the first one claims.
    const QByteArray bytes = frame("ATTITUDE", 1).left(15) + frame("HEARTBEAT", 2) + frame("ATTITUDE", 3);
    QCOMPARE(decode(bytes), QStringLiteral("0+15 checksum failure, id 30, sender 1:1; 15 HEARTBEAT 1:1 #2; "
                                           "36 ATTITUDE 1:1 #3"));
    // Of a header that is not even whole nothing can be told.
    const QByteArray less = frame("ATTITUDE", 1).left(8) + frame("HEARTBEAT", 2);
    QCOMPARE(decode(less), QStringLiteral("0+8 8 bytes skipped; 8 HEARTBEAT 1:1 #2"));
}

void TestMavlinkStreamDecoder::leavesAFrameInsideAGoodOneAlone()
{
    const QByteArray carrier = withPayload("STATUSTEXT", 1, 2, "x" + frame("HEARTBEAT", 2) + "y");
    QCOMPARE(decode(carrier + frame("HEARTBEAT", 3)),
             QStringLiteral("0 STATUSTEXT 1:1 #1; %1 HEARTBEAT 1:1 #3").arg(carrier.size()));
    // Nor when a bad frame stands before it and claims its beginning.
    QByteArray bad = frame("HEARTBEAT", 0);
    bad[1] = char(bad.at(1) + 4);
    QCOMPARE(decode(bad + carrier + frame("HEARTBEAT", 3)),
             QStringLiteral("0+21 checksum failure, id 0, sender 1:1; 21 STATUSTEXT 1:1 #1; %1 HEARTBEAT 1:1 #3")
                 .arg(21 + carrier.size()));
}

void TestMavlinkStreamDecoder::reportsWhatTheEndCutsOff()
{
    const QByteArray last = frame("ATTITUDE", 2);
    for (int size = 1; size < last.size(); ++size) {
        const QString frameText = size < 10 ? QString() : QStringLiteral(", id 30, sender 1:1");
        QCOMPARE(decode(frame("HEARTBEAT", 1) + last.left(size)),
                 QStringLiteral("0 HEARTBEAT 1:1 #1; 21+%1 stream ends inside a frame, after %1 byte%2%3")
                     .arg(size)
                     .arg(size == 1 ? QString() : QStringLiteral("s"), frameText));
    }
    // A good frame inside what is cut off comes first.
    QCOMPARE(decode(last.left(12) + frame("HEARTBEAT", 3)),
             QStringLiteral("0+12 checksum failure, id 30, sender 1:1; 12 HEARTBEAT 1:1 #3"));
    QCOMPARE(decode(QByteArray()), QString());
}

void TestMavlinkStreamDecoder::dropsFramesWithUnknownFeatures()
{
    const QString text =
        QStringLiteral("0 HEARTBEAT 1:1 #1; 21+21 frame with an unsupported feature, id 0, sender 1:1: "
                       "incompatibility flags 0x02; 42 HEARTBEAT 1:1 #3");
    QCOMPARE(decode(frame("HEARTBEAT", 1) + frame("HEARTBEAT", 2, 2, 2) + frame("HEARTBEAT", 3)), text);
    // What the checksum covers may be another matter with such a flag.
    QByteArray other = frame("HEARTBEAT", 2, 2, 2);
    other[20] = char(other.at(20) + 1);
    QCOMPARE(decode(frame("HEARTBEAT", 1) + other + frame("HEARTBEAT", 3)), text);
}

void TestMavlinkStreamDecoder::passesUnknownTypesBetweenFramesOnly()
{
    QCOMPARE(decode(frame("HEARTBEAT", 1) + unknown(2, 30) + unknown(3, 5) + frame("HEARTBEAT", 4) + unknown(5, 6)),
             QStringLiteral("0 HEARTBEAT 1:1 #1; 21 unknown 70000 1:1 #2; 63 unknown 70000 1:1 #3; "
                            "80 HEARTBEAT 1:1 #4; 101 unknown 70000 1:1 #5"));
    QCOMPARE(decode("noise" + unknown(2, 30) + "noise" + frame("HEARTBEAT", 4)),
             QStringLiteral("0+52 52 bytes skipped; 52 HEARTBEAT 1:1 #4"));
    // Behind noise a magic byte at its end is not enough: a header that fits its definition is.
    QCOMPARE(decode("noise" + unknown(2, 30) + "\xfe, more noise" + frame("HEARTBEAT", 4)),
             QStringLiteral("0+60 60 bytes skipped; 60 HEARTBEAT 1:1 #4"));
    QCOMPARE(decode("noise" + unknown(2, 30) + frame("HEARTBEAT", 4)),
             QStringLiteral("0+5 5 bytes skipped; 5 unknown 70000 1:1 #2; 47 HEARTBEAT 1:1 #4"));
    QCOMPARE(decode(unknown(2, 60).left(20) + frame("HEARTBEAT", 4) + frame("ATTITUDE", 5)),
             QStringLiteral("0+20 20 bytes skipped; 20 HEARTBEAT 1:1 #4; 41 ATTITUDE 1:1 #5"));
}

void TestMavlinkStreamDecoder::readsTheTimesOfATlog()
{
    QByteArray bad = frame("HEARTBEAT", 3, 1);
    bad[7] = 'X';
    QCOMPARE(decode(timed(Noon, frame("HEARTBEAT", 1, 1)) + timed(Noon + 5, frame("ATTITUDE", 2)) +
                        timed(Noon + 6, bad) + timed(Noon + 7, unknown(4, 4)) + timed(47, frame("HEARTBEAT", 5)),
                    MavlinkStreamDecoder::TlogLayout),
             QStringLiteral("8 HEARTBEAT 1:1 #1 @1700000000000000; 33 ATTITUDE 1:1 #2 @1700000000000005; "
                            "81+17 checksum failure, id 0, sender 1:1; "
                            "106 unknown 70000 1:1 #4 @1700000000000007; 130 HEARTBEAT 1:1 #5 @47"));
    QCOMPARE(decode(timed(~quint64(0), frame("HEARTBEAT", 5)), MavlinkStreamDecoder::TlogLayout),
             QStringLiteral("8 HEARTBEAT 1:1 #5"));
}

void TestMavlinkStreamDecoder::findsItsWayBackInATlog()
{
    const QByteArray first = timed(Noon, frame("HEARTBEAT", 1));
    const QByteArray last = timed(Noon + 1, frame("HEARTBEAT", 2));
    const MavlinkStreamDecoder::Layout tlog = MavlinkStreamDecoder::TlogLayout;
    QCOMPARE(decode(first + "some garbage" + last, tlog),
             QStringLiteral("8 HEARTBEAT 1:1 #1 @1700000000000000; 29+12 12 bytes skipped; "
                            "49 HEARTBEAT 1:1 #2 @1700000000000001"));
    // A time stamp is missing, or is none.
    QCOMPARE(decode(first + frame("ATTITUDE", 7) + last, tlog),
             QStringLiteral("8 HEARTBEAT 1:1 #1 @1700000000000000; 29 ATTITUDE 1:1 #7; "
                            "77 HEARTBEAT 1:1 #2 @1700000000000001"));
    QCOMPARE(decode(first + "garbage, no time" + frame("ATTITUDE", 7) + last, tlog),
             QStringLiteral("8 HEARTBEAT 1:1 #1 @1700000000000000; 29+16 16 bytes skipped; 45 ATTITUDE 1:1 #7; "
                            "93 HEARTBEAT 1:1 #2 @1700000000000001"));
    // A frame was cut: the time stamp of the next is not part of it.
    QCOMPARE(decode(first + timed(Noon, frame("ATTITUDE", 7)).left(30) + last, tlog),
             QStringLiteral("8 HEARTBEAT 1:1 #1 @1700000000000000; 37+22 checksum failure, id 30, sender 1:1; "
                            "67 HEARTBEAT 1:1 #2 @1700000000000001"));
    QCOMPARE(decode(first + last.left(5), tlog),
             QStringLiteral("8 HEARTBEAT 1:1 #1 @1700000000000000; 29+5 stream ends inside a frame, after 5 bytes"));
    QCOMPARE(decode(first + last.left(11), tlog),
             QStringLiteral("8 HEARTBEAT 1:1 #1 @1700000000000000; 37+3 stream ends inside a frame, after 3 bytes"));
}

void TestMavlinkStreamDecoder::handsOutAFrameWithItsLastByte()
{
    MavlinkStreamDecoder decoder(m_dialect.data(), MavlinkStreamDecoder::RawLayout);
    StreamRecorder recorder(&decoder);
    const QByteArray bytes = frame("HEARTBEAT", 1);
    decoder.feed(bytes.constData(), 20, 10, &recorder);
    QCOMPARE(recorder.lines, QStringList());
    decoder.feed(bytes.constData() + 20, 1, 30, &recorder);
    QCOMPARE(recorder.lines, QStringList(QStringLiteral("0 HEARTBEAT 1:1 #1 @30")));
}

void TestMavlinkStreamDecoder::holdsNothingBackForAHeaderThatFitsNothing()
{
    // Each claims 200 bytes and more: a type with another length, an unknown type, an unknown feature.
    const QByteArray headers[] = {QByteArray("\xfe\xc8\x01\x01\x01\x1e", 6), QByteArray("\xfe\xc8\x01\x01\x01\xf0", 6),
                                  QByteArray("\xfd\xc8\x00\x00\x01\x01\x01\x77\x77\x77", 10),
                                  QByteArray("\xfd\xc8\x04\x00\x01\x01\x01\x1e\x00\x00", 10)};
    for (const QByteArray& header : headers) {
        MavlinkStreamDecoder decoder(m_dialect.data(), MavlinkStreamDecoder::RawLayout);
        StreamRecorder recorder(&decoder);
        const QByteArray bytes = header + frame("HEARTBEAT", 1);
        decoder.feed(bytes.constData(), int(bytes.size()), Message::NoTime, &recorder);
        QCOMPARE(recorder.lines.value(1), QStringLiteral("%1 HEARTBEAT 1:1 #1").arg(header.size()));
    }
}

void TestMavlinkStreamDecoder::goesOnAfterTheEndOfADatagram()
{
    MavlinkStreamDecoder decoder(m_dialect.data(), MavlinkStreamDecoder::RawLayout);
    StreamRecorder recorder(&decoder);
    const QByteArray datagrams[] = {frame("ATTITUDE", 1).left(30), frame("HEARTBEAT", 2) + unknown(3, 4), QByteArray(),
                                    frame("HEARTBEAT", 4) + "tail"};
    for (const QByteArray& datagram : datagrams) {
        decoder.feed(datagram.constData(), int(datagram.size()), 5, &recorder);
        decoder.finish(&recorder);
    }
    QCOMPARE(
        recorder.lines.join(QLatin1String("; ")),
        QStringLiteral("0+30 stream ends inside a frame, after 30 bytes, id 30, sender 1:1; 30 HEARTBEAT 1:1 #2 @5; "
                       "51 unknown 70000 1:1 #3 @5; 67 HEARTBEAT 1:1 #4 @5; 88+4 4 bytes skipped"));
    QCOMPARE(recorder.uncovered(92), QString());
}

void TestMavlinkStreamDecoder::survivesHostileBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    const int size = 60000;
    QByteArray random(size, '\0');
    QRandomGenerator generator(1);
    for (char& byte : random)
        byte = char(generator.generate());
    QTest::newRow("random") << random;
    for (int i = 0; i < size; i += 2)
        random[i] = char(generator.bounded(2) ? 0xfe : 0xfd);
    QTest::newRow("random, half of it magic") << random;
    QTest::newRow("all FE") << QByteArray(size, char(0xfe));
    QTest::newRow("all FD") << QByteArray(size, char(0xfd));
    // Headers that fit the longest definition, one behind the other: each has its checksum computed.
    QTest::newRow("headers only") << QByteArray("\xfe\x33\x01\x01\x01\xfd", 6).repeated(size / 6);
    QTest::newRow("v2 headers only") << QByteArray("\xfd\xff\x00\x00\x01\x01\x01\x1e\x00\x00", 10).repeated(size / 10);
    QTest::newRow("zeros") << QByteArray(size, '\0');
}

void TestMavlinkStreamDecoder::survivesHostileBytes()
{
    QFETCH(QByteArray, bytes);
    // The frame at the end must be found; nothing here has a right checksum but by one chance in many.
    bytes += frame("HEARTBEAT", 77);
    const StreamRecorder raw = decodePieces(bytes, MavlinkStreamDecoder::RawLayout, 65536);
    QVERIFY(raw.lines.last().endsWith(QLatin1String("HEARTBEAT 1:1 #77")));
    QCOMPARE(raw.lines.filter(QLatin1String("HEARTBEAT")).size(), 1);
    QCOMPARE(decodePieces(bytes, MavlinkStreamDecoder::RawLayout, 1).lines, raw.lines);
    const StreamRecorder tlog = decodePieces(bytes, MavlinkStreamDecoder::TlogLayout, 65536);
    QVERIFY(tlog.lines.last().endsWith(QLatin1String("HEARTBEAT 1:1 #77")));
    QCOMPARE(decodePieces(bytes, MavlinkStreamDecoder::TlogLayout, 11).lines, tlog.lines);
}

void TestMavlinkStreamDecoder::reportsLongNoiseBeforeItEnds()
{
    MavlinkStreamDecoder decoder(m_dialect.data(), MavlinkStreamDecoder::RawLayout);
    StreamRecorder recorder(&decoder);
    const QByteArray noise(20000, 'n');
    decoder.feed(noise.constData(), int(noise.size()), Message::NoTime, &recorder);
    QCOMPARE(recorder.lines, QStringList(QStringLiteral("0+16384 16384 bytes skipped")));
    decoder.finish(&recorder);
    QCOMPARE(recorder.lines.value(1), QStringLiteral("16384+3616 3616 bytes skipped"));
}

void TestMavlinkStreamDecoder::describesProblemsInALine()
{
    StreamProblem problem;
    problem.kind = StreamProblem::ChecksumFailure;
    problem.hasFrame = true;
    problem.id = 142;
    QCOMPARE(problem.describe(QStringLiteral("255:190")), QStringLiteral("checksum failure, id 142, sender 255:190"));
    QCOMPARE(problem.describe(QString()), QStringLiteral("checksum failure, id 142"));
    StreamProblem failure;
    failure.kind = StreamProblem::InputFailure;
    failure.text = QStringLiteral("a.tlog: device lost");
    QCOMPARE(failure.describe(QString()), QStringLiteral("reading failed: a.tlog: device lost"));
}

void TestMavlinkStreamDecoder::makesAMessageOfWhatWasReceived()
{
    const QByteArray bytes = frame("ATTITUDE", 6);
    ReceivedMessage received;
    received.info = m_dialect->find(30);
    received.data = bytes.constData();
    received.size = int(bytes.size());
    received.time = 12;
    received.sequence = 6;
    Message* const message = received.createMessage(QStringLiteral("1:1"));
    QCOMPARE(message->getInfo(), received.info);
    QCOMPARE(message->getData(), bytes);
    QVERIFY(message->getData().constData() != bytes.constData());
    QCOMPARE(message->getTime(), qint64(12));
    QCOMPARE(message->getSequence(), qint64(6));
    QCOMPARE(message->getSender(), QStringLiteral("1:1"));
    QCOMPARE(message->getReferenceCount(), 1);
    message->removeReference();
}

void TestMavlinkStreamDecoder::detectsTheLayout_data()
{
    QTest::addColumn<QByteArray>("head");
    QTest::addColumn<int>("layout"); // -1: not recognised
    const int raw = MavlinkStreamDecoder::RawLayout;
    const int tlog = MavlinkStreamDecoder::TlogLayout;
    const QByteArray frames = frame("HEARTBEAT", 1, 1) + frame("ATTITUDE", 2) + frame("HEARTBEAT", 3) +
                              frame("SYS_STATUS", 4, 1) + frame("ATTITUDE", 5);
    const QByteArray times =
        timed(Noon, frame("HEARTBEAT", 1, 1)) + timed(Noon, frame("ATTITUDE", 2)) + timed(Noon, frame("HEARTBEAT", 3));
    QTest::newRow("raw") << frames << raw;
    QTest::newRow("raw, cut") << frames.left(200) << raw;
    QTest::newRow("raw, one frame") << frame("HEARTBEAT", 1) << raw;
    QTest::newRow("raw behind noise") << "login: \xfe\xfe\xfdok\r\n" + frames << raw;
    QTest::newRow("raw behind 8 bytes") << "12345678" + frames << raw;
    QTest::newRow("raw, unknown types") << unknown(1, 20) + unknown(2, 7) << raw;
    QTest::newRow("tlog") << times << tlog;
    QTest::newRow("tlog, cut") << times.left(60) << tlog;
    QTest::newRow("tlog, one frame") << timed(Noon, frame("HEARTBEAT", 1)) << tlog;
    QTest::newRow("tlog, one frame at start-up time, and a rest")
        << timed(47333000, frame("BATTERY_STATUS", 1)) + QByteArray(14, '\0') << tlog;
    QTest::newRow("tlog behind noise") << "cut off frame" + times << tlog;
    QTest::newRow("empty") << QByteArray() << -1;
    QTest::newRow("text") << QByteArray("<?xml version=\"1.0\"?>\n").repeated(50) << -1;
    QTest::newRow("zeros") << QByteArray(4096, '\0') << -1;
    QTest::newRow("a magic byte") << QByteArray("\xfe") << -1;
    QTest::newRow("part of a frame") << frame("ATTITUDE", 2).left(30) << -1;
    QRandomGenerator generator(2);
    for (int i = 0; i < 50; ++i) {
        QByteArray random(4096, '\0');
        for (char& byte : random)
            byte = char(generator.generate());
        QTest::newRow(qPrintable(QStringLiteral("random %1").arg(i))) << random << -1;
    }
}

void TestMavlinkStreamDecoder::detectsTheLayout()
{
    QFETCH(QByteArray, head);
    QFETCH(int, layout);
    const MavlinkStreamDecoder::Layout before[] = {MavlinkStreamDecoder::RawLayout, MavlinkStreamDecoder::TlogLayout};
    for (MavlinkStreamDecoder::Layout found : before) {
        const int expected = layout >= 0 ? layout : int(found);
        QCOMPARE(MavlinkStreamDecoder::detectLayout(head, &found), layout >= 0);
        QCOMPARE(int(found), expected);
    }
}

QTEST_GUILESS_MAIN(TestMavlinkStreamDecoder)
#include "tst_mavlinkstreamdecoder.moc"

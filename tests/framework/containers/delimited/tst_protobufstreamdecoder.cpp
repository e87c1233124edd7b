#include "definitions.h"
#include "mcapfixtures.h"
#include "protobufformat.h"
#include "protobufstreamdecoder.h"
#include "testbase.h"
#include "textrows.h"
#include "transcript.h"

using McapFixtures::little;
using McapFixtures::point;

static QByteArray framed(int framing, const QByteArray& message)
{
    if (framing == ProtobufStreamDecoder::UInt32Framing)
        return little(quint32(message.size())) + message;
    return QByteArray(1, char(0x80 | (message.size() & 0x7f))) + char(message.size() >> 7) + message;
}

class TestProtobufStreamDecoder : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreFoundHoweverTheyAreCut()
    {
        Definitions definitions;
        ProtobufFormat format;
        QString error;
        const MessageInfo* const info = format.addSchema(McapFixtures::schema(), text("demo.Point"), &error);
        QVERIFY2(info, qPrintable(error));
        for (const auto framing : {ProtobufStreamDecoder::VarintFraming, ProtobufStreamDecoder::UInt32Framing}) {
            QByteArray bytes;
            for (const QByteArray& message : {point(1), point(2), QByteArray(), point(3, 300)})
                bytes += framed(framing, message);
            const int end = int(bytes.size());
            bytes += QByteArray(16, '\xff');
            for (const int piece : {1, 3, 1000}) {
                ProtobufStreamDecoder decoder(&definitions, info, framing);
                Transcript found(&decoder);
                feedAll(&decoder, bytes, &found, piece);
                QCOMPARE(found.messages.join(text("|")),
                         text(framing == ProtobufStreamDecoder::VarintFraming
                                  ? "0 demo.Point |15 demo.Point |30 demo.Point |32 demo.Point "
                                  : "0 demo.Point |17 demo.Point |34 demo.Point |38 demo.Point "));
                QCOMPARE(found.payloads, QVector<QByteArray>({point(1), point(2), QByteArray(), point(3, 300)}));
                // How much is skipped behind the wrong length and how much came with it depends on the pieces.
                QVERIFY2(found.problems.value(0).startsWith(text("%1+").arg(end)), qPrintable(found.problems.value(0)));
                QVERIFY(found.problems.value(0).endsWith(
                    text(" length does not fit the message type: nothing that follows can be read, because nothing "
                         "else tells where a message begins")));

                Transcript cut(&decoder);
                decoder.restart(7);
                decoder.feed(bytes.constData(), 22, Message::NoTime, &cut);
                decoder.restart(0); // nothing is left of what was begun
                feedAll(&decoder, bytes.left(22), &cut);
                QCOMPARE(cut.messages.join(text("|")), text("7 demo.Point |0 demo.Point "));
                QCOMPARE(int(cut.problems.size()), 1);
                QVERIFY(cut.problems.at(0).endsWith(text("inside a message of 13 bytes")));
            }
        }
    }

    void framingIsToldByContent()
    {
        for (const auto framing : {ProtobufStreamDecoder::VarintFraming, ProtobufStreamDecoder::UInt32Framing}) {
            QByteArray bytes;
            for (int i = 0; i < 40; ++i)
                bytes += framed(framing, point(i, i * 3));
            ProtobufStreamDecoder::Framing found = ProtobufStreamDecoder::DatagramFraming;
            QVERIFY(ProtobufStreamDecoder::detectFraming(bytes, true, &found) && found == framing);
            QVERIFY(ProtobufStreamDecoder::detectFraming(bytes.left(1000), false, &found) && found == framing);
            for (const char* other : {"", "Lorem ipsum dolor sit amet, consectetur adipisici elit"})
                QVERIFY(!ProtobufStreamDecoder::detectFraming(other, true, &found));
        }
    }
};

QTEST_GUILESS_MAIN(TestProtobufStreamDecoder)
#include "tst_protobufstreamdecoder.moc"

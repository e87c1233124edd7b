#include "definitions.h"
#include "mcapfixtures.h"
#include "message.h"
#include "protobufformat.h"
#include "protobufstreamdecoder.h"
#include "testbase.h"

using McapFixtures::little;
using McapFixtures::point;

namespace
{

class Lines : public StreamSink
{
public:
    void processReceived(const ReceivedMessage& message) override
    {
        lines.append(QStringLiteral("%1: %2").arg(message.offset).arg(message.size));
        payloads += QByteArray(message.data, message.size);
    }
    void processProblem(const StreamProblem& problem) override
    {
        lines.append(QStringLiteral("%1+%2 %3").arg(problem.offset).arg(problem.length).arg(problem.describe({})));
    }

    QStringList lines;
    QByteArray payloads;
};

QByteArray framed(int framing, const QByteArray& message)
{
    if (framing == ProtobufStreamDecoder::UInt32Framing)
        return little(quint32(message.size())) + message;
    return QByteArray(1, char(0x80 | (message.size() & 0x7f))) + char(message.size() >> 7) + message;
}

} // namespace

class TestProtobufStreamDecoder : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void framesAreFoundHoweverTheyAreCut_data()
    {
        QTest::addColumn<int>("framing");
        QTest::addColumn<QString>("expected");
        QTest::newRow("varint") << int(ProtobufStreamDecoder::VarintFraming)
                                << "0: 13|15: 13|30: 0|32: 319|353+16 length does not fit the message type: nothing "
                                   "that follows can be read, because nothing else tells where a message begins";
        QTest::newRow("u32") << int(ProtobufStreamDecoder::UInt32Framing)
                             << "0: 13|17: 13|34: 0|38: 319|361+16 length does not fit the message type: nothing that "
                                "follows can be read, because nothing else tells where a message begins";
    }

    void framesAreFoundHoweverTheyAreCut()
    {
        QFETCH(int, framing);
        QFETCH(QString, expected);
        QByteArray bytes;
        for (const QByteArray& message : {point(1), point(2), QByteArray(), point(3, 300)})
            bytes += framed(framing, message);
        bytes += QByteArray(16, '\xff');
        for (const int piece : {1, 3, 1000}) {
            Definitions definitions;
            ProtobufFormat format;
            QString error;
            const MessageInfo* const info =
                format.addSchema(McapFixtures::schema(), QStringLiteral("demo.Point"), &error);
            QVERIFY2(info, qPrintable(error));
            ProtobufStreamDecoder decoder(&definitions, info, static_cast<ProtobufStreamDecoder::Framing>(framing));
            Lines found;
            for (int i = 0; i < bytes.size(); i += piece)
                decoder.feed(bytes.constData() + i, qMin(piece, int(bytes.size()) - i), Message::NoTime, &found);
            decoder.finish(&found);
            // How much is skipped behind the wrong length and how much came with it depends on the pieces.
            const QStringList lines = expected.split(QLatin1Char('|'));
            QCOMPARE(found.lines.mid(0, 4), lines.mid(0, 4));
            QCOMPARE(found.lines.at(4).section(QLatin1Char(' '), 1), lines.at(4).section(QLatin1Char(' '), 1));
            QCOMPARE(found.payloads, point(1) + point(2) + point(3, 300));

            Lines cut;
            decoder.restart(0);
            decoder.feed(bytes.constData(), 22, Message::NoTime, &cut);
            decoder.finish(&cut);
            QCOMPARE(cut.lines.size(), 2);
            QVERIFY(cut.lines.at(1).endsWith(QLatin1String("inside a message of 13 bytes")));
        }
    }

    void framingIsToldByContent()
    {
        QByteArray varint;
        QByteArray fixed;
        for (int i = 0; i < 40; ++i) {
            varint += framed(ProtobufStreamDecoder::VarintFraming, point(i, i * 3));
            fixed += framed(ProtobufStreamDecoder::UInt32Framing, point(i, i * 3));
        }
        ProtobufStreamDecoder::Framing framing = ProtobufStreamDecoder::DatagramFraming;
        QVERIFY(ProtobufStreamDecoder::detectFraming(varint, true, &framing));
        QCOMPARE(framing, ProtobufStreamDecoder::VarintFraming);
        QVERIFY(ProtobufStreamDecoder::detectFraming(fixed.left(1000), false, &framing));
        QCOMPARE(framing, ProtobufStreamDecoder::UInt32Framing);
        QVERIFY(!ProtobufStreamDecoder::detectFraming("Lorem ipsum dolor sit amet, consectetur adipisici elit", true,
                                                      &framing));
        QVERIFY(!ProtobufStreamDecoder::detectFraming(QByteArray(), true, &framing));
    }
};

QTEST_GUILESS_MAIN(TestProtobufStreamDecoder)
#include "tst_protobufstreamdecoder.moc"

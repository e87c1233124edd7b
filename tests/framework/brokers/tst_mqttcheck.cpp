#include "mqttcheck.h"
#include "testbase.h"
#include "textrows.h"

/** Where a server's bytes are cut changes nothing; what can be wrong with them the tests of the input have. */
class TestMqttCheck : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void packetsMayBeCutAnywhere();
};

void TestMqttCheck::packetsMayBeCutAnywhere()
{
    const QByteArray message =
        QByteArray::fromHex("329201000261620007090b8002260001610000") + QByteArray(130, 'x'); // with a long payload
    const QByteArray five = QByteArray::fromHex("201200000f240121001427001000001f00026f6b900400010000") + message +
                            QByteArray::fromHex("300400016100400200014003000110"
                                                "4009000110051f00026f6bd000b00400020000e000");
    const QByteArray old = QByteArray::fromHex("200200009003000100320700016100017878"
                                               "40020001b0020002d000");
    const QByteArray bad = QByteArray::fromHex("4006000100027f00");
    for (int piece = 1; piece <= five.size(); ++piece) {
        for (const bool isFive : {false, true}) {
            const QByteArray& right = isFive ? five : old;
            const QByteArray stream = right + (isFive ? bad : QByteArray::fromHex("e000"));
            MqttCheck check(isFive);
            QByteArray passed;
            QByteArray held;
            for (int at = 0; at < stream.size() && check.getError().isEmpty(); at += piece) {
                held += stream.mid(at, piece);
                check.check(held.constData(), held.size());
                passed += held.left(int(check.getChecked()));
                held.remove(0, int(check.getChecked()));
            }
            QCOMPARE(passed, right);
            QCOMPARE(check.getError(), isFive
                                           ? text("the server sent a PUBACK with the unknown property 0x7f (packet 11)")
                                           : text("the server sent a DISCONNECT, which only clients send (packet 7)"));
        }
    }
}

QTEST_APPLESS_MAIN(TestMqttCheck)

#include "tst_mqttcheck.moc"

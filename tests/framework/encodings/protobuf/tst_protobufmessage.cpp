#include "protobufkinds.h"
#include "testbase.h"

using namespace ProtobufKinds;

/** Messages that are not as their schema says, and how long messages and their parts live. */
class tst_ProtobufMessage : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsUnknownFields();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void keepsTheWholeNumbersOfAPackedField();
    void saysWhatIsMissing();
    void refusesTooDeepMessages();
    void partsLiveAsLongAsTheirReferences();
    void readsOnlyItsOwnMessages();

private:
    Format m_format;
};

void tst_ProtobufMessage::showsUnknownFields()
{
    const QByteArray bytes = QByteArray::fromHex("c03e9601"             // 1000: varint 150
                                                 "c53e78563412"         // 1000: fixed32
                                                 "c13e8877665544332211" // 1000: fixed64
                                                 "c23e026869"           // 1000: bytes "hi"
                                                 "c33e0801c43e"         // 1000: group { 1: 1 }
                                                 "7205776f726473"       // 14: a text, to be told apart from
                                                 "708001"               // 14: varint, but a_string is a string
                                                 "800163");             // 16: varint 99, no color
    const MessageReference decoded = m_format.message(QStringLiteral("kinds2.All"), bytes);
    QCOMPARE(shown(decoded.get(), QStringLiteral("[unknown fields]")),
             QStringLiteral("1000: varint 150, 1000: fixed32 0x12345678, 1000: fixed64 0x1122334455667788, "
                            "1000: bytes 6869 (2 bytes), 1000: group { 1: varint 1 }, "
                            "14: varint 128 (but a_string is string), 16: varint 99 (no value of the enum of color)"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("a_string")), QStringLiteral("words"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("color")), QStringLiteral("absent"));
}

void tst_ProtobufMessage::saysWhatIsWrong_data()
{
    QTest::addColumn<QByteArray>("hex");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("problems");

    QTest::newRow("text") << QByteArray("0805"
                                        "1a03c328ff"
                                        "08ac02")
                          << "300"
                          << "name at byte 4: not valid UTF-8; wrong bytes are shown as question marks";
    QTest::newRow("text of a map") << QByteArray("52050801"
                                                 "1201ff"
                                                 "0807")
                                   << "7"
                                   << "names.value at byte 6: not valid UTF-8; wrong bytes are shown as question marks";
    QTest::newRow("too long") << QByteArray("0805"
                                            "220a61")
                              << "5"
                              << "blob at byte 2: claims 10 bytes where 1 are left; the rest is not decoded";
    QTest::newRow("too long inside") << QByteArray("0805"
                                                   "3203"
                                                   "220a61"
                                                   "0806")
                                     << "6"
                                     << "child.blob at byte 4: claims 10 bytes where 1 are left; the rest is not "
                                        "decoded";
    QTest::newRow("number reaches beyond its part") << QByteArray("3202"
                                                                  "08ff"
                                                                  "0805")
                                                    << "5"
                                                    << "child.plain at byte 2: a number breaks off; the rest is not "
                                                       "decoded";
    QTest::newRow("number breaks off") << QByteArray("0805"
                                                     "08ff")
                                       << "5"
                                       << "plain at byte 2: a number breaks off; the rest is not decoded";
    QTest::newRow("number 0") << QByteArray("0805"
                                            "0001")
                              << "5"
                              << "byte 2: no number of a field; the rest is not decoded";
    QTest::newRow("end of no group") << QByteArray("0805"
                                                   "0c")
                                     << "5"
                                     << "byte 2: the end of a group that did not begin; the rest is not decoded";
    QTest::newRow("kind of value") << QByteArray("0805"
                                                 "0f")
                                   << "5"
                                   << "plain at byte 2: an unknown kind of value; the rest is not decoded";
}

void tst_ProtobufMessage::saysWhatIsWrong()
{
    QFETCH(QByteArray, hex);
    QFETCH(QString, plain);
    QFETCH(QString, problems);
    const MessageReference decoded = m_format.message(QStringLiteral("kinds3.All"), QByteArray::fromHex(hex));
    QCOMPARE(shown(decoded.get(), QStringLiteral("[problems]")), problems);
    QCOMPARE(shown(decoded.get(), QStringLiteral("plain")), plain);
}

void tst_ProtobufMessage::keepsTheWholeNumbersOfAPackedField()
{
    const QByteArray bytes = QByteArray::fromHex("3a020180"               // one state, and another that breaks off
                                                 "3214"                   // child:
                                                 "4209000000000000f03f40" //   a double of eight bytes and one of one
                                                 "4a050000803f40"         //   the same with floats
                                                 "0809"                   //   what follows is read
                                                 "0805");
    const MessageReference decoded = m_format.message(QStringLiteral("kinds3.All"), bytes);
    QStringList values;
    for (const char* path : {"states", "child/numbers", "child/unpacked", "child/plain", "plain"})
        values.append(shown(decoded.get(), QLatin1String(path)));
    QCOMPARE(values.join(QStringLiteral("; ")), QStringLiteral("ON (1); 1; 1; 9; 5"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("[problems]")),
             QStringLiteral("states at byte 3: a number breaks off; the rest of the field is not decoded, "
                            "child.numbers at byte 16: a number breaks off; the rest of the field is not decoded, "
                            "child.unpacked at byte 23: a number breaks off; the rest of the field is not decoded"));
}

void tst_ProtobufMessage::saysWhatIsMissing()
{
    const MessageReference decoded = m_format.message(QStringLiteral("kinds2.Strict"), QByteArray::fromHex("1200"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("[problems]")),
             QStringLiteral("the required field \"needed\" is missing, "
                            "the required field \"inner.needed\" is missing"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("needed")), QStringLiteral("absent"));
}

void tst_ProtobufMessage::refusesTooDeepMessages()
{
    const auto nested = [](int depth) {
        QByteArray bytes = QByteArray::fromHex("0807");
        for (int i = 0; i < depth; ++i) {
            QByteArray length;
            for (int rest = static_cast<int>(bytes.size()); rest > 0 || length.isEmpty(); rest >>= 7)
                length += static_cast<char>((rest & 0x7f) | (rest > 0x7f ? 0x80 : 0));
            bytes = '\x32' + length + bytes;
        }
        return bytes;
    };
    const MessageReference deep = m_format.message(QStringLiteral("kinds3.All"), nested(100));
    QCOMPARE(shown(deep.get(), QStringLiteral("[problems]")), QStringLiteral("absent"));
    QCOMPARE(shown(deep.get(), QString(QStringLiteral("child/")).repeated(100) + QStringLiteral("plain")),
             QStringLiteral("7"));
    const MessageReference deeper = m_format.message(QStringLiteral("kinds3.All"), nested(5000));
    QVERIFY(shown(deeper.get(), QStringLiteral("[problems]"))
                .endsWith(QStringLiteral("nested too deeply; it is not decoded")));
}

void tst_ProtobufMessage::partsLiveAsLongAsTheirReferences()
{
    const QString type = QStringLiteral("kinds2.All");
    QString error;
    const MessageInfo* const info = m_format.findType(type, &error);
    const FieldInfo* const child = info->getFieldInfo(QStringLiteral("child"));
    Message* const whole = info->newMessage(encode(type, "child { a_string: 'kept' child { a_int32: 3 } }"));
    whole->setTime(12);
    const MessageReference part(child->getValue(whole, 0).getSubMessage());
    QCOMPARE(child->getValue(whole, 0).getSubMessage(), part.get());
    whole->removeReference();
    QCOMPARE(part.get()->getTime(), 12);
    QCOMPARE(shown(part.get(), QStringLiteral("a_string")), QStringLiteral("kept"));
    QCOMPARE(shown(part.get(), QStringLiteral("child/a_int32")), QStringLiteral("3"));
}

void tst_ProtobufMessage::readsOnlyItsOwnMessages()
{
    QString error;
    const MessageInfo* const older = m_format.findType(QStringLiteral("kinds2.All"), &error);
    const MessageReference newer = m_format.message(QStringLiteral("kinds3.All"), QByteArray::fromHex("0805"));
    const MessageReference plain = MessageReference::adopt(new Message(older, QByteArray::fromHex("0805")));
    const MessageReference good = m_format.message(QStringLiteral("kinds2.All"), QByteArray::fromHex("0805"));
    for (const FieldInfo* field : older->getFieldInfos()) {
        for (const Message* other : {newer.get(), plain.get()}) {
            QCOMPARE(field->getValueCount(other), 0u);
            QVERIFY(!field->getValue(other, 0).isValid());
        }
        QVERIFY(!field->getValue(good.get(), field->getValueCount(good.get())).isValid());
    }
}

QTEST_GUILESS_MAIN(tst_ProtobufMessage)

#include "tst_protobufmessage.moc"

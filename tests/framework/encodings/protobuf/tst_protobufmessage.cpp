#include "protobufkinds.h"
#include "testbase.h"
#include "textrows.h"

using namespace ProtobufKinds;

/** Messages that are not as their schema says, and how long messages and their parts live. */
class tst_ProtobufMessage : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void saysWhatIsWrong();
    void refusesTooDeepMessages();
    void partsLiveAsLongAsTheirReferences();
    void readsOnlyItsOwnMessages();

private:
    Format m_format;
};

void tst_ProtobufMessage::saysWhatIsWrong()
{
    // A type and bytes, and behind a sign the fields that are shown.
    static const TextRow rows[] = {
        // Field 1000 as varint 150, fixed32, fixed64, bytes "hi" and group { 1: 1 }; 14: a text, to be told apart from
        // 14: varint, but a_string is a string; 16: varint 99, no color.
        {"kinds2.All c03e9601 c53e78563412 c13e8877665544332211 c23e026869 c33e0801c43e 7205776f726473 708001 800163 > "
         "[unknown fields]; a_string; color",
         "1000: varint 150, 1000: fixed32 0x12345678, 1000: fixed64 0x1122334455667788, 1000: bytes 6869 (2 bytes), "
         "1000: group { 1: varint 1 }, 14: varint 128 (but a_string is string), 16: varint 99 (no value of the enum of "
         "color); words; absent"},
        {"kinds2.Strict 1200 > [problems]; needed", "the required field \"needed\" is missing, the required field "
                                                    "\"inner.needed\" is missing; absent"},
        {"kinds3.All 0805 1a03c328ff 08ac02 > plain; [problems]",
         "300; name at byte 4: not valid UTF-8; wrong bytes are shown as question marks"},
        {"kinds3.All 52050801 1201ff 0807 > plain; [problems]",
         "7; names.value at byte 6: not valid UTF-8; wrong bytes are shown as question marks"},
        {"kinds3.All 0805 220a61 > plain; [problems]",
         "5; blob at byte 2: claims 10 bytes where 1 are left; the rest is not decoded"},
        {"kinds3.All 0805 3203 220a61 0806 > plain; [problems]",
         "6; child.blob at byte 4: claims 10 bytes where 1 are left; the rest is not decoded"},
        {"kinds3.All 3202 08ff 0805 > plain; [problems]", // it reaches beyond its part
         "5; child.plain at byte 2: a number breaks off; the rest is not decoded"},
        {"kinds3.All 0805 08ff > plain; [problems]",
         "5; plain at byte 2: a number breaks off; the rest is not decoded"},
        {"kinds3.All 0805 0001 > plain; [problems]", "5; byte 2: no number of a field; the rest is not decoded"},
        {"kinds3.All 0805 0c > plain; [problems]",
         "5; byte 2: the end of a group that did not begin; the rest is not decoded"},
        {"kinds3.All 0805 0f > plain; [problems]", "5; plain at byte 2: an unknown kind of value; the rest is not "
                                                   "decoded"},
        // One state and another that breaks off; a child with a double of eight bytes and one of one, the same with
        // floats, and what follows is read.
        {"kinds3.All 3a020180 3214 4209000000000000f03f40 4a050000803f40 0809 0805 > states; child/numbers; "
         "child/unpacked; child/plain; plain; [problems]",
         "ON (1); 1; 1; 9; 5; states at byte 3: a number breaks off; the rest of the field is not decoded, "
         "child.numbers at byte 16: a number breaks off; the rest of the field is not decoded, "
         "child.unpacked at byte 23: a number breaks off; the rest of the field is not decoded"},
    };
    checkRows(rows, [this](const QString& given) {
        const QString type = given.section(QLatin1Char(' '), 0, 0);
        const QString hex = given.section(text(" > "), 0, 0).mid(type.size());
        const MessageReference decoded = m_format.message(type, QByteArray::fromHex(hex.toLatin1()));
        QStringList texts;
        for (const QString& path : given.section(text(" > "), 1).split(text("; ")))
            texts.append(shown(decoded.get(), path));
        return texts.join(text("; "));
    });
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
    const MessageReference deep = m_format.message(text("kinds3.All"), nested(100));
    QCOMPARE(shown(deep.get(), text("[problems]")), text("absent"));
    QCOMPARE(shown(deep.get(), QString(text("child/")).repeated(100) + text("plain")), text("7"));
    const MessageReference deeper = m_format.message(text("kinds3.All"), nested(5000));
    QVERIFY(shown(deeper.get(), text("[problems]")).endsWith(text("nested too deeply; it is not decoded")));
}

void tst_ProtobufMessage::partsLiveAsLongAsTheirReferences()
{
    const QString type = text("kinds2.All");
    QString error;
    const MessageInfo* const info = m_format.findType(type, &error);
    const FieldInfo* const child = info->getFieldInfo(text("child"));
    Message* const whole = info->newMessage(encode(type, "child { a_string: 'kept' child { a_int32: 3 } }"));
    whole->setTime(12);
    const MessageReference part(child->getValue(whole, 0).getSubMessage());
    QCOMPARE(child->getValue(whole, 0).getSubMessage(), part.get());
    whole->removeReference();
    QCOMPARE(part.get()->getTime(), 12);
    QCOMPARE(shown(part.get(), text("a_string")), text("kept"));
    QCOMPARE(shown(part.get(), text("child/a_int32")), text("3"));
}

void tst_ProtobufMessage::readsOnlyItsOwnMessages()
{
    QString error;
    const MessageInfo* const older = m_format.findType(text("kinds2.All"), &error);
    const MessageReference newer = m_format.message(text("kinds3.All"), QByteArray::fromHex("0805"));
    const MessageReference plain = MessageReference::adopt(new Message(older, QByteArray::fromHex("0805")));
    const MessageReference good = m_format.message(text("kinds2.All"), QByteArray::fromHex("0805"));
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

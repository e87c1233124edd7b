#include "definitions.h"
#include "encoding.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "testbase.h"
#include "textrows.h"

namespace
{

/** Bytes by a schema, and what they mean. */
struct WireRow
{
    const char* schema;
    const char* hex; ///< with spaces
    const char* expected;
};

/** "name=value other=[1, 2] part={...}" of all fields that there are. */
QString shown(const Message* message)
{
    QStringList texts;
    for (const FieldInfo* field : message->getInfo()->getFieldInfos()) {
        QStringList values;
        for (const FieldValue& value : field->getValues(message)) {
            if (!value.isValid())
                values.append(QStringLiteral("missing"));
            else if (value.getSubMessage())
                values.append(QLatin1Char('{') + shown(value.getSubMessage()) + QLatin1Char('}'));
            else
                values.append(field->getInterpretedString(value, true));
        }
        const QString text = values.join(QStringLiteral(", "));
        if (field->isRepeated() && !(field->isOptional() && values.isEmpty()))
            texts.append(field->getName() + QStringLiteral("=[") + text + QLatin1Char(']'));
        else if (!values.isEmpty())
            texts.append(field->getName() + QLatin1Char('=') + text);
    }
    return texts.join(QLatin1Char(' '));
}

} // namespace

/** Messages of ROS and DDS, by all of their schemas. */
class tst_RosMessage : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void cdr();
    void ros1();
    void namesAndTexts();
    void saysWhatIsWrongWithASchema();
    void keepsTheSchemaForRecordings();
    void partsLiveAsLongAsTheirReferences();

private:
    const MessageInfo* make(const char* messages, const char* encoding, const QString& name, const QByteArray& schema,
                            QString* error)
    {
        Encoding* const found = m_definitions.find(QLatin1String(messages));
        return found->makeType({name, messages, encoding, schema}, error);
    }

    template <std::size_t Count>
    QString compare(const char* messages, const char* encoding, const QString& name, const WireRow (&rows)[Count])
    {
        QStringList lines;
        for (const WireRow& row : rows) {
            QString error;
            const MessageInfo* const info = make(messages, encoding, name, row.schema, &error);
            QString actual = error;
            if (info) {
                const MessageReference message =
                    MessageReference::adopt(info->newMessage(QByteArray::fromHex(row.hex)));
                actual = shown(message.get());
            }
            if (actual != text(row.expected))
                lines << QStringLiteral("\"%1\" became\n  %2, not\n  %3")
                             .arg(text(row.schema), actual, text(row.expected));
        }
        return lines.join(QLatin1Char('\n'));
    }

    Definitions m_definitions;
};

void tst_RosMessage::cdr()
{
    static const WireRow rows[] = {
        {"bool a\nbyte b\nchar c\nfloat32 d\nfloat64 e\nint8 f\nuint16 g\nint64 h",
         "00010000 01 ff 41 00 0000803f 000000000000f83f fe 00 0102 00000000 ffffffffffffffff",
         "a=true b=255 c=65 d=1 e=1.5 f=-2 g=513 h=-1"},
        {"uint8 a\nuint32 b\nstring c\nint16 d", "00000000 01 000000 00000102 00000003 6869 00 00 fffe",
         "a=1 b=258 c=hi d=-2"},
        // Texts, with what is no UTF-8 and without their zero byte; wide ones in each of the widths.
        {"string[] a\nstring<=1 b", "00010000 02000000 00000000 02000000 ff00 0000 03000000 616200",
         u8"a=[, \ufffd] b=ab [problems]=[b at byte 20: 2 characters where the schema allows 1]"},
        {"string a", "00010000 01000000 61", "a=a [problems]=[a at byte 4: a text without a zero byte at its end]"},
        {"wstring a\nuint8 b", "00010000 02000000 61006200 07", "a=ab b=7"},
        {"wstring a\nuint8 b", "00010000 04000000 61006200 07", "a=ab b=7"},
        {"wstring a\nuint8 b", "00010000 02000000 61000000 42f60100 07", u8"a=a\U0001f642 b=7"},
        {"wstring a", "00010000 09000000 61",
         "[problems]=[nobody can tell how its wide texts are written; they are shown as if in units of 16 bits, a at "
         "byte 8: takes 18 bytes where 1 are left; the rest is not decoded]"},
        // Bytes are one value; what stands behind an empty sequence is aligned from where it begins.
        {"uint8[] a\nint8[2] b\nint64[] c\nfloat32[<=1] d\nuint8 e",
         "00010000 03000000 010203 fffe 000000 00000000 01000000 0000803f 05",
         "a=010203 (3 bytes) b=fffe (2 bytes) c=[] d=[1] e=5"},
        {"float64[] a\nuint16[2] b", "00010000 01000000 00000000 000000000000f83f 0100 0200", "a=[1.5] b=[1, 2]"},
        {"bool[] a", "00010000 02000000 01 02", "a=[true, true] [problems]=[a[1] at byte 9: 2 is no truth value]"},
        {"uint8[<=1] a", "00010000 02000000 0102",
         "a=0102 (2 bytes) [problems]=[a at byte 4: 2 elements where the schema allows 1]"},
        // Parts have no alignment of their own, and phases of their elements repeat.
        {"u/P[3] a\nP b\n==\nMSG: u/msg/P\nuint32 x\nuint8 y\n==\nMSG: t/P\nuint16 z",
         "00010000 01000000 02 000000 03000000 04 000000 05000000 06 00 0700",
         "a=[{x=1 y=2}, {x=3 y=4}, {x=5 y=6}] b={z=7}"},
        {"uint8 o\nP[] a\nuint8 b\n==\nMSG: t/msg/P\nstring n\nfloat64 x",
         "00010000 09 000000 02000000 02000000 6100 0000 000000000000f03f 01000000 00 000000 0000000000000040 07",
         "o=9 a=[{n=a x=1}, {n= x=2}] b=7"},
        {"", "00010000 00", ""},
        {"", "00010000", ""},
        {"E a\nuint8 b\n==\nMSG: t/E\nuint8 C=1", "00010000 00 05", "a={} b=5"},
        // Times.
        {"builtin_interfaces/Time a\nDuration b\nbuiltin_interfaces/msg/Time[] c\n==\nMSG: "
         "builtin_interfaces/Duration\nint32 sec\nuint32 nanosec",
         "00010000 00e40b54 0065cd1d feffffff 00a3e111 01000000 01000000 00ca9a3b",
         "a=2014-09-07T04:50:08.5Z b=-1.7 s c=[1 s and 1000000000 ns] [problems]=[c[0] at byte 28: 1000000000 "
         "nanoseconds are no part of a second]"},
        // What ends early shows what came before.
        {"uint32 a\nstring b\nuint32 c", "00010000 01000000 09000000 61",
         "a=1 [problems]=[b at byte 12: takes 9 bytes where 1 are left; the rest is not decoded]"},
        {"uint32[] a\nuint8 b", "00010000 ffffffff 01000000 02",
         "a=[1] [problems]=[a at byte 4: 4294967295 elements where 5 bytes are left; the rest is not decoded]"},
        {"P[] a\n==\nMSG: t/P\nuint32 x\nuint32 y", "00010000 02000000 01000000 02000000 03000000",
         "a=[{x=1 y=2}, {x=3}] [problems]=[a at byte 4: 2 elements where 12 bytes are left; the rest is not decoded]"},
        {"P a\n==\nMSG: t/P\nuint32 x\nuint32 y", "00010000 03000000 00",
         "a={x=3} [problems]=[a.y at byte 8: takes 4 bytes where 1 are left; the rest is not decoded]"},
        {"string[] a", "00010000 02000000 02000000 6100",
         "a=[a] [problems]=[a[1] at byte 14: takes 4 bytes where 0 "
         "are left; the rest is not decoded]"},
        {"uint8[] a", "00010000 05000000 0102",
         "a=0102 (2 bytes) [problems]=[a at byte 4: 5 elements where 2 bytes are left; the rest is not decoded]"},
        {"uint8 a", "00010000 01 000000", "a=1"},
        {"uint8 a", "00010000 01 00000000", "a=1 [problems]=[4 bytes are left over at its end]"},
        {"uint8 a", "000100", "[problems]=[shorter than the 4 bytes that say how it is written]"},
        {"uint8 a", "00200000 01", "[problems]=[written in a way that is not known: 00 20]"},
        // Constants name values by habit.
        {"uint8 STATUS_OK=0\nint8 STATUS_BAD=1 # other type\nuint8 STATUS_BUS_A=1\nuint8 status\nuint8 status_bus",
         "00010000 00 01", "status=STATUS_OK (0) status_bus=STATUS_BUS_A (1)"},
    };
    QCOMPARE(compare("cdr", "ros2msg", QStringLiteral("t/msg/T"), rows), QString());
    static const WireRow images[] = {
        {"uint32 height\nuint32 width\nstring encoding\nuint32 step\nuint8[] data",
         "00010000 01000000 02000000 03000000 6d3800 00 02000000 02000000 0102",
         "height=1 width=2 encoding=m8 step=2 data=0102 (2 bytes) [summary]=2 x 1 m8"},
        {"uint32 height\nuint32 width\nuint32 step", "00010000 01000000 02000000 03000000",
         "height=1 width=2 step=3 [summary]=2 x 1 , but 0 bytes where 3 are needed"},
    };
    QCOMPARE(compare("cdr", "ros2msg", QStringLiteral("sensor_msgs/msg/Image"), images), QString());
}

void tst_RosMessage::ros1()
{
    static const WireRow rows[] = {
        {"uint8 a\nint64 b\nstring c\nfloat32[] d\nbyte e\nchar f",
         "01 ffffffffffffffff 02000000 6869 01000000 0000803f fe ff", "a=1 b=-1 c=hi d=[1] e=-2 f=255"},
        {"time a\nduration[1] b\nuint8 c", "00e40b54 0065cd1d feffffff 0065cdff 05",
         "a=2014-09-07T04:50:08.5Z b=[-2.00331648 s] c=5"},
        {"Header a\n==\nMSG: std_msgs/Header\nuint32 seq\ntime stamp\nstring frame_id",
         "01000000 00e40b54 00000000 01000000 78", "a={seq=1 stamp=2014-09-07T04:50:08Z frame_id=x}"},
        {"", "", ""},
        {"E[] a\n==\nMSG: t/E", "03000000",
         "a=[] [problems]=[a at byte 0: 3 elements where 0 bytes are left; the rest is not decoded]"},
        {"string[] a", "02000000 01000000 61 02000000 62",
         "a=[a] [problems]=[a[1] at byte 13: takes 2 bytes where 1 are left; the rest is not decoded]"},
    };
    QCOMPARE(compare("ros1", "ros1msg", QStringLiteral("t/T"), rows), QString());
}

void tst_RosMessage::namesAndTexts()
{
    QString error;
    const MessageInfo* const info = make("cdr", "ros2msg", QStringLiteral("t/msg/T"),
                                         "# What it\n# is.\n#\n# More.\n\n"
                                         "uint8 LEFT = 1 # to the left\n"
                                         "uint8 RIGHT=0x2\n"
                                         "# Where it goes [m/s]\n"
                                         "byte a 7   # or not\n"
                                         "           # really\n"
                                         "\n# not of b\n\nstring<=5 b 'x # y' # z\n"
                                         "float32[2] c [1, 2]\nP d\nstring LAST = end\n"
                                         "=====\nMSG: t/P\nuint8[] e",
                                         &error);
    QVERIFY2(info, qPrintable(error));
    QStringList lines{info->getName() + QStringLiteral(" | ") + info->getShortDescriptiveText()};
    for (const FieldInfo* field : info->getFieldInfos())
        lines.append(QStringList{field->getName(), field->getType().toShortString(), field->getUnit(),
                                 QString(field->getDescription()).replace(QLatin1Char('\n'), QLatin1Char('/'))}
                         .join(QStringLiteral(" | ")));
    const QStringList expected{
        QStringLiteral("t/msg/T | What it is.\nLAST = end"),
        QStringLiteral(
            "a | byte | m/s | Where it goes [m/s] or not really/Default: 7/LEFT = 1: to the left/RIGHT = 0x2"),
        QStringLiteral("b | string<=5 |  | z/Default: 'x # y'"),
        QStringLiteral("c | float32 |  | Default: [1, 2]"),
        QStringLiteral("d | t/msg/P |  | "),
        QStringLiteral("[problems] | text |  | ")};
    QCOMPARE(lines, expected);
}

void tst_RosMessage::saysWhatIsWrongWithASchema()
{
    static const TextRow rows[] = {
        {"uint8 a\n  what", "line 2, column 7: a name is missing behind the type"},
        {"uint8 a\n b c", "line 2, column 2: the type b is not defined"},
        {"Time a", "line 1, column 1: the type Time is not defined"},
        {"uint8 a\nuint8 a", "line 2, column 7: the name a is there twice"},
        {"uint8 A=256", "line 1, column 9: \"256\" is no value of the type uint8"},
        {"uint8[] A=1", "line 1, column 1: uint8[] cannot be a constant"},
        {"uint8[0] a", "line 1, column 1: \"0\" is no size"},
        {"uint8[<=] a", "line 1, column 1: \"uint8[<=]\" is no type"},
        {"int8<=3 a", "line 1, column 1: \"int8<=3\" is no type"},
        {"A a\n==\nMSG: t/A\nT[] t", "t/msg/T is part of itself"},
        {"==\nMSG: t/A\nint8 a\n==\nMSG: t/A\nint8 b", "line 6, column 1: t/msg/A is defined twice"},
        {"==\nMSG: t/A\nint8 a\n==\nMSG: t/msg/A\nint8 a", ""},
        {"==\nMSG: a b", "line 2, column 1: \"a b\" is no name of a type"},
    };
    checkRows(rows, [this](const QString& schema) {
        QString error;
        make("cdr", "ros2msg", QStringLiteral("t/msg/T"), schema.toUtf8(), &error);
        return error;
    });
}

void tst_RosMessage::keepsTheSchemaForRecordings()
{
    QString error;
    const MessageInfo* const info = make("cdr", "ros2msg", QStringLiteral("t/msg/T"), "uint8 a # \xe4", &error);
    QCOMPARE(make("cdr", "ros2msg", QStringLiteral("t/msg/T"), "uint8 a # \xe4", &error), info);
    QVERIFY(make("cdr", "ros2msg", QStringLiteral("t/msg/T"), "uint8 a", &error) != info);
    const TypeSchema schema = m_definitions.schemaOf(info);
    QCOMPARE(schema.name + QLatin1Char(' ') + QString::fromLatin1(schema.messageEncoding + ' ' + schema.encoding),
             QStringLiteral("t/msg/T cdr ros2msg"));
    QCOMPARE(schema.data, QByteArray("uint8 a # \xe4"));
    QStringList errors;
    m_definitions.publish(&errors);
    QCOMPARE(info->getFormatInfo()->getName(), QStringLiteral("cdr"));
}

void tst_RosMessage::partsLiveAsLongAsTheirReferences()
{
    QString error;
    const MessageInfo* const info =
        make("cdr", "ros2msg", QStringLiteral("t/msg/T"), "P[] a\n==\nMSG: t/P\nstring b", &error);
    const FieldInfo* const field = info->getFieldInfo(QStringLiteral("a"));
    Message* const whole = info->newMessage(QByteArray::fromHex("00010000020000000200000061000000020000006200"));
    whole->setTime(12);
    const MessageReference part(field->getValue(whole, 1).getSubMessage());
    QCOMPARE(field->getValue(whole, 1).getSubMessage(), part.get());
    QVERIFY(!field->getValue(whole, 2).isValid());
    // Only its own messages.
    QCOMPARE(field->getValueCount(part.get()), 0u);
    const MessageReference plain = MessageReference::adopt(new Message(info, whole->getData()));
    QCOMPARE(field->getValueCount(plain.get()), 0u);
    whole->removeReference();
    QCOMPARE(part.get()->getTime(), qint64(12));
    QCOMPARE(shown(part.get()), QStringLiteral("b=b"));
}

QTEST_GUILESS_MAIN(tst_RosMessage)

#include "tst_rosmessage.moc"

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

/** "name | type | unit | description" of each field, behind the type's own name and text. */
QString described(const MessageInfo* info)
{
    QStringList lines{info->getName() + QStringLiteral(" | ") +
                      info->getShortDescriptiveText().replace(QLatin1Char('\n'), QLatin1Char(' '))};
    for (const FieldInfo* field : info->getFieldInfos())
        lines.append(QStringList{field->getName(), field->getType().toShortString(), field->getUnit(),
                                 field->getDescription().replace(QLatin1Char('\n'), QLatin1Char('/'))}
                         .join(QStringLiteral(" | ")));
    return lines.join(QLatin1Char('\n'));
}

} // namespace

/** Messages of ROS and DDS, by all of their schemas. */
class tst_RosMessage : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void cdr();
    void ros1();
    void idl();
    void idlOfRos();
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
    // What tells of the calls of a service is made of the service.
    static const WireRow events[] = {{"uint8 a\n---\nuint16 b\n==\nMSG: service_msgs/ServiceEventInfo\nuint8 type",
                                      "00010000 01 000000 01000000 05 000000 00000000",
                                      "info={type=1} request=[{a=5}] response=[]"}};
    QCOMPARE(compare("cdr", "ros2msg", QStringLiteral("t/srv/A_Event"), events), QString());
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
        {"Header a\n==\nMSG: t/Header\nuint32 x\n==\nMSG: std_msgs/Header\nuint8 seq", "01", "a={seq=1}"},
        {"", "", ""},
        {"E[] a\n==\nMSG: t/E", "03000000", "a=[{}, {}, {}]"},
        {"string[] a", "02000000 01000000 61 02000000 62",
         "a=[a] [problems]=[a[1] at byte 13: takes 2 bytes where 1 are left; the rest is not decoded]"},
    };
    QCOMPARE(compare("ros1", "ros1msg", QStringLiteral("t/T"), rows), QString());
}

void tst_RosMessage::idl()
{
    static const WireRow rows[] = {
        {"struct T { boolean a; octet b; char c; short d; unsigned long e; long long f; long double g; wchar h; };",
         "00010000 01 ff 41 00 feff 0000 01000000 00000000 ffffffffffffffff 00000000000000000000000000800040 6100",
         "a=true b=255 c=A d=-2 e=1 f=-1 g=3 h=a"},
        {"#include <x>\n/* * / */ struct T { string<3> a, b; }; // end",
         "00010000 02000000 6100 0000 05000000 6162636400",
         "a=a b=abcd [problems]=[b at byte 12: 4 characters where the "
         "schema allows 3]"},
        // Values of constants, enumerations and masks.
        {"const short A = (1 + 2) * 3 << 1; const long B = -A / 4 % 3; module m { enum E { X, @value(5) Y, Z }; };\n"
         "@bit_bound(8) bitmask M { F, @position(3) G }; struct T { uint8 a[A]; m::E b; M c; sequence<m::E, A | 1> d; "
         "};",
         "00010000 0102030405060708090a0b0c0d0e0f101112 0000 06000000 09 000000 01000000 05000000",
         "a=0102030405060708090a0b0c0d0e0f101112 (18 bytes) b=Z (6) c=F | G d=[Y (5)]"},
        // Names from the inside out; arrays of several dimensions, and of arrays.
        {"typedef long A; module m { typedef short A; module n { struct P { A a; ::A b; }; }; };\n"
         "typedef double V[2]; struct T { m::n::P a; short b[2][2]; sequence<V> c; };",
         "00010000 0100 0000 02000000 0100 0200 0300 0400 01000000 00000000 000000000000f03f 0000000000000040",
         "a={a=1 b=2} b=[1, 2, 3, 4] c=[{values=[1, 2]}]"},
        {"struct B { long a; }; struct T : B { long b; };", "00010000 01000000 02000000", "a=1 b=2"},
        {"enum E { X, Y }; union U switch (E) { case X: long a; case E::Y: default: string b; };\nstruct T { U a, b; "
         "};",
         "00010000 00000000 07000000 09000000 02000000 7800", "a={_d=X (0) a=7} b={_d=9 b=x}"},
        {"union U switch (char) { case 'x': long a; }; struct T { U a; octet b; };", "00010000 79 07", "a={_d=y} b=7"},
        // Optional members of XCDR1 have a header, or all have it.
        {"struct T { octet a; @optional long b; @optional long c; octet d; };",
         "00010000 01 000000 0100 0400 07000000 0200 0000 05", "a=1 b=7 d=5"},
        {"struct T { octet a; @optional string b; octet d; };", "00010000 01 000000 023f 0000 05",
         "a=1 [problems]=[b at byte 5: its head makes no sense or breaks off; the rest is not decoded]"},
        {"@mutable struct T { @id(5) octet a; long b; double c; };",
         "00030000 0700 0800 000000000000f03f 0600 0400 07000000 0900 0400 00000000 017f 0800 "
         "05000000 01000000 09 "
         "000000 "
         "023f 0000",
         "a=9 b=7 c=1 [unknown fields]=[9: 00000000 (4 bytes)]"},
        {"@mutable struct T { long a; };", "00030000 0900 0400 00000000 0000 0400 01",
         "[unknown fields]=[9: 00000000 (4 bytes)] [problems]=[byte 17: its list of "
         "members breaks off; the rest is "
         "not decoded]"},

        // XCDR2.
        {"struct T { octet a; double b; @optional octet c; @optional octet d; };",
         "00070000 01 000000 000000000000f03f 01 09 00", "a=1 b=1 c=9"},
        {"struct T { octet a; };", "00110000 01", "a=1"},
        // What a sender of a newer version has more, and one of an older less.
        {"@appendable struct T { octet a; long b; octet c; };", "00090000 0c000000 01 000000 02000000 03 04 05 06",
         "a=1 b=2 c=3"},
        {"@appendable struct T { octet a; long b; octet c; };", "00090000 08000000 01 000000 02000000", "a=1 b=2"},
        {"@appendable struct P { octet a; }; @final struct T { P a; octet b; };", "00070000 01000000 07 08",
         "a={a=7} b=8"},
        {"@appendable struct T { octet a; };", "00150000 02000000 01",
         "a=1 [problems]=[byte 8: takes 2 bytes where 1 are left; the rest is not decoded]"},
        // Sizes before collections: by the standard, without those of enumerations, and without any.
        {"struct T { sequence<string> a; octet b; };", "00070000 10000000 02000000 02000000 6100 0000 00000000 07",
         "a=[a, ] b=7"},
        {"struct T { sequence<string> a; octet b; };", "00070000 02000000 02000000 6100 0000 00000000 07",
         "a=[a, ] b=7"},
        {"enum E { X, Y }; struct T { E a[2]; octet b; };", "00070000 08000000 01000000 00000000 07",
         "a=[Y (1), X (0)] b=7"},
        {"enum E { X, Y }; struct T { E a[2]; octet b; };", "00070000 01000000 00000000 07", "a=[Y (1), X (0)] b=7"},
        {"enum E { X, Y }; @appendable struct T { sequence<E> a; long b; };",
         "00090000 18000000 04000000 00000000 01000000 00000000 01000000 05000000",
         "a=[X (0), Y (1), X (0), Y (1)] b=5"},
        // Members with numbers, in any order and with sizes in any way.
        {"@mutable struct T { long a; @id(7) string b; sequence<long> c; octet d; long e; };",
         "000b0000 38000000 08000060 01000000 05000000 070000c0 06000000 02000000 7800 0000 09000000 08 000000 "
         "00000020 "
         "01000000 0a000040 04000000 02000000",
         "a=1 b=x c=[5] d=8 e=2"},
    };
    QCOMPARE(compare("cdr", "omgidl", QStringLiteral("T"), rows), QString());
}

void tst_RosMessage::idlOfRos()
{
    const QByteArray schema =
        "==\nIDL: t/msg/T\n"
        "#include \"u/msg/P.idl\"\n#include \"builtin_interfaces/msg/Time.idl\"\n"
        "module t { module msg {\n"
        "typedef u::msg::P u__msg__P__2[2];\n"
        "module T_Constants { const octet KIND_A = 1; @verbatim (language=\"comment\", text=\"Cs\")\n"
        "const string NAME = \"x\" \"y\"; };\n"
        "@verbatim (language=\"comment\", text=\"It\" \"\\n\" \"is.\")\n"
        "struct T { @verbatim (language=\"comment\", text=\n \"A kind.\") @default (value=3)\n"
        "@key octet kind; @unit(value=\"m/s\") u__msg__P__2 p;\n"
        "builtin_interfaces::msg::Time t; }; }; };\n"
        "==\nIDL: u/msg/P\nmodule u { module msg { struct P { @future(x=(1, 2)) uint8 a; }; }; };\n";
    QString error;
    const MessageInfo* const info = make("cdr", "ros2idl", QStringLiteral("t/msg/T"), schema, &error);
    QVERIFY2(info, qPrintable(error));
    QCOMPARE(described(info), text("t/msg/T | It is.\n"
                                   "kind | octet |  | A kind./Default: 3/NAME = xy\n"
                                   "p | u/msg/P | m/s | \n"
                                   "t | builtin_interfaces/msg/Time |  | \n"
                                   "[problems] | text |  | "));
    const WireRow rows[] = {{schema.constData(), "00010000 01 0203 00 05000000 00000000",
                             "kind=KIND_A (1) p=[{a=2}, {a=3}] t=1970-01-01T00:00:05Z"}};
    QCOMPARE(compare("cdr", "ros2idl", QStringLiteral("t/msg/T"), rows), QString());
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
    QCOMPARE(described(info),
             text("t/msg/T | What it is. LAST = end\n"
                  "a | byte | m/s | Where it goes [m/s] or not really/Default: 7/LEFT = 1: to the left/RIGHT = 0x2\n"
                  "b | string<=5 |  | z/Default: 'x # y'\n"
                  "c | float32 |  | Default: [1, 2]\n"
                  "d | t/msg/P |  | \n"
                  "[problems] | text |  | "));
}

void tst_RosMessage::saysWhatIsWrongWithASchema()
{
    static const TextRow rows[] = {
        {u8"\ufeffuint8 a\r\n# \u20ac\r\n\tuint8\tb\r", ""},
        {"uint8 a\n  what", "line 2, column 7: a name is missing behind the type"},
        {"uint8 a\n b c", "line 2, column 2: the type b is not defined"},
        {"Time a", "line 1, column 1: the type Time is not defined"},
        {"uint8 a\nuint8 a", "line 2, column 8: the name a is there twice"},
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
    static const TextRow idl[] = {
        {"struct T { long a };", "line 1, column 19: \";\" is expected here"},
        {"struct T { A a; };", "line 1, column 12: the type A is not defined"},
        {"struct T { long a, a; };", "line 1, column 21: the name a is there twice"},
        {"struct T { long a[0]; };", "line 1, column 20: \"0\" is no size"},
        {"struct T { long a[1/0]; };", "line 1, column 22: a value that cannot be calculated"},
        {"const octet A = 256;", "line 1, column 17: \"256\" is no value of the type octet"},
        {"struct T { map<long, long> a; };", "line 1, column 12: the type map is not defined"},
        {"interface T {};", "line 1, column 1: \"interface\" is no definition that can be read"},
        {"module m {", "line 1, column 1: \"}\" is expected here"},
        {"struct T { string a = \"", "line 1, column 23: the text does not end"},
        {"struct A { long a; }; struct A { long a; };", "line 1, column 32: A is defined twice"},
        {u8"struct T { long a; \u07c2", "line 1, column 20: a type is expected here"},
        {"struct S;", "there is no definition of T"},
    };
    const auto errorOf = [this](const char* encoding, const char* name) {
        return [=](const QString& schema) {
            QString error;
            make("cdr", encoding, QLatin1String(name), schema.toUtf8(), &error);
            return error;
        };
    };
    checkRows(rows, errorOf("ros2msg", "t/msg/T"));
    checkRows(idl, errorOf("omgidl", "T"));
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
    const MessageInfo* const info = make("cdr", "ros2msg", QStringLiteral("t/msg/T"),
                                         "P[] a\n==\nMSG: t/P\nstring b\nQ q\n==\nMSG: t/Q\nstring d", &error);
    const FieldInfo* const field = info->getFieldInfo(QStringLiteral("a"));
    const FieldInfo* const inner = field->getType().getSubMessageInfo()->getFieldInfo(QStringLiteral("q"));
    const QByteArray bytes = QByteArray::fromHex("00010000030000000200000061000000010000000000000002000000620000000100"
                                                 "00000000000002000000630000000200000064000000");
    Message* const whole = info->newMessage(bytes);
    whole->setTime(12);
    QCOMPARE(shown(field->getValue(whole, 0).getSubMessage()), QStringLiteral("b=a q={d=}"));
    MessageReference part(field->getValue(whole, 2).getSubMessage());
    QCOMPARE(field->getValue(whole, 2).getSubMessage(), part.get());
    QVERIFY(!field->getValue(whole, 3).isValid());
    // Only its own messages.
    QCOMPARE(field->getValueCount(part.get()), 0u);
    const MessageReference plain = MessageReference::adopt(new Message(info, QByteArray(bytes.constData(), 4)));
    QCOMPARE(field->getValueCount(plain.get()), 0u);
    whole->removeReference();
    QCOMPARE(part.get()->getTime(), qint64(12));
    QCOMPARE(shown(part.get()), QStringLiteral("b=c q={d=d}"));
    const MessageReference deep(inner->getValue(part.get(), 0).getSubMessage());
    part = MessageReference();
    QVERIFY(!bytes.isDetached());
    QCOMPARE(shown(deep.get()), QStringLiteral("d=d"));
}

QTEST_GUILESS_MAIN(tst_RosMessage)

#include "tst_rosmessage.moc"

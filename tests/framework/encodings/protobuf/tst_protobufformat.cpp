#include "protobufkinds.h"
#include "testbase.h"
#include "textrows.h"

using namespace ProtobufKinds;

/** How fields and their values are read: what they are, and that they are what the compiler reads. */
class tst_ProtobufFormat : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void describesFields();
    void describesTypes();
    void decodesAsTheCompilerDoes();
    void showsAbsenceAndDefaults();
    void showsValues();

private:
    Format m_format;
};

void tst_ProtobufFormat::describesFields()
{
    // "name | type | code of the type | flags | unit | description"
    static const TextRow rows[] = {
        {"kinds2.All a_int32", "a_int32 | int32 | 1 | optional |  |"},
        {"kinds2.All a_fixed64", "a_fixed64 | fixed64 | 2 | optional |  |"},
        {"kinds2.All a_double", "a_double | double | 5 | optional |  | in metres"},
        {"kinds2.All a_bytes", "a_bytes | bytes | 9 | optional |  |"},
        {"kinds2.All color", "color | kinds2.Color | 1 | optional |  | The color of it."},
        {"kinds2.All child", "child | kinds2.All | 6 | optional |  |"},
        {"kinds2.All children", "children | kinds2.All | 6 | repeated |  |"},
        {"kinds2.All step", "step | kinds2.All.Step | 6 | repeated |  |"},
        {"kinds2.All by_name", "by_name | kinds2.All.ByNameEntry | 6 | repeated |  |"},
        {"kinds2.All.ByNameEntry key", "key | string | 8 |  |  |"},
        {"kinds2.All text", "text | string | 8 | optional |  |"},
        {"kinds2.All [kinds2.extra]", "[kinds2.extra] | int32 | 1 | optional |  |"},
        {"kinds2.All [kinds2.extras]", "[kinds2.extras] | kinds2.All | 6 | repeated |  |"},
        {"kinds2.Strict needed", "needed | int32 | 1 |  |  |"},
        {"kinds3.All plain", "plain | int32 | 1 |  |  |"},
        {"kinds3.All present", "present | int32 | 1 | optional |  |"},
        {"kinds3.All child", "child | kinds3.All | 6 | optional |  |"},
        {"kinds3.All number", "number | int64 | 1 | optional |  |"},
        {"kinds3.All begin", "begin | google.protobuf.Timestamp | 8 | optional |  |"},
        {"kinds3.All secret", "secret | string | 8 | confidential |  |"},
        {"kinds3.All speed", "speed | double | 5 | secondary | m/s |"},
    };
    checkRows(rows, [this](const QString& given) {
        QString error;
        const MessageInfo* const info = m_format.findType(given.section(QLatin1Char(' '), 0, 0), &error);
        const FieldInfo* const field = info ? info->getFieldInfo(given.section(QLatin1Char(' '), 1)) : nullptr;
        return field ? rowText(field).trimmed() : text("no such field");
    });
}

void tst_ProtobufFormat::describesTypes()
{
    QCOMPARE(m_format.getLoadedTypeNames().mid(0, 3),
             (QStringList{text("kinds2.All"), text("kinds2.Strict"), text("kinds3.All")}));
    QString error;
    const MessageInfo* const info = m_format.findType(text("kinds2.All"), &error);
    QCOMPARE(info->getShortDescriptiveText(), text("Everything that the older syntax has."));
    QVERIFY(info->isMain());
    const FieldInfo::Enumerator below = info->getFieldInfo(text("color"))->getEnumerators().at(1);
    QCOMPARE(below.name + QLatin1Char(' ') + below.description, text("NEGATIVE below zero"));
    // A type that contains itself: parts of parts are described by the same.
    const MessageInfo* const part = info->getFieldInfo(text("child"))->getType().getSubMessageInfo();
    QVERIFY(!part->isMain());
    QCOMPARE(part->getFieldInfo(text("children"))->getType().getSubMessageInfo(), part);
    QCOMPARE(m_format.findType(text("kinds2.Nothing"), &error), nullptr);
    QCOMPARE(error, text("no schema has a message type \"kinds2.Nothing\""));
}

void tst_ProtobufFormat::decodesAsTheCompilerDoes()
{
    static const char* const rows[][2] = {
        {"kinds2.All", ""},
        {"kinds2.All", "a_int32: -2147483648 a_int64: -9223372036854775808 a_uint32: 0 a_uint64: 0 "
                       "a_sint32: -2147483648 a_sint64: -9223372036854775808 a_fixed32: 0 a_fixed64: 0 "
                       "a_sfixed32: -2147483648 a_sfixed64: -9223372036854775808 a_float: -inf a_double: nan "
                       "a_bool: false a_string: '' a_bytes: '' color: NEGATIVE "
                       "packed: [-9223372036854775808, 9223372036854775807]"},
        {"kinds2.All", "a_int32: 2147483647 a_int64: 9223372036854775807 a_uint32: 4294967295 "
                       "a_uint64: 18446744073709551615 a_sint32: 2147483647 a_sint64: 9223372036854775807 "
                       "a_fixed32: 4294967295 a_fixed64: 18446744073709551615 a_sfixed32: 2147483647 "
                       "a_sfixed64: 9223372036854775807 a_float: 3.4028235e38 a_double: 2.2250738585072014e-308 "
                       "a_bool: true a_string: '\xef\xbb\xbf\xc3\xa4\"\\n' a_bytes: '\\000\\377' color: LIME"},
        {"kinds2.All", "child { child { children {} children { a_int32: 5 unpacked: [1, 2] } } } Pair { left: -1 } "
                       "Step { name: 'x' } Step {} all { text: 'inner' } colors: [RED, NEGATIVE, LIME] "
                       "blobs: ['', 'b'] doubles: [0.1, 1e300, -0.0] [kinds2.extra]: -7 [kinds2.extras] {} "
                       "[kinds2.extras] { [kinds2.extra]: 1 }"},
        {"kinds2.All", "by_name { key: '\xef\xbb\xbf' 'b' value: RED } by_name { key: 'a' value: NEGATIVE } "
                       "by_name { key: '' } by_number { key: -9 value { a_int32: 1 } } by_number { key: 4 }"},
        {"kinds3.All", "plain: 0 present: 0 name: '' state: UNKNOWN"},
        {"kinds3.All", "plain: 3 name: 'n' blob: 'b' state: 77 child { child {} } states: [ON, 99, -1] "
                       "numbers: [1, nan] unpacked: [0.1, -2] names { key: 2 value: 'two' } "
                       "halves { key: true value { plain: 1 } } halves { key: false } "
                       "wait { seconds: -5 nanos: -500000000 } begin { seconds: 1718713540 nanos: 5 } laps {} "
                       "laps { nanos: 1 } words: ['', 'w'] big: 18446744073709551615"},
    };
    for (const auto& row : rows) {
        const QString type = text(row[0]);
        const QByteArray bytes = encode(type, row[1]);
        const MessageReference decoded = m_format.message(type, bytes);
        const ProtocLines ours(decoded.get());
        const ProtocLines theirs(compile(text("decode"), type, bytes), ours);
        QCOMPARE(static_cast<const QStringList&>(ours), static_cast<const QStringList&>(theirs));
        QVERIFY(ours.size() >= QByteArray(row[1]).count(": ") / 3);
        QCOMPARE(shown(decoded.get(), text("[problems]")), text("absent"));
    }
}

void tst_ProtobufFormat::showsAbsenceAndDefaults()
{
    const MessageReference older = m_format.message(text("kinds2.All"), QByteArray());
    const MessageReference newer = m_format.message(text("kinds3.All"), QByteArray());
    QStringList present;
    for (const Message* decoded : {older.get(), newer.get()})
        for (const FieldInfo* field : decoded->getInfo()->getFieldInfos())
            if (field->isPresentIn(decoded))
                present << field->getName() + QLatin1Char('=') + shown(decoded, field->getName());
    QCOMPARE(present, (QStringList{text("plain=0"), text("name="), text("blob=(0 bytes)"), text("state=UNKNOWN (0)"),
                                   text("secret="), text("speed=0 m/s"), text("big=0")}));
    // Something else of a oneof takes the place of what was there.
    const MessageReference chosen = m_format.message(
        text("kinds2.All"), encode(text("kinds2.All"), "number: 3") + encode(text("kinds2.All"), "text: 'later'"));
    QCOMPARE(shown(chosen.get(), text("number")), text("absent"));
    QCOMPARE(shown(chosen.get(), text("text")), text("later"));
}

void tst_ProtobufFormat::showsValues()
{
    // The fields, and behind a sign the one that is shown.
    static const TextRow rows[] = {
        {"kinds2.All color: LIME > color", "GREEN (7)"}, // the first of two names
        {"kinds2.All color: NEGATIVE > color", "NEGATIVE (-2)"},
        {"kinds3.All state: -77 > state", "-77"},
        {"kinds2.All blobs: ['\\001\\377', 'a'] > blobs", "01ff (2 bytes), 61 (1 byte)"},
        {"kinds2.All a_bytes: 'aaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaaa' > a_bytes",
         "6161616161616161616161616161616161616161616161616161616161616161616161616161616161616161616161616161616161616"
         "1616"
         "161616161616161\xe2\x80\xa6 (65 bytes)"},
        {"kinds3.All speed: 2.5 > speed", "2.5 m/s"},
        {"kinds2.All by_name { key: 'a' value: NEGATIVE } > by_name/value", "NEGATIVE (-2)"},
        {"kinds2.All by_number { key: 4 } > by_number/value/children", "absent"},
        {"kinds2.All children {} children { child { a_int32: 4 } } > children[1]/child/a_int32", "4"},
        {"kinds3.All begin { seconds: 1718713540 nanos: 120000000 } > begin", "2024-06-18T12:25:40.12Z"},
        {"kinds3.All begin { seconds: -1 nanos: 999999999 } > begin", "1969-12-31T23:59:59.999999999Z"},
        {"kinds3.All begin { seconds: 1 nanos: -1 } > begin", "1 s and -1 ns"},
        {"kinds3.All begin { seconds: 5 nanos: 7 } > begin/nanos", "7 ns"},
        {"kinds3.All laps { seconds: -1 nanos: -500000000 } laps { nanos: -1 } "
         "laps { seconds: 315576000000 nanos: 999999999 } > laps",
         "-1.5 s, -0.000000001 s, 315576000000.999999999 s"},
        {"kinds3.All laps { seconds: 1 } laps { seconds: -2 } > laps/seconds", "1 s, -2 s"},
    };
    checkRows(rows, [this](const QString& given) {
        const QString type = given.section(QLatin1Char(' '), 0, 0);
        const QString fields = given.section(text(" > "), 0, 0).mid(type.size());
        const MessageReference decoded = m_format.message(type, encode(type, fields.toUtf8()));
        return shown(decoded.get(), given.section(text(" > "), 1));
    });
}

QTEST_GUILESS_MAIN(tst_ProtobufFormat)

#include "tst_protobufformat.moc"

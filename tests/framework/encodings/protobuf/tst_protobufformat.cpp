#include "protobufkinds.h"
#include "testbase.h"

using namespace ProtobufKinds;

/** How fields and their values are read: what they are, and that they are what the compiler reads. */
class tst_ProtobufFormat : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void describesFields_data();
    void describesFields();
    void describesTypes();
    void decodesAsTheCompilerDoes_data();
    void decodesAsTheCompilerDoes();
    void showsAbsenceAndDefaults();
    void showsValues_data();
    void showsValues();

private:
    Format m_format;
};

void tst_ProtobufFormat::describesFields_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("expected");

    QTest::newRow("int32") << "kinds2.All"
                           << "a_int32"
                           << "a_int32 | int32 | 1 | optional |  | ";
    QTest::newRow("fixed64") << "kinds2.All"
                             << "a_fixed64"
                             << "a_fixed64 | fixed64 | 2 | optional |  | ";
    QTest::newRow("comment behind") << "kinds2.All"
                                    << "a_double"
                                    << "a_double | double | 5 | optional |  | in metres";
    QTest::newRow("bytes") << "kinds2.All"
                           << "a_bytes"
                           << "a_bytes | bytes | 9 | optional |  | ";
    QTest::newRow("enum") << "kinds2.All"
                          << "color"
                          << "color | kinds2.Color | 1 | optional |  | The color of it.";
    QTest::newRow("sub-message") << "kinds2.All"
                                 << "child"
                                 << "child | kinds2.All | 6 | optional |  | ";
    QTest::newRow("sub-messages") << "kinds2.All"
                                  << "children"
                                  << "children | kinds2.All | 6 | repeated |  | ";
    QTest::newRow("group") << "kinds2.All"
                           << "step"
                           << "step | kinds2.All.Step | 6 | repeated |  | ";
    QTest::newRow("map") << "kinds2.All"
                         << "by_name"
                         << "by_name | kinds2.All.ByNameEntry | 6 | repeated |  | ";
    QTest::newRow("map key") << "kinds2.All.ByNameEntry"
                             << "key"
                             << "key | string | 8 |  |  | ";
    QTest::newRow("member of a oneof") << "kinds2.All"
                                       << "text"
                                       << "text | string | 8 | optional |  | ";
    QTest::newRow("extension") << "kinds2.All"
                               << "[kinds2.extra]"
                               << "[kinds2.extra] | int32 | 1 | optional |  | ";
    QTest::newRow("extensions") << "kinds2.All"
                                << "[kinds2.extras]"
                                << "[kinds2.extras] | kinds2.All | 6 | repeated |  | ";
    QTest::newRow("required") << "kinds2.Strict"
                              << "needed"
                              << "needed | int32 | 1 |  |  | ";
    QTest::newRow("proto3") << "kinds3.All"
                            << "plain"
                            << "plain | int32 | 1 |  |  | ";
    QTest::newRow("proto3 optional") << "kinds3.All"
                                     << "present"
                                     << "present | int32 | 1 | optional |  | ";
    QTest::newRow("proto3 message") << "kinds3.All"
                                    << "child"
                                    << "child | kinds3.All | 6 | optional |  | ";
    QTest::newRow("proto3 oneof") << "kinds3.All"
                                  << "number"
                                  << "number | int64 | 1 | optional |  | ";
    QTest::newRow("time") << "kinds3.All"
                          << "begin"
                          << "begin | google.protobuf.Timestamp | 8 | optional |  | ";
    QTest::newRow("confidential") << "kinds3.All"
                                  << "secret"
                                  << "secret | string | 8 | confidential |  | ";
    QTest::newRow("role") << "kinds3.All"
                          << "speed"
                          << "speed | double | 5 | secondary | m/s | ";
}

void tst_ProtobufFormat::describesFields()
{
    QFETCH(QString, type);
    QFETCH(QString, field);
    QFETCH(QString, expected);
    QString error;
    const MessageInfo* const info = m_format.findType(type, &error);
    QVERIFY2(info, qPrintable(error));
    QVERIFY(info->getFieldInfo(field));
    QCOMPARE(rowText(info->getFieldInfo(field)), expected);
}

void tst_ProtobufFormat::describesTypes()
{
    QCOMPARE(
        m_format.getLoadedTypeNames().mid(0, 3),
        (QStringList{QStringLiteral("kinds2.All"), QStringLiteral("kinds2.Strict"), QStringLiteral("kinds3.All")}));
    QString error;
    const MessageInfo* const info = m_format.findType(QStringLiteral("kinds2.All"), &error);
    QCOMPARE(info->getShortDescriptiveText(), QStringLiteral("Everything that the older syntax has."));
    QVERIFY(info->isMain());
    const FieldInfo::Enumerator below = info->getFieldInfo(QStringLiteral("color"))->getEnumerators().at(1);
    QCOMPARE(below.name + QLatin1Char(' ') + below.description, QStringLiteral("NEGATIVE below zero"));
    // A type that contains itself: parts of parts are described by the same.
    const MessageInfo* const part = info->getFieldInfo(QStringLiteral("child"))->getType().getSubMessageInfo();
    QVERIFY(!part->isMain());
    QCOMPARE(part->getFieldInfo(QStringLiteral("children"))->getType().getSubMessageInfo(), part);
    QCOMPARE(m_format.findType(QStringLiteral("kinds2.Nothing"), &error), nullptr);
    QCOMPARE(error, QStringLiteral("no schema has a message type \"kinds2.Nothing\""));
}

void tst_ProtobufFormat::decodesAsTheCompilerDoes_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("text");

    QTest::newRow("nothing") << "kinds2.All" << QByteArray();
    QTest::newRow("least") << "kinds2.All"
                           << QByteArray("a_int32: -2147483648 a_int64: -9223372036854775808 a_uint32: 0 a_uint64: 0 "
                                         "a_sint32: -2147483648 a_sint64: -9223372036854775808 a_fixed32: 0 "
                                         "a_fixed64: 0 a_sfixed32: -2147483648 a_sfixed64: -9223372036854775808 "
                                         "a_float: -inf a_double: nan a_bool: false a_string: '' a_bytes: '' "
                                         "color: NEGATIVE packed: [-9223372036854775808, 9223372036854775807]");
    QTest::newRow("greatest")
        << "kinds2.All"
        << QByteArray("a_int32: 2147483647 a_int64: 9223372036854775807 a_uint32: 4294967295 "
                      "a_uint64: 18446744073709551615 a_sint32: 2147483647 "
                      "a_sint64: 9223372036854775807 a_fixed32: 4294967295 "
                      "a_fixed64: 18446744073709551615 a_sfixed32: 2147483647 "
                      "a_sfixed64: 9223372036854775807 a_float: 3.4028235e38 "
                      "a_double: 2.2250738585072014e-308 a_bool: true a_string: '\xef\xbb\xbf\xc3\xa4\"\\n' "
                      "a_bytes: '\\000\\377' color: LIME");
    QTest::newRow("deeper") << "kinds2.All"
                            << QByteArray("child { child { children {} children { a_int32: 5 unpacked: [1, 2] } } } "
                                          "Pair { left: -1 } Step { name: 'x' } Step {} "
                                          "all { text: 'inner' } colors: [RED, NEGATIVE, LIME] blobs: ['', 'b'] "
                                          "doubles: [0.1, 1e300, -0.0] [kinds2.extra]: -7 [kinds2.extras] {} "
                                          "[kinds2.extras] { [kinds2.extra]: 1 }");
    QTest::newRow("maps") << "kinds2.All"
                          << QByteArray(
                                 "by_name { key: '\xef\xbb\xbf' 'b' value: RED } by_name { key: 'a' value: NEGATIVE } "
                                 "by_name { key: '' } by_number { key: -9 value { a_int32: 1 } } "
                                 "by_number { key: 4 }");
    QTest::newRow("proto3 defaults") << "kinds3.All" << QByteArray("plain: 0 present: 0 name: '' state: UNKNOWN");
    QTest::newRow("proto3") << "kinds3.All"
                            << QByteArray("plain: 3 name: 'n' blob: 'b' state: 77 child { child {} } "
                                          "states: [ON, 99, -1] numbers: [1, nan] unpacked: [0.1, -2] "
                                          "names { key: 2 value: 'two' } halves { key: true value { plain: 1 } } "
                                          "halves { key: false } wait { seconds: -5 nanos: -500000000 } "
                                          "begin { seconds: 1718713540 nanos: 5 } laps {} laps { nanos: 1 } "
                                          "words: ['', 'w'] big: 18446744073709551615");
}

void tst_ProtobufFormat::decodesAsTheCompilerDoes()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, text);
    const QByteArray bytes = encode(type, text);
    QVERIFY(text.isEmpty() || type == QLatin1String("kinds3.All") || !bytes.isEmpty());
    const QByteArray printed = compile(QStringLiteral("decode"), type, bytes);
    const MessageReference decoded = m_format.message(type, bytes);
    const ProtocComparison comparison(decoded.get(), printed);
    QCOMPARE(comparison.differences, QStringList());
    QVERIFY(comparison.valuesCompared >= text.count(": ") / 3);
    QCOMPARE(shown(decoded.get(), QStringLiteral("[problems]")), QStringLiteral("absent"));
}

void tst_ProtobufFormat::showsAbsenceAndDefaults()
{
    const MessageReference older = m_format.message(QStringLiteral("kinds2.All"), QByteArray());
    const MessageReference newer = m_format.message(QStringLiteral("kinds3.All"), QByteArray());
    QStringList present;
    for (const Message* decoded : {older.get(), newer.get()})
        for (const FieldInfo* field : decoded->getInfo()->getFieldInfos())
            if (field->isPresentIn(decoded))
                present << field->getName() + QLatin1Char('=') + shown(decoded, field->getName());
    QCOMPARE(present, (QStringList{QStringLiteral("plain=0"), QStringLiteral("name="), QStringLiteral("blob=(0 bytes)"),
                                   QStringLiteral("state=UNKNOWN (0)"), QStringLiteral("secret="),
                                   QStringLiteral("speed=0 m/s"), QStringLiteral("big=0")}));
    // Something else of a oneof takes the place of what was there.
    const MessageReference chosen =
        m_format.message(QStringLiteral("kinds2.All"), encode(QStringLiteral("kinds2.All"), "number: 3") +
                                                           encode(QStringLiteral("kinds2.All"), "text: 'later'"));
    QCOMPARE(shown(chosen.get(), QStringLiteral("number")), QStringLiteral("absent"));
    QCOMPARE(shown(chosen.get(), QStringLiteral("text")), QStringLiteral("later"));
}

void tst_ProtobufFormat::showsValues_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("expected");

    QTest::newRow("first of two names") << "kinds2.All" << QByteArray("color: LIME") << "color"
                                        << "GREEN (7)";
    QTest::newRow("negative enum") << "kinds2.All" << QByteArray("color: NEGATIVE") << "color"
                                   << "NEGATIVE (-2)";
    QTest::newRow("unknown enum number") << "kinds3.All" << QByteArray("state: -77") << "state"
                                         << "-77";
    QTest::newRow("bytes") << "kinds2.All" << QByteArray("blobs: ['\\001\\377', 'a']") << "blobs"
                           << "01ff (2 bytes), 61 (1 byte)";
    QTest::newRow("many bytes") << "kinds2.All" << QByteArray("a_bytes: '") + QByteArray(65, 'a') + "'"
                                << "a_bytes"
                                << QString(QStringLiteral("61")).repeated(64) + QChar(0x2026) +
                                       QStringLiteral(" (65 bytes)");
    QTest::newRow("unit") << "kinds3.All" << QByteArray("speed: 2.5") << "speed"
                          << "2.5 m/s";
    QTest::newRow("entries") << "kinds2.All" << QByteArray("by_name { key: 'a' value: NEGATIVE }") << "by_name/value"
                             << "NEGATIVE (-2)";
    QTest::newRow("entry without value") << "kinds2.All" << QByteArray("by_number { key: 4 }")
                                         << "by_number/value/children"
                                         << "absent";
    QTest::newRow("deep") << "kinds2.All" << QByteArray("children {} children { child { a_int32: 4 } }")
                          << "children[1]/child/a_int32"
                          << "4";
    QTest::newRow("time") << "kinds3.All" << QByteArray("begin { seconds: 1718713540 nanos: 120000000 }") << "begin"
                          << "2024-06-18T12:25:40.12Z";
    QTest::newRow("time before 1970") << "kinds3.All" << QByteArray("begin { seconds: -1 nanos: 999999999 }") << "begin"
                                      << "1969-12-31T23:59:59.999999999Z";
    QTest::newRow("no time") << "kinds3.All" << QByteArray("begin { seconds: 1 nanos: -1 }") << "begin"
                             << "1 s and -1 ns";
    QTest::newRow("part of a time") << "kinds3.All" << QByteArray("begin { seconds: 5 nanos: 7 }") << "begin/nanos"
                                    << "7 ns";
    QTest::newRow("durations") << "kinds3.All"
                               << QByteArray("laps { seconds: -1 nanos: -500000000 } laps { nanos: -1 } "
                                             "laps { seconds: 315576000000 nanos: 999999999 }")
                               << "laps"
                               << "-1.5 s, -0.000000001 s, 315576000000.999999999 s";
    QTest::newRow("parts of durations") << "kinds3.All" << QByteArray("laps { seconds: 1 } laps { seconds: -2 }")
                                        << "laps/seconds"
                                        << "1 s, -2 s";
}

void tst_ProtobufFormat::showsValues()
{
    QFETCH(QString, type);
    QFETCH(QByteArray, text);
    QFETCH(QString, path);
    QFETCH(QString, expected);
    const MessageReference decoded = m_format.message(type, encode(type, text));
    QCOMPARE(shown(decoded.get(), path), expected);
}

QTEST_GUILESS_MAIN(tst_ProtobufFormat)

#include "tst_protobufformat.moc"

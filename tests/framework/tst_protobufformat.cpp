#include "formatregistry.h"
#include "messagereference.h"
#include "protobufformat.h"
#include "protoctree.h"
#include "testbase.h"

#include <QTemporaryDir>

#include <memory>

namespace
{

const QString dataFolder = QStringLiteral(CORVEL_PROTOBUF_DATA);
const QString importFolder = dataFolder + QStringLiteral("/imports");

QString fileOf(const QString& type)
{
    return dataFolder + QLatin1Char('/') + type.section(QLatin1Char('.'), 0, 0) + QStringLiteral(".proto");
}

QStringList protocArguments(const QString& what, const QString& type)
{
    return {QStringLiteral("--%1=%2").arg(what, type), QStringLiteral("-I") + dataFolder,
            QStringLiteral("-I") + importFolder, fileOf(type)};
}

QByteArray encode(const QString& type, const QByteArray& text)
{
    return runProtoc(protocArguments(QStringLiteral("encode"), type), text);
}

} // namespace

/** How messages of Protocol Buffers are mapped to fields. */
class tst_ProtobufFormat : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void describesFields_data();
    void describesFields();
    void describesTypes();
    void decodesAsTheCompilerDoes_data();
    void decodesAsTheCompilerDoes();
    void showsAbsenceAndDefaults();
    void showsValues_data();
    void showsValues();
    void showsUnknownFields();
    void saysWhatIsWrong_data();
    void saysWhatIsWrong();
    void saysWhatIsMissing();
    void refusesTooDeepMessages();
    void typesAreTheSameForTheSameSchema();
    void annotationsReachTypesThatComeLater();
    void partsLiveAsLongAsTheirReferences();
    void readsOnlyItsOwnMessages();
    void schemaErrorsTellThePlace_data();
    void schemaErrorsTellThePlace();
    void brokenSchemasInRecordings();

private:
    MessageReference message(const QString& type, const QByteArray& bytes)
    {
        QString error;
        const MessageInfo* const info = m_format.findType(type, &error);
        return info ? MessageReference::adopt(info->newMessage(bytes)) : MessageReference();
    }

    ProtobufFormat m_format;
};

// "name | type | flags | description"
static QString rowText(const FieldInfo* field)
{
    QString flags;
    if (field->isOptional())
        flags += QStringLiteral("optional ");
    if (field->isRepeated())
        flags += QStringLiteral("repeated ");
    if (field->isConfidential())
        flags += QStringLiteral("confidential ");
    if (field->getRole() == FieldInfo::SecondaryRole)
        flags += QStringLiteral("secondary ");
    return QStringList{field->getName(),
                       field->getType().toShortString(),
                       QString::number(field->getType().getTypeCode()),
                       flags.trimmed(),
                       field->getUnit(),
                       field->getDescription()}
        .join(QStringLiteral(" | "));
}

// "a/b[1]" goes down into sub-messages and components; values of the field as they are shown, separated by ", ".
static QString shown(const Message* message, const QString& path)
{
    const Message* holder = message;
    const FieldInfo* field = nullptr;
    unsigned int index = 0;
    for (const QString& level : path.split(QLatin1Char('/'))) {
        const QString name = level.startsWith(QLatin1Char('[')) ? level : level.section(QLatin1Char('['), 0, 0);
        const QVector<const FieldInfo*> parts = field ? field->getSubFieldInfos() : QVector<const FieldInfo*>();
        if (!parts.isEmpty()) {
            for (const FieldInfo* part : parts)
                if (part->getName() == name)
                    field = part;
            continue;
        }
        if (field)
            holder = field->getValue(holder, index).getSubMessage();
        field = holder ? holder->getInfo()->getFieldInfo(name) : nullptr;
        if (!field)
            return QStringLiteral("no such field");
        index = name == level ? 0 : level.section(QLatin1Char('['), 1).chopped(1).toUInt();
    }
    QStringList texts;
    for (const FieldValue& value : field->getValues(holder))
        texts.append(field->getInterpretedString(value, true));
    return texts.isEmpty() ? QStringLiteral("absent") : texts.join(QStringLiteral(", "));
}

void tst_ProtobufFormat::initTestCase()
{
    for (const char* name : {"kinds2", "kinds3"}) {
        QStringList errors;
        const QString path = dataFolder + QLatin1Char('/') + QLatin1String(name) + QStringLiteral(".proto");
        m_format.loadSchema(path, QStringList(importFolder), &errors);
        QCOMPARE(errors, QStringList());
    }
}

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
    QTest::newRow("greatest") << "kinds2.All"
                              << QByteArray("a_int32: 2147483647 a_int64: 9223372036854775807 a_uint32: 4294967295 "
                                            "a_uint64: 18446744073709551615 a_sint32: 2147483647 "
                                            "a_sint64: 9223372036854775807 a_fixed32: 4294967295 "
                                            "a_fixed64: 18446744073709551615 a_sfixed32: 2147483647 "
                                            "a_sfixed64: 9223372036854775807 a_float: 3.4028235e38 "
                                            "a_double: 2.2250738585072014e-308 a_bool: true a_string: '\xc3\xa4\"\\n' "
                                            "a_bytes: '\\000\\377' color: LIME");
    QTest::newRow("deeper") << "kinds2.All"
                            << QByteArray("child { child { children {} children { a_int32: 5 unpacked: [1, 2] } } } "
                                          "Pair { left: -1 } Step { name: 'x' } Step {} "
                                          "all { text: 'inner' } colors: [RED, NEGATIVE, LIME] blobs: ['', 'b'] "
                                          "doubles: [0.1, 1e300, -0.0] [kinds2.extra]: -7 [kinds2.extras] {} "
                                          "[kinds2.extras] { [kinds2.extra]: 1 }");
    QTest::newRow("maps") << "kinds2.All"
                          << QByteArray("by_name { key: 'b' value: RED } by_name { key: 'a' value: NEGATIVE } "
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
    const QByteArray printed = runProtoc(protocArguments(QStringLiteral("decode"), type), bytes);
    const MessageReference decoded = message(type, bytes);
    const ProtocComparison comparison(decoded.get(), printed);
    QCOMPARE(comparison.differences, QStringList());
    QVERIFY(comparison.valuesCompared >= text.count(": ") / 3);
    QCOMPARE(shown(decoded.get(), QStringLiteral("[problems]")), QStringLiteral("absent"));
}

void tst_ProtobufFormat::showsAbsenceAndDefaults()
{
    const MessageReference older = message(QStringLiteral("kinds2.All"), QByteArray());
    const MessageReference newer = message(QStringLiteral("kinds3.All"), QByteArray());
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
        message(QStringLiteral("kinds2.All"), encode(QStringLiteral("kinds2.All"), "number: 3") +
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
    const MessageReference decoded = message(type, encode(type, text));
    QCOMPARE(shown(decoded.get(), path), expected);
}

void tst_ProtobufFormat::showsUnknownFields()
{
    const QByteArray bytes = QByteArray::fromHex("c03e9601"             // 1000: varint 150
                                                 "c53e78563412"         // 1000: fixed32
                                                 "c13e8877665544332211" // 1000: fixed64
                                                 "c23e026869"           // 1000: bytes "hi"
                                                 "c33e0801c43e"         // 1000: group { 1: 1 }
                                                 "7205776f726473"       // 14: a text, to be told apart from
                                                 "708001"               // 14: varint, but a_string is a string
                                                 "800163");             // 16: varint 99, no color
    const MessageReference decoded = message(QStringLiteral("kinds2.All"), bytes);
    QCOMPARE(shown(decoded.get(), QStringLiteral("[unknown fields]")),
             QStringLiteral("1000: varint 150, 1000: fixed32 0x12345678, 1000: fixed64 0x1122334455667788, "
                            "1000: bytes 6869 (2 bytes), 1000: group { 1: varint 1 }, "
                            "14: varint 128 (but a_string is string), 16: varint 99 (no value of the enum of color)"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("a_string")), QStringLiteral("words"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("color")), QStringLiteral("absent"));
}

void tst_ProtobufFormat::saysWhatIsWrong_data()
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

void tst_ProtobufFormat::saysWhatIsWrong()
{
    QFETCH(QByteArray, hex);
    QFETCH(QString, plain);
    QFETCH(QString, problems);
    const MessageReference decoded = message(QStringLiteral("kinds3.All"), QByteArray::fromHex(hex));
    QCOMPARE(shown(decoded.get(), QStringLiteral("[problems]")), problems);
    QCOMPARE(shown(decoded.get(), QStringLiteral("plain")), plain);
}

void tst_ProtobufFormat::saysWhatIsMissing()
{
    const MessageReference decoded = message(QStringLiteral("kinds2.Strict"), QByteArray::fromHex("1200"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("[problems]")),
             QStringLiteral("the required field \"needed\" is missing, "
                            "the required field \"inner.needed\" is missing"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("needed")), QStringLiteral("absent"));
}

void tst_ProtobufFormat::refusesTooDeepMessages()
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
    const MessageReference deep = message(QStringLiteral("kinds3.All"), nested(100));
    QCOMPARE(shown(deep.get(), QStringLiteral("[problems]")), QStringLiteral("absent"));
    QCOMPARE(shown(deep.get(), QString(QStringLiteral("child/")).repeated(100) + QStringLiteral("plain")),
             QStringLiteral("7"));
    const MessageReference deeper = message(QStringLiteral("kinds3.All"), nested(5000));
    QVERIFY(shown(deeper.get(), QStringLiteral("[problems]"))
                .endsWith(QStringLiteral("nested too deeply; it is not decoded")));
}

void tst_ProtobufFormat::typesAreTheSameForTheSameSchema()
{
    QTemporaryDir folder;
    const QString set = folder.filePath(QStringLiteral("all.desc"));
    runProtoc({QStringLiteral("-o") + set, QStringLiteral("-I") + dataFolder, QStringLiteral("-I") + importFolder,
               fileOf(QStringLiteral("kinds3.All"))},
              QByteArray());
    QFile file(set);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll(); // without the imported files
    ProtobufFormat format;
    FormatRegistry::getInstance()->addFormat(&format);
    const QString type = QStringLiteral("kinds3.All");
    QString error;
    QCOMPARE(format.addSchema(bytes, type, &error), nullptr);
    QVERIFY2(error.contains(QStringLiteral("options.proto")), qPrintable(error));

    runProtoc({QStringLiteral("--include_imports"), QStringLiteral("-o") + set, QStringLiteral("-I") + dataFolder,
               QStringLiteral("-I") + importFolder, fileOf(type)},
              QByteArray());
    QStringList errors;
    QVERIFY(format.loadSchema(set, QStringList(), &errors));
    const MessageInfo* const info = format.findType(type, &error);
    QVERIFY(info);
    QCOMPARE(info->getFormatInfo(), nullptr);
    const quint64 revision = FormatRegistry::getInstance()->getRevision(&format);
    format.publish();
    QCOMPARE(info->getFormatInfo(), &format);
    QCOMPARE(format.getMessageInfo(type), info);
    QVERIFY(FormatRegistry::getInstance()->getRevision(&format) != revision);

    QFile again(set);
    QVERIFY(again.open(QIODevice::ReadOnly));
    QCOMPARE(format.addSchema(again.readAll(), type, &error), info);
    const int published = static_cast<int>(format.getMessageInfos().size());
    format.publish();
    QCOMPARE(static_cast<int>(format.getMessageInfos().size()), published);
    // With comments, which the other one does not have.
    QVERIFY(format.loadSchema(fileOf(type), QStringList(importFolder), &errors));
    QVERIFY(format.findType(type, &error) != info);
}

void tst_ProtobufFormat::annotationsReachTypesThatComeLater()
{
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.json"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("{ \"messages\": {\n"
               "\"*\": { \"fields\": { \"a_int32\": { \"role\": \"secondary\" } } },\n"
               "\"kinds2.All\": { \"fields\": { \"a_string\": { \"confidential\": true } },\n"
               "\"virtual\": [ { \"name\": \"sum\", \"expression\": \"child.a_int32 + children_1.child.a_int64 + 0.5\" "
               "} ] },\n"
               "\"kinds3.All\": { \"fields\": { \"nothing\": { \"confidential\": true } } },\n"
               "\"other.Type\": { \"fields\": { \"nothing\": { \"confidential\": true } } } } }\n");
    file.close();
    ProtobufFormat format;
    QStringList errors;
    QVERIFY(format.addAnnotations(path, &errors));
    for (const char* type : {"kinds2.All", "kinds3.All"})
        format.loadSchema(fileOf(QLatin1String(type)), QStringList(importFolder), &errors);
    QString error;
    const MessageInfo* const info = format.findType(QStringLiteral("kinds2.All"), &error);
    const MessageReference decoded = MessageReference::adopt(info->newMessage(
        encode(info->getName(), "child { a_int32: 3 } children {} children { child { a_int64: 4 } } a_string: 's'")));
    format.publish(&errors);
    QCOMPARE(errors, QStringList());
    QCOMPARE(rowText(info->getFieldInfo(QStringLiteral("a_int32"))),
             QStringLiteral("a_int32 | int32 | 1 | optional secondary |  | "));
    QVERIFY(info->getFieldInfo(QStringLiteral("a_string"))->isConfidential());
    QCOMPARE(shown(decoded.get(), QStringLiteral("sum")), QStringLiteral("7.5"));
    QCOMPARE(shown(decoded.get(), QStringLiteral("child/sum")), QStringLiteral("absent"));

    QVERIFY(format.findType(QStringLiteral("kinds3.All"), &error));
    format.publish(&errors);
    QCOMPARE(errors, QStringList(path + QStringLiteral(":5: kinds3.All.nothing: unknown field")));
}

void tst_ProtobufFormat::partsLiveAsLongAsTheirReferences()
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

void tst_ProtobufFormat::readsOnlyItsOwnMessages()
{
    QString error;
    const MessageInfo* const older = m_format.findType(QStringLiteral("kinds2.All"), &error);
    const MessageReference newer = message(QStringLiteral("kinds3.All"), QByteArray::fromHex("0805"));
    const MessageReference plain = MessageReference::adopt(new Message(older, QByteArray::fromHex("0805")));
    const MessageReference good = message(QStringLiteral("kinds2.All"), QByteArray::fromHex("0805"));
    for (const FieldInfo* field : older->getFieldInfos()) {
        for (const Message* other : {newer.get(), plain.get()}) {
            QCOMPARE(field->getValueCount(other), 0u);
            QVERIFY(!field->getValue(other, 0).isValid());
        }
        QVERIFY(!field->getValue(good.get(), field->getValueCount(good.get())).isValid());
    }
}

void tst_ProtobufFormat::schemaErrorsTellThePlace_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("expected");

    QTest::newRow("grammar") << QByteArray("syntax = \"proto3\";\nmessage A {\n  int32 = 1;\n}\n")
                             << ":3:9: Expected field name.";
    QTest::newRow("unknown type") << QByteArray("syntax = \"proto3\";\nmessage A {\n  Nothing b = 1;\n}\n")
                                  << ":3:3: \"Nothing\" is not defined.";
    QTest::newRow("import") << QByteArray("syntax = \"proto3\";\nimport \"nowhere.proto\";\n")
                            << ":2:1: Import \"nowhere.proto\" was not found or had errors.";
}

void tst_ProtobufFormat::schemaErrorsTellThePlace()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, expected);
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("a.proto"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    file.close();
    ProtobufFormat format;
    QStringList errors;
    QVERIFY(!format.loadSchema(path, QStringList(), &errors));
    QVERIFY2(errors.contains(path + expected), qPrintable(errors.join(QLatin1Char('\n'))));
    QCOMPARE(format.getLoadedTypeNames(), QStringList());
}

void tst_ProtobufFormat::brokenSchemasInRecordings()
{
    ProtobufFormat format;
    const auto errorOf = [&format](const QByteArray& bytes) {
        QString error;
        return format.addSchema(bytes, QStringLiteral("a.B"), &error) ? QString() : error;
    };
    QCOMPARE(errorOf(QByteArray()), QStringLiteral("the schema is empty"));
    QCOMPARE(errorOf("no schema"), QStringLiteral("the schema is no serialized FileDescriptorSet"));
    // "a.proto" and "b.proto", which import each other.
    const QByteArray circle = QByteArray::fromHex("0a12"
                                                  "0a07612e70726f746f"
                                                  "1a07622e70726f746f"
                                                  "0a12"
                                                  "0a07622e70726f746f"
                                                  "1a07612e70726f746f");
    QVERIFY2(errorOf(circle).startsWith(QStringLiteral("b.proto: a.proto: ")), qPrintable(errorOf(circle)));
    QStringList errors;
    QVERIFY(!format.loadSchema(QStringLiteral("/nowhere/a.proto"), QStringList(), &errors));
    QCOMPARE(errors, QStringList(QStringLiteral("/nowhere/a.proto: there is no such file")));
}

QTEST_GUILESS_MAIN(tst_ProtobufFormat)

#include "tst_protobufformat.moc"

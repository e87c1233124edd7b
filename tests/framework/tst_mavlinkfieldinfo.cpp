#include "mavlinkdialect.h"
#include "mavlinkdialectreader.h"
#include "mavlinkfieldinfo.h"
#include "message.h"
#include "messagereference.h"
#include "testbase.h"

#include <cmath>
#include <memory>

class tst_MavlinkFieldInfo : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();

    void valuesOfEveryType_data();
    void valuesOfEveryType();
    void trailingZerosAreRestored();
    void extensionsAreAbsentInVersion1();
    void texts_data();
    void texts();
    void neverReadsBeyondTheBytes();
    void otherBytesHaveNoValues();
    void interpretation_data();
    void interpretation();
    void invalidValues_data();
    void invalidValues();
    void flagsAreComponents();
    void addressesAreSecondary();

private:
    const FieldInfo* field(const char* name) const { return m_info->getFieldInfo(QLatin1String(name)); }

    std::unique_ptr<MavlinkDialect> m_dialect;
    const MavlinkMessageInfo* m_info = nullptr;
};

// In wire order: the position of every byte is then plain to see.
static const char definition[] = R"(<mavlink><enums>
  <enum name="FLAGS" bitmask="true"><entry name="A" value="1"/><entry name="B" value="4"/></enum>
  <enum name="KIND"><entry name="NONE" value="0"/><entry name="ONE" value="1"/></enum>
</enums><messages><message id="300" name="ALL">
  <field type="uint64_t" name="u64"/>
  <field type="int64_t" name="i64"/>
  <field type="double" name="real"/>
  <field type="uint32_t" name="u32"/>
  <field type="int32_t" name="i32"/>
  <field type="float" name="single"/>
  <field type="uint16_t" name="u16"/>
  <field type="int16_t[3]" name="shorts"/>
  <field type="uint8_t" name="u8" enum="FLAGS"/>
  <field type="int8_t" name="i8"/>
  <field type="char" name="letter"/>
  <field type="char[6]" name="word"/>
  <field type="uint8_t" name="target_system"/>
  <field type="uint8_t" name="target_component"/>
  <extensions/>
  <field type="uint16_t[2]" name="extra"/>
  <field type="char[4]" name="tail"/>
</message></messages></mavlink>)";

static const int baseLength = 55;
static const int fullLength = 63;

// Bytes 1, 2, 3, ... with a text in the place of "word".
static QByteArray fullPayload()
{
    QByteArray payload;
    for (int i = 1; i <= fullLength; ++i)
        payload.append(static_cast<char>(i));
    payload.replace(47, 6, QByteArray("ab\0cde", 6));
    payload.replace(59, 4, QByteArray("wxyz"));
    return payload;
}

static QByteArray frame1(const QByteArray& payload)
{
    return QByteArray("\xfe") + static_cast<char>(payload.size()) + QByteArray(4, '\x7f') + payload + "CC";
}

static QByteArray frame2(const QByteArray& payload)
{
    return QByteArray("\xfd") + static_cast<char>(payload.size()) + QByteArray(8, '\x7f') + payload + "CC";
}

static QString valueTexts(const FieldInfo* field, const QByteArray& frame)
{
    const MessageReference message = MessageReference::adopt(new Message(field->getMessageInfos().first(), frame));
    QStringList texts;
    for (const FieldValue& value : field->getValues(message.get()))
        texts.append(value.isValid() ? field->getRawString(value) : QStringLiteral("invalid"));
    const FieldValue beyond = field->getValue(message.get(), field->getValueCount(message.get()));
    return texts.join(QLatin1Char(' ')) + (beyond.isValid() ? QLatin1String(" and more") : QLatin1String(""));
}

static QString textOf(const FieldInfo* field, const QByteArray& frame)
{
    const MessageReference message = MessageReference::adopt(new Message(field->getMessageInfos().first(), frame));
    return field->getStringValue(message.get());
}

void tst_MavlinkFieldInfo::initTestCase()
{
    QStringList errors;
    m_dialect.reset(MavlinkDialectReader::readBytes(QStringLiteral("x.xml"), definition, &errors));
    QCOMPARE(errors, QStringList());
    m_info = m_dialect->find(300);
    QCOMPARE(m_info->getBaseLength(), baseLength);
    QCOMPARE(m_info->getFullLength(), fullLength);
}

void tst_MavlinkFieldInfo::cleanupTestCase()
{
    m_dialect.reset();
}

void tst_MavlinkFieldInfo::valuesOfEveryType_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("values");
    QTest::newRow("u64") << QByteArray("u64") << "uint64_t" << QString::number(0x0807060504030201);
    QTest::newRow("i64") << QByteArray("i64") << "int64_t" << QString::number(0x100f0e0d0c0b0a09);
    QTest::newRow("u32") << QByteArray("u32") << "uint32_t" << QString::number(0x1c1b1a19);
    QTest::newRow("i32") << QByteArray("i32") << "int32_t" << QString::number(0x201f1e1d);
    QTest::newRow("u16") << QByteArray("u16") << "uint16_t" << QString::number(0x2625);
    QTest::newRow("shorts") << QByteArray("shorts") << "int16_t[]"
                            << QStringLiteral("%1 %2 %3").arg(0x2827).arg(0x2a29).arg(0x2c2b);
    QTest::newRow("u8") << QByteArray("u8") << "uint8_t" << QStringLiteral("45");
    QTest::newRow("i8") << QByteArray("i8") << "int8_t" << QStringLiteral("46");
    QTest::newRow("letter") << QByteArray("letter") << "char" << QStringLiteral("47");
    QTest::newRow("target_system") << QByteArray("target_system") << "uint8_t" << QStringLiteral("54");
    QTest::newRow("extra") << QByteArray("extra") << "uint16_t[]" << QStringLiteral("%1 %2").arg(0x3938).arg(0x3b3a);
}

void tst_MavlinkFieldInfo::valuesOfEveryType()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, type);
    QFETCH(QString, values);
    const FieldInfo* info = field(name.constData());
    QCOMPARE(info->getType().toShortString() + (info->isRepeated() ? QLatin1String("[]") : QLatin1String("")), type);
    QCOMPARE(valueTexts(info, frame2(fullPayload())), values);
    if (!info->isOptional())
        QCOMPARE(valueTexts(info, frame1(fullPayload().left(baseLength))), values);
}

void tst_MavlinkFieldInfo::trailingZerosAreRestored()
{
    // Cut within the real number, which then reads as if its last bytes were zeros.
    QByteArray payload(24, '\0');
    payload[22] = '\xf8';
    payload[23] = '\x3f';
    QCOMPARE(valueTexts(field("real"), frame2(payload)), QStringLiteral("1.5"));
    payload[16] = '\1';
    QCOMPARE(valueTexts(field("real"), frame2(payload.left(17))), QStringLiteral("5e-324"));
    QCOMPARE(valueTexts(field("real"), frame2(payload.left(16))), QStringLiteral("0"));
    QCOMPARE(valueTexts(field("i8"), frame2(payload)), QStringLiteral("0"));
    QCOMPARE(valueTexts(field("shorts"), frame2(QByteArray(39, '\1'))), QStringLiteral("1 0 0"));
    QCOMPARE(valueTexts(field("extra"), frame2(QByteArray("\1"))), QStringLiteral("0 0"));
    const QByteArray minusOne(fullLength, '\xff');
    for (const char* name : {"i64", "i32", "i8"})
        QCOMPARE(valueTexts(field(name), frame2(minusOne)), QStringLiteral("-1"));
    QCOMPARE(valueTexts(field("u64"), frame2(minusOne)), QStringLiteral("18446744073709551615"));
    QCOMPARE(valueTexts(field("single"), frame2(minusOne)), QStringLiteral("nan"));
}

void tst_MavlinkFieldInfo::extensionsAreAbsentInVersion1()
{
    for (const char* name : {"extra", "tail"}) {
        QVERIFY(field(name)->isOptional());
        QCOMPARE(valueTexts(field(name), frame1(fullPayload())), QString());
        QCOMPARE(textOf(field(name), frame1(fullPayload())), QString());
    }
    QVERIFY(!field("u8")->isOptional());
    QCOMPARE(textOf(field("tail"), frame2(fullPayload())), QStringLiteral("wxyz"));
}

void tst_MavlinkFieldInfo::texts_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("text");
    QTest::newRow("up to the zero") << QByteArray("ab\0cde", 6) << "ab";
    QTest::newRow("without a zero") << QByteArray("abcdef") << "abcdef";
    QTest::newRow("empty") << QByteArray(6, '\0') << "";
    QTest::newRow("UTF-8") << QByteArray("\xc3\xa4\xe2\x82\xac!") << QString::fromUtf8("\xc3\xa4\xe2\x82\xac!");
    QTest::newRow("no UTF-8") << QByteArray("a\xff"
                                            "b\0\0\0",
                                            6)
                              << QLatin1Char('a') + QString(QChar(0xfffd)) + QLatin1Char('b');
}

void tst_MavlinkFieldInfo::texts()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, text);
    const FieldInfo* word = field("word");
    QVERIFY(word->isStringField() && word->isRepeated());
    QCOMPARE(word->getType().getTypeCode(), int(FieldType::CharType));
    QByteArray payload = fullPayload();
    payload.replace(47, 6, bytes);
    QCOMPARE(textOf(word, frame2(payload)), text);
    QCOMPARE(textOf(word, frame1(payload.left(baseLength))), text);
    QCOMPARE(word->FieldInfo::getStringValue(MessageReference::adopt(new Message(m_info, frame2(payload))).get()),
             text);
    // The sender left off what follows the text.
    while (bytes.endsWith('\0'))
        bytes.chop(1);
    QCOMPARE(textOf(word, frame2(payload.left(47) + bytes)), text);
}

void tst_MavlinkFieldInfo::neverReadsBeyondTheBytes()
{
    // The sanitizer build notices a byte too many; what is missing reads as zero.
    for (const QByteArray& whole : {frame1(fullPayload()), frame2(fullPayload())}) {
        const int headerSize = whole.startsWith('\xfe') ? 6 : 10;
        for (int size = 0; size < whole.size(); ++size) {
            // A copy of exactly that size, without the zero that a byte array ends with.
            const std::unique_ptr<char[]> bytes(new char[static_cast<std::size_t>(size) + 1]);
            std::copy(whole.constData(), whole.constData() + size, bytes.get() + 1);
            const QByteArray frame = QByteArray::fromRawData(bytes.get() + 1, size);
            for (const FieldInfo* info : m_info->getFieldInfos()) {
                const QString texts = valueTexts(info, frame);
                QVERIFY(!texts.contains(QStringLiteral("invalid")));
                textOf(info, frame);
                if (size <= headerSize && !texts.isEmpty())
                    QVERIFY2(QString(texts).remove(QLatin1Char(' ')).count(QLatin1Char('0')) ==
                                 texts.split(QLatin1Char(' ')).size(),
                             qPrintable(texts));
            }
        }
    }
}

void tst_MavlinkFieldInfo::otherBytesHaveNoValues()
{
    for (const QByteArray& bytes : {QByteArray(), QByteArray("\xfd"), QByteArray(80, 'x')})
        QCOMPARE(valueTexts(field("u8"), bytes), QString());
    const MessageInfo other(QStringLiteral("OTHER"));
    const MessageReference message = MessageReference::adopt(new Message(&other, frame2(fullPayload())));
    QCOMPARE(field("u8")->getValueCount(message.get()), 0U);
    QVERIFY(!field("u8")->getValue(message.get(), 0).isValid());
}

static std::unique_ptr<MavlinkDialect> dialectOfField(const QByteArray& attributes)
{
    QStringList errors;
    const QByteArray text =
        QByteArray(definition)
            .replace("<extensions/>", "<field name=\"f\" " + attributes.split('>').first() + "/><extensions/>");
    std::unique_ptr<MavlinkDialect> dialect(MavlinkDialectReader::readBytes(QStringLiteral("x.xml"), text, &errors));
    if (!dialect)
        qWarning("%s", qPrintable(errors.join(QLatin1Char('\n'))));
    return dialect;
}

static QString interpreted(const QByteArray& attributes, const FieldValue& value)
{
    const auto dialect = dialectOfField(attributes);
    return dialect->find(300)->getFieldInfo(QStringLiteral("f"))->getInterpretedString(value, true);
}

void tst_MavlinkFieldInfo::interpretation_data()
{
    QTest::addColumn<QByteArray>("attributes");
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    const QString degree(QChar(0xb0));
    const auto row = [](const char* attributes, double value, const QString& text) {
        QTest::newRow(attributes) << QByteArray("type=\"int32_t\" ") + attributes << value << text;
    };
    row("", 5, QStringLiteral("5"));
    row("units=\"mV\"", 12100, QStringLiteral("12100 mV"));
    row("units=\"degE7\"", -353632621, QStringLiteral("-35.3632621") + degree);
    row("units=\"degE5\"", 1234567, QStringLiteral("12.34567") + degree);
    row("units=\"cdeg\"", 35999, QStringLiteral("359.99") + degree);
    row("units=\"deg\"", 90, QStringLiteral("90") + degree);
    row("units=\"deg/2\"", 90, QStringLiteral("180") + degree);
    row("units=\"ddeg/s\"", 15, QStringLiteral("1.5 ") + degree + QStringLiteral("/s"));
    row("units=\"cdegC\"", -450, QStringLiteral("-4.50 ") + degree + QStringLiteral("C"));
    row("units=\"degC\"", 21, QStringLiteral("21 ") + degree + QStringLiteral("C"));
    row("units=\"d%\"", 1000, QStringLiteral("100.0 %"));
    row("units=\"c%\"", 50, QStringLiteral("0.50 %"));
    row("units=\"cA\"", -1, QStringLiteral("-0.01 A"));
    row("units=\"m/s*5\"", 12, QStringLiteral("2.4 m/s"));
    row("multiplier=\"1E-2\"", 121, QStringLiteral("1.21"));
    row("units=\"cm\" multiplier=\"1e-1\"", 121, QStringLiteral("12.1 cm"));
    row("units=\"deg\" multiplier=\"360/255\"", 255, QStringLiteral("360.0") + degree);
    row("units=\"degE7\" multiplier=\"1E-7\"", 10000000, QStringLiteral("1.0000000") + degree);
    row("multiplier=\"many\"", 3, QStringLiteral("3"));
    row("enum=\"KIND\"", 1, QStringLiteral("ONE (1)"));
    row("enum=\"FLAGS\"", 5, QStringLiteral("A | B"));
    row("display=\"bitmask\"", 18, QStringLiteral("0x12"));
    row("enum=\"KIND\" invalid=\"NONE\"", 0, QStringLiteral("not available"));
}

void tst_MavlinkFieldInfo::interpretation()
{
    QFETCH(QByteArray, attributes);
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(interpreted(attributes, FieldValue::fromSigned(static_cast<qint64>(value), 4)), text);
}

void tst_MavlinkFieldInfo::invalidValues_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("invalid");
    QTest::addColumn<double>("value");
    QTest::addColumn<bool>("available");
    const auto row = [](const char* type, const char* invalid, double value, bool available) {
        QTest::newRow(
            qPrintable(QStringLiteral("%1 %2 %3").arg(QLatin1String(type), QLatin1String(invalid)).arg(value)))
            << QByteArray(type) << QByteArray(invalid) << value << available;
    };
    const double nan = std::nan("");
    row("uint16_t", "UINT16_MAX", 65535, false);
    row("uint16_t", "UINT16_MAX", 65534, true);
    row("uint16_t", "0xFFFF", 65535, false);
    row("uint16_t", "-1", 65535, false);
    row("int16_t", "-1", -1, false);
    row("int16_t", "INT16_MAX", 32767, false);
    row("int8_t", "INT8_MIN", -128, false);
    row("float", "NaN", nan, false);
    row("float", "NAN", nan, false);
    row("float", "NaN", 0, true);
    row("float", "-1.0", -1, false);
    row("float", "-1000", -1000, false);
    row("float", "0", 0, false);
    row("float", "nonsense", 0, true);
    row("uint16_t[4]", "[UINT16_MAX]", 65535, false);
    row("uint16_t[4]", "[0]", 0, false);
    row("uint16_t[4]", "[5:]", 5, true);
    row("uint16_t[4]", "[5,,6]", 5, true);
    row("float[4]", "[NaN]", nan, false);
    row("float[4]", "[NaN:]", nan, false);
    row("float[4]", "[0]", 0, true);
}

void tst_MavlinkFieldInfo::invalidValues()
{
    QFETCH(QByteArray, type);
    QFETCH(QByteArray, invalid);
    QFETCH(double, value);
    QFETCH(bool, available);
    const FieldValue number = type.startsWith("float") ? FieldValue::fromFloat(static_cast<float>(value))
                              : type.startsWith('u')   ? FieldValue::fromUnsigned(static_cast<quint64>(value))
                                                       : FieldValue::fromSigned(static_cast<qint64>(value));
    const QString text = interpreted("type=\"" + type + "\" invalid=\"" + invalid + '"', number);
    QCOMPARE(text != QLatin1String("not available"), available);
}

void tst_MavlinkFieldInfo::flagsAreComponents()
{
    const FieldInfo* mask = field("u8");
    QVERIFY(mask->isBitmask());
    QCOMPARE(int(mask->getSubFieldInfos().size()), 2);
    QByteArray payload = fullPayload();
    payload[44] = 4;
    QCOMPARE(valueTexts(mask->getSubFieldInfos().at(0), frame2(payload)), QStringLiteral("false"));
    QCOMPARE(valueTexts(mask->getSubFieldInfos().at(1), frame2(payload)), QStringLiteral("true"));
    QCOMPARE(mask->getSubFieldInfos().at(1)->getName(), QStringLiteral("B"));
}

void tst_MavlinkFieldInfo::addressesAreSecondary()
{
    QCOMPARE(field("target_system")->getRole(), FieldInfo::AddressRole);
    QCOMPARE(field("target_component")->getRole(), FieldInfo::AddressRole);
    QCOMPARE(field("u8")->getRole(), FieldInfo::UnspecifiedRole);
}

QTEST_GUILESS_MAIN(tst_MavlinkFieldInfo)

#include "tst_mavlinkfieldinfo.moc"

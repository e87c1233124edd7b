#include "mavlinkdialect.h"
#include "mavlinkdialectreader.h"
#include "mavlinkfieldinfo.h"
#include "message.h"
#include "messagereference.h"
#include "testbase.h"
#include "textrows.h"

#include <cmath>
#include <memory>

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
static QByteArray fullPayload(const QByteArray& word = QByteArray("ab\0cde", 6))
{
    QByteArray payload;
    for (int i = 1; i <= fullLength; ++i)
        payload.append(static_cast<char>(i));
    payload.replace(47, 6, word);
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

static std::unique_ptr<MavlinkDialect> dialectWith(const QByteArray& field)
{
    QStringList errors;
    const QByteArray whole = QByteArray(definition).replace("<extensions/>", field + "<extensions/>");
    std::unique_ptr<MavlinkDialect> dialect(MavlinkDialectReader::readBytes(QStringLiteral("x.xml"), whole, &errors));
    if (!dialect)
        qWarning("%s", qPrintable(errors.join(QLatin1Char('\n'))));
    return dialect;
}

/** What a field shows: "int16_t -1 units='cA'" has that type, value and attributes. */
static QString interpreted(const QString& given)
{
    const QByteArray type = given.section(QLatin1Char(' '), 0, 0).toLatin1();
    const QString word = given.section(QLatin1Char(' '), 1, 1);
    const double number = word == text("nan") ? std::nan("") : word.toDouble();
    const FieldValue value = type.startsWith('f')   ? FieldValue::fromFloat(float(number))
                             : type.startsWith('u') ? FieldValue::fromUnsigned(quint64(number))
                                                    : FieldValue::fromSigned(qint64(number));
    const auto dialect =
        dialectWith("<field name='f' type='" + type + "' " + given.section(QLatin1Char(' '), 2).toLatin1() + "/>");
    return dialect->find(300)->getFieldInfo(text("f"))->getInterpretedString(value, true);
}

class tst_MavlinkFieldInfo : public TestBase
{
    Q_OBJECT

private:
    const FieldInfo* field(const char* name) const { return m_info->getFieldInfo(QLatin1String(name)); }

    static QString valueTexts(const FieldInfo* field, const QByteArray& frame)
    {
        const MessageReference message = MessageReference::adopt(new Message(field->getMessageInfos().first(), frame));
        QStringList texts;
        for (const FieldValue& value : field->getValues(message.get()))
            texts.append(value.isValid() ? field->getRawString(value) : QStringLiteral("invalid"));
        const FieldValue beyond = field->getValue(message.get(), field->getValueCount(message.get()));
        return texts.join(QLatin1Char(' ')) + QLatin1String(beyond.isValid() ? " and more" : "");
    }

    static QString textOf(const FieldInfo* field, const QByteArray& frame)
    {
        const MessageReference message = MessageReference::adopt(new Message(field->getMessageInfos().first(), frame));
        const QString shown = field->getStringValue(message.get());
        return field->FieldInfo::getStringValue(message.get()) == shown ? shown : QStringLiteral("another text");
    }

    std::unique_ptr<MavlinkDialect> m_dialect;
    const MavlinkMessageInfo* m_info = nullptr;

private Q_SLOTS:
    void initTestCase()
    {
        m_dialect = dialectWith("");
        m_info = m_dialect->find(300);
        QCOMPARE(m_info->getBaseLength(), baseLength);
        QCOMPARE(m_info->getFullLength(), fullLength);
    }

    void cleanupTestCase() { m_dialect.reset(); }

    void valuesOfEveryType()
    {
        QStringList fields;
        for (const FieldInfo* info : m_info->getFieldInfos()) {
            const QString values = valueTexts(info, frame2(fullPayload()));
            fields += info->getName() + QLatin1Char(' ') + info->getType().toShortString() +
                      QLatin1String(info->isRepeated() ? "[] " : " ") + values +
                      QLatin1String(info->getRole() == FieldInfo::AddressRole ? " address" : "");
            const QString version1 = valueTexts(info, frame1(fullPayload()));
            QCOMPARE(version1, info->isOptional() ? QString() : values);
        }
        QCOMPARE(fields, text("u64 uint64_t 578437695752307201; i64 int64_t 1157159078456920585; "
                              "real double 1.2650169649295773e-192; u32 uint32_t 471538201; i32 int32_t 538910237; "
                              "single float 3.53739e-17; u16 uint16_t 9765; shorts int16_t[] 10279 10793 11307; "
                              "u8 uint8_t 45; i8 int8_t 46; letter char 47; word char[] a b 0 c d e; "
                              "target_system uint8_t 54 address; target_component uint8_t 55 address; "
                              "extra uint16_t[] 14648 15162; tail char[] w x y z")
                             .split(text("; ")));
        const QByteArray minusOne(fullLength, '\xff');
        for (const char* name : {"i64", "i32", "i8"})
            QCOMPARE(valueTexts(field(name), frame2(minusOne)), text("-1"));
        QCOMPARE(valueTexts(field("shorts"), frame2(minusOne)), text("-1 -1 -1"));
        QCOMPARE(valueTexts(field("u64"), frame2(minusOne)), text("18446744073709551615"));
        QCOMPARE(valueTexts(field("single"), frame2(minusOne)), text("nan"));
    }

    void trailingZerosAreRestored()
    {
        // Cut within the real number, which then reads as if its last bytes were zeros.
        QByteArray payload(24, '\0');
        payload[22] = '\xf8';
        payload[23] = '\x3f';
        QCOMPARE(valueTexts(field("real"), frame2(payload)), text("1.5"));
        payload[16] = '\1';
        QCOMPARE(valueTexts(field("real"), frame2(payload.left(17))), text("5e-324"));
        QCOMPARE(valueTexts(field("real"), frame2(payload.left(16))), text("0"));
        QCOMPARE(valueTexts(field("shorts"), frame2(QByteArray(39, '\1'))), text("1 0 0"));
        QCOMPARE(valueTexts(field("extra"), frame2(QByteArray("\1"))), text("0 0"));
    }

    void texts()
    {
        const FieldInfo* word = field("word");
        QVERIFY(word->isStringField() && word->isRepeated());
        const QByteArray contents[] = {QByteArray("ab\0cde", 6), "abcdef", QByteArray(6, '\0'), "\xc3\xa4\xe2\x82\xac!",
                                       QByteArray("a\377b\0\0\0", 6)};
        const char* const expected[] = {"ab", "abcdef", "", "\xc3\xa4\xe2\x82\xac!", "a\357\277\275b"};
        for (int i = 0; i < 5; ++i) {
            const QByteArray payload = fullPayload(contents[i]);
            QCOMPARE(textOf(word, frame2(payload)), text(expected[i]));
            QCOMPARE(textOf(word, frame1(payload.left(baseLength))), text(expected[i]));
            // The sender left off what follows the text.
            QByteArray bytes = contents[i];
            while (bytes.endsWith('\0'))
                bytes.chop(1);
            QCOMPARE(textOf(word, frame2(payload.left(47) + bytes)), text(expected[i]));
        }
        QCOMPARE(textOf(field("tail"), frame2(fullPayload())), text("wxyz"));
        QCOMPARE(textOf(field("tail"), frame1(fullPayload())), QString());
    }

    void neverReadsBeyondTheBytes()
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

    void otherBytesHaveNoValues()
    {
        for (const QByteArray& bytes : {QByteArray(), QByteArray("\xfd"), QByteArray(80, 'x')})
            QCOMPARE(valueTexts(field("u8"), bytes), QString());
        const MessageInfo other(text("OTHER"));
        const MessageReference message = MessageReference::adopt(new Message(&other, frame2(fullPayload())));
        QCOMPARE(field("u8")->getValueCount(message.get()), 0U);
        QVERIFY(!field("u8")->getValue(message.get(), 0).isValid());
    }

    void interpretation()
    {
        // Type, value and further attributes.
        const TextRow rows[] = {{"int32_t 5", "5"},
                                {"int32_t 12100 units='mV'", "12100 mV"},
                                {"int32_t -353632621 units='degE7'", "-35.3632621\xc2\xb0"},
                                {"int32_t 1234567 units='degE5'", "12.34567\xc2\xb0"},
                                {"int32_t 35999 units='cdeg'", "359.99\xc2\xb0"},
                                {"int32_t 90 units='deg/2'", "180\xc2\xb0"},
                                {"int32_t 15 units='ddeg/s'", "1.5 \xc2\xb0/s"},
                                {"int32_t -450 units='cdegC'", "-4.50 \302\260C"},
                                {"int32_t 21 units='degC'", "21 \302\260C"},
                                {"int32_t 1000 units='d%'", "100.0 %"},
                                {"int32_t 50 units='c%'", "0.50 %"},
                                {"int32_t -1 units='cA'", "-0.01 A"},
                                {"int32_t 12 units='m/s*5'", "2.4 m/s"},
                                {"int32_t 121 multiplier='1E-2'", "1.21"},
                                {"int32_t 121 units='cm' multiplier='1e-1'", "12.1 cm"},
                                {"int32_t 255 units='deg' multiplier='360/255'", "360.0\xc2\xb0"},
                                {"int32_t 10000000 units='degE7' multiplier='1E-5'", "1.0000000\xc2\xb0"},
                                {"int32_t 3 multiplier='many'", "3"},
                                {"int32_t 1 enum='KIND'", "ONE (1)"},
                                {"int32_t 5 enum='FLAGS'", "A | B"},
                                {"int32_t 18 display='bitmask'", "0x12"},
                                {"int32_t 0 enum='KIND' invalid='NONE'", "not available"},
                                {"uint16_t 65535 invalid='UINT16_MAX'", "not available"},
                                {"uint16_t 65534 invalid='UINT16_MAX'", "65534"},
                                {"uint16_t 65535 invalid='0xFFFF'", "not available"},
                                {"uint16_t 65535 invalid='-1'", "not available"},
                                {"int16_t -1 invalid='-1'", "not available"},
                                {"int16_t 32767 invalid='INT16_MAX'", "not available"},
                                {"int8_t -128 invalid='INT8_MIN'", "not available"},
                                {"float nan invalid='NAN'", "not available"},
                                {"float 0 invalid='NaN'", "0"},
                                {"float -1 invalid='-1.0'", "not available"},
                                {"float -1000 invalid='-1000'", "not available"},
                                {"float 0 invalid='0'", "not available"},
                                {"float 0 invalid='nonsense'", "0"},
                                {"uint16_t[4] 65535 invalid='[UINT16_MAX]'", "not available"},
                                {"uint16_t[4] 0 invalid='[0]'", "not available"},
                                {"uint16_t[4] 5 invalid='[5:]'", "5"},
                                {"uint16_t[4] 5 invalid='[5,,6]'", "5"},
                                {"float[4] nan invalid='[NaN]'", "not available"},
                                {"float[4] nan invalid='[NaN:]'", "not available"},
                                {"float[4] 0 invalid='[0]'", "0"}};
        checkRows(rows, interpreted);
    }

    void flagsAreComponents()
    {
        const QVector<const FieldInfo*> flags = field("u8")->getSubFieldInfos();
        QCOMPARE(flags.size(), 2);
        QByteArray payload = fullPayload();
        payload[44] = 4;
        for (const FieldInfo* flag : flags)
            QCOMPARE(flag->getName() + valueTexts(flag, frame2(payload)),
                     text(flag == flags.first() ? "Afalse" : "Btrue"));
    }
};

QTEST_GUILESS_MAIN(tst_MavlinkFieldInfo)

#include "tst_mavlinkfieldinfo.moc"

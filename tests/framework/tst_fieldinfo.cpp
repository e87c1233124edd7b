#include "fieldinfo.h"
#include "flagfieldinfo.h"
#include "messageinfo.h"
#include "testbase.h"
#include "testformat.h"

#include <limits>

Q_DECLARE_METATYPE(FieldValue)

class tst_FieldInfo : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void plainFieldShowsValueWithUnit();
    void enumeratorsByName_data();
    void enumeratorsByName();
    void bitmaskNamesItsFlags_data();
    void bitmaskNamesItsFlags();
    void invalidValueIsNotAvailable();
    void scaledValues();
    void times_data();
    void times();
    void rawTextIsWhatWasTransmitted();
    void stringFieldsEndAtTheFirstZero();
    void repeatedValues();
    void flagsAreComponentFields();
};

static const double NaN = std::numeric_limits<double>::quiet_NaN();

static FieldType integerType(int size)
{
    return FieldType(FieldType::UnsignedType, size, QLatin1String("integer"));
}

static QVector<FieldInfo::Enumerator> enumerators(const char* const* names, const quint64* values, int count)
{
    QVector<FieldInfo::Enumerator> result;
    for (int i = 0; i < count; ++i)
        result.append(FieldInfo::Enumerator(values[i], QLatin1String(names[i])));
    return result;
}

void tst_FieldInfo::plainFieldShowsValueWithUnit()
{
    TestFieldInfo field(QLatin1String("speed"));
    QCOMPARE(field.getInterpretedString(FieldValue::fromFloat(3.5f), true), QString::fromLatin1("3.5"));
    field.setUnit(QLatin1String("m/s"));
    QCOMPARE(field.getInterpretedString(FieldValue::fromFloat(3.5f), true), QString::fromLatin1("3.5 m/s"));
    QCOMPARE(field.getInterpretedString(FieldValue::fromFloat(3.5f), false), QString::fromLatin1("3.5"));
    QCOMPARE(field.getInterpretedString(FieldValue::invalid(), true), QString());
    QCOMPARE(field.getRawString(FieldValue::invalid()), QString());
}

void tst_FieldInfo::enumeratorsByName_data()
{
    QTest::addColumn<FieldValue>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("named") << FieldValue::fromUnsigned(3, 1) << "AUTO (3)";
    QTest::newRow("signed of a named value") << FieldValue::fromSigned(3, 4) << "AUTO (3)";
    QTest::newRow("floating-point") << FieldValue::fromFloat(3) << "AUTO (3)";
    QTest::newRow("between two") << FieldValue::fromDouble(3.5) << "3.5";
    QTest::newRow("negative") << FieldValue::fromSigned(-1, 1) << "UNKNOWN (-1)";
    QTest::newRow("negative floating-point") << FieldValue::fromFloat(-1) << "UNKNOWN (-1)";
    QTest::newRow("255 is not -1") << FieldValue::fromUnsigned(255, 1) << "255";
    QTest::newRow("without a name") << FieldValue::fromUnsigned(7, 1) << "7";
    QTest::newRow("nan") << FieldValue::fromDouble(NaN) << "nan";
}

void tst_FieldInfo::enumeratorsByName()
{
    static const char* const names[] = {"MANUAL", "AUTO", "UNKNOWN"};
    static const quint64 values[] = {0, 3, ~quint64(0)};
    TestFieldInfo field(QLatin1String("mode"));
    field.setEnumerators(enumerators(names, values, 3), false);
    QFETCH(FieldValue, value);
    QFETCH(QString, text);
    QCOMPARE(field.getInterpretedString(value, true), text);
}

void tst_FieldInfo::bitmaskNamesItsFlags_data()
{
    QTest::addColumn<FieldValue>("value");
    QTest::addColumn<int>("size");
    QTest::addColumn<QString>("text");
    QTest::newRow("one") << FieldValue::fromUnsigned(2, 1) << 1 << "GYRO";
    QTest::newRow("two") << FieldValue::fromUnsigned(3, 1) << 1 << "ACCEL | GYRO";
    QTest::newRow("bits without a name") << FieldValue::fromUnsigned(0x31, 1) << 1 << "ACCEL | 0x30";
    QTest::newRow("half of a flag of two bits") << FieldValue::fromUnsigned(4, 1) << 1 << "0x4";
    QTest::newRow("all of it") << FieldValue::fromUnsigned(12, 1) << 1 << "GPS";
    QTest::newRow("the name of nothing") << FieldValue::fromUnsigned(0, 1) << 1 << "NONE";
    QTest::newRow("highest bit") << FieldValue::fromUnsigned(0x80, 1) << 1 << "HIGH";
    QTest::newRow("highest bit, signed") << FieldValue::fromSigned(-128, 1) << 1 << "HIGH";
    QTest::newRow("64 bits") << FieldValue::fromUnsigned(Q_UINT64_C(0x8000000000000001), 8) << 8
                             << "ACCEL | 0x8000000000000000";
}

void tst_FieldInfo::bitmaskNamesItsFlags()
{
    static const char* const names[] = {"NONE", "ACCEL", "GYRO", "GPS", "HIGH"};
    static const quint64 values[] = {0, 1, 2, 12, 0x80};
    QFETCH(FieldValue, value);
    QFETCH(int, size);
    QFETCH(QString, text);
    TestFieldInfo field(QLatin1String("sensors"), TestFieldInfo::Plain, integerType(size));
    field.setEnumerators(enumerators(names, values, 5), true);
    QCOMPARE(field.getInterpretedString(value, true), text);

    TestFieldInfo withoutZero(QLatin1String("sensors"), TestFieldInfo::Plain, integerType(size));
    withoutZero.setEnumerators(enumerators(names + 1, values + 1, 4), true);
    if (value.toUnsigned() == 0)
        QCOMPARE(withoutZero.getInterpretedString(value, true), QString::fromLatin1("0"));
}

void tst_FieldInfo::invalidValueIsNotAvailable()
{
    static const char* const names[] = {"MOST"};
    static const quint64 values[] = {65535};
    const QString notAvailable = QLatin1String("not available");
    TestFieldInfo field(QLatin1String("voltage"));
    field.setUnit(QLatin1String("mV"));
    QCOMPARE(field.getInterpretedString(FieldValue::fromUnsigned(65535, 2), true), QString::fromLatin1("65535 mV"));
    field.setInvalidValue(FieldValue::fromUnsigned(65535));
    QCOMPARE(field.getInterpretedString(FieldValue::fromUnsigned(65535, 2), true), notAvailable);
    QCOMPARE(field.getInterpretedString(FieldValue::fromUnsigned(65534, 2), true), QString::fromLatin1("65534 mV"));
    QCOMPARE(field.getRawString(FieldValue::fromUnsigned(65535, 2)), QString::fromLatin1("65535"));
    field.setEnumerators(enumerators(names, values, 1), true);
    QCOMPARE(field.getInterpretedString(FieldValue::fromUnsigned(65535, 2), true), notAvailable);

    field.setInvalidValue(FieldValue::fromDouble(NaN));
    QCOMPARE(field.getInterpretedString(FieldValue::fromFloat(std::numeric_limits<float>::quiet_NaN()), true),
             notAvailable);
    QCOMPARE(field.getInterpretedString(FieldValue::fromText(QLatin1String("nan")), false), QString::fromLatin1("nan"));
    field.setInvalidValue(FieldValue::fromSigned(-1));
    QCOMPARE(field.getInterpretedString(FieldValue::fromSigned(-1, 2), true), notAvailable);
    QCOMPARE(field.getInterpretedString(FieldValue::fromFloat(-1), true), notAvailable);
}

void tst_FieldInfo::scaledValues()
{
    TestFieldInfo latitude(QLatin1String("lat"));
    latitude.setUnit(QString(QChar(0xb0)));
    latitude.setScale(1e-7, 7);
    const QString degree = QChar(0xb0);
    QCOMPARE(latitude.getInterpretedString(FieldValue::fromSigned(473977418, 4), true),
             QString(QLatin1String("47.3977418") + degree));
    QCOMPARE(latitude.getInterpretedString(FieldValue::fromSigned(-1, 4), true),
             QString(QLatin1String("-0.0000001") + degree));
    QCOMPARE(latitude.getInterpretedString(FieldValue::fromSigned(0, 4), false), QString::fromLatin1("0.0000000"));
    QCOMPARE(latitude.getRawString(FieldValue::fromSigned(473977418, 4)), QString::fromLatin1("473977418"));

    TestFieldInfo current(QLatin1String("current"));
    current.setUnit(QLatin1String("A"));
    current.setScale(0.01, 2);
    QCOMPARE(current.getInterpretedString(FieldValue::fromSigned(-5, 2), true), QString::fromLatin1("-0.05 A"));
    QCOMPARE(current.getInterpretedString(FieldValue::fromFloat(std::numeric_limits<float>::infinity()), true),
             QString::fromLatin1("inf A"));
    QCOMPARE(current.getInterpretedString(FieldValue::fromText(QLatin1String("off")), false),
             QString::fromLatin1("off"));
}

void tst_FieldInfo::times_data()
{
    QTest::addColumn<FieldValue>("value");
    QTest::addColumn<int>("unit");
    QTest::addColumn<QString>("text");
    const quint64 most = ~quint64(0);
    QTest::newRow("seconds") << FieldValue::fromUnsigned(0) << int(FieldInfo::Seconds) << "1970-01-01T00:00:00Z";
    QTest::newRow("milliseconds") << FieldValue::fromUnsigned(1400000000007) << int(FieldInfo::Milliseconds)
                                  << "2014-05-13T16:53:20.007Z";
    QTest::newRow("microseconds") << FieldValue::fromUnsigned(Q_UINT64_C(1400000000000001))
                                  << int(FieldInfo::Microseconds) << "2014-05-13T16:53:20.000001Z";
    QTest::newRow("nanoseconds") << FieldValue::fromUnsigned(Q_UINT64_C(1400000000123456789))
                                 << int(FieldInfo::Nanoseconds) << "2014-05-13T16:53:20.123456789Z";
    QTest::newRow("floating-point") << FieldValue::fromDouble(1400000000.75) << int(FieldInfo::Seconds)
                                    << "2014-05-13T16:53:20Z";
    QTest::newRow("just before 1970") << FieldValue::fromSigned(-1) << int(FieldInfo::Milliseconds)
                                      << "1969-12-31T23:59:59.999Z";
    QTest::newRow("a second before 1970")
        << FieldValue::fromSigned(-1000) << int(FieldInfo::Milliseconds) << "1969-12-31T23:59:59.000Z";
    QTest::newRow("29 February") << FieldValue::fromSigned(951782400) << int(FieldInfo::Seconds)
                                 << "2000-02-29T00:00:00Z";
    QTest::newRow("year 1") << FieldValue::fromSigned(Q_INT64_C(-62135596800)) << int(FieldInfo::Seconds)
                            << "0001-01-01T00:00:00Z";
    QTest::newRow("before year 1") << FieldValue::fromSigned(Q_INT64_C(-62135596801)) << int(FieldInfo::Seconds)
                                   << "-62135596801";
    QTest::newRow("end of 9999") << FieldValue::fromUnsigned(Q_UINT64_C(253402300799)) << int(FieldInfo::Seconds)
                                 << "9999-12-31T23:59:59Z";
    QTest::newRow("year 10000") << FieldValue::fromUnsigned(Q_UINT64_C(253402300800)) << int(FieldInfo::Seconds)
                                << "253402300800";
    QTest::newRow("unsigned is never before 1970")
        << FieldValue::fromUnsigned(most) << int(FieldInfo::Microseconds) << "18446744073709551615";
    QTest::newRow("late nanoseconds") << FieldValue::fromUnsigned(most) << int(FieldInfo::Nanoseconds)
                                      << "2554-07-21T23:34:33.709551615Z";
    QTest::newRow("least") << FieldValue::fromSigned(std::numeric_limits<qint64>::min()) << int(FieldInfo::Seconds)
                           << "-9223372036854775808";
    QTest::newRow("nan") << FieldValue::fromDouble(NaN) << int(FieldInfo::Seconds) << "nan";
    QTest::newRow("-inf") << FieldValue::fromDouble(-std::numeric_limits<double>::infinity()) << int(FieldInfo::Seconds)
                          << "-inf";
}

void tst_FieldInfo::times()
{
    QFETCH(FieldValue, value);
    QFETCH(int, unit);
    QFETCH(QString, text);
    TestFieldInfo field(QLatin1String("time"));
    field.setTimeUnit(FieldInfo::TimeUnit(unit));
    field.setUnit(QLatin1String("us"));
    QCOMPARE(field.getInterpretedString(value, true), text);
}

void tst_FieldInfo::rawTextIsWhatWasTransmitted()
{
    TestFieldInfo number(QLatin1String("n"), TestFieldInfo::Plain, FieldType(FieldType::CharType, 1, QString()));
    TestFieldInfo text(QLatin1String("s"), TestFieldInfo::String);
    QCOMPARE(number.getRawString(FieldValue::fromChar('A')), QString::fromLatin1("65"));
    QCOMPARE(text.getRawString(FieldValue::fromChar('A')), QString::fromLatin1("A"));
    QCOMPARE(number.getRawString(FieldValue::fromFloat(0.1f)), QString::fromLatin1("0.1"));
    QCOMPARE(number.getRawString(FieldValue::fromSigned(-7)), QString::fromLatin1("-7"));
}

void tst_FieldInfo::stringFieldsEndAtTheFirstZero()
{
    MessageInfo info(QLatin1String("STATUSTEXT"));
    TestFieldInfo* field = new TestFieldInfo(QLatin1String("text"), TestFieldInfo::String);
    info.addField(field);
    TestMessage* message = new TestMessage(&info);
    const MessageReference keep = MessageReference::adopt(message);
    QCOMPARE(field->getStringValue(message), QString());
    message->setText(field, QByteArray("ab\0cd", 5));
    QCOMPARE(field->getStringValue(message), QString::fromLatin1("ab"));
    message->setText(field, QByteArray("\0", 1));
    QCOMPARE(field->getStringValue(message), QString());
    message->setText(field, "\xc3\xa4 full");
    QCOMPARE(field->getStringValue(message), QString::fromUtf8("\xc3\xa4 full"));
    message->setText(field, "broken \xff.");
    QCOMPARE(field->getStringValue(message), QString(QLatin1String("broken ") + QChar(0xfffd) + QLatin1Char('.')));
}

void tst_FieldInfo::repeatedValues()
{
    MessageInfo info(QLatin1String("CHANNELS"));
    TestFieldInfo* field = new TestFieldInfo(QLatin1String("channel"), TestFieldInfo::Repeated);
    info.addField(field);
    TestMessage* message = new TestMessage(&info);
    const MessageReference keep = MessageReference::adopt(message);
    QVERIFY(!field->isPresentIn(message));
    QVERIFY(field->getValues(message).isEmpty());
    message->setNumbers(field, 3, 7);
    QVERIFY(field->isPresentIn(message));
    QCOMPARE(field->getValues(message).size(), 3);
    QVERIFY(field->getValues(message).at(2) == FieldValue::fromSigned(9, 4));
}

void tst_FieldInfo::flagsAreComponentFields()
{
    static const char* const names[] = {"NONE", "ARMED", "BOTH"};
    static const quint64 values[] = {0, 0x80, 0x3};
    MessageInfo info(QLatin1String("HEARTBEAT"));
    TestFieldInfo* mode =
        new TestFieldInfo(QLatin1String("mode"), TestFieldInfo::Optional | TestFieldInfo::Repeated, integerType(1));
    mode->setEnumerators(enumerators(names, values, 3), true);
    FlagFieldInfo::addFlagsTo(mode);
    info.addField(mode);

    const QVector<const FieldInfo*> flags = mode->getSubFieldInfos();
    QCOMPARE(flags.size(), 2);
    const FieldInfo* armed = flags.at(0);
    const FieldInfo* both = flags.at(1);
    QCOMPARE(armed->getName(), QString::fromLatin1("ARMED"));
    QCOMPARE(armed->getParentFieldInfo(), static_cast<const FieldInfo*>(mode));
    QVERIFY(armed->isOptional() && armed->isRepeated() && !armed->isStringField());
    QVERIFY(armed->occursIn(&info));
    QVERIFY(!armed->occursIn(0));
    QCOMPARE(info.getFieldInfos().size(), 1);

    TestMessage* message = new TestMessage(&info);
    const MessageReference keep = MessageReference::adopt(message);
    QCOMPARE(armed->getValueCount(message), 0u);
    QVERIFY(!armed->getValue(message, 0).isValid());
    message->set(mode, QVector<FieldValue>() << FieldValue::fromUnsigned(0x81, 1) << FieldValue::fromSigned(-125, 1));
    QCOMPARE(armed->getValueCount(message), 2u);
    QCOMPARE(armed->getInterpretedString(armed->getValue(message, 0), true), QString::fromLatin1("true"));
    QCOMPARE(both->getInterpretedString(both->getValue(message, 0), true), QString::fromLatin1("false"));
    QCOMPARE(both->getInterpretedString(both->getValue(message, 1), true), QString::fromLatin1("true"));
    QVERIFY(!both->getValue(message, 2).isValid());
}

QTEST_APPLESS_MAIN(tst_FieldInfo)

#include "tst_fieldinfo.moc"

#include "fieldinfo.h"
#include "flagfieldinfo.h"
#include "messageinfo.h"
#include "testbase.h"
#include "testformat.h"
#include "textrows.h"

#include <initializer_list>
#include <limits>

static const double NaN = std::numeric_limits<double>::quiet_NaN();
static const double Infinity = std::numeric_limits<double>::infinity();
static const quint64 Greatest = ~quint64(0);

static FieldValue (*const u)(quint64, int) = &FieldValue::fromUnsigned;
static FieldValue (*const s)(qint64, int) = &FieldValue::fromSigned;
static FieldValue (*const d)(double) = &FieldValue::fromDouble;
static FieldValue (*const f)(float) = &FieldValue::fromFloat;

static QString shown(const FieldInfo& field, std::initializer_list<FieldValue> values, bool withUnit = true)
{
    QStringList texts;
    for (const FieldValue& value : values)
        texts << field.getInterpretedString(value, withUnit);
    return texts.join(QLatin1String(", "));
}

static QString raw(const FieldInfo& field, std::initializer_list<FieldValue> values)
{
    QStringList texts;
    for (const FieldValue& value : values)
        texts << field.getRawString(value);
    return texts.join(QLatin1String(", "));
}

static FieldType integerType(int size)
{
    return FieldType(FieldType::UnsignedType, size, QLatin1String("integer"));
}

typedef FieldInfo::Enumerator Name;

class tst_FieldInfo : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void numbersHaveTheirUnitAndScale()
    {
        TestFieldInfo speed(text("speed"));
        QCOMPARE(shown(speed, {f(3.5f)}), text("3.5"));
        speed.setUnit(text("m/s"));
        QCOMPARE(shown(speed, {f(3.5f), FieldValue::invalid()}), text("3.5 m/s, "));
        QCOMPARE(shown(speed, {f(3.5f)}, false), text("3.5"));

        TestFieldInfo latitude(text("lat"));
        latitude.setUnit(text("\xc2\xb0"));
        latitude.setScale(1e-7, 7);
        QCOMPARE(shown(latitude, {s(473977418, 4), s(-1, 4), s(0, 4)}),
                 text("47.3977418\xc2\xb0, -0.0000001\xc2\xb0, 0.0000000\xc2\xb0"));
        QCOMPARE(shown(latitude, {d(Infinity), FieldValue::fromText(text("off"))}, false), text("inf, off"));
        QCOMPARE(raw(latitude, {s(473977418, 4), FieldValue::invalid(), f(0.1f)}), text("473977418, , 0.1"));
    }

    void enumeratorsByName()
    {
        TestFieldInfo mode(text("mode"));
        mode.setEnumerators(QVector<Name>()
                                << Name(0, text("MANUAL")) << Name(3, text("AUTO")) << Name(Greatest, text("UNKNOWN")),
                            false);
        QCOMPARE(shown(mode, {u(3, 1), s(3, 4), f(3), d(3.5), s(-1, 1), f(-1), u(255, 1), u(7, 1), d(NaN)}),
                 text("AUTO (3), AUTO (3), AUTO (3), 3.5, UNKNOWN (-1), UNKNOWN (-1), 255, 7, nan"));
    }

    void bitmaskNamesItsFlags()
    {
        QVector<Name> flags = QVector<Name>()
                              << Name(1, text("ACCEL")) << Name(2, text("GYRO")) << Name(12, text("GPS"))
                              << Name(0x80, text("HIGH")) << Name(0, text("NONE")) << Name(0x10000, text("BEYOND"))
                              << Name(Greatest ^ 0xff, text("SIGNED"));
        TestFieldInfo sensors(text("sensors"), TestFieldInfo::Plain, integerType(1));
        sensors.setEnumerators(flags, true);
        QCOMPARE(shown(sensors, {u(2, 1), u(3, 1), u(0x31, 1), u(4, 1), u(12, 1), u(0, 1), u(0x80, 1), s(-128, 1)}),
                 text("GYRO, ACCEL | GYRO, ACCEL | 0x30, 0x4, GPS, NONE, HIGH, HIGH"));
        TestFieldInfo wide(text("sensors"), TestFieldInfo::Plain, integerType(8));
        flags.resize(4);
        wide.setEnumerators(flags, true);
        QCOMPARE(shown(wide, {u(Q_UINT64_C(0x8000000000000001), 8), u(0, 8)}), text("ACCEL | 0x8000000000000000, 0"));
    }

    void invalidValueIsNotAvailable()
    {
        TestFieldInfo voltage(text("voltage"));
        voltage.setUnit(text("mV"));
        QCOMPARE(shown(voltage, {u(65535, 2)}), text("65535 mV"));
        voltage.setInvalidValue(u(65535, 8));
        QCOMPARE(shown(voltage, {u(65535, 2), u(65534, 2)}), text("not available, 65534 mV"));
        QCOMPARE(raw(voltage, {u(65535, 2)}), text("65535"));
        voltage.setEnumerators(QVector<Name>() << Name(65535, text("MOST")), true);
        QCOMPARE(shown(voltage, {u(65535, 2)}), text("not available"));
        voltage.setInvalidValue(d(NaN));
        QCOMPARE(shown(voltage, {f(std::numeric_limits<float>::quiet_NaN())}), text("not available"));
        QCOMPARE(shown(voltage, {FieldValue::fromText(text("nan"))}, false), text("nan"));
        voltage.setInvalidValue(s(-1, 8));
        QCOMPARE(shown(voltage, {s(-1, 2), f(-1)}), text("not available, not available"));
    }

    void times()
    {
        TestFieldInfo time(text("time"));
        time.setUnit(text("us"));
        time.setTimeUnit(FieldInfo::Seconds);
        QCOMPARE(shown(time,
                       {u(0, 8), d(1400000000.75), s(951782400, 8), s(Q_INT64_C(-62135596800), 8), s(253402300799, 8)}),
                 text("1970-01-01T00:00:00Z, 2014-05-13T16:53:20Z, 2000-02-29T00:00:00Z, 0001-01-01T00:00:00Z, "
                      "9999-12-31T23:59:59Z"));
        // What is no time of our era stays a number.
        QCOMPARE(shown(time, {s(Q_INT64_C(-62135596801), 8), u(Q_UINT64_C(253402300800), 8),
                              s(std::numeric_limits<qint64>::min(), 8), d(NaN), d(-Infinity)}),
                 text("-62135596801 us, 253402300800 us, -9223372036854775808 us, nan us, -inf us"));
        time.setTimeUnit(FieldInfo::Milliseconds);
        QCOMPARE(shown(time, {u(1400000000007, 8), s(-1, 8), s(-1000, 8)}),
                 text("2014-05-13T16:53:20.007Z, 1969-12-31T23:59:59.999Z, 1969-12-31T23:59:59.000Z"));
        time.setTimeUnit(FieldInfo::Microseconds);
        QCOMPARE(shown(time, {u(Q_UINT64_C(1400000000000001), 8), u(Greatest, 8)}),
                 text("2014-05-13T16:53:20.000001Z, 18446744073709551615 us"));
        time.setTimeUnit(FieldInfo::Nanoseconds);
        QCOMPARE(shown(time, {u(Q_UINT64_C(1400000000123456789), 8), u(Greatest, 8)}),
                 text("2014-05-13T16:53:20.123456789Z, 2554-07-21T23:34:33.709551615Z"));
    }

    void charactersAreNumbersOrText()
    {
        MessageInfo info(text("STATUSTEXT"));
        TestFieldInfo number(text("n"), TestFieldInfo::Plain, FieldType(FieldType::CharType, 1, QString()));
        TestFieldInfo* field = new TestFieldInfo(text("text"), TestFieldInfo::String);
        info.addField(field);
        QCOMPARE(raw(number, {FieldValue::fromChar('A')}) + raw(*field, {FieldValue::fromChar('A')}), text("65A"));

        TestMessage* message = new TestMessage(&info);
        const MessageReference keep = MessageReference::adopt(message);
        QStringList texts(field->getStringValue(message));
        const QByteArray contents[] = {QByteArray("ab\0cd", 5), QByteArray("\0", 1), "\xc3\xa4 full", "broken \xff.",
                                       "\xef\xbb\xbfmark"};
        for (const QByteArray& content : contents) {
            message->setText(field, content);
            texts << field->getStringValue(message);
        }
        QCOMPARE(texts.join(QLatin1String(", ")),
                 text(", ab, , \xc3\xa4 full, broken \xef\xbf\xbd., \xef\xbb\xbfmark"));
    }

    void flagsAreComponentFields()
    {
        MessageInfo info(text("HEARTBEAT"));
        TestFieldInfo* mode =
            new TestFieldInfo(text("mode"), TestFieldInfo::Optional | TestFieldInfo::Repeated, integerType(1));
        mode->setEnumerators(QVector<Name>() << Name(0, text("NONE")) << Name(0x80, text("ARMED"))
                                             << Name(3, text("BOTH")) << Name(0x10000, text("BEYOND")),
                             true);
        FlagFieldInfo::addFlagsTo(mode);
        info.addField(mode);
        QCOMPARE(mode->getSubFieldInfos().size(), 2);
        const FieldInfo* armed = mode->getSubFieldInfos().at(0);
        const FieldInfo* both = mode->getSubFieldInfos().at(1);
        QCOMPARE(armed->getName() + both->getName(), text("ARMEDBOTH"));
        QVERIFY(armed->isOptional() && armed->isRepeated() && !armed->isStringField() && armed->occursIn(&info));

        TestMessage* message = new TestMessage(&info);
        const MessageReference keep = MessageReference::adopt(message);
        QVERIFY(armed->getValueCount(message) == 0 && !armed->getValue(message, 0).isValid());
        message->set(mode, QVector<FieldValue>() << u(0x81, 1) << s(-125, 1));
        QCOMPARE(armed->getValues(message).size(), 2);
        QCOMPARE(shown(*both, {armed->getValue(message, 0), both->getValue(message, 0), both->getValue(message, 1),
                               both->getValue(message, 2)}),
                 text("true, false, true, "));
    }
};

QTEST_APPLESS_MAIN(tst_FieldInfo)

#include "tst_fieldinfo.moc"

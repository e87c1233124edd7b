#include "fieldvalue.h"
#include "messageinfo.h"
#include "testbase.h"
#include "testformat.h"

#include <cmath>
#include <cstring>
#include <limits>

Q_DECLARE_METATYPE(FieldValue)

class tst_FieldValue : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void isSmallAndCopiesKeepTheirValue();
    void doubleTexts_data();
    void doubleTexts();
    void floatTexts_data();
    void floatTexts();
    void shortestTextsReadBackTheSame();
    void integerTexts_data();
    void integerTexts();
    void hexadecimalHasTheTransmittedWidth_data();
    void hexadecimalHasTheTransmittedWidth();
    void formattingOptions_data();
    void formattingOptions();
    void otherKindsHaveTheirText();
    void conversionsSaturateAndNeverLie();
    void equality();
};

static const double NaN = std::numeric_limits<double>::quiet_NaN();
static const double Infinity = std::numeric_limits<double>::infinity();

static QString plain(const FieldValue& value)
{
    return value.toString(false, -1, FieldValue::PlainRepresentation, false);
}

void tst_FieldValue::isSmallAndCopiesKeepTheirValue()
{
    QVERIFY(sizeof(FieldValue) <= 4 * sizeof(void*));

    FieldValue original = FieldValue::fromText(QLatin1String("text"));
    FieldValue copy(original);
    original = FieldValue::fromSigned(-5);
    QCOMPARE(plain(copy), QString::fromLatin1("text"));
    QCOMPARE(plain(original), QString::fromLatin1("-5"));
    FieldValue& alias = copy;
    copy = alias;
    QCOMPARE(plain(copy), QString::fromLatin1("text"));
    copy = FieldValue();
    QVERIFY(!copy.isValid());
}

void tst_FieldValue::doubleTexts_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0 << "0";
    QTest::newRow("negative zero") << -0.0 << "-0";
    QTest::newRow("one") << 1.0 << "1";
    QTest::newRow("tenth") << 0.1 << "0.1";
    QTest::newRow("sum") << 0.1 + 0.2 << "0.30000000000000004";
    QTest::newRow("third") << -1.0 / 3 << "-0.3333333333333333";
    QTest::newRow("100000") << 100000.0 << "100000";
    QTest::newRow("2^24") << 16777216.0 << "16777216";
    QTest::newRow("fraction behind many digits") << 123456789012.5 << "123456789012.5";
    QTest::newRow("greatest without exponent") << 9999999999999998.0 << "9999999999999998";
    QTest::newRow("1e16") << 1e16 << "1e16";
    QTest::newRow("1.5e300") << -1.5e300 << "-1.5e300";
    QTest::newRow("0.00001") << 0.00001 << "0.00001";
    QTest::newRow("0.000001") << 0.0000012 << "1.2e-6";
    QTest::newRow("greatest") << std::numeric_limits<double>::max() << "1.7976931348623157e308";
    QTest::newRow("least normal") << std::numeric_limits<double>::min() << "2.2250738585072014e-308";
    QTest::newRow("least") << std::numeric_limits<double>::denorm_min() << "5e-324";
    QTest::newRow("nan") << NaN << "nan";
    QTest::newRow("negative nan") << std::copysign(NaN, -1.0) << "nan";
    QTest::newRow("inf") << Infinity << "inf";
    QTest::newRow("-inf") << -Infinity << "-inf";
}

void tst_FieldValue::doubleTexts()
{
    QFETCH(double, value);
    QFETCH(QString, text);
    QCOMPARE(plain(FieldValue::fromDouble(value)), text);
}

void tst_FieldValue::floatTexts_data()
{
    QTest::addColumn<float>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("tenth") << 0.1f << "0.1";
    QTest::newRow("third") << 1.0f / 3 << "0.33333334";
    QTest::newRow("negative zero") << -0.0f << "-0";
    QTest::newRow("2^24") << 16777216.0f << "16777216";
    QTest::newRow("100000") << 100000.0f << "100000";
    QTest::newRow("1e16") << 1e16f << "1e16";
    QTest::newRow("greatest") << std::numeric_limits<float>::max() << "3.4028235e38";
    QTest::newRow("least normal") << std::numeric_limits<float>::min() << "1.1754944e-38";
    QTest::newRow("least") << std::numeric_limits<float>::denorm_min() << "1e-45";
    QTest::newRow("nan") << std::numeric_limits<float>::quiet_NaN() << "nan";
    QTest::newRow("-inf") << -std::numeric_limits<float>::infinity() << "-inf";
}

void tst_FieldValue::floatTexts()
{
    QFETCH(float, value);
    QFETCH(QString, text);
    QCOMPARE(plain(FieldValue::fromFloat(value)), text);
}

// Numbers with arbitrary bits, as a broken device sends them.
void tst_FieldValue::shortestTextsReadBackTheSame()
{
    quint64 state = Q_UINT64_C(0x9e3779b97f4a7c15);
    for (int i = 0; i < 20000; ++i) {
        state ^= state << 13;
        state ^= state >> 7;
        state ^= state << 17;
        double number;
        std::memcpy(&number, &state, sizeof number);
        float single;
        std::memcpy(&single, &state, sizeof single);
        if (std::isfinite(number)) {
            const QString text = plain(FieldValue::fromDouble(number));
            QVERIFY2(std::strtod(text.toLatin1().constData(), 0) == number, qPrintable(text));
        }
        if (std::isfinite(single)) {
            const QString text = plain(FieldValue::fromFloat(single));
            QVERIFY2(std::strtof(text.toLatin1().constData(), 0) == single, qPrintable(text));
            QVERIFY2(text.count(QLatin1Char('-')) + text.size() < 25, qPrintable(text));
        }
    }
}

void tst_FieldValue::integerTexts_data()
{
    QTest::addColumn<FieldValue>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("least") << FieldValue::fromSigned(std::numeric_limits<qint64>::min()) << "-9223372036854775808";
    QTest::newRow("greatest") << FieldValue::fromSigned(std::numeric_limits<qint64>::max()) << "9223372036854775807";
    QTest::newRow("greatest unsigned") << FieldValue::fromUnsigned(~quint64(0)) << "18446744073709551615";
    QTest::newRow("byte") << FieldValue::fromSigned(-1, 1) << "-1";
}

void tst_FieldValue::integerTexts()
{
    QFETCH(FieldValue, value);
    QFETCH(QString, text);
    QCOMPARE(plain(value), text);
}

void tst_FieldValue::hexadecimalHasTheTransmittedWidth_data()
{
    QTest::addColumn<FieldValue>("value");
    QTest::addColumn<QString>("text");
    QTest::newRow("1 byte") << FieldValue::fromUnsigned(10, 1) << "0x0a";
    QTest::newRow("2 bytes") << FieldValue::fromUnsigned(0xbeef, 2) << "0xbeef";
    QTest::newRow("4 bytes") << FieldValue::fromUnsigned(1, 4) << "0x00000001";
    QTest::newRow("8 bytes") << FieldValue::fromUnsigned(~quint64(0), 8) << "0xffffffffffffffff";
    QTest::newRow("negative, 1 byte") << FieldValue::fromSigned(-1, 1) << "0xff";
    QTest::newRow("negative, 4 bytes") << FieldValue::fromSigned(-2, 4) << "0xfffffffe";
    QTest::newRow("least, 8 bytes") << FieldValue::fromSigned(std::numeric_limits<qint64>::min())
                                    << "0x8000000000000000";
    QTest::newRow("character") << FieldValue::fromChar('A') << "0x41";
    QTest::newRow("no integer") << FieldValue::fromDouble(2.5) << "2.5";
}

void tst_FieldValue::hexadecimalHasTheTransmittedWidth()
{
    QFETCH(FieldValue, value);
    QFETCH(QString, text);
    QCOMPARE(value.toString(false, -1, FieldValue::HexadecimalRepresentation, false), text);
}

void tst_FieldValue::formattingOptions_data()
{
    QTest::addColumn<FieldValue>("value");
    QTest::addColumn<bool>("showSign");
    QTest::addColumn<int>("precision");
    QTest::addColumn<bool>("scientific");
    QTest::addColumn<bool>("grouped");
    QTest::addColumn<QString>("text");
    const FieldValue million = FieldValue::fromSigned(-1234567);
    QTest::newRow("sign") << FieldValue::fromSigned(5) << true << -1 << false << false << "+5";
    QTest::newRow("no sign for zero") << FieldValue::fromDouble(0) << true << -1 << false << false << "0";
    QTest::newRow("sign of negative") << million << true << -1 << false << false << "-1234567";
    QTest::newRow("grouped") << million << false << -1 << false << true << "-1_234_567";
    QTest::newRow("grouped, exact") << FieldValue::fromSigned(-123456) << false << -1 << false << true << "-123_456";
    QTest::newRow("nothing to group") << FieldValue::fromUnsigned(999) << false << -1 << false << true << "999";
    QTest::newRow("precision") << FieldValue::fromFloat(2.375f) << false << 2 << false << false << "2.38";
    QTest::newRow("precision 0") << FieldValue::fromDouble(2.75) << false << 0 << false << false << "3";
    QTest::newRow("rounded to zero") << FieldValue::fromDouble(-0.001) << false << 1 << false << false << "0.0";
    QTest::newRow("precision of nan") << FieldValue::fromDouble(NaN) << true << 3 << false << false << "nan";
    QTest::newRow("scientific") << FieldValue::fromDouble(1234.5) << false << -1 << true << false << "1.2345e+03";
    QTest::newRow("scientific float") << FieldValue::fromFloat(0.1f) << false << -1 << true << false << "1e-01";
    QTest::newRow("scientific digits") << FieldValue::fromDouble(1234.5) << true << 1 << true << false << "+1.2e+03";
}

void tst_FieldValue::formattingOptions()
{
    QFETCH(FieldValue, value);
    QFETCH(bool, showSign);
    QFETCH(int, precision);
    QFETCH(bool, scientific);
    QFETCH(bool, grouped);
    QFETCH(QString, text);
    QString shown =
        value.toString(showSign, static_cast<signed char>(precision),
                       scientific ? FieldValue::ScientificRepresentation : FieldValue::PlainRepresentation, grouped);
    QCOMPARE(shown.replace(QChar(0x2009), QLatin1Char('_')), text);
}

void tst_FieldValue::otherKindsHaveTheirText()
{
    const MessageInfo info(QLatin1String("POINT"));
    const MessageReference message = MessageReference::adopt(new TestMessage(&info));
    QCOMPARE(plain(FieldValue::invalid()), QString());
    QCOMPARE(plain(FieldValue::fromChar('A')), QString::fromLatin1("A"));
    QCOMPARE(plain(FieldValue::fromChar(' ')), QString::fromLatin1(" "));
    QCOMPARE(plain(FieldValue::fromChar(0)), QString::fromLatin1("0"));
    QCOMPARE(plain(FieldValue::fromChar(0x7f)), QString::fromLatin1("127"));
    QCOMPARE(plain(FieldValue::fromChar(0xe4)), QString::fromLatin1("228"));
    QCOMPARE(plain(FieldValue::fromBool(true)), QString::fromLatin1("true"));
    QCOMPARE(plain(FieldValue::fromText(QString::fromUtf8("\xc3\xa4"))), QString::fromUtf8("\xc3\xa4"));
    QCOMPARE(plain(FieldValue::fromBytes(QByteArray("\x00\xff", 2))), QString::fromLatin1("00ff"));
    QCOMPARE(plain(FieldValue::fromSubMessage(message.get())), QString::fromLatin1("POINT"));
    QCOMPARE(FieldValue::fromSubMessage(message.get()).getSubMessage(), message.get());
    QVERIFY(!FieldValue::fromSubMessage(0).isValid());
    QVERIFY(!FieldValue::fromSigned(1).getSubMessage());
}

void tst_FieldValue::conversionsSaturateAndNeverLie()
{
    const qint64 most = std::numeric_limits<qint64>::max();
    const qint64 least = std::numeric_limits<qint64>::min();
    QCOMPARE(FieldValue::fromDouble(1e300).toSigned(), most);
    QCOMPARE(FieldValue::fromDouble(9223372036854775808.0).toSigned(), most);
    QCOMPARE(FieldValue::fromDouble(-1e300).toSigned(), least);
    QCOMPARE(FieldValue::fromDouble(-2.9).toSigned(), qint64(-2));
    QCOMPARE(FieldValue::fromDouble(NaN).toSigned(), qint64(0));
    QCOMPARE(FieldValue::fromDouble(1e300).toUnsigned(), ~quint64(0));
    QCOMPARE(FieldValue::fromDouble(1e19).toUnsigned(), Q_UINT64_C(10000000000000000000));
    QCOMPARE(FieldValue::fromSigned(-1).toUnsigned(), ~quint64(0));
    QCOMPARE(FieldValue::fromUnsigned(~quint64(0)).toDouble(), 18446744073709551616.0);
    QCOMPARE(FieldValue::fromBool(true).toDouble(), 1.0);
    QVERIFY(std::isnan(FieldValue::fromText(QLatin1String("5")).toDouble()));
    QCOMPARE(FieldValue::fromText(QLatin1String("5")).toSigned(), qint64(0));
    QVERIFY(std::isnan(FieldValue().toDouble()));
    QVERIFY(FieldValue::fromChar('a').isInteger());
    QVERIFY(FieldValue::fromBool(true).isNumber() && !FieldValue::fromBool(true).isInteger());
    QVERIFY(!FieldValue::fromText(QString()).isNumber());
}

void tst_FieldValue::equality()
{
    QVERIFY(FieldValue() == FieldValue::invalid());
    QVERIFY(FieldValue::fromDouble(NaN) == FieldValue::fromDouble(NaN));
    QVERIFY(FieldValue::fromDouble(1) != FieldValue::fromFloat(1));
    QVERIFY(FieldValue::fromDouble(1) != FieldValue::fromDouble(NaN));
    QVERIFY(FieldValue::fromSigned(0) != FieldValue::fromUnsigned(0));
    QVERIFY(FieldValue::fromSigned(0) != FieldValue());
    QVERIFY(FieldValue::fromUnsigned(5, 1) == FieldValue::fromUnsigned(5, 8));
    QVERIFY(FieldValue::fromText(QLatin1String("a")) == FieldValue::fromText(QLatin1String("a")));
    QVERIFY(FieldValue::fromText(QLatin1String("a")) != FieldValue::fromText(QLatin1String("b")));
    QVERIFY(FieldValue::fromBytes("a") != FieldValue::fromText(QLatin1String("a")));
    QVERIFY(FieldValue::fromChar('a') != FieldValue::fromUnsigned('a', 1));
}

QTEST_APPLESS_MAIN(tst_FieldValue)

#include "tst_fieldvalue.moc"

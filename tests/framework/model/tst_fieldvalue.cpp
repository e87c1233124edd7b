#include "fieldvalue.h"
#include "messageinfo.h"
#include "testbase.h"
#include "testformat.h"
#include "textrows.h"

#include <cmath>
#include <cstring>
#include <initializer_list>
#include <limits>

static const double NaN = std::numeric_limits<double>::quiet_NaN();
static const double Infinity = std::numeric_limits<double>::infinity();
static const qint64 Least = std::numeric_limits<qint64>::min();
static const qint64 Most = std::numeric_limits<qint64>::max();

static QString texts(std::initializer_list<FieldValue> values,
                     FieldValue::RepresentationMode mode = FieldValue::PlainRepresentation)
{
    QStringList all;
    for (const FieldValue& value : values)
        all << value.toString(false, -1, mode, false);
    return all.join(QLatin1String(" "));
}

template <typename Real>
static QString textsOf(std::initializer_list<Real> values)
{
    QStringList all;
    for (Real value : values)
        all << texts({sizeof(Real) == 4 ? FieldValue::fromFloat(float(value)) : FieldValue::fromDouble(value)});
    return all.join(QLatin1String(" "));
}

class tst_FieldValue : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void isSmallAndCopiesKeepTheirValue()
    {
        QVERIFY(sizeof(FieldValue) <= 4 * sizeof(void*));
        FieldValue original = FieldValue::fromText(text("text"));
        FieldValue copy(original);
        original = FieldValue::fromSigned(-5);
        FieldValue& alias = copy;
        copy = alias;
        QCOMPARE(texts({copy, original}), text("text -5"));
        copy = FieldValue();
        QVERIFY(!copy.isValid());
    }

    void realNumbersHaveTheirShortestText()
    {
        typedef std::numeric_limits<double> D;
        QCOMPARE(
            textsOf<double>({0.0, -0.0, 0.1, 0.1 + 0.2, -1.0 / 3, 100000.0, 123456789012.5, 9999999999999998.0, 1e16}),
            text("0 -0 0.1 0.30000000000000004 -0.3333333333333333 100000 123456789012.5 9999999999999998 1e16"));
        QCOMPARE(
            textsOf<double>({-1.5e300, 0.00001, 0.0000012, D::max(), D::min(), D::denorm_min(), NaN,
                             std::copysign(NaN, -1.0), Infinity, -Infinity}),
            text("-1.5e300 0.00001 1.2e-6 1.7976931348623157e308 2.2250738585072014e-308 5e-324 nan nan inf -inf"));
        typedef std::numeric_limits<float> F;
        QCOMPARE(textsOf<float>({0.1f, 1.0f / 3, -0.0f, 16777216.0f, 100000.0f, 1e16f, F::max(), F::min(),
                                 F::denorm_min(), F::quiet_NaN(), -F::infinity()}),
                 text("0.1 0.33333334 -0 16777216 100000 1e16 3.4028235e38 1.1754944e-38 1e-45 nan -inf"));
    }

    // Numbers with arbitrary bits, as a broken device sends them.
    void shortestTextsReadBackTheSame()
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
            if (!std::isfinite(number) || !std::isfinite(single))
                continue;
            const QString ofNumber = textsOf<double>({number});
            const QString ofSingle = textsOf<float>({single});
            QVERIFY2(std::strtod(ofNumber.toLatin1().constData(), 0) == number, qPrintable(ofNumber));
            QVERIFY2(std::strtof(ofSingle.toLatin1().constData(), 0) == single, qPrintable(ofSingle));
            QVERIFY2(ofSingle.count(QLatin1Char('-')) + ofSingle.size() < 25, qPrintable(ofSingle));
        }
    }

    void decimalsAreShownWithAllTheirDigits()
    {
        const FieldValue value = FieldValue::fromDecimal(text("31.4159265358979323846"), 31.4159265358979323846);
        QCOMPARE(texts({value, FieldValue::fromDecimal(text("1e400"), Infinity)}),
                 text("31.4159265358979323846 1e400"));
        QCOMPARE(value.toString(true, -1, FieldValue::PlainRepresentation, false), text("+31.4159265358979323846"));
        QCOMPARE(value.toString(true, 2, FieldValue::PlainRepresentation, false), text("+31.42"));
        QVERIFY(value.isNumber() && !value.isInteger());
        QCOMPARE(value.toSigned(), Q_INT64_C(31));
        QVERIFY(value != FieldValue::fromDecimal(text("31.41592653589793238460"), value.toDouble()));
    }

    void everyKindHasItsText()
    {
        const MessageInfo info(text("POINT"));
        const MessageReference message = MessageReference::adopt(new TestMessage(&info));
        QCOMPARE(texts({FieldValue::fromSigned(Least), FieldValue::fromSigned(Most), FieldValue::fromSigned(-1, 1),
                        FieldValue::fromUnsigned(~quint64(0))}),
                 text("-9223372036854775808 9223372036854775807 -1 18446744073709551615"));
        QCOMPARE(texts({FieldValue::invalid(), FieldValue::fromChar('A'), FieldValue::fromChar(' '),
                        FieldValue::fromChar(0), FieldValue::fromChar(0x7f), FieldValue::fromChar(0xe4)}),
                 text(" A   0 127 228"));
        QCOMPARE(texts({FieldValue::fromBool(true), FieldValue::fromText(text("\xc3\xa4")),
                        FieldValue::fromBytes(QByteArray("\x00\xff", 2)), FieldValue::fromSubMessage(message.get())}),
                 text("true \xc3\xa4 00ff POINT"));
        QCOMPARE(FieldValue::fromSubMessage(message.get()).getSubMessage(), message.get());
        QVERIFY(!FieldValue::fromSubMessage(0).isValid() && !FieldValue::fromSigned(1).getSubMessage());
    }

    void hexadecimalHasTheTransmittedWidth()
    {
        QCOMPARE(texts({FieldValue::fromUnsigned(10, 1), FieldValue::fromUnsigned(0xbeef, 2),
                        FieldValue::fromUnsigned(1, 4), FieldValue::fromUnsigned(~quint64(0), 8),
                        FieldValue::fromSigned(-1, 1), FieldValue::fromSigned(-2, 4), FieldValue::fromSigned(Least),
                        FieldValue::fromChar('A'), FieldValue::fromDouble(2.5)},
                       FieldValue::HexadecimalRepresentation),
                 text("0x0a 0xbeef 0x00000001 0xffffffffffffffff 0xff 0xfffffffe 0x8000000000000000 0x41 2.5"));
    }

    void formattingOptions()
    {
        const FieldValue::RepresentationMode scientific = FieldValue::ScientificRepresentation;
        const FieldValue::RepresentationMode plainly = FieldValue::PlainRepresentation;
        const FieldValue million = FieldValue::fromSigned(-1234567);
        const FieldValue real = FieldValue::fromDouble(1234.5);
        const QStringList shown = QStringList() << FieldValue::fromSigned(5).toString(true, -1, plainly, false)
                                                << FieldValue::fromDouble(0).toString(true, -1, plainly, false)
                                                << million.toString(true, -1, plainly, false)
                                                << million.toString(false, -1, plainly, true)
                                                << FieldValue::fromSigned(-123456).toString(false, -1, plainly, true)
                                                << FieldValue::fromUnsigned(999).toString(false, -1, plainly, true)
                                                << FieldValue::fromFloat(2.375f).toString(false, 2, plainly, false)
                                                << FieldValue::fromDouble(2.75).toString(false, 0, plainly, false)
                                                << FieldValue::fromDouble(-0.001).toString(false, 1, plainly, false)
                                                << FieldValue::fromDouble(NaN).toString(true, 3, plainly, false)
                                                << real.toString(false, -1, scientific, false)
                                                << FieldValue::fromFloat(0.1f).toString(false, -1, scientific, false)
                                                << real.toString(true, 1, scientific, false);
        QCOMPARE(shown.join(QLatin1String(" ")).replace(QChar(0x2009), QLatin1Char('_')),
                 text("+5 0 -1234567 -1_234_567 -123_456 999 2.38 3 0.0 nan 1.2345e+03 1e-01 +1.2e+03"));
    }

    void conversionsSaturateAndNeverLie()
    {
        QCOMPARE(FieldValue::fromDouble(9223372036854775808.0).toSigned(), Most);
        QCOMPARE(FieldValue::fromDouble(-1e300).toSigned(), Least);
        QCOMPARE(FieldValue::fromDouble(-2.9).toSigned(), qint64(-2));
        QCOMPARE(FieldValue::fromDouble(NaN).toSigned(), qint64(0));
        QCOMPARE(FieldValue::fromDouble(1e300).toUnsigned(), ~quint64(0));
        QCOMPARE(FieldValue::fromDouble(1e19).toUnsigned(), Q_UINT64_C(10000000000000000000));
        QCOMPARE(FieldValue::fromSigned(-1).toUnsigned(), ~quint64(0));
        QCOMPARE(FieldValue::fromUnsigned(~quint64(0)).toDouble(), 18446744073709551616.0);
        QCOMPARE(FieldValue::fromBool(true).toDouble(), 1.0);
        const FieldValue five = FieldValue::fromText(text("5"));
        QVERIFY(std::isnan(five.toDouble()) && five.toSigned() == 0 && !five.isNumber());
        QVERIFY(FieldValue::fromChar('a').isInteger());
        QVERIFY(FieldValue::fromBool(true).isNumber() && !FieldValue::fromBool(true).isInteger());
    }

    void equality()
    {
        // None is equal to any other of them.
        const FieldValue values[] = {FieldValue(),
                                     FieldValue::fromDouble(1),
                                     FieldValue::fromFloat(1),
                                     FieldValue::fromDouble(NaN),
                                     FieldValue::fromSigned(0),
                                     FieldValue::fromUnsigned(0),
                                     FieldValue::fromText(text("a")),
                                     FieldValue::fromText(text("b")),
                                     FieldValue::fromBytes("a"),
                                     FieldValue::fromChar('a'),
                                     FieldValue::fromUnsigned('a', 1)};
        const int count = int(sizeof values / sizeof values[0]);
        for (int i = 0; i < count; ++i)
            for (int k = 0; k < count; ++k)
                QVERIFY2((values[i] == values[k]) == (i == k), qPrintable(QString::fromLatin1("%1 %2").arg(i).arg(k)));
        QVERIFY(FieldValue::fromUnsigned(5, 1) == FieldValue::fromUnsigned(5, 8));
        QVERIFY(FieldValue::fromText(text("a")) == FieldValue::fromText(text("a")));
    }
};

QTEST_APPLESS_MAIN(tst_FieldValue)

#include "tst_fieldvalue.moc"

#include "timetext.h"

#include <QDateTime>

namespace
{

const qint64 BeginOfYear1 = -Q_INT64_C(62135596800);
const qint64 EndOfYear9999 = Q_INT64_C(253402300799);

// ".5" of 500000000; empty of 0.
QString fractionText(qint64 nanos)
{
    if (nanos == 0)
        return QString();
    QString digits = QString::number(nanos).rightJustified(9, QLatin1Char('0'));
    while (digits.endsWith(QLatin1Char('0')))
        digits.chop(1);
    return QLatin1Char('.') + digits;
}

QString partsText(qint64 seconds, qint64 nanos)
{
    return QStringLiteral("%1 s and %2 ns").arg(seconds).arg(nanos);
}

} // namespace

QString TimeText::ofTime(qint64 seconds, qint64 nanos)
{
    if (seconds < BeginOfYear1 || seconds > EndOfYear9999 || nanos < 0 || nanos >= NanosPerSecond)
        return partsText(seconds, nanos);
    const QDateTime time = QDateTime(QDate(1970, 1, 1), QTime(0, 0), Qt::UTC).addSecs(seconds);
    return time.toString(QStringLiteral("yyyy-MM-ddThh:mm:ss")) + fractionText(nanos) + QLatin1Char('Z');
}

QString TimeText::ofDuration(qint64 seconds, qint64 nanos)
{
    const bool contradicts = (seconds > 0 && nanos < 0) || (seconds < 0 && nanos > 0);
    if (contradicts || nanos <= -NanosPerSecond || nanos >= NanosPerSecond)
        return partsText(seconds, nanos);
    const QString sign = seconds == 0 && nanos < 0 ? QStringLiteral("-") : QString();
    return sign + QString::number(seconds) + fractionText(qAbs(nanos)) + QStringLiteral(" s");
}

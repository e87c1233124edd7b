#include "messagestatistics.h"

namespace
{

QString rateText(unsigned int interval)
{
    if (1000 % interval == 0)
        return QString::number(1000 / interval);
    if (10000 % interval == 0)
        return QString::number(1000.0 / interval, 'f', 1);
    // The shortest rate that the interval is the whole number of milliseconds of: 33 ms are 30 Hz, not 30.3 Hz.
    for (int digits = 1; digits < 4; ++digits) {
        const double rate = QString::number(1000.0 / interval, 'e', digits - 1).toDouble();
        if (static_cast<unsigned int>(1000.0 / rate + 0.5) == interval)
            return QString::number(rate, 'g', digits + 1);
    }
    return QString::number(1000.0 / interval, 'g', 4);
}

QString secondsText(unsigned long long interval)
{
    QString text = QString::number(interval / 1000);
    const unsigned int milliseconds = static_cast<unsigned int>(interval % 1000);
    if (milliseconds == 0)
        return text;
    QString decimals = QString::number(1000 + milliseconds).mid(1);
    while (decimals.endsWith(QLatin1Char('0')))
        decimals.chop(1);
    return text + QLatin1Char('.') + decimals;
}

} // namespace

QString MessageStatistics::getIntervalString(unsigned long long interval)
{
    if (interval > 0 && interval <= 1000)
        return rateText(static_cast<unsigned int>(interval)) + QLatin1String(" Hz");
    return secondsText(interval) + QLatin1String(" s");
}

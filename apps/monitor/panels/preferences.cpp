#include "preferences.h"

#include <QSettings>

static void restoreNumber(QSettings& settings, const char* key, int least, int greatest, int* number)
{
    bool ok = false;
    const int value = settings.value(QLatin1String(key)).toInt(&ok);
    if (ok && value >= least && value <= greatest)
        *number = value;
}

void Preferences::save(QSettings& settings) const
{
    settings.beginGroup(QLatin1String("preferences"));
    settings.setValue(QLatin1String("tickRate"), tickRate);
    settings.setValue(QLatin1String("silentIntervals"), silentIntervals);
    settings.setValue(QLatin1String("watchTimeOut"), watchTimeOut);
    settings.setValue(QLatin1String("decimals"), decimals);
    settings.setValue(QLatin1String("digits"), digits);
    settings.setValue(QLatin1String("highlight"), highlight);
    settings.setValue(QLatin1String("theme"), Theme::nameOf(theme));
    settings.setValue(QLatin1String("language"), language);
    settings.setValue(QLatin1String("annotations"), annotations);
    settings.endGroup();
}

void Preferences::restore(QSettings& settings)
{
    // Where earlier versions kept it.
    const QVariant timeOutBefore = settings.value(QLatin1String("watches/timeOut"), watchTimeOut);
    settings.beginGroup(QLatin1String("preferences"));
    restoreNumber(settings, "tickRate", 1, 60, &tickRate);
    restoreNumber(settings, "silentIntervals", 0, 1000, &silentIntervals);
    bool isTime = false;
    const double timeOut = settings.value(QLatin1String("watchTimeOut"), timeOutBefore).toDouble(&isTime);
    if (isTime && timeOut >= 0 && timeOut <= LongestTimeOut)
        watchTimeOut = timeOut;
    restoreNumber(settings, "decimals", ExactDecimals, 17, &decimals);
    restoreNumber(settings, "digits", 0, 17, &digits);
    highlight = settings.value(QLatin1String("highlight"), highlight).toBool();
    Theme::find(settings.value(QLatin1String("theme")).toString(), &theme);
    language = settings.value(QLatin1String("language"), language).toString();
    annotations = settings.value(QLatin1String("annotations"), annotations).toString();
    settings.endGroup();
}

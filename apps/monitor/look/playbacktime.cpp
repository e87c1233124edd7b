#include "playbacktime.h"

#include <QDateTime>
#include <QStringList>

static const qint64 Second = 1000 * 1000;
static const qint64 Day = 24 * 3600 * Second;

QString PlaybackTime::clockText(qint64 time)
{
    return QDateTime::fromMSecsSinceEpoch(time / 1000, Qt::UTC).toString(QLatin1String("yyyy-MM-dd HH:mm:ss.zzz"));
}

QString PlaybackTime::lengthText(qint64 microseconds)
{
    const qint64 seconds = qMax(qint64(0), microseconds) / Second;
    const QString rest = QString::fromLatin1("%1:%2")
                             .arg(seconds / 60 % 60, seconds >= 3600 ? 2 : 1, 10, QLatin1Char('0'))
                             .arg(seconds % 60, 2, 10, QLatin1Char('0'));
    return seconds >= 3600 ? QString::fromLatin1("%1:%2").arg(seconds / 3600).arg(rest) : rest;
}

// Up to three numbers, the last of which may have a fraction: seconds, or minutes and seconds, or hours too. With
// @p clock, two of them are hours and minutes.
static bool parseParts(const QString& text, bool clock, qint64* length)
{
    const QStringList parts = text.split(QLatin1Char(':'));
    if (parts.size() > 3 || (clock && parts.size() < 2))
        return false;
    double seconds = 0;
    for (int i = 0; i < parts.size(); ++i) {
        bool isNumber = false;
        const double part = parts.at(i).toDouble(&isNumber);
        const bool isLast = i == parts.size() - 1;
        if (!isNumber || !(part >= 0) || part > 1e9 || (i > 0 && part >= 60) ||
            (!isLast && part != double(qint64(part))))
            return false;
        seconds = 60 * seconds + part;
    }
    if (clock && parts.size() == 2)
        seconds *= 60;
    *length = qRound64(seconds * double(Second));
    return true;
}

bool PlaybackTime::parse(const QString& typed, qint64 start, qint64* time)
{
    const QString text = typed.trimmed();
    qint64 length = 0;
    if (text.startsWith(QLatin1Char('+'))) {
        if (!parseParts(text.mid(1), false, &length))
            return false;
        *time = start + length;
        return true;
    }
    if (parseParts(text, true, &length)) {
        if (length >= Day)
            return false;
        *time = start - start % Day + length;
        // A time without fractions means the whole second, of which the start may be the rest.
        if (*time + Second <= start)
            *time += Day;
        return true;
    }
    QString iso = text;
    iso.replace(QLatin1Char(' '), QLatin1Char('T'));
    if (!iso.endsWith(QLatin1Char('Z')))
        iso += QLatin1Char('Z');
    const QDateTime date = QDateTime::fromString(iso, Qt::ISODateWithMs);
    if (!date.isValid())
        return false;
    *time = date.toMSecsSinceEpoch() * 1000;
    return true;
}

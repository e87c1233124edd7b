#include "jetstreamplace.h"

#include "message.h"

#include <QDateTime>
#include <QList>

JetStreamPlace::JetStreamPlace(const QByteArray& reply)
{
    const QList<QByteArray> parts = reply.split('.');
    // Servers can put a domain and an account in front.
    const int first = parts.size() == 9 ? 5 : 7;
    if (parts.size() < first + 4)
        return;
    stream = parts.at(first).toULongLong();
    consumer = parts.at(first + 1).toULongLong();
    time = parts.at(first + 2).toLongLong();
    pending = parts.at(first + 3).toULongLong();
}

qint64 JetStreamPlace::readTime(const QString& text)
{
    const QDateTime second = QDateTime::fromString(text.left(19) + QLatin1Char('Z'), Qt::ISODate);
    if (!second.isValid() || second.toMSecsSinceEpoch() <= 0)
        return Message::NoTime;
    const QString fraction =
        text.mid(19, 1) == QLatin1String(".") ? text.mid(20).section(QLatin1Char('Z'), 0, 0) : QString();
    return second.toMSecsSinceEpoch() * 1000 + fraction.leftJustified(6, QLatin1Char('0'), true).toLongLong();
}

QString JetStreamPlace::writeTime(qint64 time)
{
    return QDateTime::fromMSecsSinceEpoch(time / 1000, Qt::UTC).toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) +
           QStringLiteral(".%1Z").arg(time % 1000000, 6, 10, QLatin1Char('0'));
}

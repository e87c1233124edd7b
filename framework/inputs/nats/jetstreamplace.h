#ifndef JETSTREAMPLACE_H
#define JETSTREAMPLACE_H

#include <QByteArray>
#include <QString>

/** What the subject for answers to a message of a stream says of it. */
struct JetStreamPlace
{
    explicit JetStreamPlace(const QByteArray& reply);

    /** Microseconds since 1970, rounded down; Message::NoTime for a time that no message has. */
    static qint64 readTime(const QString& text);
    static QString writeTime(qint64 time);

    quint64 stream = 0;   ///< number in the stream; 0 for none
    quint64 consumer = 0; ///< number in what the consumer gets
    qint64 time = 0;      ///< nanoseconds since 1970
    quint64 pending = 0;  ///< messages behind it
};

#endif

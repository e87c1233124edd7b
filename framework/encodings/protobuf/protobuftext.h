#ifndef PROTOBUFTEXT_H
#define PROTOBUFTEXT_H

#include "utf8text.h"

#include <QByteArray>
#include <QString>

#include <string>

/** Texts between Protocol Buffers and Qt. */
namespace ProtobufText
{

inline QString fromUtf8(const std::string& text)
{
    return Utf8Text::decode(text.data(), static_cast<int>(text.size()));
}

inline QByteArray toBytes(const std::string& bytes)
{
    return QByteArray(bytes.data(), static_cast<int>(bytes.size()));
}

/** What a comment says, as one paragraph a line. */
QString commentText(const std::string& leading, const std::string& trailing);

/** The first paragraph of such a text. */
QString firstParagraph(const QString& text);

/** "2024-06-18T12:25:40.5Z"; with the two numbers in words when they are no time of the years 1 to 9999. */
QString timestampText(qint64 seconds, qint32 nanos);

/** "-1.5 s", exactly; with the two numbers in words when their signs contradict each other. */
QString durationText(qint64 seconds, qint32 nanos);

} // namespace ProtobufText

#endif

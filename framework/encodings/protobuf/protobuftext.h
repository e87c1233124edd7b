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

} // namespace ProtobufText

#endif

#ifndef UTF8TEXT_H
#define UTF8TEXT_H

#include <QString>

/** What came as UTF-8 in a message. */
namespace Utf8Text
{

/** @p size bytes, also when the first character is U+FEFF, which QString::fromUtf8() drops as a mark. */
inline QString decode(const char* bytes, int size)
{
    const QString text = QString::fromUtf8(bytes, size);
    const bool isMarked = size >= 3 && bytes[0] == '\xef' && bytes[1] == '\xbb' && bytes[2] == '\xbf';
    return isMarked ? QChar(0xfeff) + text : text;
}

inline QString decode(const QByteArray& bytes)
{
    return decode(bytes.constData(), static_cast<int>(bytes.size()));
}

} // namespace Utf8Text

#endif

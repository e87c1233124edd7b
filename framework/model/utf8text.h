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

/** The number of bytes of the character that begins there, of @p size at most; 0 when these are no UTF-8. */
inline int characterSize(const char* bytes, qint64 size)
{
    const auto byteAt = [bytes](int i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = byteAt(0);
    if (lead < 0x80)
        return 1;
    int length = 0;
    unsigned char least = 0x80;
    unsigned char greatest = 0xbf;
    if (lead >= 0xc2 && lead <= 0xdf) {
        length = 2;
    } else if (lead >= 0xe0 && lead <= 0xef) {
        length = 3;
        least = lead == 0xe0 ? 0xa0 : least;
        greatest = lead == 0xed ? 0x9f : greatest;
    } else if (lead >= 0xf0 && lead <= 0xf4) {
        length = 4;
        least = lead == 0xf0 ? 0x90 : least;
        greatest = lead == 0xf4 ? 0x8f : greatest;
    } else {
        return 0;
    }
    if (size < length || byteAt(1) < least || byteAt(1) > greatest)
        return 0;
    for (int i = 2; i < length; ++i)
        if (byteAt(i) < 0x80 || byteAt(i) > 0xbf)
            return 0;
    return length;
}

} // namespace Utf8Text

#endif

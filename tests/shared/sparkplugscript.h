#ifndef SPARKPLUGSCRIPT_H
#define SPARKPLUGSCRIPT_H

#include <QByteArray>
#include <QStringList>
#include <QtEndian>

#include <cstring>

/**
 * Payloads of Sparkplug B by texts, blanks between: the number, then metrics "NAME,ALIAS,TYPE,VALUE,MORE...", each of
 * which may be empty. A value is "i5" or "l5" (whole), "f0.5", "d0.5", "b1", "sTEXT" or "xHEX" (bytes), and of a table
 * "T" or a template "M" with its bytes in hexadecimal; more is "@MILLISECONDS", "uUNIT", "null" or "old".
 */
namespace SparkplugScript
{

inline QByteArray varint(quint64 value)
{
    QByteArray bytes;
    for (; value >= 0x80; value >>= 7)
        bytes += char(value | 0x80);
    return bytes + char(value);
}

inline QByteArray number(int field, quint64 value)
{
    return varint(quint64(field) << 3) + varint(value);
}

inline QByteArray part(int field, const QByteArray& bytes)
{
    return varint(quint64(field) << 3 | 2) + varint(quint64(bytes.size())) + bytes;
}

template <typename Real>
QByteArray real(int field, Real value)
{
    QByteArray bytes(int(sizeof value), 0);
    std::memcpy(bytes.data(), &value, sizeof value);
    return varint(quint64(field) << 3 | (sizeof value == 8 ? 1 : 5)) + bytes;
}

/** A value whose fields begin with number @p first. */
inline QByteArray value(const QByteArray& text, int first)
{
    const QByteArray rest = text.mid(1);
    switch (text.isEmpty() ? '\0' : text.at(0)) {
    case 'i':
        return number(first, quint32(rest.toLongLong()));
    case 'l':
        return number(first + 1, quint64(rest.toLongLong()));
    case 'f':
        return real(first + 2, rest.toFloat());
    case 'd':
        return real(first + 3, rest.toDouble());
    case 'b':
        return number(first + 4, rest.toUInt());
    case 's':
        return part(first + 5, rest);
    case 'x':
        return part(first + 6, QByteArray::fromHex(rest));
    case 'T':
        return part(first + 7, QByteArray::fromHex(rest));
    case 'M':
        return part(first + 8, QByteArray::fromHex(rest));
    }
    return QByteArray();
}

inline QByteArray metric(const QByteArray& text)
{
    const QList<QByteArray> words = text.split(',');
    QByteArray bytes;
    if (!words.value(0).isEmpty())
        bytes += part(1, words.at(0));
    if (!words.value(1).isEmpty())
        bytes += number(2, words.at(1).toULongLong());
    if (!words.value(2).isEmpty())
        bytes += number(4, words.at(2).toULongLong());
    bytes += value(words.value(3), 10);
    for (const QByteArray& more : words.mid(4)) {
        if (more.startsWith('@'))
            bytes += number(3, more.mid(1).toULongLong());
        else if (more.startsWith('u'))
            bytes += part(9, part(1, "engUnit") + part(2, number(1, 12) + part(8, more.mid(1))));
        else
            bytes += number(more == "null" ? 7 : 5, 1);
    }
    return bytes;
}

inline QByteArray payload(const QByteArray& text)
{
    const QList<QByteArray> words = text.split(' ');
    QByteArray bytes = number(1, 7000);
    for (const QByteArray& word : words.mid(1))
        bytes += part(2, metric(word));
    return words.at(0).isEmpty() ? bytes : bytes + number(3, words.at(0).toULongLong());
}

} // namespace SparkplugScript

#endif

#ifndef CDRWRITER_H
#define CDRWRITER_H

#include <QByteArray>
#include <QtEndian>

/**
 * Appends values as CDR writes them, little-endian: each where a multiple of its size lies from the first byte behind
 * the head.
 */
class CdrWriter
{
public:
    CdrWriter()
        : m_bytes("\x00\x01\x00\x00", HeadSize)
    {
    }

    /** With the head. */
    const QByteArray& bytes() const { return m_bytes; }

    CdrWriter& number8(int value)
    {
        m_bytes += char(value);
        return *this;
    }
    CdrWriter& number16(quint16 value) { return number(value); }
    CdrWriter& number32(quint32 value) { return number(value); }
    CdrWriter& real32(double value) { return number(float(value)); }
    CdrWriter& real(double value) { return number(value); }

    CdrWriter& text(const QByteArray& value)
    {
        number32(quint32(value.size()) + 1);
        m_bytes += value;
        return number8(0);
    }

    /** A sequence of bytes. */
    CdrWriter& data(const QByteArray& value)
    {
        number32(quint32(value.size()));
        m_bytes += value;
        return *this;
    }

    /** What a sequence begins with. */
    CdrWriter& count(qint64 elements) { return number32(quint32(elements)); }

private:
    enum
    {
        HeadSize = 4
    };

    template <typename Number>
    CdrWriter& number(Number value)
    {
        while ((m_bytes.size() - HeadSize) % int(sizeof value))
            m_bytes += '\0';
        char text[sizeof value];
        qToLittleEndian(value, text);
        m_bytes.append(text, sizeof text);
        return *this;
    }

    QByteArray m_bytes;
};

#endif

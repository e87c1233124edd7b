#include "mqttcheck.h"

#include <QCoreApplication>

#include <mqtt_protocol.h>

namespace
{

const int MostLengthBytes = 4;
const qint64 Incomplete = -1;
const qint64 Endless = -2;
const int ReservedQos = 3;

struct Kind
{
    const char* name;
    bool isOfServers;
};

// By the four bits that say what a packet is.
const Kind kinds[] = {
    {"packet of the kind 0", false},
    {"CONNECT", false},
    {"CONNACK", true},
    {"PUBLISH", true},
    {"PUBACK", true},
    {"PUBREC", true},
    {"PUBREL", true},
    {"PUBCOMP", true},
    {"SUBSCRIBE", false},
    {"SUBACK", true},
    {"UNSUBSCRIBE", false},
    {"UNSUBACK", true},
    {"PINGREQ", false},
    {"PINGRESP", true},
    {"DISCONNECT", true},
    {"AUTH", true},
};

// What properties hold, by their identifiers: a number of so many bytes, one of varying size, a text, a pair of texts.
const char contents[] = "-14s----ss-v-----4s2-ss141s-s--s-22211p4111";

int byteAt(const char* at)
{
    return static_cast<unsigned char>(*at);
}

QString hexadecimal(int number)
{
    return QStringLiteral("0x%1").arg(number, 2, 16, QLatin1Char('0'));
}

/** Reads a number of varying size and steps behind it. */
qint64 readNumber(const char** at, const char* end)
{
    qint64 number = 0;
    for (int i = 0; i < MostLengthBytes; ++i) {
        if (*at == end)
            return Incomplete;
        const int byte = byteAt((*at)++);
        number |= qint64(byte & 0x7f) << (7 * i);
        if (byte < 0x80)
            return number;
    }
    return Endless;
}

/** Steps behind a text; false where it is longer than what is there. */
bool skipText(const char** at, const char* end)
{
    if (end - *at < 2)
        return false;
    const qint64 size = 2 + (byteAt(*at) << 8) + byteAt(*at + 1);
    if (end - *at < size)
        return false;
    *at += size;
    return true;
}

bool skipContent(char content, const char** at, const char* end)
{
    if (content == 'v')
        return readNumber(at, end) >= 0;
    if (content == 's')
        return skipText(at, end);
    if (content == 'p')
        return skipText(at, end) && skipText(at, end);
    if (end - *at < content - '0')
        return false;
    *at += content - '0';
    return true;
}

} // namespace

qint64 MqttCheck::sizeOf(const char* data, qint64 size)
{
    const char* at = data + 1;
    const qint64 length = size < 2 ? Incomplete : readNumber(&at, data + size);
    return length < 0 ? -1 : at - data + length;
}

/** Sets the error, a text in which %1 is the packet's name and %2 is @p value. */
bool MqttCheck::refuse(const char* text, const QString& value)
{
    m_error = QCoreApplication::translate("MqttCheck", text).arg(QLatin1String(m_name));
    if (!value.isEmpty())
        m_error = m_error.arg(value);
    m_error = QCoreApplication::translate("MqttCheck", "%1 (packet %2)").arg(m_error).arg(m_packets);
    return false;
}

qint64 MqttCheck::check(const char* data, qint64 size)
{
    m_checked = 0;
    while (m_checked < size) {
        if (m_payload > 0) {
            const qint64 part = qMin(m_payload, size - m_checked);
            m_payload -= part;
            m_checked += part;
            continue;
        }
        if (size - m_checked < m_needed)
            break;
        const qint64 head = checkHead(data + m_checked, size - m_checked);
        if (head < 0)
            return -1;
        if (head == 0)
            break;
        m_checked += head;
        m_needed = 0;
    }
    return m_checked;
}

/** Of a packet that begins at @p data: the bytes of it that are right, with m_payload those that need no check; 0 with
 * m_needed for too few to tell, -1 for what is wrong. */
qint64 MqttCheck::checkHead(const char* data, qint64 size)
{
    const int type = byteAt(data) >> 4;
    const int flags = byteAt(data) & 0xf;
    if (m_needed == 0)
        ++m_packets;
    m_name = kinds[type].name;
    const auto wrong = [this](const char* text, const QString& value = QString()) {
        return refuse(text, value) ? 0 : -1;
    };
    const bool isAnswer = type << 4 == CMD_CONNACK;
    if (!m_isAnswered && !isAnswer) {
        m_error = QCoreApplication::translate("MqttInput", "what comes is no MQTT");
        return -1;
    }
    if (m_isAnswered && isAnswer)
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 for the second time"));
    if (!kinds[type].isOfServers || (!m_isFive && type << 4 >= int(CMD_DISCONNECT)))
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1, which only clients send"));
    const bool isMessage = type << 4 == CMD_PUBLISH;
    if (isMessage ? (flags >> 1 & ReservedQos) == ReservedQos : flags != (type << 4 == CMD_PUBREL ? 2 : 0))
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 with the flags %2"), hexadecimal(flags));

    const char* at = data + 1;
    const qint64 length = readNumber(&at, data + size);
    if (length == Endless)
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 whose length has more than four bytes"));
    m_needed = size + 1;
    if (length == Incomplete)
        return 0;
    if (length > GreatestPacket && (m_isFive || !isMessage))
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 of %2 bytes"), QString::number(length));
    const char* const end = at + length;
    if (!isMessage) {
        m_needed = end - data;
        if (size < m_needed)
            return 0;
        return checkBody(type << 4, at, length) ? m_needed : -1;
    }

    const auto isThere = [&](const char* to) {
        m_needed = to - data;
        return size >= m_needed;
    };
    const char* topic = at;
    if (length < 2)
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 whose topic is longer than the packet"));
    if (!isThere(at + 2))
        return 0;
    if (byteAt(topic) == 0 && byteAt(topic + 1) == 0)
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 without a topic"));
    if (!skipText(&at, end))
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 whose topic is longer than the packet"));
    at += flags & 6 ? 2 : 0;
    if (at > end)
        return wrong(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 that ends before its number"));
    if (!isThere(at))
        return 0;
    if (m_isFive) {
        const char* block = at;
        const qint64 properties = readNumber(&block, qMin(end, data + size));
        if (properties == Incomplete && data + size < end) {
            m_needed = size + 1;
            return 0;
        }
        if (properties >= 0 && properties <= end - block && !isThere(block + properties))
            return 0;
        if (!checkProperties(&at, end))
            return -1;
    }
    m_payload = end - at;
    return at - data;
}

/** Checks a whole packet that is no message. */
bool MqttCheck::checkBody(int type, const char* body, qint64 size)
{
    const char* at = body;
    const char* const end = body + size;
    const auto isShort = [this] {
        return refuse(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 that is too short"));
    };
    switch (type) {
    case CMD_CONNACK:
        if (size < 2)
            return isShort();
        m_isAnswered = true;
        at += 2;
        if (!m_isFive || at == end)
            return true; // servers that know no MQTT 5 answer so
        break;
    case CMD_PINGRESP:
        return size == 0 || refuse(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 with something in it"));
    case CMD_DISCONNECT:
    case CMD_AUTH:
        if (size < 2)
            return true;
        ++at;
        break;
    case CMD_SUBACK:
    case CMD_UNSUBACK:
        if (size < 2)
            return isShort();
        at += 2;
        if (m_isFive && !checkProperties(&at, end))
            return false;
        // The library would read the first reason even if there is none.
        return at < end || (!m_isFive && type == CMD_UNSUBACK) || isShort();
    default: // that a message has arrived
        if (size < 2)
            return isShort();
        if (!m_isFive || size < 4)
            return true;
        at += 3;
        break;
    }
    return checkProperties(&at, end) &&
           (at == end ||
            refuse(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 with something behind its properties")));
}

bool MqttCheck::checkProperties(const char** at, const char* end)
{
    const qint64 size = readNumber(at, end);
    if (size < 0 || size > end - *at)
        return refuse(
            QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 whose properties are longer than the packet"));
    const char* const last = *at + size;
    while (*at < last) {
        const int identifier = byteAt((*at)++);
        const char content = identifier < int(sizeof contents) - 1 ? contents[identifier] : '-';
        if (content == '-')
            return refuse(QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 with the unknown property %2"),
                          hexadecimal(identifier));
        if (!skipContent(content, at, last))
            return refuse(
                QT_TRANSLATE_NOOP("MqttCheck", "the server sent a %1 whose property %2 is longer than all of them"),
                hexadecimal(identifier));
    }
    return true;
}

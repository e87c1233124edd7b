#ifndef ENVELOPESCRIPT_H
#define ENVELOPESCRIPT_H

#include "envelope.h"

#include <QHash>
#include <QStringList>

/**
 * Envelopes by texts, " | " between them: "TOPIC NAME=VALUE... : PAYLOAD". The names "content" (type), "at"
 * (nanoseconds) and "number" are those of the envelope, others are properties; "kept", "gone" and "notice" stand alone.
 * The payload is text, unless it was defined.
 */
class EnvelopeScript
{
public:
    void define(const char* word, const QByteArray& bytes) { m_payloads.insert(QLatin1String(word), bytes); }

    QByteArray bytes(const QString& script) const
    {
        QByteArray all;
        for (const QString& one : script.split(QLatin1String(" | ")))
            append(one, &all);
        return all;
    }

private:
    void append(const QString& text, QByteArray* all) const
    {
        const QString payloadText = text.section(QLatin1String(" : "), 1);
        const QByteArray payload = m_payloads.value(payloadText, payloadText.toUtf8());
        QList<QByteArray> words = text.section(QLatin1String(" : "), 0, 0).toUtf8().split(' ');
        const auto view = [](const QByteArray& bytes) {
            return std::string_view(bytes.constData(), std::size_t(bytes.size()));
        };
        Envelope envelope;
        envelope.payload = view(payload);
        const QByteArray topic = words.takeFirst();
        envelope.topic = view(topic);
        for (const QByteArray& word : std::as_const(words)) {
            const int equals = int(word.indexOf('='));
            const std::string_view name = view(word).substr(0, std::size_t(qMax(0, equals)));
            const std::string_view value = view(word).substr(std::size_t(equals + 1));
            if (equals < 0)
                envelope.isKept = word == "kept";
            if (word == "gone" || word == "notice")
                envelope.kind = word == "gone" ? Envelope::Gone : Envelope::Notice;
            else if (name == "content")
                envelope.contentType = value;
            else if (name == "at")
                envelope.time = word.mid(equals + 1).toLongLong();
            else if (name == "number")
                envelope.sequence = word.mid(equals + 1).toULongLong();
            else if (equals > 0)
                envelope.properties.emplace_back(name, value);
        }
        EnvelopeWriter(all).write(envelope);
    }

    QHash<QString, QByteArray> m_payloads;
};

#endif

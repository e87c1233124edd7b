#ifndef MESSAGEFIXTURES_H
#define MESSAGEFIXTURES_H

#include "messageneedmanager.h"
#include "testformat.h"

#include <cctype>
#include <cstdlib>
#include <cstring>
#include <functional>

/**
 * Message types and messages, told in words:
 *
 *     Types types("INNER-: value; POSE: x[m] many.r name.s sub.o=INNER flags{first last.c}");
 *     types.message("POSE x=2.5 many=5,6 name='abc' sub=(value=1)");
 *
 * The messages of a type with a minus come only inside of others. Behind a field's dot stand letters: o(ptional),
 * r(epeated), s(tring), v(irtual), c(onfidential), and 2 for a secondary role; "1:5" are the numbers from 1 to 5.
 */
class Types
{
public:
    explicit Types(const char* types)
    {
        while (*types) {
            const QString name = word(types);
            m_infos.append(new MessageInfo(name, !take(types, '-')));
            for (take(types, ':'); *types && !take(types, ';');)
                m_infos.last()->addField(readField(types));
        }
    }
    ~Types() { qDeleteAll(m_infos); }

    /** The type with this name; null when there is none. */
    MessageInfo* type(const QString& name) const
    {
        Q_FOREACH (MessageInfo* info, m_infos)
            if (info->getName() == name)
                return info;
        return nullptr;
    }

    /** The first field with this name, of @p info unless that is null; null when there is none. */
    TestFieldInfo* field(const QString& name, const MessageInfo* info = nullptr) const
    {
        Q_FOREACH (TestFieldInfo* field, m_fields)
            if (field->getName() == name && (!info || field->occursIn(info)))
                return field;
        return nullptr;
    }

    /** A message, or none where its type is none. */
    MessageReference message(const QString& words) const
    {
        const QByteArray bytes = words.toUtf8();
        const char* at = bytes.constData();
        const MessageInfo* const info = type(word(at));
        return info ? MessageReference::adopt(readMessage(info, at)) : MessageReference();
    }

private:
    Q_DISABLE_COPY(Types)

    static bool take(const char*& at, char expected)
    {
        while (*at == ' ')
            ++at;
        if (*at != expected)
            return false;
        ++at;
        return true;
    }

    static QString word(const char*& at)
    {
        take(at, ' ');
        const char* const start = at;
        while (std::isalnum(static_cast<unsigned char>(*at)))
            ++at;
        return QString::fromLatin1(start, static_cast<int>(at - start));
    }

    TestFieldInfo* readField(const char*& at)
    {
        const QString name = word(at);
        int flags = 0;
        const QByteArray letters = take(at, '.') ? word(at).toLatin1() : QByteArray();
        for (int i = 0; i < letters.size(); ++i)
            flags |=
                letters.at(i) == 's' ? int(TestFieldInfo::String) : 1 << QByteArray("or_vc2").indexOf(letters.at(i));
        const MessageInfo* const inner = take(at, '=') ? type(word(at)) : nullptr;
        TestFieldInfo* const field =
            inner ? new TestFieldInfo(name, flags, FieldType(inner)) : new TestFieldInfo(name, flags);
        m_fields.append(field);
        if (take(at, '[')) {
            const char* const unit = at;
            while (!take(at, ']'))
                ++at;
            field->setUnit(QString::fromLatin1(unit, static_cast<int>(at - unit - 1)));
        }
        if (take(at, '{'))
            while (!take(at, '}'))
                field->addSubField(readField(at));
        return field;
    }

    TestMessage* readMessage(const MessageInfo* info, const char*& at) const
    {
        TestMessage* const message = new TestMessage(info);
        while (!take(at, ')') && *at) {
            const TestFieldInfo* const field = this->field(word(at), info);
            take(at, '=');
            if (take(at, '\'')) {
                const char* const end = std::strchr(at, '\'');
                const QByteArray text(at, static_cast<int>(end - at));
                at = end + 1;
                field->isStringField() ? message->setText(field, text)
                                       : message->set(field, FieldValue::fromText(QString::fromUtf8(text)));
                continue;
            }
            QVector<FieldValue> values;
            QList<Message*> messages;
            do {
                if (take(at, '('))
                    messages.append(readMessage(field->getType().getSubMessageInfo(), at));
                else
                    readNumbers(at, &values);
            } while (take(at, ','));
            values.isEmpty() ? message->set(field, messages) : message->set(field, values);
        }
        return message;
    }

    static void readNumbers(const char*& at, QVector<FieldValue>* values)
    {
        char* end;
        const double first = std::strtod(at, &end);
        at = end;
        const double last = take(at, ':') ? std::strtod(at, &end) : first;
        at = end;
        for (double number = first; number <= last; ++number)
            values->append(FieldValue::fromDouble(number));
    }

    QList<MessageInfo*> m_infos;
    QList<TestFieldInfo*> m_fields;
};

/** Answers a signal with whatever it is given, but not the signals that it causes thereby. */
class Answer : public QObject
{
    Q_OBJECT

public:
    /** @param times  how often it answers; negative means each time */
    Answer(QObject* sender, const char* signal, const std::function<void()>& reaction, int times = -1)
        : m_reaction(reaction)
        , m_times(times)
    {
        connect(sender, signal, SLOT(react()));
    }

    /** Answers changes of the needs. */
    explicit Answer(const std::function<void()>& reaction)
        : m_reaction(reaction)
        , m_times(-1)
    {
        connect(MessageNeedManager::getInstance(), SIGNAL(needsChanged()), SLOT(react()));
    }

private Q_SLOTS:
    void react()
    {
        if (!m_reaction || m_times == 0)
            return;
        --m_times;
        const std::function<void()> reaction = m_reaction;
        m_reaction = nullptr;
        reaction();
        m_reaction = reaction;
    }

private:
    std::function<void()> m_reaction;
    int m_times;
};

#endif

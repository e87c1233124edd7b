#ifndef JSONMESSAGE_H
#define JSONMESSAGE_H

#include "jsondocument.h"
#include "message.h"
#include "messageinfo.h"

#include <QHash>

#include <memory>
#include <vector>

class JsonFieldInfo;

/** A type of messages, or of objects in them. */
class JsonMessageInfo : public MessageInfo
{
public:
    /** The one field of what is no object. */
    static const char ValueName[];

    /** @param isObject  whether messages are objects, and have a field for each member */
    JsonMessageInfo(const QString& name, bool main, bool isObject);

    Message* newMessage(const QByteArray& data) const override;

    bool isObject() const { return m_isObject; }

    /** Adds a field of that name; takes ownership. */
    void addMember(const QString& name, JsonFieldInfo* field);
    int getMemberCount() const { return int(m_members.size()); }
    const JsonFieldInfo* getMember(int slot) const { return m_members[std::size_t(slot)].field; }
    /** The number of the field of that name, in UTF-8, that is looked for at @p slot first; negative for none. */
    int findMember(std::string_view name, int slot) const;

private:
    struct Member
    {
        QByteArray name;
        const JsonFieldInfo* field;
    };

    const bool m_isObject;
    std::vector<Member> m_members;
    QHash<QByteArray, int> m_slots;
};

/**
 * A message that finds out where its values are when a field is read for the first time, or a part of such a message.
 *
 * Parts are made when somebody asks for them, and live as long as the whole, or as somebody has a reference on them.
 * They have no bytes of their own.
 */
class JsonMessage final : public Message
{
public:
    /** A value that no field has. */
    struct Unknown
    {
        QString name;
        quint32 node;
        QString reason; // why a field that there is does not have it; else empty
    };

    JsonMessage(const JsonMessageInfo* info, const QByteArray& data);

    const JsonMessageInfo* getJsonInfo() const { return static_cast<const JsonMessageInfo*>(getInfo()); }

    const JsonDocument& getDocument() const;

    /** Where the value of a field is; negative when the message does not have it. */
    qint64 getNode(int slot) const
    {
        readMembers();
        return m_nodes[std::size_t(slot)];
    }
    /** Where an element of the array at @p array is, the value of a field; the index must be less than their number. */
    quint32 getElement(int slot, quint32 array, unsigned int index) const;
    /** The object or array at @p node, the value number @p index of a field, as a message; borrowed. */
    const Message* getPart(int slot, unsigned int index, quint32 node, const JsonMessageInfo* info) const;

    const std::vector<Unknown>& getUnknown() const
    {
        readMembers();
        return m_unknown;
    }
    /** What is wrong with the bytes; of a part always empty. */
    const QStringList& getProblems() const;

protected:
    ~JsonMessage() override;

private:
    /** What was made of an array or an object. */
    struct Parts
    {
        std::vector<quint32> elements;
        std::vector<const JsonMessage*> messages; // by index; null where nobody asked for it
    };

    JsonMessage(const JsonMessage* whole, const JsonMessageInfo* info, quint32 node);

    void readMembers() const
    {
        if (!m_isRead)
            readAllMembers();
    }
    void readAllMembers() const;
    void take(int slot, const QString& name, quint32 node) const;
    Parts& partsOf(int slot) const;

    const bool m_isPart;
    const quint32 m_node;
    mutable bool m_isRead;
    mutable std::shared_ptr<const JsonDocument> m_document;
    mutable std::vector<qint64> m_nodes; // by slot
    mutable std::vector<Unknown> m_unknown;
    mutable std::unique_ptr<Parts[]> m_parts; // by slot
};

#endif

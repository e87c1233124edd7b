#ifndef PROTOBUFMESSAGE_H
#define PROTOBUFMESSAGE_H

#include "message.h"
#include "messageinfo.h"

#include <QStringList>

#include <google/protobuf/arena.h>
#include <google/protobuf/message.h>

#include <memory>
#include <vector>

class ProtobufFieldInfo;

/** A message type made from a descriptor. */
class ProtobufMessageInfo : public MessageInfo
{
public:
    /** @param prototype  of the type; must outlive this object */
    ProtobufMessageInfo(const QString& name, bool main, const google::protobuf::Message* prototype);

    Message* newMessage(const QByteArray& data) const override;

    const google::protobuf::Message* getPrototype() const { return m_prototype; }

    /** How many of its fields are sub-messages. */
    int getSubMessageFieldCount() const { return m_subMessageFieldCount; }
    void setSubMessageFieldCount(int count) { m_subMessageFieldCount = count; }

    /** Whether messages can lack something that the schema requires, here or deeper. */
    bool canBeIncomplete() const { return m_canBeIncomplete; }
    void setCanBeIncomplete(bool can) { m_canBeIncomplete = can; }

private:
    const google::protobuf::Message* m_prototype;
    int m_subMessageFieldCount;
    bool m_canBeIncomplete;
};

/** The parsed bytes of a message; its sub-messages share it. */
struct ProtobufContent
{
    ProtobufContent(const ProtobufMessageInfo* info, const QByteArray& data);

    google::protobuf::Arena arena;
    const google::protobuf::Message* message; ///< as much of it as could be parsed; never null
    QStringList problems;                     ///< what is wrong with the bytes
};

/**
 * A message that parses its bytes when a field is read for the first time, or a part of such a message.
 *
 * Parts are made when somebody asks for them, and live as long as the whole, or as somebody has a reference on them.
 * They have no bytes of their own.
 */
class ProtobufMessage final : public Message
{
public:
    ProtobufMessage(const ProtobufMessageInfo* info, const QByteArray& data);

    /** What was parsed; never null. */
    const google::protobuf::Message* getContent() const
    {
        if (!m_message)
            parse();
        return m_message;
    }

    /** What is wrong with the bytes; of a part always empty. */
    const QStringList& getProblems() const;

    /**
     * The part number @p index of a field, borrowed.
     *
     * @param slot     the field's number among the sub-message fields of the type
     * @param content  what the part consists of
     */
    const Message* getPart(int slot, unsigned int index, const ProtobufMessageInfo* info,
                           const google::protobuf::Message* content) const;

protected:
    ~ProtobufMessage() override;

private:
    typedef std::vector<const ProtobufMessage*> Parts;

    ProtobufMessage(const ProtobufMessage* whole, const ProtobufMessageInfo* info,
                    const google::protobuf::Message* content);

    void parse() const;

    const bool m_isPart;
    mutable std::shared_ptr<const ProtobufContent> m_content;
    mutable const google::protobuf::Message* m_message;
    mutable std::unique_ptr<Parts[]> m_parts; // by slot
};

#endif

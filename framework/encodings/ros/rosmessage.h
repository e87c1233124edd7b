#ifndef ROSMESSAGE_H
#define ROSMESSAGE_H

#include "message.h"
#include "messageinfo.h"
#include "rosopening.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

/** A message type made from a struct of a schema. */
class RosMessageInfo : public MessageInfo
{
public:
    /** @param types  of the schema; shared by all types that are made from it */
    RosMessageInfo(const QString& name, bool main, const std::shared_ptr<const RosTypes>& types,
                   const Ros::Struct* structure);

    Message* newMessage(const QByteArray& data) const override;

    const RosTypes& getTypes() const { return *m_types; }
    const Ros::Struct* getStruct() const { return m_struct; }

    /** How many of its fields need to keep something for a message: sub-messages, and elements of varying size. */
    int getSlotCount() const { return m_slotCount; }
    int addSlot() { return m_slotCount++; }

private:
    const std::shared_ptr<const RosTypes> m_types;
    const Ros::Struct* m_struct;
    int m_slotCount;
};

/**
 * A message whose fields are found in its bytes when somebody asks for them, or a struct in such a message.
 *
 * Parts are made when somebody asks for them, and live as long as the whole, or as somebody has a reference on them.
 * They share the bytes.
 */
class RosMessage final : public Message
{
public:
    RosMessage(const RosMessageInfo* info, const QByteArray& data);

    const Ros::Wire& getWire() const { return m_wire; }
    const Ros::View& getView() const
    {
        if (!m_view)
            open();
        return *m_view;
    }

    /** What is wrong with the bytes; of a part always empty. */
    const QStringList& getProblems() const;

    /** The first struct of a field, when it was asked for before; else null. */
    const Message* findPart(int slot) const { return m_slots ? m_slots[slot].first : nullptr; }
    /** The struct number @p index of a field, which is at @p place, borrowed. */
    const Message* getPart(int slot, unsigned int index, const RosMessageInfo* info, const Ros::Node& node,
                           const Ros::Place& place) const;

    /**
     * How many elements of varying size there are, up to @p most, of those that begin at @p first; @p withLast counts
     * one that breaks off, too.
     */
    unsigned int countElements(int slot, const Ros::Node& element, const Ros::Place& first, quint32 most,
                               bool withLast) const;
    /** Where one of them is; only for one that was counted. */
    Ros::Place elementAt(int slot, const Ros::Place& first, unsigned int index) const;

protected:
    ~RosMessage() override;

private:
    struct Elements
    {
        std::vector<const RosMessage*> parts{}; // but the first
        std::vector<quint32> begins{};
        quint32 end = 0; // of the last one so far
        bool isBroken = false;
    };

    struct Slot
    {
        Elements& getElements()
        {
            if (!elements)
                elements = std::make_unique<Elements>();
            return *elements;
        }

        const RosMessage* first = nullptr;
        std::unique_ptr<Elements> elements{};
    };

    RosMessage(const RosMessage* whole, const RosMessageInfo* info, const Ros::Node& node, Ros::Place place);

    void open() const;
    Slot& slotOf(int slot) const;

    const QByteArray m_shared; // of the whole; empty for this itself
    mutable Ros::Wire m_wire;
    mutable std::optional<Ros::View> m_view;
    mutable std::unique_ptr<Slot[]> m_slots;
    mutable std::unique_ptr<QStringList> m_problems;
};

#endif

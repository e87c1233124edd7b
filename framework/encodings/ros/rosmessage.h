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
 * They borrow its bytes, and share them when it goes first.
 */
class RosMessage final : public Message
{
public:
    /** With room for what its fields keep. */
    static RosMessage* make(const RosMessageInfo* info, const QByteArray& data);

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
    const Message* findPart(int slot) const { return m_hasSlots ? getSlots()[slot].first : nullptr; }
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

    static void operator delete(void* room) { ::operator delete(room); }

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
        const RosMessage* first = nullptr;
        std::unique_ptr<Elements> elements{};
    };

    RosMessage(const RosMessageInfo* info, const QByteArray& data);
    RosMessage(const RosMessage* whole, const RosMessageInfo* info, const Ros::Plan* plan, const Ros::Place& place);

    static void* roomFor(const RosMessageInfo* info);
    void open() const;
    const QByteArray& getBytes() const;
    void outlive(const QByteArray& bytes) const;
    Slot* getSlots() const { return reinterpret_cast<Slot*>(const_cast<RosMessage*>(this) + 1); } // behind it
    Slot& slotOf(int slot) const;
    Elements& elementsOf(int slot) const;

    mutable const RosMessage* m_whole; // null for a message itself, and for a part that is all that is left of one
    mutable QByteArray m_left;         // the bytes of the message of which it is left
    mutable Ros::Wire m_wire;
    mutable std::optional<Ros::View> m_view;
    mutable const RosMessage* m_firstPart; // of those that were made, which goes on with the next
    mutable const RosMessage* m_nextPart;
    mutable bool m_hasSlots;
    mutable bool m_hasElements;
    mutable std::unique_ptr<QStringList> m_problems;
};

#endif

#ifndef ROSFIELDINFO_H
#define ROSFIELDINFO_H

#include "fieldlocator.h"
#include "rosmessage.h"

/** A field that a schema describes: numbers, texts, bytes and sub-messages, one or many. */
class RosFieldInfo : public FieldInfo, public FieldLocator
{
public:
    /**
     * @param type    of an element
     * @param holder  that it stands in
     * @param member  its number there
     */
    RosFieldInfo(const QString& name, const FieldType& type, RosMessageInfo* holder, int member);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;

    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override;
    QString getNameOfRest(const QByteArray& message, qint64 byte) const override;

    /** How many bytes a value of bytes has, without copying them. */
    quint32 getByteCount(const Message* message) const;

protected:
    /** Whether there is room for an element of that number, and where. */
    bool findElement(const RosMessage* message, unsigned int index, const Ros::Node** element, Ros::Place* place) const;
    /** Null for messages of other types, or that others made. */
    const RosMessage* ownMessage(const Message* message) const;

private:
    bool findBytes(const RosMessage* message, Ros::Place* place, quint32* size) const;
    const Ros::Node& nodeIn(const RosMessage* message) const;
    unsigned int countIn(const RosMessage* message, const Ros::Node& node, const Ros::Place& first, quint32 claimed,
                         quint32 most) const;
    FieldValue numberAt(const Ros::Wire& wire, quint32 at) const;
    FieldValue valueAt(const RosMessage* message, unsigned int index, const Ros::Node& node,
                       const Ros::Place& place) const;

    const RosMessageInfo* m_holder;
    const std::size_t m_member;
    const Ros::Kind m_kind; // of an element
    const bool m_isBytes;
    const bool m_isNumber;              // a single one
    const RosMessageInfo* const m_part; // a sub-message's; what breaks off in one is shown as far as it goes
    const int m_slot;
};

/** A point in time or a duration, which is a struct of two numbers: read as one value, with the numbers below it. */
class RosTimeFieldInfo : public RosFieldInfo
{
public:
    RosTimeFieldInfo(const QString& name, const Ros::Struct* time, RosMessageInfo* holder, int member);

    FieldValue getValue(const Message* message, unsigned int index) const override;

private:
    class Part;

    FieldValue partOf(const Message* message, unsigned int index, int part) const;
    bool findPart(const RosMessage* message, unsigned int index, Ros::Place* place) const;

    const Ros::Struct* m_time;
};

/** Whether a collection is one value, of bytes. */
bool isBytesOfRos(const Ros::Type& type);

/** Members that came in a list and that the schema does not have, as texts such as "12: 0102 (2 bytes)". */
class RosUnknownFieldInfo : public FieldInfo
{
public:
    RosUnknownFieldInfo();

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;

private:
    QStringList textsOf(const Message* message) const;
};

#endif

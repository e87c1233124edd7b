#ifndef ROSTYPEBUILDER_H
#define ROSTYPEBUILDER_H

#include "rosmessage.h"

#include <QHash>

#include <vector>

/** Makes message types of a schema's structs: the type that is asked for and all that it leads to. */
class RosTypeBuilder
{
public:
    /** @param made  types that were made are appended, and are the caller's from then on */
    RosTypeBuilder(const std::shared_ptr<const RosTypes>& types, QVector<MessageInfo*>* made);

    /** The type for messages that are received on their own. */
    const RosMessageInfo* build(const Ros::Struct* structure);

private:
    RosMessageInfo* makeInfo(const Ros::Struct* structure, bool main);
    RosMessageInfo* partInfo(const Ros::Struct* structure);
    void fill(RosMessageInfo* info);
    FieldInfo* createField(const Ros::Member& member, RosMessageInfo* info, int number);
    FieldType typeOf(const Ros::Type& type);

    const std::shared_ptr<const RosTypes> m_types;
    QVector<MessageInfo*>* m_made;
    QHash<const Ros::Struct*, RosMessageInfo*> m_parts;
    std::vector<RosMessageInfo*> m_empty; // made, but without fields so far
};

#endif

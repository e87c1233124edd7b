#ifndef JSONTYPEBUILDER_H
#define JSONTYPEBUILDER_H

#include "jsonfieldinfo.h"
#include "jsonmessage.h"

#include <map>

/** Makes message types and their fields of shapes. */
class JsonTypeBuilder
{
public:
    /** @param made  types that are made are appended, and are the caller's from then on */
    JsonTypeBuilder(const QString& name, QVector<MessageInfo*>* made);

    /** The type of messages of that shape, complete with the types of their parts. */
    const JsonMessageInfo* build(const JsonShape* root);

private:
    struct Open
    {
        JsonMessageInfo* info;
        const JsonShape* shape;
    };

    JsonMessageInfo* infoOf(const JsonShape* shape, const QString& name, bool main);
    void fill(const Open& open);
    void addField(JsonMessageInfo* info, const JsonShape::Member& member);
    FieldType typeOf(const JsonShape* shape, const QString& name);

    const QString m_name;
    QVector<MessageInfo*>* m_made;
    std::map<const JsonShape*, JsonMessageInfo*> m_parts;
    std::vector<Open> m_empty; // types whose fields are still missing
};

#endif

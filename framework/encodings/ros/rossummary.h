#ifndef ROSSUMMARY_H
#define ROSSUMMARY_H

#include "fieldinfo.h"

/** What an image or a cloud of points consists of, in one line; for messages that are too large to be looked at. */
class RosSummaryFieldInfo : public FieldInfo
{
public:
    /** Null for a type that needs none. */
    static RosSummaryFieldInfo* create(const MessageInfo* info);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;

private:
    typedef QString (*Text)(const Message* message);

    explicit RosSummaryFieldInfo(Text text);

    Text m_text;
};

#endif

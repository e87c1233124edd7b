#ifndef READFIELDS_H
#define READFIELDS_H

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"

#include <cstdlib>

/** Reads every field of a message, as deep as it goes, and a bit beyond. */
inline void readFields(const Message* message, bool canBeNull = false)
{
    for (const FieldInfo* field : message->getInfo()->getFieldInfos()) {
        const unsigned int count = field->getValueCount(message);
        if (!field->isRepeated() && count > 1)
            std::abort();
        for (unsigned int i = 0; i < count; ++i) {
            const FieldValue value = field->getValue(message, i);
            if (!value.isValid() && !canBeNull)
                std::abort(); // what is counted is there
            field->getInterpretedString(value, true);
            for (const FieldInfo* part : field->getSubFieldInfos())
                if (!part->getValue(message, i).isValid() && value.isValid())
                    std::abort();
            if (value.getSubMessage())
                readFields(value.getSubMessage(), canBeNull);
        }
        if (field->getValue(message, count).isValid())
            std::abort();
    }
}

#endif

#ifndef READFIELDS_H
#define READFIELDS_H

#include "fieldbytes.h"
#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"

#include <QVector>

#include <cstdlib>

/** Reads the fields of a message, as deep as it goes, and a bit beyond. */
inline void readFields(const Message* message, bool canBeNull = false)
{
    const unsigned int manyValues = 20;
    const QVector<const FieldInfo*> fields = message->getInfo()->getFieldInfos();
    for (const FieldInfo* field : fields) {
        const QVector<const FieldInfo*> parts = field->getSubFieldInfos();
        const unsigned int count = field->getValueCount(message);
        if (!field->isRepeated() && count > 1)
            std::abort();
        // What holds for some values of very many holds for the others; the last may break off.
        for (unsigned int i = 0; i < count; i += i == manyValues && count > i + 1 ? count - 1 - i : 1) {
            const FieldValue value = field->getValue(message, i);
            if (!value.isValid() && !canBeNull)
                std::abort(); // what is counted is there
            field->getInterpretedString(value, true);
            for (const FieldInfo* part : parts)
                if (!part->getValue(message, i).isValid() && value.isValid())
                    std::abort();
            if (value.getSubMessage())
                readFields(value.getSubMessage(), canBeNull);
        }
        if (field->getValue(message, count).isValid())
            std::abort();
    }
}

/** Looks for what stands at some places of its bytes, and for where that is. */
inline void readPlaces(const Message* message)
{
    const qint64 size = 8 * qint64(message->getData().size());
    for (qint64 bit = 0; bit < size; bit += size / 50 + 1) {
        const FieldBytes found(FieldBytes::at(message, bit, FieldBytes::Bits), message);
        bool isThere = false;
        for (const FieldBytes::Range& range : found.getRanges()) {
            if (range.begin < 0 || range.end > size)
                std::abort();
            isThere = isThere || (range.begin <= bit && bit < range.end);
        }
        if (!isThere)
            std::abort();
    }
}

#endif

#ifndef JSONFIELDINFO_H
#define JSONFIELDINFO_H

#include "fieldinfo.h"
#include "fieldlocator.h"
#include "jsonshape.h"

class JsonDocument;
class JsonMessage;
class JsonMessageInfo;

/** A member of an object: a single value, a sub-message, or an array of these. */
class JsonFieldInfo : public FieldInfo, public FieldLocator
{
public:
    /** Where a field stands. */
    struct Place
    {
        const JsonMessageInfo* holder; ///< the type
        int slot;                      ///< its number there
        bool isRepeated;               ///< whether it is an array
        bool isRequired;               ///< whether every message should have it
    };

    /** A field of values of that kind and type. */
    JsonFieldInfo(const QString& name, JsonShape::Kind kind, const FieldType& type, const Place& place);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;
    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override;
    QString getNameOfRest(const QByteArray& message, qint64 byte) const override;

    /** Whether its values have parts. */
    bool hasStructure() const;
    /** Whether what stands there can be read as this field. */
    bool canBe(const JsonDocument& document, quint32 node) const;
    bool canBeElement(const JsonDocument& document, quint32 node) const;
    /** What is said of anything else. */
    QString getExpectation() const;
    QString getElementExpectation() const;

private:
    class Part;

    bool isTime() const { return m_kind == JsonShape::Time || m_kind == JsonShape::Duration; }
    const JsonMessage* ownMessage(const Message* message) const;
    FieldValue valueAt(const JsonMessage* message, quint32 node, unsigned int index) const;
    qint64 nodeOf(const Message* message, unsigned int index) const;
    FieldValue partOf(const Message* message, unsigned int index, const char* name) const;
    FieldBytes::End locatePart(const Holder& holder, int index, const char* name, LocatedBytes* found) const;

    const JsonShape::Kind m_kind;
    const JsonMessageInfo* m_holder;
    const int m_slot;
};

/** Members that are in a message and in no field, as texts such as "speed: 1.5". */
class JsonUnknownFieldInfo : public FieldInfo, public FieldLocator
{
public:
    JsonUnknownFieldInfo();

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;
    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override;
};

#endif

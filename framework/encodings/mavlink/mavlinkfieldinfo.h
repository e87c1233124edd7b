#ifndef MAVLINKFIELDINFO_H
#define MAVLINKFIELDINFO_H

#include "fieldinfo.h"
#include "fieldlocator.h"

/** A field of a MAVLink message; reads its values out of the frame that the message keeps. */
class CORVELFRAMEWORK_EXPORT MavlinkFieldInfo : public FieldInfo, public FieldLocator
{
public:
    /**
     * @param offset     where the field begins in the payload
     * @param count      elements of an array; 0 for a plain field
     * @param extension  whether v1 frames lack the field
     */
    MavlinkFieldInfo(const QString& name, const FieldType& type, int offset, int count, bool extension);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;
    QString getStringValue(const Message* message) const override;
    FieldBytes::End locate(const Holder& holder, int index, LocatedBytes* found) const override;
    QString getNameOfRest(const QByteArray& message, qint64 byte) const override;

    /** Where the field begins in the payload. */
    int getOffset() const { return m_offset; }
    /** Elements of an array; 1 for a plain field. */
    int getCount() const { return m_count; }

private:
    int m_offset;
    int m_count; // 1 for a plain field
};

#endif

#include "rossummary.h"

#include "message.h"
#include "messageinfo.h"
#include "rosfieldinfo.h"

#include <QCoreApplication>
#include <QStringList>

namespace
{

// A schema can call anything an image: what it lacks stays empty.
FieldValue valueOf(const Message* message, const char* name)
{
    const FieldInfo* const field = message->getInfo()->getFieldInfo(QLatin1String(name));
    return field ? field->getValue(message, 0) : FieldValue::invalid();
}

QString textOf(const Message* message, const char* name)
{
    return valueOf(message, name).toString(false, -1, FieldValue::PlainRepresentation, false);
}

QString sizeOf(const Message* message)
{
    return textOf(message, "width") + QStringLiteral(" x ") + textOf(message, "height");
}

quint64 byteCount(const Message* message)
{
    const FieldInfo* const field = message->getInfo()->getFieldInfo(QStringLiteral("data"));
    const RosFieldInfo* const bytes = dynamic_cast<const RosFieldInfo*>(field);
    return bytes ? bytes->getByteCount(message) : 0;
}

/** What is amiss when there are not as many bytes as lines of that length need. */
QString gapText(const Message* message, const char* lineLength)
{
    const quint64 expected = valueOf(message, lineLength).toUnsigned() * valueOf(message, "height").toUnsigned();
    const quint64 size = byteCount(message);
    return size == expected ? QString()
                            : QCoreApplication::translate("RosMessage", ", but %1 bytes where %2 are needed")
                                  .arg(size)
                                  .arg(expected);
}

QString imageText(const Message* message)
{
    return sizeOf(message) + QLatin1Char(' ') + textOf(message, "encoding") + gapText(message, "step");
}

QString compressedText(const Message* message)
{
    return QCoreApplication::translate("RosMessage", "%1, %2 bytes")
        .arg(textOf(message, "format"))
        .arg(byteCount(message));
}

QString cloudText(const Message* message)
{
    QStringList names;
    if (const FieldInfo* const fields = message->getInfo()->getFieldInfo(QStringLiteral("fields")))
        for (const FieldValue& field : fields->getValues(message))
            if (field.getSubMessage())
                names.append(textOf(field.getSubMessage(), "name"));
    return QCoreApplication::translate("RosMessage", "%1 points: %2")
               .arg(sizeOf(message), names.join(QLatin1Char(' '))) +
           gapText(message, "row_step");
}

} // namespace

RosSummaryFieldInfo::RosSummaryFieldInfo(Text text)
    : FieldInfo(QStringLiteral("[summary]"), FieldType(FieldType::TextType, 0, QStringLiteral("text")))
    , m_text(text)
{
    setVirtual(true);
}

RosSummaryFieldInfo* RosSummaryFieldInfo::create(const MessageInfo* info)
{
    static const struct
    {
        const char* type;
        Text text;
    } types[] = {{"Image", imageText}, {"CompressedImage", compressedText}, {"PointCloud2", cloudText}};
    const QString name = info->getName();
    for (const auto& type : types)
        if (name == QLatin1String("sensor_msgs/msg/") + QLatin1String(type.type) ||
            name == QLatin1String("sensor_msgs/") + QLatin1String(type.type))
            return new RosSummaryFieldInfo(type.text);
    return nullptr;
}

unsigned int RosSummaryFieldInfo::getValueCount(const Message* message) const
{
    return occursIn(message->getInfo()) ? 1 : 0;
}

FieldValue RosSummaryFieldInfo::getValue(const Message* message, unsigned int index) const
{
    return index == 0 && occursIn(message->getInfo()) ? FieldValue::fromText(m_text(message)) : FieldValue::invalid();
}

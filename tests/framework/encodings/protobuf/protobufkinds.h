#ifndef PROTOBUFKINDS_H
#define PROTOBUFKINDS_H

#include "fieldinfo.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "protobufformat.h"
#include "protoclines.h"

#include <QStringList>

/** The schemas "kinds2" and "kinds3", which have every kind of field, and texts of what is decoded with them. */
namespace ProtobufKinds
{

inline QString dataFolder()
{
    return QStringLiteral(CORVEL_PROTOBUF_DATA);
}

inline QString importFolder()
{
    return dataFolder() + QStringLiteral("/imports");
}

inline QString fileOf(const QString& type)
{
    return dataFolder() + QLatin1Char('/') + type.section(QLatin1Char('.'), 0, 0) + QStringLiteral(".proto");
}

/** Runs the compiler: @p what is "encode" or "decode". */
inline QByteArray compile(const QString& what, const QString& type, const QByteArray& input)
{
    return runProtoc({QStringLiteral("--%1=%2").arg(what, type), QStringLiteral("-I") + dataFolder(),
                      QStringLiteral("-I") + importFolder(), fileOf(type)},
                     input);
}

inline QByteArray encode(const QString& type, const QByteArray& text)
{
    return compile(QStringLiteral("encode"), type, text);
}

/** A format that knows both schemas. */
class Format : public ProtobufFormat
{
public:
    Format()
    {
        for (const char* name : {"kinds2", "kinds3"})
            if (!loadSchema(fileOf(QLatin1String(name)), QStringList(importFolder()), &errors))
                qWarning("%s", qPrintable(errors.join(QLatin1Char('\n'))));
    }

    MessageReference message(const QString& type, const QByteArray& bytes)
    {
        QString error;
        const MessageInfo* const info = findType(type, &error);
        return info ? MessageReference::adopt(info->newMessage(bytes)) : MessageReference();
    }

    QStringList errors;
};

/** "name | type | flags | unit | description" */
inline QString rowText(const FieldInfo* field)
{
    QString flags;
    if (field->isOptional())
        flags += QStringLiteral("optional ");
    if (field->isRepeated())
        flags += QStringLiteral("repeated ");
    if (field->isConfidential())
        flags += QStringLiteral("confidential ");
    if (field->getRole() == FieldInfo::SecondaryRole)
        flags += QStringLiteral("secondary ");
    return QStringList{field->getName(),
                       field->getType().toShortString(),
                       QString::number(field->getType().getTypeCode()),
                       flags.trimmed(),
                       field->getUnit(),
                       field->getDescription()}
        .join(QStringLiteral(" | "));
}

/**
 * "a/b[1]" goes down into sub-messages and components; values of the field as they are shown, separated by ", ".
 */
inline QString shown(const Message* message, const QString& path)
{
    const Message* holder = message;
    const FieldInfo* field = nullptr;
    unsigned int index = 0;
    for (const QString& level : path.split(QLatin1Char('/'))) {
        const QString name = level.startsWith(QLatin1Char('[')) ? level : level.section(QLatin1Char('['), 0, 0);
        const QVector<const FieldInfo*> parts = field ? field->getSubFieldInfos() : QVector<const FieldInfo*>();
        if (!parts.isEmpty()) {
            for (const FieldInfo* part : parts)
                if (part->getName() == name)
                    field = part;
            continue;
        }
        if (field)
            holder = field->getValue(holder, index).getSubMessage();
        field = holder ? holder->getInfo()->getFieldInfo(name) : nullptr;
        if (!field)
            return QStringLiteral("no such field");
        index = name == level ? 0 : level.section(QLatin1Char('['), 1).chopped(1).toUInt();
    }
    QStringList texts;
    for (const FieldValue& value : field->getValues(holder))
        texts.append(field->getInterpretedString(value, true));
    return texts.isEmpty() ? QStringLiteral("absent") : texts.join(QStringLiteral(", "));
}

} // namespace ProtobufKinds

#endif

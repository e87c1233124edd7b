#ifndef CORVEL_PROTOBUFFORMAT_H
#define CORVEL_PROTOBUFFORMAT_H

#include "corvelframework_export.h"
#include "formatinfo.h"

#include <QByteArray>
#include <QStringList>

#include <memory>

/**
 * The message types of Protocol Buffers, made at run time from the user's own schemas.
 *
 * Types are called by their full name ("osi3.SensorView") and made when somebody asks for them, together with the types
 * of their fields. How fields are mapped is described in docs/protobuf.md. The same schema seen again gives the same
 * descriptions; another schema gives others, also where names are the same.
 *
 * @code
 * ProtobufFormat format;
 * QStringList errors;
 * format.loadSchema("car.proto", QStringList(), &errors);
 * QString error;
 * const MessageInfo* info = format.findType("demo.Car", &error);
 * format.publish();
 * FormatRegistry::getInstance()->addFormat(&format);
 * @endcode
 *
 * Must outlive its messages and everything that shows its types. Operations may be called on any thread, except where
 * they say otherwise.
 */
class CORVELFRAMEWORK_EXPORT ProtobufFormat : public FormatInfo
{
public:
    explicit ProtobufFormat(const QString& name = QLatin1String("protobuf"));
    ~ProtobufFormat() override;

    /**
     * The type of that name in a serialized FileDescriptorSet, as a recording has it.
     *
     * What it returns is complete, and can make messages, but belongs to no format before publish().
     *
     * @param error  why null is returned; must not be null
     */
    const MessageInfo* addSchema(const QByteArray& fileDescriptorSet, const QString& fullTypeName, QString* error);

    /**
     * Reads a schema and remembers it for findType().
     *
     * @param path         a .proto text, or a serialized FileDescriptorSet, which is recognised by its name or contents
     * @param importPaths  folders in which a .proto text's imports are looked for; its own folder comes behind them,
     * and the files that belong to Protocol Buffers themselves need none
     * @param errors       what was wrong, each as "file:line:column: text" where there is a place; must not be null
     * @return whether the schema can be used
     */
    bool loadSchema(const QString& path, const QStringList& importPaths, QStringList* errors);

    /**
     * The type of that name in what loadSchema() read, the schema loaded last first.
     *
     * @param error  why null is returned; must not be null
     */
    const MessageInfo* findType(const QString& fullTypeName, QString* error);

    /**
     * The schema of a type as a recording keeps it: a serialized FileDescriptorSet of its file and all imports. Empty
     * for a type that is none of Protocol Buffers.
     */
    static QByteArray schemaOf(const MessageInfo* info);

    /** The types that stand at the top of the files given to loadSchema(), then those of files they import. */
    QStringList getLoadedTypeNames() const;

    /** Adds the types made since the last call to the format, returns them, and tells the FormatRegistry. GUI thread.
     */
    QVector<const MessageInfo*> publish();

private:
    struct Private;
    std::unique_ptr<Private> m_private;
};

#endif

#include "protobufencoding.h"

#include "messageinfo.h"

#include <QCoreApplication>

static const Encoding::Traits ProtobufTraits{"protobuf", QT_TRANSLATE_NOOP("Encoding", "Protocol Buffers schema"),
                                             "*.proto *.desc *.pb *.bin", "protobuf", false};

// The key of the first file of a FileDescriptorSet.
static const char FileKey = 0x0a;

ProtobufEncoding::ProtobufEncoding()
    : Encoding(ProtobufTraits)
    , m_format(QLatin1String(name()))
{
}

bool ProtobufEncoding::recognizes(const QByteArray& head) const
{
    return head.startsWith(FileKey);
}

// Schemas of single sources are no different: whoever asks for a type names it in full.
FormatInfo* ProtobufEncoding::load(const QString& path, const QStringList& importPaths, Definitions::Scope,
                                   QStringList* errors)
{
    return m_format.loadSchema(path, importPaths, errors) ? &m_format : nullptr;
}

FormatInfo* ProtobufEncoding::getFormat(const QString&)
{
    return &m_format;
}

QVector<FormatInfo*> ProtobufEncoding::getFormats() const
{
    return QVector<FormatInfo*>{&m_format};
}

QStringList ProtobufEncoding::getTypeNames() const
{
    return m_format.getLoadedTypeNames();
}

const MessageInfo* ProtobufEncoding::findType(const QString& name, QString* error)
{
    return m_format.findType(name, error);
}

const MessageInfo* ProtobufEncoding::makeType(const TypeSchema& schema, QString* error)
{
    return m_format.addSchema(schema.data, schema.name, error);
}

TypeSchema ProtobufEncoding::schemaOf(const MessageInfo* info) const
{
    const QByteArray files = ProtobufFormat::schemaOf(info);
    return files.isEmpty() ? TypeSchema() : TypeSchema{info->getName(), name(), name(), files};
}

QVector<const MessageInfo*> ProtobufEncoding::publish()
{
    return m_format.publish();
}

#include "protobufschema.h"

#include "protobufmessage.h"
#include "protobuftypebuilder.h"

#include <QCoreApplication>

#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/stubs/logging.h>

#include <map>

using google::protobuf::FileDescriptorProto;

namespace
{

const int GreatestSchemaSize = 64 * 1024 * 1024;
const int GreatestErrorCount = 20;

class ErrorList : public google::protobuf::DescriptorPool::ErrorCollector
{
public:
    explicit ErrorList(QStringList* errors)
        : m_errors(errors)
    {
    }

    void AddError(const std::string& file, const std::string& element, const google::protobuf::Message*, ErrorLocation,
                  const std::string& message) override
    {
        if (m_errors->size() < GreatestErrorCount)
            m_errors->append(ProtobufText::fromUtf8(file) + QStringLiteral(": ") + ProtobufText::fromUtf8(element) +
                             QStringLiteral(": ") + ProtobufText::fromUtf8(message));
    }

private:
    QStringList* m_errors;
};

/** Builds files in the order in which they need each other. */
class FileBuilder
{
public:
    FileBuilder(google::protobuf::DescriptorPool* pool, QStringList* errors)
        : m_pool(pool)
        , m_errors(errors)
    {
    }

    void add(const FileDescriptorProto* file) { m_files.emplace(file->name(), file); }

    const google::protobuf::FileDescriptor* build(const std::string& name)
    {
        const auto file = m_files.find(name);
        if (file == m_files.end())
            return buildOwnFile(name);
        const FileDescriptorProto* const proto = file->second;
        // Taken out first, so that files that import each other end here.
        m_files.erase(file);
        for (const std::string& import : proto->dependency())
            if (!m_pool->FindFileByName(import))
                build(import);
        ErrorList errors(m_errors);
        return m_pool->BuildFileCollectingErrors(*proto, &errors);
    }

private:
    // What belongs to Protocol Buffers themselves is here, too.
    const google::protobuf::FileDescriptor* buildOwnFile(const std::string& name)
    {
        const google::protobuf::FileDescriptor* const own =
            google::protobuf::DescriptorPool::generated_pool()->FindFileByName(name);
        if (!own)
            return nullptr;
        for (int i = 0; i < own->dependency_count(); ++i)
            if (!m_pool->FindFileByName(own->dependency(i)->name()))
                build(own->dependency(i)->name());
        FileDescriptorProto proto;
        own->CopyTo(&proto);
        return m_pool->BuildFile(proto);
    }

    google::protobuf::DescriptorPool* m_pool;
    QStringList* m_errors;
    std::map<std::string, const FileDescriptorProto*> m_files;
};

} // namespace

ProtobufSchema::ProtobufSchema()
    : m_factory(&m_pool)
{
    m_pool.EnforceWeakDependencies(true);
}

ProtobufSchema::~ProtobufSchema() {}

bool ProtobufSchema::build(const QByteArray& fileDescriptorSet, QStringList* errors)
{
    const google::protobuf::LogSilencer silencer;
    const int before = static_cast<int>(errors->size());
    google::protobuf::FileDescriptorSet set;
    if (fileDescriptorSet.size() > GreatestSchemaSize) {
        errors->append(QCoreApplication::translate("ProtobufFormat", "the schema is longer than %1 bytes")
                           .arg(GreatestSchemaSize));
        return false;
    }
    if (!set.ParseFromArray(fileDescriptorSet.constData(), static_cast<int>(fileDescriptorSet.size())) ||
        set.file_size() == 0) {
        errors->append(
            fileDescriptorSet.isEmpty()
                ? QCoreApplication::translate("ProtobufFormat", "the schema is empty")
                : QCoreApplication::translate("ProtobufFormat", "the schema is no serialized FileDescriptorSet"));
        return false;
    }
    FileBuilder builder(&m_pool, errors);
    for (const FileDescriptorProto& file : set.file())
        builder.add(&file);
    for (const FileDescriptorProto& file : set.file()) {
        builder.build(file.name());
        if (const google::protobuf::FileDescriptor* const built = m_pool.FindFileByName(file.name()))
            m_files.push_back(built);
    }
    return errors->size() == before;
}

const ProtobufMessageInfo* ProtobufSchema::findType(const QString& fullName, QVector<MessageInfo*>* made)
{
    const google::protobuf::Descriptor* const type = m_pool.FindMessageTypeByName(fullName.toStdString());
    if (!type)
        return nullptr;
    const google::protobuf::LogSilencer silencer;
    ProtobufTypeBuilder builder(this, made);
    return builder.build(type);
}

QStringList ProtobufSchema::getTypeNames() const
{
    QStringList names;
    for (auto file = m_files.rbegin(); file != m_files.rend(); ++file)
        for (int i = 0; i < (*file)->message_type_count(); ++i)
            names.append(ProtobufText::fromUtf8((*file)->message_type(i)->full_name()));
    return names;
}

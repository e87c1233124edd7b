#include "protobufschema.h"

#include "protobufmessage.h"
#include "protobuftypebuilder.h"

#include <QCoreApplication>

#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/stubs/logging.h>

#include <algorithm>
#include <map>

using google::protobuf::FileDescriptorProto;

namespace
{

const int GreatestSchemaSize = 16 * 1024 * 1024;
// Of files, types, fields and values.
const int MostElements = 250 * 1000;
// The library follows imports, and types from field to field, by recursion; and it compares every file with all that it
// imports.
const int MostFiles = 5000;
const int DeepestImport = 200;
const int LongestChain = 2000;
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
        if (static_cast<int>(m_importers.size()) > DeepestImport)
            return fail(name);
        const FileDescriptorProto* const proto = file->second;
        // Taken out first, so that files that import each other end here.
        m_files.erase(file);
        m_importers.push_back(&name);
        int depth = 0;
        for (const std::string& import : proto->dependency()) {
            if (!m_pool->FindFileByName(import))
                build(import);
            const auto built = m_depths.find(import);
            depth = std::max(depth, built == m_depths.end() ? 0 : built->second);
        }
        m_importers.pop_back();
        if (depth >= DeepestImport)
            return fail(name);
        m_depths[name] = depth + 1;
        ErrorList errors(m_errors);
        return m_pool->BuildFileCollectingErrors(*proto, &errors);
    }

private:
    const google::protobuf::FileDescriptor* fail(const std::string& name)
    {
        if (m_errors->size() < GreatestErrorCount)
            m_errors->append(ProtobufText::fromUtf8(name) + QStringLiteral(": ") +
                             QCoreApplication::translate("ProtobufFormat", "imports are nested more than %1 deep")
                                 .arg(DeepestImport));
        return nullptr;
    }

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
    std::map<std::string, int> m_depths; // of the imports below a file that was built
    std::vector<const std::string*> m_importers;
};

int sizeOf(const google::protobuf::EnumDescriptorProto& type)
{
    return 1 + type.value_size();
}

int sizeOf(const google::protobuf::DescriptorProto& type)
{
    int size = 1 + type.field_size() + type.extension_size() + type.oneof_decl_size() + type.extension_range_size() +
               type.reserved_range_size() + type.reserved_name_size();
    for (const google::protobuf::EnumDescriptorProto& inner : type.enum_type())
        size += sizeOf(inner);
    for (const google::protobuf::DescriptorProto& inner : type.nested_type())
        size += sizeOf(inner);
    return size;
}

int sizeOf(const google::protobuf::FileDescriptorSet& set)
{
    int size = set.file_size();
    for (const FileDescriptorProto& file : set.file()) {
        size += file.extension_size() + file.dependency_size() + file.service_size();
        for (const google::protobuf::EnumDescriptorProto& type : file.enum_type())
            size += sizeOf(type);
        for (const google::protobuf::DescriptorProto& type : file.message_type())
            size += sizeOf(type);
    }
    return size;
}

} // namespace

ProtobufSchema::ProtobufSchema()
    : m_factory(&m_pool)
    , m_size(0)
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
    m_size = sizeOf(set);
    if (m_size > MostElements || set.file_size() > MostFiles) {
        errors->append(QCoreApplication::translate("ProtobufFormat", "the schema is too large: %1 files, %2 names")
                           .arg(set.file_size())
                           .arg(m_size));
        m_size = 0;
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

const ProtobufMessageInfo* ProtobufSchema::findType(const QString& fullName, QVector<MessageInfo*>* made,
                                                    QString* error)
{
    const google::protobuf::Descriptor* const type = m_pool.FindMessageTypeByName(fullName.toStdString());
    if (!type) {
        *error = QCoreApplication::translate("ProtobufFormat", "the schema has no message type \"%1\"").arg(fullName);
        return nullptr;
    }
    if (!makePrototypes(type)) {
        *error = QCoreApplication::translate("ProtobufFormat", "\"%1\" has parts nested more than %2 types deep")
                     .arg(fullName)
                     .arg(LongestChain);
        return nullptr;
    }
    const google::protobuf::LogSilencer silencer;
    ProtobufTypeBuilder builder(this, made);
    return builder.build(type);
}

/** Makes the library's prototypes of a type and all types that occur in it; false when that is not possible. */
bool ProtobufSchema::makePrototypes(const google::protobuf::Descriptor* first)
{
    std::vector<const google::protobuf::Descriptor*> open{first};
    while (!open.empty()) {
        const google::protobuf::Descriptor* const type = open.back();
        open.pop_back();
        if (!noteChain(type, &open))
            return false;
        m_factory.GetPrototype(type);
    }
    return true;
}

/** Goes the way that the library goes by recursion; types that it leaves out are appended to @p open. */
bool ProtobufSchema::noteChain(const google::protobuf::Descriptor* first,
                               std::vector<const google::protobuf::Descriptor*>* open)
{
    struct Place
    {
        const google::protobuf::Descriptor* type;
        int field;
    };
    if (!m_prototyped.insert(first).second)
        return true;
    std::vector<const google::protobuf::Descriptor*> passed{first};
    std::vector<Place> way{{first, 0}};
    while (!way.empty()) {
        Place& place = way.back();
        if (place.field == place.type->field_count()) {
            std::vector<const google::protobuf::FieldDescriptor*> extensions;
            m_pool.FindAllExtensions(place.type, &extensions);
            for (const google::protobuf::FieldDescriptor* extension : extensions)
                if (extension->message_type())
                    open->push_back(extension->message_type());
            way.pop_back();
            continue;
        }
        const google::protobuf::FieldDescriptor* const field = place.type->field(place.field++);
        const google::protobuf::Descriptor* const next = field->message_type();
        if (!next || m_prototyped.count(next) != 0)
            continue;
        if (!field->is_map() && (field->is_repeated() || field->real_containing_oneof())) {
            open->push_back(next);
            continue;
        }
        if (static_cast<int>(way.size()) == LongestChain) {
            for (const google::protobuf::Descriptor* type : passed)
                m_prototyped.erase(type);
            return false;
        }
        m_prototyped.insert(next);
        passed.push_back(next);
        way.push_back(Place{next, 0});
    }
    return true;
}

QStringList ProtobufSchema::getTypeNames() const
{
    QStringList names;
    for (auto file = m_files.rbegin(); file != m_files.rend(); ++file)
        for (int i = 0; i < (*file)->message_type_count(); ++i)
            names.append(ProtobufText::fromUtf8((*file)->message_type(i)->full_name()));
    return names;
}

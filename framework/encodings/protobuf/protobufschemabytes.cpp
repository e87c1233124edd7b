#include "protobufformat.h"
#include "protobufmessage.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/descriptor.pb.h>
#include <google/protobuf/message.h>

#include <set>

using google::protobuf::FileDescriptor;

namespace
{

// Files stand behind those that they import, as readers expect it.
void addFile(const FileDescriptor* file, std::set<const FileDescriptor*>* done,
             google::protobuf::FileDescriptorSet* files)
{
    if (!done->insert(file).second)
        return;
    for (int i = 0; i < file->dependency_count(); ++i)
        addFile(file->dependency(i), done, files);
    file->CopyTo(files->add_file());
}

} // namespace

QByteArray ProtobufFormat::schemaOf(const MessageInfo* info)
{
    const ProtobufMessageInfo* const type = dynamic_cast<const ProtobufMessageInfo*>(info);
    if (!type)
        return QByteArray();
    google::protobuf::FileDescriptorSet files;
    std::set<const FileDescriptor*> done;
    addFile(type->getPrototype()->GetDescriptor()->file(), &done, &files);
    return QByteArray::fromStdString(files.SerializeAsString());
}

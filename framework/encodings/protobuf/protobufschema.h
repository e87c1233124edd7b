#ifndef PROTOBUFSCHEMA_H
#define PROTOBUFSCHEMA_H

#include "protobuftext.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <google/protobuf/descriptor.h>
#include <google/protobuf/dynamic_message.h>

#include <memory>
#include <unordered_map>
#include <unordered_set>
#include <vector>

class MessageInfo;
class ProtobufMessageInfo;

/** The descriptors of one FileDescriptorSet, and the message types made of them so far. Not thread-safe by itself. */
class ProtobufSchema
{
public:
    ProtobufSchema();
    ~ProtobufSchema();

    /**
     * Takes in a serialized FileDescriptorSet. Files that belong to Protocol Buffers themselves may be missing in it.
     *
     * A schema of a size that no system has is refused: every byte of it can take a hundred bytes of memory.
     *
     * @return whether there was no error; what could be built is there all the same
     */
    bool build(const QByteArray& fileDescriptorSet, QStringList* errors);

    /** How many files, types, fields and values it describes. */
    int getSize() const { return m_size; }

    /**
     * The type of that name for messages that are received on their own; null with @p error set when it cannot be used.
     *
     * @param made  types that were made on the way are appended, and are the caller's from then on
     */
    const ProtobufMessageInfo* findType(const QString& fullName, QVector<MessageInfo*>* made, QString* error);

    /** Types that stand at the top of the files; the file that came last first, since it imports the others. */
    QStringList getTypeNames() const;

private:
    friend class ProtobufTypeBuilder;

    struct Infos
    {
        ProtobufMessageInfo* main = nullptr;
        ProtobufMessageInfo* sub = nullptr;
    };

    bool makePrototypes(const google::protobuf::Descriptor* first);
    bool noteChain(const google::protobuf::Descriptor* first, std::vector<const google::protobuf::Descriptor*>* open);

    google::protobuf::DescriptorPool m_pool;
    google::protobuf::DynamicMessageFactory m_factory;
    std::vector<const google::protobuf::FileDescriptor*> m_files;
    std::unordered_map<const google::protobuf::Descriptor*, Infos> m_infos;
    std::unordered_set<const google::protobuf::Descriptor*> m_prototyped;
    int m_size;
};

#endif

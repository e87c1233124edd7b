#include "protobufmessage.h"

#include "protobuftext.h"
#include "protobufwirecheck.h"

#include <QCoreApplication>

#include <google/protobuf/stubs/logging.h>

namespace
{

// Parsed messages need several times the memory of their bytes.
const int GreatestMessageSize = 256 * 1024 * 1024;

google::protobuf::ArenaOptions arenaOptions(int size)
{
    google::protobuf::ArenaOptions options;
    options.start_block_size = static_cast<std::size_t>(qBound(512, 4 * size, 1024 * 1024));
    options.max_block_size = 1024 * 1024;
    return options;
}

} // namespace

ProtobufMessageInfo::ProtobufMessageInfo(const QString& name, bool main, const google::protobuf::Message* prototype)
    : MessageInfo(name, main)
    , m_prototype(prototype)
    , m_subMessageFieldCount(0)
    , m_canBeIncomplete(false)
{
}

Message* ProtobufMessageInfo::newMessage(const QByteArray& data) const
{
    return new ProtobufMessage(this, data);
}

ProtobufContent::ProtobufContent(const ProtobufMessageInfo* info, const QByteArray& data)
    : arena(arenaOptions(static_cast<int>(data.size())))
{
    google::protobuf::Message* const parsed = info->getPrototype()->New(&arena);
    message = parsed;
    if (data.size() > GreatestMessageSize) {
        problems.append(QCoreApplication::translate("ProtobufFormat", "not decoded: longer than %1 bytes")
                            .arg(GreatestMessageSize));
        return;
    }
    // What the library would write to the standard error is said in the message itself.
    const google::protobuf::LogSilencer silencer;
    if (!parsed->ParsePartialFromArray(data.constData(), static_cast<int>(data.size()))) {
        const ProtobufWireCheck check(parsed->GetDescriptor(), data);
        problems = check.getProblems();
        const QByteArray& repaired = check.getRepaired();
        if (problems.isEmpty() ||
            !parsed->ParsePartialFromArray(repaired.constData(), static_cast<int>(repaired.size())))
            problems.append(QCoreApplication::translate("ProtobufFormat", "cannot be parsed to its end"));
    }
    if (info->canBeIncomplete() && !parsed->IsInitialized()) {
        std::vector<std::string> missing;
        parsed->FindInitializationErrors(&missing);
        for (const std::string& path : missing)
            problems.append(QCoreApplication::translate("ProtobufFormat", "the required field \"%1\" is missing")
                                .arg(ProtobufText::fromUtf8(path)));
    }
}

ProtobufMessage::ProtobufMessage(const ProtobufMessageInfo* info, const QByteArray& data)
    : Message(info, data)
    , m_isPart(false)
    , m_message(nullptr)
{
}

ProtobufMessage::ProtobufMessage(const ProtobufMessage* whole, const ProtobufMessageInfo* info,
                                 const google::protobuf::Message* content)
    : Message(info)
    , m_isPart(true)
    , m_content(whole->m_content)
    , m_message(content)
{
    setTime(whole->getTime());
    setSequence(whole->getSequence());
    setSender(whole->getSender());
}

ProtobufMessage::~ProtobufMessage()
{
    if (!m_parts)
        return;
    const int fields = static_cast<const ProtobufMessageInfo*>(getInfo())->getSubMessageFieldCount();
    for (int slot = 0; slot < fields; ++slot)
        for (const ProtobufMessage* part : m_parts[slot])
            if (part)
                part->removeReference();
}

void ProtobufMessage::parse() const
{
    m_content = std::make_shared<ProtobufContent>(static_cast<const ProtobufMessageInfo*>(getInfo()), getData());
    m_message = m_content->message;
}

const QStringList& ProtobufMessage::getProblems() const
{
    static const QStringList none;
    getContent();
    return m_isPart ? none : m_content->problems;
}

const Message* ProtobufMessage::getPart(int slot, unsigned int index, const ProtobufMessageInfo* info,
                                        const google::protobuf::Message* content) const
{
    if (!m_parts)
        m_parts.reset(new Parts[static_cast<const ProtobufMessageInfo*>(getInfo())->getSubMessageFieldCount()]);
    Parts& parts = m_parts[slot];
    if (index >= parts.size())
        parts.resize(index + 1, nullptr);
    if (!parts[index])
        parts[index] = new ProtobufMessage(this, info, content);
    return parts[index];
}

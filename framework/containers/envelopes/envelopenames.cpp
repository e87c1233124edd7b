#include "envelopenames.h"

#include <QCoreApplication>

namespace
{

// About a hundred thousand names: more than anybody looks at, and what a table of counts can have.
const qint64 MostBytes = 64 * 1024 * 1024;
const qint64 EntryOverhead = 512; // here and where rows are kept by them

const quint32 FirstType = 0x01000000u; // behind the numbers of MAVLink
const quint32 FirstUnknown = 0x80000000u;

QString otherTopics()
{
    return QCoreApplication::translate("Envelopes", "(other topics)");
}

} // namespace

bool EnvelopeNames::hasRoom(const QString& name)
{
    const qint64 size = 2 * qint64(name.size()) + EntryOverhead;
    if (m_kept + size > MostBytes)
        return false;
    m_kept += size;
    return true;
}

quint32 EnvelopeNames::addSender(const QString& name)
{
    const auto known = m_senderNumbers.constFind(name);
    if (known != m_senderNumbers.constEnd())
        return *known;
    const QString kept = hasRoom(name) ? name : otherTopics();
    const quint32 number = m_senderNumbers.value(kept, quint32(m_senderNumbers.size()) + 1);
    m_senderNumbers.insert(kept, number);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_senders.insert(number, kept);
    return number;
}

quint32 EnvelopeNames::addType(const MessageInfo* info)
{
    const auto known = m_typeNumbers.constFind(info);
    return known != m_typeNumbers.constEnd() ? *known
                                             : *m_typeNumbers.insert(info, FirstType + quint32(m_typeNumbers.size()));
}

quint32 EnvelopeNames::addUnknown(const QString& description, const TypeSchema& schema)
{
    const auto known = m_unknownNumbers.constFind(description);
    if (known != m_unknownNumbers.constEnd())
        return *known;
    const QString kept = hasRoom(description) ? description : otherTopics();
    const quint32 number = m_unknownNumbers.value(kept, FirstUnknown + quint32(m_unknownNumbers.size()));
    m_unknownNumbers.insert(kept, number);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_unknown.insert(number, {kept, schema});
    return number;
}

bool EnvelopeNames::isUnknown(quint32 id)
{
    return id >= FirstUnknown;
}

QString EnvelopeNames::getSender(quint32 sender) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_senders.value(sender);
}

QString EnvelopeNames::describe(quint32 id) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_unknown.value(id).description;
}

TypeSchema EnvelopeNames::getSchema(quint32 id) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_unknown.value(id).schema;
}

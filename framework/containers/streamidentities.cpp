#include "streamidentities.h"

#include "messageinfo.h"

StreamIdentities::StreamIdentities()
    : m_decoder(nullptr)
    , m_decoders(0)
{
}

void StreamIdentities::setDecoder(const StreamDecoder* decoder)
{
    m_decoder = decoder;
    ++m_decoders;
    m_rowIndices.clear();
    m_senderIndices.clear();
}

// Apart, so that what happens for every message stays small.
int StreamIdentities::intern(const ReceivedMessage& message)
{
    const QString senderName = m_decoder->getSenderName(message.sender);
    const Names names(message.info ? message.info->getName() : m_decoder->describeUnknown(message.id), senderName);
    int row = findRow(names, message.info);
    if (row < 0 && message.info) {
        // The definitions came between two connections.
        row = findRow(Names(m_decoder->describeUnknown(message.id), senderName), nullptr);
        if (row >= 0)
            rename(row, names.first);
    }
    if (row >= 0) {
        if (m_senderIndices.find(message.sender) < 0)
            link(message.sender, m_rows.at(row).sender);
        m_rows[row].info = message.info;
        m_rows[row].id = message.id;
    } else {
        const int sender = m_senderIndices.find(message.sender);
        row = int(m_rows.size());
        m_rows.append(
            Row{message.info, names.first, message.id, sender >= 0 ? sender : addSender(message.sender, senderName)});
        m_rowDecoders.append(0);
        m_rowsByName.insert(names, row);
    }
    m_rowDecoders[row] = m_decoders;
    m_rowIndices.insert(KeyIndex::keyOf(message.id, message.sender), row);
    return row;
}

int StreamIdentities::rowOf(const MessageInfo* info, const QString& typeName, quint32 id, const QString& senderName)
{
    const Names names(typeName, senderName);
    int row = -1;
    for (auto i = m_rowsByName.constFind(names); i != m_rowsByName.constEnd() && i.key() == names; ++i)
        if (row < 0 || m_rows.at(i.value()).info == info)
            row = i.value();
    if (row >= 0)
        return row;
    int sender = m_sendersByName.value(senderName, -1);
    if (sender < 0) {
        sender = int(m_senders.size());
        m_senders.append(Sender{senderName, 0});
        m_sendersByName.insert(senderName, sender);
    }
    row = int(m_rows.size());
    m_rows.append(Row{info, typeName, id, sender});
    m_rowDecoders.append(0);
    m_rowsByName.insert(names, row);
    return row;
}

/** The row of these names that this decoder has not met under other numbers; -1 when there is none. */
int StreamIdentities::findRow(const Names& names, const MessageInfo* info) const
{
    int found = -1;
    for (auto i = m_rowsByName.constFind(names); i != m_rowsByName.constEnd() && i.key() == names; ++i) {
        const int row = i.value();
        if (m_rowDecoders.at(row) == m_decoders)
            continue;
        // Of several, the one that had the same type before; else the oldest.
        const bool isSame = m_rows.at(row).info == info;
        const bool isFoundSame = found >= 0 && m_rows.at(found).info == info;
        if (found < 0 || (isSame != isFoundSame ? isSame : row < found))
            found = row;
    }
    return found;
}

void StreamIdentities::rename(int row, const QString& typeName)
{
    const QString& senderName = m_senders.at(m_rows.at(row).sender).name;
    m_rowsByName.remove(Names(m_rows.at(row).typeName, senderName), row);
    m_rows[row].typeName = typeName;
    m_rowsByName.insert(Names(typeName, senderName), row);
}

/** The oldest sender of that name that this decoder has not met under another number, or a new one. */
int StreamIdentities::addSender(quint32 key, const QString& name)
{
    int found = -1;
    for (auto i = m_sendersByName.constFind(name); i != m_sendersByName.constEnd() && i.key() == name; ++i)
        if (m_senders.at(i.value()).decoder != m_decoders && (found < 0 || i.value() < found))
            found = i.value();
    if (found < 0) {
        found = int(m_senders.size());
        m_senders.append(Sender{name, 0});
        m_sendersByName.insert(name, found);
    }
    link(key, found);
    return found;
}

void StreamIdentities::link(quint32 key, int sender)
{
    m_senders[sender].decoder = m_decoders;
    m_senderIndices.insert(key, sender);
}

int StreamIdentities::findSender(quint32 sender) const
{
    const int known = m_senderIndices.find(sender);
    return known >= 0 || !m_decoder ? known : m_sendersByName.value(m_decoder->getSenderName(sender), -1);
}

void StreamIdentities::changeTypes(const QHash<quint32, const MessageInfo*>& infos)
{
    for (int i = 0; i < m_rows.size(); ++i) {
        const auto info = infos.constFind(m_rows.at(i).id);
        if (info == infos.constEnd())
            continue;
        m_rows[i].info = *info;
        rename(i, *info ? (*info)->getName() : m_decoder->describeUnknown(m_rows.at(i).id));
    }
}

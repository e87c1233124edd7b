#include "latestmessages.h"

#include "message.h"

#include <cstring>

namespace
{

// Noise may look like any number of unknown types.
const int MostUnknown = 1000;
const int GreatestUnknown = 64 * 1024;

// More than there can be rows: numbers for what is from before a place, older than everything that comes from there on.
const quint64 MostEarlier = Q_UINT64_C(1) << 32;

/** Notes the type of the one message that a decoder finds. */
class TypeSink : public StreamSink
{
public:
    void processReceived(const ReceivedMessage& message) override { info = message.info; }
    void processProblem(const StreamProblem&) override {}

    const MessageInfo* info = nullptr;
};

// The first of @p count numbers that follow those of everything before.
quint64 nextOrder(quint64 count = 1)
{
    static quint64 order = 0; // GUI thread only
    order += count;
    return order - count + 1;
}

} // namespace

void LatestMessages::processReceived(const ReceivedMessage& message)
{
    int place = m_places.value(message.row, -1);
    if (place < 0) {
        if (!message.info && (m_unknown >= MostUnknown || message.size > GreatestUnknown))
            return;
        m_unknown += message.info ? 0 : 1;
        place = addPlace(message.row);
    }
    Entry& entry = m_entries[place];
    if (entry.pending && entry.info && entry.shown != entry.order && !entry.isEarlier)
        ++m_overtaken;
    if (entry.info && entry.info != message.info)
        m_replaced.insert(entry.info);
    entry.info = message.info;
    entry.id = message.id;
    entry.sender = message.sender;
    entry.isGone = entry.isGoneTold = entry.isEarlier = false;
    entry.row = message.row;
    entry.data.resize(message.size);
    std::memcpy(entry.data.data(), message.data, std::size_t(message.size));
    entry.time = message.time;
    entry.sequence = message.sequence;
    entry.order = nextOrder();
    entry.pending = true;
    m_pending = true;
}

int LatestMessages::addPlace(int row)
{
    while (m_places.size() <= row)
        m_places.append(-1);
    m_places[row] = int(m_entries.size());
    m_entries.append(Entry());
    return m_places.at(row);
}

void LatestMessages::addEarlier(const QVector<Entry>& entries)
{
    QSet<const MessageInfo*> infos;
    for (const Entry& entry : entries) {
        if (has(entry.row) || !entry.info)
            continue;
        Entry& kept = m_entries[addPlace(entry.row)];
        kept = entry;
        kept.order = ++m_earlierOrder;
        kept.isEarlier = true;
        kept.pending = true;
        infos.insert(entry.info);
        m_pending = true;
    }
    // Whoever shows a type without its sender ends up with what is newer.
    for (Entry& entry : m_entries)
        entry.pending = entry.pending || (!entry.isEarlier && infos.contains(entry.info));
}

void LatestMessages::processProblem(const StreamProblem& problem)
{
    if (problem.kind != StreamProblem::SenderGone)
        return;
    for (Entry& entry : m_entries) {
        if (entry.sender != problem.sender || (problem.id != 0 && problem.id != entry.id))
            continue;
        entry.isGone = true;
        m_pending = true;
    }
}

QHash<quint32, const MessageInfo*> LatestMessages::decodeAnew(StreamDecoder* decoder)
{
    QHash<quint32, const MessageInfo*> infos;
    m_unknown = 0;
    for (Entry& entry : m_entries) {
        TypeSink sink;
        decoder->feed(entry.data.constData(), int(entry.data.size()), entry.time, &sink);
        decoder->finish(&sink);
        entry.info = sink.info;
        entry.pending = true;
        if (entry.info || !infos.contains(entry.id))
            infos.insert(entry.id, entry.info);
        if (!entry.info)
            ++m_unknown;
    }
    m_pending = true;
    return infos;
}

QSet<const MessageInfo*> LatestMessages::takeReplaced()
{
    QSet<const MessageInfo*> replaced;
    replaced.swap(m_replaced);
    return replaced;
}

qint64 LatestMessages::getTime(int row) const
{
    const int place = m_places.value(row, -1);
    return place < 0 ? Message::NoTime : m_entries.at(place).time;
}

void LatestMessages::clear()
{
    m_overtaken = 0;
    m_entries.clear();
    m_places.clear();
    m_unknown = 0;
    m_pending = false;
    m_earlierOrder = nextOrder(MostEarlier);
}

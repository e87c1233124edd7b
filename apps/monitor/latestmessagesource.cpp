#include "latestmessagesource.h"

#include "formatinfo.h"

#include <algorithm>
#include <vector>

static const int TickMilliseconds = 50;

LatestMessageSource::LatestMessageSource(QObject* parent)
    : MessageSource(parent)
    , m_need(nullptr)
{
    m_tick.setSingleShot(true); // started by an arrival: a silent link costs nothing
    m_tick.setInterval(TickMilliseconds);
    connect(&m_tick, &QTimer::timeout, this, &LatestMessageSource::emitPending);
}

LatestMessageSource::~LatestMessageSource() = default;

void LatestMessageSource::setFormat(const FormatInfo* format)
{
    m_entries.clear();
    m_need.setMessagesNeeded(format ? format->getMessageInfos() : QVector<const MessageInfo*>());
}

void LatestMessageSource::setSender(const QString& sender)
{
    if (m_sender == sender)
        return;
    m_sender = sender;
    for (Entry& entry : m_entries)
        entry.pending = true;
    m_tick.start();
}

MessageReference LatestMessageSource::getLatest(const MessageInfo* info) const
{
    const Entry* latest = nullptr;
    for (const Entry& entry : m_entries)
        if (entry.message->getInfo() == info && passes(entry.message.get()) && (!latest || entry.order > latest->order))
            latest = &entry;
    return latest ? latest->message : MessageReference();
}

void LatestMessageSource::processMessage(const Message* message)
{
    Entry& entry = m_entries[qMakePair(message->getInfo(), message->getSender())];
    if (entry.pending)
        ++m_overtaken;
    entry.message = MessageReference(message);
    entry.pending = true;
    entry.order = ++m_arrivals;
    if (!m_tick.isActive())
        m_tick.start();
}

void LatestMessageSource::emitPending()
{
    // In order of arrival, so that of two senders' messages of one type the newer is what a view ends up with.
    std::vector<Entry> pending;
    for (Entry& entry : m_entries) {
        if (entry.pending && passes(entry.message.get()))
            pending.push_back(entry);
        entry.pending = false;
    }
    std::sort(pending.begin(), pending.end(), [](const Entry& a, const Entry& b) { return a.order < b.order; });
    for (const Entry& entry : pending)
        deliver(entry.message.get());
}

#include "detectingdecoder.h"

#include "mcapstreamdecoder.h"
#include "message.h"

// Whoever has sent so much without a frame sends something else; it is reported as what it is, bytes skipped.
static const int GreatestHead = 65536;

DetectingDecoder::DetectingDecoder(const MavlinkDialect* dialect, Definitions* definitions)
    : m_definitions(definitions)
    , m_raw(dialect, MavlinkStreamDecoder::RawLayout)
    , m_tlog(dialect, MavlinkStreamDecoder::TlogLayout)
    , m_chosen(nullptr)
{
}

void DetectingDecoder::feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink)
{
    if (m_chosen) {
        m_chosen->feed(bytes, size, arrivalTime, sink);
        return;
    }
    m_head.append(bytes, size);
    m_isMcap = McapStreamDecoder::isMcap(m_head);
    if (m_isMcap)
        return;
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    if (!MavlinkStreamDecoder::detectLayout(m_head, &layout) && m_head.size() < GreatestHead)
        return;
    m_chosen = layout == MavlinkStreamDecoder::TlogLayout ? &m_tlog : &m_raw;
    m_isTlog = m_chosen == &m_tlog;
    m_chosen->feed(m_head.constData(), int(m_head.size()), arrivalTime, sink);
    m_head.clear();
}

void DetectingDecoder::finish(StreamSink* sink)
{
    if (!m_chosen) {
        m_chosen = &m_raw;
        m_chosen->feed(m_head.constData(), int(m_head.size()), Message::NoTime, sink);
        m_head.clear();
    }
    m_chosen->finish(sink);
}

StreamDecoder* DetectingDecoder::takeSuccessor()
{
    if (!m_isMcap)
        return nullptr;
    m_isMcap = false;
    m_head.clear();
    return new McapStreamDecoder(m_definitions, McapStreamDecoder::Live);
}

void DetectingDecoder::restart(quint64 offset)
{
    m_head.clear();
    m_raw.restart(offset);
    m_tlog.restart(offset);
}

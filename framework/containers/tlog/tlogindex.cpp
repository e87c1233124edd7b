#include "tlogindex.h"

#include "mavlinkframe.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"

namespace
{

const qint64 PieceSize = 64 * 1024;
const qint64 LongestNoise = 4 * 1024 * 1024; // that is searched for a place to cut

// Recorders that write from several threads put messages down a little out of order.
const qint64 GreatestDisorder = 1000 * 1000;

/** Notes the first or the last message of a known type that has a plausible time. */
class PlaceSink : public StreamSink
{
public:
    explicit PlaceSink(bool last)
        : m_last(last)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        if (!message.info || message.time == Message::NoTime || (time != Message::NoTime && !m_last))
            return;
        if (!MavlinkFrame::isPlausibleTime(quint64(message.time)))
            return;
        time = message.time;
        offset = qint64(message.offset) - MavlinkFrame::TimeSize;
    }
    void processProblem(const StreamProblem&) override {}

    qint64 time = Message::NoTime;
    qint64 offset = 0;

private:
    bool m_last;
};

} // namespace

struct TlogIndex::Found
{
    qint64 time;
    qint64 offset;
};

TlogIndex::TlogIndex(const QString& path, const MavlinkDialect* dialect)
    : m_dialect(dialect)
    , m_file(path)
    , m_startIsKnown(false)
    , m_endIsKnown(false)
    , m_startTime(0)
    , m_endTime(0)
{
    m_file.open(QIODevice::ReadOnly); // a file that cannot be read has no times
}

TlogIndex::~TlogIndex() {}

/** Finds the first (or @p last) good message that begins from @p from up to @p end. */
bool TlogIndex::read(qint64 from, qint64 end, bool last, Found* found) const
{
    MavlinkStreamDecoder decoder(m_dialect, MavlinkStreamDecoder::TlogLayout);
    decoder.restart(quint64(from));
    PlaceSink sink(last);
    if (!m_file.seek(from))
        return false;
    // Where nothing but noise follows, the search goes on behind it.
    for (qint64 position = from; position < end && (last || sink.time == Message::NoTime);) {
        if (m_goOn && !m_goOn(int(position * 100 / m_file.size())))
            return false;
        const QByteArray bytes = m_file.read(last ? qMin(PieceSize, end - position) : PieceSize);
        if (bytes.isEmpty())
            break;
        decoder.feed(bytes.constData(), int(bytes.size()), Message::NoTime, &sink);
        position += bytes.size();
    }
    if (sink.time == Message::NoTime)
        decoder.finish(&sink);
    found->time = sink.time;
    found->offset = sink.offset;
    return sink.time != Message::NoTime;
}

qint64 TlogIndex::getStartTime() const
{
    Found first;
    if (!m_startIsKnown)
        m_startTime = read(0, m_file.size(), false, &first) ? first.time : qint64(Message::NoTime);
    m_startIsKnown = true;
    return m_startTime;
}

qint64 TlogIndex::getEndTime() const
{
    if (!m_endIsKnown)
        m_endTime = findEndTime();
    m_endIsKnown = true;
    return m_endTime;
}

bool TlogIndex::prepare(const GoOn& goOn)
{
    bool stopped = false;
    m_goOn = [&](int percent) {
        stopped = stopped || (goOn && !goOn(percent));
        return !stopped;
    };
    getStartTime();
    getEndTime();
    m_goOn = GoOn();
    return !stopped;
}

qint64 TlogIndex::findEndTime() const
{
    // From behind, because the end of a file may be anything.
    for (qint64 end = m_file.size(); end > 0; end -= PieceSize) {
        Found last;
        if (read(qMax(qint64(0), end - PieceSize), end, true, &last))
            return last.time;
    }
    return Message::NoTime;
}

quint64 TlogIndex::findOffset(qint64 time)
{
    const qint64 wanted = time - GreatestDisorder;
    qint64 before = 0; // a message before the wanted time begins here, or the file
    qint64 behind = m_file.size();
    while (behind - before > PieceSize) {
        const qint64 middle = before + (behind - before) / 2;
        Found found;
        if (!read(middle, behind, false, &found) || found.offset >= behind || found.time >= wanted)
            behind = middle;
        else
            before = found.offset;
    }
    return quint64(before);
}

quint64 TlogIndex::findCut(quint64 offset)
{
    Found found;
    const qint64 last = qMin(qint64(offset), m_file.size());
    for (qint64 end = last; end > qMax(qint64(0), last - LongestNoise); end -= PieceSize)
        if (read(qMax(qint64(0), end - PieceSize), end, true, &found))
            return quint64(found.offset);
    return 0;
}

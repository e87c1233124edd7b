#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "receptioncounters.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

namespace
{

/** What is compared of a report. */
struct Report
{
    quint64 offset;
    quint64 length;
    int kind; // -1: a message
    quint32 id;
    qint64 time;

    bool operator==(const Report& other) const
    {
        return offset == other.offset && length == other.length && kind == other.kind && id == other.id &&
               time == other.time;
    }
};

class Sink : public StreamSink
{
public:
    Sink(const QByteArray& stream, bool withTimes)
        : m_stream(stream)
        , m_withTimes(withTimes)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        const int offset = int(message.offset);
        if (m_stream.mid(offset, message.size) != QByteArray(message.data, message.size))
            std::abort(); // not the bytes at that place
        counters.countMessage(message, 0);
        add(Report{message.offset, quint64(message.size), -1, message.id, message.time});
    }

    void processProblem(const StreamProblem& problem) override
    {
        counters.countProblem(problem);
        add(Report{problem.offset, problem.length, int(problem.kind), problem.id, Message::NoTime});
    }

    void checkEnd() const
    {
        if (m_end != quint64(m_stream.size()))
            std::abort(); // something was not reported
    }

    std::vector<Report> reports;
    ReceptionCounters counters;

private:
    void add(const Report& report)
    {
        const bool isTime = m_withTimes && report.offset == m_end + 8;
        if (report.length == 0 || (report.offset != m_end && !isTime))
            std::abort(); // bytes were left out or reported twice
        m_end = report.offset + report.length;
        reports.push_back(report);
    }

    const QByteArray m_stream;
    bool m_withTimes;
    quint64 m_end = 0;
};

std::vector<Report> decode(const MavlinkDialect* dialect, MavlinkStreamDecoder::Layout layout, const QByteArray& stream,
                           int piece)
{
    MavlinkStreamDecoder decoder(dialect, layout);
    Sink sink(stream, layout == MavlinkStreamDecoder::TlogLayout);
    for (int i = 0; i < stream.size(); i += piece) {
        const QByteArray part(stream.constData() + i, std::min(piece, int(stream.size()) - i));
        decoder.feed(part.constData(), int(part.size()), Message::NoTime, &sink);
    }
    decoder.finish(&sink);
    sink.checkEnd();
    return sink.reports;
}

} // namespace

// The first byte is the layout and how the rest is cut into pieces; the rest is a stream.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const MavlinkDialect* const dialect = MavlinkDialect::loadBuiltIn();
    if (size < 1)
        return 0;
    const QByteArray stream(reinterpret_cast<const char*>(data + 1), int(size - 1));
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    MavlinkStreamDecoder::detectLayout(stream, &layout);
    layout = data[0] & 1 ? MavlinkStreamDecoder::TlogLayout : MavlinkStreamDecoder::RawLayout;
    const std::vector<Report> whole = decode(dialect, layout, stream, std::max(1, int(stream.size())));
    if (whole != decode(dialect, layout, stream, 1 + (data[0] >> 1)))
        std::abort(); // the result depends on the pieces
    return 0;
}

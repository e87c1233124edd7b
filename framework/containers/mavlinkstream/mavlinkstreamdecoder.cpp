#include "mavlinkstreamdecoder.h"

#include "mavlinkcrc.h"
#include "mavlinkdialect.h"
#include "mavlinkframe.h"
#include "message.h"

#include <QCoreApplication>

#include <algorithm>
#include <limits>

using namespace MavlinkFrame;

namespace
{

// Ids below are looked up in a table, which is faster than hashing; the types that come often are all below.
const int CommonIds = 512;

// What is added to pending bytes at a time: more than any decision needs (a frame with the header behind it, and
// another frame that begins inside it).
const int LookAhead = 1024;

// A live stream of nothing but noise must not stay silent: a run of skipped bytes is reported at the latest when it is
// this long.
const quint64 LongestSkippedRun = 16384;

} // namespace

/** Bytes of the stream that can be looked at now, addressed by their position in the stream. */
struct MavlinkStreamDecoder::Window
{
    Window(const char* bytes, int size, quint64 offset, bool endsStream)
        : m_bytes(bytes)
        , m_offset(offset)
        , end(offset + quint64(size))
        , atEnd(endsStream)
    {
    }

    const char* at(quint64 position) const { return m_bytes + (position - m_offset); }
    bool holds(quint64 position, int size) const { return position + quint64(size) <= end; }

    /** The first magic byte from @p from up to @p to, or @p to. */
    quint64 findMagic(quint64 from, quint64 to) const
    {
        const char* const limit = at(to);
        return to - quint64(limit - std::find_if(at(from), limit, isMagic));
    }

private:
    const char* m_bytes;
    quint64 m_offset;

public:
    const quint64 end;
    const bool atEnd; // nothing will follow
};

/** A frame that may begin at a magic byte, with its header read. */
struct MavlinkStreamDecoder::Candidate
{
    Candidate(const MavlinkStreamDecoder* decoder, const Window& window, quint64 magic)
        : header(window.at(magic))
        , info(decoder->find(header.id))
        , start(magic)
        , end(magic + quint64(header.size()))
    {
    }

    /** Whether the header fits its definition, so that the checksum decides everything. */
    bool fitsDefinition() const
    {
        return info && header.isUnderstood() && (!header.isV1 || header.payloadSize == info->getBaseLength());
    }

    bool isChecksumRight(const Window& window) const
    {
        const char* const bytes = window.at(start);
        const int size = header.checkedSize();
        const quint16 crc = MavlinkCrc::add(MavlinkCrc::calculate(bytes + 1, size - 1), info->getCrcExtra());
        return crc == qFromLittleEndian<quint16>(bytes + size);
    }

    /** Whether there is a definition with which the checksum would be right. */
    bool canChecksumBeRight(const Window& window) const
    {
        const char* const bytes = window.at(start);
        const int size = header.checkedSize();
        return MavlinkCrc::canFollow(MavlinkCrc::calculate(bytes + 1, size - 1),
                                     qFromLittleEndian<quint16>(bytes + size));
    }

    /** Where the checksum ends, and the signature begins if there is one. */
    quint64 checksumEnd() const { return start + quint64(header.checkedSize() + ChecksumSize); }
    bool hasSignature() const { return header.incompatibleFlags & SignedFlag; }

    Header header;
    const MavlinkMessageInfo* info;
    quint64 start;
    quint64 end;
};

MavlinkStreamDecoder::MavlinkStreamDecoder(const MavlinkDialect* dialect, Layout layout)
    : m_dialect(dialect)
    , m_layout(layout)
    , m_commonTypes(CommonIds, nullptr)
    , m_arrivalTime(Message::NoTime)
    , m_offset(0)
    , m_reported(0)
    , m_position(0)
    , m_searched(0)
    , m_inSync(true)
{
    for (int id = 0; id < CommonIds; ++id)
        m_commonTypes[id] = dialect->find(quint32(id));
    m_pending.reserve(2 * LookAhead);
    continueAt(0);
}

MavlinkStreamDecoder::~MavlinkStreamDecoder() {}

void MavlinkStreamDecoder::feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink)
{
    m_arrivalTime = arrivalTime;
    int used = 0;
    // What is pending is completed with no more bytes than that takes; the others are read where they are.
    while (!m_pending.isEmpty() && used < size) {
        const int old = int(m_pending.size());
        const int added = std::min(size - used, LookAhead);
        m_pending.append(bytes + used, added);
        const int done = work(Window(m_pending.constData(), int(m_pending.size()), m_offset, false), sink);
        if (done >= old) {
            used += done - old;
            m_pending.resize(0);
        } else {
            used += added;
            m_pending.remove(0, done);
        }
    }
    if (used < size) {
        used += work(Window(bytes + used, size - used, m_offset, false), sink);
        m_pending.append(bytes + used, size - used);
    }
}

void MavlinkStreamDecoder::finish(StreamSink* sink)
{
    const Window window(m_pending.constData(), int(m_pending.size()), m_offset, true);
    work(window, sink);
    if (m_reported < window.end && m_inSync) {
        StreamProblem problem; // the time stamp of a frame that never came
        problem.kind = StreamProblem::TruncatedFrame;
        problem.offset = m_reported;
        problem.length = window.end - m_reported;
        sink->processProblem(problem);
    } else {
        reportSkipped(window.end, sink);
    }
    m_offset = window.end;
    m_pending.resize(0);
    continueAt(window.end);
}

void MavlinkStreamDecoder::restart(quint64 offset)
{
    m_pending.clear();
    m_offset = offset;
    m_searched = offset;
    continueAt(offset);
}

bool MavlinkStreamDecoder::hasTimes() const
{
    return m_layout == TlogLayout;
}

const MavlinkDialect* MavlinkStreamDecoder::getDialect() const
{
    return m_dialect;
}

QString MavlinkStreamDecoder::getSenderName(quint32 sender) const
{
    return QStringLiteral("%1:%2").arg(sender >> 8 & 0xff).arg(sender & 0xff);
}

const char* MavlinkStreamDecoder::getRecordingName() const
{
    return "tlog";
}

quint64 MavlinkStreamDecoder::getSequenceModulus() const
{
    return 256;
}

const MavlinkMessageInfo* MavlinkStreamDecoder::find(quint32 id) const
{
    return id < quint32(CommonIds) ? m_commonTypes.at(int(id)) : m_dialect->find(id);
}

/** Reports all that can be decided, and returns the number of bytes that are not needed any more. */
int MavlinkStreamDecoder::work(const Window& window, StreamSink* sink)
{
    while (m_position < window.end && resolve(window, sink)) {
    }
    // A time stamp may stand before whatever comes.
    const quint64 timeSize = m_layout == TlogLayout ? TimeSize : 0;
    const quint64 needed = std::max(m_reported, m_position - std::min(m_position, timeSize));
    const quint64 old = m_offset;
    m_offset = std::min(needed, window.end);
    return int(m_offset - old);
}

/** Decides about what stands at m_position; false when that needs bytes that are not there. */
bool MavlinkStreamDecoder::resolve(const Window& window, StreamSink* sink)
{
    if (!isMagic(*window.at(m_position))) {
        // Where a frame was expected behind a time stamp, the search begins with the bytes of that.
        const quint64 from = m_inSync ? m_reported : m_position;
        m_inSync = false;
        passOver(window.findMagic(from, window.end), sink);
        return true;
    }

    if (!window.holds(m_position, headerSize(*window.at(m_position)))) {
        if (!window.atEnd)
            return false;
        if (!m_inSync) {
            passOver(m_position + 1, sink);
            return true;
        }
        StreamProblem problem;
        problem.kind = StreamProblem::TruncatedFrame;
        problem.offset = m_position;
        problem.length = window.end - m_position;
        sink->processProblem(problem);
        continueAt(window.end);
        return true;
    }

    const Candidate candidate(this, window, m_position);
    if (m_position >= m_searched && candidate.fitsDefinition()) {
        const Answer answer = verifies(window, candidate);
        if (answer == Yes && candidate.hasSignature())
            return resolveSigned(window, candidate, sink);
        if (answer == Yes) {
            reportMessage(window, candidate, sink);
            return true;
        }
        if (answer == NotYet)
            return false;
    }
    return resolveFailed(window, candidate, sink);
}

/** Decides where a signed frame ends whose checksum is right: another may begin before its signature is complete. */
bool MavlinkStreamDecoder::resolveSigned(const Window& window, Candidate candidate, StreamSink* sink)
{
    const quint64 signature = candidate.checksumEnd();
    quint64 next = window.end;
    const quint64 searched = m_searched;
    m_searched = std::max(m_searched, signature);
    const Answer isCut = findVerified(window, candidate.end + (m_layout == TlogLayout ? TimeSize : 0), &next);
    if (isCut == NotYet) {
        m_searched = searched;
        return false;
    }
    if (isCut == No && candidate.end <= window.end) {
        reportMessage(window, candidate, sink);
        return true;
    }
    // All that the checksum covers is there.
    candidate.end = signature;
    reportMessage(window, candidate, sink);
    StreamProblem problem;
    problem.kind = StreamProblem::SkippedBytes;
    problem.offset = signature;
    const bool hasTime = isCut == Yes && hasTimeBefore(window, next);
    problem.length = next - (hasTime ? TimeSize : 0) - signature;
    problem.text = QCoreApplication::translate("StreamProblem", "a signature breaks off");
    sink->processProblem(problem);
    continueAt(signature + problem.length);
    m_inSync = m_layout == RawLayout || hasTime;
    m_position = next;
    return true;
}

/** Decides about a frame that was not verified: it failed, it cannot be verified, or the stream ends inside it. */
bool MavlinkStreamDecoder::resolveFailed(const Window& window, const Candidate& candidate, StreamSink* sink)
{
    quint64 better = 0;
    m_searched = std::max(m_searched, candidate.start + 1);
    const quint64 nextMagic = candidate.end + (m_layout == TlogLayout ? TimeSize : 0);
    switch (findVerified(window, nextMagic, &better)) {
    case Yes:
        resumeInside(window, candidate, better, sink);
        return true;
    case NotYet:
        return false;
    case No:
        break;
    }

    if (candidate.end > window.end)
        return resolveCutOff(window, candidate, sink);

    // A frame without a definition that fits can still prove to be one.
    const bool right = candidate.info && !candidate.fitsDefinition() && candidate.isChecksumRight(window);
    const Answer followed = right ? Yes : isFollowed(window, candidate.end);
    if (followed == NotYet)
        return false;
    const bool damaged =
        followed == Yes && !candidate.info && candidate.header.isUnderstood() && !candidate.canChecksumBeRight(window);
    if (followed == No || (damaged && !m_inSync)) {
        m_inSync = false;
        passOver(candidate.start + 1, sink);
    } else if (!candidate.header.isUnderstood()) {
        reportBadFrame(window, candidate, StreamProblem::UnsupportedFrame, candidate.end, sink);
        continueAt(candidate.end);
    } else if (!candidate.info && !damaged) {
        reportMessage(window, candidate, sink);
    } else {
        reportBadFrame(window, candidate, right ? StreamProblem::LengthMismatch : StreamProblem::ChecksumFailure,
                       candidate.end, sink);
        continueAt(candidate.end);
    }
    return true;
}

/** Decides about a frame that the end of the stream cuts off and that holds no other. */
bool MavlinkStreamDecoder::resolveCutOff(const Window& window, const Candidate& candidate, StreamSink* sink)
{
    if (m_inSync || candidate.fitsDefinition()) {
        reportBadFrame(window, candidate, StreamProblem::TruncatedFrame, window.end, sink);
        continueAt(window.end);
    } else {
        passOver(candidate.start + 1, sink);
    }
    return true;
}

/** Whether a frame that fits its definition has the right checksum. At the end of the stream one without has not. */
MavlinkStreamDecoder::Answer MavlinkStreamDecoder::verifies(const Window& window, const Candidate& candidate) const
{
    if (candidate.end > window.end && (!window.atEnd || candidate.checksumEnd() > window.end))
        return window.atEnd ? No : NotYet;
    return candidate.isChecksumRight(window) ? Yes : No;
}

/** Looks for the first frame that verifies and begins from m_searched up to @p end. */
MavlinkStreamDecoder::Answer MavlinkStreamDecoder::findVerified(const Window& window, quint64 end, quint64* found)
{
    const quint64 limit = std::min(end, window.end);
    while (m_searched < limit) {
        m_searched = window.findMagic(m_searched, limit);
        if (m_searched == limit)
            break;
        if (window.holds(m_searched, headerSize(*window.at(m_searched)))) {
            const Candidate candidate(this, window, m_searched);
            const Answer answer = candidate.fitsDefinition() ? verifies(window, candidate) : No;
            if (answer != No) {
                *found = m_searched;
                return answer;
            }
        } else if (!window.atEnd) {
            return NotYet;
        }
        ++m_searched;
    }
    return end > window.end && !window.atEnd ? NotYet : No;
}

/** Whether a frame seems to begin where one ends, or the stream ends there. */
MavlinkStreamDecoder::Answer MavlinkStreamDecoder::isFollowed(const Window& window, quint64 end) const
{
    const quint64 magic = end + (m_layout == TlogLayout ? TimeSize : 0);
    if (magic >= window.end) {
        if (!window.atEnd)
            return NotYet;
        return end == window.end || m_inSync ? Yes : No;
    }
    if (!isMagic(*window.at(magic)))
        return No;
    if (m_inSync)
        return Yes;
    // Noise has many magic bytes: where nothing before spoke for a frame, more must.
    if (m_layout == TlogLayout)
        return isPlausibleTime(readTime(window.at(end))) ? Yes : No;
    if (!window.holds(magic, headerSize(*window.at(magic))))
        return window.atEnd ? No : NotYet;
    return Candidate(this, window, magic).fitsDefinition() ? Yes : No;
}

/** Whether a time stamp stands before the magic byte at @p magic. */
bool MavlinkStreamDecoder::hasTimeBefore(const Window& window, quint64 magic) const
{
    if (m_layout != TlogLayout || magic < m_reported + TimeSize)
        return false;
    return (m_inSync && magic == m_position) || isPlausibleTime(readTime(window.at(magic - TimeSize)));
}

/** Gives up a frame in favour of one that begins at @p magic inside it. */
void MavlinkStreamDecoder::resumeInside(const Window& window, const Candidate& candidate, quint64 magic,
                                        StreamSink* sink)
{
    quint64 end = magic;
    if (hasTimeBefore(window, magic) && magic - TimeSize > candidate.start)
        end -= TimeSize;
    // The frame was cut when its header is its own and there is a reason to believe it; else it was noise.
    const bool ownHeader = candidate.start + quint64(headerSize(*window.at(candidate.start))) <= end;
    if (candidate.info && ownHeader && (m_inSync || candidate.fitsDefinition())) {
        reportBadFrame(window, candidate, StreamProblem::ChecksumFailure, end, sink);
        m_reported = end;
    }
    m_inSync = false;
    passOver(magic, sink);
}

/** Goes on at @p position, with what lies before it to be skipped unless it is a time stamp. */
void MavlinkStreamDecoder::passOver(quint64 position, StreamSink* sink)
{
    m_position = position;
    while (m_position - m_reported >= LongestSkippedRun + TimeSize)
        reportSkipped(m_reported + LongestSkippedRun, sink);
}

void MavlinkStreamDecoder::reportMessage(const Window& window, const Candidate& candidate, StreamSink* sink)
{
    ReceivedMessage message;
    message.info = candidate.info;
    message.id = candidate.header.id;
    message.sender = senderKey(candidate.header.system, candidate.header.component);
    message.data = window.at(candidate.start);
    message.size = int(candidate.end - candidate.start);
    message.sequence = candidate.header.sequence;
    message.offset = candidate.start;
    if (m_layout == RawLayout) {
        message.time = m_arrivalTime;
        reportSkipped(candidate.start, sink);
    } else if (hasTimeBefore(window, candidate.start)) {
        const quint64 time = readTime(window.at(candidate.start - TimeSize));
        if (time <= quint64(std::numeric_limits<qint64>::max()))
            message.time = qint64(time);
        reportSkipped(candidate.start - TimeSize, sink);
    } else {
        reportSkipped(candidate.start, sink);
    }
    sink->processReceived(message);
    continueAt(candidate.end);
}

void MavlinkStreamDecoder::reportBadFrame(const Window& window, const Candidate& candidate, StreamProblem::Kind kind,
                                          quint64 end, StreamSink* sink)
{
    reportSkipped(candidate.start - (hasTimeBefore(window, candidate.start) ? TimeSize : 0), sink);
    StreamProblem problem;
    problem.kind = kind;
    problem.offset = candidate.start;
    problem.length = end - candidate.start;
    problem.id = candidate.header.id;
    problem.sender = senderKey(candidate.header.system, candidate.header.component);
    problem.hasFrame = true;
    if (kind == StreamProblem::LengthMismatch)
        problem.text = QCoreApplication::translate("StreamProblem", "%1 bytes of payload instead of %2")
                           .arg(candidate.header.payloadSize)
                           .arg(candidate.info->getBaseLength());
    else if (kind == StreamProblem::UnsupportedFrame)
        problem.text = QCoreApplication::translate("StreamProblem", "incompatibility flags 0x%1")
                           .arg(candidate.header.incompatibleFlags, 2, 16, QLatin1Char('0'));
    sink->processProblem(problem);
}

/** Reports what was passed over, up to @p end. */
void MavlinkStreamDecoder::reportSkipped(quint64 end, StreamSink* sink)
{
    if (m_reported >= end)
        return;
    StreamProblem problem;
    problem.kind = StreamProblem::SkippedBytes;
    problem.offset = m_reported;
    problem.length = end - m_reported;
    m_reported = end;
    sink->processProblem(problem);
}

/** Everything up to @p end is a frame: the next is expected there. */
void MavlinkStreamDecoder::continueAt(quint64 end)
{
    m_reported = end;
    m_position = end + (m_layout == TlogLayout ? TimeSize : 0);
    m_inSync = true;
}

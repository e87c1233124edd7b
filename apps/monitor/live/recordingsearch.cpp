#include "recordingpass.h"

#include "message.h"
#include "recordingindex.h"

#include <algorithm>
#include <limits>

namespace
{

const int ReadTimeoutMs = 100;

// What is not found among the messages of so many bytes is not where it was.
const quint64 LongestLook = 1024 * 1024;

// How far back messages are looked for while it is not known where they are, how much farther each time after that, and
// when that has taken long enough for another time: where there is something of all that is known, and in any case.
const qint64 FirstLookBack = 200 * 1000;
const qint64 LookBackGrowth = 4;
const qint64 LeastLookMs = 10;
const qint64 MostLookMs = 60;

/** Keeps the newest message of each row of a stretch of time. */
class NewestSink : public StreamSink
{
public:
    NewestSink(StreamIdentities* identities, qint64 from, qint64 before)
        : m_identities(identities)
        , m_from(from)
        , m_before(before)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        if (message.time == Message::NoTime || isOver)
            return;
        if (message.time >= m_before)
            isOver = true;
        else if (message.time >= m_from)
            keep(message, m_identities->rowOf(message));
    }
    void processProblem(const StreamProblem&) override {}

    void keep(const ReceivedMessage& message, int row)
    {
        EarlierMessage& kept = messages[row];
        kept.info = message.info;
        kept.id = message.id;
        kept.time = message.time;
        kept.sequence = message.sequence;
        kept.data = QByteArray(message.data, message.size);
    }

    QHash<int, EarlierMessage> messages; // by row
    bool isOver = false;

private:
    StreamIdentities* m_identities;
    qint64 m_from;
    qint64 m_before;
};

/** Takes the messages that are at given times, of rows that have none. */
class PlaceSink : public StreamSink
{
public:
    PlaceSink(StreamIdentities* identities, NewestSink* found, const std::vector<RecordingDensity::Place>& places)
        : m_identities(identities)
        , m_found(found)
    {
        for (const RecordingDensity::Place& place : places)
            if (!found->messages.contains(place.row))
                m_times.insert(place.row, place.time);
    }

    void processReceived(const ReceivedMessage& message) override
    {
        const int row = m_identities->rowOf(message);
        const auto wanted = m_times.constFind(row);
        isOver = isOver || message.offset > end;
        if (wanted == m_times.constEnd() || *wanted != message.time)
            return;
        m_found->keep(message, row); // of several at one time, the last
        if (row == current)
            isOver = true;
    }
    void processProblem(const StreamProblem&) override {}

    bool isMissing(int row) const { return m_times.contains(row) && !m_found->messages.contains(row); }

    int current = -1; // what is looked for
    quint64 end = 0;  // and how far
    bool isOver = false;

private:
    StreamIdentities* m_identities;
    NewestSink* m_found;
    QHash<int, qint64> m_times; // by row
};

} // namespace

void RecordingPass::findBefore(qint64 time)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_wish = time;
    m_wake.notify_all();
}

bool RecordingPass::takeFound(qint64* time, QVector<EarlierMessage>* messages)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_foundFor)
        return false;
    *time = *m_foundFor;
    m_foundFor.reset();
    messages->swap(m_found);
    m_found.clear();
    return true;
}

/** Takes a wish while the pass is under way. */
bool RecordingPass::takeWish(qint64* time)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_wish || m_input->isCancelled())
        return false;
    *time = *m_wish;
    m_lookedBack.swap(m_wish);
    m_wish.reset();
    return true;
}

bool RecordingPass::waitForWish(qint64* time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (!m_wish)
        m_wish = m_lookedBack;
    m_lookedBack.reset();
    m_wake.wait(lock, [this] { return m_wish || m_input->isCancelled(); });
    if (m_input->isCancelled())
        return false;
    *time = *m_wish;
    m_wish.reset();
    return true;
}

/** Whether there is another one. */
bool RecordingPass::isWishOld()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_wish || m_input->isCancelled();
}

/** Reads until @p sink has enough; false when what it looks for is not wanted any more, or cannot be read. */
template <typename Sink>
bool RecordingPass::readFrom(PassInput* input, const OpenedStream& stream, quint64 offset, Sink* sink)
{
    if (!input->get()->seek(qint64(offset)))
        return false;
    stream.decoder->restart(offset);
    QByteArray bytes;
    while (!sink->isOver) {
        if (isWishOld())
            return false;
        const ByteInput::Status status = input->get()->read(&bytes, ReadTimeoutMs);
        if (status == ByteInput::Data)
            stream.decoder->feed(bytes.constData(), int(bytes.size()), Message::NoTime, sink);
        if (status == ByteInput::Failed)
            return false;
        if (status == ByteInput::End) {
            stream.decoder->finish(sink);
            break;
        }
    }
    return true;
}

/** Whether it takes little to open the recording once more. */
bool RecordingPass::canLookBack()
{
    if (!m_other || m_otherStream.decoder)
        return m_other != nullptr;
    if (!m_stream.index || !m_input->isAsItIs() || !m_other->open(&m_otherStream) || !m_otherStream.index ||
        !m_otherStream.index->prepare([this](int) { return !m_input->isCancelled(); })) {
        closeOther();
        return false;
    }
    m_otherIdentities.setDecoder(m_otherStream.decoder.get());
    return true;
}

void RecordingPass::closeOther()
{
    m_otherStream = OpenedStream();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_other.reset();
}

/** Finds what is not far before a time while it is not known where anything is: reads the last moments before it, then
 * longer ones before these, until there is something of all that the pass has met. */
void RecordingPass::lookBack(qint64 time)
{
    if (!canLookBack())
        return;
    const qint64 start = m_otherStream.index->getStartTime();
    QHash<int, EarlierMessage> found;
    QElapsedTimer timer;
    timer.start();
    qint64 until = time;
    for (qint64 span = FirstLookBack;
         until > start && timer.elapsed() < (found.size() < m_rowsMet ? MostLookMs : LeastLookMs);
         span *= LookBackGrowth) {
        const qint64 from = until - start > span ? until - span : start;
        NewestSink stretch(&m_otherIdentities, from, until);
        if (!readFrom(m_other.get(), m_otherStream, m_otherStream.index->findOffset(from), &stretch))
            return;
        const auto before = found.size();
        for (auto message = stretch.messages.cbegin(); message != stretch.messages.cend(); ++message)
            if (!found.contains(message.key()))
                found.insert(message.key(), *message);
        if (found.size() > before)
            handOut(found, m_otherIdentities, time);
        until = from;
    }
}

/** Finds the newest messages before a time, and hands them out. */
void RecordingPass::search(qint64 time)
{
    StreamIdentities& identities = m_monitor.getIdentities();
    qint64 from = 0;
    std::vector<RecordingDensity::Place> places = m_density.getPlacesBefore(time, &from);
    NewestSink found(&identities, std::numeric_limits<qint64>::min(), time);
    if (from < time && !readFrom(m_input.get(), m_stream, m_stream.index->findOffset(from), &found))
        return;
    PlaceSink rest(&identities, &found, places);
    std::sort(places.begin(), places.end(),
              [](const RecordingDensity::Place& a, const RecordingDensity::Place& b) { return a.offset < b.offset; });
    for (const RecordingDensity::Place& place : places) {
        // Behind bytes that are none of a message its time may be missed there; then it is looked for by that.
        for (int attempt = 0; attempt < 2 && rest.isMissing(place.row); ++attempt) {
            const quint64 offset = attempt == 0 ? place.offset : m_stream.index->findOffset(place.time);
            rest.current = place.row;
            rest.end = place.offset + LongestLook;
            rest.isOver = false;
            if (!readFrom(m_input.get(), m_stream, offset, &rest))
                return;
        }
    }
    handOut(found.messages, identities, time);
}

/** Hands out what was found for a wish, in the order of the times. */
void RecordingPass::handOut(const QHash<int, EarlierMessage>& found, const StreamIdentities& identities, qint64 time)
{
    QVector<EarlierMessage> messages;
    for (auto message = found.begin(); message != found.end(); ++message) {
        const StreamIdentities::Row& row = identities.getRows().at(message.key());
        messages.append(*message);
        messages.last().typeName = row.typeName;
        messages.last().sender = identities.getSenderName(row.sender);
    }
    std::sort(messages.begin(), messages.end(),
              [](const EarlierMessage& a, const EarlierMessage& b) { return a.time < b.time; });
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_found = messages;
        m_foundFor = time;
    }
    m_tell();
}

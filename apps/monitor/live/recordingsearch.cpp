#include "recordingpass.h"

#include "message.h"
#include "recordingindex.h"

#include <algorithm>

namespace
{

const int ReadTimeoutMs = 100;

// What is not found among the messages of so many bytes is not where it was.
const quint64 LongestLook = 1024 * 1024;

/** Keeps the newest message of each row before a time. */
class NewestSink : public StreamSink
{
public:
    NewestSink(StreamIdentities* identities, qint64 before)
        : m_identities(identities)
        , m_before(before)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        if (message.time == Message::NoTime || isOver)
            return;
        if (message.time >= m_before)
            isOver = true;
        else
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

bool RecordingPass::waitForWish(qint64* time)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_wake.wait(lock, [this] { return m_wish || m_input.isCancelled(); });
    if (m_input.isCancelled())
        return false;
    *time = *m_wish;
    m_wish.reset();
    return true;
}

/** Whether there is another one. */
bool RecordingPass::isWishOld()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_wish || m_input.isCancelled();
}

/** Reads until @p sink has enough; false when what it looks for is not wanted any more, or cannot be read. */
template <typename Sink>
bool RecordingPass::readFrom(quint64 offset, Sink* sink)
{
    if (!m_input.get()->seek(qint64(offset)))
        return false;
    m_stream.decoder->restart(offset);
    QByteArray bytes;
    while (!sink->isOver) {
        if (isWishOld())
            return false;
        const ByteInput::Status status = m_input.get()->read(&bytes, ReadTimeoutMs);
        if (status == ByteInput::Data)
            m_stream.decoder->feed(bytes.constData(), int(bytes.size()), Message::NoTime, sink);
        if (status == ByteInput::Failed)
            return false;
        if (status == ByteInput::End) {
            m_stream.decoder->finish(sink);
            break;
        }
    }
    return true;
}

/** Finds the newest messages before a time, and hands them out. */
void RecordingPass::search(qint64 time)
{
    StreamIdentities& identities = m_monitor.getIdentities();
    qint64 from = 0;
    std::vector<RecordingDensity::Place> places = m_density.getPlacesBefore(time, &from);
    NewestSink found(&identities, time);
    if (from < time && !readFrom(m_stream.index->findOffset(from), &found))
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
            if (!readFrom(offset, &rest))
                return;
        }
    }
    QVector<EarlierMessage> messages;
    for (auto message = found.messages.begin(); message != found.messages.end(); ++message) {
        const StreamIdentities::Row& row = identities.getRows().at(message.key());
        message->typeName = row.typeName;
        message->sender = identities.getSenderName(row.sender);
        messages.append(*message);
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

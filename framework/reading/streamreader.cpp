#include "streamreader.h"

#include "laterdecoder.h"
#include "message.h"
#include "playbackclock.h"

#include <limits>

namespace
{

const std::size_t GreatestQueue = 8;

// A view shows nothing finer than a frame of the screen.
const qint64 GreatestAge = 20 * 1000;

// A thread is not woken more exactly than this.
const qint64 LeastWait = 1000;

// How long a command may wait for an input from which nothing comes.
const int IdleTimeoutMs = 200;

// How far back the message before another one is looked for first, and how much farther each time after that.
const qint64 FirstLookBack = 200 * 1000;
const qint64 LookBackGrowth = 8;

// More than any run of bytes between two reports, for decoders that tell where messages lie.
const int LongestTail = 1024 * 1024;

/** Notes the time of the last message before a time. */
class TimeFinder : public StreamSink
{
public:
    explicit TimeFinder(qint64 before)
        : m_before(before)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        if (message.time == Message::NoTime || isOver)
            return;
        if (message.time >= m_before)
            isOver = true;
        else
            found = message.time;
    }
    void processProblem(const StreamProblem&) override {}

    qint64 found = Message::NoTime;
    bool isOver = false;

private:
    const qint64 m_before;
};

} // namespace

StreamReader::StreamReader(ByteInput* input, StreamDecoder* decoder)
    : m_input(input)
    , m_decoder(decoder)
    , m_clock(new PlaybackClock)
    , m_inputName(input->getName())
    , m_batch(new StreamBatch)
    , m_batchStart(0)
    , m_paced(false)
    , m_isCaughtUp(false)
    , m_tailOffset(0)
    , m_done(0)
    , m_arrivalTime(Message::NoTime)
    , m_leaveOutTill(Message::NoTime)
    , m_cancelled(false)
    , m_preparedPercent(-1)
    , m_interrupted(false)
    , m_paused(false)
    , m_playbackChanged(false)
    , m_steps(0)
    , m_seeksBefore(false)
    , m_announced(false)
{
}

StreamReader::StreamReader(ByteInput* input, StreamOpener* opener)
    : StreamReader(input, new LaterDecoder)
{
    m_opener.reset(opener);
}

StreamReader::~StreamReader()
{
    cancel();
    wait();
    // Still there when the thread was never started.
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_input.reset();
}

void StreamReader::setClock(PlaybackClock* clock)
{
    m_clock.reset(clock);
}

void StreamReader::setIndex(RecordingIndex* index)
{
    m_index.reset(index);
}

void StreamReader::setPaused(bool paused)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_paused = paused;
    m_steps = 0;
    m_playbackChanged = true; // the time of the pause is not to be caught up with
    m_wake.notify_all();
}

void StreamReader::step()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_steps;
    m_wake.notify_all();
}

void StreamReader::seek(qint64 time)
{
    seek(time, false);
}

void StreamReader::seekBefore(qint64 time)
{
    seek(time, true);
}

void StreamReader::seek(qint64 time, bool before)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_seekTime = time;
    m_seeksBefore = before;
    m_interrupted = true;
    for (const std::unique_ptr<StreamBatch>& batch : m_queue)
        batch->dropContents();
    m_wake.notify_all();
}

void StreamReader::setDecoder(StreamDecoder* decoder)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_nextDecoder.reset(decoder);
    m_interrupted = true;
    m_wake.notify_all();
}

void StreamReader::setPlayback(const StreamSource::Playback& playback)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_playback = playback;
    m_playbackChanged = true;
    m_wake.notify_all();
}

void StreamReader::cancel()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_cancelled = true;
    m_queue.clear();
    if (m_input)
        m_input->cancel();
    m_wake.notify_all();
}

void StreamReader::finish()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_input)
        m_input->finish();
}

void StreamReader::confirm(quint64 offset)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_input)
        m_input->confirm(offset);
}

std::unique_ptr<StreamBatch> StreamReader::takeBatch()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_queue.empty()) {
        m_announced = false;
        return nullptr;
    }
    std::unique_ptr<StreamBatch> batch = std::move(m_queue.front());
    m_queue.pop_front();
    m_wake.notify_all();
    return batch;
}

void StreamReader::recycle(std::unique_ptr<StreamBatch> batch)
{
    batch->clear();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_spare.push_back(std::move(batch));
}

void StreamReader::run()
{
    if (!m_input->open()) {
        flushState(StreamSource::Failed, m_input->getErrorString());
    } else if (!m_opener || openStream()) {
        if (!m_index)
            m_index = m_input->createIndex();
        if (m_index)
            m_index->prepare([this](int percent) {
                m_preparedPercent = percent;
                return !m_cancelled;
            });
        m_preparedPercent = -1;
        announceFacts(true);
        flushState(StreamSource::Running);
        while (readUntilEnd() && waitAtEnd()) {
        }
    }
    // Here, because a socket belongs to the thread that opened it.
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_input.reset();
}

/** Finds out what comes; whether there is a decoder then. */
bool StreamReader::openStream()
{
    // Nobody knows when the first byte will come.
    if (m_input->isLive()) {
        announceFacts(false);
        flushState(StreamSource::Running);
    }
    const auto goOn = [this] {
        flush(); // what was passed over
        return !m_cancelled;
    };
    switch (m_opener->run(m_input.get(), goOn, this)) {
    case StreamOpener::Opened:
        break;
    case StreamOpener::Ended:
        flushState(StreamSource::Finished);
        return false;
    case StreamOpener::Failed:
        flushState(StreamSource::Failed, m_opener->getErrorString());
        return false;
    case StreamOpener::Stopped:
        return false;
    }
    OpenedStream opened = m_opener->takeStream();
    m_index = std::move(opened.index);
    m_tailOffset = m_done = m_opener->getOffset();
    static_cast<LaterDecoder*>(m_decoder.get())->setDecoder(std::move(opened.decoder));
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_input = m_opener->takeInput(std::move(m_input));
    }
    if (m_opener->getErrorString().isEmpty())
        return true;
    flushState(StreamSource::Failed, m_opener->getErrorString());
    return false;
}

void StreamReader::announceFacts(bool recognized)
{
    StreamBatch::Facts facts;
    facts.recognized = recognized;
    facts.live = m_input->isLive();
    facts.size = m_input->getSize();
    facts.seekable = m_input->isSeekable() && m_index;
    facts.startTime = facts.seekable ? m_index->getStartTime() : Message::NoTime;
    facts.endTime = facts.seekable ? m_index->getEndTime() : Message::NoTime;
    if (facts.startTime == Message::NoTime || facts.endTime == Message::NoTime)
        facts.seekable = false;
    m_batch->facts = facts;
}

/** Whether the end was reached, and not a failure. */
bool StreamReader::readUntilEnd()
{
    const bool live = m_input->isLive();
    // A recording with times is one even when it comes through a pipe, if somebody says that it is one.
    m_paced = !live || (!m_opener && m_decoder->hasTimes());
    QByteArray bytes;
    while (!m_cancelled) {
        if (m_interrupted && !followCommands())
            return false;
        const qint64 rest = m_batch->isEmpty() ? IdleTimeoutMs : (GreatestAge - batchAge()) / 1000 + 1;
        const ByteInput::Status status =
            m_input->read(&bytes, static_cast<int>(qBound(qint64(0), rest, qint64(IdleTimeoutMs))));
        // A recording that goes on is paced up to its end.
        m_isCaughtUp = !live && m_input->isLive();
        passNoticesOn();
        switch (status) {
        case ByteInput::Data:
            feed(bytes, live || m_isCaughtUp ? m_clock->utc() : Message::NoTime);
            if (m_input->isDatagram())
                m_decoder->finish(this);
            if (batchAge() >= GreatestAge)
                flush();
            break;
        case ByteInput::Nothing:
            flush();
            break;
        case ByteInput::End:
            m_decoder->finish(this);
            if (!m_interrupted)
                flushState(StreamSource::Finished);
            return true;
        case ByteInput::Failed:
            m_decoder->finish(this);
            flushState(StreamSource::Failed, m_input->getErrorString());
            return false;
        }
    }
    return false;
}

/** Waits where a recording ends for the wish to see another place of it; whether there is one. */
bool StreamReader::waitAtEnd()
{
    if (!m_input->isSeekable())
        return false;
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_wake.wait(lock, [this] { return isLeaving(); });
    }
    return !m_cancelled && followCommands();
}

bool StreamReader::followCommands()
{
    std::optional<qint64> time;
    bool isBefore = false;
    std::shared_ptr<StreamDecoder> decoder;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        time.swap(m_seekTime);
        isBefore = m_seeksBefore;
        m_seeksBefore = false;
        decoder.swap(m_nextDecoder);
        m_interrupted = false;
        if (time && m_paused)
            m_steps = 1; // so that there is something to see of the other place
    }
    if (decoder)
        changeDecoder(std::move(decoder));
    if (time && isBefore && m_index)
        *time = findTimeBefore(*time);
    return !time || goTo(*time);
}

/** The time of the last message before @p time, or the start. */
qint64 StreamReader::findTimeBefore(qint64 time)
{
    const qint64 start = m_index->getStartTime();
    QByteArray bytes;
    const qint64 whole = std::numeric_limits<qint64>::max();
    for (qint64 back = FirstLookBack; !m_cancelled;
         back = back > whole / LookBackGrowth ? whole : back * LookBackGrowth) {
        const qint64 from = time - start > back ? time - back : start;
        const quint64 offset = m_index->findOffset(from);
        if (!m_input->seek(static_cast<qint64>(offset)))
            break; // which goTo() tells
        m_decoder->restart(offset);
        TimeFinder finder(time);
        while (!finder.isOver && !m_cancelled && m_input->read(&bytes, IdleTimeoutMs) == ByteInput::Data)
            m_decoder->feed(bytes.constData(), static_cast<int>(bytes.size()), Message::NoTime, &finder);
        if (!finder.isOver)
            m_decoder->finish(&finder);
        if (finder.found != Message::NoTime)
            return finder.found;
        if (from == start)
            break;
    }
    return start;
}

bool StreamReader::goTo(qint64 time)
{
    const quint64 offset = m_index ? m_index->findOffset(time) : 0;
    m_batch->dropContents();
    if (!m_input->seek(static_cast<qint64>(offset))) {
        flushState(StreamSource::Failed, m_input->getErrorString());
        return false;
    }
    m_decoder->restart(offset);
    m_tail.clear();
    m_tailOffset = offset;
    m_done = offset;
    // What stands before the first message belongs to the beginning.
    m_leaveOutTill = m_index && time <= m_index->getStartTime() ? qint64(Message::NoTime) : time;
    m_playbackChanged = true;
    m_batch->soughtTime = time;
    flushState(StreamSource::Running);
    return true;
}

void StreamReader::changeDecoder(std::shared_ptr<StreamDecoder> decoder)
{
    flush(); // what was decoded before
    m_batch->decoder = decoder;
    flush();
    // The old one may be in use on the GUI thread until the batch arrives there, which holds it as well.
    m_decoder = std::move(decoder);
    m_decoder->restart(m_done);
    const QByteArray rest = m_tail.mid(static_cast<int>(m_done - m_tailOffset));
    m_decoder->feed(rest.constData(), static_cast<int>(rest.size()), m_arrivalTime, this);
    if (m_input->isDatagram())
        m_decoder->finish(this);
}

void StreamReader::feed(const QByteArray& bytes, qint64 arrivalTime)
{
    quint64 unused = m_done - m_tailOffset;
    const quint64 total = static_cast<quint64>(m_tail.size() + bytes.size());
    if (total - unused > LongestTail) // a decoder that does not tell where its messages lie
        unused = qMin(total - LongestTail, static_cast<quint64>(m_tail.size()));
    m_tail.remove(0, static_cast<int>(unused));
    m_tailOffset += unused;
    m_done = qMax(m_done, m_tailOffset);
    m_tail.append(bytes);
    m_arrivalTime = arrivalTime;
    m_decoder->feed(bytes.constData(), static_cast<int>(bytes.size()), arrivalTime, this);
    if (!m_input->needsConfirmation())
        return;
    noteFirstEntry();
    m_batch->handedOut = qMin(m_tailOffset + static_cast<quint64>(m_tail.size()), m_decoder->getKeptOffset());
}

void StreamReader::passNoticesOn()
{
    for (StreamProblem notice : m_input->takeNotices()) {
        notice.offset = m_tailOffset + static_cast<quint64>(m_tail.size());
        processProblem(notice);
    }
}

void StreamReader::noteDone(quint64 end)
{
    m_done = qBound(m_done, end, m_tailOffset + static_cast<quint64>(m_tail.size()));
}

const char* StreamReader::bytesOf(const StreamProblem& problem) const
{
    const quint64 end = m_tailOffset + static_cast<quint64>(m_tail.size());
    if (problem.offset < m_tailOffset || problem.offset + problem.length > end)
        return nullptr;
    return m_tail.constData() + (problem.offset - m_tailOffset);
}

void StreamReader::processReceived(const ReceivedMessage& message)
{
    if (isLeaving())
        return;
    if (m_leaveOutTill != Message::NoTime) {
        if (message.time == Message::NoTime || message.time < m_leaveOutTill)
            return;
        m_leaveOutTill = Message::NoTime;
    }
    const bool stepped = m_paced && waitUntilDue(message.time);
    if (isLeaving())
        return;
    noteDone(message.offset + static_cast<quint64>(message.size));
    noteFirstEntry();
    m_batch->append(message);
    if (stepped || m_batch->isFull())
        flush();
}

void StreamReader::processProblem(const StreamProblem& problem)
{
    if (isLeaving() || m_leaveOutTill != Message::NoTime)
        return;
    noteFirstEntry();
    m_batch->append(problem, bytesOf(problem));
    if (problem.length > 0)
        noteDone(problem.offset + problem.length);
    if (m_batch->isFull())
        flush();
}

void StreamReader::takePlayback()
{
    m_playbackChanged = false;
    m_pacer.setPlayback(m_playback);
}

/** Waits, and tells whether the message was let through alone. */
bool StreamReader::waitUntilDue(qint64 messageTime)
{
    if (!m_playbackChanged && !m_pacer.isPacing() && !m_paused)
        return false;
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_playbackChanged)
        takePlayback();
    qint64 now = m_clock->now();
    qint64 due = m_isCaughtUp ? now : m_pacer.dueTime(messageTime, now);
    while (!isLeaving() && (m_paused || due - now >= LeastWait)) {
        if (m_paused && m_steps > 0) {
            --m_steps;
            return true;
        }
        if (!m_batch->isEmpty() && (m_paused || batchAge() >= GreatestAge)) {
            lock.unlock();
            flush();
            lock.lock();
        } else if (m_paused) {
            m_wake.wait(lock);
        } else {
            const qint64 untilFlush = m_batch->isEmpty() ? due - now : GreatestAge - batchAge();
            m_clock->wait(m_wake, lock, qMin(due - now, untilFlush));
        }
        now = m_clock->now();
        if (m_playbackChanged) {
            takePlayback();
            due = m_isCaughtUp ? now : m_pacer.dueTime(messageTime, now);
        }
    }
    return false;
}

// 0 for a batch with nothing in it.
qint64 StreamReader::batchAge()
{
    return m_batch->isEmpty() ? 0 : m_clock->now() - m_batchStart;
}

void StreamReader::noteFirstEntry()
{
    if (m_batch->isEmpty())
        m_batchStart = m_clock->now();
}

void StreamReader::flush()
{
    if (m_batch->isEmpty())
        return;
    std::unique_lock<std::mutex> lock(m_mutex);
    m_wake.wait(lock, [this] { return m_cancelled || m_seekTime || m_queue.size() < GreatestQueue; });
    if (m_cancelled) {
        m_batch->clear();
        return;
    }
    if (m_seekTime)
        m_batch->dropContents();
    m_batch->dropped = m_input->getDroppedCount();
    if (m_isCaughtUp && m_index)
        m_batch->endTime = m_index->getEndTime();
    m_queue.push_back(std::move(m_batch));
    if (m_spare.empty()) {
        m_batch.reset(new StreamBatch);
    } else {
        m_batch = std::move(m_spare.back());
        m_spare.pop_back();
    }
    const bool announce = !m_announced;
    m_announced = true;
    lock.unlock();
    if (announce)
        Q_EMIT batchesReady();
}

void StreamReader::flushState(StreamSource::State state, const QString& error)
{
    m_batch->state = state;
    m_batch->error = error;
    flush();
}

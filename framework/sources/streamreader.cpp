#include "streamreader.h"

#include "message.h"
#include "playbackclock.h"

namespace
{

const std::size_t GreatestQueue = 8;

// A view shows nothing finer than a frame of the screen.
const qint64 GreatestAge = 20 * 1000;

// A thread is not woken more exactly than this.
const qint64 LeastWait = 1000;

const int IdleTimeoutMs = 1000;

} // namespace

StreamReader::StreamReader(ByteInput* input, StreamDecoder* decoder)
    : m_input(input)
    , m_decoder(decoder)
    , m_clock(new PlaybackClock)
    , m_inputName(input->getName())
    , m_batch(new StreamBatch)
    , m_batchStart(0)
    , m_paced(false)
    , m_cancelled(false)
    , m_playbackChanged(false)
    , m_announced(false)
{
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
    if (m_input->open()) {
        flushState(StreamSource::Running);
        readUntilEnd();
    } else {
        flushState(StreamSource::Failed, m_input->getErrorString());
    }
    // Here, because a socket belongs to the thread that opened it.
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_input.reset();
}

void StreamReader::readUntilEnd()
{
    const bool live = m_input->isLive();
    // A recording with times is one even when it comes through a pipe.
    m_paced = !live || m_decoder->hasTimes();
    QByteArray bytes;
    while (!m_cancelled) {
        const qint64 rest = m_batch->isEmpty() ? IdleTimeoutMs : (GreatestAge - batchAge()) / 1000 + 1;
        switch (m_input->read(&bytes, static_cast<int>(qBound(qint64(0), rest, qint64(IdleTimeoutMs))))) {
        case ByteInput::Data:
            m_decoder->feed(bytes.constData(), static_cast<int>(bytes.size()), live ? m_clock->utc() : Message::NoTime,
                            this);
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
            flushState(StreamSource::Finished);
            return;
        case ByteInput::Failed:
            m_decoder->finish(this);
            flushState(StreamSource::Failed, m_input->getErrorString());
            return;
        }
    }
}

void StreamReader::processReceived(const ReceivedMessage& message)
{
    if (m_paced)
        waitUntilDue(message.time);
    if (m_cancelled)
        return;
    noteFirstEntry();
    m_batch->append(message);
    if (m_batch->isFull())
        flush();
}

void StreamReader::processProblem(const StreamProblem& problem)
{
    if (m_cancelled)
        return;
    noteFirstEntry();
    m_batch->problems.push_back(StreamBatch::Problem{problem, m_batch->records.size()});
    if (m_batch->isFull())
        flush();
}

void StreamReader::takePlayback()
{
    m_playbackChanged = false;
    m_pacer.setPlayback(m_playback);
}

void StreamReader::waitUntilDue(qint64 messageTime)
{
    if (!m_playbackChanged && !m_pacer.isPacing())
        return;
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_playbackChanged)
        takePlayback();
    qint64 now = m_clock->now();
    qint64 due = m_pacer.dueTime(messageTime, now);
    while (!m_cancelled && due - now >= LeastWait) {
        if (batchAge() >= GreatestAge) {
            lock.unlock();
            flush();
            lock.lock();
        } else {
            const qint64 untilFlush = m_batch->isEmpty() ? due - now : GreatestAge - batchAge();
            m_clock->wait(m_wake, lock, qMin(due - now, untilFlush));
        }
        now = m_clock->now();
        if (m_playbackChanged) {
            takePlayback();
            due = m_pacer.dueTime(messageTime, now);
        }
    }
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
    m_wake.wait(lock, [this] { return m_cancelled || m_queue.size() < GreatestQueue; });
    if (m_cancelled) {
        m_batch->clear();
        return;
    }
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

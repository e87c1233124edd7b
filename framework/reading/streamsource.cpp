#include "streamsource.h"

#include "message.h"
#include "messageinfo.h"
#include "messageneedmanager.h"
#include "messagereference.h"
#include "playbackclock.h"
#include "problemreporter.h"
#include "streamreader.h"

#include <QElapsedTimer>
#include <QMetaMethod>
#include <QPointer>
#include <QTimer>

#include <memory>

namespace
{

// How long the GUI thread works before it looks after its other events: with what views do of it, less than a frame of
// the screen.
const qint64 GreatestWorkMs = 6;

const int ProblemIntervalMs = 1000;

} // namespace

/** The batch that is being worked off, and how far. */
struct StreamSource::Work
{
    explicit Work(const QString& inputName)
        : record(0)
        , problem(0)
        , countsChanged(false)
        , annotationProblems(0)
        , newMessageSignal(StreamSource::staticMetaObject.method(
              StreamSource::staticMetaObject.indexOfSignal("newMessage(const Message*)")))
        , problems(inputName)
    {
    }

    void setBatch(std::unique_ptr<StreamBatch> next)
    {
        batch = std::move(next);
        record = 0;
        problem = 0;
    }

    /** Leaves out what is still to be told, but not its bytes: whoever is just told something may have asked for this.
     */
    void dropRest()
    {
        if (!batch)
            return;
        record = batch->records.size();
        problem = batch->problems.size();
        batch->state.reset();
        batch->soughtTime.reset();
        batch->handedOut.reset();
    }

    bool hasRecord() const { return batch && record < batch->records.size(); }
    bool hasProblem() const
    {
        return batch && problem < batch->problems.size() && batch->problems[problem].recordsBefore <= record;
    }

    std::unique_ptr<StreamBatch> batch;
    std::size_t record;
    std::size_t problem;
    bool countsChanged;
    quint32 annotationProblems;
    std::shared_ptr<StreamDecoder> decoder;
    StreamIdentities identities; // used where nobody gives others
    const QMetaMethod newMessageSignal;
    ProblemReporter problems;
};

StreamSource::Playback::Playback()
    : factor(1)
    , messagesPerSecond(0)
{
}

StreamSource::StreamSource(ByteInput* input, StreamDecoder* decoder, QObject* parent)
    : StreamSource(new StreamReader(input, decoder), parent)
{
}

StreamSource::StreamSource(ByteInput* input, StreamOpener* opener, QObject* parent)
    : StreamSource(new StreamReader(input, opener), parent)
{
}

StreamSource::StreamSource(StreamReader* reader, QObject* parent)
    : MessageSource(parent)
    , m_reader(reader)
    , m_work(new Work(m_reader->getInputName()))
    , m_workTimer(new QTimer(this))
    , m_problemTimer(new QTimer(this))
    , m_state(Idle)
    , m_stopped(false)
    , m_paused(false)
    , m_seekable(false)
    , m_live(false)
    , m_size(-1)
    , m_dropped(-1)
    , m_position(0)
    , m_handedOut(0)
    , m_startTime(Message::NoTime)
    , m_endTime(Message::NoTime)
    , m_currentTime(Message::NoTime)
    , m_identities(nullptr)
{
    m_work->decoder = m_reader->getDecoder();
    setIdentities(&m_work->identities);
    m_reader->setPlayback(Playback());
    connect(m_reader, SIGNAL(batchesReady()), this, SLOT(processBatches()), Qt::QueuedConnection);
    m_workTimer->setSingleShot(true);
    connect(m_workTimer, SIGNAL(timeout()), this, SLOT(processBatches()));
    m_problemTimer->setSingleShot(true);
    connect(m_problemTimer, SIGNAL(timeout()), this, SLOT(reportProblems()));
}

StreamSource::~StreamSource()
{
    delete m_reader;
    delete m_work;
}

void StreamSource::setIdentities(StreamIdentities* identities)
{
    m_identities = identities;
    m_identities->setDecoder(m_work->decoder.get());
}

void StreamSource::setPlayback(const Playback& playback)
{
    m_reader->setPlayback(playback);
}

void StreamSource::setClock(PlaybackClock* clock)
{
    m_reader->setClock(clock);
}

void StreamSource::setIndex(RecordingIndex* index)
{
    m_reader->setIndex(index);
}

void StreamSource::setPaused(bool paused)
{
    m_paused = paused;
    m_reader->setPaused(paused);
}

void StreamSource::step()
{
    if (m_paused)
        m_reader->step();
}

void StreamSource::seek(qint64 time)
{
    if (!m_seekable || m_stopped)
        return;
    m_reader->seek(time);
    m_work->dropRest();
}

void StreamSource::stepBack()
{
    if (!m_seekable || m_stopped || m_currentTime == Message::NoTime)
        return;
    m_reader->seekBefore(m_currentTime);
    m_work->dropRest();
}

void StreamSource::setDecoder(StreamDecoder* decoder)
{
    m_reader->setDecoder(decoder);
}

void StreamSource::start()
{
    if (m_state != Idle)
        return;
    setState(Opening);
    // Whoever listens may have stopped it.
    if (m_state == Opening)
        m_reader->start();
}

void StreamSource::stop()
{
    if (m_state == Finished || m_state == Failed)
        return;
    m_stopped = true;
    m_reader->cancel();
    m_work->dropRest();
    const QPointer<StreamSource> self(this);
    reportProblems();
    if (self)
        setState(Finished);
}

void StreamSource::finish()
{
    m_reader->finish();
}

void StreamSource::confirm(quint64 offset)
{
    m_reader->confirm(offset);
}

int StreamSource::getPreparedPercent() const
{
    return m_reader->getPreparedPercent();
}

const StreamDecoder* StreamSource::getDecoder() const
{
    return m_work->decoder.get();
}

QString StreamSource::getSenderName(quint32 sender) const
{
    return m_work->decoder->getSenderName(sender);
}

void StreamSource::setState(State state)
{
    if (state == m_state)
        return;
    m_state = state;
    Q_EMIT stateChanged(state);
}

void StreamSource::emitReceived()
{
    if (!m_work->countsChanged)
        return;
    m_work->countsChanged = false;
    Q_EMIT received();
}

// Receivers of a message may do anything: run an event loop, so that this slot is entered again, or stop or delete the
// source. So everything that is to be done is taken out of m_work before an emission and looked up anew behind it; the
// operations that emit say whether the source is still there.
void StreamSource::processBatches()
{
    QElapsedTimer timer;
    timer.start();
    // A timer and no queued call, which would come before the other events that wait. Started here already for an event
    // loop that a receiver runs.
    m_workTimer->start(0);
    int entries = 0;
    for (;;) {
        if (!m_work->batch)
            m_work->setBatch(m_reader->takeBatch());
        if (!m_work->batch) {
            m_workTimer->stop();
            break;
        }
        const bool alive = m_work->hasProblem()  ? processProblem()
                           : m_work->hasRecord() ? processRecord()
                                                 : finishBatch();
        if (!alive)
            return;
        if (++entries % 16 == 0 && timer.elapsed() >= GreatestWorkMs)
            break;
    }
    emitReceived();
}

bool StreamSource::processRecord()
{
    ReceivedMessage message = m_work->batch->messageAt(m_work->record++);
    if (message.info && !message.info->getFormatInfo() && !publishTypes(message.offset))
        return false;
    m_position = static_cast<qint64>(message.offset) + message.size;
    if (message.time != Message::NoTime)
        m_currentTime = message.time;
    message.row = m_identities->rowOf(message);
    m_counters.countMessage(message, message.row);
    m_work->countsChanged = true;
    for (StreamSink* observer : m_observers)
        observer->processReceived(message);
    if (m_stopped || !message.info || !isSignalConnected(m_work->newMessageSignal) ||
        !MessageNeedManager::getInstance()->isNeeded(message.info))
        return true;
    const QPointer<StreamSource> self(this);
    const QString& sender = m_identities->getSenderName(m_identities->getRows().at(message.row).sender);
    const MessageReference reference = MessageReference::adopt(message.createMessage(sender));
    deliver(reference.get());
    return !self.isNull();
}

/** Makes types known that came for the first time; false when a receiver of what is wrong deleted the source. */
bool StreamSource::publishTypes(quint64 offset)
{
    QStringList texts;
    m_work->decoder->publishTypes(&texts);
    for (const QString& text : std::as_const(texts)) {
        StreamProblem problem;
        problem.kind = StreamProblem::FaultyAnnotation;
        problem.offset = offset;
        problem.id = ++m_work->annotationProblems; // each is about something else
        problem.text = text;
        if (!tell(problem))
            return false;
    }
    return true;
}

bool StreamSource::processProblem()
{
    return tell(m_work->batch->problemAt(m_work->problem++));
}

/** Passes a problem on; false when a receiver deleted the source. */
bool StreamSource::tell(const StreamProblem& problem)
{
    m_counters.countProblem(problem);
    m_work->countsChanged = true;
    for (StreamSink* observer : m_observers)
        observer->processProblem(problem);
    const QString line = m_work->problems.report(problem, problem.hasFrame ? getSenderName(problem.sender) : QString());
    if (line.isEmpty()) {
        if (!m_problemTimer->isActive())
            m_problemTimer->start(ProblemIntervalMs);
        return true;
    }
    const QPointer<StreamSource> self(this);
    Q_EMIT this->problem(line);
    return !self.isNull();
}

void StreamSource::reportProblems()
{
    m_problemTimer->stop();
    const QPointer<StreamSource> self(this);
    const QStringList lines = m_work->problems.takeLines();
    for (const QString& line : lines)
        if (self)
            Q_EMIT problem(line);
}

bool StreamSource::finishBatch()
{
    const std::optional<State> state = m_work->batch->state;
    const QString error = m_work->batch->error;
    const std::optional<qint64> soughtTime = m_work->batch->soughtTime;
    const std::shared_ptr<StreamDecoder> decoder = m_work->batch->decoder;
    bool isRecognized = false;
    if (const std::optional<StreamBatch::Facts>& facts = m_work->batch->facts) {
        isRecognized = facts->recognized;
        m_seekable = facts->seekable;
        m_live = facts->live;
        m_size = facts->size;
        m_startTime = facts->startTime;
        m_endTime = facts->endTime;
    }
    if (m_work->batch->endTime && m_seekable)
        m_endTime = *m_work->batch->endTime;
    if (m_work->batch->handedOut) {
        m_handedOut = *m_work->batch->handedOut;
        m_work->countsChanged = true;
    }
    const qint64 dropped = m_work->batch->dropped - qMax(qint64(0), m_dropped);
    m_dropped = qMax(m_dropped, m_work->batch->dropped);
    m_reader->recycle(std::move(m_work->batch));
    const QPointer<StreamSource> self(this);
    if (dropped > 0)
        Q_EMIT datagramsDropped(dropped);
    if (self && isRecognized)
        Q_EMIT recognized();
    if (self && decoder) {
        m_work->decoder = decoder;
        m_identities->setDecoder(decoder.get());
        Q_EMIT decoderChanged();
    }
    if (self && soughtTime) {
        m_counters = ReceptionCounters();
        m_currentTime = *soughtTime;
        m_work->countsChanged = true;
        Q_EMIT sought(*soughtTime);
    }
    if (!self || !state)
        return !self.isNull();
    emitReceived();
    if (self && *state != Running)
        reportProblems();
    // A receiver may have stopped it meanwhile.
    if (self && !m_stopped) {
        m_error = error;
        setState(*state);
    }
    return !self.isNull();
}

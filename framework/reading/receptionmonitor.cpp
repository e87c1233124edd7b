#include "receptionmonitor.h"

#include "corvelevent.h"
#include "eventlog.h"
#include "message.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "streamsource.h"

namespace
{

// Recorders that write from several threads put messages down a little out of order, which is no jump.
const qint64 LeastBackwardJump = 1000 * 1000;
const qint64 LeastForwardJump = Q_INT64_C(3600) * 1000 * 1000;

CorvelEvent::Type typeOf(StreamProblem::Kind kind)
{
    switch (kind) {
    case StreamProblem::ChecksumFailure:
        return CorvelEvent::CrcError;
    case StreamProblem::LengthMismatch:
    case StreamProblem::UnsupportedFrame:
        return CorvelEvent::UnsupportedMessage;
    case StreamProblem::SkippedBytes:
        return CorvelEvent::Resynchronisation;
    case StreamProblem::TruncatedFrame:
        return CorvelEvent::TruncatedMessage;
    case StreamProblem::InputFailure:
    case StreamProblem::ServerNotice:
        return CorvelEvent::SourceEvent;
    case StreamProblem::UnusableDefinition:
    case StreamProblem::FaultyAnnotation:
        return CorvelEvent::DefinitionProblem;
    case StreamProblem::DisorderedTimes:
        return CorvelEvent::ClockJump;
    }
    return CorvelEvent::OtherEvent;
}

} // namespace

ReceptionMonitor::Clock::~Clock() {}

ReceptionMonitor::ReceptionMonitor(MessageStatisticsCoordinator* coordinator, EventLog* log, QObject* parent)
    : QObject(parent)
    , m_coordinator(coordinator)
    , m_log(log)
    , m_decoder(nullptr)
    , m_stream(-1)
    , m_modulus(0)
    , m_time(Message::NoTime)
    , m_clock(nullptr)
{
    m_elapsed.start();
}

ReceptionMonitor::~ReceptionMonitor()
{
    if (m_source)
        m_source->removeObserver(this);
    delete m_clock;
}

void ReceptionMonitor::setClock(Clock* clock)
{
    delete m_clock;
    m_clock = clock;
}

void ReceptionMonitor::follow(StreamSource* source, const QString& name)
{
    if (m_source) {
        m_source->removeObserver(this);
        disconnect(m_source.data(), nullptr, this, nullptr);
    }
    m_source = source;
    m_name = name;
    begin(source->getDecoder());
    source->addObserver(this);
    connect(source, SIGNAL(stateChanged(int)), this, SLOT(processState(int)));
}

void ReceptionMonitor::begin(const StreamDecoder* decoder)
{
    m_decoder = decoder;
    m_modulus = decoder->getSequenceModulus();
    if (m_stream < 0)
        m_stream = m_coordinator->addStream();
}

void ReceptionMonitor::startAnew(const QString& reason)
{
    finish();
    m_coordinator->clearStream(m_stream);
    m_time = Message::NoTime;
    report(CorvelEvent::SourceEvent, reason, QDateTime::currentDateTime().toUTC());
}

void ReceptionMonitor::changeTypes(const StreamDecoder* decoder, const QHash<quint32, const MessageInfo*>& infos)
{
    m_decoder = decoder;
    m_modulus = decoder->getSequenceModulus();
    m_coordinator->changeTypes(m_stream, infos);
}

void ReceptionMonitor::processReceived(const ReceivedMessage& message)
{
    if (!m_coordinator->countMessage(m_stream, message.id, message.sender, message.time, message.sequence, m_modulus))
        countFirst(message);
    if (message.time != Message::NoTime) {
        const qint64 step = m_time == Message::NoTime ? 0 : message.time - m_time;
        m_time = message.time;
        if (step <= -LeastBackwardJump || step >= LeastForwardJump)
            reportLeap(step);
    }
    if (!message.info)
        reportUnknown(message);
}

/** Counts a message of a type and sender that has no statistics of its own, at least not yet. */
void ReceptionMonitor::countFirst(const ReceivedMessage& message)
{
    const QString& sender = senderName(message.sender);
    m_coordinator
        ->findOrCreate(m_stream, message.info, message.id, message.sender, sender,
                       message.info ? QString() : unknownName(message.id))
        ->addReception(message.time);
    m_coordinator->countNumber(m_stream, message.sender, sender, message.sequence, m_modulus);
    if (message.time != Message::NoTime)
        m_coordinator->setCurrentTime(m_stream, message.time);
}

void ReceptionMonitor::processProblem(const StreamProblem& problem)
{
    // The number of a frame that was cut off is not missed by anything.
    if (problem.hasFrame && problem.kind != StreamProblem::TruncatedFrame)
        m_coordinator->countFailure(m_stream, problem.sender);
    const QString text = problem.describe(problem.hasFrame ? senderName(problem.sender) : QString());
    // How many bytes were skipped differs every time; it is one kind of event all the same.
    const QString kind = problem.kind == StreamProblem::SkippedBytes ? tr("bytes skipped") : QString();
    report(typeOf(problem.kind), text, streamTime(), kind);
}

// Apart, as are the others that seldom happen, so that what happens for every message stays small.
void ReceptionMonitor::reportUnknown(const ReceivedMessage& message)
{
    report(CorvelEvent::UnknownMessage,
           tr("unknown message %1, sender %2").arg(m_decoder->describeUnknown(message.id), senderName(message.sender)),
           streamTime());
}

/** Reports a leap of the time of messages. */
void ReceptionMonitor::reportLeap(qint64 step)
{
    const QString seconds = QString::number(double(qAbs(step)) / 1e6, 'f', 1);
    if (step < 0)
        report(CorvelEvent::ClockJump, tr("the time of messages goes back by %1 s").arg(seconds), streamTime(),
               tr("the time of messages goes back"));
    else
        report(CorvelEvent::ClockJump, tr("the time of messages leaps by %1 s").arg(seconds), streamTime(),
               tr("the time of messages leaps"));
}

void ReceptionMonitor::refresh()
{
    if (m_log)
        m_log->flush(now());
    if (!m_decoder || m_decoder->hasTimes() || m_time == Message::NoTime)
        return;
    // Live streams may carry the times of another clock, such as that of a simulation, which says nothing about now.
    const qint64 time = QDateTime::currentMSecsSinceEpoch() * 1000;
    if (qAbs(time - m_time) < LeastForwardJump)
        m_coordinator->setCurrentTime(m_stream, time);
}

void ReceptionMonitor::finish()
{
    if (m_log)
        m_log->flushAll();
}

void ReceptionMonitor::processState(int state)
{
    QString text;
    switch (state) {
    case StreamSource::Running:
        text = tr("%1: receiving").arg(m_name);
        break;
    case StreamSource::Finished:
        text = tr("%1: ended").arg(m_name);
        break;
    case StreamSource::Failed:
        text = m_source->getErrorString();
        if (text.startsWith(m_name + QLatin1String(": "))) // which says it once
            text.remove(0, m_name.size() + 2);
        text = tr("%1: failed: %2").arg(m_name, text);
        break;
    default:
        return;
    }
    if (state != StreamSource::Running)
        finish();
    report(CorvelEvent::SourceEvent, text, QDateTime::currentDateTime().toUTC());
}

void ReceptionMonitor::report(int type, const QString& text, const QDateTime& time, const QString& kind)
{
    const CorvelEvent event(static_cast<CorvelEvent::Type>(type), text);
    m_coordinator->countEvent(event.getType(), 1, m_stream);
    if (!m_log)
        return;
    if (m_prefix.isEmpty() || type == CorvelEvent::SourceEvent) // those name their source anyway
        m_log->log(event, time, now(), kind);
    else
        m_log->log(CorvelEvent(event.getType(), m_prefix + text), time, now(),
                   m_prefix + (kind.isEmpty() ? text : kind));
}

QDateTime ReceptionMonitor::streamTime() const
{
    return m_time == Message::NoTime ? QDateTime() : QDateTime::fromMSecsSinceEpoch(m_time / 1000).toUTC();
}

/** What the decoder calls an unknown type; empty when it knows no more than the number. */
QString ReceptionMonitor::unknownName(quint32 id) const
{
    const QString text = m_decoder->describeUnknown(id);
    return text == m_decoder->StreamDecoder::describeUnknown(id) ? QString() : text;
}

const QString& ReceptionMonitor::senderName(quint32 sender)
{
    QHash<quint32, QString>::iterator found = m_senderNames.find(sender);
    if (found == m_senderNames.end())
        found = m_senderNames.insert(sender, m_decoder->getSenderName(sender));
    return found.value();
}

qint64 ReceptionMonitor::now() const
{
    return m_clock ? m_clock->now() : m_elapsed.elapsed();
}

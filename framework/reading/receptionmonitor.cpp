#include "receptionmonitor.h"

#include "eventlog.h"
#include "message.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "streamsource.h"

namespace
{

// Recorders that write from several threads put messages down a little out of order, which is no jump.
const qint64 LeastBackwardJump = 1000 * 1000;
const qint64 LeastForwardJump = Q_INT64_C(3600) * 1000 * 1000;

const quint64 EndlessNumbers = Q_UINT64_C(1) << 63;

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
    case StreamProblem::UnrecognizedStream:
    case StreamProblem::SenderGone:
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

ReceptionMonitor::Listener::~Listener() {}

ReceptionMonitor::ReceptionMonitor(MessageStatisticsCoordinator* coordinator, EventLog* log, QObject* parent)
    : QObject(parent)
    , m_coordinator(coordinator)
    , m_log(log)
    , m_decoder(nullptr)
    , m_identities(nullptr)
    , m_stream(-1)
    , m_modulus(0)
    , m_time(Message::NoTime)
    , m_clock(nullptr)
    , m_listener(nullptr)
    , m_isReceiving(false)
    , m_timesAreArrivals(false)
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
    leaveSource();
    m_source = source;
    m_name = name;
    begin(source->getDecoder());
    m_identities = &source->getIdentities();
    source->addObserver(this);
    connect(source, SIGNAL(stateChanged(int)), this, SLOT(processState(int)));
}

void ReceptionMonitor::leaveSource()
{
    if (m_source) {
        m_source->removeObserver(this);
        disconnect(m_source.data(), nullptr, this, nullptr);
    }
    if (m_messageSource)
        disconnect(m_messageSource.data(), nullptr, this, nullptr);
    m_source.clear();
    m_messageSource.clear();
}

void ReceptionMonitor::follow(MessageSource* source, const QString& name)
{
    if (StreamSource* const stream = qobject_cast<StreamSource*>(source)) {
        follow(stream, name);
        return;
    }
    leaveSource();
    m_messageSource = source;
    m_name = name;
    m_decoder = nullptr;
    m_isReceiving = false;
    if (m_stream < 0)
        m_stream = m_coordinator->addStream();
    connect(source, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(source, SIGNAL(unneededMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(source, SIGNAL(destroyed()), this, SLOT(processEnd()));
}

void ReceptionMonitor::begin(const StreamDecoder* decoder)
{
    m_decoder = decoder;
    m_undecodable.clear();
    m_ownIdentities.setDecoder(decoder);
    m_identities = &m_ownIdentities;
    m_modulus = decoder->getSequenceModulus();
    if (m_stream < 0)
        m_stream = m_coordinator->addStream();
}

void ReceptionMonitor::startAnew(const QString& reason, const QString& kind)
{
    finish();
    m_coordinator->clearStream(m_stream);
    m_time = Message::NoTime;
    reportState(reason, kind, nullptr);
}

void ReceptionMonitor::changeTypes(const StreamDecoder* decoder)
{
    m_decoder = decoder;
    m_modulus = decoder->getSequenceModulus();
    for (int row = 0; row < m_identities->getRows().size(); ++row)
        if (m_coordinator->find(m_stream, row))
            m_coordinator->findOrCreate(m_stream, row, originOf(row));
}

inline void ReceptionMonitor::noteTime(qint64 time)
{
    const qint64 step = m_time == Message::NoTime ? 0 : time - m_time;
    m_time = time;
    if (step <= -LeastBackwardJump || step >= LeastForwardJump)
        reportLeap(step);
}

void ReceptionMonitor::countMessage(const ReceivedMessage& message, int row)
{
    if (m_modulus == 0) // it may not have been known yet what comes
        m_modulus = m_decoder->getSequenceModulus();
    const quint64 modulus = message.sequenceBits ? quint64(1) << message.sequenceBits : m_modulus;
    if (!m_coordinator->countMessage(m_stream, row, message.info, message.time, message.sequence, modulus))
        countFirst(message, row, modulus);
    if (message.time != Message::NoTime)
        noteTime(message.time);
    if (!message.info)
        reportUnknown(message, row);
}

void ReceptionMonitor::processMessage(const Message* message)
{
    if (!m_isReceiving)
        reportState(tr("receiving"), QString(), nullptr);
    m_isReceiving = true;
    const MessageInfo* const info = message->getInfo();
    const QString& sender = message->getSender();
    m_timesAreArrivals = message->getTime() == Message::NoTime;
    const qint64 time = m_timesAreArrivals ? QDateTime::currentMSecsSinceEpoch() * 1000 : message->getTime();
    const auto known = m_rows.constFind(qMakePair(info, sender));
    const int row = known != m_rows.constEnd() ? *known : int(m_rows.size());
    if (!m_coordinator->countMessage(m_stream, row, info, time, message->getSequence(), EndlessNumbers)) {
        m_rows.insert(qMakePair(info, sender), row);
        if (!m_senders.contains(sender))
            m_senders.insert(sender, int(m_senders.size()));
        const int number = m_senders.value(sender);
        const MessageStatisticsCoordinator::Origin origin(info, number, sender);
        m_coordinator->findOrCreate(m_stream, row, origin)->addReception(time);
        m_coordinator->countNumber(m_stream, number, sender, message->getSequence(), EndlessNumbers);
        m_coordinator->setCurrentTime(m_stream, time);
    }
    if (m_timesAreArrivals)
        m_time = time; // silence is no leap
    else
        noteTime(time);
}

void ReceptionMonitor::processEnd()
{
    finish();
    if (m_isReceiving)
        reportState(tr("ended"), QString(), nullptr);
    m_isReceiving = false;
}

/** Counts a message whose row has no statistics of its own, at least not yet, or had another type. */
void ReceptionMonitor::countFirst(const ReceivedMessage& message, int row, quint64 modulus)
{
    const int sender = m_identities->getRows().at(row).sender;
    m_coordinator->findOrCreate(m_stream, row, originOf(row))->addReception(message.time);
    m_coordinator->countNumber(m_stream, sender, m_identities->getSenderName(sender), message.sequence, modulus);
    if (message.time != Message::NoTime)
        m_coordinator->setCurrentTime(m_stream, message.time);
}

MessageStatisticsCoordinator::Origin ReceptionMonitor::originOf(int number) const
{
    const StreamIdentities::Row& row = m_identities->getRows().at(number);
    const QString& sender = m_identities->getSenderName(row.sender);
    if (row.info)
        return MessageStatisticsCoordinator::Origin(row.info, row.sender, sender);
    // Where the decoder has a name for it and not only the number, that tells the sender too.
    if (row.typeName != m_decoder->StreamDecoder::describeUnknown(row.id))
        return MessageStatisticsCoordinator::Origin(nullptr, row.sender, QString(), row.typeName);
    return MessageStatisticsCoordinator::Origin(nullptr, row.sender, sender, tr("Unknown %1").arg(row.id));
}

void ReceptionMonitor::processProblem(const StreamProblem& problem)
{
    // The number of a frame that was cut off is not missed by anything.
    if (problem.hasFrame && problem.kind != StreamProblem::TruncatedFrame && problem.kind != StreamProblem::SenderGone)
        m_coordinator->countFailure(m_stream, m_identities->findSender(problem.sender));
    const QString sender = problem.hasFrame ? m_decoder->getSenderName(problem.sender) : QString();
    const QString text = problem.describe(sender);
    if (problem.kind == StreamProblem::UnusableDefinition) {
        const QString kind = tr("message %1").arg(text);
        m_undecodable.insert(problem.id, text);
        m_coordinator->countEvent(CorvelEvent::DefinitionProblem, 1, m_stream);
        if (m_listener)
            m_listener->processEvent({CorvelEvent::DefinitionProblem, &problem, QString(), text, kind, m_time});
        if (m_log)
            m_log->expect(CorvelEvent(CorvelEvent::DefinitionProblem, text), streamTime(), now(), kind);
        return;
    }
    // How many bytes were skipped differs every time; it is one kind of event all the same.
    const QString kind = problem.kind == StreamProblem::SkippedBytes ? tr("bytes skipped") : QString();
    report({typeOf(problem.kind), &problem, sender, text, kind, m_time});
}

// Apart, as are the others that seldom happen, so that what happens for every message stays small.
void ReceptionMonitor::reportUnknown(const ReceivedMessage& message, int number)
{
    const auto cause = m_undecodable.constFind(message.id);
    const StreamIdentities::Row& row = m_identities->getRows().at(number);
    const QString& sender = m_identities->getSenderName(row.sender);
    if (cause == m_undecodable.constEnd()) {
        report({CorvelEvent::UnknownMessage, nullptr, sender,
                tr("unknown message %1, sender %2").arg(row.typeName, sender), QString(), m_time});
        return;
    }
    // One cause is one entry, which says how many messages it concerns.
    m_coordinator->countEvent(CorvelEvent::UnknownMessage, 1, m_stream);
    const ReceptionEvent event = {CorvelEvent::DefinitionProblem, nullptr, QString(), *cause,
                                  tr("message %1").arg(*cause),   m_time};
    tell(event);
}

/** Reports a leap of the time of messages. */
void ReceptionMonitor::reportLeap(qint64 step)
{
    const QString seconds = QString::number(double(qAbs(step)) / 1e6, 'f', 1);
    if (step < 0)
        report({CorvelEvent::ClockJump, nullptr, QString(), tr("the time of messages goes back by %1 s").arg(seconds),
                tr("the time of messages goes back"), m_time});
    else
        report({CorvelEvent::ClockJump, nullptr, QString(), tr("the time of messages leaps by %1 s").arg(seconds),
                tr("the time of messages leaps"), m_time});
}

void ReceptionMonitor::refresh()
{
    if (m_log)
        m_log->flush(now());
    const bool areArrivals = m_decoder ? !m_decoder->hasTimes() : m_timesAreArrivals;
    if (!areArrivals || m_time == Message::NoTime)
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
    StreamProblem failure;
    switch (state) {
    case StreamSource::Running:
        text = tr("opened"); // a socket that listens may never get anything
        break;
    case StreamSource::Finished:
        text = tr("ended");
        break;
    case StreamSource::Failed:
        text = m_source->getErrorString();
        if (text.startsWith(m_name + QLatin1String(": "))) // which says it once
            text.remove(0, m_name.size() + 2);
        text = tr("failed: %1").arg(text);
        failure.kind = StreamProblem::InputFailure;
        break;
    default:
        return;
    }
    if (state != StreamSource::Running)
        finish();
    reportState(text, QString(), state == StreamSource::Failed ? &failure : nullptr);
}

void ReceptionMonitor::report(const ReceptionEvent& event)
{
    m_coordinator->countEvent(event.type, 1, m_stream);
    tell(event);
}

/** Reports what becomes of the stream as a whole, which is of the day and not of its messages. */
void ReceptionMonitor::reportState(const QString& text, const QString& kind, const StreamProblem* problem)
{
    m_coordinator->countEvent(CorvelEvent::SourceEvent, 1, m_stream);
    if (m_listener)
        m_listener->processEvent({CorvelEvent::SourceEvent, problem, QString(), text, kind, Message::NoTime});
    if (m_log)
        m_log->log(CorvelEvent(CorvelEvent::SourceEvent, tr("%1: %2").arg(m_name, text)),
                   QDateTime::currentDateTime().toUTC(), now());
}

void ReceptionMonitor::tell(const ReceptionEvent& event)
{
    if (m_listener)
        m_listener->processEvent(event);
    if (m_log)
        m_log->log(CorvelEvent(event.type, event.text), streamTime(), now(), event.kind);
}

QDateTime ReceptionMonitor::streamTime() const
{
    return m_time == Message::NoTime ? QDateTime() : QDateTime::fromMSecsSinceEpoch(m_time / 1000).toUTC();
}

qint64 ReceptionMonitor::now() const
{
    return m_clock ? m_clock->now() : m_elapsed.elapsed();
}

#include "eventwatch.h"

#include "message.h"

#include <QDateTime>

namespace
{

const int Any = -1;

/** How bad events of a kind are, and what may help. */
struct Kind
{
    CorvelEvent::Type type;
    int problem; // a StreamProblem::Kind, or Any
    Severity severity;
    bool wantsDefinitions;
    int most; // rows: damage looks like any number of types and senders
};

// What needs an eye warns; what does not work is an error. The first that fits holds.
const Kind kinds[] = {
    {CorvelEvent::CrcError, Any, Severity::Warning, true, 50},
    {CorvelEvent::UnknownMessage, Any, Severity::Warning, true, 100},
    {CorvelEvent::TruncatedMessage, Any, Severity::Warning, false, 50},
    {CorvelEvent::Resynchronisation, Any, Severity::Warning, false, 50},
    {CorvelEvent::UnsupportedMessage, StreamProblem::LengthMismatch, Severity::Warning, true, 50},
    {CorvelEvent::UnsupportedMessage, Any, Severity::Warning, false, 50},
    {CorvelEvent::ClockJump, Any, Severity::Warning, false, 50},
    {CorvelEvent::DefinitionProblem, StreamProblem::FaultyAnnotation, Severity::Warning, false, 200},
    {CorvelEvent::DefinitionProblem, Any, Severity::Error, true, 200},
    {CorvelEvent::SourceEvent, StreamProblem::InputFailure, Severity::Error, false, 200},
    {CorvelEvent::SourceEvent, StreamProblem::UnrecognizedStream, Severity::Error, true, 200},
    {CorvelEvent::SourceEvent, StreamProblem::SenderGone, Severity::Warning, false, 200},
    {CorvelEvent::SourceEvent, Any, Severity::Information, false, 200},
};

const Severity serverLevels[] = {Severity::Information, Severity::Warning, Severity::Error};

const Kind& kindOf(const ReceptionEvent& event)
{
    for (const Kind& kind : kinds)
        if (kind.type == event.type && (kind.problem == Any || (event.problem && event.problem->kind == kind.problem)))
            return kind;
    static const Kind other = {CorvelEvent::OtherEvent, Any, Severity::Information, false, 200};
    return other;
}

} // namespace

void EventWatch::processEvent(const ReceptionEvent& received)
{
    const Kind& kind = kindOf(received);
    Event event;
    event.source = m_source;
    event.type = QLatin1String(CorvelEvent::getEnglishTypeName(received.type));
    event.severity = kind.severity;
    event.sender = received.sender;
    event.text = received.text;
    event.kind = received.kind;
    event.time = received.time;
    event.seen = m_isLive ? QDateTime::currentMSecsSinceEpoch() * 1000 : qint64(Message::NoTime);
    event.most = kind.most;
    event.wantsDefinitions = kind.wantsDefinitions;
    if (received.problem && received.problem->kind == StreamProblem::ServerNotice)
        event.severity = serverLevels[qMin<quint32>(received.problem->id, 2)];
    if (received.problem && received.problem->kind == StreamProblem::UnusableDefinition)
        event.count = 0;
    const int row = m_causes->add(event);
    if (m_listen)
        m_listen(event, row);
}

void EventWatch::add(Severity severity, const QString& text, quint64 count)
{
    Event event;
    event.source = m_source;
    event.type = QLatin1String(CorvelEvent::getEnglishTypeName(CorvelEvent::SourceEvent));
    event.severity = severity;
    event.text = text;
    event.time = Message::NoTime;
    event.seen = QDateTime::currentMSecsSinceEpoch() * 1000;
    event.most = 200;
    event.count = count;
    m_causes->add(event);
}

#include "corvelevent.h"

CorvelEvent::CorvelEvent()
    : m_type(OtherEvent)
{
}

CorvelEvent::CorvelEvent(Type type, const QString& message)
    : m_type(type)
    , m_message(message)
{
}

CorvelEvent::CorvelEvent(const CorvelEvent& other)
    : m_type(other.m_type)
    , m_message(other.m_message)
{
}

CorvelEvent& CorvelEvent::operator=(const CorvelEvent& other)
{
    m_type = other.m_type;
    m_message = other.m_message;
    return *this;
}

CorvelEvent::~CorvelEvent() {}

QString CorvelEvent::getTypeName(Type type)
{
    switch (type) {
    case SourceEvent:
        return QLatin1String("Source");
    case CrcError:
        return QLatin1String("CRC error");
    case UnknownMessage:
        return QLatin1String("Unknown message");
    case TruncatedMessage:
        return QLatin1String("Truncated message");
    case Resynchronisation:
        return QLatin1String("Resynchronisation");
    case UnsupportedMessage:
        return QLatin1String("Unsupported message");
    case ClockJump:
        return QLatin1String("Clock jump");
    case DefinitionProblem:
        return QLatin1String("Definition problem");
    case OtherEvent:
        break;
    }
    return QLatin1String("Other");
}

#include "corvelevent.h"

#include <QCoreApplication>

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
    return QCoreApplication::translate("CorvelEvent", getEnglishTypeName(type));
}

const char* CorvelEvent::getEnglishTypeName(Type type)
{
    switch (type) {
    case SourceEvent:
        return QT_TRANSLATE_NOOP("CorvelEvent", "Source");
    case CrcError:
        return QT_TRANSLATE_NOOP("CorvelEvent", "CRC error");
    case UnknownMessage:
        return QT_TRANSLATE_NOOP("CorvelEvent", "Unknown message");
    case TruncatedMessage:
        return QT_TRANSLATE_NOOP("CorvelEvent", "Truncated message");
    case Resynchronisation:
        return QT_TRANSLATE_NOOP("CorvelEvent", "Resynchronisation");
    case UnsupportedMessage:
        return QT_TRANSLATE_NOOP("CorvelEvent", "Unsupported message");
    case ClockJump:
        return QT_TRANSLATE_NOOP("CorvelEvent", "Clock jump");
    case DefinitionProblem:
        return QT_TRANSLATE_NOOP("CorvelEvent", "Definition problem");
    case OtherEvent:
        break;
    }
    return QT_TRANSLATE_NOOP("CorvelEvent", "Other");
}

#include "message.h"

#include <limits>

const qint64 Message::NoTime = std::numeric_limits<qint64>::min();
const qint64 Message::NoSequence;

Message::Message(const MessageInfo* info, const QByteArray& data)
    : m_info(info)
    , m_data(data)
    , m_time(NoTime)
    , m_sequence(NoSequence)
{
}

Message::~Message() {}

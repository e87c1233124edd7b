#include "messageoutput.h"

#include <QDateTime>

MessageOutput::MessageOutput(const StreamDecoder* decoder)
    : m_decoder(decoder)
    , m_dropped(0)
{
}

MessageOutput::~MessageOutput() {}

void MessageOutput::setDecoder(const StreamDecoder* decoder)
{
    m_decoder = decoder;
}

QStringList MessageOutput::takeNotices()
{
    QStringList notices;
    notices.swap(m_notices);
    return notices;
}

qint64 MessageOutput::now()
{
    return QDateTime::currentMSecsSinceEpoch() * 1000;
}

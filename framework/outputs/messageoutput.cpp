#include "messageoutput.h"

#include <QDateTime>

MessageOutput::MessageOutput(const StreamDecoder* decoder)
    : m_decoder(decoder)
{
}

MessageOutput::~MessageOutput() {}

void MessageOutput::setDecoder(const StreamDecoder* decoder)
{
    m_decoder = decoder;
}

qint64 MessageOutput::now()
{
    return QDateTime::currentMSecsSinceEpoch() * 1000;
}

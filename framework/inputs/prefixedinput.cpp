#include "prefixedinput.h"

PrefixedInput::PrefixedInput(ByteInput* input, const QByteArray& head)
    : ByteInput(input->getName())
    , m_input(input)
    , m_head(head)
{
}

PrefixedInput::~PrefixedInput() {}

bool PrefixedInput::open()
{
    return true;
}

ByteInput::Status PrefixedInput::read(QByteArray* bytes, int timeoutMs)
{
    if (!m_head.isEmpty()) {
        *bytes = m_head;
        m_head.clear();
        return Data;
    }
    const Status status = m_input->read(bytes, timeoutMs);
    if (status == Failed)
        takeError(*m_input);
    return status;
}

void PrefixedInput::cancel()
{
    m_input->cancel();
}

bool PrefixedInput::isLive() const
{
    return m_input->isLive();
}

bool PrefixedInput::isDatagram() const
{
    return m_input->isDatagram();
}

qint64 PrefixedInput::getSize() const
{
    return m_input->getSize();
}

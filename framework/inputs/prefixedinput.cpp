#include "prefixedinput.h"

#include "streamdecoder.h"

PrefixedInput::PrefixedInput(ByteInput* input, const QList<QByteArray>& pieces, bool isAtEnd)
    : ByteInput(input->getName())
    , m_input(input)
    , m_pieces(pieces)
    , m_isAtEnd(isAtEnd)
{
}

PrefixedInput::~PrefixedInput() {}

bool PrefixedInput::open()
{
    return true;
}

ByteInput::Status PrefixedInput::read(QByteArray* bytes, int timeoutMs)
{
    if (!m_pieces.isEmpty()) {
        *bytes = m_pieces.takeFirst();
        return Data;
    }
    bytes->clear();
    if (m_isAtEnd)
        return End;
    const Status status = m_input->read(bytes, timeoutMs);
    if (status == Failed)
        takeError(*m_input);
    return status;
}

void PrefixedInput::cancel()
{
    m_input->cancel();
}

void PrefixedInput::finish()
{
    m_input->finish();
}

bool PrefixedInput::needsConfirmation() const
{
    return m_input->needsConfirmation();
}

void PrefixedInput::confirm(quint64 offset)
{
    m_input->confirm(offset);
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

qint64 PrefixedInput::getDroppedCount() const
{
    return m_input->getDroppedCount();
}

QVector<StreamProblem> PrefixedInput::takeNotices()
{
    return m_input->takeNotices();
}

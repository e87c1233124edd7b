#include "tlogoutput.h"

#include "message.h"

#include <QCoreApplication>
#include <QIODevice>
#include <QtEndian>

namespace
{

const uchar MagicV1 = 0xFE;
const uchar MagicV2 = 0xFD;
const int FullBuffer = 64 * 1024;

MessageOutput* create(const OutputKind::Surroundings& surroundings, const StreamDecoder* decoder)
{
    return new TlogOutput(surroundings.device, decoder);
}

} // namespace

const OutputKind TlogOutputKind = {"tlog",
                                   QT_TRANSLATE_NOOP("OutputKind", "MAVLink recordings"),
                                   "tlog",
                                   100,
                                   "",
                                   "FILE.tlog",
                                   "flight.tlog",
                                   0,
                                   OutputKind::AsItCameProperty,
                                   "tlog",
                                   "",
                                   nullptr,
                                   create,
                                   nullptr};

TlogOutput::TlogOutput(QIODevice* device, const StreamDecoder* decoder)
    : MessageOutput(decoder)
    , m_device(device)
    , m_lastTime(Message::NoTime)
{
}

void TlogOutput::writeTime(qint64 time)
{
    char bytes[8];
    qToBigEndian(quint64(time), bytes);
    m_buffer.append(bytes, sizeof bytes);
}

void TlogOutput::write(const char* bytes, int size)
{
    m_buffer.append(bytes, size);
    if (m_buffer.size() >= FullBuffer)
        flush();
}

void TlogOutput::flush()
{
    m_device->write(m_buffer);
    m_buffer.resize(0);
}

void TlogOutput::processReceived(const ReceivedMessage& message)
{
    m_lastTime = message.time == Message::NoTime ? now() : message.time;
    writeTime(m_lastTime);
    write(message.data, message.size);
}

void TlogOutput::processProblem(const StreamProblem& problem)
{
    if (!problem.data)
        return;
    // A bad frame has its time before it like a good one, also one of which there is only a bit; stray bytes stand for
    // themselves.
    const uchar first = problem.length > 0 ? uchar(problem.data[0]) : 0;
    const bool isCut = problem.kind == StreamProblem::TruncatedFrame && (first == MagicV1 || first == MagicV2);
    if (problem.hasFrame || isCut)
        writeTime(m_lastTime == Message::NoTime ? now() : m_lastTime);
    write(problem.data, int(problem.length));
}

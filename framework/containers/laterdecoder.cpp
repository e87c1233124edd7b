#include "laterdecoder.h"

#include "definitions.h"

void LaterDecoder::setDecoder(std::unique_ptr<StreamDecoder> decoder)
{
    m_owned = std::move(decoder);
    m_decoder = m_owned.get();
    setOrigin(m_owned->getContainer(), m_owned->getFormats());
}

void LaterDecoder::feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink)
{
    m_owned->feed(bytes, size, arrivalTime, sink);
}

void LaterDecoder::finish(StreamSink* sink)
{
    if (m_owned)
        m_owned->finish(sink);
}

void LaterDecoder::restart(quint64 offset)
{
    m_owned->restart(offset);
}

bool LaterDecoder::hasTimes() const
{
    const StreamDecoder* const decoder = m_decoder;
    return decoder && decoder->hasTimes();
}

QString LaterDecoder::getSenderName(quint32 sender) const
{
    const StreamDecoder* const decoder = m_decoder;
    return decoder ? decoder->getSenderName(sender) : QString();
}

void LaterDecoder::publishTypes(QStringList* problems) const
{
    if (const StreamDecoder* const decoder = m_decoder)
        decoder->publishTypes(problems);
}

QString LaterDecoder::describeUnknown(quint32 id) const
{
    const StreamDecoder* const decoder = m_decoder;
    return decoder ? decoder->describeUnknown(id) : StreamDecoder::describeUnknown(id);
}

TypeSchema LaterDecoder::getUnknownSchema(quint32 id) const
{
    const StreamDecoder* const decoder = m_decoder;
    return decoder ? decoder->getUnknownSchema(id) : TypeSchema();
}

quint64 LaterDecoder::getKeptOffset() const
{
    return m_owned ? m_owned->getKeptOffset() : StreamDecoder::getKeptOffset();
}

quint64 LaterDecoder::getSequenceModulus() const
{
    const StreamDecoder* const decoder = m_decoder;
    return decoder ? decoder->getSequenceModulus() : 0;
}

// Before it is known, what most sources bring.
const char* LaterDecoder::getRecordingName() const
{
    const StreamDecoder* const decoder = m_decoder;
    return decoder ? decoder->getRecordingName() : "tlog";
}

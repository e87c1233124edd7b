#include "passinput.h"

#include "message.h"
#include "streamdecoder.h"

#include <QReadWriteLock>

#include <algorithm>

static const int ReadTimeoutMs = 100;

PassInput::PassInput(std::unique_ptr<ByteInput> input, std::unique_ptr<StreamOpener> opener)
    : m_opener(std::move(opener))
    , m_cancelled(false)
    , m_input(std::move(input))
{
}

bool PassInput::open(OpenedStream* stream)
{
    if (!m_input->open()) {
        m_error = m_input->getErrorString();
        return false;
    }
    if (m_opener->run(
            m_input.get(), [this] { return !m_cancelled; }, nullptr) != StreamOpener::Opened) {
        m_error = m_opener->getErrorString();
        return false;
    }
    *stream = m_opener->takeStream();
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_input = m_opener->takeInput(std::move(m_input));
    }
    m_error = m_opener->getErrorString();
    return m_error.isEmpty() && !m_cancelled;
}

bool PassInput::decode(const OpenedStream& stream, quint64 begin, quint64 end, StreamSink* sink, QReadWriteLock* lock,
                       const std::function<bool(qint64 bytes)>& goOn)
{
    if (begin != m_position) {
        if (!m_input->seek(qint64(begin))) {
            m_error = m_input->getErrorString();
            return false;
        }
        stream.decoder->restart(begin);
        m_position = begin;
    }
    QByteArray bytes;
    while (m_position < end && !m_cancelled) {
        const ByteInput::Status status = m_input->read(&bytes, ReadTimeoutMs);
        if (status == ByteInput::Failed)
            m_error = m_input->getErrorString();
        // A recording that goes on is read as far as it is there.
        if (status != ByteInput::Data)
            break;
        const QReadLocker descriptions(lock);
        const quint64 size = std::min(quint64(bytes.size()), end - m_position);
        stream.decoder->feed(bytes.constData(), int(size), Message::NoTime, sink);
        m_position += size;
        if (!goOn(qint64(size))) {
            m_position = Everything; // the decoder is somewhere in between
            return false;
        }
    }
    m_position = Everything;
    if (m_cancelled)
        return false;
    const QReadLocker descriptions(lock);
    stream.decoder->finish(sink);
    return m_error.isEmpty();
}

bool PassInput::isAsItIs() const
{
    const QVector<InputFile> files = m_input->getFiles();
    return !files.isEmpty() && std::all_of(files.cbegin(), files.cend(), [this](const InputFile& file) {
        return file.path.startsWith(m_input->getName());
    });
}

void PassInput::cancel()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_cancelled = true;
    m_input->cancel();
}

#include "recordingfile.h"

// What a disk may lag behind; more than that would only fill the memory.
static const int GreatestPending = 128 * 1024 * 1024;

RecordingFile::RecordingFile(const QString& path, QObject* parent)
    : QIODevice(parent)
    , m_file(path)
{
}

RecordingFile::~RecordingFile()
{
    close();
}

bool RecordingFile::open(OpenMode mode)
{
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::Unbuffered)) {
        m_problem = m_file.errorString();
        return false;
    }
    m_thread = std::thread([this]() { run(); });
    return QIODevice::open(mode | QIODevice::Unbuffered);
}

void RecordingFile::close()
{
    if (!m_thread.joinable())
        return;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_closing = true;
        m_wake.notify_all();
    }
    m_thread.join();
    m_file.close();
    if (m_problem.isEmpty() && m_file.error() != QFileDevice::NoError)
        m_problem = m_file.errorString(); // such as on disks of other computers, which tell at the end
    QIODevice::close();
}

QString RecordingFile::getProblem() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_problem;
}

qint64 RecordingFile::getWrittenSize() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_written;
}

qint64 RecordingFile::writeData(const char* bytes, qint64 size)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_problem.isEmpty() && m_pending.size() + size > GreatestPending)
        m_problem = tr("the disk is too slow for what arrives");
    if (!m_problem.isEmpty())
        return -1;
    m_pending.append(bytes, int(size));
    m_wake.notify_all();
    return size;
}

void RecordingFile::run()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    for (;;) {
        m_wake.wait(lock, [this]() { return m_closing || !m_pending.isEmpty(); });
        if (m_pending.isEmpty())
            return;
        QByteArray bytes;
        bytes.swap(m_pending);
        lock.unlock();
        // A disk that becomes full takes a part without a complaint. Only of the next byte it says why it does not.
        qint64 done = 0;
        qint64 count = 0;
        do {
            count = m_file.write(bytes.constData() + done, bytes.size() - done);
            done += qMax(qint64(0), count);
        } while (count > 0 && done < bytes.size());
        lock.lock();
        m_written += done;
        if (done < bytes.size()) {
            m_problem = m_file.errorString();
            m_pending.clear();
            return;
        }
    }
}

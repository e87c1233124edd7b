#include "mqttqueue.h"

#include "envelope.h"

#include <QCoreApplication>

#include <chrono>

namespace
{

const int PieceSize = 64 * 1024;
const qint64 MostBytes = 64 * 1024 * 1024;
const int MostNotices = 1000;

} // namespace

void MqttQueue::add(const Envelope& envelope)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_size + qint64(envelope.payload.size()) > MostBytes) {
        ++m_dropped;
        return;
    }
    if (m_pieces.empty() || m_pieces.back().bytes.size() >= PieceSize) {
        m_pieces.emplace_back();
        m_pieces.back().bytes.reserve(PieceSize + PieceSize / 4);
    }
    m_pieces.back().confirmable = m_confirmable;
    QByteArray& piece = m_pieces.back().bytes;
    const int before = int(piece.size());
    if (EnvelopeWriter(&piece).write(envelope))
        m_size += piece.size() - before;
    else
        ++m_dropped;
    if (before == 0)
        m_wake.notify_all();
}

void MqttQueue::countConfirmable()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    ++m_confirmable;
}

void MqttQueue::addNotice(int level, const QString& text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_notices.size() >= MostNotices)
        return;
    StreamProblem notice;
    notice.kind = StreamProblem::ServerNotice;
    notice.id = quint32(level);
    notice.text = text;
    m_notices.append(notice);
    m_wake.notify_all();
}

void MqttQueue::setReceiving()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_state == Connecting)
        m_state = Receiving;
    m_wake.notify_all();
}

void MqttQueue::end(const QString& error)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_state != Ended)
        m_error = error;
    m_state = Ended;
    m_wake.notify_all();
}

bool MqttQueue::isFull() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_size > MostBytes / 2;
}

MqttQueue::State MqttQueue::wait(State state, int timeoutMs)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_state == state && m_pieces.empty())
        m_wake.wait_for(lock, std::chrono::milliseconds(timeoutMs));
    return m_state;
}

QByteArray MqttQueue::take(quint64* confirmable)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_pieces.empty())
        return QByteArray();
    const QByteArray piece = std::move(m_pieces.front().bytes);
    *confirmable = m_pieces.front().confirmable;
    m_pieces.pop_front();
    m_size -= piece.size();
    return piece;
}

QVector<StreamProblem> MqttQueue::takeNotices()
{
    QVector<StreamProblem> notices;
    const std::lock_guard<std::mutex> lock(m_mutex);
    notices.swap(m_notices);
    if (m_dropped > m_droppedTold && m_pieces.empty()) {
        StreamProblem notice;
        notice.kind = StreamProblem::ServerNotice;
        notice.id = 1;
        notice.text =
            QCoreApplication::translate("MqttInput", "%1 messages came faster than they were read, and were dropped")
                .arg(m_dropped - m_droppedTold);
        notices.append(notice);
        m_droppedTold = m_dropped;
    }
    return notices;
}

qint64 MqttQueue::getDroppedCount() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_dropped;
}

QString MqttQueue::getError() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_error;
}

void MqttQueue::wake()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_wake.notify_all();
}

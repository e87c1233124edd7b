#include "jetstreamreceipts.h"

void JetStreamReceipts::add(quint64 end, const QByteArray& reply)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_receipts.push_back({end, reply});
}

void JetStreamReceipts::confirm(quint64 offset)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_confirmed = qMax(m_confirmed, offset);
}

std::vector<QByteArray> JetStreamReceipts::take()
{
    std::vector<QByteArray> replies;
    const std::lock_guard<std::mutex> lock(m_mutex);
    while (!m_receipts.empty() && m_receipts.front().end <= m_confirmed) {
        replies.push_back(m_receipts.front().reply);
        m_receipts.pop_front();
    }
    return replies;
}

bool JetStreamReceipts::isEmpty() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_receipts.empty();
}

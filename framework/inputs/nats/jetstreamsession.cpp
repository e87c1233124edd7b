#include "jetstreamsession.h"

static const std::size_t MostKnown = 40000;
static const qint64 MostBytes = 256 * 1024 * 1024; // beyond which nothing is put in order

void JetStreamSession::begin(quint64 again, quint64 newest)
{
    m_held.clear();
    m_heldBytes = 0;
    m_ready.clear();
    m_again = again;
    m_newest = newest;
}

bool JetStreamSession::add(Item item)
{
    const bool isAgain = m_again > 0 && item.number <= m_newest;
    if (m_again > 0 && !isAgain)
        settle();
    const bool isNew = m_known.count(item.number) == 0;
    m_again -= isAgain ? 1 : 0;
    if (isNew && isAgain) {
        m_heldBytes += natsMsg_GetDataLength(item.message.get());
        m_held[item.number] = std::move(item);
    } else if (isNew) {
        m_ready.push_back(std::move(item));
    }
    if (m_again == 0 || m_heldBytes > MostBytes) {
        const quint64 rest = m_again;
        settle();
        m_again = rest;
    }
    return isNew;
}

void JetStreamSession::settle()
{
    for (auto& held : m_held)
        m_ready.push_back(std::move(held.second));
    m_held.clear();
    m_heldBytes = 0;
    m_again = 0;
}

JetStreamSession::Item JetStreamSession::takeNext()
{
    Item item = std::move(m_ready.front());
    m_ready.pop_front();
    m_known.insert(item.number);
    m_handedOut.push_back(item.number);
    if (m_handedOut.size() > MostKnown) {
        m_known.erase(m_handedOut.front());
        m_handedOut.pop_front();
    }
    return item;
}

bool JetStreamSession::isEmpty() const
{
    return m_again == 0 && m_held.empty() && m_ready.empty();
}

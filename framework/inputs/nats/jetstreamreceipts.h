#ifndef JETSTREAMRECEIPTS_H
#define JETSTREAMRECEIPTS_H

#include <QByteArray>

#include <deque>
#include <mutex>
#include <vector>

/** Which messages were handed out and are still to be acknowledged to a server. Any thread. */
class JetStreamReceipts
{
public:
    /** Notes a message whose bytes end at byte @p end of all that was handed out, and where its acknowledgement goes.
     */
    void add(quint64 end, const QByteArray& reply);
    /** What lies before byte @p offset was passed on. */
    void confirm(quint64 offset);
    /** Where acknowledgements go of messages that were passed on since the last call. */
    std::vector<QByteArray> take();
    /** Whether everything was acknowledged. */
    bool isEmpty() const;

private:
    struct Receipt
    {
        quint64 end;
        QByteArray reply;
    };

    mutable std::mutex m_mutex; // for what follows
    std::deque<Receipt> m_receipts;
    quint64 m_confirmed = 0;
};

#endif

#ifndef OUTLET_H
#define OUTLET_H

#include "fileseries.h"
#include "messagepublisher.h"
#include "outputqueue.h"

#include <QObject>
#include <QStringList>
#include <QThread>

#include <atomic>
#include <functional>
#include <memory>

class OutletWorker;

/** An output with a thread and a queue of its own, so that none waits for another. */
class Outlet
{
public:
    struct Settings
    {
        FileSeries::Settings files;
        OutputQueue::Settings queue;
    };
    struct Counts
    {
        quint64 messages = 0; ///< that have gone out
        quint64 bytes = 0;    ///< of these
        quint64 dropped = 0;  ///< for whatever reason
        OutputQueue::Counts queue;
    };

    Outlet(const OutputAddress& address, const Settings& settings);
    /** Ends the thread; what waits is given up. */
    ~Outlet();

    const OutputAddress& getAddress() const { return m_address; }

    /** Begins; false with @p error set when that can never work. */
    bool start(QString* error);

    /** Whether it can take what the decoder finds. */
    bool takes(const StreamDecoder* decoder) const;
    void processMessage(MessagePublisher* publisher, MessagePublisher::Published* message);
    void processDamage(const StreamProblem& problem);
    /** After a few messages: lets the other side have them. */
    void seal();

    /** Messages that were sealed in all, with those of earlier runs, and how many of these, from the oldest on, are
     * where they stay when the program is killed: on disk, or on the other side where that says so. */
    quint64 getSealed() const { return m_queue.getTotal(); }
    quint64 getSafe() const { return m_address.kind->isFile() ? quint64(m_flushed) : m_queue.getSafe(); }
    /** Has a file written what it was given. */
    void flush();

    /** Whether recordings are to wait for it. */
    bool isHolding() const;

    /** No more comes: it ends when everything has gone out. */
    void end();
    /** Ends now. What waits is kept for the next run where that was asked for, and else dropped. */
    void abandon();
    bool isEnded() const { return m_isEnded; }

    Counts getCounts() const;
    /** What is to be told since the last call. */
    QStringList takeNotices();
    /** Why it does not work any more; empty while it does. */
    QString getError() const;

private:
    Q_DISABLE_COPY(Outlet)
    friend class OutletWorker;

    void wake();

    const OutputAddress m_address;
    const Settings m_settings;
    OutputQueue m_queue;
    QByteArray m_record;
    QThread m_thread;
    OutletWorker* m_worker; // of the thread, which deletes it
    std::atomic<bool> m_isWoken;
    std::atomic<bool> m_isEnding;
    std::atomic<bool> m_isAbandoned;
    std::atomic<bool> m_isEnded;
    std::atomic<quint64> m_messages;
    std::atomic<quint64> m_bytes;
    std::atomic<quint64> m_flushed; // of a file, messages
    std::atomic<quint64> m_dropped;
    mutable std::mutex m_mutex; // for what follows
    QStringList m_notices;
    QString m_error;
};

#endif

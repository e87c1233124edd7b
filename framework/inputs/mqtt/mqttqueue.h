#ifndef MQTTQUEUE_H
#define MQTTQUEUE_H

#include "streamdecoder.h"

#include <QByteArray>

#include <condition_variable>
#include <deque>
#include <mutex>

struct Envelope;

/** What a client received on its thread, for the reader on another: there is an end to it, and what has no room is
 * counted. */
class MqttQueue
{
public:
    enum State
    {
        Connecting,
        Receiving,
        Ended ///< getError() tells why
    };

    /** For the thread of the client. */
    void add(const Envelope& envelope);
    /** What is added next, or dropped, is to be confirmed to the server. */
    void countConfirmable();
    void addNotice(int level, const QString& text);
    void setReceiving();
    /** The first error holds. */
    void end(const QString& error);

    /** Whether little more should come. */
    bool isFull() const;

    /** For the reader: waits until there is something to take, or the state is another than @p state. */
    State wait(State state, int timeoutMs);
    /** The oldest of what was received, about 64 KiB or a message; empty when there is nothing. @p confirmable is then
     * how many messages that are to be confirmed came up to its end. */
    QByteArray take(quint64* confirmable);
    QVector<StreamProblem> takeNotices();
    qint64 getDroppedCount() const;
    QString getError() const;

    /** Ends a wait(); any thread. */
    void wake();

private:
    mutable std::mutex m_mutex; // for what follows
    std::condition_variable m_wake;
    State m_state = Connecting;
    QString m_error;
    struct Piece
    {
        QByteArray bytes;
        quint64 confirmable; // see take()
    };

    quint64 m_confirmable = 0; // that came
    std::deque<Piece> m_pieces;
    qint64 m_size = 0; // bytes of them
    qint64 m_dropped = 0;
    qint64 m_droppedTold = 0;
    QVector<StreamProblem> m_notices;
};

#endif

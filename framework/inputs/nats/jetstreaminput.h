#ifndef JETSTREAMINPUT_H
#define JETSTREAMINPUT_H

#include "byteinput.h"
#include "jetstreamreceipts.h"
#include "jetstreamsession.h"
#include "natsconnection.h"
#include "natsschemas.h"

#include <atomic>
#include <chrono>
#include <memory>

/**
 * Reads a stream that a NATS server keeps, from its first message on, and hands messages on as envelopes; at its end,
 * when there is no more to read, it goes on with those that come.
 *
 * It only reads, by a consumer of its own that nobody acknowledges anything to and that the server forgets. Each
 * message says which one of the consumer it is: where one is missing, or the server with the consumer is gone, another
 * consumer goes on behind the last message, so that none is lost and none comes twice.
 *
 * Where the address has a session, the consumer has that name and the server keeps it. Messages are acknowledged when
 * they were confirmed; the others come again, in their order and before newer ones, whenever somebody reads. There are
 * no other places to go to then.
 *
 * Places in it are times: microseconds since 1970 of the storing of a message, or 0 for the beginning.
 */
class JetStreamInput : public ByteInput
{
public:
    explicit JetStreamInput(const InputAddress& address);
    ~JetStreamInput() override;

    /** What the path of an address names; the subject is empty for all. */
    static QByteArray streamOf(const InputAddress& address);
    static QByteArray subjectOf(const InputAddress& address);

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override;
    void finish() override;
    bool needsConfirmation() const override { return !m_sessionName.isEmpty(); }
    void confirm(quint64 offset) override;
    bool isLive() const override { return m_isAtEnd; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return -1; }
    QVector<StreamProblem> takeNotices() override { return m_connection.takeNotices(); }
    bool isSeekable() const override { return m_sessionName.isEmpty(); }
    bool seek(qint64 offset) override;
    std::unique_ptr<RecordingIndex> createIndex() override;

private:
    typedef std::chrono::steady_clock Clock;
    struct Times;
    class Index;

    bool askForStream(QString* error);
    bool takeStream(const QJsonObject& answer, QString* error);
    void startConsumer();
    void createConsumer(const QByteArray& operation, QJsonObject config);
    QJsonObject newSession() const;
    void takeSession(const QJsonObject& answer);
    void stopConsumer();
    bool isRefused(const QJsonObject& answer);
    void takeConsumer(const QJsonObject& answer);
    void acknowledge();
    bool isOver();
    void restartLater();
    void keepConsumer();
    void enterSession();
    void work(int timeoutMs, QByteArray* bytes);
    void processAnswer(natsMsg* message, QByteArray* bytes);
    void processControl(natsMsg* message);
    void processMessage(NatsMessage message, QByteArray* bytes);
    void handOut(const JetStreamSession::Item& item, QByteArray* bytes);
    bool isCaughtUp() const;
    void fail(const QString& reason);

    const InputAddress m_address;
    const QByteArray m_stream;
    const QByteArray m_subject;
    const QByteArray m_sessionName; // empty for none
    const bool m_goesOn;            // at the end
    std::atomic<bool> m_cancelled;
    std::atomic<bool> m_isFinished;
    NatsConnection m_connection;
    NatsRequests m_requests;
    NatsSchemas m_schemas;
    std::shared_ptr<Times> m_times; // with the index
    JetStreamSession m_session;
    JetStreamReceipts m_receipts;

    int m_channel;                // of the consumer
    quint64 m_sessionRequest;     // what the server knows of the session, that is not answered yet; or 0
    quint64 m_createRequest;      // as this
    Clock::time_point m_deadline; // until when an answer or a heartbeat has to come, or of the next try
    bool m_isWaiting;             // for the next try
    Clock::time_point m_lastSuccess;
    int m_reconnections; // of the connection when the consumer was made
    QByteArray m_consumer;
    quint64 m_consumerSequence; // of the last message
    quint64 m_pending;          // messages of the stream behind that; not known while there is no consumer

    qint64 m_startTime;  // see above
    quint64 m_next;      // number in the stream of the first message that is wanted; 0 before there was one
    quint64 m_sequence;  // of envelopes
    quint64 m_origin;    // of a message, without its number in the stream
    quint64 m_handedOut; // bytes
    bool m_isAtEnd;
    bool m_isStopped; // at the end
};

#endif

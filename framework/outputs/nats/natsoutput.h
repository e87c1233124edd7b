#ifndef NATSOUTPUT_H
#define NATSOUTPUT_H

#include "cloudevent.h"
#include "messageoutput.h"
#include "natspublisher.h"
#include "outputkind.h"

#include <QElapsedTimer>
#include <QHash>
#include <QSet>
#include <QTimer>

#include <deque>
#include <memory>

class PublishedStream;

extern const OutputKind NatsOutputKind;

/**
 * Stores messages in a stream of JetStream, as events of CloudEvents (docs/brokers.md). What is not confirmed goes out
 * again, with the same id, by which the server knows what it has.
 */
class NatsOutput : public MessageOutput
{
public:
    NatsOutput(const OutputAddress& address, const PublishedStream* stream);
    ~NatsOutput() override;

    void setDecoder(const StreamDecoder* decoder) override;
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}
    void flush() override;
    void close() override;
    bool isReady() const override;
    quint64 getPendingCount() const override { return quint64(m_pending.size()); }

private:
    struct Pending
    {
        std::shared_ptr<const CloudEvent> event;
        QByteArray id;
        QByteArray time;
        QByteArray payload;
        qint64 sentMs; // by m_clock; -1 before
        bool isDone;
    };

    std::shared_ptr<const CloudEvent> eventOf(quint32 channel);
    void publish(std::size_t place);
    void publishSchema(const CloudEvent& event);
    void look();
    void processAnswers();
    void publishLate();
    void tellOnce(const QString& text);
    void popDone();

    const PublishedStream* m_stream;
    CloudEvent::Topics m_topics;
    std::unique_ptr<NatsPublisher> m_publisher;
    QHash<quint32, std::shared_ptr<const CloudEvent>> m_events; // by channel
    std::deque<Pending> m_pending;
    quint64 m_popped = 0;       // numbers are places in m_pending from the first that ever was, and one more
    QSet<QByteArray> m_schemas; // subjects, in this connection
    int m_connections = 0;
    QElapsedTimer m_clock;
    qint64 m_notBefore = 0; // by m_clock, something is published
    QTimer m_timer;
    QString m_told;
};

#endif

#ifndef NATSOUTPUT_H
#define NATSOUTPUT_H

#include "eventoutput.h"
#include "natspublisher.h"
#include "outputkind.h"

#include <QElapsedTimer>
#include <QSet>
#include <QTimer>

#include <memory>

class PublishedStream;

extern const OutputKind NatsOutputKind;

/**
 * Stores messages in a stream of JetStream, as events of CloudEvents (docs/brokers.md). What is not confirmed goes out
 * again, with the same id, by which the server knows what it has.
 */
class NatsOutput : public EventOutput
{
public:
    NatsOutput(const OutputAddress& address, const PublishedStream* stream);
    ~NatsOutput() override;

    void close() override;
    bool isReady() const override;

private:
    void publish(std::size_t place) override;
    void publishSchema(const CloudEvent& event);
    void look();
    void processAnswers();
    void publishLate();
    void tellOnce(const QString& text);

    std::unique_ptr<NatsPublisher> m_publisher;
    QSet<QByteArray> m_schemas; // subjects, in this connection
    int m_connections = 0;
    QElapsedTimer m_clock;
    qint64 m_notBefore = 0; // by m_clock, something is published
    QTimer m_timer;
    QString m_told;
};

#endif

#ifndef FOXGLOVEINPUT_H
#define FOXGLOVEINPUT_H

#include "byteinput.h"

#include "inputkind.h"
#include "mcapwriter.h"
#include "streamdecoder.h"

#include <QBuffer>
#include <QHash>

#include <atomic>
#include <memory>

class QEventLoop;
class QJsonObject;
class QWebSocket;

extern const InputKind FoxgloveInputKind;

/**
 * Receives all channels of a Foxglove WebSocket server and hands them on as an MCAP stream, which ends with an index
 * and an end mark when the connection does.
 *
 * Speaks foxglove.sdk.v1 and foxglove.websocket.v1, which are the same as far as messages go.
 */
class FoxgloveInput : public ByteInput
{
public:
    explicit FoxgloveInput(const InputAddress& address);
    ~FoxgloveInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override { m_cancelled = true; }
    bool isLive() const override { return true; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return -1; }
    QVector<StreamProblem> takeNotices() override;

private:
    /** Runs the socket until something was received, or it is over. */
    void wait(int timeoutMs);
    void processText(const QString& text);
    void processData(const QByteArray& frame);
    void advertise(const QJsonObject& channel);
    void unadvertise(quint32 channel);
    void takeStatus(const QJsonObject& status);
    void refuse(const QString& reason);
    void end();

    InputAddress m_address;
    std::atomic<bool> m_cancelled;
    std::unique_ptr<QWebSocket> m_socket;
    QEventLoop* m_loop; // that waits; null else
    bool m_quitting;    // it will quit soon
    QBuffer m_buffer;   // what was received as MCAP
    McapWriter m_writer;
    QHash<QByteArray, quint16> m_schemas;        // numbers in the stream, by what they are
    QHash<QByteArray, quint16> m_channels;       // numbers in the stream, by what they are
    QHash<quint32, quint32> m_subscriptions;     // by the server's number of the channel
    QHash<quint32, quint16> m_subscribedChannel; // number in the stream, by subscription
    quint32 m_lastSubscription;
    bool m_greeted; // the server has said who it is
    bool m_ended;
    QString m_refusal;    // why the connection was given up
    QString m_lastStatus; // the last error that the server told of
    QVector<StreamProblem> m_notices;
};

#endif

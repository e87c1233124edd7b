#ifndef FOXGLOVEOUTPUT_H
#define FOXGLOVEOUTPUT_H

#include "messageoutput.h"
#include "outputkind.h"

#include <QHash>
#include <QJsonArray>
#include <QObject>
#include <QWebSocketServer>

#include <vector>

class FoxgloveClient;
class PublishedStream;
struct PublishedChannel;

extern const OutputKind FoxgloveOutputKind;

/**
 * A Foxglove WebSocket server, for programs and browsers that show what they subscribe to.
 *
 * Speaks foxglove.sdk.v1 and foxglove.websocket.v1, which are the same as far as messages go. There is no
 * authentication in that, so it is reached from this computer only, unless told otherwise. A client that comes later
 * gets what comes later.
 */
class FoxgloveOutput : public MessageOutput
{
public:
    FoxgloveOutput(const OutputAddress& address, const PublishedStream* stream);
    ~FoxgloveOutput() override;

    void setDecoder(const StreamDecoder* decoder) override;
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}
    void flush() override;
    void close() override;

private:
    quint32 channelOf(quint32 number);
    static QJsonObject describe(quint32 id, const PublishedChannel& channel);
    void greet();
    void remove(FoxgloveClient* client);

    const PublishedStream* m_stream;
    QObject m_context; // of connections
    QWebSocketServer m_server;
    std::vector<FoxgloveClient*> m_clients; // children of m_context
    QJsonArray m_channels;                  // as they are advertised; ids are their places, from 1
    QHash<quint32, quint32> m_ids;          // by number in m_stream
    QHash<QByteArray, quint32> m_idsByContent;
};

#endif

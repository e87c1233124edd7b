#ifndef MCAPOUTPUT_H
#define MCAPOUTPUT_H

#include "mcapwriter.h"
#include "messageoutput.h"
#include "outputkind.h"
#include "streamidentities.h"

#include <QHash>
#include <QVector>

extern const OutputKind McapOutputKind;

/**
 * Writes messages with the schemas of their types. What belongs to no message is not kept.
 *
 * A channel is a type and the name of a sender, so that messages stay apart, and stay together, whatever numbers
 * decoders give them before and after a reconnection.
 */
class McapOutput : public MessageOutput
{
public:
    McapOutput(const OutputKind::Surroundings& surroundings, const StreamDecoder* decoder);

    void setDecoder(const StreamDecoder* decoder) override;
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem&) override {}
    void flush() override { m_writer.flush(); }
    void close() override { m_writer.close(); }

private:
    struct Channel
    {
        quint16 number = 0; // 0 for none yet
        const MessageInfo* info = nullptr;
    };

    quint16 channelOf(const ReceivedMessage& message);
    quint16 addChannel(const QString& topic, const ReceivedMessage& message);

    const Definitions* m_definitions;
    McapWriter m_writer;
    QHash<const MessageInfo*, quint16> m_schemas;
    StreamIdentities m_identities;
    QVector<Channel> m_channels; // by row of m_identities
};

#endif

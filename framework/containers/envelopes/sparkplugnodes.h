#ifndef SPARKPLUGNODES_H
#define SPARKPLUGNODES_H

#include "sparkplugunit.h"

#include <QHash>
#include <QSet>
#include <QString>

#include <memory>

class Definitions;
class EnvelopeNames;
class MessageInfo;
class StreamSink;
struct Envelope;
struct ReceivedMessage;

/**
 * The nodes and devices of Sparkplug B that were born: makes messages of what they send, which have the newest values
 * of all their metrics.
 */
class SparkplugNodes
{
public:
    /** Both borrowed. */
    SparkplugNodes(Definitions* definitions, EnvelopeNames* names);
    ~SparkplugNodes();

    /**
     * Whether the topic of an envelope is one of a node or a device; then what came is processed.
     *
     * @param message  what is known of it, without what is in it
     */
    bool process(const Envelope& envelope, const ReceivedMessage& message, StreamSink* sink);

private:
    /** A node or a device. */
    struct Unit
    {
        SparkplugUnit metrics;
        const MessageInfo* info = nullptr; // null before there was a birth, or where it was of no use
        QString error;                     // why not
    };

    struct Node
    {
        std::unique_ptr<Unit> unit;                       // null before there was a birth
        QHash<QByteArray, std::shared_ptr<Unit>> devices; // that were born
        QHash<quint64, QPair<Unit*, int>> aliases;        // of all of these
        quint64 session = 0;                              // "bdSeq" of the birth
        bool hasSession = false;
        qint64 number = -1;     // of the newest message, without what came round; -1 before there is one
        quint64 lastNumber = 0; // as it came
    };

    /** A topic taken apart, and what came there. */
    struct Arrival
    {
        QByteArray nodeName; // "GROUP/NODE"
        QByteArray device;   // empty for none
        QByteArray kind;     // "NBIRTH"
        QByteArray unpacked; // what the payload points into, where it came compressed
        Sparkplug::Payload payload;

        QString getTypeName() const;
    };

    void processBirth(const Arrival& arrival, Node* node);
    void processData(const Arrival& arrival, Node* node, Unit* unit);
    bool countNumber(const Arrival& arrival, Node* node, qint64* number);
    void hasDied(const Arrival& arrival, Node* node, ReceivedMessage message, StreamSink* sink);
    void addAliases(const Arrival& arrival, Node* node, Unit* unit);
    void handOut(const Unit* unit, ReceivedMessage message, StreamSink* sink);
    void handOutUnknown(const Envelope& envelope, const QString& name, const QString& why, ReceivedMessage message,
                        StreamSink* sink);

    Definitions* const m_definitions;
    EnvelopeNames* const m_names;
    QHash<QByteArray, std::shared_ptr<Node>> m_nodes;
    QSet<quint32> m_told; // numbers of unknown types that were told
    qint64 m_kept = 0;    // bytes of all units
};

#endif

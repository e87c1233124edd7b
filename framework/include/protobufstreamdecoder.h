#ifndef CORVEL_PROTOBUFSTREAMDECODER_H
#define CORVEL_PROTOBUFSTREAMDECODER_H

#include "streamdecoder.h"

#include <QByteArray>

class Definitions;

/**
 * Finds the messages of one type in a stream of serialized messages, each with its length before it.
 *
 * Nothing in such a stream tells where a message begins but the lengths before it. After a length that cannot be right
 * (more than 128 MiB, or a varint of more than 5 bytes) nothing can be found any more: that is reported at once, and
 * the rest is skipped. Whether what is found are messages of the type, the stream does not tell either.
 *
 * Times are those of arrival. There is one sender, without a name.
 */
class CORVELFRAMEWORK_EXPORT ProtobufStreamDecoder : public StreamDecoder
{
public:
    enum Framing
    {
        VarintFraming,  ///< the length is a varint, as the libraries' own delimited writing has it
        UInt32Framing,  ///< the length has 4 bytes, little-endian, as in .osi files
        DatagramFraming ///< no length: what is fed up to finish() is one message
    };

    /**
     * @param definitions  what @p info is from; must outlive the decoder and must not be null
     * @param info         the type of all messages; must not be null
     */
    ProtobufStreamDecoder(Definitions* definitions, const MessageInfo* info, Framing framing);
    virtual ~ProtobufStreamDecoder();

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    void restart(quint64 offset) override;
    bool hasTimes() const override;
    QString getSenderName(quint32 sender) const override;
    void publishTypes(QStringList* problems) const override;

    /**
     * Tells the framing of a recording from its first bytes, by lengths that lead from one serialized message to the
     * next.
     *
     * @param isAll  whether @p head is the whole recording
     * @return false when no framing fits, and then @p framing is left alone
     */
    static bool detectFraming(const QByteArray& head, bool isAll, Framing* framing);

private:
    Q_DISABLE_COPY(ProtobufStreamDecoder)

    int readLength(const char* bytes, int size, quint64* length) const;
    void lose(quint64 size, StreamSink* sink);
    void handOut(const char* bytes, int size, quint64 offset, StreamSink* sink) const;

    Definitions* m_definitions;
    const MessageInfo* m_info;
    Framing m_framing;
    QByteArray m_pending; // the beginning of a message, its length included
    quint64 m_offset;     // of m_pending, or of the next byte fed
    qint64 m_arrivalTime;
    bool m_lost;         // a length was wrong: nothing can be found any more
    quint64 m_lostSince; // what follows has not been reported
};

#endif

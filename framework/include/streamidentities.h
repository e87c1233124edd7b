#ifndef CORVEL_STREAMIDENTITIES_H
#define CORVEL_STREAMIDENTITIES_H

#include "keyindex.h"
#include "streamdecoder.h"

#include <QHash>
#include <QPair>
#include <QString>
#include <QVector>

/**
 * Who sends what in one open source: a row for each type of each sender, numbered from 0 in the order of their first
 * messages. Rows stay for as long as this object.
 *
 * The numbers that a decoder gives to types and senders mean something else after a reconnection. What lasts is what
 * they are called, and rows go by that: whoever counts or keeps something of a source does so by row. The decoder's
 * numbers are only looked up in an index, once for each message, and are forgotten with the decoder.
 *
 * What one decoder tells apart under the same names, such as two channels of one topic, has rows and senders of its
 * own. A type that no format knows has rows too, and may become known.
 *
 * @code
 * StreamIdentities identities;
 * identities.setDecoder(decoder);
 * counters.countMessage(received, identities.rowOf(received));
 * @endcode
 *
 * One thread at a time.
 */
class CORVELFRAMEWORK_EXPORT StreamIdentities
{
public:
    /** A type of a sender. */
    struct Row
    {
        const MessageInfo* info; ///< of the newest decoder that met it; null for a type that no format knows
        QString typeName;        ///< the name of the type, or StreamDecoder::describeUnknown()
        quint32 id;              ///< the format's number of the type
        int sender;              ///< see getSenderName()
    };

    StreamIdentities();

    /** What follows is found by @p decoder, which must be there for as long as it does. */
    void setDecoder(const StreamDecoder* decoder);

    /** The row of a message that the decoder found; the first of its kind makes one. */
    int rowOf(const ReceivedMessage& message)
    {
        const int row = m_rowIndices.find(KeyIndex::keyOf(message.id, message.sender));
        return row >= 0 ? row : intern(message);
    }

    /** The row of a type, null for one that no format knows, of a sender, by their names: for what another decoder
     * found. Made when there is none. */
    int rowOf(const MessageInfo* info, const QString& typeName, quint32 id, const QString& senderName);

    /** Which sender the decoder calls so; -1 when no message of it came. */
    int findSender(quint32 sender) const;

    /**
     * Goes on with other definitions.
     *
     * @param infos  the types by the format's numbers, null for those that are not known any more; what it does not
     *               name stays as it is
     */
    void changeTypes(const QHash<quint32, const MessageInfo*>& infos);

    const QVector<Row>& getRows() const { return m_rows; }
    /** How people of the format write a sender, by Row::sender. */
    const QString& getSenderName(int sender) const { return m_senders.at(sender).name; }
    int getSenderCount() const { return int(m_senders.size()); }

private:
    typedef QPair<QString, QString> Names; // of type and sender

    struct Sender
    {
        QString name;
        int decoder; // the newest one that met it
    };

    int intern(const ReceivedMessage& message);
    int findRow(const Names& names, const MessageInfo* info) const;
    void rename(int row, const QString& typeName);
    int addSender(quint32 sender, const QString& name);
    void link(quint32 key, int sender);

    const StreamDecoder* m_decoder;
    int m_decoders; // that there were; the number of the newest
    QVector<Row> m_rows;
    QVector<int> m_rowDecoders; // as Sender::decoder
    QMultiHash<Names, int> m_rowsByName;
    QVector<Sender> m_senders;
    QMultiHash<QString, int> m_sendersByName;
    KeyIndex m_rowIndices;    // the decoder's numbers
    KeyIndex m_senderIndices; // the decoder's numbers
};

#endif

#ifndef RECEPTIONCOUNTERS_H
#define RECEPTIONCOUNTERS_H

#include "keyindex.h"
#include "streamdecoder.h"

#include <QHash>
#include <QMap>
#include <QVector>

/** Counts what a stream brought: messages per type and sender, and everything that was wrong. Plain and copyable. */
class CORVELFRAMEWORK_EXPORT ReceptionCounters
{
public:
    /** A message type of one sender. */
    struct Row
    {
        const MessageInfo* info; ///< null for an unknown type
        quint32 id;
        quint32 sender;
        quint64 count;
    };

    ReceptionCounters();

    void countMessage(const ReceivedMessage& message);
    void countProblem(const StreamProblem& problem);

    /** Goes on with other definitions: types by their ids; what they do not name is unknown from now on. */
    void changeTypes(const QHash<quint32, const MessageInfo*>& infos);

    /** Every type and sender seen, in the order of their first messages. */
    const QVector<Row>& getRows() const { return m_rows; }

    quint64 getMessageCount() const { return m_messages; }     ///< messages of known types
    quint64 getUnknownCount() const { return m_unknown; }      ///< frames of unknown types
    quint64 getByteCount() const { return m_bytes; }           ///< bytes of all of these
    quint64 getSkippedBytes() const { return m_skippedBytes; } ///< bytes that belong to no frame
    quint64 getTruncatedFrames() const { return m_truncatedFrames; }
    quint64 getTruncatedBytes() const { return m_truncatedBytes; }
    quint64 getUnsupportedFrames() const { return m_unsupportedFrames; }
    quint64 getLengthMismatches() const { return m_lengthMismatches; }
    quint64 getChecksumFailureCount() const;
    /** Checksum failures per message id. */
    const QMap<quint32, quint64>& getChecksumFailures() const { return m_checksumFailures; }

private:
    void addRow(const ReceivedMessage& message);

    QVector<Row> m_rows;
    KeyIndex m_rowIndices;
    QMap<quint32, quint64> m_checksumFailures;
    quint64 m_messages;
    quint64 m_unknown;
    quint64 m_bytes;
    quint64 m_skippedBytes;
    quint64 m_truncatedFrames;
    quint64 m_truncatedBytes;
    quint64 m_unsupportedFrames;
    quint64 m_lengthMismatches;
};

#endif

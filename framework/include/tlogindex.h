#ifndef CORVEL_TLOGINDEX_H
#define CORVEL_TLOGINDEX_H

#include "recordingindex.h"

#include <QFile>

class MavlinkDialect;

/**
 * Finds places in a .tlog by bisecting the file: the decoder finds its way back into the stream wherever it begins.
 *
 * Nothing is kept and hardly anything read: a few dozen pieces of 64 KiB for a search, whatever the file's size. The
 * clock of a recording may have been set while it was made; then what findOffset() gives is a place at which some
 * message of that time follows, if not all of them.
 */
class CORVELFRAMEWORK_EXPORT TlogIndex : public RecordingIndex
{
public:
    /** @param dialect  the message types; must outlive this object and must not be null */
    TlogIndex(const QString& path, const MavlinkDialect* dialect);
    virtual ~TlogIndex();

    /** Looks for the first and the last message, between which there may be nothing but noise. */
    bool prepare(const GoOn& goOn) override;
    qint64 getStartTime() const override;
    qint64 getEndTime() const override;
    quint64 findOffset(qint64 time) override;
    /** The time before a message. */
    quint64 findCut(quint64 offset) override;

private:
    Q_DISABLE_COPY(TlogIndex)

    struct Found;

    bool read(qint64 from, qint64 end, bool last, Found* found) const;
    qint64 findEndTime() const;

    const MavlinkDialect* m_dialect;
    mutable QFile m_file;
    mutable bool m_startIsKnown;
    mutable bool m_endIsKnown;
    mutable qint64 m_startTime;
    mutable qint64 m_endTime;
    GoOn m_goOn; // while it prepares
};

#endif

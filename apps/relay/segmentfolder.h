#ifndef SEGMENTFOLDER_H
#define SEGMENTFOLDER_H

#include <QByteArray>
#include <QFile>
#include <QMap>
#include <QString>
#include <QVector>

#include <memory>

/**
 * Blocks of records in the files of a folder, from the oldest to the newest, of which the oldest can be taken away.
 *
 * What was written is there after the program was killed: a block whose end is missing is left out. docs/relay.md has
 * the format.
 */
class SegmentFolder
{
public:
    /** Where a block lies. */
    struct Place
    {
        quint64 segment = 0; ///< 0 for nowhere
        qint64 offset = 0;
        qint64 size = 0; ///< of the block with its head
    };
    /** A block that an earlier run left. */
    struct Found
    {
        Place place;
        quint64 messages;
    };

    /** @param segmentSize  bytes at which a file is full */
    SegmentFolder(const QString& path, const QString& run, qint64 segmentSize);
    ~SegmentFolder();

    /** Makes the folder, and finds what is in it behind the place that was last told to setPosition(). */
    bool open(QVector<Found>* found, QString* error);

    /** What was wrong with what open() found; may be empty. */
    const QString& getDamage() const { return m_damage; }
    /** Whether the next block begins a file. */
    bool isAtBeginning() const { return !m_file; }
    /** Appends a block; false when that failed, and then nothing of it is kept. */
    bool append(const QByteArray& records, quint64 messages, Place* place, QString* error);
    /** The records at @p place and which run wrote them; nothing when they cannot be read. */
    QByteArray read(const Place& place, QString* run);
    /** Everything before @p place is not needed any more, also not after the next start. */
    void setPosition(const Place& place);
    /** Takes a whole file away. */
    void remove(quint64 segment);
    /** Takes everything away, the folder too. */
    void clear();
    /** Bytes in all files. */
    qint64 getSize() const { return m_size; }
    /** The file that is being written, or 0. */
    quint64 getWritten() const { return m_file ? m_last : 0; }

private:
    struct Segment
    {
        qint64 size = 0;
        QString run;
    };

    QString pathOf(quint64 segment) const;
    bool begin(QString* error);
    void look(quint64 number, const Place& position, QVector<Found>* found);
    void skip(quint64 number, const QByteArray& records);
    void removeBefore(quint64 segment);
    Place readPosition() const;

    QString m_path;
    QString m_run;
    qint64 m_segmentSize;
    qint64 m_size = 0;
    quint64 m_last = 0;
    QMap<quint64, Segment> m_segments;
    QString m_damage;
    quint64 m_skippedIn = 0;       // the file of the position
    QByteArray m_skipped;          // what its blocks before the position say of channels
    std::unique_ptr<QFile> m_file; // being written; null before the first block of a file
    std::unique_ptr<QFile> m_read;
    quint64 m_readNumber = 0;
    std::unique_ptr<QFile> m_position;
};

#endif

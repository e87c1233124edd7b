#include "segmentfolder.h"

#include "publishedstream.h"

#include <QDataStream>
#include <QDir>
#include <QtEndian>

#include <zlib.h>

namespace
{

const char Magic[] = "corvel-relay buffer 1\n";
const int MagicSize = int(sizeof Magic) - 1;
const int BlockHead = 12;
const int RunSize = 36;
const char Ending[] = ".waiting";

// A block is one batch, or one great message; what claims to be more is damaged.
const quint32 GreatestBlock = 1024 * 1024 * 1024;

quint32 checksum(const char* bytes, qint64 size)
{
    return quint32(crc32(0, reinterpret_cast<const Bytef*>(bytes), uInt(size)));
}

/** The head of a block: the size and the checksum of what follows, and how many messages are in it. */
QByteArray headOf(const QByteArray& records, quint64 messages)
{
    QByteArray head;
    QDataStream stream(&head, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << quint32(records.size()) << checksum(records.constData(), records.size()) << quint32(messages);
    return head;
}

} // namespace

SegmentFolder::SegmentFolder(const QString& path, const QString& run, qint64 segmentSize)
    : m_path(path)
    , m_run(run)
    , m_segmentSize(segmentSize)
{
}

SegmentFolder::~SegmentFolder() {}

QString SegmentFolder::pathOf(quint64 segment) const
{
    return QStringLiteral("%1/%2%3").arg(m_path).arg(segment, 10, 10, QLatin1Char('0')).arg(QLatin1String(Ending));
}

bool SegmentFolder::open(QVector<Found>* found, QString* error)
{
    m_position.reset(new QFile(m_path + QLatin1String("/position")));
    if (!QDir().mkpath(m_path) || !m_position->open(QIODevice::ReadWrite | QIODevice::Unbuffered)) {
        *error = QStringLiteral("%1: %2").arg(m_path, m_position->errorString());
        return false;
    }
    const Place position = readPosition();
    const QStringList names =
        QDir(m_path).entryList({QLatin1Char('*') + QLatin1String(Ending)}, QDir::Files, QDir::Name);
    for (const QString& name : names) {
        const quint64 number = name.section(QLatin1Char('.'), 0, 0).toULongLong();
        m_last = qMax(m_last, number);
        if (number < position.segment)
            QFile::remove(m_path + QLatin1Char('/') + name);
        else if (number > 0)
            look(number, position, found);
    }
    m_last = qMax(m_last, position.segment);
    return true;
}

/** Finds the blocks of a file, up to the first one that is not whole. */
void SegmentFolder::look(quint64 number, const Place& position, QVector<Found>* found)
{
    QFile file(pathOf(number));
    Segment segment;
    if (file.open(QIODevice::ReadOnly) && file.read(MagicSize) == QByteArray(Magic, MagicSize))
        segment.run = QString::fromLatin1(file.read(RunSize)).trimmed();
    segment.size = file.size();
    m_segments.insert(number, segment);
    m_size += segment.size;
    qint64 offset = MagicSize + RunSize;
    while (offset < segment.size && file.seek(offset)) {
        const QByteArray head = file.read(BlockHead);
        QDataStream stream(head);
        stream.setByteOrder(QDataStream::LittleEndian);
        quint32 size = 0;
        quint32 sum = 0;
        quint32 messages = 0;
        stream >> size >> sum >> messages;
        if (stream.status() != QDataStream::Ok || size > GreatestBlock)
            break;
        const QByteArray records = file.read(size);
        if (quint32(records.size()) != size || checksum(records.constData(), size) != sum)
            break;
        if (number == position.segment && offset < position.offset)
            skip(number, records);
        else
            found->append(Found{Place{number, offset, BlockHead + qint64(size)}, messages});
        offset += BlockHead + qint64(size);
    }
    if (offset < segment.size)
        m_damage = QStringLiteral("%1: it is damaged at byte %2, and what follows is left out")
                       .arg(file.fileName())
                       .arg(offset);
}

/** Keeps what the blocks behind need of one that has gone out. */
void SegmentFolder::skip(quint64 number, const QByteArray& records)
{
    m_skippedIn = number;
    for (int place = 0; place + 5 <= records.size();) {
        const qint64 size = 4 + qint64(qFromLittleEndian<quint32>(records.constData() + place));
        if (PublishedStream::isChannelRecord(records.constData() + place))
            m_skipped += records.mid(place, int(size));
        place = int(qMin<qint64>(place + size, records.size()));
    }
}

bool SegmentFolder::begin(QString* error)
{
    std::unique_ptr<QFile> file(new QFile(pathOf(++m_last)));
    const QByteArray head = QByteArray(Magic, MagicSize) + m_run.toLatin1().leftJustified(RunSize, ' ', true);
    if (!file->open(QIODevice::WriteOnly | QIODevice::Unbuffered) || file->write(head) != head.size()) {
        *error = file->errorString();
        file->remove();
        return false;
    }
    m_segments.insert(m_last, Segment{head.size(), m_run});
    m_size += head.size();
    m_file = std::move(file);
    return true;
}

bool SegmentFolder::append(const QByteArray& records, quint64 messages, Place* place, QString* error)
{
    if (!m_file && !begin(error))
        return false;
    Segment& segment = m_segments[m_last];
    const QByteArray block = headOf(records, messages) + records;
    const qint64 written = m_file->write(block);
    if (written != block.size()) {
        // A disk that becomes full takes a part without a complaint.
        *error = written < 0 ? m_file->errorString() : QStringLiteral("no space is left");
        m_file->resize(segment.size);
        m_file->seek(segment.size);
        return false;
    }
    *place = Place{m_last, segment.size, block.size()};
    segment.size += block.size();
    m_size += block.size();
    if (segment.size >= m_segmentSize)
        m_file.reset();
    return true;
}

QByteArray SegmentFolder::read(const Place& place, QString* run)
{
    if (!m_read || m_readNumber != place.segment) {
        m_read.reset(new QFile(pathOf(place.segment)));
        m_readNumber = place.segment;
        if (!m_read->open(QIODevice::ReadOnly | QIODevice::Unbuffered))
            m_read.reset();
    }
    *run = m_segments.value(place.segment).run;
    if (!m_read || !m_read->seek(place.offset + BlockHead))
        return QByteArray();
    QByteArray records = m_read->read(place.size - BlockHead);
    if (records.size() != place.size - BlockHead)
        return QByteArray();
    if (place.segment == m_skippedIn)
        records.prepend(m_skipped);
    m_skipped.clear();
    return records;
}

void SegmentFolder::setPosition(const Place& place)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setByteOrder(QDataStream::LittleEndian);
    stream << place.segment << place.offset;
    stream << checksum(bytes.constData(), bytes.size());
    m_position->seek(0);
    m_position->write(bytes); // one call, which a kill does not cut
    removeBefore(place.segment);
}

SegmentFolder::Place SegmentFolder::readPosition() const
{
    const QByteArray bytes = m_position->read(20);
    QDataStream stream(bytes);
    stream.setByteOrder(QDataStream::LittleEndian);
    Place place;
    quint32 sum = 0;
    stream >> place.segment >> place.offset >> sum;
    return stream.status() == QDataStream::Ok && sum == checksum(bytes.constData(), 16) ? place : Place();
}

void SegmentFolder::removeBefore(quint64 segment)
{
    while (!m_segments.isEmpty() && m_segments.firstKey() < segment)
        remove(m_segments.firstKey());
}

void SegmentFolder::remove(quint64 segment)
{
    if (m_readNumber == segment)
        m_read.reset();
    m_size -= m_segments.value(segment).size;
    m_segments.remove(segment);
    QFile::remove(pathOf(segment));
}

void SegmentFolder::clear()
{
    m_file.reset();
    while (!m_segments.isEmpty())
        remove(m_segments.firstKey());
    m_position->remove();
    QDir().rmdir(m_path);
}

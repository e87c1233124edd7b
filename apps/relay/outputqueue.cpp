#include "outputqueue.h"

#include "publishedstream.h"

namespace
{

const qint64 MemoryLimit = 4 * 1024 * 1024;
const int FullBlock = 64 * 1024;

qint64 segmentSize(qint64 limit)
{
    return qBound(qint64(64 * 1024), limit / 8, qint64(16 * 1024 * 1024));
}

} // namespace

OutputQueue::OutputQueue(const Settings& settings)
    : m_settings(settings)
{
}

OutputQueue::~OutputQueue()
{
    if (m_folder && (!m_settings.isKept || m_entries.empty()))
        m_folder->clear();
}

bool OutputQueue::open(QString* error)
{
    if (!m_settings.isKept)
        return true;
    m_folder.reset(new SegmentFolder(m_settings.folder, m_settings.run, segmentSize(m_settings.limit)));
    QVector<SegmentFolder::Found> found;
    if (!m_folder->open(&found, error))
        return false;
    for (const SegmentFolder::Found& one : found) {
        m_entries.push_back(Entry{QByteArray(), one.place, one.messages, one.place.size, m_total});
        m_total += one.messages;
        m_counts.waitingMessages += one.messages;
        m_counts.waitingBytes += one.place.size;
    }
    m_hasDiskOnly = !found.isEmpty();
    m_problem = m_folder->getDamage();
    return true;
}

void OutputQueue::add(const quint32* channel, const QByteArray& record)
{
    if (channel) {
        m_used.insert(*channel);
        ++m_messages;
    }
    m_records += record;
    if (m_records.size() >= FullBlock)
        seal();
}

/** Schemas are large, and a thousand senders of a type have the same one. */
void OutputQueue::addChannel(quint32 number, const QByteArray& record)
{
    const QByteArray type = PublishedStream::typeOf(record);
    const auto other = m_types.constFind(type);
    if (other == m_types.constEnd()) {
        m_types.insert(type, number);
        m_channels.insert(number, Channel{record, number});
    } else {
        m_channels.insert(number, Channel{PublishedStream::likeRecord(record, *other), *other});
    }
}

void OutputQueue::declare(quint32 number, QSet<quint32>* declared, QByteArray* records) const
{
    if (declared->contains(number))
        return;
    declared->insert(number);
    const Channel channel = m_channels.value(number);
    if (channel.like != number)
        declare(channel.like, declared, records);
    *records += channel.record;
}

/** What the other side has to know before the block, where the file or what was dropped could have said it. */
QByteArray OutputQueue::declarations()
{
    QByteArray records;
    for (const quint32 channel : m_used)
        declare(channel, &m_declared, &records);
    return records;
}

bool OutputQueue::ensureFolder()
{
    if (m_folder)
        return true;
    std::unique_ptr<SegmentFolder> folder(
        new SegmentFolder(m_settings.folder, m_settings.run, segmentSize(m_settings.limit)));
    QVector<SegmentFolder::Found> found;
    if (!folder->open(&found, &m_problem))
        return false;
    m_folder = std::move(folder);
    return true;
}

bool OutputQueue::seal()
{
    if (m_records.isEmpty())
        return false;
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool isWritten = (m_settings.isKept && m_settings.isAcknowledged) || m_hasDiskOnly ||
                           m_bytesInMemory + m_records.size() > MemoryLimit;
    const bool hasFolder = isWritten && ensureFolder();
    if (hasFolder && m_folder->isAtBeginning())
        m_declared.clear();
    Entry entry;
    entry.records = declarations() + m_records;
    entry.messages = m_messages;
    entry.size = entry.records.size();
    if (hasFolder) {
        QString problem;
        if (!m_folder->append(entry.records, entry.messages, &entry.place, &problem))
            m_problem = m_settings.folder + QLatin1String(": ") + problem;
    }
    // What could not be written stays in memory, as long as that lasts.
    if (entry.place.segment != 0 && (m_hasDiskOnly || m_bytesInMemory + entry.size > MemoryLimit)) {
        entry.records = QByteArray();
        m_hasDiskOnly = true;
    }
    m_bytesInMemory += entry.records.size();
    m_counts.waitingMessages += entry.messages;
    m_counts.waitingBytes += entry.size;
    entry.before = m_total;
    m_total += entry.messages;
    m_unwritten += entry.place.segment == 0;
    m_entries.push_back(entry);
    m_records = QByteArray();
    m_records.reserve(FullBlock + FullBlock / 8);
    m_messages = 0;
    m_used.clear();
    dropOldest();
    return true;
}

/** Drops the oldest of what nobody has taken yet until the limits are kept. */
void OutputQueue::dropOldest()
{
    const auto isTooMuch = [this] {
        return (m_folder && m_folder->getSize() > m_settings.limit) || m_bytesInMemory > 4 * MemoryLimit;
    };
    while (isTooMuch() && m_taken + 1 < m_entries.size()) {
        const quint64 segment = m_entries[m_taken].place.segment;
        std::size_t end = m_taken;
        do {
            const Entry& entry = m_entries[end];
            m_counts.dropped += entry.messages;
            m_counts.waitingMessages -= entry.messages;
            m_counts.waitingBytes -= entry.size;
            m_bytesInMemory -= entry.records.size();
            m_unwritten -= entry.place.segment == 0;
            ++end;
        } while (segment != 0 && end + 1 < m_entries.size() && m_entries[end].place.segment == segment);
        m_entries.erase(m_entries.begin() + long(m_taken), m_entries.begin() + long(end));
        // The file goes when nothing of it is left, not even what was taken and may be asked for after a crash.
        const bool isUsed = segment == 0 || m_folder->getWritten() == segment ||
                            (m_taken > 0 && m_entries[m_taken - 1].place.segment == segment) ||
                            m_entries[m_taken].place.segment == segment;
        if (!isUsed)
            m_folder->remove(segment);
        m_declared.clear();
    }
}

void OutputQueue::keep()
{
    seal();
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_settings.isKept || !ensureFolder())
        return;
    QSet<quint32> all;
    for (std::size_t i = m_settings.isAcknowledged ? 0 : m_taken; i < m_entries.size(); ++i) {
        Entry& entry = m_entries[i];
        if (entry.place.segment != 0)
            continue;
        // Which channels it needs is not known any more, so it gets all.
        QByteArray records;
        if (m_folder->isAtBeginning())
            all.clear();
        for (auto channel = m_channels.constBegin(); channel != m_channels.constEnd(); ++channel)
            declare(channel.key(), &all, &records);
        QString problem;
        if (!m_folder->append(records + entry.records, entry.messages, &entry.place, &problem))
            m_problem = m_settings.folder + QLatin1String(": ") + problem;
        else
            --m_unwritten;
    }
}

bool OutputQueue::take(Block* block)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_taken >= m_entries.size())
        return false;
    Entry& entry = m_entries[m_taken++];
    block->run = m_settings.run;
    block->messages = entry.messages;
    if (!entry.records.isNull()) {
        block->records = entry.records;
        m_bytesInMemory -= entry.records.size();
        entry.records = QByteArray();
    } else {
        block->records = m_folder->read(entry.place, &block->run);
        if (block->records.isEmpty()) {
            m_problem = QStringLiteral("%1: a block cannot be read back").arg(m_settings.folder);
            m_counts.dropped += entry.messages;
            m_counts.waitingMessages -= entry.messages;
            block->messages = 0;
            entry.messages = 0;
        }
    }
    if (m_taken == m_entries.size())
        m_hasDiskOnly = false;
    if (!m_settings.isAcknowledged) {
        m_confirmed += entry.messages;
        popConfirmed();
    } else if (entry.messages == 0) {
        popConfirmed();
    }
    return true;
}

void OutputQueue::confirm(quint64 messages)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_confirmed += messages;
    popConfirmed();
}

void OutputQueue::popConfirmed()
{
    SegmentFolder::Place end;
    while (m_taken > 0 && m_entries.front().messages <= m_confirmed) {
        const Entry& entry = m_entries.front();
        m_confirmed -= entry.messages;
        m_counts.waitingMessages -= entry.messages;
        m_counts.waitingBytes -= entry.size;
        m_unwritten -= entry.place.segment == 0;
        if (entry.place.segment != 0)
            end = SegmentFolder::Place{entry.place.segment, entry.place.offset + entry.place.size, 0};
        m_entries.pop_front();
        --m_taken;
    }
    if (end.segment == 0)
        return;
    // A file of which nothing waits is not needed up to the next one.
    const bool isDone =
        (m_entries.empty() || m_entries.front().place.segment != end.segment) && m_folder->getWritten() != end.segment;
    m_folder->setPosition(isDone ? SegmentFolder::Place{end.segment + 1, 0, 0} : end);
}

bool OutputQueue::isFull() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bytesInMemory > MemoryLimit / 2 || m_hasDiskOnly;
}

bool OutputQueue::isAtLimit() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_folder && m_folder->getSize() + 2 * segmentSize(m_settings.limit) > m_settings.limit;
}

OutputQueue::Counts OutputQueue::getCounts() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Counts counts = m_counts;
    counts.bytesOnDisk = m_folder ? m_folder->getSize() : 0;
    return counts;
}

quint64 OutputQueue::getTotal() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_total;
}

quint64 OutputQueue::getSafe() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool isWritten = m_settings.isKept && m_settings.isAcknowledged && m_unwritten == 0;
    return isWritten || m_entries.empty() ? m_total : m_entries.front().before;
}

QString OutputQueue::takeProblem()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QString problem;
    problem.swap(m_problem);
    return problem;
}

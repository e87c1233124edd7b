#include "fieldpass.h"

#include "fieldinfo.h"
#include "fieldreader.h"
#include "fieldwalk.h"
#include "recordingindex.h"

#include <QReadWriteLock>

#include <algorithm>
#include <cmath>
#include <limits>

static const double NoValue = std::numeric_limits<double>::quiet_NaN();
static const std::size_t MostWaiting = 1 << 19; // values of a section: 8 MB
static const std::size_t MostSections = 3;      // so far is one thread ahead of the other at most

FieldPass::FieldPass(SourceParts parts, SourceParts other, const QVector<FieldPath>& paths, QReadWriteLock* lock,
                     quint64 sectionSize)
    : m_paths(paths)
    , m_sectionSize(sectionSize)
    , m_lock(lock)
    , m_reader(new FieldReader(this, std::move(parts)))
    , m_other(other.input ? new FieldReader(this, std::move(other)) : nullptr)
{
}

FieldPass::~FieldPass()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_cancelled = true;
        m_reader->cancel();
        if (m_other)
            m_other->cancel();
        m_wake.notify_all();
    }
    wait();
}

bool FieldPass::take(Piece* piece)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    while (!m_sections.empty()) {
        Section& first = m_sections.front();
        if (!first.pieces.empty()) {
            *piece = std::move(first.pieces.front());
            first.pieces.pop_front();
            first.values -= piece->values.size();
            m_wake.notify_all();
            return true;
        }
        if (!first.isRead)
            return false;
        m_sections.pop_front();
        m_wake.notify_all();
    }
    return false;
}

bool FieldPass::isOver() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_ended && std::all_of(m_sections.begin(), m_sections.end(),
                                  [](const Section& section) { return section.pieces.empty(); });
}

int FieldPass::getPercent() const
{
    const qint64 bytes = m_bytes;
    return int(100 * bytes / std::max({bytes, qint64(m_size), qint64(1)}));
}

QString FieldPass::getErrorString() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_error;
}

double FieldPass::numberOf(const FieldPath& path, const Message* message)
{
    return numberOf(path, FieldWalk(path, message, FieldWalk::Everything).getValue());
}

double FieldPass::numberOf(const FieldPath& path, const FieldValue& value)
{
    const FieldInfo* const field = path.getField();
    if (!value.isNumber() || field->isNotAvailable(value))
        return NoValue;
    const double number = value.toDouble() * field->getScaleFactor();
    return std::isfinite(number) ? number : NoValue;
}

void FieldPass::run()
{
    std::thread second;
    if (m_reader->open()) {
        const PassInput& input = m_reader->getInput();
        m_size = input.get()->getSize();
        if (m_other && input.get()->isSeekable() && input.isAsItIs())
            m_index = m_reader->getIndex();
        if (m_index && findEnd(0) != PassInput::Everything)
            second = std::thread([this] {
                if (m_other->open())
                    m_other->work();
            });
        m_reader->work();
    } else {
        fail(m_reader->getInput().getError());
    }
    if (second.joinable())
        second.join();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_ended = true;
}

/** Where a section ends that begins there: where the recording can be cut, or at its end. */
quint64 FieldPass::findEnd(quint64 begin) const
{
    for (quint64 size = m_sectionSize; m_index && m_size > 0 && begin + size < quint64(m_size); size *= 2) {
        const quint64 cut = m_index->findCut(begin + size);
        if (cut > begin)
            return cut;
    }
    return PassInput::Everything;
}

/** The next one to be read, as soon as it may be; null when there is none. */
FieldPass::Section* FieldPass::nextSection()
{
    const std::lock_guard<std::mutex> cutting(m_cutting);
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_wake.wait(lock, [this] { return m_cancelled || m_isCut || m_sections.size() < MostSections; });
        if (m_cancelled || m_isCut)
            return nullptr;
    }
    const quint64 end = findEnd(m_next);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_sections.push_back({m_next, end});
    m_isCut = end == PassInput::Everything;
    m_next = end;
    ++m_sectionCount;
    return &m_sections.back();
}

void FieldPass::handOver(Section* section, Piece piece)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (section->values >= MostWaiting) {
        // Whoever takes may be waiting to change descriptions.
        m_lock->unlock();
        m_wake.wait(lock, [this, section] { return m_cancelled || section->values < MostWaiting; });
        lock.unlock();
        m_lock->lockForRead();
        lock.lock();
    }
    section->values += piece.values.size();
    section->pieces.push_back(std::move(piece));
}

/** @param wasLast  nothing is read behind it, such as where reading failed */
void FieldPass::endSection(Section* section, bool wasLast)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    section->isRead = true;
    m_isCut = m_isCut || wasLast;
    m_wake.notify_all();
}

void FieldPass::fail(const QString& text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_error = text;
}

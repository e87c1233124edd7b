#include "recordedlines.h"

#include "desk.h"
#include "fieldinfo.h"
#include "message.h"
#include "plotpanel.h"
#include "plotseries.h"

#include <QElapsedTimer>

#include <algorithm>

static const int WorkMs = 8; // of the GUI thread at a time

RecordedLines::RecordedLines(Desk* desk, PlotPanel* panel)
    : QObject(panel)
    , m_desk(desk)
    , m_panel(panel)
{
    connect(desk->getSources(), &SourceModel::sessionAboutToBeRemoved, this, [this](SourceSession* session) {
        m_begun.clear();
        for (const auto& reading : m_readings)
            reading->begunBefore = 0;
        m_readings.erase(std::remove_if(m_readings.begin(), m_readings.end(),
                                        [session](const auto& reading) { return reading->session == session; }),
                         m_readings.end());
    });
}

RecordedLines::~RecordedLines() = default;

void RecordedLines::setWanted(const QVector<FieldPath>& paths)
{
    m_wanted = paths;
    for (const auto& reading : m_readings) {
        const auto isWanted = [&](const FieldPath& path) { return paths.contains(path); };
        reading->read.erase(std::remove_if(reading->read.begin(), reading->read.end(),
                                           [&](const Read& read) { return !isWanted(read.path); }),
                            reading->read.end());
        reading->mayLack = true;
        if (!std::any_of(reading->paths.begin(), reading->paths.end(), isWanted)) {
            reading->pass.reset();
            reading->rest.clear();
        }
    }
}

void RecordedLines::renew()
{
    for (const auto& reading : m_readings)
        reading->read.erase(
            std::remove_if(reading->read.begin(), reading->read.end(),
                           [](const Read& read) { return read.path.getField()->getScaleFactor() != read.scale; }),
            reading->read.end());
}

RecordedLines::Reading* RecordedLines::readingOf(SourceSession* session)
{
    for (const auto& reading : m_readings)
        if (reading->session == session)
            return reading.get();
    m_readings.emplace_back(new Reading);
    m_readings.back()->session = session;
    m_readings.back()->source = session->getSource();
    return m_readings.back().get();
}

bool RecordedLines::isDrawn(const PlotSeries* series) const
{
    const auto& all = m_panel->getRead();
    return std::any_of(all.begin(), all.end(), [series](const auto& one) { return one.get() == series; });
}

bool RecordedLines::work()
{
    QElapsedTimer time;
    time.start();
    bool any = false;
    for (int i = 0; i < m_desk->getSources()->getCount(); ++i) {
        SourceSession* const session = m_desk->getSources()->getSession(i);
        if (m_wanted.isEmpty() || !session->isPlayback() || !session->getSource()->isSeekable())
            continue;
        Reading* const reading = readingOf(session);
        if (reading->source != session->getSource()) { // it was opened again
            reading->source = session->getSource();
            reading->pass.reset();
            reading->read.clear();
            reading->rest.clear();
            reading->met.clear();
        }
        if (!reading->pass && reading->mayLack)
            findLate(reading);
        if (!reading->pass)
            begin(reading);
        if (reading->pass)
            any = take(reading, [&time]() { return time.elapsed() < WorkMs; }) || any;
    }
    return any;
}

/** Finds lines of what was read that were not there then, such as of a sender that had been removed. */
void RecordedLines::findLate(Reading* reading)
{
    reading->mayLack = false;
    for (const Met& met : reading->met) {
        const auto isIt = [&met](const Read& read) { return read.path == met.path; };
        const auto read = std::find_if(reading->read.begin(), reading->read.end(), isIt);
        if (read == reading->read.end())
            continue;
        for (const QString& sender : met.senders) {
            const PlotSeries* const series = m_panel->findOrAdd(met.path, reading->session->qualifiedName(sender));
            if (!series || series->getRecording())
                continue;
            reading->rest.append(met.path);
            reading->read.erase(read);
            break;
        }
    }
}

void RecordedLines::begin(Reading* reading)
{
    reading->paths.clear();
    reading->series.clear();
    for (const FieldPath& path : std::as_const(m_wanted)) {
        const bool isRead = std::any_of(reading->read.begin(), reading->read.end(),
                                        [&path](const Read& read) { return read.path == path; });
        if (isRead)
            continue;
        reading->paths.append(path);
        reading->read.push_back({path, path.getField()->getScaleFactor()});
    }
    if (reading->paths.isEmpty())
        return;
    const auto isReadAnew = [reading](const Met& met) { return reading->paths.contains(met.path); };
    reading->met.erase(std::remove_if(reading->met.begin(), reading->met.end(), isReadAnew), reading->met.end());
    for (const FieldPath& path : std::as_const(reading->paths))
        reading->met.push_back({path, {}});
    SourceParts parts;
    SourceParts other;
    QString error;
    const SourceOptions& options = reading->session->getOptions();
    if (!m_desk->getFactory()->create(options, &parts, &error)) {
        Q_EMIT m_desk->failed(error);
        return;
    }
    if (QThread::idealThreadCount() > 1)
        m_desk->getFactory()->create(options, &other, &error); // or one thread does it
    const bool isAlone =
        std::none_of(m_readings.begin(), m_readings.end(), [](const auto& one) { return bool(one->pass); });
    if (isAlone)
        m_begun.clear();
    reading->begunBefore = m_begun.size();
    reading->pass.reset(
        new FieldPass(std::move(parts), std::move(other), reading->paths, m_desk->getFactory()->getDescriptionLock()));
    reading->pass->start();
}

bool RecordedLines::take(Reading* reading, const std::function<bool()>& goOn)
{
    bool any = false;
    FieldPass::Piece piece;
    while (goOn() && reading->pass->take(&piece)) {
        PlotSeries* const series = seriesOf(reading, piece);
        if (!series)
            continue;
        for (const FieldPass::Value& value : piece.values)
            series->addRecorded(value.time, value.number);
        any = true;
    }
    if (!reading->pass->isOver())
        return any;
    end(reading);
    return true;
}

/** The line that a piece belongs to; null where none is wanted, or one came in the midst of it. */
PlotSeries* RecordedLines::seriesOf(Reading* reading, const FieldPass::Piece& piece)
{
    const FieldPath& path = reading->paths.at(piece.path);
    PlotSeries* const series =
        m_wanted.contains(path) ? m_panel->findOrAdd(path, reading->session->qualifiedName(piece.sender)) : nullptr;
    const auto met =
        std::find_if(reading->met.begin(), reading->met.end(), [&path](const Met& one) { return one.path == path; });
    const bool isFirst = met != reading->met.end() && !met->senders.contains(piece.sender);
    if (isFirst)
        met->senders.insert(piece.sender);
    if (!series)
        return nullptr;
    if (std::find(reading->series.begin(), reading->series.end(), series) != reading->series.end())
        return series;
    const bool isThere = reading->rest.contains(path) && series->getRecording();
    if (!isFirst || isThere)
        return nullptr;
    reading->series.push_back(series);
    series->beginRecording(reading->session, shareOfEach());
    putInOrder(reading, series);
    return series;
}

/** Of recordings that are read at once, the lines of those that were opened first come first. */
void RecordedLines::putInOrder(const Reading* reading, PlotSeries* series)
{
    const int place = m_desk->getSources()->rowOf(reading->session);
    QSet<const PlotSeries*> later;
    for (std::size_t i = reading->begunBefore; i < m_begun.size(); ++i) {
        const PlotSeries* const other = m_begun[i].series;
        if (isDrawn(other) && other->getPath() == series->getPath() &&
            m_desk->getSources()->rowOf(m_begun[i].reading->session) > place)
            later.insert(other);
    }
    m_panel->putBefore(series, later);
    m_begun.push_back({series, reading});
}

int RecordedLines::shareOfEach() const
{
    std::size_t lines = m_panel->getRead().size();
    for (const auto& series : m_panel->getSeries())
        lines += series->getPath().isNull() ? 1 : 0; // computed from those
    return qMax(LeastPoints, MostPoints / int(lines));
}

void RecordedLines::end(Reading* reading)
{
    const QString error = reading->pass->getErrorString();
    reading->pass.reset();
    for (PlotSeries* const series : reading->series)
        if (isDrawn(series))
            series->endRecording();
    reading->series.clear();
    reading->rest.clear();
    reading->mayLack = true;
    if (!error.isEmpty())
        Q_EMIT m_desk->failed(error);
}

QString RecordedLines::getNote() const
{
    for (const auto& reading : m_readings)
        if (reading->pass)
            return tr("reading %1, %2 %").arg(reading->session->getName()).arg(reading->pass->getPercent());
    for (const auto& series : m_panel->getSeries())
        if (series->getRecording() && series->isThinnedOut())
            return tr("too many values: only the extremes of some");
    return QString();
}

QVector<SourceSession*> RecordedLines::shownSessions() const
{
    QVector<SourceSession*> sessions;
    for (const auto& series : m_panel->getSeries())
        if (series->getRecording() && !sessions.contains(series->getRecording()))
            sessions.append(series->getRecording());
    return sessions;
}

QVector<double> RecordedLines::getPositions(bool sinceStart) const
{
    QVector<double> positions;
    for (SourceSession* const session : shownSessions())
        if (session->getSource()->getCurrentTime() != Message::NoTime)
            positions.append(double(session->getSource()->getCurrentTime() -
                                    (sinceStart ? session->getSource()->getStartTime() : 0)) /
                             1e6);
    return positions;
}

bool RecordedLines::goTo(double seconds, bool sinceStart)
{
    const QVector<SourceSession*> sessions = shownSessions();
    if (sessions.isEmpty())
        return false;
    const qint64 time = qint64(seconds * 1e6);
    SourceSession* nearest = nullptr;
    qint64 place = 0;
    for (SourceSession* const session : sessions) {
        const StreamSource* const source = session->getSource();
        const qint64 there =
            qBound(source->getStartTime(), time + (sinceStart ? source->getStartTime() : 0), source->getEndTime());
        if (sinceStart)
            Desk::jumpTo(session, there);
        const qint64 distance = qAbs(there - time);
        const bool isChosen = session == m_desk->getChosenSource();
        if (nearest && (distance > qAbs(place - time) || (distance == qAbs(place - time) && !isChosen)))
            continue;
        nearest = session;
        place = there;
    }
    if (!sinceStart) // also where others, of which there is no line, have that time
        Desk::jumpTo(nearest, place);
    return true;
}

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
        if (!std::any_of(reading->paths.begin(), reading->paths.end(), isWanted))
            reading->pass.reset();
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
        }
        if (!reading->pass)
            begin(reading);
        if (reading->pass)
            any = take(reading, [&time]() { return time.elapsed() < WorkMs; }) || any;
    }
    return any;
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
    SourceParts parts;
    QString error;
    if (reading->paths.isEmpty())
        return;
    if (!m_desk->getFactory()->create(reading->session->getOptions(), &parts, &error)) {
        Q_EMIT m_desk->failed(error);
        return;
    }
    reading->pass.reset(new FieldPass(std::move(parts), reading->paths, m_desk->getFactory()->getDescriptionLock()));
    reading->pass->start();
}

bool RecordedLines::take(Reading* reading, const std::function<bool()>& goOn)
{
    bool any = false;
    FieldPass::Piece piece;
    while (goOn() && reading->pass->take(&piece)) {
        const FieldPath path = reading->paths.at(piece.path);
        PlotSeries* const series =
            m_wanted.contains(path) ? m_panel->findOrAdd(path, reading->session->qualifiedName(piece.sender)) : nullptr;
        if (!series)
            continue;
        if (std::find(reading->series.begin(), reading->series.end(), series) == reading->series.end()) {
            reading->series.push_back(series);
            series->beginRecording(reading->session, shareOfEach());
        }
        for (const FieldPass::Value& value : piece.values)
            series->addRecorded(value.time, value.number);
        any = true;
    }
    if (!reading->pass->isOver())
        return any;
    end(reading);
    return true;
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

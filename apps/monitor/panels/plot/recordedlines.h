#ifndef RECORDEDLINES_H
#define RECORDEDLINES_H

#include "fieldpass.h"

#include <QPointer>
#include <QSet>
#include <QVector>

#include <memory>
#include <vector>

class Desk;
class PlotPanel;
class PlotSeries;
class SourceSession;

/**
 * Reads what is plotted out of whole recordings, in the background, and gives it to the series.
 *
 * Each recording is read once for all fields that are new, as soon as it can be sought in.
 */
class RecordedLines : public QObject
{
    Q_OBJECT

public:
    /** Points that are kept of all recordings together; a line has its share, and never less than the least. */
    static constexpr int MostPoints = 40000000;
    static constexpr int LeastPoints = 2000000;

    /** Both borrowed. */
    RecordedLines(Desk* desk, PlotPanel* panel);
    ~RecordedLines() override;

    /** What is plotted now; nothing else is read any more. To be called for another line of a path as well: it is read
     * when the others were. */
    void setWanted(const QVector<FieldPath>& paths);
    /** Takes what was read, for a few milliseconds, and begins to read what is to be read; whether anything came. */
    bool work();
    /** Reads fields anew that have another scale now. */
    void renew();

    /** How far reading is, or what is not kept; empty when there is nothing to say. */
    QString getNote() const;
    /** Where the recordings are that lines are of, in seconds since 1970 or since the start of each. */
    QVector<double> getPositions(bool sinceStart) const;
    /** Goes to such a time in the recordings that lines are of, or in that which has it; false when there is none. */
    bool goTo(double seconds, bool sinceStart);

private:
    struct Read
    {
        FieldPath path;
        double scale; // that it was read with
    };

    /** Of whom a field was met in a recording. */
    struct Met
    {
        FieldPath path;
        QSet<QString> senders; // as the decoder calls them
    };

    struct Reading
    {
        QPointer<SourceSession> session;
        const void* source;     // another one is read from the beginning
        std::vector<Read> read; // and what is being read
        std::vector<Met> met;   // of that
        bool mayLack = false;   // lines of what was read, which came later
        QVector<FieldPath> paths;
        std::unique_ptr<FieldPass> pass; // of these paths
        QVector<FieldPath> rest;         // of these, those that are read once more for lines that came later
        std::size_t begunBefore = 0;     // of m_begun
        std::vector<PlotSeries*> series; // that it gives values to, as long as they are drawn
    };

    /** A line that was begun while anything was being read. */
    struct Begun
    {
        PlotSeries* series;
        const Reading* reading;
    };

    Reading* readingOf(SourceSession* session);
    void findLate(Reading* reading);
    void begin(Reading* reading);
    bool take(Reading* reading, const std::function<bool()>& goOn);
    PlotSeries* seriesOf(Reading* reading, const FieldPass::Piece& piece);
    void putInOrder(const Reading* reading, PlotSeries* series);
    void end(Reading* reading);
    QVector<SourceSession*> shownSessions() const;
    bool isDrawn(const PlotSeries* series) const;
    int shareOfEach() const;

    Desk* m_desk;
    PlotPanel* m_panel;
    QVector<FieldPath> m_wanted;
    std::vector<std::unique_ptr<Reading>> m_readings; // of the sources that are open
    std::vector<Begun> m_begun;
};

#endif

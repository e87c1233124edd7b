#ifndef PLOTSERIES_H
#define PLOTSERIES_H

#include "desk.h"
#include "fieldpath.h"
#include "plotfunction.h"
#include "seriespoints.h"

#include <QPointer>

/**
 * The values of one field of one sender: over the last minutes, or of a whole recording.
 *
 * Every message gives a point. Where messages are missing or a value is not available, there is a point without a
 * value, so that no line is drawn across. At the limit, the older half is thinned out: of every four points the least
 * and the greatest stay.
 */
class PlotSeries
{
public:
    static const int MostPoints = 200000;
    /** Seconds that are kept, and an eighth more. */
    static const int LongestTime = 3600;

    explicit PlotSeries(const FieldPath& path);
    virtual ~PlotSeries();

    /** The field; no way at all where it is no single one. */
    const FieldPath& getPath() const { return m_path; }
    /** Whether a field is confidential that it is made of, and such fields are not shown now. */
    virtual bool isHidden() const { return m_path.isHidden(); }
    /** What it is, in full. */
    virtual QString getDescription() const { return m_path.getExpression(); }
    /** Who sent the messages; not known before the first. */
    const QString& getSender() const { return m_sender; }
    void setSender(const QString& sender) { m_sender = sender; }
    /** Whose values it was wished to have: one sender's, or each's when it is empty. */
    const Origin& getOrigin() const { return m_origin; }
    void setOrigin(const Origin& origin) { m_origin = origin; }
    /** What brings it back, see PlotPanel::plot(). */
    virtual QString getWish() const;
    /** The unit of what is drawn; may be empty. */
    QString getUnit() const;
    /** The unit of the field, or what else the values are of. */
    virtual QString getFieldUnit() const;
    /** What is drawn in place of the values. */
    void setFunction(PlotFunction::Kind function);
    PlotFunction::Kind getFunction() const { return m_function.getKind(); }
    /** The name of what is drawn, without the sender. */
    QString getName() const { return getOwnName() + m_function.getSuffix(); }
    /** The name of the values. */
    virtual QString getOwnName() const { return m_path.getName(); }
    /** The newest value as people read it, with unit. */
    QString getValueText() const;

    /** The value where its recording is being played, which may have leapt there; of what comes live the newest. */
    QString getCurrentText() const;
    /** The newest point that is not later than @p seconds; one without a value when there is none. */
    SeriesPoints::Point getPointAt(double seconds) const;
    /** Its value as people read it, with unit. */
    QString getValueTextAt(double seconds) const;

    /** Takes the value from @p message, which came at @p seconds since 1970 and has the field at @p path. Of a
     * recording that was read as a whole it is no point, but for what the recording went on with. */
    void add(const FieldPath& path, const Message* message, double seconds);

    /** Begins anew with the points of a whole recording, of which @p mostPoints are kept; add() gives none until
     * endRecording(). */
    void beginRecording(SourceSession* session, int mostPoints);
    void addRecorded(double seconds, double number);
    void endRecording();
    /** The recording that it is read of as a whole; null when it is not, or that is closed. */
    virtual SourceSession* getRecording() const { return m_recording; }
    /** Whether more points of it are still to come out of that. */
    bool isBeingRead() const { return m_isBeingRead; }
    /** Whether there were more points than are kept. */
    virtual bool isThinnedOut() const { return m_isThinnedOut; }

    /** With which time it is drawn at 0, in seconds since 1970: its start, or 0 when that is not to be. */
    double getShift() const { return m_shift; }
    void setSinceStart(bool sinceStart);
    /** When its first point came, or its recording began; NaN when there is none. */
    virtual double getStartTime() const;

    /** All the time that it has points of, or that its recording has, as it is drawn; false when there is none. */
    bool getTimes(double* from, double* to) const;

    const SeriesPoints& getPoints() const
    {
        return m_function.getKind() == PlotFunction::Values ? m_points : m_computed;
    }
    /** The values themselves, whatever is drawn of them. */
    const SeriesPoints& getValues() const { return m_points; }
    /** From when on getValues() is other than at the last call, but for what was added at its end; infinite where it
     * is not. */
    double takeChange();
    /** The time of the newest point; NaN while there is none. */
    double getLastTime() const { return m_lastTime; }
    quint64 getMessageCount() const { return m_count; }
    void clear();

protected:
    /** Adds a point that is no gap. */
    void append(const SeriesPoints::Point& point);
    /** Removes the points from that time on. */
    void removeFrom(double time);

private:
    bool isGap(double seconds);
    void addPoint(double seconds, double number);
    void compute();
    QString textOf(double number) const;

    FieldPath m_path;
    QString m_sender;
    Origin m_origin = {QString(), false};
    SeriesPoints m_points;
    PlotFunction m_function;
    SeriesPoints m_computed; // where it is not the values that are drawn
    FieldValue m_value;      // the newest, of a number
    double m_firstTime;
    double m_lastTime;
    double m_shift = 0;
    double m_changedFrom;  // see takeChange()
    double m_interval = 0; // usual seconds between messages; 0 while not known
    int m_gapsInARow = 0;
    quint64 m_count = 0;
    bool m_isRecorded = false;
    bool m_isBeingRead = false;
    bool m_isThinnedOut = false;
    QPointer<SourceSession> m_recording;
    int m_mostPoints = MostPoints;
};

#endif

#ifndef PLOTSERIES_H
#define PLOTSERIES_H

#include "customplot.h"
#include "desk.h"
#include "fieldpath.h"

/**
 * The values of one field of one sender over the last minutes.
 *
 * Every message gives a point. Where messages are missing or a value is not available, there is a point without a
 * value, so that no line is drawn across. At the limit, the older half is thinned out: of every four points the least
 * and the greatest stay.
 */
class PlotSeries
{
public:
    static const int MostPoints = 200000;
    /** Seconds that are kept. */
    static const int LongestTime = 3600;

    explicit PlotSeries(const FieldPath& path);

    const FieldPath& getPath() const { return m_path; }
    /** Who sent the messages; not known before the first. */
    const QString& getSender() const { return m_sender; }
    void setSender(const QString& sender) { m_sender = sender; }
    /** Whose values it was wished to have: one sender's, or each's when it is empty. */
    const Origin& getOrigin() const { return m_origin; }
    void setOrigin(const Origin& origin) { m_origin = origin; }
    /** What brings it back, see PlotPanel::plot(). */
    QString getWish() const;
    /** The unit of the values; may be empty. */
    QString getUnit() const;
    /** The newest value as people read it, with unit. */
    QString getValueText() const;

    /** Takes the field's value from @p message, which came at @p seconds since 1970. */
    void add(const Message* message, double seconds);

    /** Points in the order of time; those without a value are NaN. */
    const QSharedPointer<QCPGraphDataContainer>& getPoints() const { return m_points; }
    /** The time of the newest point; NaN while there is none. */
    double getLastTime() const { return m_lastTime; }
    quint64 getMessageCount() const { return m_count; }
    void clear();

private:
    bool isGap(double seconds);
    void thinOut();

    FieldPath m_path;
    QString m_sender;
    Origin m_origin = {QString(), false};
    QSharedPointer<QCPGraphDataContainer> m_points;
    FieldValue m_value; // the newest, of a number
    double m_lastTime;
    double m_interval = 0; // usual seconds between messages; 0 while not known
    int m_gapsInARow = 0;
    quint64 m_count = 0;
};

#endif

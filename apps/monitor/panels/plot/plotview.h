#ifndef PLOTVIEW_H
#define PLOTVIEW_H

#include "customplot.h"

#include <vector>

class PlotSeries;

/** Draws series over time: an axis for each unit, colours that everybody can tell apart, in the colours of the palette.
 */
class PlotView : public QCustomPlot
{
    Q_OBJECT

public:
    explicit PlotView(QWidget* parent = nullptr);

    /** Draws a series in the colour of that number, from 0. */
    void addSeries(const PlotSeries* series, int color);
    void removeSeries(const PlotSeries* series);
    QColor getColor(const PlotSeries* series) const;
    int getColorNumber(const PlotSeries* series) const { return m_graphs.value(series).color; }
    void swapColors(const PlotSeries* left, const PlotSeries* right);
    bool usesColor(int number) const;
    std::vector<const PlotSeries*> getSeries() const;
    /** Draws one series thicker than the others, and its axis however narrow the plot is; null for none. */
    void emphasize(const PlotSeries* series);

    /** The seconds from the left to the right. */
    double getSpan() const { return xAxis->range().size(); }
    /** Shows what lies between these times, in seconds, and fits the values. */
    void showTimes(double from, double to);
    /** Scales every axis to the values in the time that is shown. */
    void fitValues();
    /** The same, unless the user chose which values are shown. */
    void followValues();
    /** Shows a @p factor of the time that is shown, round the middle. */
    void zoom(double factor);

    /** Whether times are those since the start of each series, see PlotSeries::getShift(); else they are of the day.
     * All times of this class are such then. */
    void setSinceStart(bool sinceStart);
    /** Draws a line across at each of these times: where recordings are being played. */
    void setPositions(const QVector<double>& times);
    QVector<double> getPositions() const;
    /** Whether a click goes to a time, see clicked(); else it takes hold of what is shown, as dragging does. */
    void setClickable(bool clickable) { m_isClickable = clickable; }
    /** Draws a line across at @p time, and a mark on each series at the value that it has then; NaN for none. */
    void setCursor(double time);
    /** The time that the mouse points at; NaN when it does not. */
    double getPointedTime() const;
    /** A time of day as the axis has it. */
    QString timeText(double time) const;
    /** Says something below the picture, such as that it is not complete. */
    void setNote(const QString& note);

    /** Whether the axis of time has texts. */
    void setTimesShown(bool shown);

    /** The axis of a unit; null when nothing of that unit is drawn. */
    QCPAxis* findAxis(const QString& unit) const;
    QCPGraph* findGraph(const PlotSeries* series) const { return m_graphs.value(series).graph; }

Q_SIGNALS:
    /** The user moved or zoomed what is shown. */
    void moved();
    /** The user clicked at a time, in seconds since 1970. */
    void clicked(double time);
    /** getPointedTime() changed. */
    void pointed();
    /** getColor() changed. */
    void colorsChanged();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    struct Drawn
    {
        QCPGraph* graph = nullptr;
        int color = 0;
    };

    QCPAxis* makeAxis(const QString& unit);
    void releaseAxes();
    void applyPalette();
    void arrangeAxes();
    void labelTimes();
    void takePoints();
    QCPItemStraightLine* addLineAcross();
    static void moveTo(QCPItemStraightLine* line, double time);

    QHash<const PlotSeries*, Drawn> m_graphs;
    const PlotSeries* m_emphasized = nullptr;
    QList<QPair<QString, QCPAxis*>> m_axes; // by unit, in the order in which they came
    QList<QCPItemStraightLine*> m_positions;
    QCPItemStraightLine* m_cursor;
    QHash<const PlotSeries*, QCPItemTracer*> m_marks; // where the cursor crosses
    QString m_note;
    QPoint m_pressed;
    int m_pointed = -1; // the column where the mouse points
    bool m_isSinceStart = false;
    bool m_areTimesShown = true;
    bool m_isClickable = false;
    bool m_mayBeClick = false;
    bool m_areValuesChosen = false; // by the user
};

#endif

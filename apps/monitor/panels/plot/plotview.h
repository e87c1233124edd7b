#ifndef PLOTVIEW_H
#define PLOTVIEW_H

#include "customplot.h"

class PlotSeries;

/** Draws series over time: an axis for each unit, colours that everybody can tell apart, in the colours of the palette.
 */
class PlotView : public QCustomPlot
{
    Q_OBJECT

public:
    explicit PlotView(QWidget* parent = nullptr);

    void addSeries(const PlotSeries* series);
    void removeSeries(const PlotSeries* series);
    QColor getColor(const PlotSeries* series) const;
    /** Draws one series thicker than the others, and its axis however narrow the plot is; null for none. */
    void emphasize(const PlotSeries* series);

    /** The seconds from the left to the right. */
    double getSpan() const { return xAxis->range().size(); }
    /** Shows what lies between these times, in seconds since 1970, and fits the values. */
    void showTimes(double from, double to);
    /** Scales every axis to the values in the time that is shown. */
    void fitValues();
    /** Shows a @p factor of the time that is shown, round the middle. */
    void zoom(double factor);

    /** The axis of a unit; null when nothing of that unit is drawn. */
    QCPAxis* findAxis(const QString& unit) const;
    QCPGraph* findGraph(const PlotSeries* series) const { return m_graphs.value(series).graph; }

Q_SIGNALS:
    /** The user moved or zoomed what is shown. */
    void moved();
    /** getColor() changed. */
    void colorsChanged();

protected:
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
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

    QHash<const PlotSeries*, Drawn> m_graphs;
    const PlotSeries* m_emphasized = nullptr;
    QList<QPair<QString, QCPAxis*>> m_axes; // by unit, in the order in which they came
};

#endif

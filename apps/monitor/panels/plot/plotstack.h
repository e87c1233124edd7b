#ifndef PLOTSTACK_H
#define PLOTSTACK_H

#include "plotview.h"

#include <QSplitter>

#include <vector>

/**
 * Plots below one another with one time axis, each with series of its own.
 *
 * There is always one at least, the first; others come when a series is put there and go with their last one.
 */
class PlotStack : public QSplitter
{
    Q_OBJECT

public:
    explicit PlotStack(QWidget* parent = nullptr);
    ~PlotStack() override;

    int getCount() const { return int(m_views.size()); }
    /** The plot number @p place, from above; there is one. */
    PlotView* getView(int place = 0) const { return m_views[std::size_t(place)]; }
    /** The plot at a place of this widget. */
    int findPlace(const QPoint& position) const;

    /** Draws a series in the plot @p place, or in a new one below the others when there are not as many. */
    void addSeries(const PlotSeries* series, int place);
    void removeSeries(const PlotSeries* series);
    /** Draws it in another plot, in the same colour. */
    void moveSeries(const PlotSeries* series, int place);
    /** Gives each of two series in one plot the colour of the other. */
    void swapColors(const PlotSeries* left, const PlotSeries* right);
    /** In which plot a series is drawn. */
    int getPlace(const PlotSeries* series) const;
    /** Whether it is drawn with others. */
    bool hasCompany(const PlotSeries* series) const;

    // See PlotView; of all of them.
    void emphasize(const PlotSeries* series);
    void showTimes(double from, double to);
    void followValues();
    void setPositions(const QVector<double>& times);
    void setClickable(bool clickable);
    void setSinceStart(bool sinceStart);
    void setNote(const QString& note);
    void setCursor(double time);
    double getPointedTime() const;
    void replot();

Q_SIGNALS:
    void moved();
    void clicked(double time);
    void pointed();
    void colorsChanged();

private:
    int freeColor() const;
    PlotView* addView();
    void removeEmpty();
    void share(const PlotView* from);

    std::vector<PlotView*> m_views;
    QCPMarginGroup* m_margins; // so that the same time stands below itself
    bool m_isSharing = false;
    bool m_isSinceStart = false;
};

#endif

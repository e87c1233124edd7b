#include "plotstack.h"

#include "plotseries.h"

#include <algorithm>
#include <cmath>

static const int LeastHeight = 60;

PlotStack::PlotStack(QWidget* parent)
    : QSplitter(Qt::Vertical, parent)
    , m_margins(nullptr)
{
    setChildrenCollapsible(false);
    addView();
}

// With the first plot goes what aligns the others.
PlotStack::~PlotStack()
{
    while (m_views.size() > 1) {
        delete m_views.back();
        m_views.pop_back();
    }
}

PlotView* PlotStack::addView()
{
    PlotView* const view = new PlotView;
    view->setMinimumSize(160, LeastHeight);
    view->setAccessibleName(m_views.empty() ? tr("Plot") : tr("Plot %1").arg(m_views.size() + 1));
    if (!m_margins)
        m_margins = new QCPMarginGroup(view);
    view->axisRect()->setMarginGroup(QCP::msLeft | QCP::msRight, m_margins);
    if (!m_views.empty()) {
        m_views.back()->setTimesShown(false);
        view->xAxis->setRange(m_views.front()->xAxis->range());
    }
    view->setSinceStart(m_isSinceStart);
    m_views.push_back(view);
    addWidget(view);
    QList<int> heights = QVector<int>(getCount(), height() / getCount()).toList();
    heights.last() += 3 * fontMetrics().height(); // of the axis
    setSizes(heights);
    connect(view->xAxis, QOverload<const QCPRange&>::of(&QCPAxis::rangeChanged), this, [this, view]() { share(view); });
    connect(view, &PlotView::moved, this, &PlotStack::moved);
    connect(view, &PlotView::clicked, this, &PlotStack::clicked);
    connect(view, &PlotView::pointed, this, &PlotStack::pointed);
    connect(view, &PlotView::colorsChanged, this, &PlotStack::colorsChanged);
    return view;
}

/** Shows the time that one of them shows in the others. */
void PlotStack::share(const PlotView* from)
{
    if (m_isSharing)
        return;
    m_isSharing = true;
    for (PlotView* const view : m_views) {
        if (view == from)
            continue;
        view->xAxis->setRange(from->xAxis->range());
        view->fitValues();
        view->QCustomPlot::replot(QCustomPlot::rpQueuedReplot);
    }
    m_isSharing = false;
}

int PlotStack::findPlace(const QPoint& position) const
{
    for (int i = 0; i < getCount(); ++i)
        if (getView(i)->geometry().bottom() >= position.y())
            return i;
    return getCount() - 1;
}

int PlotStack::getPlace(const PlotSeries* series) const
{
    for (int i = 0; i < getCount(); ++i)
        if (getView(i)->findGraph(series))
            return i;
    return 0;
}

bool PlotStack::hasCompany(const PlotSeries* series) const
{
    return getView(getPlace(series))->graphCount() > 1;
}

int PlotStack::freeColor() const
{
    int color = 0;
    const auto isUsed = [&](const PlotView* view) { return view->usesColor(color); };
    while (std::any_of(m_views.begin(), m_views.end(), isUsed))
        ++color;
    return color;
}

void PlotStack::addSeries(const PlotSeries* series, int place)
{
    const int color = freeColor();
    PlotView* const view = place < getCount() ? getView(place) : addView();
    view->addSeries(series, color);
}

void PlotStack::removeSeries(const PlotSeries* series)
{
    getView(getPlace(series))->removeSeries(series);
    removeEmpty();
}

void PlotStack::moveSeries(const PlotSeries* series, int place)
{
    PlotView* const before = getView(getPlace(series));
    const int color = before->getColorNumber(series);
    PlotView* const view = place < getCount() ? getView(place) : addView();
    before->removeSeries(series);
    view->addSeries(series, color);
    removeEmpty();
    for (PlotView* const one : m_views)
        one->fitValues();
}

void PlotStack::swapColors(const PlotSeries* left, const PlotSeries* right)
{
    getView(getPlace(left))->swapColors(left, right);
}

void PlotStack::removeEmpty()
{
    for (std::size_t i = 0; i < m_views.size() && m_views.size() > 1;) {
        if (m_views[i]->graphCount() > 0) {
            ++i;
            continue;
        }
        // The first stays, and gets what the second has.
        const std::size_t gone = i == 0 ? 1 : i;
        const std::vector<const PlotSeries*> series = m_views[gone]->getSeries();
        for (const PlotSeries* const one : series) {
            const int color = m_views[gone]->getColorNumber(one);
            m_views[gone]->removeSeries(one);
            m_views[0]->addSeries(one, color);
        }
        delete m_views[gone];
        m_views.erase(m_views.begin() + std::ptrdiff_t(gone));
    }
    m_views.back()->setTimesShown(true);
}

void PlotStack::emphasize(const PlotSeries* series)
{
    for (PlotView* const view : m_views)
        view->emphasize(series && view->findGraph(series) ? series : nullptr);
}

void PlotStack::showTimes(double from, double to)
{
    m_isSharing = true;
    for (PlotView* const view : m_views)
        view->showTimes(from, to);
    m_isSharing = false;
}

void PlotStack::followValues()
{
    for (PlotView* const view : m_views)
        view->followValues();
}

void PlotStack::setPositions(const QVector<double>& times)
{
    for (PlotView* const view : m_views)
        view->setPositions(times);
}

void PlotStack::setClickable(bool clickable)
{
    for (PlotView* const view : m_views)
        view->setClickable(clickable);
}

void PlotStack::setSinceStart(bool sinceStart)
{
    m_isSinceStart = sinceStart;
    for (PlotView* const view : m_views)
        view->setSinceStart(sinceStart);
}

void PlotStack::setNote(const QString& note)
{
    for (PlotView* const view : m_views)
        view->setNote(note);
}

void PlotStack::setCursor(double time)
{
    for (PlotView* const view : m_views)
        view->setCursor(time);
}

double PlotStack::getPointedTime() const
{
    for (const PlotView* const view : m_views)
        if (!std::isnan(view->getPointedTime()))
            return view->getPointedTime();
    return std::nan("");
}

void PlotStack::replot()
{
    for (PlotView* const view : m_views)
        view->QCustomPlot::replot(QCustomPlot::rpQueuedReplot);
}

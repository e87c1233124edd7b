#include "plotview.h"

#include "plotseries.h"

#include <QEvent>

#include <cmath>

// Colours that also people who see few colours tell apart; from the ninth series on, lines are dashed as well.
static const QRgb seriesColors[] = {0x0072b2, 0xd55e00, 0x009e73, 0xcc79a7, 0x56b4e9, 0xe69f00, 0x7f6fc9, 0x8a8a00};
static const int ColorCount = int(sizeof seriesColors / sizeof seriesColors[0]);
static const int FewPoints = 300; // so few are drawn with a dot each: points between gaps have no line
static const double LeastSpan = 0.01;
static const int LeastLightness = 130; // of lines on a dark ground
static const int MostAxesPercent = 45; // of the width

PlotView::PlotView(QWidget* parent)
    : QCustomPlot(parent)
{
    QSharedPointer<QCPAxisTickerDateTime> ticker(new QCPAxisTickerDateTime);
    ticker->setDateTimeSpec(Qt::UTC);
    ticker->setDateTimeFormat(QLatin1String("HH:mm:ss"));
    xAxis->setTicker(ticker);
    yAxis->setVisible(false);
    yAxis->grid()->setVisible(true);
    setInteraction(QCP::iRangeDrag, true);
    setNoAntialiasingOnDrag(true);
    selectionRect()->setPen(QPen(Qt::gray, 1, Qt::DashLine));
    connect(xAxis, QOverload<const QCPRange&>::of(&QCPAxis::rangeChanged), this, &PlotView::labelTimes);
    applyPalette();
}

QCPAxis* PlotView::findAxis(const QString& unit) const
{
    for (const auto& axis : m_axes)
        if (axis.first == unit)
            return axis.second;
    return nullptr;
}

QCPAxis* PlotView::makeAxis(const QString& unit)
{
    // In turns on the left and on the right, so that each stays near.
    QCPAxis* axis = yAxis;
    if (!m_axes.isEmpty())
        axis = axisRect()->addAxis(m_axes.size() % 2 ? QCPAxis::atRight : QCPAxis::atLeft);
    axis->setVisible(true);
    axis->setLabel(unit.isEmpty() ? tr("without unit") : unit);
    m_axes.append({unit, axis});
    applyPalette();
    return axis;
}

// The first axis belongs to the plot and carries its grid, so it is handed on instead of removed.
void PlotView::releaseAxes()
{
    for (int i = int(m_axes.size()) - 1; i >= 0; --i) {
        QCPAxis* const axis = m_axes.at(i).second;
        if (!axis->graphs().isEmpty())
            continue;
        if (axis != yAxis) {
            axisRect()->removeAxis(axis);
            m_axes.removeAt(i);
            continue;
        }
        if (m_axes.size() == 1) {
            m_axes.clear();
            yAxis->setVisible(false);
            continue;
        }
        const auto other = m_axes.at(i == 0 ? 1 : 0);
        const QList<QCPGraph*> graphs = other.second->graphs();
        for (QCPGraph* graph : graphs)
            graph->setValueAxis(yAxis);
        yAxis->setLabel(other.second->label());
        yAxis->setRange(other.second->range());
        axisRect()->removeAxis(other.second);
        m_axes.removeAll(other);
        m_axes[m_axes.indexOf({m_axes.at(0).first, yAxis})].first = other.first;
    }
}

void PlotView::addSeries(const PlotSeries* series)
{
    QCPAxis* axis = findAxis(series->getUnit());
    if (!axis)
        axis = makeAxis(series->getUnit());
    int color = 0;
    const auto isUsed = [this](int number) {
        for (const Drawn& drawn : std::as_const(m_graphs))
            if (drawn.color == number)
                return true;
        return false;
    };
    while (isUsed(color))
        ++color;
    QCPGraph* const graph = addGraph(xAxis, axis);
    graph->setData(series->getPoints());
    graph->setAdaptiveSampling(true);
    m_graphs.insert(series, Drawn{graph, color});
    emphasize(m_emphasized);
}

void PlotView::removeSeries(const PlotSeries* series)
{
    if (QCPGraph* const graph = m_graphs.take(series).graph)
        removeGraph(graph);
    releaseAxes();
    if (series == m_emphasized)
        m_emphasized = nullptr;
    arrangeAxes();
}

QColor PlotView::getColor(const PlotSeries* series) const
{
    const QColor color(seriesColors[m_graphs.value(series).color % ColorCount]);
    if (palette().color(QPalette::Base).lightness() > 127 || color.lightness() > LeastLightness)
        return color;
    return QColor::fromHsl(color.hslHue(), color.hslSaturation(), LeastLightness);
}

void PlotView::emphasize(const PlotSeries* series)
{
    for (auto drawn = m_graphs.constBegin(); drawn != m_graphs.constEnd(); ++drawn) {
        QPen pen(getColor(drawn.key()), drawn.key() == series ? 2.5 : 1.3);
        if (drawn->color >= ColorCount)
            pen.setStyle(drawn->color >= 2 * ColorCount ? Qt::DotLine : Qt::DashLine);
        drawn->graph->setPen(pen);
    }
    m_emphasized = series;
    arrangeAxes();
}

// As many axes as leave the lines their room, and as many marks on them as can be read.
void PlotView::arrangeAxes()
{
    const QFontMetrics metrics = fontMetrics();
    const int axisWidth = metrics.horizontalAdvance(QLatin1String("-00000")) + metrics.height() + 12;
    const int most = qMax(1, width() * MostAxesPercent / 100 / axisWidth);
    const QCPGraph* const emphasized = m_graphs.value(m_emphasized).graph;
    int shown = 1; // the first one always is, as it carries the grid
    if (emphasized && emphasized->valueAxis() != yAxis)
        ++shown;
    const int marks = qMax(2, height() / (metrics.height() * 5 / 2) - 2);
    for (const auto& axis : std::as_const(m_axes)) {
        const bool isEmphasized = emphasized && emphasized->valueAxis() == axis.second;
        if (axis.second != yAxis)
            axis.second->setVisible(isEmphasized || shown++ < most);
        axis.second->ticker()->setTickCount(qMin(6, marks));
        // Of several axes, one that belongs to a single line tells so by its colour.
        QColor color = palette().color(QPalette::Text);
        if (m_axes.size() > 1 && axis.second->graphs().size() == 1)
            color = axis.second->graphs().first()->pen().color();
        axis.second->setLabelColor(color);
        axis.second->setTickLabelColor(color);
    }
    const int room = width() - qMin<int>(int(m_axes.size()), qMax(shown, most)) * axisWidth;
    xAxis->ticker()->setTickCount(qBound(1, room / (metrics.horizontalAdvance(QLatin1String("00:00:00")) * 7 / 4), 8));
}

void PlotView::resizeEvent(QResizeEvent* event)
{
    arrangeAxes();
    QCustomPlot::resizeEvent(event);
}

void PlotView::showTimes(double from, double to)
{
    if (to - from >= LeastSpan)
        xAxis->setRange(from, to);
    fitValues();
}

void PlotView::fitValues()
{
    for (const auto& axis : std::as_const(m_axes)) {
        QCPRange all(0, 0);
        bool any = false;
        const QList<QCPGraph*> graphs = axis.second->graphs();
        for (QCPGraph* graph : graphs) {
            bool found = false;
            const QCPRange range = graph->getValueRange(found, QCP::sdBoth, xAxis->range());
            if (found && any)
                all.expand(range);
            else if (found)
                all = range;
            any = any || found;
            const auto points = graph->data();
            const auto count = points->findEnd(xAxis->range().upper) - points->findBegin(xAxis->range().lower);
            graph->setScatterStyle(count < FewPoints ? QCPScatterStyle(QCPScatterStyle::ssDisc, 4)
                                                     : QCPScatterStyle(QCPScatterStyle::ssNone));
        }
        if (!any)
            continue;
        // A little room, so that a line never hides on the frame; a value that stays the same lies in the middle.
        const double room = all.size() > 0 ? all.size() * 0.06 : qMax(1e-3, std::fabs(all.lower) * 0.1);
        axis.second->setRange(all.lower - room, all.upper + room);
    }
}

void PlotView::zoom(double factor)
{
    if (getSpan() * factor < LeastSpan)
        return;
    xAxis->scaleRange(factor);
    fitValues();
    replot(QCustomPlot::rpQueuedReplot);
}

void PlotView::labelTimes()
{
    const QDateTime end = QDateTime::fromMSecsSinceEpoch(qint64(xAxis->range().upper * 1000), Qt::UTC);
    xAxis->setLabel(m_graphs.isEmpty() ? QString() : tr("%1 UTC").arg(end.toString(QLatin1String("yyyy-MM-dd"))));
    const auto ticker = xAxis->ticker().dynamicCast<QCPAxisTickerDateTime>();
    if (ticker)
        ticker->setDateTimeFormat(QLatin1String(getSpan() < 5 ? "HH:mm:ss.zzz" : "HH:mm:ss"));
}

void PlotView::mousePressEvent(QMouseEvent* event)
{
    const bool rectangle = event->modifiers() & Qt::ShiftModifier;
    setSelectionRectMode(rectangle ? QCP::srmZoom : QCP::srmNone);
    QList<QCPAxis*> all = {xAxis};
    for (const auto& axis : std::as_const(m_axes))
        all.append(axis.second);
    axisRect()->setRangeZoomAxes(all);
    axisRect()->setRangeDragAxes(all);
    QCustomPlot::mousePressEvent(event);
    if (!m_graphs.isEmpty() && event->button() == Qt::LeftButton)
        Q_EMIT moved();
}

void PlotView::wheelEvent(QWheelEvent* event)
{
    if (event->angleDelta().y() == 0 || m_graphs.isEmpty())
        return;
    const double factor = std::pow(0.85, event->angleDelta().y() / 120.0);
    if (getSpan() * factor >= LeastSpan) {
        Q_EMIT moved();
        xAxis->scaleRange(factor, xAxis->pixelToCoord(event->position().x()));
        fitValues();
        replot(QCustomPlot::rpQueuedReplot);
    }
    event->accept();
}

void PlotView::changeEvent(QEvent* event)
{
    QCustomPlot::changeEvent(event);
    if (event->type() == QEvent::PaletteChange || event->type() == QEvent::FontChange) {
        applyPalette();
        emphasize(m_emphasized); // in the colours for the palette
        Q_EMIT colorsChanged();
        replot(QCustomPlot::rpQueuedReplot);
    }
}

void PlotView::applyPalette()
{
    const QColor text = palette().color(QPalette::Text);
    QColor grid = text;
    grid.setAlpha(50);
    setBackground(palette().brush(QPalette::Base));
    const QList<QCPAxis*> all = axisRect()->axes();
    for (QCPAxis* axis : all) {
        axis->setBasePen(text);
        axis->setTickPen(text);
        axis->setSubTickPen(grid);
        axis->setTickLabelColor(text);
        axis->setLabelColor(text);
        axis->setTickLabelFont(font());
        axis->setLabelFont(font());
        axis->grid()->setPen(QPen(grid, 1, Qt::DotLine));
        axis->grid()->setZeroLinePen(QPen(grid, 1));
    }
}

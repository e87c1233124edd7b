#include "plotview.h"

#include "plotseries.h"

#include <QApplication>
#include <QEvent>

#include <algorithm>
#include <cmath>

// Colours that also people who see few colours tell apart; from the ninth series on, lines are dashed as well.
static const QRgb seriesColors[] = {0x0072b2, 0xd55e00, 0x009e73, 0xcc79a7, 0x56b4e9, 0xe69f00, 0x7f6fc9, 0x8a8a00};
static const int ColorCount = int(sizeof seriesColors / sizeof seriesColors[0]);
static const int FewPoints = 300;   // so few are drawn with a dot each: points between gaps have no line
static const int LeastDistance = 8; // in pixels, of dots that can be told apart
static const double LeastSpan = 0.01;
static const int LeastLightness = 130; // of lines on a dark ground
static const int MostAxesPercent = 45; // of the width
static const double PositionWidth = 1.5;
static const double LineWidth = 1.3;
static const double EmphasizedWidth = 2.5;
static const int FewSegments = 1000; // as many as can be drawn in any width

PlotView::PlotView(QWidget* parent)
    : QCustomPlot(parent)
{
    setSinceStart(false);
    yAxis->setVisible(false);
    yAxis->grid()->setVisible(true);
    setInteraction(QCP::iRangeDrag, true);
    setPlottingHint(QCP::phFastPolylines, true);
    setNoAntialiasingOnDrag(true);
    selectionRect()->setPen(QPen(Qt::gray, 1, Qt::DashLine));
    connect(xAxis, QOverload<const QCPRange&>::of(&QCPAxis::rangeChanged), this, &PlotView::labelTimes);
    connect(this, &QCustomPlot::beforeReplot, this, &PlotView::takePoints);
    setMouseTracking(true);
    m_cursor = addLineAcross();
    m_cursor->setLayer(QLatin1String("overlay")); // which is drawn without the rest
    m_cursor->setVisible(false);
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

void PlotView::addSeries(const PlotSeries* series, int color)
{
    QCPAxis* axis = findAxis(series->getUnit());
    if (!axis)
        axis = makeAxis(series->getUnit());
    QCPGraph* const graph = addGraph(xAxis, axis);
    graph->setAdaptiveSampling(false); // see takePoints()
    m_graphs.insert(series, Drawn{graph, color});
    emphasize(m_emphasized);
}

void PlotView::removeSeries(const PlotSeries* series)
{
    if (QCPItemTracer* const mark = m_marks.take(series))
        removeItem(mark);
    if (QCPGraph* const graph = m_graphs.take(series).graph)
        removeGraph(graph);
    releaseAxes();
    if (series == m_emphasized)
        m_emphasized = nullptr;
    arrangeAxes();
}

void PlotView::swapColors(const PlotSeries* left, const PlotSeries* right)
{
    std::swap(m_graphs[left].color, m_graphs[right].color);
    emphasize(m_emphasized);
}

bool PlotView::usesColor(int number) const
{
    for (const Drawn& drawn : std::as_const(m_graphs))
        if (drawn.color == number)
            return true;
    return false;
}

std::vector<const PlotSeries*> PlotView::getSeries() const
{
    std::vector<const PlotSeries*> series;
    for (auto drawn = m_graphs.constBegin(); drawn != m_graphs.constEnd(); ++drawn)
        series.push_back(drawn.key());
    return series;
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
        QPen pen(getColor(drawn.key()), drawn.key() == series ? EmphasizedWidth : LineWidth);
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
        if (axis.second != yAxis) {
            axis.second->setVisible(isEmphasized || shown < most);
            shown += !isEmphasized && shown < most ? 1 : 0;
        }
        axis.second->ticker()->setTickCount(qMin(6, marks));
        // Of several axes, one that belongs to a single line tells so by its colour.
        QColor color = palette().color(QPalette::Text);
        if (m_axes.size() > 1 && axis.second->graphs().size() == 1)
            color = axis.second->graphs().first()->pen().color();
        axis.second->setLabelColor(color);
        axis.second->setTickLabelColor(color);
    }
    const int room = width() - shown * axisWidth;
    xAxis->ticker()->setTickCount(qBound(1, room / (metrics.horizontalAdvance(QLatin1String("00:00:00")) * 7 / 4), 8));
}

void PlotView::resizeEvent(QResizeEvent* event)
{
    arrangeAxes();
    labelTimes();
    QCustomPlot::resizeEvent(event);
}

void PlotView::showTimes(double from, double to)
{
    if (to - from >= LeastSpan)
        xAxis->setRange(from, to);
    fitValues();
}

/** Gives the graphs what this picture needs of their series. */
void PlotView::takePoints()
{
    const QCPRange times = xAxis->range();
    for (auto drawn = m_graphs.constBegin(); drawn != m_graphs.constEnd(); ++drawn) {
        const SeriesPoints& points = drawn.key()->getPoints();
        const double shift = drawn.key()->getShift();
        QVector<QCPGraphData> data;
        for (const SeriesPoints::Point& point :
             points.reduce(times.lower + shift, times.upper + shift, axisRect()->width()))
            data.append(QCPGraphData(point.time - shift, point.value));
        drawn->graph->data()->set(data, true);
        // A wider pen takes a hundred times as long, and nobody sees it where the lines are dense.
        QPen pen = drawn->graph->pen();
        pen.setWidthF(data.size() > FewSegments ? 1 : drawn.key() == m_emphasized ? EmphasizedWidth : LineWidth);
        drawn->graph->setPen(pen);
        const qint64 first = points.findNotBefore(times.lower + shift);
        const qint64 count = points.findAfter(times.upper + shift) - first;
        if (count <= 0 || count >= FewPoints) {
            drawn->graph->setScatterStyle(QCPScatterStyle::ssNone);
            continue;
        }
        // One between two gaps is seen as well; discs that touch would only be a thick line.
        const double room = (points.at(first + count - 1).time - points.at(first).time) / times.size();
        const bool isLoose = room * axisRect()->width() >= double(count - 1) * LeastDistance;
        drawn->graph->setScatterStyle(isLoose ? QCPScatterStyle(QCPScatterStyle::ssDisc, 4)
                                              : QCPScatterStyle(QCPScatterStyle::ssDot));
    }
}

void PlotView::followValues()
{
    if (!m_areValuesChosen)
        fitValues();
}

void PlotView::fitValues()
{
    m_areValuesChosen = false;
    for (const auto& axis : std::as_const(m_axes)) {
        QCPRange all(0, 0);
        bool any = false;
        for (auto drawn = m_graphs.constBegin(); drawn != m_graphs.constEnd(); ++drawn) {
            if (drawn->graph->valueAxis() != axis.second)
                continue;
            const SeriesPoints& points = drawn.key()->getPoints();
            const QCPRange times = xAxis->range() + drawn.key()->getShift();
            const SeriesPoints::Extremes extremes =
                points.getExtremes(points.findNotBefore(times.lower), points.findAfter(times.upper));
            const QCPRange range(extremes.least, extremes.greatest);
            if (extremes.any && any)
                all.expand(range);
            else if (extremes.any)
                all = range;
            any = any || extremes.any;
        }
        if (!any)
            continue;
        // A little room, so that a line never hides on the frame; a value that stays the same lies in the middle.
        const double room = all.size() > 0 ? all.size() * 0.06 : qMax(1e-3, std::fabs(all.lower) * 0.1);
        axis.second->setRange(all.lower - room, all.upper + room);
    }
}

void PlotView::setPositions(const QVector<double>& times)
{
    while (m_positions.size() > times.size())
        removeItem(m_positions.takeLast());
    while (m_positions.size() < times.size()) {
        m_positions.append(addLineAcross());
        m_positions.last()->setPen(QPen(palette().color(QPalette::Highlight), PositionWidth));
    }
    for (int i = 0; i < int(times.size()); ++i)
        moveTo(m_positions.at(i), times.at(i));
}

QCPItemStraightLine* PlotView::addLineAcross()
{
    QCPItemStraightLine* const line = new QCPItemStraightLine(this);
    line->point1->setTypeY(QCPItemPosition::ptAxisRectRatio);
    line->point2->setTypeY(QCPItemPosition::ptAxisRectRatio);
    line->setSelectable(false);
    return line;
}

void PlotView::moveTo(QCPItemStraightLine* line, double time)
{
    line->point1->setCoords(time, 0);
    line->point2->setCoords(time, 1);
}

void PlotView::setCursor(double time)
{
    m_cursor->setVisible(!std::isnan(time));
    if (!std::isnan(time))
        moveTo(m_cursor, time);
    for (auto drawn = m_graphs.constBegin(); drawn != m_graphs.constEnd(); ++drawn) {
        QCPItemTracer*& mark = m_marks[drawn.key()];
        if (!mark) {
            mark = new QCPItemTracer(this);
            mark->setLayer(QLatin1String("overlay"));
            mark->setStyle(QCPItemTracer::tsCircle);
            mark->setSelectable(false);
        }
        const double shift = drawn.key()->getShift();
        const SeriesPoints::Point point = drawn.key()->getPointAt(time + shift);
        mark->setVisible(m_cursor->visible() && !std::isnan(point.value));
        mark->setPen(QPen(getColor(drawn.key()), 2));
        mark->position->setAxes(xAxis, drawn->graph->valueAxis());
        mark->setClipAxisRect(axisRect());
        mark->position->setCoords(point.time - shift, point.value);
    }
    layer(QLatin1String("overlay"))->replot();
}

QVector<double> PlotView::getPositions() const
{
    QVector<double> times;
    for (const QCPItemStraightLine* line : m_positions)
        times.append(line->point1->coords().x());
    return times;
}

void PlotView::setTimesShown(bool shown)
{
    m_areTimesShown = shown;
    labelTimes();
}

double PlotView::getPointedTime() const
{
    return m_pointed < 0 || m_graphs.isEmpty() ? std::nan("") : xAxis->pixelToCoord(m_pointed);
}

QString PlotView::timeText(double time) const
{
    if (m_isSinceStart)
        return QStringLiteral("+%1 s").arg(time, 0, 'f', 3);
    return QDateTime::fromMSecsSinceEpoch(qint64(time * 1000), Qt::UTC).toString(QLatin1String("HH:mm:ss.zzz"));
}

void PlotView::setNote(const QString& note)
{
    m_note = note;
    labelTimes();
}

void PlotView::zoom(double factor)
{
    if (getSpan() * factor < LeastSpan)
        return;
    xAxis->scaleRange(factor);
    fitValues();
    replot(QCustomPlot::rpQueuedReplot);
}

void PlotView::setSinceStart(bool sinceStart)
{
    m_isSinceStart = sinceStart;
    if (sinceStart) {
        xAxis->setTicker(QSharedPointer<QCPAxisTickerTime>(new QCPAxisTickerTime));
    } else {
        QSharedPointer<QCPAxisTickerDateTime> ticker(new QCPAxisTickerDateTime);
        ticker->setDateTimeSpec(Qt::UTC);
        xAxis->setTicker(ticker);
    }
    arrangeAxes(); // as many marks as there is room for
    labelTimes();
}

void PlotView::labelTimes()
{
    const QDateTime end = QDateTime::fromMSecsSinceEpoch(qint64(xAxis->range().upper * 1000), Qt::UTC);
    QString label =
        m_isSinceStart ? tr("since the start") : tr("%1 UTC").arg(end.toString(QLatin1String("yyyy-MM-dd")));
    // Before anything came there is no day.
    const bool any = std::any_of(m_graphs.keyBegin(), m_graphs.keyEnd(),
                                 [](const PlotSeries* series) { return !series->getPoints().isEmpty(); });
    xAxis->setTickLabels(m_areTimesShown && any);
    if (!any)
        label = m_note;
    else if (!m_note.isEmpty())
        label += QStringLiteral("  \u00b7  ") + m_note;
    label = fontMetrics().elidedText(label, Qt::ElideRight, width());
    xAxis->setLabel(m_graphs.isEmpty() || !m_areTimesShown ? QString() : label);
    const bool isShort = getSpan() < 5;
    if (const auto ticker = xAxis->ticker().dynamicCast<QCPAxisTickerDateTime>())
        ticker->setDateTimeFormat(QLatin1String(isShort ? "HH:mm:ss.zzz" : "HH:mm:ss"));
    else if (const auto since = xAxis->ticker().dynamicCast<QCPAxisTickerTime>())
        since->setTimeFormat(QLatin1String(isShort ? "%h:%m:%s.%z" : "%h:%m:%s"));
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
    m_pressed = event->pos();
    m_mayBeClick = m_isClickable && !rectangle && event->button() == Qt::LeftButton;
    if (!m_graphs.isEmpty() && event->button() == Qt::LeftButton && !m_mayBeClick)
        Q_EMIT moved();
}

void PlotView::mouseMoveEvent(QMouseEvent* event)
{
    if (m_mayBeClick && (event->pos() - m_pressed).manhattanLength() < QApplication::startDragDistance())
        return;
    if (m_mayBeClick) {
        m_mayBeClick = false;
        Q_EMIT moved();
    }
    m_areValuesChosen = m_areValuesChosen || (event->buttons() & Qt::LeftButton);
    QCustomPlot::mouseMoveEvent(event);
    const bool isInside = axisRect()->rect().contains(event->pos()) && event->buttons() == Qt::NoButton;
    m_pointed = isInside ? event->pos().x() : -1;
    Q_EMIT pointed();
}

void PlotView::leaveEvent(QEvent* event)
{
    QCustomPlot::leaveEvent(event);
    m_pointed = -1;
    Q_EMIT pointed();
}

void PlotView::mouseReleaseEvent(QMouseEvent* event)
{
    QCustomPlot::mouseReleaseEvent(event);
    if (m_mayBeClick && event->button() == Qt::LeftButton && axisRect()->rect().contains(event->pos()))
        Q_EMIT clicked(xAxis->pixelToCoord(event->pos().x()));
    m_mayBeClick = false;
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
    for (QCPItemStraightLine* line : std::as_const(m_positions))
        line->setPen(QPen(palette().color(QPalette::Highlight), PositionWidth));
    m_cursor->setPen(QPen(text, 1, Qt::DashLine));
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

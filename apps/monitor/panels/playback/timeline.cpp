#include "timeline.h"

#include "playbacktime.h"

#include <QHelpEvent>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QSet>
#include <QSlider>
#include <QStyle>
#include <QStyleOptionSlider>
#include <QToolTip>

#include <algorithm>
#include <cmath>

static const int LaneHeight = 4;         // of gaps, damage and events
static const int MostTold = 3;           // of a kind in one tool tip
static const double LeastOpacity = 0.35; // of a gap
static const int Nearness = 3;           // pixels that somebody who points at a mark may be beside it

TimeLine::TimeLine(QSlider* slider, QWidget* parent)
    : QWidget(parent)
    , m_slider(slider)
{
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    setMouseTracking(true);
    setAccessibleName(tr("Time line of the recording"));
    setAccessibleDescription(tr("How many messages come when, and where there are gaps, damage and events"));
}

QSize TimeLine::sizeHint() const
{
    return QSize(200, fontMetrics().height() + 3 * LaneHeight);
}

void TimeLine::setContents(const Contents& contents)
{
    m_contents = contents;
    m_drawn = QPixmap();
    update();
}

void TimeLine::setPosition(qint64 time)
{
    if (m_position == time)
        return;
    m_position = time;
    update();
}

void TimeLine::changeEvent(QEvent* event)
{
    m_drawn = QPixmap(); // palette, font, style or language
    QWidget::changeEvent(event);
}

// The middle of the slider's handle goes from end to end of this.
QRect TimeLine::ground() const
{
    QStyleOptionSlider option;
    option.initFrom(m_slider);
    option.orientation = Qt::Horizontal;
    const int handle = m_slider->style()->pixelMetric(QStyle::PM_SliderLength, &option, m_slider);
    return rect().adjusted(handle / 2, 0, -(handle - handle / 2), 0);
}

qint64 TimeLine::timeAt(double x) const
{
    const QRect area = ground();
    const double part = qBound(0.0, (x - area.left()) / qMax(1, area.width()), 1.0);
    return m_contents.start + qint64(part * double(m_contents.end - m_contents.start));
}

double TimeLine::placeOf(qint64 time, const QRect& area) const
{
    const double length = qMax(1.0, double(m_contents.end - m_contents.start));
    return area.left() + area.width() * qBound(0.0, double(time - m_contents.start) / length, 1.0);
}

void TimeLine::moveSlider(int x)
{
    const QRect area = ground();
    const double part = qBound(0.0, double(x - area.left()) / qMax(1, area.width()), 1.0);
    m_slider->setSliderPosition(m_slider->minimum() + qRound(part * (m_slider->maximum() - m_slider->minimum())));
    setPosition(timeAt(x));
}

void TimeLine::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_slider->isEnabled())
        return;
    m_slider->setFocus(Qt::MouseFocusReason);
    m_slider->setSliderDown(true);
    moveSlider(event->pos().x());
}

void TimeLine::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_slider->isSliderDown())
        return;
    moveSlider(event->pos().x());
    QToolTip::showText(mapToGlobal(event->pos()), describe(event->pos().x()), this);
}

void TimeLine::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !m_slider->isSliderDown())
        return;
    moveSlider(event->pos().x());
    m_slider->setSliderDown(false); // which goes there
}

bool TimeLine::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QWidget::event(event);
    const QHelpEvent* const help = static_cast<QHelpEvent*>(event);
    QToolTip::showText(help->globalPos(), describe(help->pos().x()), this);
    return true;
}

/** How many there are in the bins between two times. */
static double countIn(const RecordingDensity::Curve& curve, qint64 from, qint64 to, double* seconds)
{
    double count = 0;
    *seconds = 0;
    for (std::size_t i = 0; i < curve.counts.size(); ++i) {
        const qint64 start = curve.start + qint64(i) * curve.width;
        if (start > to || start + curve.width <= from)
            continue;
        count += double(curve.counts[i]);
        *seconds += double(curve.width) / 1e6;
    }
    return count;
}

static QString rateText(const RecordingDensity::Curve& curve, qint64 from, qint64 to)
{
    double seconds = 0;
    const double count = countIn(curve, from, to, &seconds);
    const double rate = seconds > 0 ? count / seconds : 0;
    return seconds > 0 ? QLocale().toString(rate, 'f', rate > 0 && rate < 10 ? 1 : 0) : QString();
}

/** Tells the marks between two times, each as @p describe does. */
template <typename Describe>
static void tellMarks(const QVector<TimeLine::Mark>& marks, qint64 from, qint64 to, const Describe& describe,
                      QStringList* lines)
{
    int found = 0;
    for (const TimeLine::Mark& mark : marks) {
        if (mark.start > to)
            break;
        if (mark.end >= from && ++found <= MostTold)
            lines->append(describe(mark));
    }
    if (found > MostTold)
        lines->append(TimeLine::tr("and %1 more").arg(QLocale().toString(found - MostTold)));
}

QString TimeLine::describe(int x) const
{
    const qint64 time = timeAt(x);
    const qint64 from = timeAt(x - Nearness);
    const qint64 to = timeAt(x + Nearness);
    QStringList lines(
        tr("%1 UTC   %2").arg(PlaybackTime::clockText(time), PlaybackTime::lengthText(time - m_contents.start)));
    const QString all = rateText(m_contents.all, from, to);
    if (!all.isEmpty())
        lines.append(tr("%1 messages/s").arg(all));
    const QString chosen = rateText(m_contents.chosen, from, to);
    if (!chosen.isEmpty())
        lines.append(tr("%1: %2 /s", "type, rate").arg(m_contents.chosenName, chosen));
    const auto describeGap = [this](const Mark& gap) {
        const double length = double(gap.end - gap.start) / 1e6;
        return tr("gap of %1: %2 s").arg(m_contents.texts.value(gap.text), QLocale().toString(length, 'g', 4));
    };
    tellMarks(m_contents.gaps, from, to, describeGap, &lines);
    double seconds = 0;
    const double damaged = countIn(m_contents.damage, from, to, &seconds);
    if (damaged > 0)
        lines.append(tr("damaged: %1").arg(QLocale().toString(damaged, 'f', 0)));
    const auto describeEvent = [this](const Mark& event) { return m_contents.texts.value(event.text); };
    tellMarks(m_contents.events, from, to, describeEvent, &lines);
    if (m_contents.percent < 100)
        lines.append(tr("Looking through the recording: %1 %").arg(m_contents.percent));
    return lines.join(QLatin1Char('\n'));
}

/** The greatest rate in each pixel's time, as a part of the greatest of all. */
std::vector<double> TimeLine::heights(const RecordingDensity::Curve& curve) const
{
    const QRect area = ground();
    std::vector<double> all(std::size_t(qMax(0, area.width())), 0.0);
    if (curve.width <= 0)
        return all;
    for (std::size_t x = 0; x < all.size(); ++x) {
        const qint64 from = timeAt(area.left() + double(x)) - curve.start;
        const qint64 to = timeAt(area.left() + double(x) + 1) - curve.start;
        const qint64 last = qMin(qint64(curve.counts.size()) - 1, qMax(from, to - 1) / curve.width);
        for (qint64 bin = qMax<qint64>(0, from / curve.width); bin <= last; ++bin)
            all[x] = qMax(all[x], double(curve.counts[std::size_t(bin)]) / double(curve.width));
    }
    return all;
}

std::vector<double> TimeLine::missing() const
{
    const QRect area = ground();
    std::vector<double> all(std::size_t(qMax(0, area.width())), 0.0);
    QSet<int> kinds;
    for (const Mark& gap : m_contents.gaps) {
        kinds.insert(gap.text);
        const double from = placeOf(gap.start, area) - area.left();
        const double to = placeOf(gap.end, area) - area.left();
        for (int x = int(from); x < to && x < int(all.size()); ++x)
            all[std::size_t(x)] += qMin(to, x + 1.0) - qMax(from, double(x));
    }
    for (double& part : all)
        part = qMin(1.0, part / kinds.size());
    return all;
}

// Strong where much is missing: with thousands of gaps there is one in every pixel, which alone would say nothing.
void TimeLine::drawGaps(QPainter* painter, int y, int height, const QColor& colour) const
{
    QColor faint = colour;
    faint.setAlphaF(LeastOpacity);
    drawMarks(painter, m_contents.gaps, y, height, faint);
    const std::vector<double> parts = missing();
    for (std::size_t x = 0; x < parts.size(); ++x) {
        QColor strong = colour;
        strong.setAlphaF(std::sqrt(parts[x])); // the root, as of the hills
        painter->fillRect(ground().left() + int(x), y, 1, height, strong);
    }
}

void TimeLine::drawMarks(QPainter* painter, const QVector<Mark>& marks, int y, int height, const QColor& colour) const
{
    const QRect area = ground(); // once: it asks the style
    double drawn = -1;           // of many marks in one pixel, one is enough
    for (const Mark& mark : marks) {
        const double left = std::floor(placeOf(mark.start, area));
        const double right = qMax(left + 2, std::ceil(placeOf(mark.end, area)));
        if (right <= drawn)
            continue;
        painter->fillRect(QRectF(qMax(left, drawn), y, right - qMax(left, drawn), height), colour);
        drawn = right;
    }
}

void TimeLine::drawAll()
{
    const qreal ratio = devicePixelRatioF();
    m_drawn = QPixmap(size() * ratio);
    m_drawn.setDevicePixelRatio(ratio);
    m_drawn.fill(Qt::transparent);
    QPainter painter(&m_drawn);
    const QRect area = ground();
    const int bottom = height() - 3 * LaneHeight;
    painter.fillRect(QRect(area.left(), 0, area.width(), height()), palette().color(QPalette::Base));

    // The root, so that beside a burst the rest can be seen, too.
    const std::vector<double> all = heights(m_contents.all);
    const std::vector<double> chosen = heights(m_contents.chosen);
    const double most = all.empty() ? 0 : *std::max_element(all.begin(), all.end());
    QColor plain = Theme::faintText(palette());
    plain.setAlpha(110);
    for (std::size_t x = 0; most > 0 && x < all.size(); ++x) {
        const auto draw = [&](double rate, const QColor& colour) {
            const int tall = rate > 0 ? qMax(2, qRound(std::sqrt(qMin(1.0, rate / most)) * (bottom - 1))) : 0;
            painter.fillRect(area.left() + int(x), bottom - tall, 1, tall, colour);
        };
        draw(all[x], plain);
        draw(chosen[x], palette().color(QPalette::Highlight));
    }
    drawGaps(&painter, bottom, LaneHeight, Theme::accent(palette(), Theme::Warning));
    QVector<Mark> damage;
    for (std::size_t i = 0; i < m_contents.damage.counts.size(); ++i) {
        const qint64 start = m_contents.damage.start + qint64(i) * m_contents.damage.width;
        if (m_contents.damage.counts[i] > 0)
            damage.append({start, start, 0});
    }
    drawMarks(&painter, damage, bottom + LaneHeight, LaneHeight, Theme::accent(palette(), Theme::Bad));
    for (const Theme::Accent accent : {Theme::Waiting, Theme::Warning, Theme::Bad}) { // the worst in front
        QVector<Mark> events;
        std::copy_if(m_contents.events.cbegin(), m_contents.events.cend(), std::back_inserter(events),
                     [accent](const Mark& event) { return event.accent == accent; });
        drawMarks(&painter, events, bottom + 2 * LaneHeight, LaneHeight, Theme::accent(palette(), accent));
    }
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawLine(area.left(), bottom, area.right(), bottom);
}

void TimeLine::paintEvent(QPaintEvent*)
{
    if (m_drawn.isNull() || m_drawn.size() != size() * devicePixelRatioF())
        drawAll();
    QPainter painter(this);
    painter.drawPixmap(0, 0, m_drawn);
    if (m_position < m_contents.start || m_position > m_contents.end)
        return;
    painter.fillRect(QRectF(std::floor(placeOf(m_position, ground())), 0, 2, height()),
                     palette().color(QPalette::WindowText));
}

#include "plotpanel.h"

#include "csvfile.h"
#include "desk.h"
#include "message.h"
#include "plotlegend.h"
#include "plotseries.h"
#include "plotvalues.h"
#include "plotview.h"
#include "plotwishes.h"
#include "recordedlines.h"
#include "theme.h"

#include <QAction>
#include <QComboBox>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QSettings>
#include <QSplitter>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

static const int MostSeries = 24; // more than that nobody tells apart
static const int DefaultSpan = 60;
static const int WholeSpan = 0;
static const int SaidMilliseconds = 4000;
static const char RowMimeType[] = "application/x-qabstractitemmodeldatalist";

PlotPanel::PlotPanel(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_latest(desk->getLatest())
    , m_wishes(new PlotWishes(this, this))
    , m_recorded(new RecordedLines(desk, this))
    , m_use(new QAction(tr("P&lot"), this))
    , m_listener(desk->getTap(), [this](const Message* message) { processMessage(message); })
    , m_view(new PlotView)
    , m_legend(new PlotLegend)
    , m_splitter(new QSplitter)
    , m_bar(new QToolBar)
    , m_span(new QComboBox)
    , m_cursor(std::nan(""))
{
    createActions();
    createLegend();
    offerUse();
    m_view->setAccessibleName(tr("Plot"));
    m_view->setMinimumSize(160, 80);
    m_hint = new QLabel(tr("Drag a number from the message tree here, or choose Plot in its context menu (Ctrl+L)."));
    Theme::makeHint(m_hint);

    m_splitter->addWidget(m_view);
    m_splitter->addWidget(m_legend);
    m_splitter->setStretchFactor(0, 1);
    m_splitter->setChildrenCollapsible(false);
    connect(m_splitter, &QSplitter::splitterMoved, this, [this]() { m_legendIsSized = true; });
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_bar);
    layout->addWidget(m_hint, 1);
    layout->addWidget(m_splitter, 1);
    setAcceptDrops(true);

    connect(m_view, &PlotView::moved, this, [this]() { setPaused(true); });
    connect(m_view, &PlotView::pointed, this, &PlotPanel::followMouse);
    connect(m_view, &PlotView::clicked, m_recorded, &RecordedLines::goTo);
    followPreferences(desk->getPreferences());
    connect(desk, &Desk::senderRenamed, this, &PlotPanel::renameSender);
    connect(m_view, &PlotView::colorsChanged, this, &PlotPanel::updateNames);
    connect(&m_timer, &QTimer::timeout, this, &PlotPanel::refresh);
    m_timer.start();
    updateEmptiness();
}

PlotPanel::~PlotPanel() = default;

void PlotPanel::offerUse()
{
    m_use->setShortcut(QKeySequence(tr("Ctrl+L")));
    const auto take = [this](const FieldPath& path, const Origin& origin) {
        addField(path, origin);
        Q_EMIT m_desk->wanted(this);
    };
    m_desk->offerUse({QLatin1String("plot"), m_use, tr("Only numbers can be plotted."), take,
                      [this](const QString& expression) { plot(expression); }});
}

void PlotPanel::plot(const QString& expression)
{
    if (!m_wishes->add(expression))
        Q_EMIT m_desk->said(tr("%1 is plotted as soon as a source has it.").arg(expression), SaidMilliseconds);
    Q_EMIT m_desk->wanted(this);
}

void PlotPanel::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("plot"));
    m_wishes->saveSettings(settings);
    settings.endGroup();
}

void PlotPanel::restoreSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("plot"));
    m_wishes->restoreSettings(settings);
    settings.endGroup();
}

void PlotPanel::followPreferences(const Preferences& preferences)
{
    m_timer.setInterval(1000 / preferences.tickRate);
}

void PlotPanel::renew()
{
    m_wishes->followConfidentiality();
    m_recorded->renew();
    showValues();
}

void PlotPanel::createActions()
{
    const auto add = [this](const QString& text, const QString& toolTip, auto slot) {
        QAction* const action = m_bar->addAction(text, this, slot);
        action->setToolTip(toolTip);
        m_needSeries.append(action);
        return action;
    };
    m_pause = add(tr("Pause"), tr("Let the picture stay; what comes is kept (Space)"), [this]() { m_changed = true; });
    m_pause->setCheckable(true);
    m_pause->setShortcut(QKeySequence(Qt::Key_Space));
    m_pause->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(m_pause);
    const int spans[] = {5, 10, 30, DefaultSpan, 120, 300, 600, 1800};
    for (const int span : spans)
        m_span->addItem(span < 120 ? tr("%1 s").arg(span) : tr("%1 min").arg(span / 60), span);
    m_span->addItem(tr("All"), WholeSpan);
    m_span->setCurrentIndex(m_span->findData(DefaultSpan));
    m_span->setAccessibleName(tr("Time that is shown"));
    m_span->setToolTip(tr("How much time is shown"));
    connect(m_span, QOverload<int>::of(&QComboBox::activated), this, &PlotPanel::showLive);
    m_bar->addWidget(m_span);
    const auto addZoom = [this, &add](const QString& text, const QChar& sign, const QString& toolTip, double factor,
                                      QKeySequence::StandardKey key) {
        QAction* const action = add(text, toolTip, [this, factor]() {
            setPaused(true);
            m_view->zoom(factor);
        });
        action->setShortcut(key);
        action->setIconText(sign);
    };
    addZoom(tr("Zoom In"), QLatin1Char('+'), tr("Show less time (turn the wheel; Shift and drag shows a rectangle)"),
            0.5, QKeySequence::ZoomIn);
    addZoom(tr("Zoom Out"), QChar(0x2212), tr("Show more time"), 2, QKeySequence::ZoomOut);
    add(tr("Show All"), tr("Show all the time that is kept, and pause"), &PlotPanel::showEverything);
    m_bar->addSeparator();
    // What is rarer lies in menus, so that the bar fits a narrow dock.
    QMenu* const removal = new QMenu(this);
    m_needSeries.append(removal->addAction(tr("Remove All"), this, &PlotPanel::removeAll));
    add(tr("Remove"), tr("Remove the chosen series (Del)"), &PlotPanel::removeCurrent)->setMenu(removal);
    QMenu* const saving = new QMenu(this);
    saving->addAction(tr("Save Picture..."), this, &PlotPanel::savePicture);
    saving->addAction(tr("Save Values..."), this, &PlotPanel::saveValues);
    QAction* const save = add(tr("Save"), tr("Save the plot as a picture, or its values"), []() {});
    save->setMenu(saving);
    if (QToolButton* const button = qobject_cast<QToolButton*>(m_bar->widgetForAction(save)))
        button->setPopupMode(QToolButton::InstantPopup);
    const QList<QAction*> actions = m_bar->actions();
    for (QAction* action : actions)
        if (QWidget* const button = m_bar->widgetForAction(action))
            if (!action->text().isEmpty())
                button->setAccessibleName(action->text());
}

void PlotPanel::createLegend()
{
    connect(m_legend, &QTreeWidget::currentItemChanged, this, [this]() {
        m_view->emphasize(currentSeries());
        m_changed = true;
    });
    QAction* const remove = new QAction(tr("Remove"), m_legend);
    remove->setShortcut(QKeySequence::Delete);
    remove->setShortcutContext(Qt::WidgetShortcut);
    connect(remove, &QAction::triggered, this, &PlotPanel::removeCurrent);
    m_legend->addAction(remove);
    m_legend->setContextMenuPolicy(Qt::ActionsContextMenu);
}

bool PlotPanel::isPaused() const
{
    return m_pause->isChecked();
}

void PlotPanel::setPaused(bool paused)
{
    m_pause->setChecked(paused);
    m_changed = true;
}

PlotSeries* PlotPanel::currentSeries() const
{
    const int row = m_legend->indexOfTopLevelItem(m_legend->currentItem());
    return row >= 0 && row < int(m_series.size()) ? m_series[std::size_t(row)].get() : nullptr;
}

void PlotPanel::addField(const FieldPath& path, const Origin& origin)
{
    if (!path.getField() || path.isWholeRepeatedField() || path.isHidden())
        return;
    const bool ofEach = origin.sender.isEmpty();
    m_removed.erase(std::remove_if(m_removed.begin(), m_removed.end(),
                                   [&](const auto& removed) {
                                       return removed.first == path && (ofEach || removed.second == origin.sender);
                                   }),
                    m_removed.end());
    bool isDrawn = false;
    for (const auto& series : m_series) {
        if (!(series->getPath() == path))
            continue;
        if (ofEach)
            series->setOrigin(origin);
        isDrawn = isDrawn || ofEach || series->getSender() == origin.sender;
    }
    if (isDrawn || isDrawnOfEach(path)) {
        updateNames();
        return;
    }
    if (PlotSeries* const series = append(path, origin.sender))
        series->setOrigin(origin);
    else
        Q_EMIT m_desk->failed(tr("No more than %1 series can be plotted at a time.").arg(MostSeries));
    updateNames();
    updateTypes();
}

PlotSeries* PlotPanel::findOrAdd(const FieldPath& path, const QString& sender)
{
    for (const auto& series : m_series) {
        if (!(series->getPath() == path))
            continue;
        if (series->getMessageCount() == 0 && series->getOrigin().sender.isEmpty())
            series->setSender(sender);
        if (series->getSender() == sender)
            return series.get();
    }
    return isDrawnOfEach(path) && !isRemoved(path, sender) ? append(path, sender) : nullptr;
}

PlotSeries* PlotPanel::append(const FieldPath& path, const QString& sender)
{
    if (m_series.size() >= MostSeries)
        return nullptr;
    m_series.emplace_back(new PlotSeries(path));
    PlotSeries* const series = m_series.back().get();
    series->setSender(sender);
    m_view->addSeries(series);
    new QTreeWidgetItem(m_legend);
    updateNames();
    updateEmptiness();
    return series;
}

bool PlotPanel::isDrawnOfEach(const FieldPath& path) const
{
    for (const auto& series : m_series)
        if (series->getPath() == path && series->getOrigin().sender.isEmpty())
            return true;
    return false;
}

bool PlotPanel::isRemoved(const FieldPath& path, const QString& sender) const
{
    for (const auto& removed : m_removed)
        if (removed.first == path && removed.second == sender)
            return true;
    return false;
}

// Senders are named only where there are several of a field.
void PlotPanel::updateNames()
{
    for (std::size_t i = 0; i < m_series.size(); ++i) {
        const PlotSeries* const series = m_series[i].get();
        int same = 0;
        for (const auto& other : m_series)
            same += other->getPath() == series->getPath() ? 1 : 0;
        const bool isTold = same > 1 || series->getOrigin().isTold;
        const QString sender = isTold ? QStringLiteral(" (%1)").arg(series->getSender()) : QString();
        const QString name = series->getPath().getName() + sender;
        m_legend->setName(int(i), series, m_view, name, sender);
        m_view->findGraph(series)->setName(name);
    }
}

// Beside the lines, or below them in a dock that is higher than wide; as large as the user made it there.
void PlotPanel::arrangeLegend()
{
    const Qt::Orientation orientation = height() > width() ? Qt::Vertical : Qt::Horizontal;
    if (orientation != m_splitter->orientation())
        m_legendIsSized = false;
    if (m_legendIsSized)
        return;
    m_splitter->setOrientation(orientation);
    const int length = orientation == Qt::Horizontal ? width() : height();
    const int legend = qMin(m_legend->fontMetrics().averageCharWidth() * 36, length * 9 / 20);
    m_splitter->setSizes({length - legend, legend});
}

void PlotPanel::updateEmptiness()
{
    const bool any = !m_series.empty();
    m_hint->setVisible(!any);
    m_splitter->setVisible(any);
    if (any)
        arrangeLegend();
    for (QAction* action : std::as_const(m_needSeries))
        action->setEnabled(any);
    m_changed = true;
}

void PlotPanel::updateTypes()
{
    m_paths.clear();
    for (const auto& series : m_series) {
        QVector<FieldPath>& paths = m_paths[series->getPath().getMessageInfo()];
        if (!paths.contains(series->getPath()))
            paths.append(series->getPath());
    }
    const QList<const MessageInfo*> types = m_paths.keys();
    m_listener.setTypes(QSet<const MessageInfo*>(types.begin(), types.end()));
    QVector<FieldPath> paths;
    for (const QVector<FieldPath>& some : std::as_const(m_paths))
        paths += some;
    m_recorded->setWanted(paths);
}

void PlotPanel::renameSender(const QString& before, const QString& now)
{
    for (const auto& series : m_series) {
        const bool isKnown = series->getMessageCount() > 0 || !series->getOrigin().sender.isEmpty();
        if (!isKnown || series->getSender() != before)
            continue;
        series->setSender(now);
        if (!series->getOrigin().sender.isEmpty())
            series->setOrigin({now, series->getOrigin().isTold});
    }
    for (auto& removed : m_removed)
        if (removed.second == before)
            removed.second = now;
    updateNames();
}

void PlotPanel::removeCurrent()
{
    const PlotSeries* const series = currentSeries();
    for (std::size_t i = 0; i < m_series.size(); ++i) {
        if (m_series[i].get() == series) {
            m_removed.emplace_back(series->getPath(), series->getSender());
            removeSeries(i);
            return;
        }
    }
}

void PlotPanel::removeSeries(std::size_t index)
{
    m_view->removeSeries(m_series[index].get());
    const std::unique_ptr<PlotSeries> gone = std::move(m_series[index]);
    m_series.erase(m_series.begin() + std::ptrdiff_t(index));
    delete m_legend->takeTopLevelItem(int(index));
    updateNames();
    updateEmptiness();
    updateTypes();
}

QStringList PlotPanel::removeHidden()
{
    QStringList expressions;
    for (std::size_t i = m_series.size(); i-- > 0;) {
        if (!m_series[i]->getPath().isHidden())
            continue;
        expressions.prepend(m_series[i]->getWish());
        removeSeries(i);
    }
    expressions.removeDuplicates(); // of several senders
    return expressions;
}

QStringList PlotPanel::getExpressions() const
{
    QStringList expressions;
    for (const auto& series : m_series)
        expressions.append(series->getWish());
    expressions.removeDuplicates();
    return expressions;
}

void PlotPanel::removeAll()
{
    for (const auto& series : m_series)
        m_view->removeSeries(series.get());
    m_series.clear();
    m_removed.clear();
    m_legend->clear();
    setPaused(false);
    updateEmptiness();
    updateTypes();
    Q_EMIT cleared();
}

void PlotPanel::processMessage(const Message* message)
{
    const auto paths = m_paths.constFind(message->getInfo());
    if (paths == m_paths.constEnd())
        return;
    const bool hasTime = message->getTime() != Message::NoTime;
    const double seconds =
        hasTime ? double(message->getTime()) / 1e6 : double(QDateTime::currentMSecsSinceEpoch()) / 1e3;
    for (const FieldPath& path : *paths)
        if (PlotSeries* const series = findOrAdd(path, message->getSender()))
            series->add(message, seconds);
    m_changed = true;
}

void PlotPanel::refresh()
{
    m_changed = m_recorded->work() || m_changed;
    const QVector<double> positions = m_recorded->getPositions();
    m_changed = m_changed || positions != m_positions;
    if (!m_changed || m_latest->isSuspended() || !isVisible())
        return;
    m_changed = false;
    m_positions = positions;
    m_view->setPositions(positions);
    m_view->setClickable(isOfRecordings());
    m_view->setNote(m_recorded->getNote());
    if (!m_isSpanChosen)
        m_span->setCurrentIndex(m_span->findData(isOfRecordings() ? WholeSpan : DefaultSpan));
    if (!isPaused())
        followTime();
    followMouse();
    showValues();
    m_legend->fitValueColumn();
    m_view->replot(QCustomPlot::rpQueuedReplot);
}

bool PlotPanel::isOfRecordings() const
{
    return std::any_of(m_series.begin(), m_series.end(), [](const auto& series) { return series->getRecording(); });
}

void PlotPanel::followTime()
{
    const int span = m_span->currentData().toInt();
    const QCPRange all = wholeTime();
    if (span == WholeSpan && all.size() > 0) {
        m_view->showTimes(all.lower, all.upper);
        return;
    }
    double latest = std::nan("");
    for (const double position : std::as_const(m_positions))
        latest = position <= latest ? latest : position;
    for (const auto& series : m_series)
        if (!series->getRecording() && !(series->getLastTime() <= latest))
            latest = std::isnan(series->getLastTime()) ? latest : series->getLastTime();
    if (!std::isnan(latest))
        m_view->showTimes(latest - (span == WholeSpan ? DefaultSpan : span), latest);
}

/** All the time that there is: of recordings from end to end. */
QCPRange PlotPanel::wholeTime() const
{
    QCPRange all(0, 0);
    bool any = false;
    const auto take = [&](double from, double to) {
        if (any)
            all.expand(QCPRange(from, to));
        else
            all = QCPRange(from, to);
        any = true;
    };
    for (const auto& series : m_series) {
        const SeriesPoints& points = series->getPoints();
        if (!points.isEmpty())
            take(points.at(0).time, points.last().time);
        if (SourceSession* const session = series->getRecording())
            take(double(session->getSource()->getStartTime()) / 1e6, double(session->getSource()->getEndTime()) / 1e6);
    }
    return all;
}

void PlotPanel::showValues()
{
    const bool isPointing = !std::isnan(m_cursor);
    for (std::size_t i = 0; i < m_series.size(); ++i)
        m_legend->setValue(int(i), isPointing ? m_series[i]->getValueTextAt(m_cursor) : m_series[i]->getValueText());
    m_legend->setValueTitle(isPointing ? m_view->timeText(m_cursor) : QString());
}

void PlotPanel::followMouse()
{
    const double time = m_view->getPointedTime();
    if (std::isnan(m_cursor) && std::isnan(time))
        return;
    m_cursor = time;
    m_view->setCursor(time);
    showValues();
}

void PlotPanel::showLive()
{
    m_isSpanChosen = true;
    setPaused(false);
}

void PlotPanel::showEverything()
{
    const QCPRange all = wholeTime();
    if (all.upper <= 0)
        return;
    setPaused(true);
    m_view->showTimes(all.lower, all.upper);
    m_view->replot(QCustomPlot::rpQueuedReplot);
}

QByteArray PlotPanel::toCsv() const
{
    QStringList names;
    for (const auto& series : m_series)
        names.append(m_view->findGraph(series.get())->name());
    return PlotValues::toCsv(m_series, names);
}

void PlotPanel::savePicture()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Save Picture"), QLatin1String("plot.png"),
                                                      tr("PNG pictures (*.png);;All files (*)"));
    if (!path.isEmpty() && !m_splitter->grab().save(path, "PNG"))
        Q_EMIT m_desk->failed(tr("%1 cannot be written.").arg(path));
}

void PlotPanel::saveValues()
{
    CsvFile::save(this, m_desk, tr("Save Values"), QLatin1String("plot.csv"), toCsv());
}

void PlotPanel::dragEnterEvent(QDragEnterEvent* event)
{
    if (event->mimeData()->hasFormat(QLatin1String(RowMimeType)))
        event->acceptProposedAction();
}

void PlotPanel::dropEvent(QDropEvent* event)
{
    event->acceptProposedAction();
    m_use->setEnabled(true); // what cannot be plotted is told
    m_use->trigger();
}

void PlotPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrangeLegend();
    m_changed = true;
}

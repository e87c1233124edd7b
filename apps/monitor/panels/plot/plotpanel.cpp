#include "plotpanel.h"

#include "csvfile.h"
#include "desk.h"
#include "formatregistry.h"
#include "lineactions.h"
#include "message.h"
#include "plotbar.h"
#include "plotlegend.h"
#include "plotseries.h"
#include "plotvalues.h"
#include "plotview.h"
#include "plotwishes.h"
#include "recordedlines.h"
#include "samefield.h"
#include "theme.h"

#include <QAction>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QFileDialog>
#include <QLabel>
#include <QMimeData>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

static const int MostSeries = 24; // more than that nobody tells apart
static const int LeastSpan = 60;  // where there is not more
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
    , m_plots(new PlotStack)
    , m_legend(new PlotLegend)
    , m_splitter(new QSplitter)
    , m_bar(new PlotBar)
    , m_cursor(std::nan(""))
{
    createActions();
    createLegend();
    offerUse();
    m_hint = new QLabel(tr("Drag a number from the message tree here, or choose Plot in its context menu (Ctrl+L)."));
    Theme::makeHint(m_hint);

    m_splitter->addWidget(m_plots);
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

    connect(m_plots, &PlotStack::moved, this, [this]() { setPaused(true); });
    connect(m_plots, &PlotStack::pointed, this, &PlotPanel::followMouse);
    connect(m_plots, &PlotStack::clicked, this,
            [this](double time) { m_recorded->goTo(time, m_bar->getSinceStart()->isChecked()); });
    followPreferences(desk->getPreferences());
    connect(desk, &Desk::senderRenamed, this, &PlotPanel::renameSender);
    connect(FormatRegistry::getInstance(), &FormatRegistry::formatsChanged, this, &PlotPanel::updateTypes);
    connect(m_plots, &PlotStack::colorsChanged, this, &PlotPanel::updateNames);
    connect(&m_timer, &QTimer::timeout, this, &PlotPanel::refresh);
    m_timer.start();
    updateEmptiness();
}

// What goes with the plots may draw the others once more.
PlotPanel::~PlotPanel()
{
    delete m_plots;
}

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
    addAction(m_bar->getPause());
    connect(m_bar->getPause(), &QAction::toggled, this, [this]() { m_changed = true; });
    connect(m_bar, &PlotBar::spanChosen, this, [this]() { setPaused(false); });
    connect(m_bar, &PlotBar::zoomWanted, this, [this](double factor) {
        setPaused(true);
        getView()->zoom(factor);
    });
    connect(m_bar, &PlotBar::everythingWanted, this, &PlotPanel::showEverything);
    connect(m_bar->getSinceStart(), &QAction::toggled, this, &PlotPanel::setSinceStart);
    connect(m_bar, &PlotBar::removalWanted, this, &PlotPanel::removeCurrent);
    connect(m_bar, &PlotBar::removalOfAllWanted, this, &PlotPanel::removeAll);
    connect(m_bar, &PlotBar::pictureWanted, this, &PlotPanel::savePicture);
    connect(m_bar, &PlotBar::valuesWanted, this, &PlotPanel::saveValues);
}

void PlotPanel::createLegend()
{
    connect(m_legend, &QTreeWidget::currentItemChanged, this, [this]() {
        m_plots->emphasize(getCurrentSeries());
        m_lineActions->update();
        m_changed = true;
    });
    m_lineActions = new LineActions(this);
}

bool PlotPanel::isPaused() const
{
    return m_bar->getPause()->isChecked();
}

void PlotPanel::setPaused(bool paused)
{
    m_bar->getPause()->setChecked(paused);
    m_changed = true;
}

PlotSeries* PlotPanel::getCurrentSeries() const
{
    const int row = m_legend->indexOfTopLevelItem(m_legend->currentItem());
    return row >= 0 && row < int(m_series.size()) ? m_series[std::size_t(row)].get() : nullptr;
}

void PlotPanel::moveCurrent(int plots)
{
    const PlotSeries* const series = getCurrentSeries();
    const int place = series ? m_plots->getPlace(series) + plots : -1;
    if (place < 0 || (place == m_plots->getCount() && !m_plots->hasCompany(series)))
        return;
    m_plots->moveSeries(series, place);
    sortByPlots();
    for (std::size_t i = 0; i < m_series.size(); ++i)
        if (m_series[i].get() == series)
            m_legend->setCurrentItem(m_legend->topLevelItem(int(i)));
    m_plots->emphasize(series);
    updateNames();
    showValues();
    m_changed = true;
}

void PlotPanel::setFunction(PlotFunction::Kind function)
{
    PlotSeries* const series = getCurrentSeries();
    if (!series)
        return;
    series->setFunction(function);
    m_plots->moveSeries(series, m_plots->getPlace(series)); // to the axis of its unit
    m_plots->emphasize(series);
    updateNames();
    m_changed = true;
}

void PlotPanel::addField(const FieldPath& field, const Origin& origin, int place, PlotFunction::Kind function)
{
    if (!field.getField() || field.isWholeRepeatedField() || field.isHidden())
        return;
    FieldPath path = field; // as it is drawn already
    for (const auto& series : m_series)
        path = SameField::areSame(series->getPath(), field) ? series->getPath() : path;
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
    const PlotSeries* const current = getCurrentSeries();
    if (place < 0)
        place = m_dropPlace >= 0 ? m_dropPlace : current ? m_plots->getPlace(current) : 0;
    if (PlotSeries* const series = append(path, origin.sender, place, function))
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
    if (!isDrawnOfEach(path) || isRemoved(path, sender))
        return nullptr;
    const auto isOfPath = [&path](const auto& series) { return series->getPath() == path; };
    const auto other = std::find_if(m_series.begin(), m_series.end(), isOfPath);
    return append(path, sender, m_plots->getPlace(other->get()), (*other)->getFunction());
}

// The list has the order of the plots.
void PlotPanel::sortByPlots()
{
    std::stable_sort(m_series.begin(), m_series.end(), [this](const auto& left, const auto& right) {
        return m_plots->getPlace(left.get()) < m_plots->getPlace(right.get());
    });
}

PlotSeries* PlotPanel::append(const FieldPath& path, const QString& sender, int place, PlotFunction::Kind function)
{
    if (m_series.size() >= MostSeries)
        return nullptr;
    m_series.emplace_back(new PlotSeries(path));
    PlotSeries* const series = m_series.back().get();
    series->setSender(sender);
    series->setFunction(function);
    m_plots->addSeries(series, place);
    new QTreeWidgetItem(m_legend);
    sortByPlots();
    updateNames();
    updateEmptiness();
    return series;
}

bool PlotPanel::isDrawnOfEach(const FieldPath& path) const
{
    return std::any_of(m_series.begin(), m_series.end(), [&path](const auto& series) {
        return series->getPath() == path && series->getOrigin().sender.isEmpty();
    });
}

bool PlotPanel::isRemoved(const FieldPath& path, const QString& sender) const
{
    return std::find(m_removed.begin(), m_removed.end(), std::make_pair(path, sender)) != m_removed.end();
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
        const QString name = series->getName() + sender;
        const int place = m_plots->getPlace(series);
        m_legend->setName(int(i), series, m_plots->getView(place), name, sender);
        m_legend->setGroup(int(i), place);
        m_plots->getView(place)->findGraph(series)->setName(name);
    }
    m_lineActions->update();
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
    m_bar->setFilled(any);
    m_changed = true;
}

void PlotPanel::updateTypes()
{
    m_paths.clear();
    QVector<FieldPath> paths;
    for (const auto& series : m_series)
        if (!paths.contains(series->getPath()))
            paths.append(series->getPath());
    for (const FieldPath& path : std::as_const(paths)) {
        const QVector<const MessageInfo*> types = SameField::typesLike(path.getMessageInfo());
        for (const MessageInfo* const type : types)
            if (SameField::in(path, type).getField())
                m_paths[type].append({path, SameField::in(path, type)});
    }
    const QList<const MessageInfo*> types = m_paths.keys();
    m_listener.setTypes(QSet<const MessageInfo*>(types.begin(), types.end()));
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
    const PlotSeries* const series = getCurrentSeries();
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
    m_plots->removeSeries(m_series[index].get());
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

const PlotSeries* PlotPanel::findSeries(const QString& expression) const
{
    const auto isNamed = [&expression](const auto& series) { return series->getWish() == expression; };
    const auto found = std::find_if(m_series.begin(), m_series.end(), isNamed);
    return found == m_series.end() ? nullptr : found->get();
}

int PlotPanel::getPlace(const QString& expression) const
{
    const PlotSeries* const series = findSeries(expression);
    return series ? m_plots->getPlace(series) : 0;
}

void PlotPanel::removeAll()
{
    for (const auto& series : m_series)
        m_plots->removeSeries(series.get());
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
    for (const Wanted& wanted : *paths)
        if (PlotSeries* const series = findOrAdd(wanted.path, message->getSender()))
            series->add(wanted.here, message, seconds);
    m_changed = true;
}

void PlotPanel::refresh()
{
    m_changed = m_recorded->work() || m_changed;
    const QVector<double> positions = m_recorded->getPositions(m_bar->getSinceStart()->isChecked());
    m_changed = m_changed || positions != m_positions;
    if (!m_changed || m_latest->isSuspended() || !isVisible())
        return;
    m_changed = false;
    m_positions = positions;
    m_plots->setPositions(positions);
    m_plots->setClickable(isOfRecordings());
    m_plots->setNote(m_recorded->getNote());
    m_bar->suggestAll(isOfRecordings());
    followStarts();
    if (!isPaused())
        followTime();
    else
        m_plots->followValues();
    followMouse();
    showValues();
    m_legend->fitValueColumn();
    m_plots->replot();
}

void PlotPanel::setSinceStart(bool sinceStart)
{
    m_bar->getSinceStart()->setChecked(sinceStart);
    m_plots->setSinceStart(sinceStart);
    setPaused(false);
    followStarts();
}

void PlotPanel::followStarts()
{
    for (const auto& series : m_series)
        series->setSinceStart(m_bar->getSinceStart()->isChecked());
}

bool PlotPanel::isOfRecordings() const
{
    return std::any_of(m_series.begin(), m_series.end(), [](const auto& series) { return series->getRecording(); });
}

void PlotPanel::followTime()
{
    const int span = m_bar->getSpan();
    const QCPRange all = wholeTime();
    if (span == 0 && all.size() > 0) {
        m_plots->showTimes(all.lower, all.upper);
        return;
    }
    double latest = std::nan("");
    for (const double position : std::as_const(m_positions))
        latest = position <= latest ? latest : position;
    for (const auto& series : m_series)
        if (!series->getRecording() && !(series->getLastTime() - series->getShift() <= latest))
            latest = std::isnan(series->getLastTime()) ? latest : series->getLastTime() - series->getShift();
    if (!std::isnan(latest))
        m_plots->showTimes(latest - (span == 0 ? LeastSpan : span), latest);
}

QCPRange PlotPanel::wholeTime() const
{
    QCPRange all(0, 0);
    bool any = false;
    for (const auto& series : m_series) {
        QCPRange times(0, 0);
        if (series->getTimes(&times.lower, &times.upper)) {
            all = any ? all.expanded(times) : times;
            any = true;
        }
    }
    return all;
}

void PlotPanel::showValues()
{
    const bool isPointing = !std::isnan(m_cursor);
    for (std::size_t i = 0; i < m_series.size(); ++i)
        m_legend->setValue(int(i), isPointing ? m_series[i]->getValueTextAt(m_cursor + m_series[i]->getShift())
                                              : m_series[i]->getValueText());
    m_legend->setValueTitle(isPointing ? m_plots->getView()->timeText(m_cursor) : QString());
}

void PlotPanel::followMouse()
{
    const double time = m_plots->getPointedTime();
    if (std::isnan(m_cursor) && std::isnan(time))
        return;
    m_cursor = time;
    m_plots->setCursor(time);
    showValues();
}

void PlotPanel::showEverything()
{
    const QCPRange all = wholeTime();
    if (!(all.size() > 0))
        return;
    setPaused(true);
    m_plots->showTimes(all.lower, all.upper);
    m_plots->replot();
}

QByteArray PlotPanel::toCsv() const
{
    QStringList names;
    for (const auto& series : m_series)
        names.append(m_plots->getView(m_plots->getPlace(series.get()))->findGraph(series.get())->name());
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
    m_dropPlace = m_plots->findPlace(m_plots->mapFromGlobal(QCursor::pos()));
    m_use->setEnabled(true); // what cannot be plotted is told
    m_use->trigger();
    m_dropPlace = -1;
}

void PlotPanel::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    arrangeLegend();
    m_changed = true;
}

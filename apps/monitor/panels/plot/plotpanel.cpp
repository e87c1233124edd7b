#include "plotpanel.h"

#include "desk.h"
#include "expressionline.h"
#include "formatregistry.h"
#include "lineactions.h"
#include "message.h"
#include "plotbar.h"
#include "plotlegend.h"
#include "plotseries.h"
#include "plotview.h"
#include "plotwishes.h"
#include "recordedlines.h"
#include "theme.h"

#include <QAction>
#include <QDateTime>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QLabel>
#include <QMimeData>
#include <QSettings>
#include <QSplitter>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>

static const int MostSeries = 24; // more than that nobody tells apart
static const int LeastSpan = 60;  // where there is not more
static const int WorkMs = 8;      // of the GUI thread at a time
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
    , m_expressionLine(new ExpressionLine(this))
    , m_cursor(std::nan(""))
{
    createActions();
    createLegend();
    offerUse();
    m_hint = new QLabel;
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
    layout->addWidget(m_expressionLine);
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
                      [this](const QString& expression) { return plot(expression); }});
}

QString PlotPanel::plot(const QString& expression)
{
    const QString fault = m_wishes->ask(expression);
    updateEmptiness();
    Q_EMIT m_desk->wanted(this);
    return fault;
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
    updateEmptiness();
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
    connect(m_bar, &PlotBar::removalWanted, this, &PlotPanel::removeChosen);
    connect(m_bar, &PlotBar::removalOfAllWanted, this, &PlotPanel::removeAll);
    connect(m_bar, &PlotBar::pictureWanted, this, &PlotPanel::savePicture);
    connect(m_bar, &PlotBar::valuesWanted, this, &PlotPanel::saveValues);
}

void PlotPanel::createLegend()
{
    connect(m_legend, &QTreeWidget::currentItemChanged, this, [this]() {
        m_plots->emphasize(getCurrentSeries());
        m_changed = true;
    });
    connect(m_legend, &QTreeWidget::itemSelectionChanged, this, [this]() { m_lineActions->update(); });
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
    return row >= 0 && row < int(getSeries().size()) ? getSeries()[std::size_t(row)].get() : nullptr;
}

void PlotPanel::moveCurrent(int plots)
{
    const PlotSeries* const series = getCurrentSeries();
    const int place = series ? m_plots->getPlace(series) + plots : -1;
    if (place < 0 || (place == m_plots->getCount() && !m_plots->hasCompany(series)))
        return;
    m_plots->moveSeries(series, place);
    sortByPlots();
    updateNames();
    showValues();
    m_changed = true;
}

void PlotPanel::setFunction(PlotFunction::Kind function)
{
    for (const std::size_t i : m_legend->getChosen()) {
        PlotSeries* const series = getSeries()[i].get();
        if (!PlotFunction(function).isPossible(series->getFieldUnit()))
            continue;
        series->setFunction(function);
        m_plots->moveSeries(series, m_plots->getPlace(series)); // to the axis of its unit
    }
    m_plots->emphasize(getCurrentSeries());
    updateNames();
    m_changed = true;
}

void PlotPanel::setLettersShown(bool shown)
{
    m_areLettersShown = shown;
    updateNames();
}

void PlotPanel::addField(const FieldPath& field, const Origin& origin, int place, PlotFunction::Kind function)
{
    if (!field.getField() || field.isWholeRepeatedField() || field.isHidden())
        return;
    const FieldPath path = m_lines.pathOf(field);
    const bool ofEach = origin.sender.isEmpty();
    m_lines.forgetRemoved(path, origin.sender);
    bool isDrawn = false;
    for (const auto& series : getSeries()) {
        if (!(series->getPath() == path))
            continue;
        if (ofEach)
            series->setOrigin(origin);
        isDrawn = isDrawn || ofEach || series->getSender() == origin.sender;
    }
    if (isDrawn || m_lines.isDrawnOfEach(path)) {
        updateNames();
        updateTypes(); // of one that was removed before, a recording has a line
        return;
    }
    std::shared_ptr<PlotSeries> series = m_lines.findUndrawn(path, origin.sender);
    if (!series) {
        series = std::make_shared<PlotSeries>(path);
        series->setSender(origin.sender);
    }
    series->setOrigin(origin);
    if (!draw(series, place, function))
        Q_EMIT m_desk->failed(tr("No more than %1 series can be plotted at a time.").arg(MostSeries));
    updateNames();
    updateTypes();
}

bool PlotPanel::addComputed(const PlotExpression& expression, int place, PlotFunction::Kind function)
{
    PlotLines::Lines lines;
    for (const PlotExpression::Operand& operand : expression.operands) {
        lines.push_back(m_lines.findOrMake(operand));
        if (!lines.back() || lines.back()->isHidden())
            return false;
    }
    const auto series = std::make_shared<ComputedSeries>(expression, lines);
    if (!findSeries(series->getWish()) && !draw(series, place, function))
        Q_EMIT m_desk->failed(tr("No more than %1 series can be plotted at a time.").arg(MostSeries));
    updateNames();
    updateTypes();
    return true;
}

void PlotPanel::addDifference()
{
    const std::vector<std::size_t> chosen = m_legend->getChosen();
    if (chosen.size() == 2)
        addComputed(PlotExpression::differenceOf(PlotExpression::of(*getSeries()[chosen[0]], getSeries()),
                                                 PlotExpression::of(*getSeries()[chosen[1]], getSeries())));
}

PlotSeries* PlotPanel::findOrAdd(const FieldPath& path, const QString& sender)
{
    PlotSeries* const known = m_lines.find(path, sender);
    if ((known && m_lines.isDrawn(known)) || !m_lines.isDrawnOfEach(path) || m_lines.isRemoved(path, sender))
        return known;
    const auto isOfPath = [&path](const auto& series) { return series->getPath() == path; };
    const auto other = *std::find_if(getSeries().begin(), getSeries().end(), isOfPath);
    std::shared_ptr<PlotSeries> series = known ? m_lines.findUndrawn(path, sender) : std::make_shared<PlotSeries>(path);
    series->setSender(sender);
    return draw(series, m_plots->getPlace(other.get()), other->getFunction()) ? series.get() : known;
}

// The list has the order of the plots, and in each the senders of a field beside one another.
void PlotPanel::sortByPlots()
{
    const auto ranks = m_lines.getRanks();
    const auto rank = [&](const PlotSeries* one) { return std::make_pair(m_plots->getPlace(one), ranks.value(one)); };
    sort([&](const PlotSeries* left, const PlotSeries* right) { return rank(left) < rank(right); });
}

void PlotPanel::putBefore(const PlotSeries* series, const QSet<const PlotSeries*>& others)
{
    std::vector<const PlotSeries*> order;
    for (const auto& one : getSeries())
        order.push_back(one.get());
    auto place = std::find(order.begin(), order.end(), series);
    if (others.isEmpty() || place == order.end())
        return;
    for (auto before = place; before != order.begin();) {
        --before;
        if (!others.contains(*before) || m_plots->getPlace(*before) != m_plots->getPlace(series))
            continue;
        m_plots->swapColors(*before, series);
        std::iter_swap(before, place);
        place = before;
    }
    sort([&order](const PlotSeries* left, const PlotSeries* right) {
        return std::find(order.begin(), order.end(), left) < std::find(order.begin(), order.end(), right);
    });
    updateNames();
}

// What is chosen stays so.
void PlotPanel::sort(const std::function<bool(const PlotSeries*, const PlotSeries*)>& isBefore)
{
    const PlotSeries* const current = getCurrentSeries();
    QSet<const PlotSeries*> chosen;
    for (const std::size_t i : m_legend->getChosen())
        chosen.insert(getSeries()[i].get());
    m_lines.sort(isBefore);
    for (int i = 0; current && i < int(getSeries().size()); ++i)
        if (getSeries()[std::size_t(i)].get() == current)
            m_legend->setCurrentItem(m_legend->topLevelItem(i));
    for (int i = 0; i < int(getSeries().size()); ++i)
        m_legend->topLevelItem(i)->setSelected(chosen.contains(getSeries()[std::size_t(i)].get()));
    m_plots->emphasize(current);
}

bool PlotPanel::draw(const std::shared_ptr<PlotSeries>& series, int place, PlotFunction::Kind function)
{
    if (getSeries().size() >= MostSeries)
        return false;
    const PlotSeries* const current = getCurrentSeries();
    if (place < 0)
        place = m_dropPlace >= 0 ? m_dropPlace : current ? m_plots->getPlace(current) : 0;
    series->setFunction(function);
    m_lines.append(series);
    m_plots->addSeries(series.get(), place);
    new QTreeWidgetItem(m_legend);
    sortByPlots();
    updateNames();
    updateEmptiness();
    return true;
}

// Senders are named only where there are several of a field.
void PlotPanel::updateNames()
{
    for (std::size_t i = 0; i < getSeries().size(); ++i) {
        const PlotSeries* const series = getSeries()[i].get();
        const bool isTold = PlotExpression::isTold(*series, getSeries());
        const QString sender = isTold ? QStringLiteral(" (%1)").arg(series->getSender()) : QString();
        const QString name = series->getName() + sender;
        const int place = m_plots->getPlace(series);
        const QString letter = m_areLettersShown ? PlotExpression::letterOf(int(i)) + QLatin1String(":  ") : QString();
        m_legend->setName(int(i), series, m_plots->getView(place), letter + name, sender);
        m_legend->setGroup(int(i), place);
        m_plots->getView(place)->findGraph(series)->setName(name);
    }
    m_lineActions->update();
}

// Beside the lines, or below them where names would be cut there; as large as the user made it.
void PlotPanel::arrangeLegend()
{
    const Qt::Orientation orientation = m_legend->isBesideIn(size()) ? Qt::Horizontal : Qt::Vertical;
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
    const bool any = !getSeries().empty();
    m_hint->setText(m_wishes->getHint());
    m_hint->setVisible(!any);
    m_splitter->setVisible(any);
    if (any)
        arrangeLegend();
    m_bar->setFilled(any);
    m_changed = true;
}

void PlotPanel::updateTypes()
{
    m_lines.updateTypes();
    m_listener.setTypes(m_lines.getTypes());
    m_recorded->setWanted(m_lines.getPaths());
}

void PlotPanel::renameSender(const QString& before, const QString& now)
{
    m_lines.renameSender(before, now);
    updateNames();
}

void PlotPanel::removeChosen()
{
    const std::vector<std::size_t> chosen = m_legend->getChosen();
    for (std::size_t i = chosen.size(); i-- > 0;) {
        const PlotSeries* const series = getSeries()[chosen[i]].get();
        if (series->getPath().getField())
            m_lines.setRemoved(series->getPath(), series->getSender());
        removeSeries(chosen[i]);
    }
    if (m_legend->currentItem())
        m_legend->currentItem()->setSelected(true); // so that it goes next
}

void PlotPanel::removeSeries(std::size_t index)
{
    m_plots->removeSeries(getSeries()[index].get());
    m_lines.remove(index);
    delete m_legend->takeTopLevelItem(int(index));
    updateNames();
    updateEmptiness();
    updateTypes();
}

QStringList PlotPanel::removeHidden()
{
    QStringList expressions;
    for (std::size_t i = getSeries().size(); i-- > 0;) {
        if (!getSeries()[i]->isHidden())
            continue;
        expressions.prepend(getSeries()[i]->getWish());
        removeSeries(i);
    }
    expressions.removeDuplicates(); // of several senders
    return expressions;
}

QStringList PlotPanel::getExpressions() const
{
    QStringList expressions;
    for (const auto& series : getSeries())
        if (!expressions.contains(series->getWish()))
            expressions.append(series->getWish());
    return expressions;
}

int PlotPanel::getPlace(const QString& expression) const
{
    const PlotSeries* const series = findSeries(expression);
    return series ? m_plots->getPlace(series) : 0;
}

void PlotPanel::removeAll()
{
    for (const auto& series : getSeries())
        m_plots->removeSeries(series.get());
    m_lines.clear();
    m_legend->clear();
    setPaused(false);
    Q_EMIT cleared();
    updateEmptiness();
    updateTypes();
}

void PlotPanel::processMessage(const Message* message)
{
    const bool hasTime = message->getTime() != Message::NoTime;
    const double seconds =
        hasTime ? double(message->getTime()) / 1e6 : double(QDateTime::currentMSecsSinceEpoch()) / 1e3;
    const QVector<PlotLines::Wanted> wanted = m_lines.getWanted(message->getInfo());
    for (const PlotLines::Wanted& one : wanted)
        if (PlotSeries* const series = findOrAdd(one.path, message->getSender()))
            series->add(one.here, message, seconds);
    m_changed = true;
}

/** Computes lines for some milliseconds, and goes on with that as soon as the window has done what it has to. */
void PlotPanel::compute()
{
    QElapsedTimer time;
    time.start();
    m_changed = m_lines.compute([&time]() { return time.elapsed() < WorkMs; }) || m_changed;
    if (m_lines.isBehind())
        QTimer::singleShot(0, &m_timer, [this]() { compute(); });
}

void PlotPanel::refresh()
{
    m_changed = m_recorded->work() || m_changed;
    if (!m_lines.isBehind())
        compute();
    const QVector<double> positions = m_recorded->getPositions(m_bar->getSinceStart()->isChecked());
    m_changed = m_changed || positions != m_positions;
    if (!m_changed || m_latest->isSuspended() || !isVisible())
        return;
    m_changed = false;
    m_positions = positions;
    m_plots->setPositions(positions);
    m_plots->setClickable(isOfRecordings());
    const QString note = m_recorded->getNote();
    m_plots->setNote(note.isEmpty() ? m_wishes->describeAsked() : note);
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
    for (const auto& series : m_lines.getRead())
        series->setSinceStart(m_bar->getSinceStart()->isChecked());
    for (const auto& series : getSeries())
        series->setSinceStart(m_bar->getSinceStart()->isChecked());
}

bool PlotPanel::isOfRecordings() const
{
    return std::any_of(getSeries().begin(), getSeries().end(),
                       [](const auto& series) { return series->getRecording(); });
}

void PlotPanel::followTime()
{
    const int span = m_bar->getSpan();
    double from = 0;
    double to = 0;
    if (span == 0 && m_lines.getTimes(&from, &to)) {
        m_plots->showTimes(from, to);
        return;
    }
    double latest = std::nan("");
    for (const double position : std::as_const(m_positions))
        latest = position <= latest ? latest : position;
    for (const auto& series : getSeries())
        if (!series->getRecording() && !(series->getLastTime() - series->getShift() <= latest))
            latest = std::isnan(series->getLastTime()) ? latest : series->getLastTime() - series->getShift();
    if (!std::isnan(latest))
        m_plots->showTimes(latest - (span == 0 ? LeastSpan : span), latest);
}

void PlotPanel::showValues()
{
    const bool isPointing = !std::isnan(m_cursor);
    for (std::size_t i = 0; i < getSeries().size(); ++i)
        m_legend->setValue(int(i), isPointing ? getSeries()[i]->getValueTextAt(m_cursor + getSeries()[i]->getShift())
                                              : getSeries()[i]->getCurrentText());
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
    double from = 0;
    double to = 0;
    if (!m_lines.getTimes(&from, &to))
        return;
    setPaused(true);
    m_plots->showTimes(from, to);
    m_plots->replot();
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

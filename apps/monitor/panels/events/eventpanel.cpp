#include "eventpanel.h"

#include "celldelegate.h"
#include "columnchoice.h"
#include "columngrower.h"
#include "csvfile.h"
#include "desk.h"
#include "emptyhint.h"
#include "eventmodel.h"
#include "message.h"
#include "namecolumn.h"
#include "words.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QScrollBar>
#include <QSettings>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSortFilterProxyModel>
#include <QTabBar>
#include <QTreeView>
#include <QVBoxLayout>

#include <algorithm>

static const char ColumnsKey[] = "columns"; // that are shown
static const int LeastPercent = 25;         // of the width, for what happened
static const char WidthsKey[] = "widths";
static const char WholeKey[] = "whole";

enum Tab
{
    WholeTab,
    PlayedTab
};

/** The causes in the order that is chosen, and of these what somebody looks for. */
class SortedEvents : public QSortFilterProxyModel
{
public:
    SortedEvents(EventModel* events, QObject* parent)
        : QSortFilterProxyModel(parent)
        , m_events(events)
    {
        setSourceModel(events);
        setDynamicSortFilter(true);
    }

    void filter(const QStringList& words, Severity least)
    {
        m_words = words;
        m_least = least;
        invalidateFilter();
    }

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        return m_events->isBefore(left, right);
    }

    bool filterAcceptsRow(int row, const QModelIndex&) const override
    {
        return m_events->getCause(row).newest.severity <= m_least &&
               (m_words.isEmpty() || m_events->hasWords(row, m_words));
    }

private:
    const EventModel* m_events;
    QStringList m_words;
    Severity m_least = Severity::Debug;
};

/** Whoever sees the newest row goes on seeing the newest; whoever scrolled back is left where he is. */
void EventPanel::followNewest()
{
    QScrollBar* const bar = m_view->verticalScrollBar();
    connect(bar, &QScrollBar::rangeChanged, this, [this, bar, end = bar->maximum()](int, int maximum) mutable {
        const bool isAsTheyCome = !showsWhole() && m_view->header()->sortIndicatorSection() < 0;
        if (bar->value() >= end && isAsTheyCome)
            bar->setValue(maximum);
        end = maximum;
    });
}

EventPanel::EventPanel(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_model(new EventModel(this))
    , m_sorted(new SortedEvents(m_model, this))
    , m_tabs(new QTabBar)
    , m_filter(new QLineEdit)
    , m_severities(new QComboBox)
    , m_hidden(new QLabel)
    , m_view(new QTreeView)
{
    createBar();
    createView();
    QHBoxLayout* const bar = new QHBoxLayout;
    bar->setSpacing(4);
    bar->addWidget(m_tabs);
    bar->addWidget(m_filter, 1);
    bar->addWidget(m_severities);
    m_hidden->setContentsMargins(0, 0, 4, 0);
    bar->addWidget(m_hidden);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(1);
    layout->addLayout(bar);
    layout->addWidget(m_view, 1);

    connect(desk, &Desk::chosenSourceChanged, this, &EventPanel::followOverview);
    connect(desk, &Desk::overviewGrown, this, &EventPanel::followOverview);
    connect(desk, &Desk::overviewEnded, this, &EventPanel::followOverview);
    connect(desk->getSources(), &SourceModel::sessionRemoved, this, &EventPanel::followOverview);
    followOverview();
}

EventPanel::~EventPanel()
{
    m_view->verticalScrollBar()->disconnect(this); // which has a new range once more when it goes
}

void EventPanel::createBar()
{
    m_tabs->addTab(tr("Whole Recording"));
    m_tabs->addTab(tr("Played"));
    m_tabs->setTabToolTip(WholeTab, tr("What there is in all of the recording that is chosen"));
    m_tabs->setTabToolTip(PlayedTab, tr("What happened so far, in all sources"));
    m_tabs->setDrawBase(false);
    m_tabs->setExpanding(false);
    m_tabs->setAccessibleName(tr("What the events are about"));
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) { setWhole(tab == WholeTab); });
    m_filter->setPlaceholderText(tr("Event or source"));
    m_filter->setAccessibleName(tr("Show only these events"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, &EventPanel::followFilter);
    m_severities->addItem(tr("Everything"), int(Severity::Debug));
    m_severities->addItem(tr("Warnings and Errors"), int(Severity::Warning));
    m_severities->addItem(tr("Errors"), int(Severity::Error));
    m_severities->setAccessibleName(tr("How bad events must be to be shown"));
    m_severities->setToolTip(m_severities->accessibleName());
    connect(m_severities, QOverload<int>::of(&QComboBox::currentIndexChanged), this, &EventPanel::followFilter);
}

void EventPanel::createView()
{
    m_view->setModel(m_sorted);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setAccessibleName(tr("Events"));
    m_view->setToolTip(tr("Double-click an event, or press Return, to go to its first time in the recording"));
    m_view->setIconSize(QSize(fontMetrics().height() - 2, fontMetrics().height() - 2)); // rows stay as high
    m_view->setMinimumHeight(2 * fontMetrics().lineSpacing());                          // on a small screen
    QHeaderView* const header = m_view->header();
    header->setSortIndicator(-1, Qt::AscendingOrder); // as they came, until somebody wants another order
    m_view->setSortingEnabled(true);
    header->setStretchLastSection(false); // before columns are hidden, or they keep their place behind the others
    const auto resize = [this, header](int column, const char* text) {
        const QString name = m_model->headerData(column, Qt::Horizontal, Qt::DisplayRole).toString();
        header->resizeSection(column, qMax(m_view->fontMetrics().horizontalAdvance(QLatin1String(text)),
                                           m_view->fontMetrics().horizontalAdvance(name + QLatin1String("xx"))));
    };
    resize(EventModel::SeverityColumn, " xx Information  ");
    resize(EventModel::CountColumn, " 0,000,000 ");
    resize(EventModel::SourceColumn, " vehicle 255:190 ");
    for (const int column : {EventModel::FirstColumn, EventModel::LastColumn})
        resize(column, " 00:00:00.000 ");
    for (const int column : {EventModel::FirstSeenColumn, EventModel::LastSeenColumn})
        resize(column, " 00:00:00 ");
    header->setSectionHidden(EventModel::FirstSeenColumn, true);
    header->setSectionHidden(EventModel::TypeColumn, true);
    ColumnChoice::offer(header, EventModel::SourceColumn);
    for (const int column : {EventModel::FirstSeenColumn, EventModel::LastSeenColumn})
        connect(header->actions().at(column - EventModel::SourceColumn), &QAction::toggled, this,
                &EventPanel::followOverview);
    QAction* const unsorted = new QAction(tr("In the Order They Came"), header);
    connect(unsorted, &QAction::triggered, this, [this]() { m_view->sortByColumn(-1, Qt::AscendingOrder); });
    header->addAction(unsorted);
    CellDelegate* const cells = new CellDelegate(m_view);
    cells->setName(EventModel::SourceColumn);
    cells->setNumeric(EventModel::CountColumn);
    m_view->setItemDelegate(cells);
    new NameColumn(m_view, LeastPercent, EventModel::EventColumn);
    new ColumnGrower(m_view, EventModel::SourceColumn, 20);
    new ColumnGrower(m_view, EventModel::FirstColumn, 20);
    new ColumnGrower(m_view, EventModel::LastColumn, 20);
    m_hint = new EmptyHint(m_view, QString());
    followNewest();

    // Double-click and Return, wherever the style lets them mean something else.
    connect(m_view, &QAbstractItemView::doubleClicked, this, [this](const QModelIndex& index) { goTo(index, true); });
    const auto addKey = [this](const QKeySequence& key, const auto& act) {
        connect(new QShortcut(key, m_view, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated, this, act);
    };
    addKey(Qt::Key_Return, [this]() { goTo(m_view->currentIndex(), true); });
    addKey(Qt::SHIFT | Qt::Key_Return, [this]() { goTo(m_view->currentIndex(), false); });
    addKey(QKeySequence::Copy, [this]() { copy(); });
}

bool EventPanel::showsWhole() const
{
    return m_wantsWhole && Desk::getOverview(m_desk->getChosenSource());
}

void EventPanel::setWhole(bool whole)
{
    m_wantsWhole = whole;
    followOverview();
}

/** Shows the overview of the chosen source as far as there is one. */
void EventPanel::followOverview()
{
    const SourceSession* const session = m_desk->getChosenSource();
    const RecordingOverview* const overview = Desk::getOverview(session);
    const bool isWhole = showsWhole();
    if (isWhole)
        m_model->setCauses(overview->getEvents(), session->getName());
    else
        m_model->setCauses(m_desk->getEvents());
    const QSignalBlocker blocker(m_tabs);
    m_tabs->setVisible(overview);
    m_tabs->setCurrentIndex(m_wantsWhole ? WholeTab : PlayedTab);
    // What is only looked up was not seen by anybody.
    QHeaderView* const header = m_view->header();
    for (const int column : {EventModel::FirstSeenColumn, EventModel::LastSeenColumn})
        header->setSectionHidden(column,
                                 isWhole || !header->actions().at(column - EventModel::SourceColumn)->isChecked());
    if (m_clear)
        m_clear->setEnabled(!isWhole);
    showHint();
}

void EventPanel::showHint()
{
    const RecordingOverview* const overview = showsWhole() ? Desk::getOverview(m_desk->getChosenSource()) : nullptr;
    const int hidden = m_model->rowCount() - m_sorted->rowCount();
    m_hidden->setVisible(hidden > 0);
    m_hidden->setText(tr("%1 hidden", "events").arg(QLocale().toString(hidden)));
    if (overview && !overview->isComplete())
        m_hint->setText(tr("Looking through the recording: %1 %").arg(overview->getPercent()));
    else if (hidden > 0)
        m_hint->setText(tr("No event is like that."));
    else if (overview)
        m_hint->setText(tr("No event is in this recording; gaps and losses are in the statistics."));
    else
        m_hint->setText(tr("Nothing happened yet: losses, checksum failures and changes of sources appear here."));
}

void EventPanel::followFilter()
{
    m_sorted->filter(Words::of(m_filter->text()), Severity(m_severities->currentData().toInt()));
    showHint();
}

void EventPanel::tick()
{
    if (m_desk->isPaused())
        return;
    m_model->update();
    showHint();
}

void EventPanel::setViewsPaused(bool paused)
{
    if (!paused)
        m_model->update();
    showHint();
}

void EventPanel::renew()
{
    m_model->renew();
}

QVector<int> EventPanel::getChosen() const
{
    QVector<int> rows; // as they are seen, from above
    QModelIndexList chosen = m_view->selectionModel()->selectedRows();
    std::sort(chosen.begin(), chosen.end());
    for (const QModelIndex& index : std::as_const(chosen))
        rows.append(m_sorted->mapToSource(index).row());
    return rows;
}

qint64 EventPanel::timeOf(int row, bool first) const
{
    return first ? m_model->getCause(row).firstTime : m_model->getCause(row).lastTime;
}

/** The source of a row, if it is still open. */
SourceSession* EventPanel::sessionOf(int row) const
{
    if (showsWhole())
        return m_desk->getChosenSource();
    for (int i = 0; i < m_desk->getSources()->getCount(); ++i)
        if (m_desk->getSources()->getSession(i)->getEventSource() == m_model->getCause(row).newest.source)
            return m_desk->getSources()->getSession(i);
    return nullptr;
}

void EventPanel::goTo(const QModelIndex& index, bool first)
{
    if (!index.isValid())
        return;
    const int row = m_sorted->mapToSource(index).row();
    const qint64 time = timeOf(row, first);
    SourceSession* const session = sessionOf(row);
    if (time != Message::NoTime && session && session->getSource()->isSeekable())
        Desk::jumpTo(session, time);
    else
        m_desk->jumpTo(time);
}

void EventPanel::copy() const
{
    QStringList lines;
    for (const int row : getChosen()) {
        QStringList cells;
        for (int column = 0; column < EventModel::ColumnCount; ++column)
            if (!m_view->isColumnHidden(column))
                cells.append(m_model->index(row, column).data().toString());
        lines.append(cells.join(QLatin1Char('\t')));
    }
    if (!lines.isEmpty())
        QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

void EventPanel::clear()
{
    m_desk->getEvents()->clear();
    m_model->update();
    showHint();
}

QMenu* EventPanel::createMenu()
{
    QMenu* const menu = new QMenu(this);
    const QVector<int> chosen = getChosen();
    const QModelIndex current = m_view->currentIndex();
    const int row = current.isValid() && !chosen.isEmpty() ? m_sorted->mapToSource(current).row() : -1;
    if (row >= 0 && timeOf(row, true) != Message::NoTime) {
        const bool isOne = timeOf(row, true) == timeOf(row, false);
        menu->addAction(isOne ? tr("&Go to This Time") : tr("&Go to the First"), this,
                        [this, current]() { goTo(current, true); });
        if (!isOne)
            menu->addAction(tr("Go to the La&st"), this, [this, current]() { goTo(current, false); });
        menu->addSeparator();
    }
    if (!chosen.isEmpty())
        menu->addAction(tr("&Copy"), this, [this]() { copy(); });
    if (row >= 0 && m_model->getCause(row).newest.wantsDefinitions)
        menu->addAction(tr("Load &Definitions..."), m_desk, &Desk::definitionsWanted);
    if (!showsWhole())
        menu->addAction(tr("Clea&r Events"), this, [this]() { clear(); });
    menu->addMenu(tr("Co&lumns"))->addActions(m_view->header()->actions());
    return menu;
}

void EventPanel::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* const menu = createMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isOfMouse = event->reason() == QContextMenuEvent::Mouse;
    const QRect row = m_view->visualRect(m_view->currentIndex());
    menu->popup(isOfMouse ? event->globalPos() : m_view->viewport()->mapToGlobal(row.bottomLeft()));
}

void EventPanel::addActionsTo(const PanelMenus& menus)
{
    menus.file->addAction(tr("Save &Events as CSV..."), this, [this]() { save(); });
    m_clear = menus.file->addAction(tr("&Clear Events"), this, [this]() { clear(); });
    m_clear->setEnabled(!showsWhole());
}

void EventPanel::save()
{
    EventModel now; // also while the views stand still
    now.setCauses(m_model->getCauses(), showsWhole() ? m_desk->getChosenSource()->getName() : QString());
    CsvFile::save(this, m_desk, tr("Save Events"), QLatin1String("events.csv"), now.toCsv());
}

void EventPanel::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("events"));
    ColumnChoice::save(m_view->header(), EventModel::SourceColumn, settings, QLatin1String(ColumnsKey));
    QStringList widths;
    for (int column = 0; column < EventModel::ColumnCount; ++column)
        if (!m_view->isColumnHidden(column) && column != EventModel::EventColumn)
            widths.append(QStringLiteral("%1:%2").arg(column).arg(m_view->columnWidth(column)));
    settings.setValue(QLatin1String(WidthsKey), widths);
    settings.setValue(QLatin1String(WholeKey), m_wantsWhole);
    settings.endGroup();
}

void EventPanel::restoreSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("events"));
    ColumnChoice::restore(m_view->header(), EventModel::SourceColumn, settings, QLatin1String(ColumnsKey));
    for (const QString& width : settings.value(QLatin1String(WidthsKey)).toStringList()) {
        const int column = width.section(QLatin1Char(':'), 0, 0).toInt();
        const int pixels = width.section(QLatin1Char(':'), 1).toInt();
        if (column >= 0 && column < EventModel::ColumnCount && pixels > 0)
            m_view->setColumnWidth(column, pixels);
    }
    setWhole(settings.value(QLatin1String(WholeKey), true).toBool());
    settings.endGroup();
}

#include "docklayout.h"

#include "panelset.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QScreen>
#include <QTabBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>

#include <utility>

// A window of fewer lines' heights than this in width has no room for docks on both sides.
static const int NarrowLines = 70;
// And one of fewer than this in height none for lists one below the other.
static const int LowLines = 27;
static const int Whole = 1000; // of which places are parts
static const int WidestTabs = 400;
static const int WidestTabsWhenLow = 450; // there are more of them
static const int HighestLines = 350;
// A state of a window with other places says nothing of this one.
static const int Edition = 2;

static Qt::DockWidgetArea dockArea(PanelPlace::Area area)
{
    switch (area) {
    case PanelPlace::Left:
        return Qt::LeftDockWidgetArea;
    case PanelPlace::Top:
        return Qt::TopDockWidgetArea;
    case PanelPlace::Right:
        return Qt::RightDockWidgetArea;
    case PanelPlace::Bottom:
        return Qt::BottomDockWidgetArea;
    case PanelPlace::Center:
    case PanelPlace::Bar:
        break;
    }
    return Qt::NoDockWidgetArea;
}

DockLayout::DockLayout(QMainWindow* window, const PanelSet* panels)
    : QObject(window)
    , m_window(window)
    , m_panels(panels)
{
    for (const PanelSet::Entry& entry : panels->getEntries()) {
        QWidget* const widget = entry.panel->getWidget();
        if (entry.row.place.area == PanelPlace::Center)
            continue;
        if (QToolBar* const bar = qobject_cast<QToolBar*>(widget)) {
            bar->setObjectName(QLatin1String(entry.row.id));
            bar->setWindowTitle(QCoreApplication::translate("Panel", entry.row.title));
            window->addToolBar(Qt::BottomToolBarArea, bar);
        } else {
            addDock(entry.row, widget);
        }
    }
    window->setTabPosition(Qt::AllDockWidgetAreas, QTabWidget::North);
}

void DockLayout::addDock(const PanelRow& row, QWidget* widget)
{
    QDockWidget* const dock = new QDockWidget(QCoreApplication::translate("Panel", row.title), m_window);
    dock->setObjectName(QLatin1String(row.id));
    dock->setWidget(widget);
    connect(dock->toggleViewAction(), &QAction::triggered, this, [this, dock, &row](bool shown) {
        if (!shown)
            return;
        welcome(row);
        dock->raise();
    });
    // What is in no menu is reached by Tab.
    const QList<QToolBar*> bars = widget->findChildren<QToolBar*>();
    for (QToolBar* const bar : bars) {
        bar->setAccessibleName(dock->windowTitle());
        const QList<QToolButton*> buttons = bar->findChildren<QToolButton*>();
        for (QToolButton* const button : buttons)
            button->setFocusPolicy(Qt::TabFocus);
        if (QToolButton* const more = bar->findChild<QToolButton*>(QLatin1String("qt_toolbar_ext_button")))
            more->setAccessibleName(tr("More"));
    }
    dock->hide(); // or a window that is not arranged so far has room for all at once
    place(row, dock);
}

void DockLayout::place(const PanelRow& row, QDockWidget* dock)
{
    m_window->addDockWidget(dockArea(row.place.area), dock);
    if (QDockWidget* const front = getDock(QLatin1String(row.place.tabbedWith)))
        m_window->tabifyDockWidget(front, dock);
}

QDockWidget* DockLayout::getDock(const QString& id) const
{
    return id.isEmpty() ? nullptr : m_window->findChild<QDockWidget*>(id, Qt::FindDirectChildrenOnly);
}

void DockLayout::addActionsTo(QMenu* menu)
{
    for (const PanelSet::Entry& entry : m_panels->getEntries())
        if (const QDockWidget* const dock = getDock(QLatin1String(entry.row.id)))
            menu->addAction(dock->toggleViewAction());
}

void DockLayout::show(const QWidget* widget)
{
    if (!m_isArranged) {
        m_wanted.append(widget); // what is arranged then would hide it again
        return;
    }
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        if (!dock || entry.panel->getWidget() != widget)
            continue;
        const bool isNew = dock->isHidden();
        dock->show();
        if (isNew)
            welcome(entry.row);
        dock->raise();
    }
}

// One that waited comes to its place, with its share of the room, when it is shown for the first time.
void DockLayout::welcome(const PanelRow& row)
{
    QDockWidget* const dock = getDock(QLatin1String(row.id));
    if (!waits(row.place) || m_shown.contains(dock))
        return;
    m_shown.insert(dock);
    if (m_window->dockWidgetArea(dock) == dockArea(row.place.area) && !dock->isFloating())
        shareWhenNarrow(row);
    QTimer::singleShot(0, dock, [this, &row]() { // once there is a layout to take sizes from
        giveRoom(row);
        giveTabsRoom();
        hideEmptyTabs();
    });
}

void DockLayout::giveRoom(const PanelRow& row)
{
    QDockWidget* const dock = getDock(QLatin1String(row.id));
    const bool isBelow = m_window->dockWidgetArea(dock) == Qt::BottomDockWidgetArea;
    const int size = isBelow ? heightOf(row.place) : m_window->width() * row.place.width / Whole;
    if (size > 0)
        m_window->resizeDocks({dock}, {size}, isBelow ? Qt::Vertical : Qt::Horizontal);
    if (row.place.area == PanelPlace::Bottom && row.place.width > 0)
        m_window->resizeDocks({dock}, {m_window->width() * row.place.width / Whole}, Qt::Horizontal);
}

// Only of docks that are seen: the tabs of a hidden one stay behind.
bool DockLayout::shareWhenNarrow(const PanelRow& row)
{
    QDockWidget* const front = getDock(QLatin1String(row.place.whenNarrow));
    if (!front || !isNarrow())
        return false;
    m_window->tabifyDockWidget(front, getDock(QLatin1String(row.id)));
    return true;
}

QList<QTabBar*> DockLayout::getTabBars() const
{
    return m_window->findChildren<QTabBar*>(QString(), Qt::FindDirectChildrenOnly);
}

// One that is left over draws a line across the window.
void DockLayout::hideEmptyTabs()
{
    const QList<QTabBar*> bars = getTabBars();
    for (QTabBar* const bar : bars)
        if (bar->count() == 0)
            bar->hide();
}

// Their texts differ at the end, and docks as wide as their share may be too narrow for them.
void DockLayout::giveTabsRoom()
{
    const QList<QTabBar*> bars = getTabBars();
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        if (!dock || entry.row.place.area != PanelPlace::Left || m_window->tabifiedDockWidgets(dock).isEmpty())
            continue;
        for (const QTabBar* const bar : bars) {
            const int wanted =
                qMin(bar->sizeHint().width(), m_window->width() * (isLow() ? WidestTabsWhenLow : WidestTabs) / Whole);
            if (bar->isVisible() && bar->width() == dock->width() && bar->width() < wanted)
                m_window->resizeDocks({dock}, {wanted}, Qt::Horizontal);
        }
    }
}

bool DockLayout::isLow() const
{
    const bool isLarge = m_window->isMaximized() || m_window->isFullScreen(); // or will be
    const int height = isLarge ? m_window->screen()->availableSize().height() : m_window->height();
    return height < LowLines * m_window->fontMetrics().height();
}

bool DockLayout::waits(const PanelPlace& place) const
{
    return place.waits || (place.waitsWhenLow && isLow());
}

bool DockLayout::isNarrow() const
{
    return m_window->width() < NarrowLines * m_window->fontMetrics().height();
}

// Of a share of a low window, what stands above the first row would leave nothing.
int DockLayout::heightOf(const PanelPlace& place) const
{
    const int lines = qMin(place.lines * m_window->fontMetrics().height(), m_window->height() * HighestLines / Whole);
    return qMax(m_window->height() * place.height / Whole, lines);
}

void DockLayout::resize(PanelPlace::Area area)
{
    QList<QDockWidget*> wide;
    QList<QDockWidget*> high;
    QList<int> widths;
    QList<int> heights;
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        const PanelPlace& place = entry.row.place;
        QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        if (place.area != area || dock->isHidden() || (place.whenNarrow && isNarrow()))
            continue;
        if (place.width > 0) {
            wide.append(dock);
            widths.append(m_window->width() * place.width / Whole);
        }
        if (place.height > 0) {
            high.append(dock);
            heights.append(heightOf(place));
        }
    }
    m_window->resizeDocks(wide, widths, Qt::Horizontal);
    m_window->resizeDocks(high, heights, Qt::Vertical);
}

void DockLayout::prepare()
{
    // Once, because all that is shown together may make the window higher.
    const bool low = isLow();
    QVector<QDockWidget*> seen;
    QVector<QDockWidget*> fronts;
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        const PanelPlace& place = entry.row.place;
        QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        if (!dock)
            continue;
        if (QDockWidget* const front = low ? getDock(QLatin1String(place.whenLow)) : nullptr)
            m_window->tabifyDockWidget(front, dock);
        for (const char* const front : {place.tabbedWith, low ? place.whenLow : nullptr})
            if (front && !waits(place))
                fronts.append(getDock(QLatin1String(front)));
        if (waits(place) && !(place.waits && entry.panel->isFilled()))
            dock->hide();
        else
            seen.append(dock);
    }
    for (QDockWidget* const dock : std::as_const(seen))
        dock->show();
    for (QDockWidget* const front : std::as_const(fronts))
        front->raise();
}

void DockLayout::arrange()
{
    prepare();
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        const QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        if (dock && !dock->isHidden() && shareWhenNarrow(entry.row))
            getDock(QLatin1String(entry.row.place.whenNarrow))->raise();
    }
    for (const PanelPlace::Area area : {PanelPlace::Left, PanelPlace::Right, PanelPlace::Top, PanelPlace::Bottom})
        resize(area);
    QTimer::singleShot(0, this, &DockLayout::giveTabsRoom); // once they have their sizes
    finish();
}

void DockLayout::finish()
{
    m_isArranged = true;
    QTimer::singleShot(0, this, &DockLayout::hideEmptyTabs);
    const QVector<const QWidget*> wanted = std::move(m_wanted);
    m_wanted.clear();
    for (const QWidget* const widget : wanted)
        show(widget);
}

void DockLayout::reset()
{
    m_shown.clear();
    for (const PanelSet::Entry& entry : m_panels->getEntries())
        if (QDockWidget* const dock = getDock(QLatin1String(entry.row.id))) {
            dock->setFloating(false); // which one without an area refuses
            m_window->removeDockWidget(dock);
        }
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        if (QDockWidget* const dock = getDock(QLatin1String(entry.row.id))) {
            place(entry.row, dock);
        } else if (QToolBar* const bar = qobject_cast<QToolBar*>(entry.panel->getWidget())) {
            m_window->addToolBar(Qt::BottomToolBarArea, bar);
        }
    }
    const QList<QToolBar*> bars = m_window->findChildren<QToolBar*>(QString(), Qt::FindDirectChildrenOnly);
    for (QToolBar* const bar : bars)
        if (m_window->toolBarArea(bar) == Qt::TopToolBarArea)
            bar->show(); // those at the bottom come and go by themselves
    arrange();
}

QByteArray DockLayout::save() const
{
    return m_window->saveState(Edition);
}

bool DockLayout::restore(const QByteArray& state)
{
    if (!m_window->restoreState(state, Edition))
        return false;
    finish();
    return true;
}

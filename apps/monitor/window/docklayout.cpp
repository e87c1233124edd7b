#include "docklayout.h"

#include "panelset.h"

#include <QCoreApplication>
#include <QDockWidget>
#include <QMainWindow>
#include <QMenu>
#include <QToolBar>

// A window of fewer lines' heights than this in width has no room for docks on both sides.
static const int NarrowLines = 70;
static const int Whole = 1000; // of which places are parts

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
    window->setCorner(Qt::BottomLeftCorner, Qt::LeftDockWidgetArea);
}

void DockLayout::addDock(const PanelRow& row, QWidget* widget)
{
    QDockWidget* const dock = new QDockWidget(QCoreApplication::translate("Panel", row.title), m_window);
    dock->setObjectName(QLatin1String(row.id));
    dock->setWidget(widget);
    m_window->addDockWidget(dockArea(row.place.area), dock);
    if (QDockWidget* const front = getDock(QLatin1String(row.place.tabbedWith))) {
        m_window->tabifyDockWidget(front, dock);
        front->raise();
    }
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
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        if (!dock || entry.panel->getWidget() != widget)
            continue;
        dock->show();
        dock->raise();
    }
}

// On a small screen the middle needs the room: what else there is lies behind tabs, or waits until it is filled.
void DockLayout::shareRoom()
{
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        const char* const front = entry.row.place.whenNarrow;
        QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        if (!dock || !front)
            continue;
        if (*front == '\0') {
            dock->setVisible(entry.panel->isFilled());
            continue;
        }
        m_window->tabifyDockWidget(getDock(QLatin1String(front)), dock);
        (entry.panel->isFilled() ? dock : getDock(QLatin1String(front)))->raise();
    }
}

void DockLayout::resize(PanelPlace::Area area, bool isNarrow)
{
    QList<QDockWidget*> wide;
    QList<QDockWidget*> high;
    QList<int> widths;
    QList<int> heights;
    for (const PanelSet::Entry& entry : m_panels->getEntries()) {
        const PanelPlace& place = entry.row.place;
        if (place.area != area)
            continue;
        QDockWidget* const dock = getDock(QLatin1String(entry.row.id));
        const bool isBehind = isNarrow && place.whenNarrow; // and has what the one in front has
        if (place.width > 0 && !isBehind) {
            wide.append(dock);
            widths.append(m_window->width() * place.width / Whole);
        }
        if (place.height > 0 && !isBehind) {
            high.append(dock);
            heights.append(m_window->height() * place.height / Whole);
        }
    }
    m_window->resizeDocks(wide, widths, Qt::Horizontal);
    m_window->resizeDocks(high, heights, Qt::Vertical);
}

void DockLayout::arrange()
{
    const bool isNarrow = m_window->width() < NarrowLines * m_window->fontMetrics().height();
    if (isNarrow)
        shareRoom();
    for (const PanelPlace::Area area : {PanelPlace::Left, PanelPlace::Right, PanelPlace::Top, PanelPlace::Bottom})
        resize(area, isNarrow);
}

#ifndef TESTWINDOW_H
#define TESTWINDOW_H

#include "eventpanel.h"
#include "formpanel.h"
#include "mainwindow.h"
#include "plotpanel.h"
#include "statisticspanel.h"
#include "treepanel.h"
#include "typepanel.h"
#include "watchbar.h"

#include <QAction>

/** The real window, with short ways to its panels. */
struct TestWindow : MainWindow
{
    template <typename Kind>
    Kind* find() const
    {
        return getPanels().find<Kind>();
    }
    MessageTreeWidget* getTree() const { return find<TreePanel>()->getTree(); }
    MessageStatisticsWidget* getStatistics() const { return find<StatisticsPanel>()->getStatistics(); }
    EventLogTableWidget* getEvents() const { return find<EventPanel>()->getTable(); }
    WatchBar* getWatches() const { return find<WatchBar>(); }
    PlotPanel* getPlot() const { return find<PlotPanel>(); }
    QAbstractItemModel* getTypes() const { return find<TypePanel>()->model(); }
    /** The action with this text, without its mark for a key; null when there is none. */
    QAction* findAction(const QString& text) const
    {
        for (QAction* const action : findChildren<QAction*>())
            if (action->text().remove('&') == text)
                return action;
        return nullptr;
    }
    /** The stream of the source that is chosen. */
    const StreamSource* getSource() const { return getDesk()->getChosenSource()->getSource(); }
};

#endif

#include "bytespanel.h"
#include "comparepanel.h"
#include "eventpanel.h"
#include "formpanel.h"
#include "messagespanel.h"
#include "panel.h"
#include "playbackbar.h"
#include "sourcepanel.h"
#include "statisticspanel.h"
#include "treepanel.h"
#include "typepanel.h"
#include "watchbar.h"
#ifdef CORVEL_MONITOR_PLOT
#include "plotpanel.h"
#endif

#include <QCoreApplication>

template <typename Kind>
static Panel* create(Desk* desk)
{
    return new Kind(desk);
}

// A panel is a row here and a folder beside this file. What lies in a dock is shown and hidden in the View menu.
const QVector<PanelRow>& getPanelTable()
{
    typedef PanelPlace Place;
    static const QVector<PanelRow> table = {
        // clang-format off
        {"tree", QT_TRANSLATE_NOOP("Panel", "Message Tree"),
         {Place::Center, 0, 0, nullptr, nullptr}, create<TreePanel>},
        {"watches", QT_TRANSLATE_NOOP("Panel", "Watches"),
         {Place::Top, 0, 0, nullptr, nullptr, true}, create<WatchBar>},
        {"sources", QT_TRANSLATE_NOOP("Panel", "Sources"),
         {Place::Left, 0, 167, nullptr, nullptr, false, 0, "types"}, create<SourcePanel>},
        {"types", QT_TRANSLATE_NOOP("Panel", "Message Types"),
         {Place::Left, 300, 500, nullptr, nullptr}, create<TypePanel>},
        {"statistics", QT_TRANSLATE_NOOP("Panel", "Statistics"),
         {Place::Left, 0, 0, "types", nullptr}, create<StatisticsPanel>},
        {"forms", QT_TRANSLATE_NOOP("Panel", "Forms"),
         {Place::Left, 0, 0, "types", nullptr}, create<FormPanel>},
        {"events", QT_TRANSLATE_NOOP("Panel", "Events"),
         {Place::Bottom, 0, 190, nullptr, nullptr, false, 11, nullptr, true}, create<EventPanel>},
        {"messages", QT_TRANSLATE_NOOP("Panel", "Messages"),
         {Place::Bottom, 0, 0, "events", nullptr, false, 0, nullptr, true}, create<MessagesPanel>},
        {"bytes", QT_TRANSLATE_NOOP("Panel", "Bytes"),
         {Place::Bottom, 480, 190, nullptr, "events", true, 11}, create<BytesPanel>},
#ifdef CORVEL_MONITOR_PLOT
        {"plot", QT_TRANSLATE_NOOP("Panel", "Plot"), // half of the middle; as high as that when it is narrow
         {Place::Right, 350, 400, nullptr, "events", true}, create<PlotPanel>, "GPL-3.0-or-later"}, // as QCustomPlot is
#endif
        {"compare", QT_TRANSLATE_NOOP("Panel", "Comparison"),
         {Place::Right, 350, 400, "plot", "events", true}, create<ComparePanel>},
        {"playback", QT_TRANSLATE_NOOP("Panel", "Playback"),
         {Place::Bar, 0, 0, nullptr, nullptr}, create<PlaybackBar>},
        // clang-format on
    };
    return table;
}

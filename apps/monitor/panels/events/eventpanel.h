#ifndef EVENTPANEL_H
#define EVENTPANEL_H

#include "eventfeed.h"
#include "panel.h"

#include <QCoreApplication>

#include <memory>

class EventLogTableWidget;
class QModelIndex;

/** What happened, in a table: double-click goes to the time of an event. */
class EventPanel : public Panel
{
    Q_DECLARE_TR_FUNCTIONS(EventPanel)

public:
    explicit EventPanel(Desk* desk);
    ~EventPanel() override;

    EventLogTableWidget* getTable() const { return m_table.get(); }

    QWidget* getWidget() override;
    void addActionsTo(const PanelMenus& menus) override;
    void setViewsPaused(bool paused) override { m_feed.setSuspended(paused); }

private:
    void jumpTo(const QModelIndex& index);
    void save();

    Desk* m_desk;
    EventLog m_shown; // what the table follows
    EventFeed m_feed;
    std::unique_ptr<EventLogTableWidget> m_table;
};

#endif

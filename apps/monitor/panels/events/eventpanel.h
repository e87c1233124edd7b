#ifndef EVENTPANEL_H
#define EVENTPANEL_H

#include "panel.h"

#include <QWidget>

class EmptyHint;
class EventModel;
class QAction;
class QComboBox;
class QContextMenuEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QModelIndex;
class QTabBar;
class QTreeView;
class SortedEvents;
class SourceSession;

/**
 * What happened, a row for each cause: in the whole of the recording that is chosen, or so far in all that is open.
 *
 * Double-click goes to the time at which it was first.
 */
class EventPanel : public QWidget, public Panel
{
    Q_OBJECT

public:
    explicit EventPanel(Desk* desk, QWidget* parent = nullptr);
    ~EventPanel() override;

    QTreeView* getView() const { return m_view; }
    QLineEdit* getFilter() const { return m_filter; }
    QComboBox* getSeverities() const { return m_severities; }
    /** Shows what there is in all of a recording, where there is one, or what came so far. */
    void setWhole(bool whole);
    /** What can be done with the rows that are chosen; the caller's. */
    QMenu* createMenu();

    QWidget* getWidget() override { return this; }
    void addActionsTo(const PanelMenus& menus) override;
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    void tick() override;
    void setViewsPaused(bool paused) override;
    void renew() override;

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void createBar();
    void createView();
    void followNewest();
    void followOverview();
    void followFilter();
    void showHint();
    bool showsWhole() const;
    QVector<int> getChosen() const;
    qint64 timeOf(int row, bool first) const;
    SourceSession* sessionOf(int row) const;
    void goTo(const QModelIndex& index, bool first);
    void copy() const;
    void clear();
    void save();

    Desk* m_desk;
    EventModel* m_model;
    SortedEvents* m_sorted;
    QTabBar* m_tabs;
    QLineEdit* m_filter;
    QComboBox* m_severities;
    QLabel* m_hidden;
    QTreeView* m_view;
    EmptyHint* m_hint;
    QAction* m_clear = nullptr;
    bool m_wantsWhole = true;
};

#endif

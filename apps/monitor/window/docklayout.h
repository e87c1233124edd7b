#ifndef DOCKLAYOUT_H
#define DOCKLAYOUT_H

#include "panel.h"

#include <QObject>
#include <QSet>
#include <QString>

class PanelSet;
class QDockWidget;
class QMainWindow;
class QTabBar;

/** Puts panels where their rows say: into docks, which can be shown, hidden and moved, and a tool bar. */
class DockLayout : public QObject
{
    Q_OBJECT

public:
    /** Both borrowed. The panel in the middle is left to the window. */
    DockLayout(QMainWindow* window, const PanelSet* panels);

    /** Adds what shows and hides the docks. */
    void addActionsTo(QMenu* menu);
    /** Hides what waits, so that a window that is not shown so far takes no more room than it is given. */
    void prepare();
    /** Gives the docks their first sizes; in a small window some of them share their room. */
    void arrange();
    /** Puts everything back where it stood at first. */
    void reset();
    /** Shows the panel with this widget, in front of those that share its room; in a moment, while nothing is arranged
     * or restored. */
    void show(const QWidget* widget);

    /** Whether the window is so low for its letters that it is arranged in another way. */
    bool isLow() const;
    /** Where everything stands, for a file of settings. */
    QByteArray save() const;
    /** Puts everything back there; false when @p state is none. */
    bool restore(const QByteArray& state);

private:
    void addDock(const PanelRow& row, QWidget* widget);
    void place(const PanelRow& row, QDockWidget* dock);
    QDockWidget* getDock(const QString& id) const;
    bool isNarrow() const;
    bool waits(const PanelPlace& place) const;
    int heightOf(const PanelPlace& place) const;
    void resize(PanelPlace::Area area);
    void welcome(const PanelRow& row);
    bool shareWhenNarrow(const PanelRow& row);
    void giveRoom(const PanelRow& row);
    void giveTabsRoom();
    void hideEmptyTabs();
    QList<QTabBar*> getTabBars() const;
    void finish();

    QMainWindow* m_window;
    const PanelSet* m_panels;
    bool m_isArranged = false;
    QVector<const QWidget*> m_wanted; // meanwhile
    QSet<const QDockWidget*> m_shown; // of those that wait until they are filled
};

#endif

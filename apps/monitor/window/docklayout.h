#ifndef DOCKLAYOUT_H
#define DOCKLAYOUT_H

#include "panel.h"

#include <QObject>
#include <QString>

class PanelSet;
class QDockWidget;
class QMainWindow;

/** Puts panels where their rows say: into docks, which can be shown, hidden and moved, and a tool bar. */
class DockLayout : public QObject
{
    Q_OBJECT

public:
    /** Both borrowed. The panel in the middle is left to the window. */
    DockLayout(QMainWindow* window, const PanelSet* panels);

    /** Adds what shows and hides the docks. */
    void addActionsTo(QMenu* menu);
    /** Gives the docks their first sizes; in a small window some of them share their room. */
    void arrange();
    /** Shows the panel with this widget, in front of those that share its room. */
    void show(const QWidget* widget);

private:
    void addDock(const PanelRow& row, QWidget* widget);
    QDockWidget* getDock(const QString& id) const;
    void shareRoom();
    void resize(PanelPlace::Area area, bool isNarrow);

    QMainWindow* m_window;
    const PanelSet* m_panels;
};

#endif

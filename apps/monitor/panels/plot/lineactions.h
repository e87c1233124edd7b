#ifndef LINEACTIONS_H
#define LINEACTIONS_H

#include "plotfunction.h"

#include <QObject>

class PlotPanel;
class QAction;

/** What the context menu of the list of a plot does with the lines that are chosen there. */
class LineActions : public QObject
{
    Q_OBJECT

public:
    /** @param panel  whose list gets the menu; borrowed, with a list and plots already */
    explicit LineActions(PlotPanel* panel);

    /** Another line is chosen, or it changed. */
    void update();

private:
    QAction* add(const QString& text, int key);

    PlotPanel* m_panel;
    QAction* m_moveUp;
    QAction* m_moveDown;
    QAction* m_difference;
    QAction* m_functions[PlotFunction::KindCount] = {}; // none for the first
};

#endif

#include "lineactions.h"

#include "expressionline.h"
#include "plotlegend.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "plotstack.h"

#include <QAction>

#include <algorithm>

LineActions::LineActions(PlotPanel* panel)
    : QObject(panel)
    , m_panel(panel)
    , m_moveUp(add(tr("Move to the Plot Above"), int(Qt::ALT) | int(Qt::Key_Up)))
    , m_moveDown(add(tr("Move to a Plot Below"), int(Qt::ALT) | int(Qt::Key_Down)))
{
    connect(m_moveUp, &QAction::triggered, panel, [panel]() { panel->moveCurrent(-1); });
    connect(m_moveDown, &QAction::triggered, panel, [panel]() { panel->moveCurrent(1); });
    m_functions[PlotFunction::Derivative] = add(tr("Derivative"), 0);
    m_functions[PlotFunction::Average] = add(tr("Moving Average"), 0);
    m_functions[PlotFunction::OtherAngle] = add(tr("Degrees or Radians"), 0);
    for (int kind = PlotFunction::Values + 1; kind < PlotFunction::KindCount; ++kind) {
        m_functions[kind]->setCheckable(true);
        connect(m_functions[kind], &QAction::triggered, panel, [panel, kind](bool checked) {
            panel->setFunction(checked ? PlotFunction::Kind(kind) : PlotFunction::Values);
        });
    }
    m_difference = add(tr("Difference"), 0);
    connect(m_difference, &QAction::triggered, panel, &PlotPanel::addDifference);
    QAction* const expression = add(tr("Expression..."), 0);
    connect(expression, &QAction::triggered, panel, [panel]() { panel->getExpressionLine()->open(); });
    QAction* const remove = add(tr("Remove"), Qt::Key_Delete);
    connect(remove, &QAction::triggered, panel, &PlotPanel::removeChosen);
    panel->getLegend()->setContextMenuPolicy(Qt::ActionsContextMenu);
}

QAction* LineActions::add(const QString& text, int key)
{
    QAction* const action = new QAction(text, m_panel->getLegend());
    action->setShortcut(QKeySequence(key));
    action->setShortcutContext(Qt::WidgetShortcut);
    m_panel->getLegend()->addAction(action);
    return action;
}

void LineActions::update()
{
    const PlotStack* const plots = m_panel->getPlots();
    const PlotSeries* const series = m_panel->getCurrentSeries();
    const int place = series ? plots->getPlace(series) : 0;
    const std::vector<std::size_t> chosen = m_panel->getLegend()->getChosen();
    const bool isOne = series && chosen.size() == 1;
    m_difference->setEnabled(chosen.size() == 2);
    m_moveUp->setEnabled(isOne && place > 0);
    m_moveDown->setEnabled(isOne && (place + 1 < plots->getCount() || plots->hasCompany(series)));
    for (int kind = PlotFunction::Values + 1; kind < PlotFunction::KindCount; ++kind) {
        const PlotFunction function{PlotFunction::Kind(kind)};
        const bool isPossible = std::any_of(chosen.begin(), chosen.end(), [&](std::size_t i) {
            return function.isPossible(m_panel->getSeries()[i]->getFieldUnit());
        });
        m_functions[kind]->setEnabled(isPossible);
        m_functions[kind]->setChecked(series && series->getFunction() == kind);
    }
}

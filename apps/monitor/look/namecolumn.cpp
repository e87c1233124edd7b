#include "namecolumn.h"

#include <QEvent>
#include <QHeaderView>
#include <QTreeView>

NameColumn::NameColumn(QTreeView* view, int leastPercent)
    : QObject(view)
    , m_view(view)
    , m_leastPercent(leastPercent)
{
    view->header()->setStretchLastSection(false);
    view->viewport()->installEventFilter(this);
    fit();
}

void NameColumn::fit()
{
    const int room = m_view->viewport()->width();
    m_view->header()->setSectionResizeMode(0, QHeaderView::Interactive); // settings may have told otherwise
    int others = 0;
    for (int column = 1; column < m_view->header()->count(); ++column)
        others += m_view->columnWidth(column);
    m_view->setColumnWidth(0, qMax(room - others, room * m_leastPercent / 100));
}

bool NameColumn::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        fit();
    return QObject::eventFilter(watched, event);
}

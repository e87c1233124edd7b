#include "namecolumn.h"

#include <QEvent>
#include <QHeaderView>
#include <QTreeView>

NameColumn::NameColumn(QTreeView* view, int leastPercent, int column)
    : QObject(view)
    , m_view(view)
    , m_leastPercent(leastPercent)
    , m_column(column)
{
    view->header()->setStretchLastSection(false);
    view->viewport()->installEventFilter(this);
    connect(view->header(), &QHeaderView::sectionResized, this, &NameColumn::fitSoon);
    fit();
}

// A header counts on that nobody else sizes it while it does.
void NameColumn::fitSoon(int section)
{
    if (section == m_column || m_isPosted)
        return;
    m_isPosted = true;
    QMetaObject::invokeMethod(this, &NameColumn::fit, Qt::QueuedConnection);
}

void NameColumn::fit()
{
    m_isPosted = false;
    const int room = m_view->viewport()->width();
    m_view->header()->setSectionResizeMode(m_column, QHeaderView::Interactive); // settings may have told otherwise
    int others = 0;
    for (int column = 0; column < m_view->header()->count(); ++column)
        others += column == m_column ? 0 : m_view->columnWidth(column);
    m_view->setColumnWidth(m_column, qMax(room - others, room * m_leastPercent / 100));
}

bool NameColumn::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        fit();
    return QObject::eventFilter(watched, event);
}

#include "columngrower.h"

#include <QEvent>
#include <QHeaderView>
#include <QTreeView>

ColumnGrower::ColumnGrower(QTreeView* view, int column, int mostPercent)
    : QObject(view)
    , m_view(view)
    , m_column(column)
    , m_mostPercent(mostPercent)
{
    view->viewport()->installEventFilter(this);
    // Queued, so that many rows are measured once.
    connect(view->model(), &QAbstractItemModel::rowsInserted, this, &ColumnGrower::grow, Qt::QueuedConnection);
    connect(view->model(), &QAbstractItemModel::layoutChanged, this, &ColumnGrower::grow, Qt::QueuedConnection);
}

void ColumnGrower::grow()
{
    const QAbstractItemView* const view = m_view; // for which the operation is public
    const int margin = m_view->fontMetrics().averageCharWidth();
    const int wanted =
        qMin(view->sizeHintForColumn(m_column) + margin, m_view->viewport()->width() * m_mostPercent / 100);
    if (wanted <= m_given)
        return;
    m_given = wanted;
    if (wanted > m_view->columnWidth(m_column))
        m_view->setColumnWidth(m_column, wanted);
}

bool ColumnGrower::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        QMetaObject::invokeMethod(this, &ColumnGrower::grow, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

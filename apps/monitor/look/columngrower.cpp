#include "columngrower.h"

#include <QEvent>
#include <QHeaderView>
#include <QTreeView>

static const int PauseMs = 20;
static const int ChangesPauseMs = 300; // texts of rows that are there grow slowly
static const int MostRows = 100;       // each is asked for all that a row looks like

ColumnGrower::ColumnGrower(QTreeView* view, int column, int mostPercent)
    : QObject(view)
    , m_view(view)
    , m_column(column)
    , m_mostPercent(mostPercent)
{
    view->viewport()->installEventFilter(this);
    // Later, so that many rows are measured once.
    m_timer.setSingleShot(true);
    m_timer.setInterval(PauseMs);
    connect(&m_timer, &QTimer::timeout, this, &ColumnGrower::grow);
    connect(view->model(), &QAbstractItemModel::rowsInserted, this, &ColumnGrower::growSoon);
    connect(view->model(), &QAbstractItemModel::layoutChanged, this, &ColumnGrower::growSoon);
    connect(view->model(), &QAbstractItemModel::headerDataChanged, this, &ColumnGrower::growSoon);
    m_changes.setSingleShot(true);
    m_changes.setInterval(ChangesPauseMs);
    connect(&m_changes, &QTimer::timeout, this, &ColumnGrower::grow);
    connect(view->model(), &QAbstractItemModel::dataChanged, this, [this]() {
        if (!m_changes.isActive())
            m_changes.start();
    });
}

void ColumnGrower::growSoon()
{
    if (!m_timer.isActive())
        m_timer.start();
}

void ColumnGrower::grow()
{
    const QAbstractItemView* const view = m_view; // for which the operation is public
    QHeaderView* const header = m_view->header();
    const int precision = header->resizeContentsPrecision();
    header->setResizeContentsPrecision(MostRows);
    const QFontMetrics metrics = m_view->fontMetrics();
    const QString title = m_view->model()->headerData(m_column, Qt::Horizontal).toString(); // longer in some languages
    const int needed = qMax(view->sizeHintForColumn(m_column) + metrics.averageCharWidth(),
                            metrics.horizontalAdvance(title + QLatin1String("xx")));
    const int wanted = qMin(needed, m_view->viewport()->width() * m_mostPercent / 100);
    header->setResizeContentsPrecision(precision);
    if (wanted <= m_given)
        return;
    m_given = wanted;
    if (wanted > m_view->columnWidth(m_column))
        m_view->setColumnWidth(m_column, wanted);
}

bool ColumnGrower::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        growSoon();
    return QObject::eventFilter(watched, event);
}

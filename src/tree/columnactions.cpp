// The actions that show and hide the columns of a MessageTreeWidget, and the columns that an application gave to it.

#include "abstractmessagetreewidgetitem.h"
#include "diagnostics.h"
#include "messagetreecolumn.h"
#include "messagetreewidget.h"

#include <QAction>

CORVEL_DIAGNOSTICS("MessageTreeWidget");
#include "owntext.h"

static const int LeastImpossibleType = 1000;

void MessageTreeWidget::createActions()
{
    CORVEL_DEBUG_HOOK();
    m_toggleTypeColumnAction = new QAction(this);
    OwnText::writeAction(m_toggleTypeColumnAction, tr("&Type"));
    addToggleAction(m_toggleTypeColumnAction);
    m_columnToggleActions.insert(TypeColumn, m_toggleTypeColumnAction);
    m_toggleRawValueColumnAction = new QAction(this);
    OwnText::writeAction(m_toggleRawValueColumnAction, tr("&Raw Value"));
    addToggleAction(m_toggleRawValueColumnAction);
    m_columnToggleActions.insert(RawValueColumn, m_toggleRawValueColumnAction);
}

void MessageTreeWidget::addToggleAction(QAction* action)
{
    CORVEL_DEBUG_HOOK();
    m_toggleColumnActions.append(action);
    connect(action, SIGNAL(triggered(bool)), this, SLOT(toggleColumnActionTriggered(bool)));
    action->setCheckable(true);
}

void MessageTreeWidget::toggleColumnActionTriggered(bool checked)
{
    CORVEL_DEBUG_HOOK();
    QAction* action = qobject_cast<QAction*>(sender());
    if (!action)
        return;
    const QList<ColumnType> types = m_columnToggleActions.keys(action);
    if (types.isEmpty())
        return;
    const ColumnType type = types.first();
    QVector<ColumnType> columns = getColumns();
    if (checked) {
        if (columns.lastIndexOf(type) < 0)
            addColumn(type, true);
    } else if (columns.contains(type)) {
        columns.remove(columns.indexOf(type));
        setColumns(columns);
    }
}

void MessageTreeWidget::setCustomColumn(ColumnType type, MessageTreeColumn* column)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeColumn* former = getCustomColumn(type);
    if (column == former)
        return;
    if (type < CustomColumn1 || type == NoColumn || type >= LeastImpossibleType) {
        qWarning("MessageTreeWidget::setCustomColumn: %d is no type of a custom column", static_cast<int>(type));
        delete column;
        return;
    }
    if (column) {
        m_customColumns.insert(type, column);
        if (!m_columnToggleActions.contains(type)) {
            m_columnToggleActions.insert(type, new QAction(this));
            addToggleAction(m_columnToggleActions.value(type));
        }
    } else {
        m_customColumns.remove(type);
        QAction* action = m_columnToggleActions.take(type);
        m_toggleColumnActions.remove(m_toggleColumnActions.indexOf(action));
        delete action;
    }
    delete former;
    updateCustomColumn(type);
    // Rows have no text of their own where the column had them.
    if (!column && hasColumn(type))
        reconfigureTopLevelAbstractMessageTreeWidgetItems();
}

MessageTreeColumn* MessageTreeWidget::getCustomColumn(ColumnType type) const
{
    CORVEL_DEBUG_HOOK();
    return m_customColumns.isEmpty() ? nullptr : m_customColumns.value(type);
}

MessageTreeColumn* MessageTreeWidget::getCustomColumnAt(int column) const
{
    CORVEL_DEBUG_HOOK();
    return m_customColumns.isEmpty() ? nullptr : m_customColumns.value(m_columns.value(column, NoColumn));
}

void MessageTreeWidget::updateCustomColumn(ColumnType type)
{
    CORVEL_DEBUG_HOOK();
    if (QAction* action = getCustomColumn(type) ? m_columnToggleActions.value(type) : nullptr) {
        action->setText(getColumnName(type).replace(QLatin1Char('&'), QLatin1String("&&")));
        action->setToolTip(getCustomColumn(type)->getHeaderToolTip());
        action->setChecked(hasColumn(type));
    }
    if (type < 0 || !hasColumn(type))
        return;
    writeHeader(getColumnIndex(type), type);
    viewport()->update(columnViewportPosition(getColumnIndex(type)), 0, columnWidth(getColumnIndex(type)),
                       viewport()->height());
}

void MessageTreeWidget::writeHeader(int column, ColumnType type)
{
    CORVEL_DEBUG_HOOK();
    // Also where it seems to be right already: the header keeps the texts of columns that were removed.
    OwnText::writeHeader(model(), column, getColumnName(type));
    const MessageTreeColumn* custom = getCustomColumn(type);
    const QString toolTip = custom ? custom->getHeaderToolTip() : QString();
    if (headerItem()->toolTip(column) != toolTip)
        headerItem()->setToolTip(column, toolTip);
}

void MessageTreeWidget::noteCustomTexts(AbstractMessageTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    if (m_customColumns.isEmpty() || row->m_screenNumber != m_screenNumber)
        return;
    for (int column = 0; column < m_columns.size(); ++column) {
        if (getCustomColumnAt(column) && noteChangedColumn(row, column))
            update(indexFromItem(row, column));
    }
}

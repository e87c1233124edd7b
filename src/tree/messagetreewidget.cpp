#include "messagetreewidget.h"

#include "abstractfieldtreewidgetitem.h"
#include "diagnostics.h"
#include "message.h"
#include "messagegrouptreewidgetitem.h"
#include "messagetreecolumn.h"
#include "messagetreewidgetitem.h"
#include "rowguard.h"
#include "rowmemory.h"
#include "valuecells.h"

#include <QAccessible>
#include <QAction>
#include <QCoreApplication>
#include <QEvent>
#include <QHeaderView>
#include <QMessageBox>
#include <QSettings>
#include <QStringList>

#include <typeinfo>

CORVEL_DIAGNOSTICS("MessageTreeWidget");
static const char* s_szFilename = "src/tree/messagetreewidget.cpp";

static const int GreatestStoredType = 1000000;
// So often in turn all rows are made anew for somebody who asks for it whenever that is done; then he waits.
static const int MostReconfigurations = 10;

MessageTreeWidget::MessageTreeWidget(QWidget* parent)
    : QTreeWidget(parent)
    , m_topLevelRowsKnown(false)
    , m_rowsAreRemoved(false)
    , m_topLevelRowsChanges(0)
    , m_updates(0)
    , m_rowBeingWritten(nullptr)
    , m_screenNumber(1)
    , m_repaintPosted(false)
    , m_reconfigurationWanted(false)
    , m_holds(0)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("MessageTreeWidget");
    connect(this, SIGNAL(itemExpanded(QTreeWidgetItem*)), this, SLOT(processItemExpandedOrCollapsed(QTreeWidgetItem*)));
    connect(this, SIGNAL(itemCollapsed(QTreeWidgetItem*)), this,
            SLOT(processItemExpandedOrCollapsed(QTreeWidgetItem*)));
    m_showPrimaryFieldsOnly = false;
    m_showVirtualFields = true;
    connect(model(), SIGNAL(rowsInserted(QModelIndex, int, int)), this, SLOT(forgetTopLevelRows(QModelIndex)));
    // Rows are gone before they are said to be removed; what they do while they go may come back to the tree.
    connect(model(), SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)), this, SLOT(forgetTopLevelRows(QModelIndex)));
    connect(model(), SIGNAL(rowsRemoved(QModelIndex, int, int)), this, SLOT(forgetTopLevelRows(QModelIndex)));
    connect(model(), SIGNAL(layoutChanged()), this, SLOT(forgetTopLevelRows()));
    connect(model(), SIGNAL(modelAboutToBeReset()), this, SLOT(leaveTopLevelRows()));
    connect(model(), SIGNAL(modelReset()), this, SLOT(forgetTopLevelRows()));
    new ValueCells(this);
    createActions();
    setColumns(QVector<ColumnType>() << NameColumn << TypeColumn << ValueColumn);
}

MessageTreeWidget::~MessageTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("MessageTreeWidget");
    RowGuard::breakAll(this);
    AbstractMessageTreeWidgetItem::forgetTree(this);
    qDeleteAll(m_customColumns);
}

QString MessageTreeWidget::getDefaultColumnName(ColumnType type)
{
    CORVEL_DEBUG_HOOK();
    static const char* const names[] = {QT_TR_NOOP("Name"),     QT_TR_NOOP("Raw value"), QT_TR_NOOP("Value"),
                                        QT_TR_NOOP("Type"),     QT_TR_NOOP("Custom 1"),  QT_TR_NOOP("Custom 2"),
                                        QT_TR_NOOP("Custom 3"), QT_TR_NOOP("Custom 4"),  QT_TR_NOOP("Custom 5"),
                                        QT_TR_NOOP("Custom 6"), QT_TR_NOOP("Custom 7"),  QT_TR_NOOP("Custom 8"),
                                        QT_TR_NOOP("Custom 9"), QT_TR_NOOP("Custom 10")};
    if (static_cast<unsigned int>(type) < sizeof(names) / sizeof(names[0]))
        return tr(names[type]);
    return tr("Column type %1").arg(static_cast<int>(type));
}

QString MessageTreeWidget::getColumnName(ColumnType type) const
{
    CORVEL_DEBUG_HOOK();
    const MessageTreeColumn* custom = getCustomColumn(type);
    return custom ? custom->getHeaderText() : getDefaultColumnName(type);
}

int MessageTreeWidget::getColumnIndex(ColumnType type)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ASSERT(type >= 0, "getColumnIndex", 143, "ColumnType enum elements should have non-negative values");
    return m_columnIndices.value(type, -1);
}

bool MessageTreeWidget::hasColumn(ColumnType type)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ASSERT(type >= 0, "hasColumn", 135, "ColumnType enum elements should have non-negative values");
    return m_columnIndices.value(type, -1) >= 0;
}

QVector<MessageTreeWidget::ColumnType> MessageTreeWidget::getColumns() const
{
    CORVEL_DEBUG_HOOK();
    return m_columns;
}

void MessageTreeWidget::addColumn(ColumnType type, bool update)
{
    CORVEL_DEBUG_HOOK();
    if (m_columns.lastIndexOf(type) >= 0) {
        QMessageBox::warning(nullptr, tr("Duplicate column"),
                             tr("Attempt to add to a MessageTreeWidget a column that is already present: %1. "
                                "Duplicate column was not added.")
                                 .arg(getColumnName(type)),
                             QMessageBox::Ok, QMessageBox::NoButton);
        return;
    }
    while (m_columns.size() < columnCount())
        m_columns.append(NoColumn);
    setColumnCount(columnCount() + 1);
    writeHeader(columnCount() - 1, type);
    m_columns.append(type);
    CORVEL_ASSERT(type >= 0, "addColumn", 187, "ColumnType enum elements should have non-negative values");
    CORVEL_ASSERT(type < 1000, "addColumn", 188, "ColumnType enum elements should have values < 1000");
    if (type >= 0) {
        while (m_columnIndices.size() <= type)
            m_columnIndices.append(-1);
        m_columnIndices[type] = m_columns.size() - 1;
    }
    if (QAction* action = m_columnToggleActions.value(type))
        action->setChecked(true);
    if (update) {
        resizeColumns();
        reconfigureTopLevelAbstractMessageTreeWidgetItems();
    }
}

void MessageTreeWidget::clearColumns(bool update)
{
    CORVEL_DEBUG_HOOK();
    m_columns = QVector<ColumnType>();
    m_columnIndices = QVector<int>();
    {
        // Who hears that no cell is the current one any more may delete rows, and Qt goes on to look at them.
        const TreeUpdate removal(this);
        const RowHold hold(this, RowHold::RowsAreShown);
        setColumnCount(0);
        if (removal.isOver())
            return;
    }
    Q_FOREACH (QAction* action, getToggleColumnActions())
        action->setChecked(false);
    if (update) {
        resizeColumns();
        reconfigureTopLevelAbstractMessageTreeWidgetItems();
    }
}

void MessageTreeWidget::setColumns(QVector<ColumnType> columns)
{
    CORVEL_DEBUG_HOOK();
    clearColumns(false);
    Q_FOREACH (ColumnType type, columns)
        addColumn(type, false);
    resizeColumns();
    reconfigureTopLevelAbstractMessageTreeWidgetItems();
}

void MessageTreeWidget::resizeColumns()
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(this);
    const RowHold hold(this, RowHold::RowsAreShown);
    for (int column = 0; !update.isOver() && column < columnCount(); ++column)
        resizeColumnToContents(column);
}

QAction* MessageTreeWidget::getToggleTypeColumnAction()
{
    CORVEL_DEBUG_HOOK();
    return m_toggleTypeColumnAction;
}

QAction* MessageTreeWidget::getToggleRawValueColumnAction()
{
    CORVEL_DEBUG_HOOK();
    return m_toggleRawValueColumnAction;
}

QVector<QAction*> MessageTreeWidget::getToggleColumnActions()
{
    CORVEL_DEBUG_HOOK();
    return m_toggleColumnActions;
}

bool MessageTreeWidget::mustShowVirtualFields() const
{
    CORVEL_DEBUG_HOOK();
    return m_showVirtualFields;
}

bool MessageTreeWidget::mustShowFieldsWithRole(FieldInfo::Role role) const
{
    CORVEL_DEBUG_HOOK();
    const int number = role;
    return (number != 2 && number != 3) || !m_showPrimaryFieldsOnly;
}

QList<AbstractMessageTreeWidgetItem*> MessageTreeWidget::getTopLevelAbstractMessageTreeWidgetItems()
{
    CORVEL_DEBUG_HOOK();
    QTreeWidgetItem* root = invisibleRootItem();
    // A look at a child lets the tree do sorting that it put off, which is the order that counts.
    root->child(0);
    if (m_topLevelRowsKnown)
        return m_topLevelRows;
    m_topLevelRows.clear();
    m_topLevelInfos.clear();
    for (int i = 0; i < root->childCount(); ++i) {
        AbstractMessageTreeWidgetItem* row = dynamic_cast<AbstractMessageTreeWidgetItem*>(root->child(i));
        if (!row)
            continue;
        m_topLevelRows.append(row);
        // A class derived from it may take messages of other types, too.
        const bool takesOneType = typeid(*row) == typeid(MessageTreeWidgetItem);
        m_topLevelInfos.append(takesOneType ? dynamic_cast<MessageTreeWidgetItem*>(row)->getMessageInfo() : nullptr);
    }
    m_topLevelRowsKnown = true;
    return m_topLevelRows;
}

void MessageTreeWidget::forgetTopLevelRows(const QModelIndex& parent)
{
    CORVEL_DEBUG_HOOK();
    if (parent.isValid())
        return;
    m_topLevelRowsKnown = false;
    ++m_topLevelRowsChanges;
}

void MessageTreeWidget::leaveTopLevelRows()
{
    CORVEL_DEBUG_HOOK();
    // Until the reset is done, the tree still has rows that are deleted already.
    forgetTopLevelRows();
    m_topLevelRows.clear();
    m_topLevelInfos.clear();
    m_topLevelRowsKnown = true;
}

void MessageTreeWidget::reconfigureTopLevelAbstractMessageTreeWidgetItems()
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(this);
    m_reconfigurationWanted = true;
}

void MessageTreeWidget::reconfigureRows()
{
    CORVEL_DEBUG_HOOK();
    const RowGuard self(this);
    const QList<AbstractMessageTreeWidgetItem*> current = getTopLevelAbstractMessageTreeWidgetItems();
    const unsigned int changes = m_topLevelRowsChanges;
    const RowMemory memory(invisibleRootItem());
    for (int i = 0; !self.isBroken() && i < current.size(); ++i) {
        // Somebody who listens to changes may have removed it.
        if (changes == m_topLevelRowsChanges || indexOfTopLevelItem(current.at(i)) >= 0)
            current.at(i)->configureInTreeWidget();
    }
}

void MessageTreeWidget::endUpdate()
{
    CORVEL_DEBUG_HOOK();
    const RowGuard self(this);
    for (int i = 0; m_updates == 1 && m_reconfigurationWanted && i < MostReconfigurations; ++i) {
        m_reconfigurationWanted = false;
        reconfigureRows();
        if (self.isBroken())
            return;
    }
    --m_updates;
}

void MessageTreeWidget::saveSettings(QSettings& settings)
{
    CORVEL_DEBUG_HOOK();
    QList<QVariant> columns;
    Q_FOREACH (ColumnType type, getColumns())
        columns.append(QVariant(static_cast<int>(type)));
    settings.setValue(QLatin1String("columns"), columns);
    settings.setValue(QLatin1String("headerstate"), header()->saveState());
}

/** A list from a settings file, where a list of one element looks like the element, which may be taken for letters. */
static QList<QVariant> listOf(const QVariant& value)
{
    CORVEL_DEBUG_HOOK();
    const QString single = value.toString();
    return single.isEmpty() ? value.toList() : QList<QVariant>() << single;
}

void MessageTreeWidget::restoreSettings(QSettings& settings)
{
    CORVEL_DEBUG_HOOK();
    if (settings.contains(QLatin1String("columns"))) {
        clearColumns(true);
        Q_FOREACH (const QVariant& type, listOf(settings.value(QLatin1String("columns")))) {
            // Any number is a type; but the table of columns has as many entries, and a damaged file may hold any.
            if (type.toInt() <= GreatestStoredType)
                addColumn(ColumnType(type.toInt()), true);
            else
                qWarning("MessageTreeWidget::restoreSettings: there is no column type %d, it was left out",
                         type.toInt());
        }
    }
    const QByteArray headerState = settings.value(QLatin1String("headerstate")).toByteArray();
    if (headerState.isEmpty())
        setColumnWidth(0, 150);
    else
        header()->restoreState(headerState);
}

void MessageTreeWidget::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(this);
    const QList<AbstractMessageTreeWidgetItem*> rows = getTopLevelAbstractMessageTreeWidgetItems();
    const QVector<const MessageInfo*> infos = m_topLevelInfos;
    const unsigned int changes = m_topLevelRowsChanges;
    for (int i = 0; !update.isOver() && i < rows.size(); ++i) {
        if (changes == m_topLevelRowsChanges) {
            // Nearly all rows ignore the message. Finding that out here spares a look at each of them.
            if (message && infos.at(i) && infos.at(i) != message->getInfo())
                continue;
        } else if (indexOfTopLevelItem(rows.at(i)) < 0) {
            continue; // removed by somebody who listens to changes
        }
        rows.at(i)->processMessage(message);
    }
}

void MessageTreeWidget::setShowVirtualFields(bool showVirtualFields)
{
    CORVEL_DEBUG_HOOK();
    if (showVirtualFields == m_showVirtualFields)
        return;
    m_showVirtualFields = showVirtualFields;
    reconfigureTopLevelAbstractMessageTreeWidgetItems();
}

void MessageTreeWidget::setHideVirtualFields(bool hideVirtualFields)
{
    CORVEL_DEBUG_HOOK();
    setShowVirtualFields(!hideVirtualFields);
}

void MessageTreeWidget::setShowPrimaryFieldsOnly(bool showPrimaryOnly)
{
    CORVEL_DEBUG_HOOK();
    if (showPrimaryOnly == m_showPrimaryFieldsOnly)
        return;
    m_showPrimaryFieldsOnly = showPrimaryOnly;
    reconfigureTopLevelAbstractMessageTreeWidgetItems();
}

void MessageTreeWidget::setHideSecondaryFields(bool hideSecondary)
{
    CORVEL_DEBUG_HOOK();
    // The negation is deliberate, as for the virtual fields, although here it turns the sense of the name around.
    setShowPrimaryFieldsOnly(!hideSecondary);
}

// What follows is the view's reaction to changed texts. Its default measures the row and computes its place for every
// single cell. Texts that rows write themselves, and that cannot change the row's height, only leave a mark if the row
// is on the screen; marked cells are repainted together when the event loop comes round.

static QEvent::Type repaintEventType()
{
    CORVEL_DEBUG_HOOK();
    static const QEvent::Type type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

/** Whether ordinary lines are all of one height in the cell of @p index, and nothing but its painting shows it. */
static bool isPlainCell(const QTreeWidget* tree, const QModelIndex& index)
{
    CORVEL_DEBUG_HOOK();
    const QAbstractItemDelegate* delegate = tree->itemDelegate();
    // Editors, which are children of the viewport, and screen readers are served by the view itself.
    return delegate && (typeid(*delegate) == typeid(ValueCells) || typeid(*delegate) == typeid(QStyledItemDelegate)) &&
           !tree->wordWrap() && !tree->itemDelegateForColumn(index.column()) &&
           !tree->itemDelegateForRow(index.row()) &&
           (tree->viewport()->children().isEmpty() || !tree->indexWidget(index)) && !QAccessible::isActive();
}

void MessageTreeWidget::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight)
{
    CORVEL_DEBUG_HOOK();
    if (!serveTogether(topLeft))
        QTreeWidget::dataChanged(topLeft, bottomRight);
}

void MessageTreeWidget::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>&)
{
    CORVEL_DEBUG_HOOK();
    if (!serveTogether(topLeft))
        QTreeWidget::dataChanged(topLeft, bottomRight);
}

bool MessageTreeWidget::serveTogether(const QModelIndex& index)
{
    CORVEL_DEBUG_HOOK();
    // A listener may write elsewhere meanwhile; the pointer in an index of this model is the item.
    AbstractMessageTreeWidgetItem* row = m_rowBeingWritten;
    if (!row || index.internalPointer() != static_cast<QTreeWidgetItem*>(row))
        return false;
    // What comes next for this row comes from a listener: the view was told first.
    m_rowBeingWritten = nullptr;
    if (!isPlainCell(this, index))
        return false;
    if (row->m_screenNumber == m_screenNumber && noteChangedColumn(row, index.column()))
        update(index);
    return true;
}

/** @return whether it is the first: its cell is to be repainted at once, so that the request to paint stands behind the
 *          event, and both are served in one pass */
bool MessageTreeWidget::noteChangedColumn(AbstractMessageTreeWidgetItem* row, int column)
{
    CORVEL_DEBUG_HOOK();
    row->m_changedColumns |= 1u << qMin(column, 31);
    if (m_repaintPosted)
        return false;
    m_repaintPosted = true;
    QCoreApplication::postEvent(this, new QEvent(repaintEventType()));
    return true;
}

bool MessageTreeWidget::event(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    if (event->type() != repaintEventType())
        return QTreeWidget::event(event);
    m_repaintPosted = false;
    followRowsOnScreen(true);
    return true;
}

void MessageTreeWidget::paintEvent(QPaintEvent* event)
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(this);
    const RowHold hold(this, RowHold::RowsAreShown);
    QTreeWidget::paintEvent(event);
    followRowsOnScreen(false);
}

void MessageTreeWidget::followRowsOnScreen(bool repaintChanged)
{
    CORVEL_DEBUG_HOOK();
    ++m_screenNumber;
    if (!isVisible())
        return;
    // Below a column that is shown, whichever it is: beside the columns, the view finds no rows.
    int position = 0;
    while (position < header()->count() && header()->isSectionHidden(header()->logicalIndex(position)))
        ++position;
    if (position == header()->count())
        return;
    const QModelIndex first = indexAt(QPoint(columnViewportPosition(header()->logicalIndex(position)), 0));
    int top = visualRect(first).top();
    QModelIndex index = first.sibling(first.row(), 0);
    while (index.isValid() && top < viewport()->height()) {
        const int height = rowHeight(index);
        if (AbstractMessageTreeWidgetItem* row = dynamic_cast<AbstractMessageTreeWidgetItem*>(itemFromIndex(index))) {
            if (repaintChanged && row->m_changedColumns)
                repaintColumns(index, row->m_changedColumns, QRect(0, top, viewport()->width(), height));
            if (repaintChanged || !m_repaintPosted)
                row->m_changedColumns = 0;
            row->m_screenNumber = m_screenNumber;
        }
        top += height;
        index = indexBelow(index);
    }
}

void MessageTreeWidget::repaintColumns(const QModelIndex& index, unsigned int columns, const QRect& rowRect)
{
    CORVEL_DEBUG_HOOK();
    if (isFirstColumnSpanned(index.row(), index.parent())) {
        viewport()->update(rowRect);
        return;
    }
    for (int column = 0; column < columnCount(); ++column) {
        if (columns & (1u << qMin(column, 31)))
            viewport()->update(columnViewportPosition(column), rowRect.top(), columnWidth(column), rowRect.height());
    }
}

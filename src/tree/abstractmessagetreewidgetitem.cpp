#include "abstractmessagetreewidgetitem.h"

#include "corvel.h"
#include "diagnostics.h"
#include "messagetreecolumn.h"
#include "messagetreewidgetitem.h"
#include "rowguard.h"
#include "rowmemory.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"

#include <QPair>
#include <QSet>

#include <typeinfo>

CORVEL_DIAGNOSTICS("AbstractMessageTreeWidgetItem");

namespace
{

/** A text that is being stored; on the stack, as it is done for every value shown. Null is what has been deleted. */
struct Write
{
    const AbstractMessageTreeWidgetItem* row;
    const MessageTreeWidget* tree;
    Write* outer;
};

} // namespace

static Write* s_innermostWrite = nullptr;
// So many rows are taken out one by one without a thought.
static const int FewRows = 16;
// Taken before places are asked for: a sort that was put off comes before a child is taken, and moves it.
static const int NoChild = -1;
// Counts the rows that were deleted: while it stands still, every row is still there.
static unsigned int s_deletedRows = 0;

// Rows that go as soon as nobody holds the rows of their tree any more, each behind the one above it. A row of
// another class that somebody else deletes before is known by not being there any more.
typedef QPair<AbstractMessageTreeWidgetItem*, QTreeWidgetItem*> ReleasedRow;
static QList<ReleasedRow> s_releasedRows;

AbstractMessageTreeWidgetItem::AbstractMessageTreeWidgetItem(MessageTreeWidget* treeWidget)
    : QTreeWidgetItem()
    , m_messageTreeWidget(treeWidget)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("AbstractMessageTreeWidgetItem");
    m_initialExpansionPolicy = CollapseInitially;
    m_ordinaryColumns = 0;
    m_writesOwnText = 0;
    m_screenNumber = 0;
    m_changedColumns = 0;
}

AbstractMessageTreeWidgetItem::~AbstractMessageTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("AbstractMessageTreeWidgetItem");
    retire();
}

void AbstractMessageTreeWidgetItem::retire()
{
    CORVEL_DEBUG_HOOK();
    ++s_deletedRows;
    RowGuard::breakAll(this);
    for (Write* write = s_innermostWrite; write; write = write->outer) {
        if (write->row == this)
            write->row = nullptr;
    }
    for (int i = s_releasedRows.size() - 1; i >= 0; --i) {
        if (s_releasedRows.at(i).first == this || s_releasedRows.at(i).second == this)
            s_releasedRows.removeAt(i);
    }
    QTreeWidget* view = treeWidget();
    if (!view)
        return;
    MessageTreeWidget* tree = getTreeAround();
    const TreeUpdate update(tree);
    forgetPlaceInTree();
    if (tree && tree->m_rowBeingWritten == this)
        tree->m_rowBeingWritten = nullptr;
    const RowHold hold(tree, RowHold::RowsAreRemoved);
    QTreeWidgetItem* above = parent() ? parent() : view->invisibleRootItem();
    above->takeChild(NoChild);
    above->takeChild(above->indexOfChild(this));
}

void AbstractMessageTreeWidgetItem::forgetTree(const MessageTreeWidget* tree)
{
    CORVEL_DEBUG_HOOK();
    for (Write* write = s_innermostWrite; write; write = write->outer) {
        if (write->tree == tree)
            write->tree = nullptr;
    }
}

void AbstractMessageTreeWidgetItem::forgetPlaceInTree()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = parent() ? nullptr : getTreeAround();
    if (tree)
        tree->forgetTopLevelRows();
}

MessageTreeWidget* AbstractMessageTreeWidgetItem::getTreeAround() const
{
    CORVEL_DEBUG_HOOK();
    return treeWidget() ? const_cast<AbstractMessageTreeWidgetItem*>(this)->getMessageTreeWidget() : nullptr;
}

bool AbstractMessageTreeWidgetItem::mayAddRows()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getTreeAround();
    if (!tree || !tree->m_rowsAreRemoved)
        return true;
    tree->m_reconfigurationWanted = true;
    return false;
}

static void collapseWithAllBelow(QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    row->setExpanded(false);
    for (int i = 0; i < row->childCount(); ++i)
        collapseWithAllBelow(row->child(i));
}

bool AbstractMessageTreeWidgetItem::deleteRows(const QList<QTreeWidgetItem*>& rows)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getTreeAround();
    const TreeUpdate update(tree);
    const RowGuard self(this);
    QList<QTreeWidgetItem*> children;
    Q_FOREACH (QTreeWidgetItem* row, rows) {
        // One that somebody moved elsewhere is not among them.
        if (row->parent() == this)
            children.append(row);
        else
            delete row;
    }
    if (tree && tree->m_holds > 0) {
        Q_FOREACH (QTreeWidgetItem* row, children) {
            if (!s_releasedRows.contains(ReleasedRow(this, row)))
                s_releasedRows.append(ReleasedRow(this, row));
        }
        return true;
    }
    // The deletion of a row is told, too, and can lead to that of another: what is left to be deleted is what is here.
    QTreeWidgetItem leaving;
    takeRows(children, &leaving);
    while (leaving.childCount() > 0)
        RowMemory::deleteRow(leaving.takeChild(0));
    return !self.isBroken();
}

void AbstractMessageTreeWidgetItem::takeRows(const QList<QTreeWidgetItem*>& rows, QTreeWidgetItem* newParent)
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getTreeAround();
    const RowGuard self(this);
    if (tree && rows.size() > FewRows && rows.size() < childCount()) {
        // Each removal makes the model go through all rows that the view knows to be expanded. A view that is to lay
        // out everything anew forgets the expansion of a row without a look at the others.
        const bool wasBlocked = tree->blockSignals(true);
        tree->scheduleDelayedItemsLayout();
        Q_FOREACH (QTreeWidgetItem* row, rows)
            collapseWithAllBelow(row);
        tree->blockSignals(wasBlocked);
    }
    const RowHold hold(tree, RowHold::RowsAreRemoved);
    if (rows.size() == childCount()) {
        newParent->addChildren(takeChildren());
        return;
    }
    // From the end, where they mostly are.
    takeChild(NoChild);
    QSet<QTreeWidgetItem*> leaving;
    Q_FOREACH (QTreeWidgetItem* row, rows)
        leaving.insert(row);
    for (int i = childCount() - 1; !self.isBroken() && i >= 0; i = qMin(i, childCount()) - 1) {
        if (leaving.contains(child(i)))
            newParent->insertChild(0, takeChild(i));
    }
}

void AbstractMessageTreeWidgetItem::deleteReleasedRows(MessageTreeWidget* tree)
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(tree);
    int i = 0;
    while (!update.isOver() && tree->m_holds == 0 && i < s_releasedRows.size()) {
        AbstractMessageTreeWidgetItem* above = s_releasedRows.at(i).first;
        if (above->treeWidget() && above->treeWidget() != tree) {
            ++i;
            continue;
        }
        QList<QTreeWidgetItem*> rows;
        for (int j = s_releasedRows.size() - 1; j >= i; --j) {
            if (s_releasedRows.at(j).first != above)
                continue;
            if (above->indexOfChild(s_releasedRows.at(j).second) >= 0)
                rows.prepend(s_releasedRows.at(j).second);
            s_releasedRows.removeAt(j);
        }
        above->deleteRows(rows);
        i = 0;
    }
}

bool AbstractMessageTreeWidgetItem::deleteAllRows()
{
    CORVEL_DEBUG_HOOK();
    QList<QTreeWidgetItem*> rows;
    for (int i = 0; i < childCount(); ++i)
        rows.append(child(i));
    return deleteRows(rows);
}

QString AbstractMessageTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

QString AbstractMessageTreeWidgetItem::getNameToolTip()
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

QString AbstractMessageTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

QString AbstractMessageTreeWidgetItem::getValueText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

QString AbstractMessageTreeWidgetItem::getRawValueText()
{
    CORVEL_DEBUG_HOOK();
    return QLatin1String("");
}

QList<AbstractMessageTreeWidgetItem*> AbstractMessageTreeWidgetItem::getRowsBelow() const
{
    CORVEL_DEBUG_HOOK();
    QList<AbstractMessageTreeWidgetItem*> rows;
    for (int i = 0; i < childCount(); ++i) {
        if (AbstractMessageTreeWidgetItem* row = dynamic_cast<AbstractMessageTreeWidgetItem*>(child(i)))
            rows.append(row);
    }
    return rows;
}

/** @param deletedRows  what s_deletedRows was when the row was below */
bool AbstractMessageTreeWidgetItem::isStillBelow(AbstractMessageTreeWidgetItem* row, unsigned int deletedRows) const
{
    CORVEL_DEBUG_HOOK();
    return deletedRows == s_deletedRows || indexOfChild(row) >= 0;
}

bool AbstractMessageTreeWidgetItem::deliverBelow(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(getTreeAround());
    const RowGuard self(this);
    const unsigned int deletedRows = s_deletedRows;
    Q_FOREACH (AbstractMessageTreeWidgetItem* row, getRowsBelow()) {
        if (isStillBelow(row, deletedRows))
            row->processMessage(message);
        if (self.isBroken())
            return false;
    }
    return true;
}

void AbstractMessageTreeWidgetItem::configureInTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    if (!treeWidget())
        return;
    const TreeUpdate update(getTreeAround());
    const RowGuard self(this);
    // Texts that change can move rows, and whoever listens can remove some: the walk goes by what was there before.
    const unsigned int deletedRows = s_deletedRows;
    Q_FOREACH (AbstractMessageTreeWidgetItem* row, getRowsBelow()) {
        if (isStillBelow(row, deletedRows))
            row->configureInTreeWidget();
        if (self.isBroken())
            return;
    }
    if (!writeAllTexts() || !treeWidget())
        return;
    bool expanded = false;
    if (m_initialExpansionPolicy == ExpandInitially) {
        expanded = true;
    } else if (m_initialExpansionPolicy == RestoreExpansion) {
        MessageTreeWidget* tree = getMessageTreeWidget();
        expanded = tree && tree->mustInitiallyBeExpanded(this);
    }
    setExpanded(expanded);
}

void AbstractMessageTreeWidgetItem::translate()
{
    CORVEL_DEBUG_HOOK();
    const RowGuard self(this);
    if (MessageTreeWidgetItem* row = dynamic_cast<MessageTreeWidgetItem*>(this))
        row->translateConfidentialityRow();
    QList<AbstractMessageTreeWidgetItem*> rows;
    for (int i = 0; !self.isBroken() && i < childCount(); ++i) {
        if (AbstractMessageTreeWidgetItem* row = dynamic_cast<AbstractMessageTreeWidgetItem*>(child(i)))
            rows.append(row);
    }
    const unsigned int deletedRows = s_deletedRows;
    for (int i = 0; !self.isBroken() && i < rows.size(); ++i) {
        if (deletedRows == s_deletedRows || indexOfChild(rows.at(i)) >= 0)
            rows.at(i)->translate();
    }
    if (!self.isBroken() && writeName())
        writeAllTexts();
}

static unsigned int bitOfColumn(int column)
{
    CORVEL_DEBUG_HOOK();
    return column >= 0 && column < 31 ? 1u << column : 0;
}

void AbstractMessageTreeWidgetItem::setData(int column, int role, const QVariant& value)
{
    CORVEL_DEBUG_HOOK();
    // Only this once: whoever listens to the change may write here, too.
    const bool isOwnText = m_writesOwnText;
    m_writesOwnText = 0;
    if (!isOwnText && (role == Qt::DisplayRole || role == Qt::EditRole))
        m_ordinaryColumns &= ~bitOfColumn(column);
    QTreeWidgetItem::setData(column, role, value);
}

QVariant AbstractMessageTreeWidgetItem::data(int column, int role) const
{
    CORVEL_DEBUG_HOOK();
    const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
    MessageTreeWidget* tree = isText || role == Qt::ToolTipRole ? getTreeAround() : nullptr;
    MessageTreeColumn* custom = tree ? tree->getCustomColumnAt(column) : nullptr;
    if (!custom)
        return QTreeWidgetItem::data(column, role);
    // A column asks for what there is of a row, with operations that are not const although they change nothing.
    AbstractMessageTreeWidgetItem* row = const_cast<AbstractMessageTreeWidgetItem*>(this);
    if (isText)
        return QVariant(custom->getText(row));
    const QString toolTip = custom->getToolTip(row);
    return toolTip.isNull() ? QTreeWidgetItem::data(column, role) : QVariant(toolTip);
}

static bool isOneOrdinaryLine(const QString& text)
{
    CORVEL_DEBUG_HOOK();
    // Latin characters, for which no font is substituted, and no breaks: whatever such a line says, it is as high as
    // its font. An empty text has no height of its own.
    const QChar* character = text.constData();
    const QChar* end = character + text.size();
    for (; character != end; ++character) {
        const unsigned int code = character->unicode();
        if (code - 0x20 > 0x5e && code - 0xa0 > 0x5f)
            return false;
    }
    return !text.isEmpty();
}

bool AbstractMessageTreeWidgetItem::writeText(MessageTreeWidget* tree, int column, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    const unsigned int bit = bitOfColumn(column);
    const bool wasOrdinary = m_ordinaryColumns & bit;
    const bool isOrdinary = isOneOrdinaryLine(text);
    m_ordinaryColumns = isOrdinary ? m_ordinaryColumns | bit : m_ordinaryColumns & ~bit;
    m_writesOwnText = 1;
    tree->m_rowBeingWritten = wasOrdinary && isOrdinary ? this : nullptr;
    return store(tree, column, Qt::DisplayRole, QVariant(text));
}

bool AbstractMessageTreeWidgetItem::store(MessageTreeWidget* tree, int column, int role, const QVariant& value)
{
    CORVEL_DEBUG_HOOK();
    Write write = {this, tree, s_innermostWrite};
    s_innermostWrite = &write;
    ++tree->m_holds;
    setData(column, role, value);
    if (write.tree) {
        tree->m_rowBeingWritten = nullptr;
        if (--tree->m_holds == 0 && !s_releasedRows.isEmpty())
            deleteReleasedRows(tree);
    }
    s_innermostWrite = write.outer;
    return write.row;
}

MessageTreeWidget* AbstractMessageTreeWidgetItem::getMessageTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    QTreeWidget* view = treeWidget();
    if (!view)
        return m_messageTreeWidget;
    // Asked for every text: nearly always the tree is of this very class, which is far quicker to see than to cast.
    if (typeid(*view) == typeid(MessageTreeWidget))
        return static_cast<MessageTreeWidget*>(view);
    return dynamic_cast<MessageTreeWidget*>(view);
}

// No virtual operations: the slots of the rows' classes are fixed.
const FieldInfo* AbstractMessageTreeWidgetItem::getFieldInfo() const
{
    CORVEL_DEBUG_HOOK();
    const AbstractFieldTreeWidgetItem* row = dynamic_cast<const AbstractFieldTreeWidgetItem*>(this);
    return row ? row->getFieldInfo() : nullptr;
}

int AbstractMessageTreeWidgetItem::getIndex() const
{
    CORVEL_DEBUG_HOOK();
    if (const SingleValueFieldTreeWidgetItem* row = dynamic_cast<const SingleValueFieldTreeWidgetItem*>(this))
        return static_cast<int>(row->getIndex());
    if (const SingleSubMessageFieldTreeWidgetItem* row = dynamic_cast<const SingleSubMessageFieldTreeWidgetItem*>(this))
        return static_cast<int>(row->getIndex());
    return -1;
}

AbstractMessageTreeWidgetItem::InitialExpansionPolicy AbstractMessageTreeWidgetItem::getInitialExpansionPolicy() const
{
    CORVEL_DEBUG_HOOK();
    return m_initialExpansionPolicy;
}

void AbstractMessageTreeWidgetItem::setInitialExpansionPolicy(InitialExpansionPolicy policy)
{
    CORVEL_DEBUG_HOOK();
    m_initialExpansionPolicy = policy;
}

void AbstractMessageTreeWidgetItem::setNameText()
{
    CORVEL_DEBUG_HOOK();
    writeTexts(NameText);
}

void AbstractMessageTreeWidgetItem::setTypeText()
{
    CORVEL_DEBUG_HOOK();
    writeTexts(TypeText);
}

void AbstractMessageTreeWidgetItem::setValueText()
{
    CORVEL_DEBUG_HOOK();
    writeTexts(ValueText);
}

void AbstractMessageTreeWidgetItem::setRawValueText()
{
    CORVEL_DEBUG_HOOK();
    writeTexts(RawValueText);
}

// Done for every value that is shown. The tree and the column are asked for anew for each text: whoever listens to the
// one before may have moved the row, or the column.
bool AbstractMessageTreeWidgetItem::writeTexts(int texts)
{
    CORVEL_DEBUG_HOOK();
    updateCustomTexts();
    if (texts & NameText && !writeName())
        return false;
    MessageTreeWidget* tree = texts & TypeText ? getMessageTreeWidget() : nullptr;
    int column = tree ? tree->getColumnIndex(MessageTreeWidget::TypeColumn) : -1;
    if (column >= 0 && !writeText(tree, column, getTypeText()))
        return false;
    tree = texts & ValueText ? getMessageTreeWidget() : nullptr;
    column = tree ? tree->getColumnIndex(MessageTreeWidget::ValueColumn) : -1;
    if (column >= 0 && !writeText(tree, column, getValueText()))
        return false;
    tree = texts & RawValueText ? getMessageTreeWidget() : nullptr;
    column = tree ? tree->getColumnIndex(MessageTreeWidget::RawValueColumn) : -1;
    return column < 0 || writeText(tree, column, getRawValueText());
}

void AbstractMessageTreeWidgetItem::updateCustomTexts()
{
    CORVEL_DEBUG_HOOK();
    if (MessageTreeWidget* tree = getTreeAround())
        tree->noteCustomTexts(this);
}

bool AbstractMessageTreeWidgetItem::writeName()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    const int column = tree ? tree->getColumnIndex(MessageTreeWidget::NameColumn) : -1;
    if (column < 0)
        return true;
    if (!writeText(tree, column, getNameText()))
        return false;
    return getMessageTreeWidget() != tree || store(tree, column, Qt::ToolTipRole, QVariant(getNameToolTip()));
}

void AbstractMessageTreeWidgetItem::setAllTexts()
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(getTreeAround());
    writeAllTexts();
}

bool AbstractMessageTreeWidgetItem::writeAllTexts()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (!tree)
        return true;
    const QVector<MessageTreeWidget::ColumnType> columns = tree->getColumns();
    for (int i = 0; i < columns.size(); ++i) {
        const bool isStored = columns.at(i) != MessageTreeWidget::NoColumn && !tree->getCustomColumn(columns.at(i));
        if (isStored && !writeText(tree, i, getTextForColumn(columns.at(i))))
            return false;
        if (getMessageTreeWidget() != tree)
            break;
    }
    return true;
}

QString AbstractMessageTreeWidgetItem::getTextForColumn(MessageTreeWidget::ColumnType type)
{
    CORVEL_DEBUG_HOOK();
    switch (type) {
    case MessageTreeWidget::NameColumn:
        return getNameText();
    case MessageTreeWidget::RawValueColumn:
        return getRawValueText();
    case MessageTreeWidget::ValueColumn:
        return getValueText();
    case MessageTreeWidget::TypeColumn:
        return getTypeText();
    default:
        break;
    }
    MessageTreeWidget* tree = getMessageTreeWidget();
    MessageTreeColumn* custom = tree ? tree->getCustomColumn(type) : nullptr;
    return custom ? custom->getText(this) : QObject::tr("Column %1").arg(MessageTreeWidget::getDefaultColumnName(type));
}

bool AbstractMessageTreeWidgetItem::mustShowField(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    if (!field)
        return false;
    if (field->isConfidential() && !Corvel::confidentialInformationDisplayEnabled())
        return false;
    MessageTreeWidget* tree = getMessageTreeWidget();
    if (field->isVirtual() && tree && !tree->mustShowVirtualFields())
        return false;
    if (!tree)
        return true;
    if (tree->mustShowFieldsWithRole(field->getRole()))
        return true;
    Q_FOREACH (const FieldInfo* subField, field->getSubFieldInfos()) {
        if (mustShowField(subField))
            return true;
    }
    return false;
}

#include "desk.h"

#include "messageinfo.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"

#include <QAction>
#include <QHeaderView>

MessageTreeWidgetItem* Desk::pickRow(Tree* tree)
{
    return dynamic_cast<MessageTreeWidgetItem*>(m_chance.pick(tree->getTopLevelAbstractMessageTreeWidgetItems()));
}

QTreeWidgetItem* Desk::pickItem(QTreeWidget* tree)
{
    QTreeWidgetItem* item = tree->topLevelItem(m_chance.below(tree->topLevelItemCount()));
    while (item && item->childCount() > 0 && m_chance.percent(60))
        item = item->child(m_chance.below(item->childCount()));
    return item;
}

void Desk::addRow(Tree* tree)
{
    // A row that is in no tree looks at the one that it was made for, which must still be there.
    MessageTreeWidgetItem* row = m_chance.coin() ? m_chance.pick(m_shelf) : nullptr;
    if (row && row->getMessageTreeWidget() == tree)
        m_shelf.removeOne(row);
    else
        row = new MessageTreeWidgetItem(m_chance.percent(80) ? tree : nullptr, m_world.pickInfo());
    if (m_chance.percent(30))
        row->setInitialExpansionPolicy(AbstractMessageTreeWidgetItem::InitialExpansionPolicy(m_chance.below(3)));
    tree->insertTopLevelItem(m_chance.below(tree->topLevelItemCount() + 1), row);
    if (m_calm || m_chance.percent(80))
        row->configureInTreeWidget();
}

void Desk::takeRow(Tree* tree)
{
    MessageTreeWidgetItem* row = pickRow(tree);
    if (!row)
        return;
    tree->takeTopLevelItem(tree->indexOfTopLevelItem(row));
    if (m_chance.coin() && row->getMessageTreeWidget() == tree)
        m_shelf.append(row);
    else
        m_itemBin.append(row);
}

void Desk::operateOnTree(Tree* tree)
{
    const int kind = m_chance.below(100);
    if (kind < 30) {
        note("tree message");
        tree->processMessage(m_world.createMessage(m_world.pickMainInfo()).get());
    } else if (kind < 32) {
        note("tree null");
        tree->processMessage(nullptr);
    } else if (kind < 52) {
        operateOnRows(tree);
    } else if (kind < 70) {
        operateOnTreeColumns(tree);
    } else if (kind < 85) {
        operateOnItems(tree);
    } else {
        MessageTreeWidgetItem* row = pickRow(tree);
        if (row)
            operateOnRow(row);
    }
}

void Desk::operateOnTreeColumns(Tree* tree)
{
    const int choice = m_chance.below(14);
    note("tree columns", choice);
    switch (choice) {
    case 0:
        tree->setShowVirtualFields(m_chance.coin());
        break;
    case 1:
        tree->setHideVirtualFields(m_chance.coin());
        break;
    case 2:
        tree->setShowPrimaryFieldsOnly(m_chance.coin());
        break;
    case 3:
        tree->setHideSecondaryFields(m_chance.coin());
        break;
    case 4: {
        QVector<Tree::ColumnType> columns;
        for (int i = m_chance.below(6); i > 0; --i) {
            const Tree::ColumnType type = Tree::ColumnType(m_chance.below(6));
            if (!columns.contains(type) || m_chance.percent(3))
                columns.append(type);
        }
        tree->setColumns(columns);
        break;
    }
    case 5: {
        const Tree::ColumnType type = Tree::ColumnType(m_chance.below(14));
        const bool update = m_calm || m_chance.percent(80);
        if (!tree->hasColumn(type))
            tree->addColumn(type, update);
        break;
    }
    case 6:
        if (m_chance.percent(20))
            tree->clearColumns(m_calm || m_chance.coin());
        break;
    case 7:
        tree->resizeColumns();
        break;
    case 8:
        tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
        break;
    case 9:
        tree->saveSettings(m_settings);
        break;
    case 10:
        tree->restoreSettings(m_settings);
        break;
    case 11:
        tree->saveExpansionState(m_settings);
        break;
    case 12:
        tree->loadExpansionState(m_settings);
        break;
    default:
        m_chance.pick(tree->getToggleColumnActions())->trigger();
        break;
    }
}

void Desk::operateOnRows(Tree* tree)
{
    // Of rows that go in answer to a change Qt survives all but those of a column by which it is about to sort.
    const bool mayRemove = m_depth == 1 || !tree->isSortingEnabled();
    const int choice = m_chance.below(8);
    note("tree rows", choice);
    // Qt's model does not survive that rows change while it takes one out.
    if (choice <= 4 && m_rowsAreRemoved)
        return;
    if (choice >= 1 && choice <= 3)
        m_answers = 0;
    switch (choice) {
    case 0:
        if (tree->topLevelItemCount() < 8)
            addRow(tree);
        break;
    case 1:
        if (mayRemove)
            takeRow(tree);
        break;
    case 2:
        if (mayRemove && m_chance.percent(20))
            tree->clear();
        break;
    case 3:
        if (mayRemove && tree->topLevelItemCount() > 2)
            delete tree->topLevelItem(m_chance.below(tree->topLevelItemCount()));
        break;
    case 4:
        if (tree->topLevelItemCount() < 8)
            tree->addTopLevelItem(new QTreeWidgetItem(QStringList(QLatin1String("other"))));
        break;
    case 5: {
        QTreeWidgetItem* item = pickItem(tree);
        m_answers = 0; // see operateOnStatisticsCells()
        if (item && !m_calm)
            item->setText(m_chance.below(4), QString::fromLatin1("mine %1").arg(m_chance.below(100)));
        break;
    }
    case 6:
        if (QTreeWidgetItem* item = pickItem(tree))
            item->setData(m_chance.below(3), Qt::UserRole + m_chance.below(3), m_chance.below(100));
        break;
    default:
        if (!m_shelf.isEmpty())
            operateOnRow(m_chance.pick(m_shelf));
        break;
    }
}

void Desk::operateOnRow(MessageTreeWidgetItem* row)
{
    const int choice = m_chance.below(11);
    note("row", choice);
    switch (choice) {
    case 0:
        if (m_chance.percent(30))
            row->setMessageInfo(m_world.pickInfo());
        break;
    case 1:
    case 2:
    case 3: {
        const MessageInfo* info = row->getMessageInfo();
        if (!info || !info->isMain() || m_chance.percent(30))
            info = m_world.pickMainInfo();
        const MessageReference message = m_world.createMessage(info);
        if (m_chance.percent(70))
            row->displayMessage(message.get());
        else
            row->processMessage(message.get());
        break;
    }
    case 4:
        if (m_chance.percent(30))
            row->displayMessage(nullptr);
        break;
    case 5:
        row->clearValues();
        break;
    case 6:
        row->configureInTreeWidget();
        break;
    case 7:
        row->setInitialExpansionPolicy(AbstractMessageTreeWidgetItem::InitialExpansionPolicy(m_chance.below(3)));
        break;
    case 8:
        row->setAllTexts();
        break;
    case 9:
        row->setNameText();
        break;
    default:
        row->setValueText();
        break;
    }
}

static QModelIndex indexOf(QTreeWidget* tree, QTreeWidgetItem* item)
{
    QTreeWidgetItem* const parent = item->parent();
    return parent ? tree->model()->index(parent->indexOfChild(item), 0, indexOf(tree, parent))
                  : tree->model()->index(tree->indexOfTopLevelItem(item), 0);
}

void Desk::operateOnItems(QTreeWidget* tree)
{
    QTreeWidgetItem* item = pickItem(tree);
    const int choice = item ? m_chance.below(14) : m_chance.below(6);
    note("items", choice);
    // The view tells of each of the rows that it had when it began, whatever became of them, and goes on with a row
    // that it made visible by expanding those above.
    if (choice < 2 || choice == 5 || choice == 8 || choice == 10)
        m_answers = 0;
    switch (choice) {
    case 0:
        tree->expandAll();
        break;
    case 1:
        tree->collapseAll();
        break;
    case 2:
        // Not in answer to a change: its model goes on with the places that rows had when they changed.
        if (m_depth == 1)
            tree->setSortingEnabled(m_chance.coin());
        break;
    case 3:
        if (m_depth == 1)
            tree->sortByColumn(m_chance.below(qMax(1, tree->columnCount())), Qt::SortOrder(m_chance.below(2)));
        break;
    case 4:
        tree->header()->moveSection(m_chance.below(tree->columnCount()), m_chance.below(tree->columnCount()));
        break;
    case 5:
        operateOnItemView(tree);
        break;
    case 6:
    case 7:
        item->setExpanded(!item->isExpanded());
        break;
    case 8:
        m_choiceDepth = m_depth;
        tree->setCurrentItem(item);
        break;
    case 9:
        // Not by the item itself, which goes on when listeners may have deleted it.
        m_choiceDepth = m_depth;
        tree->selectionModel()->select(indexOf(tree, item), QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
        break;
    case 10:
        tree->scrollToItem(item);
        break;
    case 11:
        item->setFirstColumnSpanned(!item->isFirstColumnSpanned());
        break;
    case 12:
        item->setHidden(!item->isHidden());
        break;
    default:
        tree->header()->resizeSection(m_chance.below(qMax(1, tree->columnCount())), 20 + m_chance.below(200));
        break;
    }
}

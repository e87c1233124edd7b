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
    if (kind < 32) {
        note(kind < 30 ? "tree message" : "tree null");
        tree->processMessage(kind < 30 ? m_world.createMessage(m_world.pickMainInfo()).get() : nullptr);
    } else if (kind < 52) {
        operateOnRows(tree);
    } else if (kind < 70) {
        operateOnTreeColumns(tree);
    } else if (kind < 85) {
        operateOnItems(tree);
    } else if (MessageTreeWidgetItem* row = pickRow(tree)) {
        operateOnRow(row);
    }
}

void Desk::operateOnTreeColumns(Tree* tree)
{
    const Operations operations = {
        [&] { tree->setShowVirtualFields(m_chance.coin()); },
        [&] { tree->setHideVirtualFields(m_chance.coin()); },
        [&] { tree->setShowPrimaryFieldsOnly(m_chance.coin()); },
        [&] { tree->setHideSecondaryFields(m_chance.coin()); },
        [&] {
            QVector<Tree::ColumnType> columns;
            for (int i = m_chance.below(6); i > 0; --i) {
                const Tree::ColumnType type = Tree::ColumnType(m_chance.below(6));
                if (!columns.contains(type) || m_chance.percent(3))
                    columns.append(type);
            }
            tree->setColumns(columns);
        },
        [&] {
            const Tree::ColumnType type = Tree::ColumnType(m_chance.below(14));
            const bool update = m_calm || m_chance.percent(80);
            if (!tree->hasColumn(type))
                tree->addColumn(type, update);
        },
        [&] {
            if (m_chance.percent(20))
                tree->clearColumns(m_calm || m_chance.coin());
        },
        [&] { tree->resizeColumns(); },
        [&] { tree->reconfigureTopLevelAbstractMessageTreeWidgetItems(); },
        [&] { tree->saveSettings(m_settings); },
        [&] { tree->restoreSettings(m_settings); },
        [&] { tree->saveExpansionState(m_settings); },
        [&] { tree->loadExpansionState(m_settings); },
        [&] { m_chance.pick(tree->getToggleColumnActions())->trigger(); },
    };
    doOneOf("tree columns", 14, operations);
}

void Desk::operateOnRows(Tree* tree)
{
    // Of rows that go in answer to a change Qt survives all but those of a column by which it is about to sort.
    const bool mayRemove = m_depth == 1 || !tree->isSortingEnabled();
    const int choice = choose("tree rows", 8);
    // Qt's model does not survive that rows change while it takes one out.
    if (choice <= 4 && m_rowsAreRemoved)
        return;
    if (choice >= 1 && choice <= 3) {
        m_answers = 0;
        if (!mayRemove)
            return;
    }
    const Operations operations = {
        [&] {
            if (tree->topLevelItemCount() < 8)
                addRow(tree);
        },
        [&] { takeRow(tree); },
        [&] {
            if (m_chance.percent(20))
                tree->clear();
        },
        [&] {
            if (tree->topLevelItemCount() > 2)
                delete tree->topLevelItem(m_chance.below(tree->topLevelItemCount()));
        },
        [&] {
            if (tree->topLevelItemCount() < 8)
                tree->addTopLevelItem(new QTreeWidgetItem(QStringList(QLatin1String("other"))));
        },
        [&] {
            QTreeWidgetItem* item = pickItem(tree);
            m_answers = 0; // see operateOnStatisticsCells()
            if (item && !m_calm)
                item->setText(m_chance.below(4), QString::fromLatin1("mine %1").arg(m_chance.below(100)));
        },
        [&] {
            if (QTreeWidgetItem* item = pickItem(tree))
                item->setData(m_chance.below(3), Qt::UserRole + m_chance.below(3), m_chance.below(100));
        },
        [&] {
            if (!m_shelf.isEmpty())
                operateOnRow(m_chance.pick(m_shelf));
        },
    };
    perform(choice, operations);
}

void Desk::operateOnRow(MessageTreeWidgetItem* row)
{
    const std::function<void()> message = [&] {
        const MessageInfo* info = row->getMessageInfo();
        if (!info || !info->isMain() || m_chance.percent(30))
            info = m_world.pickMainInfo();
        const MessageReference created = m_world.createMessage(info);
        if (m_chance.percent(70))
            row->displayMessage(created.get());
        else
            row->processMessage(created.get());
    };
    const Operations operations = {
        [&] {
            if (m_chance.percent(30))
                row->setMessageInfo(m_world.pickInfo());
        },
        message,
        message,
        message,
        [&] {
            if (m_chance.percent(30))
                row->displayMessage(nullptr);
        },
        [&] { row->clearValues(); },
        [&] { row->configureInTreeWidget(); },
        [&] { row->setInitialExpansionPolicy(MessageTreeWidgetItem::InitialExpansionPolicy(m_chance.below(3))); },
        [&] { row->setAllTexts(); },
        [&] { row->setNameText(); },
        [&] { row->setValueText(); },
    };
    doOneOf("row", 11, operations);
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
    const std::function<void()> expand = [&] { item->setExpanded(!item->isExpanded()); };
    const Operations operations = {
        [&] { tree->expandAll(); },
        [&] { tree->collapseAll(); },
        [&] {
            // Not in answer to a change: its model goes on with the places that rows had when they changed.
            if (m_depth == 1)
                tree->setSortingEnabled(m_chance.coin());
        },
        [&] {
            if (m_depth == 1)
                tree->sortByColumn(m_chance.below(qMax(1, tree->columnCount())), Qt::SortOrder(m_chance.below(2)));
        },
        [&] { tree->header()->moveSection(m_chance.below(tree->columnCount()), m_chance.below(tree->columnCount())); },
        [&] { operateOnItemView(tree); },
        expand,
        expand,
        [&] {
            m_choiceDepth = m_depth;
            tree->setCurrentItem(item);
        },
        [&] {
            // Not by the item itself, which goes on when listeners may have deleted it.
            m_choiceDepth = m_depth;
            tree->selectionModel()->select(indexOf(tree, item),
                                           QItemSelectionModel::Toggle | QItemSelectionModel::Rows);
        },
        [&] { tree->scrollToItem(item); },
        [&] { item->setFirstColumnSpanned(!item->isFirstColumnSpanned()); },
        [&] { item->setHidden(!item->isHidden()); },
        [&] { tree->header()->resizeSection(m_chance.below(qMax(1, tree->columnCount())), 20 + m_chance.below(200)); },
    };
    const int choice = choose("items", item ? 14 : 6);
    // The view tells of each of the rows that it had when it began, whatever became of them, and goes on with a row
    // that it made visible by expanding those above.
    if (choice < 2 || choice == 5 || choice == 8 || choice == 10)
        m_answers = 0;
    perform(choice, operations);
}

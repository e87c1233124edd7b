#include "desk.h"

#include "eventlogtablewidget.h"
#include "messageinfo.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagewidget.h"
#include "pathexpression.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlistwidget.h"
#include "shown.h"

#include <QHeaderView>
#include <QLabel>

#include <algorithm>

// What widgets must show after all that was done with them: what new ones show that are given the same.

/** What the rows below @p parent show in @p columns; sorted, as rows with sorted texts may stand in any order. */
static QStringList textsBelow(const QTreeWidgetItem* parent, const QVector<int>& columns, bool sorted)
{
    QStringList blocks;
    for (int i = 0; i < parent->childCount(); ++i) {
        QStringList cells;
        Q_FOREACH (int column, columns)
            cells.append(parent->child(i)->text(column));
        QStringList block(cells.join(QLatin1String(" | ")));
        Q_FOREACH (const QString& line, textsBelow(parent->child(i), columns, sorted))
            block.append(QLatin1String("  ") + line);
        blocks.append(block.join(QLatin1String("\n")));
    }
    if (sorted)
        blocks.sort();
    return blocks.isEmpty() ? blocks : blocks.join(QLatin1String("\n")).split(QLatin1Char('\n'));
}

/** The first place where @p shown is not what was @p expected, with a few lines from there on. */
static QString difference(const QString& what, const QStringList& shown, const QStringList& expected)
{
    int line = 0;
    while (line < shown.size() && line < expected.size() && shown.at(line) == expected.at(line))
        ++line;
    const QString separator = QLatin1String("\n    ");
    return what + QString::fromLatin1(" shows from line %1 on").arg(line) + separator +
           shown.mid(line, 8).join(separator) + QLatin1String("\nand not") + separator +
           expected.mid(line, 8).join(separator);
}

QStringList Desk::checkTree(Tree* tree, const QString& when)
{
    Tree fresh;
    fresh.setShowPrimaryFieldsOnly(!tree->mustShowFieldsWithRole(FieldInfo::SecondaryRole));
    fresh.setShowVirtualFields(tree->mustShowVirtualFields());
    // What stands in columns that the tree does not manage is nobody's.
    QVector<Tree::ColumnType> types = tree->getColumns();
    types.erase(std::remove(types.begin(), types.end(), Tree::NoColumn), types.end());
    fresh.setColumns(types);
    QVector<int> columns;
    QVector<int> freshColumns;
    for (int i = 0; i < types.size(); ++i) {
        columns.append(tree->getColumnIndex(types.at(i)));
        freshColumns.append(i);
    }
    QStringList complaints;
    Q_FOREACH (AbstractMessageTreeWidgetItem* item, tree->getTopLevelAbstractMessageTreeWidgetItems()) {
        MessageTreeWidgetItem* row = dynamic_cast<MessageTreeWidgetItem*>(item);
        const MessageInfo* info = row->getMessageInfo();
        // Of types that are not received on their own nothing is kept to compare.
        if (!info || !info->isMain())
            continue;
        MessageTreeWidgetItem* freshRow = new MessageTreeWidgetItem(&fresh, info);
        fresh.addTopLevelItem(freshRow);
        freshRow->configureInTreeWidget();
        if (row->getDisplayedMessage())
            freshRow->displayMessage(row->getDisplayedMessage());
        else if (when.isEmpty())
            continue; // which optional fields were missing is remembered when values are cleared
        const bool sorted = when.isEmpty();
        const QStringList shown = textsBelow(row, columns, sorted);
        const QStringList expected = textsBelow(freshRow, freshColumns, sorted);
        if (shown != expected)
            complaints.append(difference(QLatin1String("The row of ") + info->getName() + when, shown, expected));
    }
    return complaints;
}

QStringList Desk::checkForm(MessageWidget* form)
{
    const MessageInfo* info = form->getMessageInfo();
    if (!info)
        return form->findChildren<QLabel*>().isEmpty() ? QStringList()
                                                       : QStringList(QLatin1String("An empty form has labels"));
    const MessageReference message = MessageReference::adopt(m_world.createMessage(info));
    form->processMessage(message.get());
    MessageWidget fresh(nullptr, info);
    fresh.processMessage(message.get());
    QStringList shown;
    QStringList expected;
    Q_FOREACH (const QLabel* label, form->findChildren<QLabel*>())
        shown.append(label->text());
    Q_FOREACH (const QLabel* label, fresh.findChildren<QLabel*>())
        expected.append(label->text());
    return shown == expected ? QStringList() : QStringList(difference(QLatin1String("The form"), shown, expected));
}

QStringList Desk::checkStatistics(MessageStatisticsWidget* statistics)
{
    const QVector<int> columns = QVector<int>() << 0 << 1 << 2 << 3;
    MessageStatisticsWidget fresh(&m_coordinator, nullptr);
    fresh.updateTree();
    // Surplus rows of gaps go by halves.
    for (int i = 0; i < 20; ++i)
        statistics->updateTree();
    const QStringList shown = textsBelow(statistics->invisibleRootItem(), columns, true);
    const QStringList expected = textsBelow(fresh.invisibleRootItem(), columns, true);
    QStringList complaints;
    if (m_calm && shown != expected) // texts that never change are those of the language in which the rows were made
        complaints.append(difference(QLatin1String("The statistics"), shown, expected));
    if (statistics->isColumnHidden(3) != fresh.isColumnHidden(3))
        complaints.append(QLatin1String("The gaps column is there and has nothing to show, or the other way round"));
    return complaints;
}

QStringList Desk::checkTable(EventLogTableWidget* table)
{
    QStringList complaints;
    for (int row = 0; row < table->rowCount(); ++row) {
        if (!table->item(row, 0) || !table->item(row, 1))
            complaints.append(QString::fromLatin1("Row %1 of the event table has no cells").arg(row));
    }
    m_log.clear();
    m_log.append(CorvelEvent(CorvelEvent::OtherEvent, QLatin1String("the last")), QDateTime());
    if (table->rowCount() != 1 || !table->item(0, 1) || table->item(0, 1)->text() != QLatin1String("the last"))
        complaints.append(QString::fromLatin1("The event table has %1 rows for one event").arg(table->rowCount()));
    return complaints;
}

/** Compares @p editor, refreshed, with a new one. */
template <typename Editor>
static QStringList checkOptions(Editor* editor, Editor* fresh)
{
    editor->setParts(editor->getParts());
    const QString shown = entriesText(*editor);
    fresh->setOptionsSourcePathExpression(editor->getOptionsSourcePathExpression());
    const QString expected = entriesText(*fresh);
    return shown == expected
               ? QStringList()
               : QStringList(difference(QLatin1String("A choice"), QStringList(shown), QStringList(expected)));
}

QStringList Desk::checkEditors()
{
    QStringList complaints;
    Q_FOREACH (QWidget* widget, m_editors) {
        if (PathExpressionLabel* label = qobject_cast<PathExpressionLabel*>(widget)) {
            const PathExpressionLabel fresh(label->getPathExpression(), label->getParts());
            if (m_calm && label->text() != fresh.text())
                complaints.append(
                    difference(QLatin1String("A label"), QStringList(label->text()), QStringList(fresh.text())));
        } else if (PathExpressionComboBox* box = qobject_cast<PathExpressionComboBox*>(widget)) {
            PathExpressionComboBox fresh(box->getPathExpression(), box->getParts());
            box->setAllOptionEnabled(true, QLatin1String("All"));
            complaints += checkOptions(box, &fresh);
        } else if (PathExpressionListWidget* list = qobject_cast<PathExpressionListWidget*>(widget)) {
            PathExpressionListWidget fresh(list->getPathExpression(), list->getParts());
            complaints += checkOptions(list, &fresh);
        }
    }
    return complaints;
}

QStringList Desk::check()
{
    m_answers = 0;
    QStringList complaints;
    Q_FOREACH (Tree* tree, m_trees) {
        if (m_world.isTame() && m_calm)
            complaints += checkTree(tree, QString());
        tree->setSortingEnabled(false);
        tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
        complaints += checkTree(tree, QLatin1String(", configured anew,"));
    }
    Q_FOREACH (MessageWidget* form, m_forms)
        complaints += checkForm(form);
    Q_FOREACH (MessageStatisticsWidget* statistics, m_statistics)
        complaints += checkStatistics(statistics);
    Q_FOREACH (EventLogTableWidget* table, m_tables)
        complaints += checkTable(table);
    return complaints + checkEditors();
}

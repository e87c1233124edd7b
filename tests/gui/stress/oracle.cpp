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

/** Nothing, or the first place where @p shown is not what was @p expected, with a few lines from there on. */
static QStringList compare(const QString& what, const QStringList& shown, const QStringList& expected)
{
    if (shown == expected)
        return QStringList();
    int line = 0;
    while (line < shown.size() && line < expected.size() && shown.at(line) == expected.at(line))
        ++line;
    const QString separator = QLatin1String("\n    ");
    return QStringList(what + QString::fromLatin1(" shows from line %1 on").arg(line) + separator +
                       shown.mid(line, 8).join(separator) + QLatin1String("\nand not") + separator +
                       expected.mid(line, 8).join(separator));
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
        complaints += compare(QLatin1String("The row of ") + info->getName() + when, textsBelow(row, columns, sorted),
                              textsBelow(freshRow, freshColumns, sorted));
    }
    return complaints;
}

static QStringList labelsOf(const QWidget& form)
{
    QStringList texts;
    Q_FOREACH (const QLabel* label, form.findChildren<QLabel*>())
        texts.append(label->text());
    return texts;
}

QStringList Desk::checkForm(MessageWidget* form)
{
    MessageWidget fresh(nullptr, form->getMessageInfo());
    if (form->getMessageInfo()) {
        const MessageReference message = m_world.createMessage(form->getMessageInfo());
        form->processMessage(message.get());
        fresh.processMessage(message.get());
    }
    return compare(QLatin1String("The form"), labelsOf(*form), labelsOf(fresh));
}

QStringList Desk::checkStatistics(MessageStatisticsWidget* statistics)
{
    const QVector<int> columns = QVector<int>() << 0 << 1 << 2 << 3;
    MessageStatisticsWidget fresh(&m_coordinator, nullptr);
    fresh.updateTree();
    // Surplus rows of gaps go by halves.
    for (int i = 0; i < 20; ++i)
        statistics->updateTree();
    QStringList complaints;
    if (m_calm) // texts that never change are those of the language in which the rows were made
        complaints =
            compare(QLatin1String("The statistics"), textsBelow(statistics->invisibleRootItem(), columns, true),
                    textsBelow(fresh.invisibleRootItem(), columns, true));
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
static QStringList checkOptions(Editor* editor)
{
    editor->setParts(editor->getParts());
    Editor fresh(editor->getPathExpression(), editor->getParts());
    fresh.setOptionsSourcePathExpression(editor->getOptionsSourcePathExpression());
    return compare(QLatin1String("A choice"), QStringList(entriesText(*editor)), QStringList(entriesText(fresh)));
}

QStringList Desk::checkEditors()
{
    QStringList complaints;
    Q_FOREACH (PathExpressionLabel* label, all<PathExpressionLabel>()) {
        const PathExpressionLabel fresh(label->getPathExpression(), label->getParts());
        if (m_calm)
            complaints += compare(QLatin1String("A label"), QStringList(label->text()), QStringList(fresh.text()));
    }
    Q_FOREACH (PathExpressionComboBox* box, all<PathExpressionComboBox>()) {
        box->setAllOptionEnabled(true, QLatin1String("All"));
        complaints += checkOptions(box);
    }
    Q_FOREACH (PathExpressionListWidget* list, all<PathExpressionListWidget>())
        complaints += checkOptions(list);
    return complaints;
}

QStringList Desk::check()
{
    m_answers = 0;
    QStringList complaints;
    Q_FOREACH (Tree* tree, all<Tree>()) {
        if (m_world.isTame() && m_calm)
            complaints += checkTree(tree, QString());
        tree->setSortingEnabled(false);
        tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
        complaints += checkTree(tree, QLatin1String(", configured anew,"));
    }
    Q_FOREACH (MessageWidget* form, all<MessageWidget>())
        complaints += checkForm(form);
    Q_FOREACH (MessageStatisticsWidget* statistics, all<MessageStatisticsWidget>())
        complaints += checkStatistics(statistics);
    Q_FOREACH (EventLogTableWidget* table, all<EventLogTableWidget>())
        complaints += checkTable(table);
    return complaints + checkEditors();
}

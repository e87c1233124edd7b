#ifndef TREEFIXTURES_H
#define TREEFIXTURES_H

#include "messagefixtures.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "shown.h"

#include <QApplication>
#include <QMessageBox>
#include <QTimer>

typedef MessageTreeWidget Tree;

/** Adds a row for @p info to the tree and configures it, as an application does. */
inline MessageTreeWidgetItem* addRow(Tree* tree, const MessageInfo* info)
{
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(tree, info);
    tree->addTopLevelItem(row);
    row->configureInTreeWidget();
    return row;
}

/** Shows the tree and lets it be painted. */
inline void showTree(QTreeWidget* tree)
{
    tree->resize(500, 400);
    tree->show();
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

/** The column types with these numbers: "0,3,2". */
inline QVector<Tree::ColumnType> columns(const QString& numbers)
{
    QVector<Tree::ColumnType> types;
    Q_FOREACH (const QString& number, numbers.split(QLatin1Char(',')))
        types.append(Tree::ColumnType(number.toInt()));
    return types;
}

/** The rows from top to bottom, with a plus behind those that are expanded. */
inline QString expansionText(QTreeWidget* tree)
{
    QStringList names;
    for (QTreeWidgetItemIterator row(tree); *row; ++row)
        names << (*row)->text(0) + text((*row)->isExpanded() ? "+" : "");
    return names.join(text(" "));
}

inline QString columnsText(const Tree& tree)
{
    QStringList numbers;
    Q_FOREACH (Tree::ColumnType type, tree.getColumns())
        numbers << QString::number(int(type));
    return numbers.join(QLatin1String(","));
}

/**
 * A tree, and what can be done with it in a word: "add TYPE", "columns 0,3,2", a slot as "setShowVirtualFields 0",
 * "anew" for configuring all; with its first row "clear" and "display MESSAGE"; or any message, see Types.
 */
struct Stage : Types
{
    explicit Stage(const char* types)
        : Types(types)
    {
    }

    MessageTreeWidgetItem* add(const char* typeName) { return addRow(&tree, type(typeName)); }
    MessageTreeWidgetItem* first() const { return dynamic_cast<MessageTreeWidgetItem*>(tree.topLevelItem(0)); }
    void send(const char* words) { tree.processMessage(message(words).get()); }

    /** What the tree shows after @p command. */
    QString operator()(const QString& command)
    {
        const QString verb = command.section(QLatin1Char(' '), 0, 0);
        const QString object = command.section(QLatin1Char(' '), 1);
        if (verb == "add")
            addRow(&tree, type(object));
        else if (verb == "columns")
            tree.setColumns(columns(object));
        else if (verb.startsWith("set"))
            QMetaObject::invokeMethod(&tree, verb.toLatin1(), Q_ARG(bool, object.toInt()));
        else if (verb == "anew")
            tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
        else if (verb == "configure")
            first()->configureInTreeWidget();
        else if (verb == "type")
            first()->setMessageInfo(type(object));
        else if (verb == "clear")
            first()->clearValues();
        else if (verb == "display")
            first()->displayMessage(message(object).get());
        else
            tree.processMessage(message(command).get());
        return rowTexts(tree).join(text("\n"));
    }

    Tree tree;
};

/** Closes the warning boxes that come up, and keeps what they said. */
class BoxCloser : public QObject
{
    Q_OBJECT

public:
    BoxCloser()
    {
        connect(&m_timer, SIGNAL(timeout()), SLOT(closeBox()));
        m_timer.start(0);
    }

    QStringList texts;

private Q_SLOTS:
    void closeBox()
    {
        QMessageBox* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        texts << box->windowTitle() << box->text();
        box->accept();
    }

private:
    QTimer m_timer;
};

#endif

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
inline QVector<Tree::ColumnType> columns(const char* numbers)
{
    QVector<Tree::ColumnType> types;
    Q_FOREACH (const QString& number, text(numbers).split(QLatin1Char(',')))
        types.append(Tree::ColumnType(number.toInt()));
    return types;
}

inline QString columnsText(const Tree& tree)
{
    QStringList numbers;
    Q_FOREACH (Tree::ColumnType type, tree.getColumns())
        numbers << QString::number(int(type));
    return numbers.join(QLatin1String(","));
}

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

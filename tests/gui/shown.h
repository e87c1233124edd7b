#ifndef SHOWN_H
#define SHOWN_H

#include "textrows.h"

#include <QComboBox>
#include <QListWidget>
#include <QTreeWidget>

// What widgets show, as texts, so that an assertion reads like the screen.

inline QStringList lines(const char* latin1)
{
    const QString all = text(latin1);
    return all.isEmpty() ? QStringList() : all.split(QLatin1Char('\n'));
}

/** What a row shows, without the empty cells at its end: "speed | double | 3.5 m/s". */
inline QString rowText(const QTreeWidgetItem* row)
{
    QStringList cells;
    const int columns = row->treeWidget() ? row->treeWidget()->columnCount() : row->columnCount();
    for (int column = 0; column < columns; ++column)
        cells.append(row->text(column));
    while (!cells.isEmpty() && cells.last().isEmpty())
        cells.removeLast();
    return cells.join(text(" | "));
}

/** What all rows below a row show, two blanks for each level. */
inline QStringList rowTexts(const QTreeWidgetItem* parent, const QString& indent = QString())
{
    QStringList texts;
    for (int i = 0; i < parent->childCount(); ++i) {
        texts.append(indent + rowText(parent->child(i)));
        texts += rowTexts(parent->child(i), indent + text("  "));
    }
    return texts;
}

inline QStringList rowTexts(const QTreeWidget& tree)
{
    return rowTexts(tree.invisibleRootItem());
}

/** The entries, the current one in angle brackets. */
inline QString entriesText(const QAbstractItemModel* model, int current)
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts.append(text(row == current ? "<%1>" : "%1").arg(model->index(row, 0).data().toString()));
    return texts.join(text(", "));
}

inline QString entriesText(const QComboBox& box)
{
    return entriesText(box.model(), box.currentIndex());
}

inline QString entriesText(const QListWidget& list)
{
    return entriesText(list.model(), list.currentRow());
}

#endif

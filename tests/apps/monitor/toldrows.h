#ifndef TOLDROWS_H
#define TOLDROWS_H

#include <QStringList>
#include <QTreeWidget>

/** The row on this way of names, "NAV_STATE/place/place [1]/x"; null when there is none. */
inline QTreeWidgetItem* findRow(const QTreeWidget& tree, const QString& way)
{
    QTreeWidgetItem* item = tree.invisibleRootItem();
    for (const QString& name : way.split('/')) {
        QTreeWidgetItem* found = nullptr;
        for (int i = 0; item && i < item->childCount(); ++i)
            if (item->child(i)->text(0) == name)
                found = item->child(i);
        item = found;
    }
    return item;
}

/** The rows that can be seen, deeper ones with dots in front: "NAV_STATE, .mode". */
inline QString shownRows(const QTreeWidgetItem* item, const QString& dots = QString())
{
    QStringList names;
    for (int i = 0; i < item->childCount(); ++i) {
        const QTreeWidgetItem* const child = item->child(i);
        if (child->isHidden())
            continue;
        names.append(dots + child->text(0));
        if (child->isExpanded() && child->childCount() > 0)
            names.append(shownRows(child, dots + '.'));
    }
    return names.join(", ");
}

#endif

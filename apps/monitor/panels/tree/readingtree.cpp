#include "readingtree.h"

#include "valuedelegate.h"

#include <QAccessible>

static const int MostRows = 500; // nobody has a screen for more

ReadingTree::ReadingTree(QWidget* parent)
    : MessageTreeWidget(parent)
{
    setUniformRowHeights(true);
}

QList<QTreeWidgetItem*> ReadingTree::getRowsOnScreen() const
{
    QList<QTreeWidgetItem*> rows;
    QTreeWidgetItem* item = itemAt(0, 0);
    const int height = item ? qMax(1, visualItemRect(item).height()) : 1;
    for (int y = item ? visualItemRect(item).top() : 0; item && y < viewport()->height() && rows.size() < MostRows;
         y += height) {
        item = itemAt(0, qMax(0, y));
        if (item)
            rows.append(item);
    }
    return rows;
}

void ReadingTree::dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles)
{
    // Screen readers are served by the view itself.
    if (topLeft != bottomRight || !topLeft.isValid() || QAccessible::isActive()) {
        MessageTreeWidget::dataChanged(topLeft, bottomRight, roles);
        if (!roles.contains(Qt::AccessibleTextRole))
            tellSoon();
        return;
    }
    const QTreeWidgetItem* item = static_cast<QTreeWidgetItem*>(topLeft.internalPointer()); // as in every index of it
    if (!m_onScreen.contains(item)) {
        item = item->parent();
        if (!item || !m_onScreen.contains(item) || item->isExpanded())
            return;
    }
    m_changed.insert(item);
    if (m_isPosted)
        return;
    m_isPosted = true;
    QMetaObject::invokeMethod(this, &ReadingTree::repaintChanged, Qt::QueuedConnection);
}

void ReadingTree::tellSoon()
{
    if (m_isTold || !QAccessible::isActive())
        return;
    m_isTold = true;
    QMetaObject::invokeMethod(this, &ReadingTree::tellRowsOnScreen, Qt::QueuedConnection);
}

void ReadingTree::tellRowsOnScreen()
{
    m_isTold = false;
    const auto* const delegate = qobject_cast<const ValueDelegate*>(itemDelegate());
    const int column = getColumnIndex(ValueColumn);
    if (!delegate || column < 0)
        return;
    const QList<QTreeWidgetItem*> rows = getRowsOnScreen();
    for (QTreeWidgetItem* const row : rows) {
        const QString text = delegate->getText(indexFromItem(row, column));
        if (row->data(column, Qt::AccessibleTextRole).toString() != text)
            row->setData(column, Qt::AccessibleTextRole, text);
    }
}

void ReadingTree::repaintChanged()
{
    m_isPosted = false;
    const QList<QTreeWidgetItem*> rows = getRowsOnScreen();
    for (const QTreeWidgetItem* const row : rows) {
        if (!m_changed.contains(row))
            continue;
        const QRect rect = visualItemRect(row);
        viewport()->update(0, rect.top(), viewport()->width(), rect.height());
    }
    m_changed.clear();
}

void ReadingTree::paintEvent(QPaintEvent* event)
{
    MessageTreeWidget::paintEvent(event);
    m_onScreen.clear();
    const QList<QTreeWidgetItem*> rows = getRowsOnScreen();
    for (const QTreeWidgetItem* const row : rows)
        m_onScreen.insert(row);
    tellSoon();
}

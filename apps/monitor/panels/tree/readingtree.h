#ifndef READINGTREE_H
#define READINGTREE_H

#include "messagetreewidget.h"

#include <QSet>

/**
 * A message tree whose cells a delegate of the window's own may draw, as fast as the tree draws its own.
 *
 * All rows are of one height, so that no change of a text asks for the heights of others: cells on the screen that
 * changed are painted together when the event loop comes round, and nothing else is looked at. What is below a row that
 * is folded counts as a change of that, as its line may tell of it.
 */
class ReadingTree : public MessageTreeWidget
{
    Q_OBJECT

public:
    explicit ReadingTree(QWidget* parent = nullptr);

    /** The rows that can be seen now, from above. */
    QList<QTreeWidgetItem*> getRowsOnScreen() const;

    /** Gives screen readers what is drawn in the cells of values, as happens by itself while there is one. */
    void tellRowsOnScreen();

    using MessageTreeWidget::dataChanged;
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles) override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void repaintChanged();
    void tellSoon();

    // Addresses of rows, which are only compared: they may be gone.
    QSet<const QTreeWidgetItem*> m_onScreen;
    QSet<const QTreeWidgetItem*> m_changed;
    bool m_isPosted = false;
    bool m_isTold = false; // or about to be
};

#endif

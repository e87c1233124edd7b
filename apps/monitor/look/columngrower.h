#ifndef COLUMNGROWER_H
#define COLUMNGROWER_H

#include <QObject>
#include <QTimer>

class QTreeView;

/**
 * Widens a column to its title, and to the texts in it as rows come and change, as far as it leaves the other columns
 * their room.
 *
 * It never becomes narrower by itself, so that nothing jumps while data comes in, and what a user chose stays until a
 * wider text comes.
 */
class ColumnGrower : public QObject
{
    Q_OBJECT

public:
    /** @param mostPercent  of the width of @p view, in which the grower lives */
    ColumnGrower(QTreeView* view, int column, int mostPercent);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void growSoon();
    void grow();

    QTimer m_timer;
    QTimer m_changes;
    QTreeView* m_view;
    int m_column;
    int m_mostPercent;
    int m_given = 0;
};

#endif

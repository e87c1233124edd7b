#ifndef NAMECOLUMN_H
#define NAMECOLUMN_H

#include <QObject>

class QTreeView;

/**
 * Gives one column of a view, mostly the first, what the others leave, and never less than names need: in a narrow
 * view, the others are found by scrolling.
 */
class NameColumn : public QObject
{
    Q_OBJECT

public:
    /** @param leastPercent  of the width of @p view, in which this lives */
    NameColumn(QTreeView* view, int leastPercent, int column = 0);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fitSoon(int section);
    void fit();

    QTreeView* m_view;
    int m_leastPercent;
    int m_column;
    bool m_isPosted = false;
};

#endif

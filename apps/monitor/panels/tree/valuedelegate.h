#ifndef VALUEDELEGATE_H
#define VALUEDELEGATE_H

#include "celldelegate.h"

class ReadingTree;
struct ValueCell;

/**
 * Draws the values of the message tree to be read down a column: numbers with their points below one another, units
 * and what is not there fainter, small vectors in a line.
 */
class ValueDelegate : public CellDelegate
{
    Q_OBJECT

public:
    /** @param tree  whose cells it draws; borrowed, and the parent */
    explicit ValueDelegate(ReadingTree* tree);

    /** Significant digits of numbers with a fraction; 0 for all. */
    void setDigits(int digits) { m_digits = digits; }

    /** What a cell says; empty in columns without values. */
    QString getText(const QModelIndex& index) const;

    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override;
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    bool isOfValues(int column) const;
    ValueCell read(const QModelIndex& index, const QString& text) const;
    void paintCell(QPainter* painter, const QStyleOptionViewItem& option, const ValueCell& cell) const;

    ReadingTree* m_tree;
    int m_digits = 0;
};

#endif

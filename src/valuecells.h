#ifndef VALUECELLS_H
#define VALUECELLS_H

#include <QStyledItemDelegate>

class QAbstractItemView;

/**
 * Draws the cells of the library's views.
 *
 * In a window from right to left a text that is none of a language from right to left reads as it is written: its sign
 * before the number, and its unit behind. Views alone would draw "-0.5 rad" as "rad 0.5-" there.
 */
class ValueCells : public QStyledItemDelegate
{
public:
    /** Becomes the delegate of @p view, which owns it. */
    explicit ValueCells(QAbstractItemView* view);
    virtual ~ValueCells();

    QString displayText(const QVariant& value, const QLocale& locale) const override;
};

#endif

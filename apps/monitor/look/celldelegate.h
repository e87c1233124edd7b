#ifndef CELLDELEGATE_H
#define CELLDELEGATE_H

#include <QSet>
#include <QStyledItemDelegate>

/**
 * Draws cells whose texts may be longer than their column.
 *
 * A text that is cut is told in full as a tool tip; one that is not has the tool tip of its model or view. Numbers can
 * be aligned to the right in views whose models do not say so.
 */
class CellDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    /** The end of a text that is cut last: whose it is, perhaps with the source behind it as in "1:1 @ flight.tlog". */
    static const int KeptRole = Qt::UserRole + 1;

    explicit CellDelegate(QObject* parent);

    /**
     * A text as long as @p room, in points: @p kept, as in KeptRole, is cut last. What is before it and the source
     * behind it share what else there is; of a sender whose name is itself long, such as a topic, the middle is left
     * out.
     */
    static QString fit(const QString& rest, const QString& kept, const QFontMetrics& metrics, int room);

    /** Cuts the texts of a column in their middle: names often differ only at their end. */
    void setName(int column) { m_names.insert(column); }
    /** Aligns a column of numbers to the right. */
    void setNumeric(int column) { m_numeric.insert(column); }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                   const QModelIndex& index) override;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
    /** The end of a text that is cut last, as in KeptRole; empty for none. */
    virtual QString getKept(const QModelIndex& index) const { return index.data(KeptRole).toString(); }

private:
    QSet<int> m_names;
    QSet<int> m_numeric;
};

#endif

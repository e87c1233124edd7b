#include "valuedelegate.h"

#include "readingtree.h"
#include "theme.h"
#include "valuecell.h"
#include "valuetext.h"

#include <QApplication>
#include <QPainter>

static const int IntegerDigits = 8;  // that have room before the point
static const int FractionDigits = 6; // and behind it
static const int LeastDigits = 3;    // before it, in a narrow column
static const int MostCharacters = 40;

ValueDelegate::ValueDelegate(ReadingTree* tree)
    : CellDelegate(tree)
    , m_tree(tree)
{
}

bool ValueDelegate::isOfValues(int column) const
{
    const QVector<MessageTreeWidget::ColumnType> columns = m_tree->getColumns();
    return column < columns.size() && (columns.at(column) == MessageTreeWidget::ValueColumn ||
                                       columns.at(column) == MessageTreeWidget::RawValueColumn);
}

ValueCell ValueDelegate::read(const QModelIndex& index, const QString& text) const
{
    const auto* const item = static_cast<const QTreeWidgetItem*>(index.internalPointer());
    const bool isRaw = m_tree->getColumnIndex(MessageTreeWidget::RawValueColumn) == index.column();
    return ValueCell::read(item, text, isRaw, m_digits);
}

QString ValueDelegate::getText(const QModelIndex& index) const
{
    return isOfValues(index.column()) ? read(index, index.data().toString()).toString() : QString();
}

void ValueDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    if (!isOfValues(index.column())) {
        CellDelegate::paint(painter, option, index);
        return;
    }
    QStyleOptionViewItem filled = option;
    initStyleOption(&filled, index);
    const ValueCell cell = read(index, index.data().toString());
    filled.text.clear();
    m_tree->style()->drawControl(QStyle::CE_ItemViewItem, &filled, painter, m_tree);
    paintCell(painter, filled, cell);
}

void ValueDelegate::paintCell(QPainter* painter, const QStyleOptionViewItem& option, const ValueCell& cell) const
{
    const QStyle* const style = m_tree->style();
    const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &option, m_tree) + 1;
    const QRect place = option.rect.adjusted(margin, 0, -margin, 0);
    const QFontMetrics& metrics = option.fontMetrics;
    const bool isSelected = option.state & QStyle::State_Selected;
    QPalette::ColorGroup group = option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
    if (!(option.state & QStyle::State_Enabled))
        group = QPalette::Disabled;
    const QColor colour = option.palette.color(group, isSelected ? QPalette::HighlightedText : QPalette::Text);
    // What is selected stands on a ground of its own, on which no other colour is sure to be seen.
    const QColor faint = isSelected ? colour : Theme::faintText(m_tree->palette());
    painter->save();
    painter->setClipRect(option.rect, Qt::IntersectClip);
    painter->setFont(option.font);
    painter->setLayoutDirection(Qt::LeftToRight); // as numbers and their units read in a window from right to left, too
    // What is told of a row begins with a name that may be long, and its end is what changes.
    const Qt::TextElideMode cut = cell.isFaint ? Qt::ElideMiddle : Qt::ElideRight;
    int x = place.left();
    const auto write = [&](const QString& text, bool isFaint) {
        const int room = place.right() + 1 - x;
        if (text.isEmpty() || room <= 0)
            return;
        int width = metrics.horizontalAdvance(text);
        painter->setPen(isFaint || cell.isFaint ? faint : colour);
        painter->drawText(QRect(x, place.top(), room, place.height()), Qt::AlignLeft | Qt::AlignVCenter,
                          width > room ? metrics.elidedText(text, cut, room) : text);
        x += width;
    };
    if (!cell.number.isEmpty()) {
        const int digit = metrics.horizontalAdvance(QLatin1Char('0'));
        const int fraction = digit * FractionDigits + metrics.horizontalAdvance(QLatin1Char('.'));
        // Of a narrow column, what stands before the point gives way.
        const int wanted = place.width() - fraction - 5 * digit;
        const int integers = qBound(LeastDigits * digit, wanted, IntegerDigits * digit);
        const ValueText number = {cell.number, QString()};
        const int before = metrics.horizontalAdvance(cell.number.left(number.getIntegerSize()));
        const int whole = metrics.horizontalAdvance(cell.number);
        x += qMax(0, qMin(integers - before, place.width() - whole));
        write(cell.number, false);
        x = qMax(x, place.left() + integers + fraction) + digit;
    }
    for (const ValueCell::Part& part : cell.parts)
        write(part.text, part.isFaint);
    painter->restore();
}

QSize ValueDelegate::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const
{
    const QSize size = CellDelegate::sizeHint(option, index);
    return isOfValues(index.column())
               ? QSize(qMin(size.width(), MostCharacters * option.fontMetrics.averageCharWidth()), size.height())
               : size;
}

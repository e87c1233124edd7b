#include "celldelegate.h"

#include "theme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>

static const int LongestSender = 20; // that nothing is left out of, such as "10:1"
static const ushort LeftToRightMark = 0x200e;
static const int LongestText = 2000; // that anybody reads in a cell or its tool tip

CellDelegate::CellDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

QString CellDelegate::fit(const QString& rest, const QString& kept, const QFontMetrics& metrics, int room)
{
    const auto at = kept.indexOf(QLatin1String(" @ "));
    QString sender = at < 0 ? kept : kept.left(at);
    const QString source = at < 0 ? QString() : kept.mid(at);
    if (metrics.horizontalAdvance(rest + kept) < room)
        return rest + kept;
    // Widths are rounded, and what is cut is asked for more exactly.
    const int restWidth = metrics.horizontalAdvance(rest) + 1;
    const int senderRoom = sender.size() > LongestSender ? room - qMin(restWidth, room / 3) : room;
    sender = metrics.elidedText(sender, Qt::ElideMiddle, senderRoom);
    const int shared = qMax(0, room - metrics.horizontalAdvance(sender) - 2);
    const int sourceWidth = source.isEmpty() ? 0 : metrics.horizontalAdvance(source) + 1;
    const int restRoom = qMin(restWidth, qMax(shared / 2, shared - sourceWidth));
    const int sourceRoom = qMin(sourceWidth, shared - restRoom);
    return metrics.elidedText(metrics.elidedText(rest, Qt::ElideMiddle, restRoom) + sender +
                                  metrics.elidedText(source, Qt::ElideMiddle, sourceRoom),
                              Qt::ElideRight, room);
}

void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->text.size() > LongestText) // of a megabyte, measuring alone would take its time
        option->text = option->text.left(LongestText) + QChar(0x2026);
    option->textElideMode = m_names.contains(index.column()) ? Qt::ElideMiddle : Qt::ElideRight;
    if (m_numeric.contains(index.column())) {
        option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
        option->text += QString(2, QChar(QChar::Nbsp)); // or the text behind it seems to go on with the number
    }
    const QString kept = getKept(index);
    if (!kept.isEmpty() && option->widget && option->rect.width() > 0 && option->text.endsWith(kept)) {
        const QStyle* const style = option->widget->style();
        const QRect place = style->subElementRect(QStyle::SE_ItemViewItemText, option, option->widget);
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, option, option->widget) + 1;
        const QString rest = option->text.left(option->text.size() - kept.size());
        option->text = fit(rest, kept, option->fontMetrics, place.width() - 2 * margin);
    }
    // In a window from right to left a unit would go before its number, and a sign behind it.
    if (option->direction == Qt::RightToLeft && !option->text.isEmpty() && !option->text.at(0).isLetter())
        option->text.prepend(QChar(LeftToRightMark));
    option->palette.setColor(QPalette::Disabled, QPalette::Text, Theme::faintText(option->palette));
}

bool CellDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                             const QModelIndex& index)
{
    if (event->type() == QEvent::ToolTip && index.isValid()) {
        QStyleOptionViewItem filled = option;
        initStyleOption(&filled, index);
        const QStyle* const style = view->style();
        const QRect place = style->subElementRect(QStyle::SE_ItemViewItemText, &filled, view);
        const int margin = style->pixelMetric(QStyle::PM_FocusFrameHMargin, &filled, view) + 1;
        const int room = place.width() - 2 * margin;
        const QString whole = getKept(index).isEmpty() ? filled.text : index.data().toString();
        if (filled.fontMetrics.horizontalAdvance(whole) > room) {
            QString text = whole.toHtmlEscaped();
            const QString more = index.data(Qt::ToolTipRole).toString();
            const QString moreText = more.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
            if (more.contains(whole)) // which says it already
                text = moreText;
            else if (!more.isEmpty())
                text += QLatin1String("<hr>") + moreText;
            QToolTip::showText(event->globalPos(), QLatin1String("<qt>") + text + QLatin1String("</qt>"), view);
            return true;
        }
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

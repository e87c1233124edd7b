#include "celldelegate.h"

#include "theme.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QStyle>
#include <QToolTip>

CellDelegate::CellDelegate(QObject* parent)
    : QStyledItemDelegate(parent)
{
}

void CellDelegate::initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
    option->textElideMode = m_names.contains(index.column()) ? Qt::ElideMiddle : Qt::ElideRight;
    if (m_numeric.contains(index.column())) {
        option->displayAlignment = Qt::AlignRight | Qt::AlignVCenter;
        option->text += QString(2, QChar(QChar::Nbsp)); // or the text behind it seems to go on with the number
    }
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
        if (filled.fontMetrics.horizontalAdvance(filled.text) > room) {
            QString text = filled.text.toHtmlEscaped();
            const QString more = index.data(Qt::ToolTipRole).toString();
            if (!more.isEmpty() && more != filled.text)
                text += QLatin1String("<hr>") + more.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>"));
            QToolTip::showText(event->globalPos(), QLatin1String("<qt>") + text + QLatin1String("</qt>"), view);
            return true;
        }
    }
    return QStyledItemDelegate::helpEvent(event, view, option, index);
}

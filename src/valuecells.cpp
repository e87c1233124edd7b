#include "valuecells.h"

#include "diagnostics.h"

#include <QAbstractItemView>

CORVEL_DIAGNOSTICS("ValueCells");

// To the end of the cell, also when that is cut: so it is never closed.
static const ushort LeftToRightEmbedding = 0x202a;

ValueCells::ValueCells(QAbstractItemView* view)
    : QStyledItemDelegate(view)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("ValueCells");
    view->setItemDelegate(this);
}

ValueCells::~ValueCells()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("ValueCells");
}

QString ValueCells::displayText(const QVariant& value, const QLocale& locale) const
{
    CORVEL_DEBUG_HOOK();
    QString text = QStyledItemDelegate::displayText(value, locale);
    const bool isMirrored = static_cast<const QWidget*>(parent())->layoutDirection() == Qt::RightToLeft;
    if (isMirrored && !text.isEmpty() && !text.isRightToLeft())
        text.prepend(QChar(LeftToRightEmbedding));
    return text;
}

#include "pinnedtypes.h"

#include "formatinfo.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "pathexpression.h"

#include <QPainter>
#include <QSettings>
#include <QSignalBlocker>

static const char PinnedKey[] = "pinned";

QString PinnedTypes::getName(const MessageInfo* info)
{
    const QString format = info->getFormatInfo() ? info->getFormatInfo()->getName() : QString();
    return PathExpression::escape(format) + QLatin1Char('/') + PathExpression::escape(info->getName());
}

static QIcon pinIcon(const QPalette& palette)
{
    QPixmap pixmap(32, 32);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(16, 16);
    painter.rotate(30);
    painter.setPen(QPen(palette.color(QPalette::Text), 2.5, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(palette.color(QPalette::Highlight));
    painter.drawLine(0, 4, 0, 14);
    painter.drawPolygon(QPolygon({{-4, -13}, {4, -13}, {4, -4}, {8, 4}, {-8, 4}, {-4, -4}}));
    return QIcon(pixmap);
}

PinnedTypes::PinnedTypes(MessageTreeWidget* tree, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
{
    connect(tree->model(), &QAbstractItemModel::rowsInserted, this, &PinnedTypes::processRows);
}

bool PinnedTypes::isPinned(const MessageInfo* info) const
{
    return info && m_pinned.contains(getName(info));
}

int PinnedTypes::placeFor(const MessageInfo* info) const
{
    const bool pinned = isPinned(info);
    int place = 0;
    for (; place < m_tree->topLevelItemCount(); ++place) {
        const auto* const row = dynamic_cast<const MessageTreeWidgetItem*>(m_tree->topLevelItem(place));
        const MessageInfo* const other = row ? row->getMessageInfo() : nullptr;
        if (!other || (pinned && !isPinned(other)))
            break;
        if (pinned == isPinned(other) && other->getName() >= info->getName())
            break;
    }
    return place;
}

static void collectExpanded(QTreeWidgetItem* item, QList<QTreeWidgetItem*>* expanded)
{
    if (item->isExpanded())
        expanded->append(item);
    for (int i = 0; i < item->childCount(); ++i)
        collectExpanded(item->child(i), expanded);
}

void PinnedTypes::setPinned(const MessageInfo* info, bool pinned)
{
    if (!info || pinned == isPinned(info))
        return;
    if (pinned)
        m_pinned.append(getName(info));
    else
        m_pinned.removeAll(getName(info));
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i) {
        auto* const row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i));
        if (!row || row->getMessageInfo() != info)
            continue;
        // A row that is taken out forgets how it was shown.
        QList<QTreeWidgetItem*> expanded;
        collectExpanded(row, &expanded);
        const bool isCurrent = m_tree->currentItem() == row;
        m_tree->takeTopLevelItem(i);
        m_tree->insertTopLevelItem(placeFor(info), row);
        const QSignalBlocker blocker(m_tree);
        for (QTreeWidgetItem* item : std::as_const(expanded))
            item->setExpanded(true);
        if (isCurrent)
            m_tree->setCurrentItem(row);
        mark(row);
        return;
    }
}

void PinnedTypes::processRows(const QModelIndex& parent, int first, int last)
{
    if (parent.isValid() || m_pinned.isEmpty())
        return;
    for (int i = first; i <= last; ++i)
        if (auto* const row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i)))
            mark(row);
}

void PinnedTypes::mark(MessageTreeWidgetItem* row)
{
    const int column = m_tree->getColumnIndex(MessageTreeWidget::NameColumn);
    const bool pinned = isPinned(row->getMessageInfo());
    if (column < 0 || (!pinned && row->icon(column).isNull()))
        return;
    row->setIcon(column, pinned ? pinIcon(m_tree->palette()) : QIcon());
    row->setData(column, Qt::AccessibleDescriptionRole, pinned ? QVariant(tr("pinned")) : QVariant());
}

void PinnedTypes::followPalette()
{
    for (int i = 0; i < m_tree->topLevelItemCount(); ++i)
        if (auto* const row = dynamic_cast<MessageTreeWidgetItem*>(m_tree->topLevelItem(i)))
            mark(row);
}

void PinnedTypes::saveSettings(QSettings& settings) const
{
    settings.setValue(QLatin1String(PinnedKey), m_pinned);
}

void PinnedTypes::restoreSettings(QSettings& settings)
{
    m_pinned = settings.value(QLatin1String(PinnedKey)).toStringList();
}

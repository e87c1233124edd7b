#include "pinnedtypes.h"

#include "formatinfo.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "pathexpression.h"

#include <QCoreApplication>
#include <QPainter>
#include <QSettings>

static const char PinnedKey[] = "pinned";
static const QLatin1Char SenderMark('\t'); // in no name of a type

QString PinnedTypes::getName(const Subject& subject)
{
    QString name;
    if (subject.info) {
        const FormatInfo* const format = subject.info->getFormatInfo();
        name = PathExpression::escape(format ? format->getName() : QString()) + QLatin1Char('/') +
               PathExpression::escape(subject.info->getName());
    }
    return subject.sender.isEmpty() ? name : name + SenderMark + subject.sender;
}

bool PinnedTypes::isOf(const QString& name, const QString& sender)
{
    return !sender.isEmpty() && name.endsWith(SenderMark + sender);
}

QString PinnedTypes::rename(const QString& name, const QString& sender)
{
    const QString type = name.section(SenderMark, 0, 0);
    return sender.isEmpty() ? type : type + SenderMark + sender;
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

PinnedTypes::PinnedTypes(MessageTreeWidget* tree)
    : m_tree(tree)
{
}

bool PinnedTypes::isPinned(const Subject& subject) const
{
    if (m_pinned.isEmpty() || (!subject.info && subject.sender.isEmpty()))
        return false;
    return m_pinned.contains(getName(subject)) ||
           (subject.info && m_pinned.contains(getName({subject.info, QString()})));
}

void PinnedTypes::setPinned(const Subject& subject, bool pinned)
{
    if (pinned == isPinned(subject))
        return;
    if (pinned) {
        m_pinned.append(getName(subject));
        return;
    }
    m_pinned.removeAll(getName(subject));
    if (subject.info)
        m_pinned.removeAll(getName({subject.info, QString()}));
}

void PinnedTypes::renameSender(const QString& before, const QString& now)
{
    for (QString& name : m_pinned)
        if (isOf(name, before))
            name = rename(name, now);
}

void PinnedTypes::mark(QTreeWidgetItem* row, bool pinned)
{
    const int column = m_tree->getColumnIndex(MessageTreeWidget::NameColumn);
    if (column < 0 || (!pinned && row->icon(column).isNull()))
        return;
    if (m_icon.isNull())
        m_icon = pinIcon(m_tree->palette());
    row->setIcon(column, pinned ? m_icon : QIcon());
    row->setData(column, Qt::AccessibleDescriptionRole,
                 pinned ? QVariant(QCoreApplication::translate("PinnedTypes", "pinned")) : QVariant());
}

void PinnedTypes::saveSettings(QSettings& settings) const
{
    settings.setValue(QLatin1String(PinnedKey), m_pinned);
}

void PinnedTypes::restoreSettings(QSettings& settings)
{
    m_pinned = settings.value(QLatin1String(PinnedKey)).toStringList();
}

#include "rowtooltips.h"

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "silencewatch.h"
#include "treerow.h"
#include "valuetext.h"

#include <QDateTime>
#include <QHelpEvent>
#include <QStringList>
#include <QToolTip>

// More than that is no tool tip any more.
static const int MostEnumerators = 24;
static const int MostCharacters = 1000;
static const int MostLines = 16;

RowToolTips::RowToolTips(MessageTreeWidget* tree, const SilenceWatch* silence, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_silence(silence)
{
    tree->viewport()->installEventFilter(this);
}

bool RowToolTips::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QObject::eventFilter(watched, event);
    const auto* const help = static_cast<QHelpEvent*>(event);
    QTreeWidgetItem* const item = m_tree->itemAt(help->pos());
    const TreeRow row(item);
    if (row.isNull())
        return QObject::eventFilter(watched, event); // such rows have tool tips of their own
    QToolTip::showText(help->globalPos(), textFor(row), m_tree->viewport(), m_tree->visualItemRect(item));
    return true;
}

static QString heading(const QString& name, const QString& type)
{
    return QStringLiteral("<b>%1</b> <span style=\"white-space:nowrap\">%2</span>")
        .arg(name.toHtmlEscaped(), type.toHtmlEscaped());
}

static QString line(const QString& label, const QString& text)
{
    return text.isEmpty() ? QString()
                          : QStringLiteral("<tr><td>%1&nbsp;</td><td>%2</td></tr>")
                                .arg(label, text.toHtmlEscaped().replace(QLatin1Char('\n'), QLatin1String("<br>")));
}

static QString paragraph(const QString& text)
{
    return text.isEmpty() ? QString() : QLatin1String("<p>") + text.toHtmlEscaped() + QLatin1String("</p>");
}

QString RowToolTips::textFor(const TreeRow& row) const
{
    if (row.isNull())
        return QString();
    return row.getPath().getField() ? textForField(row) : textForType(row);
}

QString RowToolTips::textForType(const TreeRow& row) const
{
    const MessageInfo* const info = row.getPath().getMessageInfo();
    QString table = line(tr("Path:"), row.getPath().getExpression());
    QString sender = row.getSubject().sender;
    if (const Message* const message = row.getMessage()) {
        if (message->getTime() != Message::NoTime) {
            const QDateTime time = QDateTime::fromMSecsSinceEpoch(message->getTime() / 1000, Qt::UTC);
            table += line(tr("Time:"), time.toString(QLatin1String("yyyy-MM-dd HH:mm:ss.zzz")) + QLatin1String(" UTC"));
        }
        sender = message->getSender();
        if (message->getSequence() != Message::NoSequence)
            table += line(tr("Number:"), QString::number(message->getSequence()));
    }
    table += line(tr("Sender:"), sender);
    if (m_silence)
        table += line(tr("Silent:"), m_silence->describe(row.getSubject()));
    return heading(info->getName(), tr("message type")) + paragraph(info->getShortDescriptiveText()) +
           QLatin1String("<table>") + table + QLatin1String("</table>");
}

static QString enumeratorTable(const FieldInfo* field, const FieldValue& value)
{
    QString table;
    const QVector<FieldInfo::Enumerator>& all = field->getEnumerators();
    for (int i = 0; i < all.size() && i < MostEnumerators; ++i) {
        const FieldInfo::Enumerator& one = all.at(i);
        const quint64 number = value.toUnsigned();
        const bool is = value.isNumber() &&
                        (field->isBitmask() ? one.value && (number & one.value) == one.value : number == one.value);
        const QString key = field->isBitmask() ? QLatin1String("0x") + QString::number(one.value, 16)
                                               : QString::number(qint64(one.value));
        // A mark besides the weight: weight alone is easily overlooked.
        table += QStringLiteral("<tr><td>%1</td><td align=\"right\">%2&nbsp;</td><td>%3%4%5</td><td>%6</td></tr>")
                     .arg(is ? QString(QChar(0x25b8)) : QLatin1String("&nbsp;"), key, QLatin1String(is ? "<b>" : ""),
                          one.name.toHtmlEscaped(), QLatin1String(is ? "</b>" : ""), one.description.toHtmlEscaped());
    }
    if (all.size() > MostEnumerators)
        table += QStringLiteral("<tr><td></td><td></td><td colspan=\"2\">%1</td></tr>")
                     .arg(RowToolTips::tr("and %1 more").arg(all.size() - MostEnumerators));
    return table.isEmpty() ? QString() : QLatin1String("<table cellspacing=\"0\">") + table + QLatin1String("</table>");
}

QString RowToolTips::textForField(const TreeRow& row) const
{
    const FieldInfo* const field = row.getPath().getField();
    const FieldValue value = row.getValue();
    QStringList kinds;
    if (field->isVirtual())
        kinds.append(tr("computed"));
    if (field->isOptional())
        kinds.append(tr("optional"));
    if (field->isConfidential())
        kinds.append(tr("confidential"));
    QString type = field->getType().toShortString();
    if (!kinds.isEmpty())
        type += QLatin1String(" (") + kinds.join(QLatin1String(", ")) + QLatin1Char(')');
    QString table = line(tr("Unit:"), field->getUnit());
    table += line(tr("Range:"), field->getRangeText());
    if (value.isNumber())
        table += line(tr("Raw value:"), field->getRawString(value));
    else if (field->isStringField() || !row.getPath().isWholeRepeatedField())
        table += line(tr("Value:"), ValueText::bounded(row.getValueText(), MostCharacters, MostLines));
    table += line(tr("Path:"), row.getPath().getExpression());
    return heading(row.getPath().getFieldName(), type) + paragraph(field->getDescription()) + QLatin1String("<table>") +
           table + QLatin1String("</table>") + enumeratorTable(field, value);
}

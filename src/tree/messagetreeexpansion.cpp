// What MessageTreeWidget remembers of expanded and collapsed rows.

#include "abstractfieldtreewidgetitem.h"
#include "borrowed.h"
#include "diagnostics.h"
#include "messagegrouptreewidgetitem.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "pathexpression.h"

#include <QSettings>
#include <QStringList>

CORVEL_DIAGNOSTICS("MessageTreeWidget");

QHash<const MessageInfo*, bool> MessageTreeWidget::sMessageInfoExpandedCollapsedMap;
QHash<const FieldInfo*, bool> MessageTreeWidget::sFieldInfoExpandedCollapsedMap;

bool MessageTreeWidget::mustInitiallyBeExpanded(AbstractMessageTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    if (!item)
        return false;
    // A sub-message row is of both kinds and counts as a message row.
    if (MessageTreeWidgetItem* row = dynamic_cast<MessageTreeWidgetItem*>(item))
        return sMessageInfoExpandedCollapsedMap.value(row->getMessageInfo(), true);
    if (AbstractFieldTreeWidgetItem* row = dynamic_cast<AbstractFieldTreeWidgetItem*>(item))
        return sFieldInfoExpandedCollapsedMap.value(row->getFieldInfo(), false);
    return false;
}

void MessageTreeWidget::processItemExpandedOrCollapsed(QTreeWidgetItem* item)
{
    CORVEL_DEBUG_HOOK();
    if (!item)
        return;
    const bool expanded = item->treeWidget() && item->isExpanded();
    if (MessageTreeWidgetItem* row = dynamic_cast<MessageTreeWidgetItem*>(item)) {
        if (row->getMessageInfo())
            rememberExpansion(row->getMessageInfo(), expanded);
    } else if (AbstractFieldTreeWidgetItem* row = dynamic_cast<AbstractFieldTreeWidgetItem*>(item)) {
        if (row->getFieldInfo())
            rememberExpansion(row->getFieldInfo(), expanded);
    } else if (MessageGroupTreeWidgetItem* row = dynamic_cast<MessageGroupTreeWidgetItem*>(item)) {
        // The view forgets it when columns go.
        row->setInitialExpansionPolicy(expanded ? AbstractMessageTreeWidgetItem::ExpandInitially
                                                : AbstractMessageTreeWidgetItem::CollapseInitially);
    }
}

void MessageTreeWidget::rememberExpansion(const MessageInfo* info, bool expanded)
{
    CORVEL_DEBUG_HOOK();
    if (!sMessageInfoExpandedCollapsedMap.contains(info))
        Borrowed::watch(info, const_cast<MessageInfo*>(info), &forgetType);
    sMessageInfoExpandedCollapsedMap.insert(info, expanded);
}

void MessageTreeWidget::rememberExpansion(const FieldInfo* field, bool expanded)
{
    CORVEL_DEBUG_HOOK();
    if (!sFieldInfoExpandedCollapsedMap.contains(field)) {
        // It goes with its type.
        Q_FOREACH (const MessageInfo* info, field->getMessageInfos())
            Borrowed::watch(info, const_cast<FieldInfo*>(field), &forgetField);
    }
    sFieldInfoExpandedCollapsedMap.insert(field, expanded);
}

void MessageTreeWidget::forgetType(void* info, const QObject*, bool)
{
    CORVEL_DEBUG_HOOK();
    sMessageInfoExpandedCollapsedMap.remove(static_cast<const MessageInfo*>(info));
}

void MessageTreeWidget::forgetField(void* field, const QObject*, bool)
{
    CORVEL_DEBUG_HOOK();
    sFieldInfoExpandedCollapsedMap.remove(static_cast<const FieldInfo*>(field));
}

void MessageTreeWidget::saveExpansionState(QSettings& settings)
{
    CORVEL_DEBUG_HOOK();
    PathExpression expression(nullptr);
    QStringList messages;
    for (QHash<const MessageInfo*, bool>::const_iterator it = sMessageInfoExpandedCollapsedMap.constBegin();
         it != sMessageInfoExpandedCollapsedMap.constEnd(); ++it) {
        if (!it.value())
            continue;
        expression.setupToMatchUnique(it.key());
        messages.append(expression.getString(PathExpression::Parts(3)));
    }
    settings.setValue(QLatin1String("expandedMessages"), messages);
    QStringList fields;
    for (QHash<const FieldInfo*, bool>::const_iterator it = sFieldInfoExpandedCollapsedMap.constBegin();
         it != sFieldInfoExpandedCollapsedMap.constEnd(); ++it) {
        if (!it.value())
            continue;
        expression.setupToMatchUnique(it.key());
        fields.append(expression.getString(PathExpression::AllParts));
    }
    settings.setValue(QLatin1String("expandedFields"), fields);
}

void MessageTreeWidget::loadExpansionState(QSettings& settings)
{
    CORVEL_DEBUG_HOOK();
    PathExpression expression(nullptr);
    expression.setConsiderSubMessages(true);
    const QVariant none = QVariant(QStringList());
    Q_FOREACH (const QString& path, settings.value(QLatin1String("expandedMessages"), none).toStringList()) {
        expression.setString(path);
        const QVector<const MessageInfo*> infos = expression.getMatchingMessageInfos();
        if (infos.size() == 1)
            rememberExpansion(infos.first(), true);
    }
    Q_FOREACH (const QString& path, settings.value(QLatin1String("expandedFields"), none).toStringList()) {
        expression.setString(path);
        const QVector<const FieldInfo*> infos = expression.getMatchingFieldInfos();
        if (infos.size() == 1)
            rememberExpansion(infos.first(), true);
    }
}

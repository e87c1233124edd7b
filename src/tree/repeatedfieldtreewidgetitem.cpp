#include "repeatedfieldtreewidgetitem.h"

#include "diagnostics.h"
#include "message.h"
#include "rowguard.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"

#include <QObject>

CORVEL_DIAGNOSTICS("RepeatedFieldTreeWidgetItem");

// So many rows come and go one by one; more of them together.
static const int FewRows = 16;

RepeatedFieldTreeWidgetItem::RepeatedFieldTreeWidgetItem(MessageTreeWidget* treeWidget, const FieldInfo* field)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , AbstractFieldTreeWidgetItem(treeWidget)
{
    CORVEL_DEBUG_HOOK();
    setFieldInfo(field);
    CORVEL_ALLOCATED("RepeatedFieldTreeWidgetItem");
    setInitialExpansionPolicy(RestoreExpansion);
}

RepeatedFieldTreeWidgetItem::~RepeatedFieldTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("RepeatedFieldTreeWidgetItem");
    retire();
    releaseAll(&m_childRows);
}

void RepeatedFieldTreeWidgetItem::setFieldInfo(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    AbstractFieldTreeWidgetItem::setFieldInfo(field);
    const RowGuard self(this);
    deleteAllChildItems();
    if (!self.isBroken())
        writeTexts(NameText | ValueText | RawValueText);
}

void RepeatedFieldTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    const RowGuard self(this);
    deleteAllChildItems();
    if (!self.isBroken())
        writeTexts(ValueText | RawValueText);
}

QString RepeatedFieldTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return getFieldInfo() ? getFieldInfo()->getName() : QObject::tr("No field set");
}

QString RepeatedFieldTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    return QString();
}

QString RepeatedFieldTreeWidgetItem::getValueText()
{
    CORVEL_DEBUG_HOOK();
    if (!getFieldInfo())
        return QLatin1String("");
    const int count = m_childRows.size();
    if (count == 0 && getFieldInfo()->isOptional())
        return QObject::tr("No values for optional field");
    // The noun is the same in every language; deliberate and kept.
    const QString noun = QLatin1String(hasSubMessages() ? "submessage" : "repeated value");
    if (count == 1)
        return QObject::tr("%1 %2").arg(count).arg(noun);
    return QObject::tr("%1 %2s").arg(count).arg(noun);
}

QString RepeatedFieldTreeWidgetItem::getRawValueText()
{
    CORVEL_DEBUG_HOOK();
    return getValueText();
}

void RepeatedFieldTreeWidgetItem::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!getFieldInfo())
        return;
    if (!message) {
        clearValues();
        return;
    }
    if (!getFieldInfo()->occursIn(message->getInfo()))
        return;
    updateChildItems(message);
}

void RepeatedFieldTreeWidgetItem::updateChildItems(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!getFieldInfo() || !message)
        return;
    if (!getFieldInfo()->occursIn(message->getInfo())) {
        writeTexts(ValueText | RawValueText);
        return;
    }
    RowGuard::breakAll(&m_childRows);
    const RowGuard newest(&m_childRows);
    const int count = static_cast<int>(getFieldInfo()->getValueCount(message));
    if (count < m_childRows.size())
        removeChildItemsFrom(count);
    else if (count > m_childRows.size() && mayAddRows())
        appendChildItemsUpTo(count);
    if (!newest.isBroken() && deliver(&m_childRows, message))
        writeTexts(ValueText | RawValueText);
}

void RepeatedFieldTreeWidgetItem::deleteAllChildItems()
{
    CORVEL_DEBUG_HOOK();
    releaseAll(&m_childRows);
    deleteAllRows();
}

bool RepeatedFieldTreeWidgetItem::hasSubMessages() const
{
    CORVEL_DEBUG_HOOK();
    return getFieldInfo()->getType().getTypeCode() == FieldType::SubMessageType;
}

void RepeatedFieldTreeWidgetItem::removeChildItemsFrom(int count)
{
    CORVEL_DEBUG_HOOK();
    deleteRows(release(&m_childRows, count));
}

AbstractFieldTreeWidgetItem* RepeatedFieldTreeWidgetItem::createChildItem(int index)
{
    CORVEL_DEBUG_HOOK();
    if (hasSubMessages())
        return new SingleSubMessageFieldTreeWidgetItem(getMessageTreeWidget(), getFieldInfo(), index, this);
    return new SingleValueFieldTreeWidgetItem(getMessageTreeWidget(), getFieldInfo(), index);
}

void RepeatedFieldTreeWidgetItem::appendChildItemsUpTo(int count)
{
    CORVEL_DEBUG_HOOK();
    if (count - m_childRows.size() > FewRows && !(treeWidget() && treeWidget()->isSortingEnabled())) {
        appendTogetherUpTo(count);
        return;
    }
    const RowGuard newest(&m_childRows);
    for (int i = m_childRows.size(); i < count; ++i) {
        AbstractFieldTreeWidgetItem* row = createChildItem(i);
        if (newest.isBroken()) {
            delete row;
            return;
        }
        append(&m_childRows, row);
        addChild(row);
        if (!newest.isBroken() && treeWidget())
            row->configureInTreeWidget();
        if (newest.isBroken())
            return;
    }
}

// For every insertion, the model goes through all expanded rows: one by one, thousands of rows would take seconds.
void RepeatedFieldTreeWidgetItem::appendTogetherUpTo(int count)
{
    CORVEL_DEBUG_HOOK();
    const int first = m_childRows.size();
    const RowGuard self(this);
    const RowGuard newest(&m_childRows);
    QVector<AbstractFieldTreeWidgetItem*> newRows;
    QList<QTreeWidgetItem*> newItems;
    for (int i = first; i < count; ++i) {
        newRows.append(createChildItem(i));
        newItems.append(newRows.last());
        if (newest.isBroken()) {
            qDeleteAll(newRows);
            return;
        }
    }
    Q_FOREACH (AbstractFieldTreeWidgetItem* row, newRows)
        append(&m_childRows, row);
    addChildren(newItems);
    // Also those that a newer message has values for already: who delivered it did not add them.
    for (int i = first; !self.isBroken() && i < m_childRows.size() && treeWidget(); ++i) {
        if (m_childRows.at(i))
            m_childRows.at(i)->configureInTreeWidget();
    }
}

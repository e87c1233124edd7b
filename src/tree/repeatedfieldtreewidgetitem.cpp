#include "repeatedfieldtreewidgetitem.h"

#include "diagnostics.h"
#include "message.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"

#include <QObject>

CORVEL_DIAGNOSTICS("RepeatedFieldTreeWidgetItem");

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
}

void RepeatedFieldTreeWidgetItem::setFieldInfo(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    AbstractFieldTreeWidgetItem::setFieldInfo(field);
    deleteAllChildItems();
    setNameText();
    setValueText();
    setRawValueText();
}

void RepeatedFieldTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    deleteAllChildItems();
    setValueText();
    setRawValueText();
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
        setValueText();
        setRawValueText();
        return;
    }
    const int count = static_cast<int>(getFieldInfo()->getValueCount(message));
    if (count < m_childRows.size())
        removeChildItemsFrom(count);
    else if (count > m_childRows.size())
        appendChildItemsUpTo(count);
    Q_FOREACH (AbstractFieldTreeWidgetItem* row, m_childRows)
        row->processMessage(message);
    setValueText();
    setRawValueText();
}

void RepeatedFieldTreeWidgetItem::deleteAllChildItems()
{
    CORVEL_DEBUG_HOOK();
    qDeleteAll(takeChildren());
    m_childRows.clear();
}

bool RepeatedFieldTreeWidgetItem::hasSubMessages() const
{
    CORVEL_DEBUG_HOOK();
    return getFieldInfo()->getType().getTypeCode() == FieldType::SubMessageType;
}

void RepeatedFieldTreeWidgetItem::removeChildItemsFrom(int count)
{
    CORVEL_DEBUG_HOOK();
    if (count == 0 && childCount() == m_childRows.size()) {
        deleteAllChildItems();
        return;
    }
    // From the end, and taken out before it is deleted: a row that deletes itself searches its place from the front.
    for (int i = m_childRows.size() - 1; i >= count; --i) {
        AbstractFieldTreeWidgetItem* row = m_childRows.at(i);
        if (child(childCount() - 1) == row)
            takeChild(childCount() - 1);
        delete row;
    }
    m_childRows.resize(count);
}

void RepeatedFieldTreeWidgetItem::appendChildItemsUpTo(int count)
{
    CORVEL_DEBUG_HOOK();
    QList<QTreeWidgetItem*> newRows;
    for (int i = m_childRows.size(); i < count; ++i) {
        AbstractFieldTreeWidgetItem* row;
        if (hasSubMessages())
            row = new SingleSubMessageFieldTreeWidgetItem(getMessageTreeWidget(), getFieldInfo(), i);
        else
            row = new SingleValueFieldTreeWidgetItem(getMessageTreeWidget(), getFieldInfo(), i);
        newRows.append(row);
        m_childRows.append(row);
    }
    // Together: for every insertion, the model goes through all expanded rows. A sorted tree would turn them around.
    if (treeWidget() && treeWidget()->isSortingEnabled()) {
        Q_FOREACH (QTreeWidgetItem* row, newRows)
            addChild(row);
    } else {
        addChildren(newRows);
    }
    if (!treeWidget())
        return;
    for (int i = count - newRows.size(); i < count; ++i)
        m_childRows.at(i)->configureInTreeWidget();
}

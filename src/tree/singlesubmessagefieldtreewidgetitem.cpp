#include "singlesubmessagefieldtreewidgetitem.h"

#include "diagnostics.h"
#include "fieldinfo.h"
#include "fieldvalue.h"
#include "message.h"

CORVEL_DIAGNOSTICS("SingleSubMessageFieldTreeWidgetItem");

SingleSubMessageFieldTreeWidgetItem::SingleSubMessageFieldTreeWidgetItem(MessageTreeWidget* treeWidget,
                                                                         const FieldInfo* field, unsigned int index)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , MessageTreeWidgetItem(treeWidget, nullptr)
    , AbstractFieldTreeWidgetItem(treeWidget)
    , m_index(0)
    , m_optionalSubMessageMissing(false)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("SingleSubMessageFieldTreeWidgetItem");
    setFieldInfo(field);
    setIndex(index);
    m_optionalSubMessageMissing = false;
}

SingleSubMessageFieldTreeWidgetItem::~SingleSubMessageFieldTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("SingleSubMessageFieldTreeWidgetItem");
}

QString SingleSubMessageFieldTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    const FieldInfo* field = getFieldInfo();
    if (!field)
        return QObject::tr("No field set");
    if (!field->isRepeated())
        return field->getName();
    return field->getName() + QString::fromLatin1(" [%1]").arg(m_index);
}

QString SingleSubMessageFieldTreeWidgetItem::getNameToolTip()
{
    CORVEL_DEBUG_HOOK();
    return MessageTreeWidgetItem::getNameToolTip();
}

QString SingleSubMessageFieldTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    const FieldInfo* field = getFieldInfo();
    if (!field)
        return QObject::tr("N/A");
    return field->getType().toShortString();
}

QString SingleSubMessageFieldTreeWidgetItem::getValueText()
{
    CORVEL_DEBUG_HOOK();
    return m_optionalSubMessageMissing ? QObject::tr("Optional submessage not present") : QString();
}

void SingleSubMessageFieldTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidgetItem::clearValues();
}

void SingleSubMessageFieldTreeWidgetItem::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    const FieldInfo* field = getFieldInfo();
    if (!field)
        return;
    m_optionalSubMessageMissing = false;
    if (!message) {
        clearValues();
        return;
    }
    if (field->isOptional() && field->occursIn(message->getInfo()) && field->getValueCount(message) == 0) {
        m_optionalSubMessageMissing = true;
        clearValues();
        return;
    }
    if (field->getValueCount(message) <= m_index)
        return;
    const FieldValue value = field->getValue(message, m_index);
    displayMessage(value.getSubMessage());
}

void SingleSubMessageFieldTreeWidgetItem::configureInTreeWidget()
{
    CORVEL_DEBUG_HOOK();
    MessageTreeWidgetItem::configureInTreeWidget();
}

void SingleSubMessageFieldTreeWidgetItem::setFieldInfo(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    if (field == getFieldInfo())
        return;
    if (field) {
        const MessageInfo* info = field->getType().getSubMessageInfo();
        if (!info)
            qFatal("SingleSubMessageFieldTreeWidgetItem::setFieldInfo: non-submessage field given!");
        setMessageInfo(info);
    } else {
        setMessageInfo(nullptr);
    }
    AbstractFieldTreeWidgetItem::setFieldInfo(field);
    clearValues();
    setNameText();
    setTypeText();
}

QString SingleSubMessageFieldTreeWidgetItem::getRawValueText()
{
    CORVEL_DEBUG_HOOK();
    return getValueText();
}

unsigned int SingleSubMessageFieldTreeWidgetItem::getIndex() const
{
    CORVEL_DEBUG_HOOK();
    return m_index;
}

void SingleSubMessageFieldTreeWidgetItem::setIndex(unsigned int index)
{
    CORVEL_DEBUG_HOOK();
    // Clears also for the index it has, unlike the row of a single value.
    m_index = index;
    clearValues();
    setNameText();
}

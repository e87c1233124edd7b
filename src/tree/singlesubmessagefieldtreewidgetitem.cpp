#include "singlesubmessagefieldtreewidgetitem.h"

#include "diagnostics.h"
#include "fieldinfo.h"
#include "fieldvalue.h"
#include "message.h"
#include "rowguard.h"

CORVEL_DIAGNOSTICS("SingleSubMessageFieldTreeWidgetItem");

SingleSubMessageFieldTreeWidgetItem::SingleSubMessageFieldTreeWidgetItem(MessageTreeWidget* treeWidget,
                                                                         const FieldInfo* field, unsigned int index,
                                                                         const AbstractMessageTreeWidgetItem* rowAbove)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , MessageTreeWidgetItem(treeWidget, nullptr)
    , AbstractFieldTreeWidgetItem(treeWidget)
    , m_index(0)
    , m_optionalSubMessageMissing(false)
    , m_creator(rowAbove)
    , m_creatorGuard(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("SingleSubMessageFieldTreeWidgetItem");
    const RowGuard creatorGuard(rowAbove);
    m_creatorGuard = &creatorGuard;
    setFieldInfo(field);
    m_creatorGuard = nullptr;
    setIndex(index);
    m_optionalSubMessageMissing = false;
}

SingleSubMessageFieldTreeWidgetItem::~SingleSubMessageFieldTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("SingleSubMessageFieldTreeWidgetItem");
    retire();
}

QString SingleSubMessageFieldTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return getNameTextOfValue(m_index);
}

QString SingleSubMessageFieldTreeWidgetItem::getNameToolTip()
{
    CORVEL_DEBUG_HOOK();
    return MessageTreeWidgetItem::getNameToolTip();
}

QString SingleSubMessageFieldTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    return getTypeTextOfValue();
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
    m_optionalSubMessageMissing = message && isMissingIn(message);
    if (!message) {
        clearValues();
        return;
    }
    if (m_optionalSubMessageMissing) {
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
    const RowGuard self(this);
    if (field) {
        const MessageInfo* info = field->getType().getSubMessageInfo();
        if (!info)
            qFatal("SingleSubMessageFieldTreeWidgetItem::setFieldInfo: non-submessage field given!");
        setMessageInfo(info);
    } else {
        setMessageInfo(nullptr);
    }
    if (self.isBroken())
        return;
    AbstractFieldTreeWidgetItem::setFieldInfo(field);
    clearValues();
    if (!self.isBroken())
        writeTexts(NameText | TypeText);
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
    const RowGuard self(this);
    clearValues();
    if (!self.isBroken())
        writeTexts(NameText);
}

const QTreeWidgetItem* SingleSubMessageFieldTreeWidgetItem::getRowAbove() const
{
    CORVEL_DEBUG_HOOK();
    if (m_creatorGuard && !m_creatorGuard->isBroken())
        return m_creator;
    return QTreeWidgetItem::parent();
}

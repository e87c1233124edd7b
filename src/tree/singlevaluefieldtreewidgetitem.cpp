#include "singlevaluefieldtreewidgetitem.h"

#include "diagnostics.h"
#include "message.h"

#include <QObject>

CORVEL_DIAGNOSTICS("SingleValueFieldTreeWidgetItem");

SingleValueFieldTreeWidgetItem::SingleValueFieldTreeWidgetItem(MessageTreeWidget* treeWidget, const FieldInfo* field,
                                                               unsigned int index)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , AbstractFieldTreeWidgetItem(treeWidget)
    , m_index(0)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("SingleValueFieldTreeWidgetItem");
    m_optionalValueMissing = false;
    setFieldInfo(field);
    setIndex(index);
}

SingleValueFieldTreeWidgetItem::~SingleValueFieldTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("SingleValueFieldTreeWidgetItem");
}

void SingleValueFieldTreeWidgetItem::setFieldInfo(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    if (field == getFieldInfo())
        return;
    AbstractFieldTreeWidgetItem::setFieldInfo(field);
    clearValues();
    setNameText();
    setTypeText();
    ensureChildItems();
}

void SingleValueFieldTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    setFieldValue(FieldValue::invalid());
    Q_FOREACH (SingleValueFieldTreeWidgetItem* row, m_subFieldRows)
        row->clearValues();
}

QString SingleValueFieldTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    const FieldInfo* field = getFieldInfo();
    if (!field)
        return QObject::tr("No field set");
    if (!field->isRepeated())
        return field->getName();
    return field->getName() + QString::fromLatin1(" [%1]").arg(m_index);
}

QString SingleValueFieldTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    const FieldInfo* field = getFieldInfo();
    if (!field)
        return QObject::tr("N/A");
    return field->getType().toShortString();
}

QString SingleValueFieldTreeWidgetItem::getValueText()
{
    CORVEL_DEBUG_HOOK();
    if (m_optionalValueMissing)
        return QObject::tr("No value for optional field");
    const FieldInfo* field = getFieldInfo();
    return field ? field->getInterpretedString(m_fieldValue, true) : QString();
}

QString SingleValueFieldTreeWidgetItem::getRawValueText()
{
    CORVEL_DEBUG_HOOK();
    if (m_optionalValueMissing)
        return QObject::tr("No value for optional field");
    const FieldInfo* field = getFieldInfo();
    return field ? field->getRawString(m_fieldValue) : QString();
}

void SingleValueFieldTreeWidgetItem::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    const FieldInfo* field = getFieldInfo();
    if (!field)
        return;
    m_optionalValueMissing = false;
    if (!message) {
        clearValues();
        return;
    }
    if (field->isOptional() && field->occursIn(message->getInfo()) && field->getValueCount(message) == 0) {
        m_optionalValueMissing = true;
        clearValues();
    } else if (field->getValueCount(message) > m_index) {
        // A message with fewer values deliberately leaves the value: the row of a repeated field removes surplus rows.
        setFieldValue(field->getValue(message, m_index));
    }
    Q_FOREACH (SingleValueFieldTreeWidgetItem* row, m_subFieldRows)
        row->processMessage(message);
}

unsigned int SingleValueFieldTreeWidgetItem::getIndex() const
{
    CORVEL_DEBUG_HOOK();
    return m_index;
}

void SingleValueFieldTreeWidgetItem::setIndex(unsigned int index)
{
    CORVEL_DEBUG_HOOK();
    if (index == m_index)
        return;
    m_index = index;
    ensureChildItems();
    clearValues();
    setNameText();
}

FieldValue SingleValueFieldTreeWidgetItem::getFieldValue() const
{
    CORVEL_DEBUG_HOOK();
    return m_fieldValue;
}

void SingleValueFieldTreeWidgetItem::setFieldValue(const FieldValue& value)
{
    CORVEL_DEBUG_HOOK();
    m_fieldValue = value;
    setValueText();
    setRawValueText();
}

void SingleValueFieldTreeWidgetItem::ensureChildItems()
{
    CORVEL_DEBUG_HOOK();
    QVector<const FieldInfo*> subFields;
    if (getFieldInfo())
        subFields = getFieldInfo()->getSubFieldInfos();
    qDeleteAll(m_subFieldRows);
    m_subFieldRows.clear();
    if (subFields.isEmpty())
        return;
    setInitialExpansionPolicy(RestoreExpansion);
    Q_FOREACH (const FieldInfo* subField, subFields) {
        if (!mustShowField(subField))
            continue;
        SingleValueFieldTreeWidgetItem* row =
            new SingleValueFieldTreeWidgetItem(getMessageTreeWidget(), subField, getIndex());
        addChild(row);
        m_subFieldRows.append(row);
        if (treeWidget())
            row->configureInTreeWidget();
    }
}

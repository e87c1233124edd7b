#include "singlevaluefieldtreewidgetitem.h"

#include "diagnostics.h"
#include "message.h"
#include "rowguard.h"

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
    retire();
    releaseAll(&m_subFieldRows);
}

void SingleValueFieldTreeWidgetItem::setFieldInfo(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    if (field == getFieldInfo())
        return;
    AbstractFieldTreeWidgetItem::setFieldInfo(field);
    const RowGuard self(this);
    clearValues();
    if (!self.isBroken() && writeTexts(NameText | TypeText))
        ensureChildItems();
}

void SingleValueFieldTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    if (show(FieldValue::invalid()))
        clearAll(&m_subFieldRows);
}

QString SingleValueFieldTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return getNameTextOfValue(m_index);
}

QString SingleValueFieldTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    return getTypeTextOfValue();
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
    m_optionalValueMissing = message && isMissingIn(message);
    if (!message) {
        clearValues();
        return;
    }
    if (m_optionalValueMissing) {
        if (!show(FieldValue::invalid()) || !clearAll(&m_subFieldRows))
            return;
    } else if (field->getValueCount(message) > m_index) {
        // A message with fewer values deliberately leaves the value: the row of a repeated field removes surplus rows.
        if (!show(field->getValue(message, m_index)))
            return;
    }
    deliver(&m_subFieldRows, message);
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
    const RowGuard self(this);
    ensureChildItems();
    if (!self.isBroken())
        clearValues();
    if (!self.isBroken())
        writeTexts(NameText);
}

FieldValue SingleValueFieldTreeWidgetItem::getFieldValue() const
{
    CORVEL_DEBUG_HOOK();
    return m_fieldValue;
}

void SingleValueFieldTreeWidgetItem::setFieldValue(const FieldValue& value)
{
    CORVEL_DEBUG_HOOK();
    show(value);
}

bool SingleValueFieldTreeWidgetItem::show(const FieldValue& value)
{
    CORVEL_DEBUG_HOOK();
    m_fieldValue = value;
    if (m_subFieldRows.isEmpty()) {
        writeTexts(ValueText | RawValueText);
        return false;
    }
    RowGuard::breakAll(&m_fieldValue);
    const RowGuard newest(&m_fieldValue);
    return writeTexts(ValueText | RawValueText) && !newest.isBroken();
}

void SingleValueFieldTreeWidgetItem::ensureChildItems()
{
    CORVEL_DEBUG_HOOK();
    QVector<const FieldInfo*> subFields;
    if (getFieldInfo())
        subFields = getFieldInfo()->getSubFieldInfos();
    const QList<QTreeWidgetItem*> old = releaseAll(&m_subFieldRows);
    const RowGuard newest(&m_subFieldRows);
    if (!old.isEmpty())
        deleteRows(old);
    if (newest.isBroken() || subFields.isEmpty())
        return;
    setInitialExpansionPolicy(RestoreExpansion);
    if (!mayAddRows())
        return;
    Q_FOREACH (const FieldInfo* subField, subFields) {
        if (!mustShowField(subField))
            continue;
        SingleValueFieldTreeWidgetItem* row =
            new SingleValueFieldTreeWidgetItem(getMessageTreeWidget(), subField, getIndex());
        append(&m_subFieldRows, row);
        addChild(row);
        if (!newest.isBroken() && treeWidget())
            row->configureInTreeWidget();
        if (newest.isBroken())
            return;
    }
}

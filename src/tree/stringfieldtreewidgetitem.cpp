#include "stringfieldtreewidgetitem.h"

#include "diagnostics.h"
#include "fieldvalue.h"
#include "message.h"
#include "rowguard.h"

#include <QObject>

CORVEL_DIAGNOSTICS("StringFieldTreeWidgetItem");
static const char* s_szFilename = "src/tree/stringfieldtreewidgetitem.cpp";

StringFieldTreeWidgetItem::StringFieldTreeWidgetItem(MessageTreeWidget* treeWidget, const FieldInfo* field)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , AbstractFieldTreeWidgetItem(treeWidget)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("StringFieldTreeWidgetItem");
    setFieldInfo(field);
}

StringFieldTreeWidgetItem::~StringFieldTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("StringFieldTreeWidgetItem");
    retire();
}

void StringFieldTreeWidgetItem::setFieldInfo(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    if (field == getFieldInfo())
        return;
    const int typeCode = field ? field->getType().getTypeCode() : FieldType::CharType;
    CORVEL_ASSERT(
        !field || (field->isRepeated() && (typeCode == FieldType::CharType || typeCode == FieldType::UnsignedCharType)),
        "setFieldInfo", 52, "StringFieldTreeWidgetItem::setFieldInfo: given field is not a repeated char field.");
    AbstractFieldTreeWidgetItem::setFieldInfo(field);
    const RowGuard self(this);
    clearValues();
    if (!self.isBroken())
        writeTexts(NameText | TypeText);
}

void StringFieldTreeWidgetItem::clearValues()
{
    CORVEL_DEBUG_HOOK();
    setString(FieldValue::invalid().toString(false, -1, FieldValue::RepresentationMode(0), false));
}

QString StringFieldTreeWidgetItem::getNameText()
{
    CORVEL_DEBUG_HOOK();
    return getFieldInfo() ? getFieldInfo()->getName() : QObject::tr("No field set");
}

QString StringFieldTreeWidgetItem::getTypeText()
{
    CORVEL_DEBUG_HOOK();
    return QObject::tr("string");
}

QString StringFieldTreeWidgetItem::getValueText()
{
    CORVEL_DEBUG_HOOK();
    return m_string;
}

QString StringFieldTreeWidgetItem::getRawValueText()
{
    CORVEL_DEBUG_HOOK();
    return m_string;
}

void StringFieldTreeWidgetItem::processMessage(const Message* message)
{
    CORVEL_DEBUG_HOOK();
    if (!getFieldInfo())
        return;
    if (!message) {
        clearValues();
        return;
    }
    if (getFieldInfo()->occursIn(message->getInfo()))
        setString(extractString(message));
}

QString StringFieldTreeWidgetItem::getString() const
{
    CORVEL_DEBUG_HOOK();
    return m_string;
}

void StringFieldTreeWidgetItem::setString(const QString& text)
{
    CORVEL_DEBUG_HOOK();
    m_string = text;
    writeTexts(ValueText | RawValueText);
}

QString StringFieldTreeWidgetItem::extractString(const Message* message) const
{
    CORVEL_DEBUG_HOOK();
    if (!getFieldInfo() || !message)
        return QString();
    return getFieldInfo()->getStringValue(message);
}

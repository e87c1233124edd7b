#include "abstractfieldtreewidgetitem.h"

#include "diagnostics.h"

CORVEL_DIAGNOSTICS("AbstractFieldTreeWidgetItem");

AbstractFieldTreeWidgetItem::AbstractFieldTreeWidgetItem(MessageTreeWidget* treeWidget)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , m_fieldInfo(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("AbstractFieldTreeWidgetItem");
}

AbstractFieldTreeWidgetItem::~AbstractFieldTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("AbstractFieldTreeWidgetItem");
}

void AbstractFieldTreeWidgetItem::setFieldInfo(const FieldInfo* field)
{
    CORVEL_DEBUG_HOOK();
    if (field != m_fieldInfo)
        m_fieldInfo = field;
}

const FieldInfo* AbstractFieldTreeWidgetItem::getFieldInfo() const
{
    CORVEL_DEBUG_HOOK();
    return m_fieldInfo;
}

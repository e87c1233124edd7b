#include "abstractfieldtreewidgetitem.h"

#include "diagnostics.h"
#include "fieldinfo.h"
#include "message.h"
#include "repeatedfieldtreewidgetitem.h"
#include "rowguard.h"
#include "singlevaluefieldtreewidgetitem.h"

#include <QObject>

CORVEL_DIAGNOSTICS("AbstractFieldTreeWidgetItem");

AbstractFieldTreeWidgetItem::AbstractFieldTreeWidgetItem(MessageTreeWidget* treeWidget)
    : AbstractMessageTreeWidgetItem(treeWidget)
    , m_fieldInfo(nullptr)
    , m_list(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("AbstractFieldTreeWidgetItem");
}

AbstractFieldTreeWidgetItem::~AbstractFieldTreeWidgetItem()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("AbstractFieldTreeWidgetItem");
    if (m_list)
        m_list->replace(m_list->indexOf(this), nullptr);
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

void AbstractFieldTreeWidgetItem::append(List* list, AbstractFieldTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    list->append(row);
    row->m_list = list;
}

QList<QTreeWidgetItem*> AbstractFieldTreeWidgetItem::release(List* list, int size)
{
    CORVEL_DEBUG_HOOK();
    QList<QTreeWidgetItem*> rows;
    for (int i = size; i < list->size(); ++i) {
        if (AbstractFieldTreeWidgetItem* row = list->at(i)) {
            row->m_list = nullptr;
            rows.append(row);
        }
    }
    list->resize(size);
    return rows;
}

QList<QTreeWidgetItem*> AbstractFieldTreeWidgetItem::releaseAll(List* list)
{
    CORVEL_DEBUG_HOOK();
    RowGuard::breakAll(list);
    return release(list, 0);
}

bool AbstractFieldTreeWidgetItem::deliver(List* list, const Message* message)
{
    CORVEL_DEBUG_HOOK();
    RowGuard::breakAll(list);
    const RowGuard newest(list);
    for (int i = 0; !newest.isBroken() && i < list->size(); ++i) {
        if (AbstractFieldTreeWidgetItem* row = list->at(i))
            row->processMessage(message);
    }
    return !newest.isBroken();
}

bool AbstractFieldTreeWidgetItem::clearAll(List* list)
{
    CORVEL_DEBUG_HOOK();
    RowGuard::breakAll(list);
    const RowGuard newest(list);
    for (int i = 0; !newest.isBroken() && i < list->size(); ++i) {
        if (AbstractFieldTreeWidgetItem* row = list->at(i))
            row->clearValues();
    }
    return !newest.isBroken();
}

void AbstractFieldTreeWidgetItem::forgetFields(List* list)
{
    CORVEL_DEBUG_HOOK();
    for (int i = 0; i < list->size(); ++i) {
        AbstractFieldTreeWidgetItem* const row = list->at(i);
        if (!row)
            continue;
        row->m_fieldInfo = nullptr;
        if (SingleValueFieldTreeWidgetItem* value = dynamic_cast<SingleValueFieldTreeWidgetItem*>(row))
            forgetFields(&value->m_subFieldRows);
        else if (RepeatedFieldTreeWidgetItem* repeated = dynamic_cast<RepeatedFieldTreeWidgetItem*>(row))
            forgetFields(&repeated->m_childRows);
    }
}

QString AbstractFieldTreeWidgetItem::getNameTextOfValue(unsigned int index) const
{
    CORVEL_DEBUG_HOOK();
    if (!m_fieldInfo)
        return QObject::tr("No field set");
    if (!m_fieldInfo->isRepeated())
        return m_fieldInfo->getName();
    return m_fieldInfo->getName() + QString::fromLatin1(" [%1]").arg(index);
}

QString AbstractFieldTreeWidgetItem::getTypeTextOfValue() const
{
    CORVEL_DEBUG_HOOK();
    return m_fieldInfo ? m_fieldInfo->getType().toShortString() : QObject::tr("N/A");
}

bool AbstractFieldTreeWidgetItem::isMissingIn(const Message* message) const
{
    CORVEL_DEBUG_HOOK();
    return m_fieldInfo->isOptional() && m_fieldInfo->occursIn(message->getInfo()) &&
           m_fieldInfo->getValueCount(message) == 0;
}

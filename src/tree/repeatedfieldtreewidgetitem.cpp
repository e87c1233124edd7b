#include "repeatedfieldtreewidgetitem.h"

#include "diagnostics.h"
#include "message.h"
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
    if (m_childRows.size() - count <= FewRows) {
        for (int i = count; i < m_childRows.size(); ++i)
            delete m_childRows.at(i);
    } else if (count == 0 && childCount() == m_childRows.size()) {
        qDeleteAll(takeChildren());
    } else {
        // From the end, and taken out before it is deleted: a row that deletes itself searches its place from the
        // front.
        for (int i = m_childRows.size() - 1; i >= count; --i) {
            AbstractFieldTreeWidgetItem* row = m_childRows.at(i);
            if (child(childCount() - 1) == row)
                takeChild(childCount() - 1);
            delete row;
        }
    }
    m_childRows.resize(count);
}

AbstractFieldTreeWidgetItem* RepeatedFieldTreeWidgetItem::createChildItem(int index)
{
    CORVEL_DEBUG_HOOK();
    if (hasSubMessages())
        return new SingleSubMessageFieldTreeWidgetItem(getMessageTreeWidget(), getFieldInfo(), index);
    return new SingleValueFieldTreeWidgetItem(getMessageTreeWidget(), getFieldInfo(), index);
}

void RepeatedFieldTreeWidgetItem::appendChildItemsUpTo(int count)
{
    CORVEL_DEBUG_HOOK();
    if (count - m_childRows.size() > FewRows && !(treeWidget() && treeWidget()->isSortingEnabled())) {
        appendTogetherUpTo(count);
        return;
    }
    for (int i = m_childRows.size(); i < count; ++i) {
        AbstractFieldTreeWidgetItem* row = createChildItem(i);
        addChild(row);
        m_childRows.append(row);
        if (treeWidget())
            row->configureInTreeWidget();
    }
}

// For every insertion, the model goes through all expanded rows: one by one, thousands of rows would take seconds.
void RepeatedFieldTreeWidgetItem::appendTogetherUpTo(int count)
{
    CORVEL_DEBUG_HOOK();
    const int first = m_childRows.size();
    QList<QTreeWidgetItem*> newRows;
    for (int i = first; i < count; ++i) {
        AbstractFieldTreeWidgetItem* row = createChildItem(i);
        newRows.append(row);
        m_childRows.append(row);
    }
    addChildren(newRows);
    // Somebody who listens may clear the values meanwhile.
    for (int i = first; i < m_childRows.size() && treeWidget(); ++i)
        m_childRows.at(i)->configureInTreeWidget();
}

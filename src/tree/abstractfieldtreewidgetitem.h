#ifndef ABSTRACTFIELDTREEWIDGETITEM_H
#define ABSTRACTFIELDTREEWIDGETITEM_H

#include "abstractmessagetreewidgetitem.h"

/** Base of the rows that stand for a field. */
class CORVELGUI_EXPORT AbstractFieldTreeWidgetItem : public virtual AbstractMessageTreeWidgetItem
{
public:
    explicit AbstractFieldTreeWidgetItem(MessageTreeWidget* treeWidget);
    virtual ~AbstractFieldTreeWidgetItem();

    /** Makes the row stand for @p field, which may be null; borrowed, must outlive the row. */
    virtual void setFieldInfo(const FieldInfo* field);
    const FieldInfo* getFieldInfo() const;

private:
    Q_DISABLE_COPY(AbstractFieldTreeWidgetItem)

    const FieldInfo* m_fieldInfo;
};

#endif

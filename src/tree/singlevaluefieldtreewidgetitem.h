#ifndef SINGLEVALUEFIELDTREEWIDGETITEM_H
#define SINGLEVALUEFIELDTREEWIDGETITEM_H

#include "abstractfieldtreewidgetitem.h"
#include "fieldvalue.h"

/** The row of one value of a field, with a row for each component field below it. */
class CORVELGUI_EXPORT SingleValueFieldTreeWidgetItem : public AbstractFieldTreeWidgetItem
{
public:
    /** @param index  the number (from 0) of the value; 0 for a plain field */
    SingleValueFieldTreeWidgetItem(MessageTreeWidget* treeWidget, const FieldInfo* field, unsigned int index);
    virtual ~SingleValueFieldTreeWidgetItem();

    void setFieldInfo(const FieldInfo* field) override;
    void clearValues() override;
    QString getNameText() override;
    QString getTypeText() override;
    QString getValueText() override;
    QString getRawValueText() override;
    /** A message with fewer values than the row's index leaves the value shown as it is. */
    void processMessage(const Message* message) override;

    unsigned int getIndex() const;
    /** Shows another value of the field: builds the rows below anew and clears the value. */
    void setIndex(unsigned int index);

    FieldValue getFieldValue() const;
    void setFieldValue(const FieldValue& value);

protected:
    void ensureChildItems();

private:
    Q_DISABLE_COPY(SingleValueFieldTreeWidgetItem)
    friend class AbstractFieldTreeWidgetItem;

    bool show(const FieldValue& value);

    unsigned int m_index;
    FieldValue m_fieldValue;
    bool m_optionalValueMissing;
    List m_subFieldRows;
};

#endif

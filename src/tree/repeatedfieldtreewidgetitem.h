#ifndef REPEATEDFIELDTREEWIDGETITEM_H
#define REPEATEDFIELDTREEWIDGETITEM_H

#include "abstractfieldtreewidgetitem.h"

#include <QVector>

/** The row of a repeated field: tells how many values there are, with a row for each below it. */
class CORVELGUI_EXPORT RepeatedFieldTreeWidgetItem : public AbstractFieldTreeWidgetItem
{
public:
    RepeatedFieldTreeWidgetItem(MessageTreeWidget* treeWidget, const FieldInfo* field);
    virtual ~RepeatedFieldTreeWidgetItem();

    void setFieldInfo(const FieldInfo* field) override;
    void clearValues() override;
    QString getNameText() override;
    QString getTypeText() override;
    QString getValueText() override;
    QString getRawValueText() override;
    void processMessage(const Message* message) override;

protected:
    void updateChildItems(const Message* message);
    void deleteAllChildItems();

private:
    Q_DISABLE_COPY(RepeatedFieldTreeWidgetItem)
    friend class AbstractFieldTreeWidgetItem;

    bool hasSubMessages() const;
    void removeChildItemsFrom(int count);
    void appendChildItemsUpTo(int count);
    void appendTogetherUpTo(int count);
    AbstractFieldTreeWidgetItem* createChildItem(int index);

    QVector<AbstractFieldTreeWidgetItem*> m_childRows;
};

#endif

#ifndef SINGLESUBMESSAGEFIELDTREEWIDGETITEM_H
#define SINGLESUBMESSAGEFIELDTREEWIDGETITEM_H

#include "abstractfieldtreewidgetitem.h"
#include "messagetreewidgetitem.h"

class RowGuard;

/** The row of one value of a field whose values are sub-messages: a field's row, and the row of the sub-message. */
class CORVELGUI_EXPORT SingleSubMessageFieldTreeWidgetItem : public MessageTreeWidgetItem,
                                                             public AbstractFieldTreeWidgetItem
{
public:
    /**
     * @param index     the number (from 0) of the value; 0 for a plain field
     * @param rowAbove  the row below which the creator is going to insert this one; may be null
     */
    SingleSubMessageFieldTreeWidgetItem(MessageTreeWidget* treeWidget, const FieldInfo* field, unsigned int index,
                                        const AbstractMessageTreeWidgetItem* rowAbove = 0);
    virtual ~SingleSubMessageFieldTreeWidgetItem();

    QString getNameText() override;
    QString getNameToolTip() override;
    QString getTypeText() override;
    QString getValueText() override;
    virtual void clearValues();
    /** A message with fewer values than the row's index leaves what is shown as it is. */
    virtual void processMessage(const Message* message);
    void configureInTreeWidget() override;
    /** Ends the program when @p field is not a sub-message field. */
    void setFieldInfo(const FieldInfo* field) override;
    QString getRawValueText() override;

    unsigned int getIndex() const;
    /** Shows another value of the field; clears the row also when the index is the one it has. */
    void setIndex(unsigned int index);

    /** The row that the row is inserted below, or that is creating it in order to insert it; may be null. */
    const QTreeWidgetItem* getRowAbove() const;

private:
    Q_DISABLE_COPY(SingleSubMessageFieldTreeWidgetItem)

    unsigned int m_index;
    bool m_optionalSubMessageMissing;
    // While the row is created: the row above, which may be deleted meanwhile.
    const AbstractMessageTreeWidgetItem* m_creator;
    const RowGuard* m_creatorGuard;
};

#endif

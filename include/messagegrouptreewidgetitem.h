#ifndef CORVEL_MESSAGEGROUPTREEWIDGETITEM_H
#define CORVEL_MESSAGEGROUPTREEWIDGETITEM_H

#include "abstractmessagetreewidgetitem.h"
#include "corvelgui_export.h"

class MessageInfo;
class MessageTreeWidgetItem;

/**
 * A row above those of message types: of a sender, a vehicle, a subsystem.
 *
 * It hands messages to the rows below it. A derived class says which messages these are, and what else there is to be
 * told of the group. It stays folded or unfolded as it was left, whatever comes and goes; a new one is folded.
 *
 * @code
 * class SenderRow : public MessageGroupTreeWidgetItem
 * {
 * public:
 *     SenderRow(MessageTreeWidget* tree, const QString& sender)
 *         : MessageGroupTreeWidgetItem(tree, sender)
 *     {
 *     }
 *     void processMessage(const Message* message) override
 *     {
 *         if (message && message->getSender() != getName())
 *             return;
 *         if (message)
 *             addRow(message->getInfo());
 *         MessageGroupTreeWidgetItem::processMessage(message);
 *     }
 * };
 * SenderRow* row = new SenderRow(tree, "1:1");
 * tree->addTopLevelItem(row);
 * row->configureInTreeWidget();
 * @endcode
 */
class CORVELGUI_EXPORT MessageGroupTreeWidgetItem : public AbstractMessageTreeWidgetItem
{
public:
    /**
     * A row that is not inserted anywhere yet, with nothing below.
     *
     * @param treeWidget  the tree whose columns count until the row is in one; may be null. Borrowed.
     * @param name        what it is called
     */
    explicit MessageGroupTreeWidgetItem(MessageTreeWidget* treeWidget, const QString& name = QString());
    virtual ~MessageGroupTreeWidgetItem();

    void setName(const QString& name);
    const QString& getName() const;

    /** The row of @p info directly below; null when there is none. */
    MessageTreeWidgetItem* findRow(const MessageInfo* info) const;
    /**
     * The row of @p info directly below, which is made, behind the others, if there is none.
     *
     * @return null when there can be none: for null, and while the tree removes rows
     */
    MessageTreeWidgetItem* addRow(const MessageInfo* info);

    QString getNameText() override;
    /** Clears the rows below. */
    void clearValues() override;
    /** Hands @p message to the rows directly below, of which those take it whose type it has; null clears them. */
    void processMessage(const Message* message) override;
    void configureInTreeWidget() override;

protected:
    /** Makes the row that addRow() adds, for @p info, which is not null; by default one of the library's own. */
    virtual MessageTreeWidgetItem* createRow(const MessageInfo* info);

private:
    Q_DISABLE_COPY(MessageGroupTreeWidgetItem)

    QString m_name;
};

#endif

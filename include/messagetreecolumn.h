#ifndef CORVEL_MESSAGETREECOLUMN_H
#define CORVEL_MESSAGETREECOLUMN_H

#include "corvelgui_export.h"

#include <QString>

class AbstractMessageTreeWidgetItem;
class FieldInfo;
class Message;
class MessageTreeWidgetItem;

/**
 * A column of an application's own in a MessageTreeWidget: its header, and its text in every kind of row.
 *
 * Texts are asked for when somebody sees them, so a column costs nothing in rows that are out of sight, and no text is
 * stored. Operations must change nothing in the tree. A text is one line.
 *
 * @code
 * class NotesColumn : public MessageTreeColumn
 * {
 * public:
 *     QString getHeaderText() const override { return "Notes"; }
 *     QString getMessageText(MessageTreeWidgetItem* row) override
 *     {
 *         return row->isMessageDisplayed() ? row->getDisplayedMessage()->getSender() : QString();
 *     }
 *     QString getFieldText(AbstractMessageTreeWidgetItem*, const FieldInfo* field, const Message*) override
 *     {
 *         return field->getDescription();
 *     }
 * };
 * tree->setCustomColumn(MessageTreeWidget::CustomColumn1, new NotesColumn);
 * tree->addColumn(MessageTreeWidget::CustomColumn1, true);
 * @endcode
 */
class CORVELGUI_EXPORT MessageTreeColumn
{
public:
    MessageTreeColumn();
    virtual ~MessageTreeColumn();

    /** What stands in the header, and in the action that shows and hides the column. */
    virtual QString getHeaderText() const = 0;
    /** More about it; null, as by default, for none. */
    virtual QString getHeaderToolTip() const;

    /** The text in the row of a message type; empty by default. */
    virtual QString getMessageText(MessageTreeWidgetItem* row);
    /**
     * The text in the row of a field, be it of its only value, of all its values, of one of them
     * (AbstractMessageTreeWidgetItem::getIndex()), of a sub-message or of a component; empty by default.
     *
     * @param message  the message, or sub-message, that @p field is a field of; null while none is shown
     */
    virtual QString getFieldText(AbstractMessageTreeWidgetItem* row, const FieldInfo* field, const Message* message);
    /** The text in any other row of the library's base, such as one above the types of a sender; empty by default. */
    virtual QString getGroupText(AbstractMessageTreeWidgetItem* row);
    /** The tool tip of a cell; null, as by default, for what is stored in the row, if anything is. */
    virtual QString getToolTip(AbstractMessageTreeWidgetItem* row);

    /** The text in @p row, whatever that is: one of the three above. */
    QString getText(AbstractMessageTreeWidgetItem* row);

private:
    Q_DISABLE_COPY(MessageTreeColumn)
};

#endif

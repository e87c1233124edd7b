#ifndef CORVEL_MESSAGETREEWIDGETITEM_H
#define CORVEL_MESSAGETREEWIDGETITEM_H

#include "abstractmessagetreewidgetitem.h"
#include "corvelgui_export.h"
#include "messageneed.h"

#include <QHash>
#include <QObject>
#include <QVector>

class AbstractFieldTreeWidgetItem;
class FieldInfo;
class Message;
class MessageInfo;

// The moc of Qt 4 reads no override at a slot.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Winconsistent-missing-override"
#endif

/**
 * The row of one message type: shows the latest message of the type, with a row for each of its fields below.
 *
 * It states its need of the type, so that the framework delivers messages of it. The message shown is kept by a
 * reference if its type is a main type.
 *
 * Its base is a virtual one, which the row of a sub-message has only once. So the constructor of a derived class has to
 * name that base as well, with the same tree: what MessageTreeWidgetItem gives to it counts only where that is the
 * whole row. What a derived class says of itself is written when the row is configured in a tree. For a moment the row
 * has no type then, as after the end of its type, and its texts are read: they have to do with a getMessageInfo() that
 * is null.
 *
 * @code
 * class CountedRow : public MessageTreeWidgetItem
 * {
 * public:
 *     CountedRow(MessageTreeWidget* tree, const MessageInfo* info)
 *         : AbstractMessageTreeWidgetItem(tree)
 *         , MessageTreeWidgetItem(tree, info)
 *     {
 *     }
 *     QString getValueText() override { return QString("%1 received").arg(m_count); }
 *     void processMessage(const Message* message) override
 *     {
 *         m_count += message && message->getInfo() == getMessageInfo();
 *         MessageTreeWidgetItem::processMessage(message); // writes the texts
 *     }
 *     int getCount() const { return m_count; }
 * private:
 *     int m_count = 0;
 * };
 * @endcode
 */
class CORVELGUI_EXPORT MessageTreeWidgetItem : public QObject, public virtual AbstractMessageTreeWidgetItem
{
    Q_OBJECT

public:
    /**
     * A row that is not inserted anywhere yet, with the rows of its fields.
     *
     * @param treeWidget  the tree whose columns and filters count until the row is in one; may be null. Borrowed.
     * @param info        may be null. Borrowed; when it goes, the row is left empty.
     */
    MessageTreeWidgetItem(MessageTreeWidget* treeWidget, const MessageInfo* info);
    virtual ~MessageTreeWidgetItem();

    QString getNameText() override;
    QString getNameToolTip() override;
    QString getTypeText() override;
    QString getValueText() override;

    /** The type the row stands for; may be null. */
    const MessageInfo* getMessageInfo() const;
    /** The message shown; may be null. */
    const Message* getDisplayedMessage() const;
    bool isMessageDisplayed() const;

public Q_SLOTS:
    /** Makes the row stand for another type, without a message; null empties it. The type it has changes nothing. */
    void setMessageInfo(const MessageInfo* info);
    /** Shows @p message, of whatever type; null empties the row. */
    void displayMessage(const Message* message);
    /** Shows no message; the rows of the fields stay. */
    virtual void clearValues();
    /** Shows @p message if it is of the row's type; null clears the values. */
    virtual void processMessage(const Message* message);

public:
    void configureInTreeWidget() override;

protected:
    /** Takes hold of @p message, which may be null, and lets go of the one shown; changes no text. */
    void setDisplayedMessage(const Message* message);
    void createChildItems();
    void deleteAllChildItems();
    void showConfidentialityMessage();
    void hideConfidentialityMessage();

private:
    Q_DISABLE_COPY(MessageTreeWidgetItem)
    friend class AbstractMessageTreeWidgetItem;

    static void letGoOfMainType(void* row, const QObject* object, bool show);
    static void letGoOfOtherType(void* row, const QObject* object, bool show);
    void letGo(bool show);
    void beginType();
    AbstractFieldTreeWidgetItem* createFieldRow(const FieldInfo* field);
    void setNameItalic(QTreeWidgetItem* row);
    void createRowsOfType();
    void writeConfidentialityTexts(QTreeWidgetItem* row);
    void translateConfidentialityRow();
    bool isInsideOwnType() const;

    const MessageInfo* m_messageInfo;
    MessageNeed m_messageNeed;
    QHash<const FieldInfo*, AbstractFieldTreeWidgetItem*>
        m_childRows; // also rows that somebody deleted: only the keys count
    const Message* m_displayedMessage;
    QTreeWidgetItem* m_confidentialityRow;
    QVector<AbstractFieldTreeWidgetItem*>
        m_childRowsInOrder; // in the order of the fields; null for those that somebody deleted
};

#if defined(__clang__)
#pragma clang diagnostic pop
#endif

#endif

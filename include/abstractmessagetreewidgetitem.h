#ifndef CORVEL_ABSTRACTMESSAGETREEWIDGETITEM_H
#define CORVEL_ABSTRACTMESSAGETREEWIDGETITEM_H

#include "corvelgui_export.h"
#include "messagetreewidget.h"

#include <QList>
#include <QTreeWidgetItem>

class FieldInfo;
class Message;

/**
 * Base of the rows of a MessageTreeWidget.
 *
 * A row offers texts; the base writes each into the column that shows it, wherever that is, or nowhere. A derived row
 * calls the setter of a text whenever that may have changed and never writes a column itself.
 *
 * Whoever listens to a change, be it in a slot or in a setData() of his own, may delete any row of the library, the one
 * that changes included: what was under way with it ends, the rows beside it get their values, and it comes back when
 * the row above it is built anew. But some things Qt's own item widgets don't survive:
 * - a slot of QTreeWidget::itemChanged() must not delete or take out the row it is told of while the tree sorts by the
 *   column that changed;
 * - a slot of QTreeWidget::itemSelectionChanged() or currentItemChanged() must not add, take out or delete rows itself
 *   while it is told that rows are removed;
 * - QTreeWidgetItem::setSelected() goes on with its row when all have been told, which must still be there: not so when
 *   a slot had all rows made anew, by other columns or filters. QTreeWidget::setCurrentItem() looks at no row;
 * - no slot may delete the tree.
 * All of it can be done later.
 */
class CORVELGUI_EXPORT AbstractMessageTreeWidgetItem : public QTreeWidgetItem
{
public:
    /** How a row is expanded when it is configured in a tree. */
    enum InitialExpansionPolicy
    {
        ExpandInitially = 0,
        CollapseInitially = 1,
        RestoreExpansion = 2 ///< as the user last left rows of the same type or field
    };

    /**
     * A row that is not inserted anywhere yet and starts collapsed.
     *
     * @param treeWidget  the tree the row is made for; may be null. Borrowed.
     */
    explicit AbstractMessageTreeWidgetItem(MessageTreeWidget* treeWidget);
    virtual ~AbstractMessageTreeWidgetItem();

    virtual QString getNameText();
    virtual QString getNameToolTip();
    virtual QString getTypeText();
    virtual QString getValueText();
    virtual QString getRawValueText();

    /** Forgets the values shown. */
    virtual void clearValues() = 0;
    /** Takes the row's values from @p message; null clears them. */
    virtual void processMessage(const Message* message) = 0;
    /** Fills the row and all below it and expands it, following the tree's columns and filters. Only in a tree view. */
    virtual void configureInTreeWidget();

    /** Stores as every item does; all texts and roles may be written by the application too. */
    void setData(int column, int role, const QVariant& value) override;
    /** What is stored, but for a column that an application gave to the tree: what that says now. */
    QVariant data(int column, int role) const override;

    /** The tree the row is in, or else the one it was made for; null when that is no MessageTreeWidget. */
    MessageTreeWidget* getMessageTreeWidget();

    /** The field that the row stands for; null for the row of a message type. */
    const FieldInfo* getFieldInfo() const;
    /** The number (from 0) of the value shown, also of a plain field; -1 for rows of all values of a field or of none.
     */
    int getIndex() const;

    InitialExpansionPolicy getInitialExpansionPolicy() const;
    /** Takes effect when the row is configured the next time. */
    void setInitialExpansionPolicy(InitialExpansionPolicy policy);

    /** Writes the name and its tool tip; like the other setters, only if the tree has the column. */
    void setNameText();
    void setTypeText();
    void setValueText();
    void setRawValueText();
    /** Writes the texts of all columns, but no tool tip. */
    void setAllTexts();
    /**
     * Has what a MessageTreeColumn says of the row read again if it is on the screen. The setters do that by
     * themselves; to be called when something else changed that such a column tells of.
     */
    void updateCustomTexts();

    /** The text that a column of type @p type shows of this row. */
    QString getTextForColumn(MessageTreeWidget::ColumnType type);

    /** Whether a row is to be made for @p field, by confidentiality and the filters of the tree. Null is not shown. */
    bool mustShowField(const FieldInfo* field);

protected:
    /** Texts of a row; a number with a bit for each. */
    enum Text
    {
        NameText = 1,
        TypeText = 2,
        ValueText = 4,
        RawValueText = 8
    };
    /** Writes these texts, as the setters do; false when somebody who listens deleted the row. */
    bool writeTexts(int texts);
    /** Takes the row out of its tree while it is still whole: the first thing that a destructor does. */
    void retire();
    /** Takes out and deletes rows that this one made below itself; false when this row was deleted meanwhile. */
    bool deleteRows(const QList<QTreeWidgetItem*>& rows);
    /** Deletes all children, those that others added included. */
    bool deleteAllRows();
    /** Whether rows may be added now. If not, the tree makes all rows anew as soon as they may. */
    bool mayAddRows();
    /** Hands @p message to the rows directly below; false when this row was deleted meanwhile. */
    bool deliverBelow(const Message* message);
    /** The tree that the row is in; null when it is in none, or in another kind of tree. */
    MessageTreeWidget* getTreeAround() const;

private:
    Q_DISABLE_COPY(AbstractMessageTreeWidgetItem)
    friend class MessageTreeWidget;
    friend class MessageTreeWidgetItem;
    friend class RowHold;

    void forgetPlaceInTree();
    bool store(MessageTreeWidget* tree, int column, int role, const QVariant& value);
    bool writeText(MessageTreeWidget* tree, int column, const QString& text);
    bool writeName();
    bool writeAllTexts();
    void translate();
    void takeRows(const QList<QTreeWidgetItem*>& rows, QTreeWidgetItem* newParent);
    QList<AbstractMessageTreeWidgetItem*> getRowsBelow() const;
    bool isStillBelow(AbstractMessageTreeWidgetItem* row, unsigned int deletedRows) const;
    static void deleteReleasedRows(MessageTreeWidget* tree);
    static void forgetTree(const MessageTreeWidget* tree);

    MessageTreeWidget* m_messageTreeWidget;
    InitialExpansionPolicy m_initialExpansionPolicy;
    // A bit for each column whose text was written by this class and is one ordinary line, as high as its font.
    unsigned int m_ordinaryColumns : 31;
    // Whether the text to be stored next comes from this class.
    unsigned int m_writesOwnText : 1;
    // Kept by the tree: when the row was last on the screen, and a bit for each column that changed since.
    unsigned int m_screenNumber;
    unsigned int m_changedColumns;
};

#endif

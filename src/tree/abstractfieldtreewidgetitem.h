#ifndef ABSTRACTFIELDTREEWIDGETITEM_H
#define ABSTRACTFIELDTREEWIDGETITEM_H

#include "abstractmessagetreewidgetitem.h"

#include <QVector>

/** Base of the rows that stand for a field. */
class CORVELGUI_EXPORT AbstractFieldTreeWidgetItem : public virtual AbstractMessageTreeWidgetItem
{
public:
    explicit AbstractFieldTreeWidgetItem(MessageTreeWidget* treeWidget);
    virtual ~AbstractFieldTreeWidgetItem();

    /** Makes the row stand for @p field, which may be null; borrowed, must outlive the row. */
    virtual void setFieldInfo(const FieldInfo* field);
    const FieldInfo* getFieldInfo() const;

    /**
     * The rows that a row made below itself. A row that is deleted by somebody else leaves null in its place.
     *
     * While a walk through a list tells the rows something, whoever listens may change it or walk through it, too. What
     * comes later is newer, and ends the walk.
     */
    typedef QVector<AbstractFieldTreeWidgetItem*> List;
    static void append(List* list, AbstractFieldTreeWidgetItem* row);
    /** Shortens @p list; gives those of the rows left out that still exist. */
    static QList<QTreeWidgetItem*> release(List* list, int size);
    /** Empties @p list, which ends what is under way with it; gives the same. */
    static QList<QTreeWidgetItem*> releaseAll(List* list);
    /** Hands @p message to all rows; false when something newer came, or the list is gone. */
    static bool deliver(List* list, const Message* message);
    /** Clears the values of all rows; false as above. */
    static bool clearAll(List* list);
    /** Leaves all rows, and those below, without a field, and tells nobody: their fields are gone. */
    static void forgetFields(List* list);

protected:
    /** The name of the field, with @p index behind it if the field has several values. */
    QString getNameTextOfValue(unsigned int index) const;
    /** The name of the field's type. */
    QString getTypeTextOfValue() const;
    /** Whether the field may be left out of messages of the type of @p message, and is. */
    bool isMissingIn(const Message* message) const;

private:
    Q_DISABLE_COPY(AbstractFieldTreeWidgetItem)

    const FieldInfo* m_fieldInfo;
    List* m_list;
};

#endif

#ifndef TREEROW_H
#define TREEROW_H

#include "fieldpath.h"
#include "subject.h"

class MessageTreeWidget;
class QTreeWidgetItem;
class SubjectRow;

/**
 * What a row of the message tree stands for.
 *
 * To be used at once: rows come and go with messages.
 */
class TreeRow
{
public:
    /** @param item  any row of a MessageTreeWidget; null, and rows that stand for nothing, give a null row */
    explicit TreeRow(QTreeWidgetItem* item);

    bool isNull() const { return m_path.isNull(); }
    const FieldPath& getPath() const { return m_path; }
    QTreeWidgetItem* getItem() const { return m_item; }
    /** The row of the message type in which it lies; null for a null row. */
    SubjectRow* getSubjectRow() const { return m_subjectRow; }
    /** The type, and the sender if the row is of one only; without a type for a null row. */
    Subject getSubject() const;
    /** The message that is shown; may be null. */
    const Message* getMessage() const;
    /** The value that is shown; invalid when there is none, or not one. */
    FieldValue getValue() const;
    /** Whether the row shows a number that can be drawn over time; from the description, whatever is shown now. */
    bool isNumeric() const;

    /** The value as people read it, of a repeated field all of them; of a type or a sub-message nothing. */
    QString getValueText() const;
    /** The value as transmitted, likewise. */
    QString getRawValueText() const;
    /** The path that finds the row again. */
    QString getExpression() const { return m_path.getExpression(); }
    /** The message of a type, or the field's part of it, as JSON; empty when no message is shown. */
    QString getJson() const;

private:
    QString joinValues(bool raw) const;

    FieldPath m_path;
    QTreeWidgetItem* m_item;
    SubjectRow* m_subjectRow = nullptr;
};

#endif

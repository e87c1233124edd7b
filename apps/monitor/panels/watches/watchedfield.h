#ifndef WATCHEDFIELD_H
#define WATCHEDFIELD_H

#include "fieldwalk.h"

#include <QObject>
#include <QStringList>

class FieldValueLabel;
class LatestMessageSource;
class Message;
class MessageInfo;
class PathExpression;

/**
 * Keeps a label at the value of the one field that a path expression names, also inside sub-messages.
 *
 * Where the way leads through a repeated sub-message without a number, the values of all of them are shown.
 */
class WatchedField : public QObject
{
    Q_OBJECT

public:
    /** @param label  shows the value, without a source of its own. Both are borrowed and must outlive this object. */
    WatchedField(FieldValueLabel* label, LatestMessageSource* source);

    /**
     * Shows what @p expression names, with its newest value at once; nothing when that is no or more than one field.
     *
     * A type that came with one schema and then with another is one to the reader: what came last is shown.
     *
     * @return the field, or null
     */
    const FieldInfo* follow(const PathExpression& expression);
    void followNothing();
    /** Writes the value anew, as it is to be written now; one that timed out stays away. */
    void renew();

private Q_SLOTS:
    void processMessage(const Message* message);
    void forget(const MessageInfo* info);

private:
    const FieldInfo* setPath(const FieldPath& path);
    void collectTexts(const FieldWalk& walk, QStringList* texts);

    FieldValueLabel* m_label;
    LatestMessageSource* m_source;
    FieldPath m_path;
    QVector<FieldPath> m_schemas; // the same way in each schema that the type came with, where there are several
    bool m_hidden = false;        // what the label says is that the value is hidden
};

#endif

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
     * Shows what @p expression names of @p sender, with its newest value at once; nothing when that is no or more than
     * one field.
     *
     * A type that came with one schema and then with another is one to the reader: what came last is shown.
     *
     * @param sender  empty for the first one that brings it, until what it brought is forgotten
     * @return the field, or null
     */
    const FieldInfo* follow(const PathExpression& expression, const QString& sender = QString());
    void followNothing();
    /** The way to what is shown; null for nothing. */
    const FieldPath& getPath() const { return m_path; }
    /** Who sent what is shown; empty while that is not known. */
    const QString& getSender() const { return m_followed; }
    /** The sender has another name now. */
    void renameSender(const QString& before, const QString& now);
    /** After how long the label loses what no message brings anew, in milliseconds; negative for never. */
    void setTimeOut(int milliseconds);
    /** Writes the value anew, as it is to be written now; one that timed out stays away. */
    void renew();

Q_SIGNALS:
    /** Another sender is shown. */
    void senderChanged();

private Q_SLOTS:
    void processMessage(const Message* message);
    void forget(const MessageInfo* info);

private:
    const FieldInfo* setPath(const FieldPath& path);
    void collectTexts(const FieldWalk& walk, QStringList* texts);

    FieldValueLabel* m_label;
    LatestMessageSource* m_source;
    FieldPath m_path;
    QString m_sender;             // that is wanted; may be empty
    QString m_followed;           // that is shown
    QVector<FieldPath> m_schemas; // the same way in each schema that the type came with, where there are several
    int m_timeOut = -1;
    bool m_hidden = false; // what the label says is that the value is hidden
};

#endif

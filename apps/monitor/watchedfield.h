#ifndef WATCHEDFIELD_H
#define WATCHEDFIELD_H

#include "pathexpression.h"

#include <QObject>

#include <optional>

class FieldValueLabel;
class LatestMessageSource;
class Message;

/** Keeps a label at the value of the one field that a path expression names, also inside sub-messages. */
class WatchedField : public QObject
{
    Q_OBJECT

public:
    /** @param label  shows the value, without a source of its own. Both are borrowed and must outlive this object. */
    WatchedField(FieldValueLabel* label, LatestMessageSource* source);

    /**
     * Shows what @p expression names, with its newest value at once; nothing when that is no or more than one field.
     *
     * @return the field, or null
     */
    const FieldInfo* follow(const PathExpression& expression);
    void followNothing();

private Q_SLOTS:
    void processMessage(const Message* message);

private:
    const FieldInfo* setMatch(const std::optional<PathExpression::Match>& match);

    FieldValueLabel* m_label;
    LatestMessageSource* m_source;
    std::optional<PathExpression::Match> m_match;
};

#endif

#ifndef PATHEXPRESSION_H
#define PATHEXPRESSION_H

#include "corvelframework_export.h"

#include <QObject>
#include <QStringList>
#include <QVector>

class FieldInfo;
class MessageInfo;

/** A text that names message types and fields, "mavlink/ATTITUDE/roll". See docs/path-expressions.md for the grammar.
 */
class CORVELFRAMEWORK_EXPORT PathExpression : public QObject
{
    Q_OBJECT

public:
    /** The parts of an expression, as flags. The two lowest name a message type without a field. */
    enum Part
    {
        FormatPart = 1,
        MessagePart = 2,
        FieldPart = 4,
        IndexPart = 8
    };
    Q_DECLARE_FLAGS(Parts, Part)

    static const Parts AllParts;

    explicit PathExpression(QObject* parent = 0);
    virtual ~PathExpression();

    void setString(QString text);
    void setString(QString text, PathExpression::Parts parts);
    QString getString(PathExpression::Parts parts) const;
    void setStringPrefix(QString text, PathExpression::Parts parts);
    void completeEditing();
    void setWildCard(PathExpression::Parts parts);
    bool isWildCard(PathExpression::Parts parts) const;
    QStringList getMatchingExpressionsStringList(PathExpression::Parts parts) const;
    void setupToMatchUnique(const MessageInfo* info);
    void setupToMatchUnique(const FieldInfo* info);
    void setConsiderSubMessages(bool consider);
    QVector<const MessageInfo*> getMatchingMessageInfos() const;
    QVector<const FieldInfo*> getMatchingFieldInfos() const;

Q_SIGNALS:
    void partsChanged(PathExpression::Parts parts);
    void expressionChanged(const QString& text);
    void matchesMayHaveChanged();
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PathExpression::Parts)

#endif

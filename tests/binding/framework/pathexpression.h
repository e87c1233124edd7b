#ifndef PATHEXPRESSION_H
#define PATHEXPRESSION_H

#include <QObject>
#include <QStringList>
#include <QVector>

class FieldInfo;
class MessageInfo;

class PathExpression : public QObject
{
    Q_OBJECT

public:
    enum Part
    {
        First = 1,
        Second = 2,
        Third = 4
    };
    Q_DECLARE_FLAGS(Parts, Part)
    static const Parts AllParts;

    PathExpression(QObject* parent);
    ~PathExpression() override;
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

private:
    QString m_parts[3]; // format, type, field
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PathExpression::Parts)

#endif

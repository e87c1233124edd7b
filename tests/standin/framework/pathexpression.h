#ifndef PATHEXPRESSION_H
#define PATHEXPRESSION_H

#include "fieldinfo.h"
#include "messageinfo.h"

#include <QMap>
#include <QObject>
#include <QStringList>

/** Has a text for each choice of parts, and matches what it is told to. */
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

    PathExpression(QObject* parent)
        : QObject(parent)
    {
    }
    void setString(QString text) { setString(text, AllParts); }
    void setString(QString text, PathExpression::Parts parts)
    {
        texts[int(parts)] = text;
        Q_EMIT partsChanged(parts);
        Q_EMIT expressionChanged(text);
    }
    QString getString(PathExpression::Parts parts) const { return texts.value(int(parts)); }
    void setStringPrefix(QString text, PathExpression::Parts parts) { setString(text + QLatin1String("..."), parts); }
    void completeEditing() {}
    void setWildCard(PathExpression::Parts parts) { setString(QLatin1String("*"), parts); }
    bool isWildCard(PathExpression::Parts parts) const { return getString(parts) == QLatin1String("*"); }
    QStringList getMatchingExpressionsStringList(PathExpression::Parts) const { return matches; }
    void setupToMatchUnique(const MessageInfo* info) { setString(info->getName()); }
    void setupToMatchUnique(const FieldInfo* info) { setString(info->getName()); }
    void setConsiderSubMessages(bool) {}
    QVector<const MessageInfo*> getMatchingMessageInfos() const { return QVector<const MessageInfo*>(); }
    QVector<const FieldInfo*> getMatchingFieldInfos() const { return QVector<const FieldInfo*>(); }

    QMap<int, QString> texts;
    QStringList matches;

Q_SIGNALS:
    void partsChanged(PathExpression::Parts parts);
    void expressionChanged(const QString& text);
    void matchesMayHaveChanged();
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PathExpression::Parts)

#endif

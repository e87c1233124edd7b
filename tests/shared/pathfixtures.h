#ifndef PATHFIXTURES_H
#define PATHFIXTURES_H

#include "formatinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathexpression.h"
#include "testformat.h"

#include <QStringList>

/** Writes down the signals of an expression, in order. */
class PathRecorder : public QObject
{
    Q_OBJECT

public:
    explicit PathRecorder(PathExpression* expression)
    {
        connect(expression, SIGNAL(partsChanged(PathExpression::Parts)), SLOT(notePartsChanged(PathExpression::Parts)));
        connect(expression, SIGNAL(expressionChanged(const QString&)), SLOT(noteExpressionChanged(const QString&)));
        connect(expression, SIGNAL(matchesMayHaveChanged()), SLOT(noteMatchesMayHaveChanged()));
    }

    QString take()
    {
        const QString all = m_signals.join(QLatin1String(", "));
        m_signals.clear();
        return all;
    }

public Q_SLOTS:
    void notePartsChanged(PathExpression::Parts parts)
    {
        m_signals << QLatin1String("parts ") + QString::number(int(parts));
    }
    void noteExpressionChanged(const QString& text) { m_signals << QLatin1String("text ") + text; }
    void noteMatchesMayHaveChanged() { m_signals << QLatin1String("matches"); }

private:
    QStringList m_signals;
};

/** Adds a type to @p format, with plain fields of the names in @p fields, which spaces divide. */
inline MessageInfo* addTestType(FormatInfo* format, const char* name, const char* fields, bool main = true)
{
    MessageInfo* info = new MessageInfo(QString::fromUtf8(name), main);
    const QStringList names = QString::fromUtf8(fields).split(QLatin1Char(' '));
    for (int i = 0; i < names.size(); ++i)
        if (!names.at(i).isEmpty())
            info->addField(new TestFieldInfo(names.at(i)));
    format->addMessageInfo(info);
    return info;
}

#endif

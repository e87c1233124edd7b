#ifndef PATHFIXTURES_H
#define PATHFIXTURES_H

#include "formatinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathexpression.h"
#include "testformat.h"

#include <QStringList>

#include <functional>

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

/** Takes back every change of an expression, so that each commit is a change of its own. */
class PathUndoer : public QObject
{
    Q_OBJECT

public:
    PathUndoer(PathExpression* expression, const QString& text)
        : m_expression(expression)
        , m_text(text)
    {
        expression->setString(text);
        connect(expression, SIGNAL(expressionChanged(const QString&)), SLOT(undo(const QString&)));
    }

    /** What was set since the last call. */
    QStringList take()
    {
        const QStringList taken = m_changes;
        m_changes.clear();
        return taken;
    }

public Q_SLOTS:
    void undo(const QString& text)
    {
        if (text == m_text)
            return;
        m_changes << text;
        m_expression->setString(m_text);
    }

private:
    PathExpression* m_expression;
    const QString m_text;
    QStringList m_changes;
};

/** Answers a signal with a call, once. */
class OnceCaller : public QObject
{
    Q_OBJECT

public:
    explicit OnceCaller(const std::function<void()>& function)
        : m_function(function)
    {
    }

public Q_SLOTS:
    void call()
    {
        std::function<void()> function;
        function.swap(m_function);
        if (function)
            function();
    }

private:
    std::function<void()> m_function;
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

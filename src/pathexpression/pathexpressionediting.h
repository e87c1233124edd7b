#ifndef PATHEXPRESSIONEDITING_H
#define PATHEXPRESSIONEDITING_H

#include "borrowed.h"
#include "diagnostics.h"
#include "pathexpression.h"

#include <QPointer>

// What the editors of path expressions have in common. To be included behind CORVEL_DIAGNOSTICS, as part of an editor's
// own file.

/** Lets @p editor, whose contents follow @p signal of @p expression, follow that of @p other; either may be null. */
template <typename Editor>
static inline void followInstead(Editor* editor, PathExpression** expression, PathExpression* other, const char* signal,
                                 Borrowed::LetGo letGo)
{
    CORVEL_DEBUG_HOOK();
    if (*expression) {
        QObject::disconnect(*expression, nullptr, editor, nullptr);
        QObject::disconnect(editor, nullptr, *expression, nullptr);
        Borrowed::leave(*expression, editor);
    }
    *expression = other;
    Borrowed::watch(other, editor, letGo);
    if (other)
        QObject::connect(other, signal, editor, SLOT(updateContents()));
}

/** Forgets @p expression if it is @p object, which goes. */
static inline void forgetIfSame(PathExpression** expression, const QObject* object)
{
    CORVEL_DEBUG_HOOK();
    if (*expression == object)
        *expression = nullptr;
}

/** Ends an edit of @p expression with @p text, or with the wildcard when that is null. */
static inline void commit(PathExpression* expression, PathExpression::Parts parts, const QString* text)
{
    CORVEL_DEBUG_HOOK();
    // Somebody who listens may give the editor another expression, and delete this one.
    const QPointer<PathExpression> edited(expression);
    if (text)
        expression->setString(*text, parts);
    else
        expression->setWildCard(parts);
    if (edited)
        edited->completeEditing();
}

/** Whether @p optionsSource, which may be null, offers anything. */
static inline bool hasMatches(PathExpression* optionsSource, PathExpression::Parts parts)
{
    CORVEL_DEBUG_HOOK();
    return optionsSource && !optionsSource->getMatchingExpressionsStringList(parts).isEmpty();
}

namespace
{

/**
 * An update of an editor's entries that is under way.
 *
 * Every entry that goes may be answered by a call that updates them again. What that one made is newer; the one before
 * it must leave everything as it is.
 */
class EntriesUpdate
{
public:
    explicit EntriesUpdate(const QObject* editor)
        : m_editor(editor)
        , m_superseded(false)
        , m_outer(s_innermost)
    {
        CORVEL_DEBUG_HOOK();
        for (EntriesUpdate* update = m_outer; update; update = update->m_outer) {
            if (update->m_editor == editor)
                update->m_superseded = true;
        }
        s_innermost = this;
    }
    ~EntriesUpdate()
    {
        CORVEL_DEBUG_HOOK();
        s_innermost = m_outer;
    }

    bool isSuperseded() const
    {
        CORVEL_DEBUG_HOOK();
        return m_superseded;
    }

private:
    Q_DISABLE_COPY(EntriesUpdate)

    const QObject* m_editor;
    bool m_superseded;
    EntriesUpdate* m_outer;

    static EntriesUpdate* s_innermost;
};

EntriesUpdate* EntriesUpdate::s_innermost = nullptr;

} // namespace

#endif

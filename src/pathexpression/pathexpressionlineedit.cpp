#include "pathexpressionlineedit.h"

#include "diagnostics.h"

#include <QEvent>

CORVEL_DIAGNOSTICS("PathExpressionLineEdit");
#include "pathexpressionediting.h"

PathExpressionLineEdit::PathExpressionLineEdit(PathExpression* pathExpression, PathExpression::Parts parts,
                                               QWidget* parent)
    : QLineEdit(parent)
    , m_pathExpression(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("PathExpressionLineEdit");
    setPathExpression(pathExpression);
    setParts(parts);
    connect(this, SIGNAL(textEdited(const QString&)), this, SLOT(processTextEdited()));
}

PathExpressionLineEdit::~PathExpressionLineEdit()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("PathExpressionLineEdit");
    Borrowed::leaveAll(this);
}

void PathExpressionLineEdit::letGo(void* widget, const QObject*, bool show)
{
    CORVEL_DEBUG_HOOK();
    PathExpressionLineEdit* const self = static_cast<PathExpressionLineEdit*>(widget);
    if (!show)
        self->m_pathExpression = nullptr;
    else
        self->updateText();
}

void PathExpressionLineEdit::setPathExpression(PathExpression* pathExpression)
{
    CORVEL_DEBUG_HOOK();
    if (m_pathExpression) {
        disconnect(m_pathExpression, nullptr, this, nullptr);
        disconnect(this, nullptr, m_pathExpression, nullptr);
    }
    Borrowed::leave(m_pathExpression, this);
    m_pathExpression = pathExpression;
    Borrowed::watch(m_pathExpression, this, &letGo);
    if (m_pathExpression) {
        connect(m_pathExpression, SIGNAL(partsChanged(PathExpression::Parts)), this,
                SLOT(processPartsChanged(PathExpression::Parts)));
        // Deliberately connected anew for each expression and never disconnected: the connections add up.
        connect(this, SIGNAL(returnPressed()), this, SLOT(processReturnPressed()));
    }
    updateText();
}

PathExpression* PathExpressionLineEdit::getPathExpression()
{
    CORVEL_DEBUG_HOOK();
    return m_pathExpression;
}

void PathExpressionLineEdit::setParts(PathExpression::Parts parts)
{
    CORVEL_DEBUG_HOOK();
    m_parts = parts;
    updateText();
}

PathExpression::Parts PathExpressionLineEdit::getParts() const
{
    CORVEL_DEBUG_HOOK();
    return m_parts;
}

void PathExpressionLineEdit::processPartsChanged(PathExpression::Parts parts)
{
    CORVEL_DEBUG_HOOK();
    if ((parts & getParts()) && !hasFocus())
        updateText();
}

void PathExpressionLineEdit::processTextEdited()
{
    CORVEL_DEBUG_HOOK();
    if (m_pathExpression)
        m_pathExpression->setStringPrefix(text(), m_parts);
}

void PathExpressionLineEdit::processReturnPressed()
{
    CORVEL_DEBUG_HOOK();
    const QString typed = text();
    if (m_pathExpression)
        commit(m_pathExpression, m_parts, &typed);
}

void PathExpressionLineEdit::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QLineEdit::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !m_pathExpression)
        updateText();
}

void PathExpressionLineEdit::updateText()
{
    CORVEL_DEBUG_HOOK();
    if (!m_pathExpression)
        setText(tr("No path expression set!"));
    else
        setText(m_pathExpression->getString(m_parts));
}

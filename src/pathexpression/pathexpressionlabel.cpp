#include "pathexpressionlabel.h"

#include "borrowed.h"
#include "diagnostics.h"

#include <QEvent>

CORVEL_DIAGNOSTICS("PathExpressionLabel");

PathExpressionLabel::PathExpressionLabel(PathExpression* pathExpression, PathExpression::Parts parts, QWidget* parent)
    : QLabel(parent)
    , m_pathExpression(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("PathExpressionLabel");
    setPathExpression(pathExpression);
    setParts(parts);
}

PathExpressionLabel::~PathExpressionLabel()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("PathExpressionLabel");
    Borrowed::leaveAll(this);
}

void PathExpressionLabel::letGo(void* widget, const QObject*, bool show)
{
    CORVEL_DEBUG_HOOK();
    PathExpressionLabel* const self = static_cast<PathExpressionLabel*>(widget);
    if (!show)
        self->m_pathExpression = nullptr;
    else
        self->updateLabel();
}

void PathExpressionLabel::setPathExpression(PathExpression* pathExpression)
{
    CORVEL_DEBUG_HOOK();
    if (m_pathExpression)
        disconnect(m_pathExpression, nullptr, this, nullptr);
    Borrowed::leave(m_pathExpression, this);
    m_pathExpression = pathExpression;
    Borrowed::watch(m_pathExpression, this, &letGo);
    if (m_pathExpression)
        connect(m_pathExpression, SIGNAL(partsChanged(PathExpression::Parts)), this,
                SLOT(processPartsChanged(PathExpression::Parts)));
    updateLabel();
}

PathExpression* PathExpressionLabel::getPathExpression()
{
    CORVEL_DEBUG_HOOK();
    return m_pathExpression;
}

void PathExpressionLabel::setParts(PathExpression::Parts parts)
{
    CORVEL_DEBUG_HOOK();
    m_parts = parts;
    updateLabel();
}

PathExpression::Parts PathExpressionLabel::getParts() const
{
    CORVEL_DEBUG_HOOK();
    return m_parts;
}

void PathExpressionLabel::processPartsChanged(PathExpression::Parts parts)
{
    CORVEL_DEBUG_HOOK();
    if (parts & getParts())
        updateLabel();
}

void PathExpressionLabel::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QLabel::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !m_pathExpression)
        updateLabel();
}

void PathExpressionLabel::updateLabel()
{
    CORVEL_DEBUG_HOOK();
    if (!m_pathExpression)
        setText(tr("No path expression set!"));
    else
        setText(m_pathExpression->getString(m_parts));
}

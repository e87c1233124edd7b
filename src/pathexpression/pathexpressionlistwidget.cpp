#include "pathexpressionlistwidget.h"

#include "diagnostics.h"
#include "valuecells.h"

#include <QEvent>

CORVEL_DIAGNOSTICS("PathExpressionListWidget");
#include "pathexpressionediting.h"

PathExpressionListWidget::PathExpressionListWidget(PathExpression* pathExpression, PathExpression::Parts parts,
                                                   PathExpression* optionsSource, QWidget* parent)
    : QListWidget(parent)
    , m_pathExpression(nullptr)
    , m_optionsSourcePathExpression(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("PathExpressionListWidget");
    m_settingFromCurrent = false;
    new ValueCells(this);
    setParts(parts);
    setPathExpression(pathExpression);
    if (!optionsSource)
        optionsSource = new PathExpression(this);
    setOptionsSourcePathExpression(optionsSource);
    connect(this, SIGNAL(itemClicked(QListWidgetItem*)), this, SLOT(setPathExpressionFromCurrent()));
    connect(this, SIGNAL(currentItemChanged(QListWidgetItem*, QListWidgetItem*)), this,
            SLOT(setPathExpressionFromCurrent()));
}

PathExpressionListWidget::~PathExpressionListWidget()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("PathExpressionListWidget");
    Borrowed::leaveAll(this);
}

void PathExpressionListWidget::letGo(void* widget, const QObject* object, bool show)
{
    CORVEL_DEBUG_HOOK();
    PathExpressionListWidget* const self = static_cast<PathExpressionListWidget*>(widget);
    forgetIfSame(&self->m_pathExpression, object);
    forgetIfSame(&self->m_optionsSourcePathExpression, object);
    if (show)
        self->updateContents();
}

void PathExpressionListWidget::setPathExpression(PathExpression* pathExpression)
{
    CORVEL_DEBUG_HOOK();
    followInstead(this, &m_pathExpression, pathExpression, SIGNAL(expressionChanged(const QString&)), &letGo);
    updateContents();
}

PathExpression* PathExpressionListWidget::getPathExpression()
{
    CORVEL_DEBUG_HOOK();
    return m_pathExpression;
}

void PathExpressionListWidget::setOptionsSourcePathExpression(PathExpression* optionsSource)
{
    CORVEL_DEBUG_HOOK();
    followInstead(this, &m_optionsSourcePathExpression, optionsSource, SIGNAL(matchesMayHaveChanged()), &letGo);
    updateContents();
}

PathExpression* PathExpressionListWidget::getOptionsSourcePathExpression()
{
    CORVEL_DEBUG_HOOK();
    return m_optionsSourcePathExpression;
}

void PathExpressionListWidget::setParts(PathExpression::Parts parts)
{
    CORVEL_DEBUG_HOOK();
    m_parts = parts;
    updateContents();
}

PathExpression::Parts PathExpressionListWidget::getParts() const
{
    CORVEL_DEBUG_HOOK();
    return m_parts;
}

void PathExpressionListWidget::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QListWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange && !hasMatches(m_optionsSourcePathExpression, m_parts))
        updateContents();
}

void PathExpressionListWidget::updateContents()
{
    CORVEL_DEBUG_HOOK();
    if (m_settingFromCurrent)
        return;
    QString current;
    if (m_pathExpression)
        current = m_pathExpression->getString(m_parts);
    const EntriesUpdate update(this);
    setCurrentItem(nullptr);
    QStringList options;
    if (!m_optionsSourcePathExpression) {
        options.append(tr("Null options source path expression set!"));
    } else {
        options = m_optionsSourcePathExpression->getMatchingExpressionsStringList(m_parts);
        if (options.isEmpty())
            options.append(tr("No options"));
    }
    while (count() > 0 && !update.isSuperseded())
        delete takeItem(0);
    if (update.isSuperseded())
        return;
    insertItems(count(), options);
    if (!m_pathExpression || update.isSuperseded())
        return;
    // Writes the same text back into the expression, which completes an edit of it.
    const int row = options.indexOf(current);
    if (row >= 0)
        setCurrentRow(row);
}

void PathExpressionListWidget::setPathExpressionFromCurrent()
{
    CORVEL_DEBUG_HOOK();
    if (!m_pathExpression || !currentItem())
        return;
    const QString text = currentItem()->text();
    const bool wasSetting = m_settingFromCurrent;
    m_settingFromCurrent = true;
    commit(m_pathExpression, m_parts, &text);
    m_settingFromCurrent = wasSetting;
}

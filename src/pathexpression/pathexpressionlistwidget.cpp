#include "pathexpressionlistwidget.h"

#include "diagnostics.h"

CORVEL_DIAGNOSTICS("PathExpressionListWidget");

PathExpressionListWidget::PathExpressionListWidget(PathExpression* pathExpression, PathExpression::Parts parts,
                                                   PathExpression* optionsSource, QWidget* parent)
    : QListWidget(parent)
    , m_pathExpression(nullptr)
    , m_optionsSourcePathExpression(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("PathExpressionListWidget");
    m_settingFromCurrent = false;
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
}

void PathExpressionListWidget::setPathExpression(PathExpression* pathExpression)
{
    CORVEL_DEBUG_HOOK();
    if (m_pathExpression) {
        disconnect(m_pathExpression, nullptr, this, nullptr);
        disconnect(this, nullptr, m_pathExpression, nullptr);
    }
    m_pathExpression = pathExpression;
    if (m_pathExpression)
        connect(m_pathExpression, SIGNAL(expressionChanged(const QString&)), this, SLOT(updateContents()));
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
    if (m_optionsSourcePathExpression) {
        disconnect(m_optionsSourcePathExpression, nullptr, this, nullptr);
        disconnect(this, nullptr, m_optionsSourcePathExpression, nullptr);
    }
    m_optionsSourcePathExpression = optionsSource;
    if (m_optionsSourcePathExpression)
        connect(m_optionsSourcePathExpression, SIGNAL(matchesMayHaveChanged()), this, SLOT(updateContents()));
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

void PathExpressionListWidget::updateContents()
{
    CORVEL_DEBUG_HOOK();
    if (m_settingFromCurrent)
        return;
    QString current;
    if (m_pathExpression)
        current = m_pathExpression->getString(m_parts);
    setCurrentItem(nullptr);
    QStringList options;
    if (!m_optionsSourcePathExpression) {
        options.append(tr("Null options source path expression set!"));
    } else {
        options = m_optionsSourcePathExpression->getMatchingExpressionsStringList(m_parts);
        if (options.isEmpty())
            options.append(tr("No options"));
    }
    while (count() > 0)
        delete takeItem(0);
    insertItems(count(), options);
    if (!m_pathExpression)
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
    m_settingFromCurrent = true;
    m_pathExpression->setString(text, m_parts);
    m_pathExpression->completeEditing();
    m_settingFromCurrent = false;
}

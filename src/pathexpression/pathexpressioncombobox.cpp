#include "pathexpressioncombobox.h"

#include "diagnostics.h"

CORVEL_DIAGNOSTICS("PathExpressionComboBox");

PathExpressionComboBox::PathExpressionComboBox(PathExpression* pathExpression, PathExpression::Parts parts,
                                               PathExpression* optionsSource, QWidget* parent)
    : QComboBox(parent)
    , m_pathExpression(nullptr)
    , m_optionsSourcePathExpression(nullptr)
{
    CORVEL_DEBUG_HOOK();
    CORVEL_ALLOCATED("PathExpressionComboBox");
    m_allOptionEnabled = false;
    m_updatingContents = false;
    m_settingFromCurrent = false;
    setParts(parts);
    setPathExpression(pathExpression);
    if (!optionsSource)
        optionsSource = new PathExpression(this);
    setOptionsSourcePathExpression(optionsSource);
    connect(this, SIGNAL(currentIndexChanged(int)), this, SLOT(setPathExpressionFromCurrent()));
    setAllOptionEnabled(true, QLatin1String("All")); // deliberately not translated
}

PathExpressionComboBox::~PathExpressionComboBox()
{
    CORVEL_DEBUG_HOOK();
    CORVEL_DEALLOCATED("PathExpressionComboBox");
}

void PathExpressionComboBox::setAllOptionEnabled(bool enabled, QString text)
{
    CORVEL_DEBUG_HOOK();
    m_allOptionEnabled = enabled;
    m_allOptionText = text;
    updateContents();
}

bool PathExpressionComboBox::getAllOptionEnabled() const
{
    CORVEL_DEBUG_HOOK();
    return m_allOptionEnabled;
}

void PathExpressionComboBox::setPathExpression(PathExpression* pathExpression)
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

PathExpression* PathExpressionComboBox::getPathExpression()
{
    CORVEL_DEBUG_HOOK();
    return m_pathExpression;
}

void PathExpressionComboBox::setOptionsSourcePathExpression(PathExpression* optionsSource)
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

PathExpression* PathExpressionComboBox::getOptionsSourcePathExpression()
{
    CORVEL_DEBUG_HOOK();
    return m_optionsSourcePathExpression;
}

void PathExpressionComboBox::setParts(PathExpression::Parts parts)
{
    CORVEL_DEBUG_HOOK();
    m_parts = parts;
    updateContents();
}

PathExpression::Parts PathExpressionComboBox::getParts() const
{
    CORVEL_DEBUG_HOOK();
    return m_parts;
}

void PathExpressionComboBox::updateContents()
{
    CORVEL_DEBUG_HOOK();
    if (m_settingFromCurrent)
        return;
    m_updatingContents = true;
    while (count() > 0)
        removeItem(0);
    QStringList options;
    int index = 0;
    QString current;
    if (m_pathExpression)
        current = m_pathExpression->getString(m_parts);
    if (!m_pathExpression) {
        options.append(tr("Null path expression set!"));
    } else if (!m_optionsSourcePathExpression) {
        options.append(tr("Null options source path expression set!"));
    } else {
        options = m_optionsSourcePathExpression->getMatchingExpressionsStringList(m_parts);
        if (options.isEmpty()) {
            options.append(tr("No options"));
        } else if (m_pathExpression->isWildCard(m_parts)) {
            options.prepend(m_allOptionText); // also when it is not offered: what is chosen is shown
        } else {
            if (m_allOptionEnabled)
                options.prepend(m_allOptionText);
            index = options.indexOf(current);
            if (index < 0) {
                options.prepend(current);
                index = 0;
            }
        }
    }
    insertItems(count(), options);
    setCurrentIndex(index);
    m_updatingContents = false;
}

void PathExpressionComboBox::setPathExpressionFromCurrent()
{
    CORVEL_DEBUG_HOOK();
    const QString text = currentText();
    if (!m_pathExpression || m_updatingContents)
        return;
    m_settingFromCurrent = true;
    // Compared even while the wildcard is not offered, so that an option of the same text means it too; deliberate.
    if (text == m_allOptionText)
        m_pathExpression->setWildCard(m_parts);
    else
        m_pathExpression->setString(text, m_parts);
    m_pathExpression->completeEditing();
    m_settingFromCurrent = false;
}

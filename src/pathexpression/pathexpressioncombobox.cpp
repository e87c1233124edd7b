#include "pathexpressioncombobox.h"

#include "diagnostics.h"

#include <QEvent>

CORVEL_DIAGNOSTICS("PathExpressionComboBox");
#include "pathexpressionediting.h"

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
    Borrowed::leaveAll(this);
}

void PathExpressionComboBox::letGo(void* widget, const QObject* object, bool show)
{
    CORVEL_DEBUG_HOOK();
    PathExpressionComboBox* const self = static_cast<PathExpressionComboBox*>(widget);
    forgetIfSame(&self->m_pathExpression, object);
    forgetIfSame(&self->m_optionsSourcePathExpression, object);
    if (show)
        self->updateContents();
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
    followInstead(this, &m_pathExpression, pathExpression, SIGNAL(expressionChanged(const QString&)), &letGo);
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
    followInstead(this, &m_optionsSourcePathExpression, optionsSource, SIGNAL(matchesMayHaveChanged()), &letGo);
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

void PathExpressionComboBox::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QComboBox::changeEvent(event);
    if (event->type() == QEvent::LanguageChange &&
        (!m_pathExpression || !hasMatches(m_optionsSourcePathExpression, m_parts)))
        updateContents();
}

void PathExpressionComboBox::updateContents()
{
    CORVEL_DEBUG_HOOK();
    if (m_settingFromCurrent)
        return;
    const EntriesUpdate update(this);
    m_updatingContents = true;
    while (count() > 0 && !update.isSuperseded())
        removeItem(0);
    if (update.isSuperseded())
        return;
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
    if (update.isSuperseded())
        return;
    setCurrentIndex(index);
    if (!update.isSuperseded())
        m_updatingContents = false;
}

void PathExpressionComboBox::setPathExpressionFromCurrent()
{
    CORVEL_DEBUG_HOOK();
    const QString text = currentText();
    if (!m_pathExpression || m_updatingContents)
        return;
    const bool wasSetting = m_settingFromCurrent;
    m_settingFromCurrent = true;
    // Compared even while the wildcard is not offered, so that an option of the same text means it too; deliberate.
    commit(m_pathExpression, m_parts, text == m_allOptionText ? nullptr : &text);
    m_settingFromCurrent = wasSetting;
}

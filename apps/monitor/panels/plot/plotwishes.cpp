#include "plotwishes.h"

#include "fieldpath.h"
#include "formatregistry.h"
#include "plotpanel.h"

#include <QSettings>

static const char PlottedKey[] = "plotted";
// More in a settings file than can be plotted is a fault of the file.
static const int MostWaiting = 100;

PlotWishes::PlotWishes(PlotPanel* panel, QObject* parent)
    : QObject(parent)
    , m_panel(panel)
{
    connect(FormatRegistry::getInstance(), &FormatRegistry::formatsChanged, this, &PlotWishes::resolve);
    connect(panel, &PlotPanel::cleared, this, [this]() { m_waiting.clear(); });
}

bool PlotWishes::add(const QString& expression)
{
    if (expression.isEmpty() || m_waiting.contains(expression) || m_waiting.size() >= MostWaiting)
        return false;
    m_waiting.append(expression);
    resolve();
    return !m_waiting.contains(expression);
}

void PlotWishes::resolve()
{
    const QStringList waiting = m_waiting;
    for (const QString& expression : waiting) {
        const FieldPath path = FieldPath::fromExpression(expression.section(QLatin1Char('\t'), 0, 0));
        const QString sender = expression.section(QLatin1Char('\t'), 1);
        if (!path.getField() || path.isHidden())
            continue;
        m_waiting.removeOne(expression);
        m_panel->addField(path, {sender, !sender.isEmpty()});
    }
}

void PlotWishes::followConfidentiality()
{
    const QStringList hidden = m_panel->removeHidden();
    for (const QString& expression : hidden)
        m_waiting.append(expression);
    resolve();
}

void PlotWishes::saveSettings(QSettings& settings) const
{
    settings.setValue(QLatin1String(PlottedKey), m_panel->getExpressions() + m_waiting);
}

void PlotWishes::restoreSettings(QSettings& settings)
{
    const QStringList plotted = settings.value(QLatin1String(PlottedKey)).toStringList();
    for (const QString& expression : plotted)
        add(expression);
}

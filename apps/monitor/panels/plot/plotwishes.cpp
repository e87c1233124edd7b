#include "plotwishes.h"

#include "fieldpath.h"
#include "formatregistry.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "samefield.h"

#include <QSettings>

static const char PlottedKey[] = "plotted";
static const char PlacesKey[] = "places"; // of these, in the same order
static const char FunctionsKey[] = "functions";
// More in a settings file than can be plotted is a fault of the file.
static const int MostWaiting = 100;

PlotWishes::PlotWishes(PlotPanel* panel, QObject* parent)
    : QObject(parent)
    , m_panel(panel)
{
    connect(FormatRegistry::getInstance(), &FormatRegistry::formatsChanged, this, &PlotWishes::resolve);
    connect(panel, &PlotPanel::cleared, this, [this]() { m_waiting.clear(); });
}

bool PlotWishes::add(const QString& wish, int place, PlotFunction::Kind function)
{
    const PlotExpression computed = PlotExpression::ofPaths(wish);
    const QString expression = computed.isNull() ? wish : computed.toWish();
    if (expression.isEmpty() || m_waiting.contains(expression) || m_waiting.size() >= MostWaiting)
        return false;
    m_waiting.append(expression);
    m_manners.insert(expression, {place, function});
    resolve();
    return !m_waiting.contains(expression);
}

void PlotWishes::resolve()
{
    const QStringList waiting = m_waiting;
    for (const QString& expression : waiting) {
        const PlotExpression computed = PlotExpression::fromWish(expression);
        if (!computed.isNull()) {
            const Manner manner = m_manners.value(expression);
            if (m_panel->addComputed(computed, manner.place, manner.function)) {
                m_waiting.removeOne(expression);
                m_manners.remove(expression);
            }
            continue;
        }
        const FieldPath path = SameField::fromExpression(expression.section(QLatin1Char('\t'), 0, 0));
        const QString sender = expression.section(QLatin1Char('\t'), 1);
        if (!path.getField() || path.isHidden())
            continue;
        m_waiting.removeOne(expression);
        const Manner manner = m_manners.take(expression);
        m_panel->addField(path, {sender, !sender.isEmpty()}, manner.place, manner.function);
    }
}

void PlotWishes::followConfidentiality()
{
    QHash<QString, Manner> manners;
    const QStringList plotted = m_panel->getExpressions();
    for (const QString& expression : plotted)
        manners.insert(expression, {m_panel->getPlace(expression), m_panel->findSeries(expression)->getFunction()});
    const QStringList hidden = m_panel->removeHidden();
    for (const QString& expression : hidden) {
        m_waiting.append(expression);
        m_manners.insert(expression, manners.value(expression));
    }
    resolve();
}

void PlotWishes::saveSettings(QSettings& settings) const
{
    const QStringList plotted = m_panel->getExpressions();
    QStringList places;
    QStringList functions;
    for (const QString& expression : plotted) {
        places.append(QString::number(m_panel->getPlace(expression)));
        functions.append(QString::number(m_panel->findSeries(expression)->getFunction()));
    }
    for (const QString& expression : m_waiting) {
        places.append(QString::number(qMax(0, m_manners.value(expression).place)));
        functions.append(QString::number(m_manners.value(expression).function));
    }
    settings.setValue(QLatin1String(PlottedKey), plotted + m_waiting);
    settings.setValue(QLatin1String(PlacesKey), places);
    settings.setValue(QLatin1String(FunctionsKey), functions);
}

void PlotWishes::restoreSettings(QSettings& settings)
{
    const QStringList plotted = settings.value(QLatin1String(PlottedKey)).toStringList();
    const QStringList places = settings.value(QLatin1String(PlacesKey)).toStringList();
    const QStringList functions = settings.value(QLatin1String(FunctionsKey)).toStringList();
    for (int i = 0; i < int(plotted.size()); ++i) {
        const int function = qBound(0, functions.value(i).toInt(), int(PlotFunction::KindCount) - 1);
        add(plotted.at(i), places.value(i).toInt(), PlotFunction::Kind(function));
    }
}

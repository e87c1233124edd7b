#include "plotwishes.h"

#include "fieldinfo.h"
#include "formatregistry.h"
#include "pathexpression.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "samefield.h"

#include <QRegularExpression>
#include <QSettings>

static const char PlottedKey[] = "plotted";
static const char PlacesKey[] = "places"; // of these, in the same order
static const char FunctionsKey[] = "functions";
// More in a settings file than can be plotted is a fault of the file.
static const int MostWaiting = 100;
static const int MostTold = 3;

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
        const QVector<FieldPath> paths = fieldsOf(expression.section(QLatin1Char('\t'), 0, 0));
        const QString sender = expression.section(QLatin1Char('\t'), 1);
        if (paths.isEmpty())
            continue;
        m_waiting.removeOne(expression);
        const Manner manner = m_manners.take(expression);
        for (const FieldPath& path : paths)
            m_panel->addField(path, {sender, !sender.isEmpty()}, manner.place, manner.function);
    }
}

static bool isNumeric(const FieldInfo* field)
{
    const int code = field->getType().getTypeCode();
    return code == FieldType::SignedType || code == FieldType::UnsignedType || code == FieldType::FloatType;
}

/** The fields that can be plotted now: the one that is named, or of several those that are numbers. */
QVector<FieldPath> PlotWishes::fieldsOf(const QString& text)
{
    const FieldPath only = SameField::fromExpression(text);
    if (only.getField())
        return only.isHidden() ? QVector<FieldPath>() : QVector<FieldPath>{only};
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(text);
    const QVector<FieldPath> matches = expression.getMatches();
    QVector<FieldPath> fields;
    for (const FieldPath& match : matches)
        if (match.getField() && !match.isWholeRepeatedField() && !match.isHidden() && isNumeric(match.getField()) &&
            std::none_of(fields.constBegin(), fields.constEnd(),
                         [&match](const FieldPath& other) { return SameField::areSame(other, match); }))
            fields.append(match);
    return fields;
}

QString PlotWishes::ask(const QString& wish)
{
    const QString fault = faultOf(wish);
    if (fault.isEmpty())
        add(wish);
    return fault;
}

QString PlotWishes::faultOf(const QString& wish)
{
    const auto told = [](const QString& text, int position) {
        return position < 0 ? text : tr("character %1: %2").arg(position + 1).arg(text);
    };
    const QString expected =
        tr("Expected is the path of a field, such as */ATTITUDE/roll, or an expression of paths in "
           "quotation marks, such as sqrt(\"*/A/x\"^2 + \"*/A/y\"^2).");
    static const QRegularExpression quoted(QStringLiteral("\"([^\"]*)\""));
    auto paths = quoted.globalMatch(wish);
    const bool isExpression = paths.hasNext();
    Formula::Fault fault;
    if (isExpression && PlotExpression::ofPaths(wish, &fault).isNull())
        return told(fault.text, fault.position) + QLatin1String(". ") + expected;
    QVector<QPair<QString, int>> parts; // and where they begin
    while (paths.hasNext()) {
        const QRegularExpressionMatch path = paths.next();
        parts.append({path.captured(1), int(path.capturedStart(1))});
    }
    if (!isExpression)
        parts.append({wish.section(QLatin1Char('\t'), 0, 0), 0});
    for (const auto& part : std::as_const(parts)) {
        PathExpression path;
        path.setString(part.first);
        if (!path.errorString().isEmpty()) // has the place in the path itself
            return (isExpression ? QLatin1Char('"') + part.first + QLatin1String("\": ") : QString()) +
                   path.errorString() + QLatin1String(". ") + expected;
        if (path.getString(PathExpression::FieldPart).isEmpty())
            return told(tr("no field is named; a path is a format, a type and a field"),
                        part.second + int(part.first.size())) +
                   QLatin1String(". ") + expected;
    }
    return QString();
}

QString PlotWishes::describe(const QStringList& wishes)
{
    QStringList texts;
    for (const QString& wish : wishes) {
        const PlotExpression computed = PlotExpression::fromWish(wish);
        QStringList paths;
        for (const PlotExpression::Operand& operand : computed.operands)
            paths.append(operand.path);
        texts.append(computed.isNull() ? wish.section(QLatin1Char('\t'), 0, 0) : computed.toText(paths));
    }
    if (texts.size() > MostTold)
        texts = texts.mid(0, MostTold) << QString(QChar(0x2026));
    return texts.isEmpty() ? QString() : tr("Not there so far: %1").arg(texts.join(QLatin1String(", ")));
}

QString PlotWishes::getHint() const
{
    const QString hint = tr("Drag a number from the message tree here, or choose Plot in its context menu (Ctrl+L).");
    return m_waiting.isEmpty() ? hint : hint + QLatin1String("\n\n") + describe(m_waiting);
}

QString PlotWishes::describeAsked() const
{
    QStringList asked;
    for (const QString& wish : m_waiting)
        if (m_manners.value(wish).place < 0)
            asked.append(wish);
    return describe(asked);
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

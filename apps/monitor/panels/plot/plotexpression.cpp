#include "plotexpression.h"

#include "computedseries.h"
#include "fieldinfo.h"
#include "samefield.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QVector>

#include <cmath>
#include <functional>

static const char Mark[] = "=";
static const double DegreesInRadian = 57.295779513082320877;
static const int MostOperands = 26; // as many letters as there are
// What a name in a formula is; numbers such as 1e5 are none.
static const char NamePattern[] = "(?<![\\w.])[A-Za-z_][\\w.]*";

/** Puts what @p change makes of them in the place of names, but for functions and constants. */
static QString withNames(const QString& formula, const std::function<QString(const QString&)>& change)
{
    static const QRegularExpression name{QLatin1String(NamePattern)};
    QString text;
    int done = 0;
    for (auto names = name.globalMatch(formula); names.hasNext();) {
        const QRegularExpressionMatch one = names.next();
        text += formula.mid(done, int(one.capturedStart()) - done) + change(one.captured());
        done = int(one.capturedEnd());
    }
    return text + formula.mid(done);
}

static bool isLetter(const QString& name)
{
    return name.size() == 1 && name.at(0) >= QLatin1Char('a') && name.at(0) <= QLatin1Char('z');
}

static int numberOf(const QString& letter)
{
    return letter.at(0).unicode() - 'a';
}

/** The letter of an operand, which is added where it is not there yet; empty where there are too many. */
QString PlotExpression::letterFor(const Operand& operand)
{
    int number = int(operands.indexOf(operand));
    if (number < 0 && operands.size() < MostOperands) {
        number = int(operands.size());
        operands.append(operand);
    }
    return number < 0 ? QString() : letterOf(number);
}

bool PlotExpression::isTold(const PlotSeries& series, const Lines& all)
{
    int same = 0;
    for (const auto& other : all)
        same += other->getPath() == series.getPath() ? 1 : 0;
    return !series.getPath().isNull() && (same > 1 || series.getOrigin().isTold);
}

PlotExpression PlotExpression::of(const PlotSeries& series, const Lines& all)
{
    if (const auto* const computed = dynamic_cast<const ComputedSeries*>(&series))
        return computed->getExpression();
    PlotExpression expression;
    const QString sender = isTold(series, all) ? series.getSender() : QString();
    expression.operands.append({series.getPath().getExpression(), sender, series.getFunction()});
    expression.formula = letterOf(0);
    return expression;
}

/** The formula of @p inner in the letters of this, which gets its operands. */
static QString adopt(const PlotExpression& inner, const std::function<QString(const PlotExpression::Operand&)>& letter)
{
    const QString text = withNames(inner.formula, [&](const QString& name) {
        return isLetter(name) ? letter(inner.operands.at(numberOf(name))) : name;
    });
    return isLetter(inner.formula) ? text : QLatin1Char('(') + text + QLatin1Char(')');
}

PlotExpression PlotExpression::differenceOf(const PlotExpression& first, const PlotExpression& second)
{
    PlotExpression difference;
    const auto letter = [&](const Operand& operand) { return difference.letterFor(operand); };
    const QString left = adopt(first, letter);
    difference.formula = left + QLatin1String(" - ") + adopt(second, letter);
    return difference;
}

namespace
{

/** A formula as it is typed, with names in the place of the paths in quotation marks. */
struct TypedFormula
{
    explicit TypedFormula(const QString& text);

    /** Reads it; false when it is none, of which @p fault is told. */
    bool parse(Formula* formula, Formula::Fault* fault) const;
    /** The path that a name stands for, which is one of those. */
    const QString& getPath(const QString& name) const { return paths.at(name.mid(1).toInt()); }
    /** Where a name stands that @p formula takes, that is no path, and that @p isKnown does not know; it is put into
     * @p name. -1 when there is none. */
    int findUnknown(const Formula& formula, const std::function<bool(const QString&)>& isKnown, QString* name) const;

    QString plain;   // with names as long as the paths, so that places stay the same
    QString compact; // without blanks behind the names
    QStringList paths;
    QVector<int> places; // of the paths
};

TypedFormula::TypedFormula(const QString& text)
    : plain(text)
{
    static const QRegularExpression quoted(QStringLiteral("\"([^\"]*)\""));
    int done = 0;
    for (auto all = quoted.globalMatch(text); all.hasNext();) {
        const QRegularExpressionMatch one = all.next();
        const QString name = QStringLiteral("Q%1").arg(paths.size());
        plain.replace(int(one.capturedStart()), int(one.capturedLength()),
                      name.leftJustified(int(one.capturedLength())));
        compact += text.mid(done, int(one.capturedStart()) - done) + name;
        done = int(one.capturedEnd());
        paths.append(one.captured(1));
        places.append(int(one.capturedStart()));
    }
    compact += text.mid(done);
}

bool TypedFormula::parse(Formula* formula, Formula::Fault* fault) const
{
    const int open = int(plain.indexOf(QLatin1Char('"')));
    if (open < 0)
        return formula->parse(plain, fault);
    fault->text = QCoreApplication::translate("PlotExpression", "the quotation mark is not closed");
    fault->position = open;
    return false;
}

int TypedFormula::findUnknown(const Formula& formula, const std::function<bool(const QString&)>& isKnown,
                              QString* name) const
{
    static const QRegularExpression names{QLatin1String(NamePattern)};
    for (auto all = names.globalMatch(plain); all.hasNext();) {
        const QRegularExpressionMatch one = all.next();
        *name = one.captured();
        if (formula.getNames().contains(*name) && !places.contains(int(one.capturedStart())) && !isKnown(*name))
            return int(one.capturedStart());
    }
    return -1;
}

} // namespace

PlotExpression PlotExpression::parse(const QString& text, const Lines& lines, Formula::Fault* fault)
{
    const auto isWrong = [fault](const QString& reason, int position) {
        fault->text = reason;
        fault->position = position;
        return PlotExpression();
    };
    const TypedFormula typed(text);
    for (int i = 0; i < int(typed.paths.size()); ++i) {
        const QString quoted = QLatin1Char('"') + typed.paths.at(i) + QLatin1Char('"');
        const FieldPath path = SameField::fromExpression(typed.paths.at(i));
        if (!path.getField() || path.isWholeRepeatedField())
            return isWrong(
                QCoreApplication::translate("PlotExpression", "no field that is known is called %1").arg(quoted),
                typed.places.at(i));
        if (path.isHidden())
            return isWrong(QCoreApplication::translate("PlotExpression", "%1 is confidential").arg(quoted),
                           typed.places.at(i));
    }
    Formula formula;
    if (!typed.parse(&formula, fault))
        return PlotExpression();
    PlotExpression expression;
    const auto isLine = [&lines](const QString& name) { return isLetter(name) && numberOf(name) < int(lines.size()); };
    QString unknown;
    const int place = typed.findUnknown(formula, isLine, &unknown);
    if (place >= 0)
        return isWrong(QCoreApplication::translate("PlotExpression", "there is no line \"%1\"").arg(unknown), place);
    if (formula.getNames().isEmpty())
        return isWrong(QCoreApplication::translate("PlotExpression", "it names no line and no field"), -1);
    const auto letter = [&](const Operand& operand) { return expression.letterFor(operand); };
    for (const QString& name : formula.getNames()) {
        const PlotSeries* const line = isLetter(name) ? lines[std::size_t(numberOf(name))].get() : nullptr;
        if (dynamic_cast<const ComputedSeries*>(line) && line->getFunction() != PlotFunction::Values)
            return isWrong(QCoreApplication::translate(
                               "PlotExpression", "\"%1\" is made of an expression that is drawn as something else")
                               .arg(name),
                           -1);
    }
    expression.formula = withNames(typed.compact, [&](const QString& name) {
        if (!formula.getNames().contains(name))
            return name;
        if (isLetter(name))
            return adopt(of(*lines[std::size_t(numberOf(name))], lines), letter);
        return letter({typed.getPath(name), QString(), PlotFunction::Values});
    });
    expression.formula = expression.formula.simplified();
    return expression;
}

PlotExpression PlotExpression::ofPaths(const QString& text, Formula::Fault* fault)
{
    const TypedFormula typed(text);
    Formula formula;
    Formula::Fault unwanted;
    Formula::Fault* const told = fault ? fault : &unwanted;
    PlotExpression expression;
    if (typed.paths.isEmpty() || !typed.parse(&formula, told))
        return expression;
    QString unknown;
    const int place = typed.findUnknown(
        formula, [](const QString&) { return false; }, &unknown);
    if (place >= 0) {
        told->text = QCoreApplication::translate("PlotExpression", "\"%1\" is no path in quotation marks").arg(unknown);
        told->position = place;
        return expression;
    }
    expression.formula = withNames(typed.compact, [&](const QString& name) {
        return formula.getNames().contains(name)
                   ? expression.letterFor({typed.getPath(name), QString(), PlotFunction::Values})
                   : name;
    });
    return expression;
}

QString PlotExpression::toText(const QStringList& names) const
{
    return withNames(formula, [&](const QString& name) {
        return isLetter(name) && numberOf(name) < int(names.size()) ? names.at(numberOf(name)) : name;
    });
}

QString PlotExpression::toWish() const
{
    QString text = QLatin1String(Mark) + formula;
    for (const Operand& operand : operands)
        text += QLatin1Char('\n') + QString::number(operand.function) + QLatin1Char(' ') + operand.path +
                (operand.sender.isEmpty() ? QString() : QLatin1Char('\t') + operand.sender);
    return text;
}

PlotExpression PlotExpression::fromWish(const QString& text)
{
    PlotExpression expression;
    if (!text.startsWith(QLatin1String(Mark)))
        return expression;
    const QStringList lines = text.mid(1).split(QLatin1Char('\n'));
    for (const QString& line : lines.mid(1)) {
        const QString field = line.section(QLatin1Char(' '), 1);
        const int function = qBound(0, line.section(QLatin1Char(' '), 0, 0).toInt(), int(PlotFunction::KindCount) - 1);
        expression.operands.append({field.section(QLatin1Char('\t'), 0, 0), field.section(QLatin1Char('\t'), 1),
                                    PlotFunction::Kind(function)});
    }
    Formula formula;
    Formula::Fault fault;
    bool isGood = formula.parse(lines.constFirst(), &fault) && !formula.getNames().isEmpty();
    for (const QString& name : formula.getNames())
        isGood = isGood && isLetter(name) && numberOf(name) < expression.operands.size();
    expression.formula = lines.constFirst();
    return isGood ? expression : PlotExpression();
}

QString PlotExpression::getUnit(const QStringList& units) const
{
    static const QRegularExpression number(QStringLiteral("(?<![\\w.])(?<!\\^)(?<!\\^ )[0-9.]+|_pi|_e\\b"));
    Formula parsed;
    Formula::Fault fault;
    if (units.isEmpty() || units.count(units.constFirst()) != units.size() || formula.contains(number) ||
        !parsed.parse(formula, &fault))
        return QString();
    // What grows as its operands do has their unit, or that of the other angle where all of it is converted.
    Formula plain;
    const QString angle = formula.contains(QLatin1String("deg"))   ? QStringLiteral("deg")
                          : formula.contains(QLatin1String("rad")) ? QStringLiteral("rad")
                                                                   : QString();
    const auto withoutAngle = [&](const QString& name) { return name == angle ? QString() : name; };
    if (!plain.parse(withNames(formula, withoutAngle), &fault))
        return QString();
    const double angleFactor = angle.isEmpty()                 ? 1
                               : angle == QLatin1String("deg") ? DegreesInRadian
                                                               : 1 / DegreesInRadian;
    bool any = false;
    for (int round = 1; round <= 8; ++round) {
        std::vector<double> small;
        std::vector<double> great;
        const double factor = 1.5 + round * 0.37;
        for (int i = 0; i < int(operands.size()); ++i) {
            small.push_back(std::sin(round * 5.1 + i * 2.3) * 7 + (round % 2 ? 0 : 8));
            great.push_back(small.back() * factor);
        }
        const double first = plain.compute(small.data()) * factor * angleFactor;
        const double second = parsed.compute(great.data());
        if (!std::isfinite(first) || !std::isfinite(second))
            continue;
        if (std::fabs(first - second) > 1e-9 * (1 + std::fabs(first)))
            return QString();
        any = any || first != 0;
    }
    const PlotFunction other(PlotFunction::OtherAngle);
    const bool isRadians = units.constFirst().startsWith(QLatin1String("rad"));
    if (!any || angle.isEmpty())
        return any ? units.constFirst() : QString();
    return other.isPossible(units.constFirst()) && isRadians == (angle == QLatin1String("deg"))
               ? other.getUnit(units.constFirst())
               : QString();
}

#include "formula.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <muParser.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

namespace
{

const double Pi = 3.14159265358979323846;

// bit(value, number): 1 or 0.
double bitOf(double value, double number)
{
    return std::fmod(std::floor(std::ldexp(value, -static_cast<int>(number))), 2.0) != 0 ? 1 : 0;
}

double degreesOf(double radians)
{
    return radians * 180 / Pi;
}

double radiansOf(double degrees)
{
    return degrees * Pi / 180;
}

bool isWrong(Formula::Fault* fault, const QString& text, qint64 position)
{
    fault->text = text;
    fault->position = int(position);
    return true;
}

QString describe(const mu::Parser::exception_type& exception)
{
    const QString token = QString::fromStdString(exception.GetToken());
    switch (exception.GetCode()) {
    case mu::ecEMPTY_EXPRESSION:
    case mu::ecUNEXPECTED_EOF:
        return QCoreApplication::translate("Formula", "something is missing at the end");
    case mu::ecMISSING_PARENS:
        return QCoreApplication::translate("Formula", "a parenthesis is missing");
    case mu::ecTOO_MANY_PARAMS:
        return QCoreApplication::translate("Formula", "a function has too many arguments");
    case mu::ecTOO_FEW_PARAMS:
        return QCoreApplication::translate("Formula", "a function has too few arguments");
    case mu::ecMISSING_ELSE_CLAUSE:
        return QCoreApplication::translate("Formula", "a \"?\" has no \":\"");
    default:
        return token.isEmpty()
                   ? QString::fromStdString(exception.GetMsg())
                   : QCoreApplication::translate("Formula", "\"%1\" cannot stand here").arg(token.trimmed());
    }
}

} // namespace

struct Formula::Private
{
    Private()
    {
        parser.DefineFun("bit", bitOf);
        parser.DefineFun("deg", degreesOf);
        parser.DefineFun("rad", radiansOf);
        // The parser's own constants can lack the last digits.
        parser.ClearConst();
        parser.DefineConst("_pi", Pi);
        parser.DefineConst("_e", 2.71828182845904523536);
        // With the point, for fields of sub-messages.
        parser.DefineNameChars("0123456789_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ.");
    }

    bool isFaulty(const QString& text, Fault* fault) const;

    mu::Parser parser;
    std::vector<double> numbers; // the parser points into it
};

/** Finds what the parser would misunderstand, or explain in its own words. */
bool Formula::Private::isFaulty(const QString& text, Fault* fault) const
{
    static const QRegularExpression assignment(QStringLiteral("(?<![=<>!])=(?!=)"));
    static const QRegularExpression strange(QStringLiteral("[^ -~]|[\"';#@$\\\\`{}\\[\\]]"));
    static const QRegularExpression call(QStringLiteral("(?<![\\w.])([A-Za-z_][\\w.]*)\\s*\\("));
    const QRegularExpressionMatch character = strange.match(text);
    if (character.hasMatch())
        return isWrong(fault,
                       QCoreApplication::translate("Formula", "\"%1\" cannot stand here").arg(character.captured()),
                       character.capturedStart());
    const QRegularExpressionMatch equals = assignment.match(text);
    if (equals.hasMatch())
        return isWrong(fault, QCoreApplication::translate("Formula", "a comparison is written \"==\""),
                       equals.capturedStart());
    for (auto calls = call.globalMatch(text); calls.hasNext();) {
        const QRegularExpressionMatch one = calls.next();
        if (parser.GetFunDef().count(one.captured(1).toStdString()) == 0)
            return isWrong(fault,
                           QCoreApplication::translate("Formula", "there is no function \"%1\"").arg(one.captured(1)),
                           one.capturedStart(1));
    }
    return false;
}

Formula::Formula() = default;

Formula::~Formula() = default;

bool Formula::parse(const QString& text, Fault* fault)
{
    static const QRegularExpression name(QStringLiteral("(?<![\\w.])[A-Za-z_][\\w.]*"));
    m_names.clear();
    m_private = std::make_unique<Private>();
    mu::Parser& parser = m_private->parser;
    if (m_private->isFaulty(text, fault))
        return false;
    try {
        parser.SetExpr(text.toStdString());
        const mu::varmap_type used = parser.GetUsedVar();
        for (auto names = name.globalMatch(text); names.hasNext();) {
            const QString one = names.next().captured();
            if (used.count(one.toStdString()) > 0 && !m_names.contains(one))
                m_names.append(one);
        }
        for (const auto& variable : used) // however the parser came to it
            if (!m_names.contains(QString::fromStdString(variable.first)))
                m_names.append(QString::fromStdString(variable.first));
        m_private->numbers.resize(std::size_t(m_names.size()));
        for (int i = 0; i < int(m_names.size()); ++i)
            parser.DefineVar(m_names.at(i).toStdString(), &m_private->numbers[std::size_t(i)]);
        parser.Eval();
    } catch (const mu::Parser::exception_type& exception) {
        // Where something is missing, the parser points at what it saw last.
        const bool isAtEnd = exception.GetCode() == mu::ecUNEXPECTED_EOF || exception.GetCode() == mu::ecMISSING_PARENS;
        isWrong(fault, describe(exception), isAtEnd ? text.size() : exception.GetPos());
        return false;
    }
    if (parser.GetNumResults() == 1)
        return true;
    isWrong(fault, QCoreApplication::translate("Formula", "it has several results"), -1);
    return false;
}

double Formula::compute(const double* numbers) const
{
    if (!m_private)
        return std::numeric_limits<double>::quiet_NaN();
    std::copy(numbers, numbers + m_private->numbers.size(), m_private->numbers.begin());
    try {
        return m_private->parser.Eval();
    } catch (const mu::Parser::exception_type&) {
        return std::numeric_limits<double>::quiet_NaN();
    }
}

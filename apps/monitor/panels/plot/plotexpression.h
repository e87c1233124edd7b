#ifndef PLOTEXPRESSION_H
#define PLOTEXPRESSION_H

#include "formula.h"
#include "plotfunction.h"

#include <QString>
#include <QVector>

#include <memory>
#include <vector>

class PlotSeries;

/** What a line is computed from: a formula, and what its letters stand for. */
struct PlotExpression
{
    typedef std::vector<std::shared_ptr<PlotSeries>> Lines;

    struct Operand
    {
        QString path;   ///< the expression that names the field
        QString sender; ///< empty where any will do
        PlotFunction::Kind function = PlotFunction::Values;

        bool operator==(const Operand& other) const
        {
            return path == other.path && sender == other.sender && function == other.function;
        }
    };

    QString formula;           ///< of the letters a, b, c... in the order of the operands
    QVector<Operand> operands; ///< first the one at whose times it is computed

    bool isNull() const { return operands.isEmpty(); }

    /** The letter of the line or operand number @p number, from 0. */
    static QString letterOf(int number) { return QString(QChar('a' + number)); }

    /** Whether the name of @p series tells its sender, as it has to where several of @p all are of the same field. */
    static bool isTold(const PlotSeries& series, const Lines& all);
    /** What @p series is an operand as, or the expression that it is drawn of. */
    static PlotExpression of(const PlotSeries& series, const Lines& all);
    /** The first of two lines less the second. */
    static PlotExpression differenceOf(const PlotExpression& first, const PlotExpression& second);
    /**
     * Reads what somebody wrote, in which letters stand for @p lines, the first of them "a", and paths in quotation
     * marks for fields.
     *
     * @param fault  why a null one is returned; must not be null
     */
    static PlotExpression parse(const QString& text, const Lines& lines, Formula::Fault* fault);

    /**
     * Reads what has paths in quotation marks alone, whether these are known by now or not; null when it is no such
     * expression.
     *
     * @param fault  is told why not; may be null
     */
    static PlotExpression ofPaths(const QString& text, Formula::Fault* fault = nullptr);

    /** With each letter as @p names has it. */
    QString toText(const QStringList& names) const;
    /** As one text, and back; null when it is none. Begins with "=", as no path of a field does. */
    QString toWish() const;
    static PlotExpression fromWish(const QString& text);

    /**
     * The unit of the results for operands of these units; empty when it is not sure.
     *
     * Who adds, subtracts, compares or takes roots of squares of what has one unit gets that unit. Any number in the
     * formula could mean another, as in "a * 3.6".
     */
    QString getUnit(const QStringList& units) const;

private:
    QString letterFor(const Operand& operand);
};

#endif

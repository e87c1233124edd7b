#ifndef CORVEL_FORMULA_H
#define CORVEL_FORMULA_H

#include "corvelframework_export.h"

#include <QString>
#include <QStringList>

#include <memory>

/**
 * A number that is computed from others, as a text says: "sqrt(vx^2 + vy^2)".
 *
 * What can stand in it is said in docs/annotations.md. Names are made of Latin letters, digits, underscores and points.
 *
 * @code
 * Formula formula;
 * Formula::Fault fault;
 * if (!formula.parse("a - b", &fault))
 *     complain(fault.text, fault.position);
 * const double numbers[] = {3, 1}; // of a and b, see getNames()
 * show(formula.compute(numbers));
 * @endcode
 *
 * To be used on one thread at a time.
 */
class CORVELFRAMEWORK_EXPORT Formula
{
public:
    /** What is wrong with a text. */
    struct CORVELFRAMEWORK_EXPORT Fault
    {
        QString text;      ///< in the user's language
        int position = -1; ///< of the character that it is about, from 0; negative when it is about no certain one
    };

    Formula();
    ~Formula();

    /**
     * Takes a text in place of what there was.
     *
     * @param fault  why false is returned; must not be null
     * @return whether it can be computed
     */
    bool parse(const QString& text, Fault* fault);

    /** The names that stand for numbers, each once, in the order in which they come first. */
    const QStringList& getNames() const { return m_names; }

    /** The result for such numbers, one for each of getNames(); not a number where there is none. */
    double compute(const double* numbers) const;

private:
    Q_DISABLE_COPY(Formula)

    struct Private;
    std::unique_ptr<Private> m_private;
    QStringList m_names;
};

#endif

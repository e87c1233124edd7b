#ifndef CORVEL_PATHEXPRESSIONASSISTANT_H
#define CORVEL_PATHEXPRESSIONASSISTANT_H

#include "corvelgui_export.h"
#include "pathexpression.h"

#include <QObject>
#include <QPointer>

#include <utility>

class QCompleter;
class QLineEdit;
class QStringListModel;

/**
 * Helps whoever types a path expression: completes names of formats, types and fields step by step, and marks what is
 * malformed or matches nothing.
 *
 * While something is typed, what it may become is listed below the line; with the Down key also before. What is chosen
 * there is taken as with the Return key. The mark is a wavy line below the text; the tool tip and the accessible
 * description say what is wrong. Text that is being typed counts as a beginning, and is not marked as long as anything
 * begins so.
 *
 * @code
 * PathExpressionLineEdit* edit = new PathExpressionLineEdit(expression);
 * new PathExpressionAssistant(edit); // belongs to the line edit
 * @endcode
 */
class CORVELGUI_EXPORT PathExpressionAssistant : public QObject
{
    Q_OBJECT

public:
    /**
     * Helps until it is deleted, or the line edit is.
     *
     * @param edit  owns the assistant; not null. With a PathExpressionLineEdit it helps with the parts that are edited
     *              there, with any other, such as that of an editable PathExpressionComboBox, with whole expressions,
     *              sub-messages considered. Its completer is replaced.
     */
    explicit PathExpressionAssistant(QLineEdit* edit);
    virtual ~PathExpressionAssistant();

    /** What is wrong with the expression, and where, as far as the framework tells; empty when nothing is. */
    const QString& getProblem() const;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /** There is another problem, or with the empty text none any more. */
    void problemChanged(const QString& problem);

private Q_SLOTS:
    void offerOptions();
    void takeOption();
    void processReturnPressed();
    void checkLater();
    void check();

protected:
    // What a framework may tell beyond what the library asks of each.
    typedef QStringList (*ListMatches)(const PathExpression& expression, PathExpression::Parts parts, int maximum);
    typedef QString (*FindError)(const PathExpression& expression);

    PathExpressionAssistant(QLineEdit* edit, ListMatches listMatches, FindError findError);

private:
    Q_DISABLE_COPY(PathExpressionAssistant)

    QLineEdit* getEdit() const;
    PathExpression* followExpression();
    PathExpression::Parts getParts() const;
    void setProblem(const QString& problem);
    void drawMark();

    QPointer<QObject> m_edit; // which owns this
    QPointer<PathExpression> m_followed;
    PathExpression* m_own; // with what is typed, for a line edit that has no expression; null for others
    QString m_given;       // to that one
    QStringListModel* m_options;
    QCompleter* m_completer;
    ListMatches m_listMatches;
    FindError m_findError;
    QString m_problem;
    QString m_formerDescription; // of the line edit for screen readers
    bool m_isCheckPosted;
    bool m_isPainting;
};

// Where an application is compiled it is seen what its framework has. The library itself asks for no more than any has.

/** The first @p maximum matches, or all of them where the framework cannot stop there. */
template <typename Expression>
decltype(std::declval<const Expression&>().getMatchingExpressionsStringList(PathExpression::Parts(), 0))
corvelListMatches(const Expression& expression, PathExpression::Parts parts, int maximum, int)
{
    return expression.getMatchingExpressionsStringList(parts, maximum);
}
template <typename Expression>
QStringList corvelListMatches(const Expression& expression, PathExpression::Parts parts, int, long)
{
    return expression.getMatchingExpressionsStringList(parts);
}

/** Why the expression is malformed; empty when it is not, or when the framework does not tell. */
template <typename Expression>
decltype(std::declval<const Expression&>().errorString()) corvelFindError(const Expression& expression, int)
{
    return expression.errorString();
}
template <typename Expression>
QString corvelFindError(const Expression&, long)
{
    return QString();
}

inline QStringList corvelListAnyMatches(const PathExpression& expression, PathExpression::Parts parts, int maximum)
{
    return corvelListMatches(expression, parts, maximum, 0);
}
inline QString corvelFindAnyError(const PathExpression& expression)
{
    return corvelFindError(expression, 0);
}

inline PathExpressionAssistant::PathExpressionAssistant(QLineEdit* edit)
    : PathExpressionAssistant(edit, &corvelListAnyMatches, &corvelFindAnyError)
{
}

#endif

#ifndef CORVEL_PATHEXPRESSIONLINEEDIT_H
#define CORVEL_PATHEXPRESSIONLINEEDIT_H

#include "corvelgui_export.h"
#include "pathexpression.h"

#include <QLineEdit>

/**
 * A line edit for some parts of a path expression.
 *
 * Each edit by the user is passed on as a prefix, so that what matches can be shown while typing; the return key
 * commits the text. Changes that are made elsewhere are shown unless the line edit has the keyboard focus.
 *
 * @code
 * PathExpressionLineEdit* edit = new PathExpressionLineEdit(expression);
 * layout->addWidget(edit);
 * @endcode
 */
class CORVELGUI_EXPORT PathExpressionLineEdit : public QLineEdit
{
    Q_OBJECT

public:
    /**
     * @param pathExpression  the expression to edit; null shows a text that says so. Borrowed; when it goes, there is
     * none.
     * @param parts           which of its parts to edit
     * @param parent          may be null
     */
    explicit PathExpressionLineEdit(PathExpression* pathExpression = 0,
                                    PathExpression::Parts parts = PathExpression::AllParts, QWidget* parent = 0);
    virtual ~PathExpressionLineEdit();

    /**
     * Edits another expression, or none, and leaves the former one alone.
     *
     * The return key commits the text once for each time that an expression was set.
     */
    void setPathExpression(PathExpression* pathExpression);
    /** The expression edited; may be null. */
    PathExpression* getPathExpression();

    void setParts(PathExpression::Parts parts);
    PathExpression::Parts getParts() const;

protected:
    void changeEvent(QEvent* event) override;

protected Q_SLOTS:
    void processPartsChanged(PathExpression::Parts parts);

public Q_SLOTS:
    /** Makes the text the prefix of the edited parts. */
    void processTextEdited();
    /** Commits the text to the edited parts. */
    void processReturnPressed();
    /** Shows the text that the expression has. */
    void updateText();

private:
    Q_DISABLE_COPY(PathExpressionLineEdit)

    static void letGo(void* widget, const QObject* object, bool show);

    PathExpression* m_pathExpression;
    PathExpression::Parts m_parts;
};

#endif

#ifndef CORVEL_PATHEXPRESSIONLABEL_H
#define CORVEL_PATHEXPRESSIONLABEL_H

#include "corvelgui_export.h"
#include "pathexpression.h"

#include <QLabel>

/**
 * A label that shows some parts of a path expression and follows their changes.
 *
 * @code
 * PathExpressionLabel* label = new PathExpressionLabel(expression);
 * layout->addWidget(label);
 * @endcode
 */
class CORVELGUI_EXPORT PathExpressionLabel : public QLabel
{
    Q_OBJECT

public:
    /**
     * @param pathExpression  the expression to show; null shows a text that says so. Borrowed; when it goes, there is
     * none.
     * @param parts           which of its parts to show
     * @param parent          may be null
     */
    explicit PathExpressionLabel(PathExpression* pathExpression = 0,
                                 PathExpression::Parts parts = PathExpression::AllParts, QWidget* parent = 0);
    virtual ~PathExpressionLabel();

    /** Shows another expression, or none, and follows the former one no more. */
    void setPathExpression(PathExpression* pathExpression);
    /** The expression shown; may be null. */
    PathExpression* getPathExpression();

    void setParts(PathExpression::Parts parts);
    PathExpression::Parts getParts() const;

protected:
    void changeEvent(QEvent* event) override;

protected Q_SLOTS:
    void processPartsChanged(PathExpression::Parts parts);
    void updateLabel();

private:
    Q_DISABLE_COPY(PathExpressionLabel)

    static void letGo(void* widget, const QObject* object, bool show);

    PathExpression* m_pathExpression;
    PathExpression::Parts m_parts;
};

#endif

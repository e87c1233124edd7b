#ifndef CORVEL_PATHEXPRESSIONLISTWIDGET_H
#define CORVEL_PATHEXPRESSIONLISTWIDGET_H

#include "corvelgui_export.h"
#include "pathexpression.h"

#include <QListWidget>

/**
 * A list to choose some parts of a path expression from.
 *
 * What it offers is what a second expression matches, the options source, such as all message types of a format. The
 * entry that is the edited expression's text is current; clicking an entry or moving to one writes its text into the
 * expression.
 *
 * @code
 * PathExpression* types = new PathExpression(this);
 * types->setString("corvel");
 * new PathExpressionListWidget(expression, PathExpression::MessagePart, types, parent);
 * @endcode
 */
class CORVELGUI_EXPORT PathExpressionListWidget : public QListWidget
{
    Q_OBJECT

public:
    /**
     * @param pathExpression  the expression to edit; null offers the options and edits nothing. Borrowed; when it goes,
     * there is none.
     * @param parts           which of its parts to edit and to list
     * @param optionsSource   whose matches to offer; borrowed like the other. Null makes an expression of the list's
     *                        own, without text.
     * @param parent          may be null
     */
    explicit PathExpressionListWidget(PathExpression* pathExpression = 0,
                                      PathExpression::Parts parts = PathExpression::AllParts,
                                      PathExpression* optionsSource = 0, QWidget* parent = 0);
    virtual ~PathExpressionListWidget();

    /** Edits another expression, or none. */
    void setPathExpression(PathExpression* pathExpression);
    /** The expression edited; may be null. */
    PathExpression* getPathExpression();

    /** Offers the matches of another expression; null offers a text that says so. */
    void setOptionsSourcePathExpression(PathExpression* optionsSource);
    /** The expression whose matches are offered; may be null. */
    PathExpression* getOptionsSourcePathExpression();

    void setParts(PathExpression::Parts parts);
    PathExpression::Parts getParts() const;

protected:
    void changeEvent(QEvent* event) override;

protected Q_SLOTS:
    void updateContents();
    void setPathExpressionFromCurrent();

private:
    Q_DISABLE_COPY(PathExpressionListWidget)

    static void letGo(void* widget, const QObject* object, bool show);

    PathExpression* m_pathExpression;
    PathExpression* m_optionsSourcePathExpression;
    PathExpression::Parts m_parts;
    bool m_settingFromCurrent;
};

#endif

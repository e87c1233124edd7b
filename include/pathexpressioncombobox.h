#ifndef CORVEL_PATHEXPRESSIONCOMBOBOX_H
#define CORVEL_PATHEXPRESSIONCOMBOBOX_H

#include "corvelgui_export.h"
#include "pathexpression.h"

#include <QComboBox>

/**
 * A combo box to choose some parts of a path expression with.
 *
 * What it offers is what a second expression matches, the options source, and an entry "All" that stands for the
 * wildcard. The edited expression's text is among them: it comes first when it is no option. Where the source matches
 * nothing, as before formats are known, a text says so and nothing else is offered; the expression keeps what it has.
 *
 * @code
 * PathExpression* types = new PathExpression(this);
 * types->setString("corvel");
 * new PathExpressionComboBox(expression, PathExpression::MessagePart, types, parent);
 * @endcode
 */
class CORVELGUI_EXPORT PathExpressionComboBox : public QComboBox
{
    Q_OBJECT

public:
    /**
     * @param pathExpression  the expression to edit; null shows a text that says so. Borrowed; when it goes, there is
     * none.
     * @param parts           which of its parts to edit and to list
     * @param optionsSource   whose matches to offer; borrowed like the other. Null makes an expression of the combo
     *                        box's own, without text.
     * @param parent          may be null
     */
    explicit PathExpressionComboBox(PathExpression* pathExpression = 0,
                                    PathExpression::Parts parts = PathExpression::AllParts,
                                    PathExpression* optionsSource = 0, QWidget* parent = 0);
    virtual ~PathExpressionComboBox();

    /**
     * @param enabled  whether to offer the wildcard; while the edited parts hold it, it is shown in any case
     * @param text     what its entry reads. An option of the same text stands for the wildcard too.
     */
    void setAllOptionEnabled(bool enabled, QString text = QLatin1String("All"));
    bool getAllOptionEnabled() const;

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
    Q_DISABLE_COPY(PathExpressionComboBox)

    static void letGo(void* widget, const QObject* object, bool show);

    PathExpression* m_pathExpression;
    PathExpression* m_optionsSourcePathExpression;
    PathExpression::Parts m_parts;
    QString m_allOptionText;
    bool m_allOptionEnabled;
    bool m_updatingContents;
    bool m_settingFromCurrent;
};

#endif

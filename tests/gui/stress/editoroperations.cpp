#include "desk.h"

#include "fieldinfo.h"
#include "messageinfo.h"
#include "pathexpression.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"

#include <QKeyEvent>
#include <QTest>

// What can be done with path expressions and their editors.

static const int AllParts = 15;

QString Desk::pickPath()
{
    const char* const paths[] = {"",    "world", "world/*", "world/TYPE_0", "*", "nothing", "world/TYPE_1/field0",
                                 "wor", "/",     "a\\b["};
    return QLatin1String(paths[m_chance.below(10)]);
}

void Desk::operateOnExpression(PathExpression* expression)
{
    const PathExpression::Parts parts = PathExpression::Parts(QFlag(m_chance.below(AllParts + 1)));
    const int choice = m_chance.below(8);
    note("expression", choice);
    switch (choice) {
    case 0:
        expression->setString(pickPath());
        break;
    case 1:
        expression->setString(pickPath(), parts);
        break;
    case 2:
        expression->setStringPrefix(pickPath(), parts);
        break;
    case 3:
        expression->completeEditing();
        break;
    case 4:
        expression->setWildCard(parts);
        break;
    case 5:
        expression->setupToMatchUnique(m_world.pickInfo());
        break;
    case 6:
        if (!m_world.getFields().isEmpty())
            expression->setupToMatchUnique(m_chance.pick(m_world.getFields()));
        break;
    default:
        expression->setConsiderSubMessages(m_chance.coin());
        break;
    }
}

/** What the four editors have in common. */
template <typename Editor>
static void reconnect(Editor* editor, Chance* chance, const QList<PathExpression*>& expressions)
{
    if (chance->coin())
        editor->setPathExpression(chance->percent(10) ? nullptr : chance->pick(expressions));
    else
        editor->setParts(PathExpression::Parts(QFlag(chance->below(AllParts + 1))));
}

template <typename Editor>
static void reconnectOptions(Editor* editor, Chance* chance, const QList<PathExpression*>& expressions)
{
    if (chance->percent(70))
        reconnect(editor, chance, expressions);
    else
        editor->setOptionsSourcePathExpression(chance->percent(10) ? nullptr : chance->pick(expressions));
}

void Desk::operateOnEditor(QWidget* widget)
{
    const int choice = m_chance.below(4);
    note("editor", choice);
    if (PathExpressionLabel* label = qobject_cast<PathExpressionLabel*>(widget)) {
        reconnect(label, &m_chance, m_expressions);
    } else if (PathExpressionLineEdit* line = qobject_cast<PathExpressionLineEdit*>(widget)) {
        if (choice == 0)
            reconnect(line, &m_chance, m_expressions);
        else if (choice == 1)
            QTest::keyClick(line, Qt::Key_Return);
        else
            QTest::keyClick(line, m_chance.coin() ? '*' : '/');
    } else if (PathExpressionListWidget* list = qobject_cast<PathExpressionListWidget*>(widget)) {
        if (choice == 0)
            reconnectOptions(list, &m_chance, m_expressions);
        else if (choice == 1)
            operateOnItemView(list);
        else {
            m_choiceDepth = m_depth;
            list->setCurrentRow(m_chance.below(list->count() + 1) - 1);
        }
    } else if (PathExpressionComboBox* box = qobject_cast<PathExpressionComboBox*>(widget)) {
        if (choice == 0)
            reconnectOptions(box, &m_chance, m_expressions);
        else if (choice == 1)
            box->setAllOptionEnabled(m_chance.coin(), QLatin1String(m_chance.coin() ? "All" : "Every"));
        else
            box->setCurrentIndex(m_chance.below(box->count() + 1) - 1);
    }
}

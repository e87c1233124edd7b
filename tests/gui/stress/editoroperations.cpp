#include "desk.h"

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
    const Operations operations = {
        [&] { expression->setString(pickPath()); },
        [&] { expression->setString(pickPath(), parts); },
        [&] { expression->setStringPrefix(pickPath(), parts); },
        [&] { expression->completeEditing(); },
        [&] { expression->setWildCard(parts); },
        [&] { expression->setupToMatchUnique(m_world.pickInfo()); },
        [&] { expression->setupToMatchUnique(m_chance.pick(m_world.getFields())); },
        [&] { expression->setConsiderSubMessages(m_chance.coin()); },
    };
    doOneOf("expression", 8, operations);
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
    Operations operations;
    if (PathExpressionLabel* label = qobject_cast<PathExpressionLabel*>(widget)) {
        operations = {[=] { reconnect(label, &m_chance, m_expressions); }};
    } else if (PathExpressionLineEdit* line = qobject_cast<PathExpressionLineEdit*>(widget)) {
        const auto press = [line](Qt::Key key) {
            if (line->isEnabled())
                QTest::keyClick(line, key);
        };
        operations = {
            [=] { reconnect(line, &m_chance, m_expressions); },
            [=] { press(Qt::Key_Return); },
            [=] { press(m_chance.coin() ? Qt::Key_Asterisk : Qt::Key_Slash); },
        };
    } else if (PathExpressionListWidget* list = qobject_cast<PathExpressionListWidget*>(widget)) {
        operations = {
            [=] { reconnectOptions(list, &m_chance, m_expressions); },
            [=] { operateOnItemView(list); },
            [=] {
                m_choiceDepth = m_depth;
                list->setCurrentRow(m_chance.below(list->count() + 1) - 1);
            },
        };
    } else if (PathExpressionComboBox* box = qobject_cast<PathExpressionComboBox*>(widget)) {
        operations = {
            [=] { reconnectOptions(box, &m_chance, m_expressions); },
            [=] { box->setAllOptionEnabled(m_chance.coin(), QLatin1String(m_chance.coin() ? "All" : "Every")); },
            [=] { box->setCurrentIndex(m_chance.below(box->count() + 1) - 1); },
        };
    }
    doOneOf("editor", 4, operations);
}

#ifndef PATHWIDGETFIXTURES_H
#define PATHWIDGETFIXTURES_H

#include "messagefixtures.h"
#include "pathfixtures.h"
#include "shown.h"

#include <QtTest>

typedef PathExpression::Parts Parts;

/** A registered format, "f", with the types A { x }, B { x, y } and C { y }. */
struct LetterFormat
{
    explicit LetterFormat(const char* third = "C")
    {
        addTestType(&info, "A", "x");
        addTestType(&info, "B", "x y");
        addTestType(&info, third, "y");
        FormatRegistry::getInstance()->addFormat(&info);
    }

    FormatInfo info{text("f")};
};

inline void choose(QComboBox* box, int index)
{
    box->setCurrentIndex(index);
}

inline void choose(QListWidget* list, int index)
{
    list->setCurrentRow(index);
}

/**
 * A widget in which one chooses the message type of an expression from what another expression matches, and what can be
 * done with them in a word: "set TEXT", "part NUMBER TEXT" and "type NUMBER TEXT" of the expression, "source TEXT",
 * "parts NUMBER" of the widget, "choose ROW", and "expression on", "expression off", "options on", "options off".
 */
template <typename Widget>
struct Chooser
{
    explicit Chooser(const char* thirdType = "C")
        : format(thirdType)
    {
    }

    /** What is offered after @p command. */
    QString operator()(const QString& command)
    {
        const QString verb = command.section(' ', 0, 0);
        const QString object = command.section(' ', 1);
        if (verb == "set")
            expression.setString(object);
        else if (verb == "part")
            expression.setString(object.section(' ', 1), partsOf(object));
        else if (verb == "type")
            expression.setStringPrefix(object.section(' ', 1), partsOf(object));
        else if (verb == "source")
            source.setString(object);
        else if (verb == "parts")
            widget.setParts(partsOf(object));
        else if (verb == "choose")
            choose(&widget, object.toInt());
        else if (verb == "expression")
            widget.setPathExpression(object == "on" ? &expression : nullptr);
        else if (verb == "options")
            widget.setOptionsSourcePathExpression(object == "on" ? &source : nullptr);
        return entriesText(widget);
    }
    QString entries() const { return entriesText(widget); }
    static Parts partsOf(const QString& number) { return Parts(QFlag(number.section(' ', 0, 0).toInt())); }

    LetterFormat format;
    PathExpression expression;
    PathExpression source;
    Widget widget{&expression, Parts(2), &source};
};

/** Checks that what is offered follows the expressions; a widget without one for the options makes one of its own. */
template <typename Widget>
void checkThatItFollows(Chooser<Widget>* chooser)
{
    const TextRow rows[] = {{"set /C", "A, B, <C>"}, {"source */*/y", "B, <C>"}};
    checkRows(rows, std::ref(*chooser));
    {
        const LetterFormat other("D");
        QCOMPARE(chooser->entries(), text("B, <C>, D"));
    }
    QCOMPARE((*chooser)("set /B"), text("<B>, C"));

    Widget without(&chooser->expression, Parts(2));
    QCOMPARE(without.getOptionsSourcePathExpression()->parent(), static_cast<QObject*>(&without));
    QVERIFY(entriesText(without).endsWith("A, <B>, C"));
}

/** Checks that expressions that were replaced neither change the widget nor are changed by it. */
template <typename Widget>
void checkThatItLeavesFormerExpressionsAlone(Chooser<Widget>* chooser)
{
    PathExpression second;
    PathExpression otherSource;
    chooser->widget.setPathExpression(&second);
    second.setString("/B");
    const TextRow rows[] = {{"set /A", "A, <B>, C"}, {"choose 2", "A, B, <C>"}};
    checkRows(rows, std::ref(*chooser));
    QCOMPARE(chooser->expression.getString(Parts(2)), text("A"));
    chooser->widget.setOptionsSourcePathExpression(&otherSource);
    QCOMPARE((*chooser)("source nothing"), text("A, B, <C>"));
    const QString without = (*chooser)("expression off");
    second.setString("/A");
    QCOMPARE(chooser->entries(), without);
    (*chooser)("options off");
}

/** Checks what comes of it when those who hear of a change, by @p chosenSignal, change the widget themselves. */
template <typename Widget>
void checkThatListenersMayChangeIt(Chooser<Widget>* chooser, const char* chosenSignal)
{
    Widget* const widget = &chooser->widget;
    chooser->expression.setString("f/B");
    const Answer updater(
        widget, chosenSignal, [widget] { widget->setParts(Parts(2)); }, 1);
    QCOMPARE((*chooser)("source */*/y"), text("<B>, C"));
    QCOMPARE(chooser->expression.getString(PathExpression::AllParts), text("f/B"));

    const Answer remover(
        &chooser->expression, SIGNAL(expressionChanged(const QString&)),
        [widget] { widget->setPathExpression(nullptr); }, 1);
    choose(widget, 1);
    QCOMPARE(chooser->expression.getString(PathExpression::AllParts), text("f/C"));
    QVERIFY(!widget->getPathExpression());
}

#endif

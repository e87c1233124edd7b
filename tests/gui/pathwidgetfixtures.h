#ifndef PATHWIDGETFIXTURES_H
#define PATHWIDGETFIXTURES_H

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

/** A widget in which one chooses the message type of an expression from what another expression matches. */
template <typename Widget>
struct Chooser
{
    explicit Chooser(const char* thirdType = "C")
        : format(thirdType)
    {
    }

    QString entries() const { return entriesText(widget); }

    LetterFormat format;
    PathExpression expression;
    PathExpression source;
    Widget widget{&expression, Parts(2), &source};
};

inline void choose(QComboBox* box, int index)
{
    box->setCurrentIndex(index);
}

inline void choose(QListWidget* list, int index)
{
    list->setCurrentRow(index);
}

/** Checks that what is offered follows the expressions; a widget without one for the options makes one of its own. */
template <typename Widget>
void checkThatItFollows(Chooser<Widget>* chooser)
{
    chooser->expression.setString(text("/C"));
    QCOMPARE(chooser->entries(), text("A, B, <C>"));
    chooser->source.setString(text("*/*/y"));
    QCOMPARE(chooser->entries(), text("B, <C>"));
    {
        const LetterFormat other("D");
        QCOMPARE(chooser->entries(), text("B, <C>, D"));
    }
    chooser->expression.setString(text("/B"));
    QCOMPARE(chooser->entries(), text("<B>, C"));

    Widget without(&chooser->expression, Parts(2));
    QCOMPARE(without.getOptionsSourcePathExpression()->parent(), static_cast<QObject*>(&without));
    QVERIFY(entriesText(without).endsWith(text("A, <B>, C")));
}

/** Checks that expressions that were replaced neither change the widget nor are changed by it. */
template <typename Widget>
void checkThatItLeavesFormerExpressionsAlone(Chooser<Widget>* chooser)
{
    PathExpression second;
    chooser->widget.setPathExpression(&second);
    second.setString(text("/B"));
    chooser->expression.setString(text("/A"));
    QCOMPARE(chooser->entries(), text("A, <B>, C"));
    choose(&chooser->widget, 2);
    QCOMPARE(chooser->expression.getString(Parts(2)), text("A"));
    PathExpression otherSource;
    chooser->widget.setOptionsSourcePathExpression(&otherSource);
    chooser->source.setString(text("nothing"));
    QCOMPARE(chooser->entries(), text("A, B, <C>"));
    chooser->widget.setPathExpression(nullptr);
    const QString without = chooser->entries();
    second.setString(text("/A"));
    QCOMPARE(chooser->entries(), without);
    chooser->widget.setOptionsSourcePathExpression(nullptr);
}

/** Checks what comes of it when those who hear of a change, by @p chosenSignal, change the widget themselves. */
template <typename Widget>
void checkThatListenersMayChangeIt(Chooser<Widget>* chooser, const char* chosenSignal)
{
    Widget* const widget = &chooser->widget;
    chooser->expression.setString(text("f/B"));
    OnceCaller updater([widget]() { widget->setParts(Parts(2)); });
    QObject::connect(widget, chosenSignal, &updater, SLOT(call()));
    chooser->source.setString(text("*/*/y"));
    QCOMPARE(chooser->expression.getString(PathExpression::AllParts), text("f/B"));
    QCOMPARE(chooser->entries(), text("<B>, C"));

    OnceCaller remover([widget]() { widget->setPathExpression(nullptr); });
    QObject::connect(&chooser->expression, SIGNAL(expressionChanged(const QString&)), &remover, SLOT(call()));
    choose(widget, 1);
    QCOMPARE(chooser->expression.getString(PathExpression::AllParts), text("f/C"));
    QVERIFY(!widget->getPathExpression());
}

#endif

#include "pathexpressioncombobox.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"

typedef Chooser<PathExpressionComboBox> Box;

class tst_PathExpressionComboBox : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void offersAllAndWhatTheSourceMatches();
    void saysWhatIsMissing();
    void wildCardIsShownEvenWhenItIsNotOffered();
    void followsItsExpressions();
    void choosingWritesTheText();
    void optionThatReadsLikeAllIsTheWildCard();
    void rebuildingWritesNothing();
    void ownWritesDoNotRebuildTheBox();
    void listenersMayChangeIt();
};

void tst_PathExpressionComboBox::offersAllAndWhatTheSourceMatches()
{
    Box box;
    QCOMPARE(box.entries(), text("<>, All, A, B, C"));
    box.expression.setString(text("f/B"));
    QCOMPARE(box.entries(), text("All, A, <B>, C"));
    box.expression.setString(text("b"), Parts(2)); // no option, and yet shown
    QCOMPARE(box.entries(), text("<b>, All, A, B, C"));
    box.widget.setAllOptionEnabled(false);
    QCOMPARE(box.entries(), text("<b>, A, B, C"));
    box.widget.setParts(Parts(1));
    QCOMPARE(box.entries(), text("<f>"));
    box.expression.setString(text("All"), Parts(2)); // found among the entries, not the options
    box.widget.setParts(Parts(2));
    box.widget.setAllOptionEnabled(true);
    QCOMPARE(box.entries(), text("<All>, A, B, C"));
    QVERIFY(!box.expression.isWildCard(Parts(2)));
}

void tst_PathExpressionComboBox::saysWhatIsMissing()
{
    Box box;
    box.widget.setPathExpression(nullptr);
    box.widget.setOptionsSourcePathExpression(nullptr);
    QCOMPARE(box.entries(), text("<Null path expression set!>"));
    box.widget.setPathExpression(&box.expression);
    QCOMPARE(box.entries(), text("<Null options source path expression set!>"));
    box.source.setString(text("nothing"));
    box.widget.setOptionsSourcePathExpression(&box.source);
    QCOMPARE(box.entries(), text("<No options>"));
    box.expression.setWildCard(Parts(2));
    QCOMPARE(box.entries(), text("<No options>"));
    QCOMPARE(box.expression.getString(Parts(2)), text("*"));
}

void tst_PathExpressionComboBox::wildCardIsShownEvenWhenItIsNotOffered()
{
    Box box;
    box.expression.setWildCard(Parts(2));
    QCOMPARE(box.entries(), text("<All>, A, B, C"));
    box.widget.setAllOptionEnabled(false, text("Any"));
    QCOMPARE(box.entries(), text("<Any>, A, B, C"));
    box.expression.setString(text("/B"));
    QCOMPARE(box.entries(), text("A, <B>, C"));
}

void tst_PathExpressionComboBox::followsItsExpressions()
{
    Box box;
    box.widget.setAllOptionEnabled(false);
    checkThatItFollows(&box);
    box.expression.setString(text("y"), Parts(4)); // rebuilt, and the same
    QCOMPARE(box.entries(), text("<B>, C"));
    Box other;
    other.widget.setAllOptionEnabled(false);
    checkThatItLeavesFormerExpressionsAlone(&other);
}

void tst_PathExpressionComboBox::choosingWritesTheText()
{
    Box box;
    box.expression.setString(text("f/C/x"));
    PathRecorder recorder(&box.expression);
    box.widget.setCurrentIndex(1);
    QCOMPARE(recorder.take(), text("parts 2, text f/A/x, matches"));
    QTest::keyClick(&box.widget, Qt::Key_Down);
    QCOMPARE(recorder.take(), text("parts 2, text f/B/x, matches"));
    box.expression.setStringPrefix(text("x"), Parts(4));
    recorder.take();
    box.widget.setCurrentIndex(3);
    QCOMPARE(recorder.take(),
             text("parts 2, text f/C/x, matches, matches")); // the edit of another part is completed too
    box.widget.setCurrentIndex(0);
    QCOMPARE(recorder.take(), text("parts 2, text f/*/x, matches")); // never the text "All"
    QVERIFY(box.expression.isWildCard(Parts(2)));
}

void tst_PathExpressionComboBox::optionThatReadsLikeAllIsTheWildCard()
{
    Box box("All");
    box.expression.setString(text("f/B"));
    QCOMPARE(box.entries(), text("All, A, <B>, All"));
    box.widget.setAllOptionEnabled(false, text("All"));
    QCOMPARE(box.entries(), text("A, <B>, All"));
    box.widget.setCurrentIndex(2);
    QVERIFY(box.expression.isWildCard(Parts(2)));

    box.widget.setAllOptionEnabled(true, text("every"));
    QCOMPARE(box.entries(), text("<every>, A, B, All"));
    box.widget.setCurrentIndex(3);
    QCOMPARE(box.expression.getString(Parts(2)), text("All"));
    box.widget.setCurrentIndex(0);
    QVERIFY(box.expression.isWildCard(Parts(2)));
}

void tst_PathExpressionComboBox::rebuildingWritesNothing()
{
    Box box;
    box.expression.setString(text("f/B"));
    PathRecorder recorder(&box.expression);
    box.source.setString(text("*/*/x"));
    box.source.setString(text("nothing"));
    box.widget.setOptionsSourcePathExpression(nullptr);
    box.widget.setAllOptionEnabled(false);
    box.widget.setOptionsSourcePathExpression(&box.source);
    box.expression.setStringPrefix(text("B"), Parts(2));
    QCOMPARE(recorder.take(), text("matches"));
    box.source.setString(QString());
    QCOMPARE(recorder.take(), QString());
    QCOMPARE(box.entries(), text("A, <B>, C"));
}

void tst_PathExpressionComboBox::ownWritesDoNotRebuildTheBox()
{
    Box box;
    box.expression.setString(text("/no option"));
    QCOMPARE(box.entries(), text("<no option>, All, A, B, C"));
    box.widget.setCurrentIndex(3);
    QCOMPARE(box.entries(), text("no option, All, A, <B>, C"));
    box.widget.setPathExpression(&box.expression);
    QCOMPARE(box.entries(), text("All, A, <B>, C"));
}

void tst_PathExpressionComboBox::listenersMayChangeIt()
{
    Box box;
    box.widget.setAllOptionEnabled(false);
    checkThatListenersMayChangeIt(&box, SIGNAL(currentIndexChanged(int)));
}

QTEST_MAIN(tst_PathExpressionComboBox)

#include "tst_pathexpressioncombobox.moc"

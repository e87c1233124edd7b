#include "pathexpressionlistwidget.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"

typedef Chooser<PathExpressionListWidget> List;

class tst_PathExpressionListWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void offersWhatTheSourceMatches();
    void followsItsExpressions();
    void choosingWritesTheText();
    void showingTheCurrentTextCompletesAnEdit();
    void ownWritesDoNotRebuildTheList();
    void listenersMayChangeIt();
};

void tst_PathExpressionListWidget::offersWhatTheSourceMatches()
{
    List list;
    QCOMPARE(list.entries(), text("A, B, C"));
    list.expression.setString(text("g/B"));
    list.source.setString(text("f/*/y"));
    QCOMPARE(list.entries(), text("<B>, C"));
    list.widget.setParts(Parts(4));
    QCOMPARE(list.entries(), text("y"));
    list.widget.setParts(Parts(3));
    QCOMPARE(list.entries(), text("f/B, f/C")); // the expression's text is not added
    list.widget.setOptionsSourcePathExpression(nullptr);
    QCOMPARE(list.entries(), text("Null options source path expression set!"));
    list.source.setString(text("nothing"));
    list.widget.setOptionsSourcePathExpression(&list.source);
    list.widget.setParts(Parts(2));
    QCOMPARE(list.entries(), text("No options"));
    list.widget.setCurrentRow(0); // an entry like any other
    QCOMPARE(list.expression.getString(Parts(2)), text("No options"));
}

void tst_PathExpressionListWidget::followsItsExpressions()
{
    List list;
    checkThatItFollows(&list);
    list.expression.setString(text("/c"));
    QCOMPARE(list.entries(), text("B, C"));
    List other;
    checkThatItLeavesFormerExpressionsAlone(&other);
}

void tst_PathExpressionListWidget::choosingWritesTheText()
{
    List list;
    list.expression.setString(text("f//x"));
    list.widget.show();
    list.widget.setCurrentRow(1);
    QCOMPARE(list.expression.getString(PathExpression::AllParts), text("f/B/x"));
    QTest::keyClick(&list.widget, Qt::Key_Down);
    QCOMPARE(list.expression.getString(PathExpression::AllParts), text("f/C/x"));
    QCOMPARE(list.entries(), text("A, B, <C>"));
    PathUndoer undoer(&list.expression, text("f/C/x"));
    list.expression.disconnect(&list.widget); // so that the entry stays current
    const QPoint first = list.widget.visualItemRect(list.widget.item(0)).center();
    QTest::mouseClick(list.widget.viewport(), Qt::LeftButton, Qt::NoModifier, first);
    QCOMPARE(undoer.take(), QStringList() << text("f/A/x") << text("f/A/x")); // became current, and was clicked
    QTest::mouseClick(list.widget.viewport(), Qt::LeftButton, Qt::NoModifier, first);
    QCOMPARE(undoer.take(), QStringList() << text("f/A/x"));

    PathRecorder recorder(&list.source);
    list.widget.setPathExpression(nullptr);
    list.widget.setCurrentRow(1);
    QCOMPARE(recorder.take() + list.entries(), text("A, <B>, C"));
}

void tst_PathExpressionListWidget::showingTheCurrentTextCompletesAnEdit()
{
    List list("AB");
    list.expression.setStringPrefix(text("A"), Parts(2));
    QCOMPARE(list.entries(), text("<A>, B, AB"));
    QCOMPARE(list.expression.getMatchingMessageInfos().size(), 1); // not a prefix any more
    list.expression.setStringPrefix(text("a"), Parts(2));
    QCOMPARE(list.entries(), text("A, B, AB"));
    QCOMPARE(list.expression.getMatchingMessageInfos().size(), 2);
}

void tst_PathExpressionListWidget::ownWritesDoNotRebuildTheList()
{
    List list;
    // The expression is its own options source: were the list rebuilt, only what was chosen would be left.
    list.widget.setOptionsSourcePathExpression(&list.expression);
    list.widget.setCurrentRow(1);
    QCOMPARE(list.expression.getString(Parts(2)), text("B"));
    QCOMPARE(list.entries(), text("A, <B>, C"));
    list.expression.setString(text("/C"));
    QCOMPARE(list.entries(), text("<C>"));
}

void tst_PathExpressionListWidget::listenersMayChangeIt()
{
    List list;
    checkThatListenersMayChangeIt(&list, SIGNAL(currentRowChanged(int)));
}

QTEST_MAIN(tst_PathExpressionListWidget)

#include "tst_pathexpressionlistwidget.moc"

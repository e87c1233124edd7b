#include "pathexpressionlistwidget.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"

typedef Chooser<PathExpressionListWidget> List;

class tst_PathExpressionListWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void offersWhatTheSourceMatches();
    void showingTheCurrentTextCompletesAnEdit();
    void followsItsExpressions();
    void choosingWritesTheText();
    void listenersMayChangeIt();
};

void tst_PathExpressionListWidget::offersWhatTheSourceMatches()
{
    List list;
    const TextRow rows[] = {
        {"source", "A, B, C"},
        {"set g/B", "A, <B>, C"},
        {"source f/*/y", "<B>, C"},
        {"parts 4", "y"},
        {"parts 3", "f/B, f/C"}, // the expression's text is not added
        {"options off", "Null options source path expression set!"},
        {"source nothing", "Null options source path expression set!"},
        {"options on", "No options"},
        {"parts 2", "No options"},
        {"choose 0", "<No options>"}, // an entry like any other
    };
    checkRows(rows, std::ref(list));
    QCOMPARE(list.expression.getString(Parts(2)), text("No options"));

    // The expression is its own options source: were the list rebuilt by what it writes, only that would be left.
    list.widget.setOptionsSourcePathExpression(&list.expression);
    const TextRow choices[] = {{"set", "A, B, C"}, {"choose 1", "A, <B>, C"}, {"set /C", "<C>"}};
    checkRows(choices, std::ref(list));
}

void tst_PathExpressionListWidget::showingTheCurrentTextCompletesAnEdit()
{
    List list("AB");
    const auto matching = [&](const QString& command) {
        const QString offered = list(command);
        return offered + text(" %1").arg(list.expression.getMatchingMessageInfos().size());
    };
    const TextRow edits[] = {{"type 2 A", "<A>, B, AB 1"},
                             {"type 2 a", "A, B, AB 2"}}; // the first is no prefix any more
    checkRows(edits, matching);
}

void tst_PathExpressionListWidget::followsItsExpressions()
{
    List list;
    checkThatItFollows(&list);
    QCOMPARE(list("set /c"), text("B, C"));
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
    QStringList written;
    const auto undo = [&] {
        written << list.expression.getString(PathExpression::AllParts);
        list.expression.setString("f/C/x");
    };
    list.expression.disconnect(&list.widget); // so that the entry stays current
    const Answer undoer(&list.expression, SIGNAL(expressionChanged(const QString&)), undo);
    const QPoint first = list.widget.visualItemRect(list.widget.item(0)).center();
    QTest::mouseClick(list.widget.viewport(), Qt::LeftButton, Qt::NoModifier, first);
    QCOMPARE(written.size(), 2); // became current, and was clicked
    QTest::mouseClick(list.widget.viewport(), Qt::LeftButton, Qt::NoModifier, first);
    QCOMPARE(written, lines("f/A/x\nf/A/x\nf/A/x"));

    PathRecorder recorder(&list.source);
    list.widget.setPathExpression(nullptr);
    list.widget.setCurrentRow(1);
    QCOMPARE(recorder.take() + list.entries(), text("A, <B>, C"));
}

void tst_PathExpressionListWidget::listenersMayChangeIt()
{
    List list;
    checkThatListenersMayChangeIt(&list, SIGNAL(currentRowChanged(int)));
}

QTEST_MAIN(tst_PathExpressionListWidget)

#include "tst_pathexpressionlistwidget.moc"

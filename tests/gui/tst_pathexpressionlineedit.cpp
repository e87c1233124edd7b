#include "pathexpressionlineedit.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"
#include "waitfor.h"

class tst_PathExpressionLineEdit : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsPartsAndFollowsThem();
    void editsArePrefixesUntilReturn();
    void changesElsewhereWaitWhileTheUserTypes();
    void returnCommitsOnceForEachExpressionThatWasSet();
    void leavesFormerExpressionAlone();
};

/** Gives @p widget the keyboard focus, and says whether it got it in time. */
static bool takeFocus(QWidget* widget)
{
    widget->show();
    widget->activateWindow();
    widget->setFocus();
    return waitFor([widget]() { return widget->hasFocus(); });
}

void tst_PathExpressionLineEdit::showsItsPartsAndFollowsThem()
{
    PathExpression expression;
    expression.setString(text("f/M/a"));
    PathExpressionLineEdit edit(&expression, Parts(3));
    QCOMPARE(edit.text(), text("f/M"));
    PathRecorder recorder(&expression);
    edit.setText(text("untouched"));
    expression.setString(text("b"), Parts(4));
    QCOMPARE(edit.text(), text("untouched"));
    QCOMPARE(recorder.take(), text("parts 4, text f/M/b, matches")); // setText() is no edit
    expression.setString(text("g"), Parts(1));
    QCOMPARE(edit.text(), text("g/M"));
    edit.setParts(Parts(4));
    QCOMPARE(edit.text(), text("b"));
    edit.setPathExpression(nullptr);
    QCOMPARE(edit.text(), text("No path expression set!"));
    QTest::keyClicks(&edit, text("typed"));
    QTest::keyClick(&edit, Qt::Key_Return);
    edit.setPathExpression(&expression);
    QCOMPARE(edit.text(), text("b"));
}

void tst_PathExpressionLineEdit::editsArePrefixesUntilReturn()
{
    const LetterFormat format("Type");
    PathExpression expression;
    PathExpressionLineEdit edit(&expression, Parts(3));
    PathRecorder recorder(&expression);
    QTest::keyClicks(&edit, text("f/t"));
    QCOMPARE(expression.getString(PathExpression::AllParts), text("f/t"));
    QCOMPARE(expression.getMatchingMessageInfos().size(), 1);
    recorder.take();
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(recorder.take(), text("matches")); // the same text, not a prefix any more
    QCOMPARE(expression.getMatchingMessageInfos().size(), 0);
    QTest::keyClick(&edit, Qt::Key_Backspace);
    QCOMPARE(recorder.take(), text("parts 2, text f, matches"));
    edit.setText(text("f/Type"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(recorder.take(), text("parts 2, text f/Type, matches"));
}

void tst_PathExpressionLineEdit::changesElsewhereWaitWhileTheUserTypes()
{
    PathExpression expression;
    QWidget window;
    PathExpressionLineEdit edit(&expression, PathExpression::AllParts, &window);
    QLineEdit other(&window);
    window.show();
    QVERIFY(takeFocus(&edit));
    QTest::keyClicks(&edit, text("f/M/")); // the expression's own text lacks the last separator
    QTest::keyClick(&edit, Qt::Key_Return);
    expression.setString(text("g"));
    QCOMPARE(edit.text(), text("f/M/"));
    QVERIFY(takeFocus(&other));
    QCOMPARE(edit.text(), text("f/M/"));
    expression.setString(text("h"));
    QCOMPARE(edit.text(), text("h"));
}

void tst_PathExpressionLineEdit::returnCommitsOnceForEachExpressionThatWasSet()
{
    PathExpression first;
    PathExpression second;
    PathExpressionLineEdit edit;
    QVERIFY(takeFocus(&edit)); // else what the undoer sets would be shown and committed
    QStringList written;
    const auto undo = [&] {
        written << second.getString(PathExpression::AllParts);
        second.setString("f");
    };
    second.setString("f");
    const Answer undoer(&second, SIGNAL(expressionChanged(const QString&)), undo);
    PathRecorder recorder(&first);
    edit.setPathExpression(&second);
    edit.setText(text("once"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(written, lines("once"));
    edit.setPathExpression(&first);
    edit.setPathExpression(nullptr);
    edit.setPathExpression(&second);
    edit.setText(text("thrice"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(written, lines("once\nthrice\nthrice\nthrice"));
    QCOMPARE(recorder.take(), QString());
}

void tst_PathExpressionLineEdit::leavesFormerExpressionAlone()
{
    PathExpression first;
    PathExpression second;
    PathExpressionLineEdit edit(&first);
    // Every connection between the two goes, whoever made it.
    QObject::connect(&first, SIGNAL(matchesMayHaveChanged()), &edit, SLOT(clear()));
    QObject::connect(&edit, SIGNAL(returnPressed()), &first, SLOT(deleteLater()));
    edit.setPathExpression(&second);
    PathRecorder recorder(&first);
    QTest::keyClicks(&edit, text("s"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(recorder.take(), QString());
    first.setString(text("first"));
    QCOMPARE(edit.text(), text("s"));
    QCOMPARE(second.getString(PathExpression::AllParts), text("s"));
}

QTEST_MAIN(tst_PathExpressionLineEdit)

#include "tst_pathexpressionlineedit.moc"

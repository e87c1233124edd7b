#include "pathexpressionlistwidget.h"
#include "pathfixtures.h"
#include "testbase.h"

typedef PathExpression::Parts Parts;

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/** The entries, the current one in angle brackets. */
static QString contentsOf(const QListWidget& list)
{
    QStringList texts;
    for (int row = 0; row < list.count(); ++row) {
        const QString entry = list.item(row)->text();
        texts << (row == list.currentRow() ? QLatin1Char('<') + entry + QLatin1Char('>') : entry);
    }
    return texts.join(QLatin1String(", "));
}

class tst_PathExpressionListWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void offersWhatTheSourceMatches();
    void followsExpressionAndSource();
    void makesAnOptionsSourceOfItsOwn();
    void saysThatThereAreNoOptions();
    void choosingWritesTheText();
    void showingTheCurrentTextCompletesAnEdit();
    void withoutExpressionNothingIsWritten();
    void ownWritesDoNotRebuildTheList();
    void leavesFormerExpressionsAlone();
};

struct Format
{
    Format()
        : info(text("f"))
    {
        addTestType(&info, "A", "x");
        addTestType(&info, "B", "x y");
        addTestType(&info, "C", "y");
        FormatRegistry::getInstance()->addFormat(&info);
    }
    FormatInfo info;
};

void tst_PathExpressionListWidget::offersWhatTheSourceMatches()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("g/B"));
    PathExpression source;
    source.setString(text("f/*/y"));
    PathExpressionListWidget list(&expression, Parts(2), &source);
    QCOMPARE(list.getPathExpression(), &expression);
    QCOMPARE(list.getOptionsSourcePathExpression(), &source);
    QCOMPARE(int(list.getParts()), 2);
    QCOMPARE(contentsOf(list), text("<B>, C"));
    list.setParts(Parts(4));
    QCOMPARE(contentsOf(list), text("y"));
    list.setParts(Parts(3));
    QCOMPARE(contentsOf(list), text("f/B, f/C")); // the expression's text is not added
    list.setOptionsSourcePathExpression(nullptr);
    QCOMPARE(contentsOf(list), text("Null options source path expression set!"));
}

void tst_PathExpressionListWidget::followsExpressionAndSource()
{
    const Format format;
    PathExpression expression;
    PathExpression source;
    PathExpressionListWidget list(&expression, Parts(2), &source);
    QCOMPARE(contentsOf(list), text("A, B, C"));
    expression.setString(text("/C"));
    QCOMPARE(contentsOf(list), text("A, B, <C>"));
    source.setString(text("*/*/y"));
    QCOMPARE(contentsOf(list), text("B, <C>"));
    expression.setString(text("/c"));
    QCOMPARE(contentsOf(list), text("B, C"));
    {
        FormatInfo other(text("g"));
        addTestType(&other, "D", "y");
        FormatRegistry::getInstance()->addFormat(&other);
        QCOMPARE(contentsOf(list), text("B, C, D"));
    }
    QCOMPARE(contentsOf(list), text("B, C"));
}

void tst_PathExpressionListWidget::makesAnOptionsSourceOfItsOwn()
{
    const Format format;
    PathExpression expression;
    PathExpressionListWidget list(&expression, Parts(2));
    QVERIFY(list.getOptionsSourcePathExpression());
    QVERIFY(list.getOptionsSourcePathExpression() != &expression);
    QCOMPARE(list.getOptionsSourcePathExpression()->parent(), static_cast<QObject*>(&list));
    QCOMPARE(contentsOf(list), text("A, B, C"));
}

void tst_PathExpressionListWidget::saysThatThereAreNoOptions()
{
    const Format format;
    PathExpression expression;
    PathExpression source;
    source.setString(text("nothing"));
    PathExpressionListWidget list(&expression, Parts(2), &source);
    QCOMPARE(contentsOf(list), text("No options"));
    list.setCurrentRow(0); // an entry like any other
    QCOMPARE(expression.getString(Parts(2)), text("No options"));
}

void tst_PathExpressionListWidget::choosingWritesTheText()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("f//x"));
    PathExpressionListWidget list(&expression, Parts(2));
    list.resize(200, 200);
    list.show();
    list.setCurrentRow(1);
    QCOMPARE(expression.getString(PathExpression::AllParts), text("f/B/x"));
    QCOMPARE(contentsOf(list), text("A, <B>, C"));
    QTest::keyClick(&list, Qt::Key_Down);
    QCOMPARE(expression.getString(PathExpression::AllParts), text("f/C/x"));
    PathUndoer undoer(&expression, text("f/C/x"));
    expression.disconnect(&list); // so that the entry stays current
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.visualItemRect(list.item(0)).center());
    QCOMPARE(undoer.take(), QStringList() << text("f/A/x") << text("f/A/x")); // became current, and was clicked
    QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.visualItemRect(list.item(0)).center());
    QCOMPARE(undoer.take(), QStringList() << text("f/A/x"));
}

void tst_PathExpressionListWidget::showingTheCurrentTextCompletesAnEdit()
{
    FormatInfo format(text("f"));
    addTestType(&format, "A", "");
    addTestType(&format, "AB", "");
    FormatRegistry::getInstance()->addFormat(&format);
    PathExpression expression;
    PathExpressionListWidget list(&expression, Parts(2));
    PathRecorder recorder(&expression);
    expression.setStringPrefix(text("A"), Parts(2));
    QCOMPARE(contentsOf(list), text("<A>, AB"));
    QCOMPARE(expression.getMatchingMessageInfos().size(), 1); // not a prefix any more
    recorder.take();
    expression.setStringPrefix(text("a"), Parts(2));
    QCOMPARE(contentsOf(list), text("A, AB"));
    QCOMPARE(expression.getMatchingMessageInfos().size(), 2);
}

void tst_PathExpressionListWidget::withoutExpressionNothingIsWritten()
{
    const Format format;
    PathExpression source;
    PathExpressionListWidget list(nullptr, Parts(2), &source);
    PathRecorder recorder(&source);
    QCOMPARE(contentsOf(list), text("A, B, C"));
    list.setCurrentRow(1);
    QCOMPARE(contentsOf(list), text("A, <B>, C"));
    QCOMPARE(recorder.take(), QString());
}

void tst_PathExpressionListWidget::ownWritesDoNotRebuildTheList()
{
    const Format format;
    PathExpression expression;
    // The expression is its own options source: were the list rebuilt, only what was chosen would be left.
    PathExpressionListWidget list(&expression, Parts(2), &expression);
    list.setCurrentRow(1);
    QCOMPARE(expression.getString(Parts(2)), text("B"));
    QCOMPARE(contentsOf(list), text("A, <B>, C"));
    expression.setString(text("/C"));
    QCOMPARE(contentsOf(list), text("<C>"));
}

void tst_PathExpressionListWidget::leavesFormerExpressionsAlone()
{
    const Format format;
    PathExpression first;
    PathExpression second;
    PathExpression source;
    PathExpressionListWidget list(&first, Parts(2), &source);
    list.setPathExpression(&second);
    second.setString(text("/B"));
    first.setString(text("/A"));
    QCOMPARE(contentsOf(list), text("A, <B>, C"));
    list.setCurrentRow(2);
    QCOMPARE(first.getString(Parts(2)), text("A"));
    PathExpression otherSource;
    list.setOptionsSourcePathExpression(&otherSource);
    source.setString(text("nothing"));
    QCOMPARE(contentsOf(list), text("A, B, <C>"));
    list.setPathExpression(nullptr);
    second.setString(text("/A"));
    QCOMPARE(contentsOf(list), text("A, B, C"));
}

QTEST_MAIN(tst_PathExpressionListWidget)

#include "tst_pathexpressionlistwidget.moc"

#include "pathexpressioncombobox.h"
#include "pathfixtures.h"
#include "testbase.h"

typedef PathExpression::Parts Parts;

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

/** The entries, the current one in angle brackets. */
static QString contentsOf(const QComboBox& box)
{
    QStringList texts;
    for (int index = 0; index < box.count(); ++index) {
        const QString entry = box.itemText(index);
        texts << (index == box.currentIndex() ? QLatin1Char('<') + entry + QLatin1Char('>') : entry);
    }
    return texts.join(QLatin1String(", "));
}

class tst_PathExpressionComboBox : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void offersAllAndWhatTheSourceMatches();
    void showsATextThatIsNoOptionFirst();
    void saysWhatIsMissing();
    void wildCardIsShownEvenWhenItIsNotOffered();
    void followsExpressionAndSource();
    void choosingWritesTheText();
    void choosingAllSetsTheWildCard();
    void optionThatReadsLikeAllIsTheWildCard();
    void renamedAllIsWhatIsCompared();
    void rebuildingWritesNothing();
    void ownWritesDoNotRebuildTheBox();
    void boxesNarrowEachOther();
    void leavesFormerExpressionsAlone();
};

struct Format
{
    explicit Format(const char* third = "C")
        : info(text("f"))
    {
        addTestType(&info, "A", "x");
        addTestType(&info, "B", "x y");
        addTestType(&info, third, "y");
        FormatRegistry::getInstance()->addFormat(&info);
    }
    FormatInfo info;
};

void tst_PathExpressionComboBox::offersAllAndWhatTheSourceMatches()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("f/B"));
    PathExpression source;
    PathExpressionComboBox box(&expression, Parts(2), &source);
    QCOMPARE(box.getPathExpression(), &expression);
    QCOMPARE(box.getOptionsSourcePathExpression(), &source);
    QCOMPARE(int(box.getParts()), 2);
    QVERIFY(box.getAllOptionEnabled());
    QCOMPARE(contentsOf(box), text("All, A, <B>, C"));
    box.setAllOptionEnabled(false);
    QVERIFY(!box.getAllOptionEnabled());
    QCOMPARE(contentsOf(box), text("A, <B>, C"));
    box.setParts(Parts(1));
    QCOMPARE(contentsOf(box), text("<f>"));
}

void tst_PathExpressionComboBox::showsATextThatIsNoOptionFirst()
{
    const Format format;
    PathExpression expression;
    PathExpressionComboBox box(&expression, Parts(2));
    QVERIFY(box.getOptionsSourcePathExpression());
    QCOMPARE(box.getOptionsSourcePathExpression()->parent(), static_cast<QObject*>(&box));
    QCOMPARE(contentsOf(box), text("<>, All, A, B, C"));
    expression.setString(text("b"), Parts(2));
    QCOMPARE(contentsOf(box), text("<b>, All, A, B, C"));
    box.setAllOptionEnabled(false);
    QCOMPARE(contentsOf(box), text("<b>, A, B, C"));
    expression.setString(text("All"), Parts(2)); // found among the entries, not the options
    box.setAllOptionEnabled(true);
    QCOMPARE(contentsOf(box), text("<All>, A, B, C"));
    QVERIFY(!expression.isWildCard(Parts(2)));
}

void tst_PathExpressionComboBox::saysWhatIsMissing()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("f/B"));
    PathExpression source;
    PathExpressionComboBox box;
    QCOMPARE(contentsOf(box), text("<Null path expression set!>"));
    box.setParts(Parts(2));
    box.setOptionsSourcePathExpression(nullptr);
    QCOMPARE(contentsOf(box), text("<Null path expression set!>"));
    box.setPathExpression(&expression);
    QCOMPARE(contentsOf(box), text("<Null options source path expression set!>"));
    source.setString(text("nothing"));
    box.setOptionsSourcePathExpression(&source);
    QCOMPARE(contentsOf(box), text("<No options>"));
    expression.setWildCard(Parts(2));
    QCOMPARE(contentsOf(box), text("<No options>"));
    QCOMPARE(expression.getString(PathExpression::AllParts), text("f/*"));
}

void tst_PathExpressionComboBox::wildCardIsShownEvenWhenItIsNotOffered()
{
    const Format format;
    PathExpression expression;
    expression.setWildCard(Parts(2));
    PathExpressionComboBox box(&expression, Parts(2));
    QCOMPARE(contentsOf(box), text("<All>, A, B, C"));
    box.setAllOptionEnabled(false, text("Any"));
    QCOMPARE(contentsOf(box), text("<Any>, A, B, C"));
    expression.setString(text("/B"));
    QCOMPARE(contentsOf(box), text("A, <B>, C"));
}

void tst_PathExpressionComboBox::followsExpressionAndSource()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("/C"));
    PathExpression source;
    PathExpressionComboBox box(&expression, Parts(2), &source);
    source.setString(text("*/*/y"));
    QCOMPARE(contentsOf(box), text("All, B, <C>"));
    expression.setString(text("/B"));
    QCOMPARE(contentsOf(box), text("All, <B>, C"));
    expression.setString(text("y"), Parts(4)); // rebuilt, and the same
    QCOMPARE(contentsOf(box), text("All, <B>, C"));
    {
        FormatInfo other(text("g"));
        addTestType(&other, "D", "y");
        FormatRegistry::getInstance()->addFormat(&other);
        QCOMPARE(contentsOf(box), text("All, <B>, C, D"));
    }
    QCOMPARE(contentsOf(box), text("All, <B>, C"));
}

void tst_PathExpressionComboBox::choosingWritesTheText()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("f/C/x"));
    PathExpressionComboBox box(&expression, Parts(2));
    PathRecorder recorder(&expression);
    box.setCurrentIndex(1);
    QCOMPARE(recorder.take(), text("parts 2, text f/A/x, matches"));
    expression.setStringPrefix(text("A"), Parts(2));
    recorder.take();
    QTest::keyClick(&box, Qt::Key_Down);
    QCOMPARE(recorder.take(), text("parts 2, text f/B/x, matches"));
    expression.setStringPrefix(text("x"), Parts(4));
    recorder.take();
    box.setCurrentIndex(3);
    QCOMPARE(recorder.take(),
             text("parts 2, text f/C/x, matches, matches")); // the edit of another part is completed too
}

void tst_PathExpressionComboBox::choosingAllSetsTheWildCard()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("f/B"));
    PathExpressionComboBox box(&expression, Parts(2));
    PathRecorder recorder(&expression);
    box.setCurrentIndex(0);
    QVERIFY(expression.isWildCard(Parts(2)));
    QCOMPARE(recorder.take(), text("parts 2, text f/*, matches")); // never the text "All"
    QCOMPARE(contentsOf(box), text("<All>, A, B, C"));
}

void tst_PathExpressionComboBox::optionThatReadsLikeAllIsTheWildCard()
{
    const Format format("All");
    PathExpression expression;
    expression.setString(text("f/B"));
    PathExpressionComboBox box(&expression, Parts(2));
    QCOMPARE(contentsOf(box), text("All, A, <B>, All"));
    box.setAllOptionEnabled(false, text("All"));
    QCOMPARE(contentsOf(box), text("A, <B>, All"));
    box.setCurrentIndex(2);
    QVERIFY(expression.isWildCard(Parts(2)));
}

void tst_PathExpressionComboBox::renamedAllIsWhatIsCompared()
{
    const Format format("All");
    PathExpression expression;
    expression.setString(text("f/B"));
    PathExpressionComboBox box(&expression, Parts(2));
    box.setAllOptionEnabled(true, text("every"));
    QCOMPARE(contentsOf(box), text("every, A, <B>, All"));
    box.setCurrentIndex(3);
    QCOMPARE(expression.getString(Parts(2)), text("All"));
    box.setCurrentIndex(0);
    QVERIFY(expression.isWildCard(Parts(2)));
}

void tst_PathExpressionComboBox::rebuildingWritesNothing()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("f/B"));
    PathExpression source;
    PathExpressionComboBox box(&expression, Parts(2), &source);
    PathRecorder recorder(&expression);
    source.setString(text("*/*/x"));
    source.setString(text("nothing"));
    box.setOptionsSourcePathExpression(nullptr);
    box.setAllOptionEnabled(false);
    box.setOptionsSourcePathExpression(&source);
    expression.setStringPrefix(text("B"), Parts(2));
    QCOMPARE(recorder.take(), text("matches"));
    source.setString(QString());
    QCOMPARE(recorder.take(), QString());
    QCOMPARE(contentsOf(box), text("A, <B>, C"));
}

void tst_PathExpressionComboBox::ownWritesDoNotRebuildTheBox()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("/no option"));
    PathExpressionComboBox box(&expression, Parts(2));
    QCOMPARE(contentsOf(box), text("<no option>, All, A, B, C"));
    box.setCurrentIndex(3);
    QCOMPARE(contentsOf(box), text("no option, All, A, <B>, C"));
    box.setPathExpression(&expression);
    QCOMPARE(contentsOf(box), text("All, A, <B>, C"));
}

void tst_PathExpressionComboBox::boxesNarrowEachOther()
{
    const Format format;
    PathExpression expression;
    expression.setString(text("f/A/x"));
    PathExpression fields;
    fields.setString(text("f/A"));
    PathExpressionComboBox typeBox(&expression, Parts(2));
    PathExpressionComboBox fieldBox(&expression, Parts(4), &fields);
    QCOMPARE(contentsOf(fieldBox), text("All, <x>"));
    typeBox.setCurrentIndex(typeBox.findText(text("C")));
    fields.setString(expression.getString(Parts(3)));
    QCOMPARE(contentsOf(fieldBox), text("<x>, All, y"));
    fieldBox.setCurrentIndex(2);
    QCOMPARE(expression.getString(PathExpression::AllParts), text("f/C/y"));
    QCOMPARE(contentsOf(typeBox), text("All, A, B, <C>"));
}

void tst_PathExpressionComboBox::leavesFormerExpressionsAlone()
{
    const Format format;
    PathExpression first;
    PathExpression second;
    PathExpression source;
    PathExpressionComboBox box(&first, Parts(2), &source);
    box.setPathExpression(&second);
    second.setString(text("/B"));
    first.setString(text("/A"));
    QCOMPARE(contentsOf(box), text("All, A, <B>, C"));
    box.setCurrentIndex(3);
    QCOMPARE(first.getString(Parts(2)), text("A"));
    PathExpression otherSource;
    box.setOptionsSourcePathExpression(&otherSource);
    source.setString(text("nothing"));
    QCOMPARE(contentsOf(box), text("All, A, B, <C>"));
    box.setPathExpression(nullptr);
    second.setString(text("/A"));
    QCOMPARE(contentsOf(box), text("<Null path expression set!>"));
}

QTEST_MAIN(tst_PathExpressionComboBox)

#include "tst_pathexpressioncombobox.moc"

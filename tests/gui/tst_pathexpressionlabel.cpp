#include "pathexpressionlabel.h"
#include "pathfixtures.h"
#include "testbase.h"

typedef PathExpression::Parts Parts;

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

class tst_PathExpressionLabel : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsPartsAndFollowsThem();
    void saysThatThereIsNoExpression();
    void followsNoFormerExpression();
    void refreshesWhenSetToTheSameParts();
    void accountsForItself();
};

void tst_PathExpressionLabel::showsItsPartsAndFollowsThem()
{
    PathExpression expression;
    expression.setString(text("f/M/a"));
    PathExpressionLabel label(&expression, Parts(3));
    QCOMPARE(label.getPathExpression(), &expression);
    QCOMPARE(int(label.getParts()), 3);
    QCOMPARE(label.text(), text("f/M"));
    expression.setString(text("g/M/a"));
    QCOMPARE(label.text(), text("g/M"));
    label.setText(text("untouched"));
    expression.setString(text("b[1]"), Parts(12));
    expression.setConsiderSubMessages(true);
    QCOMPARE(label.text(), text("untouched"));
    expression.setStringPrefix(text("N"), Parts(2));
    QCOMPARE(label.text(), text("g/N"));
    label.setParts(PathExpression::AllParts);
    QCOMPARE(label.text(), text("g/N/b[1]"));
}

void tst_PathExpressionLabel::saysThatThereIsNoExpression()
{
    PathExpression expression;
    expression.setString(text("f"));
    PathExpressionLabel label;
    QCOMPARE(label.text(), text("No path expression set!"));
    label.setParts(Parts(1));
    QCOMPARE(label.text(), text("No path expression set!"));
    label.setPathExpression(&expression);
    QCOMPARE(label.text(), text("f"));
    label.setPathExpression(nullptr);
    QCOMPARE(label.text(), text("No path expression set!"));
    expression.setString(text("g"));
    QCOMPARE(label.text(), text("No path expression set!"));
}

void tst_PathExpressionLabel::followsNoFormerExpression()
{
    PathExpression first;
    PathExpression second;
    PathExpressionLabel label(&first);
    // "Every connection" from the former one: also those that others made.
    QObject::connect(&first, SIGNAL(expressionChanged(const QString&)), &label, SLOT(setText(const QString&)));
    label.setPathExpression(&second);
    second.setString(text("second"));
    first.setString(text("first"));
    QCOMPARE(label.text(), text("second"));
}

void tst_PathExpressionLabel::refreshesWhenSetToTheSameParts()
{
    PathExpression expression;
    expression.setString(text("f"));
    PathExpressionLabel label(&expression, Parts(1));
    label.setText(text("other"));
    label.setParts(Parts(1));
    QCOMPARE(label.text(), text("f"));
}

void tst_PathExpressionLabel::accountsForItself()
{
    MemLeakTracer* tracer = MemLeakTracer::getInstance();
    {
        PathExpressionLabel label;
        QCOMPARE(tracer->getUnlevelReport().filter(text("PathExpressionLabel")).size(), 1);
    }
    QCOMPARE(tracer->getUnlevelReport(), QStringList());
}

QTEST_MAIN(tst_PathExpressionLabel)

#include "tst_pathexpressionlabel.moc"

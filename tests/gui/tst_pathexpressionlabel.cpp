#include "pathexpressionlabel.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"

class tst_PathExpressionLabel : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsPartsAndFollowsThem();
    void followsNoFormerExpression();
};

void tst_PathExpressionLabel::showsItsPartsAndFollowsThem()
{
    PathExpression expression;
    expression.setString(text("f/M/a"));
    PathExpressionLabel label(&expression, Parts(3));
    QCOMPARE(MemLeakTracer::getInstance()->getLiveCount(text("PathExpressionLabel")), qint64(1));
    QCOMPARE(label.text(), text("f/M"));
    expression.setString(text("g/M/a"));
    QCOMPARE(label.text(), text("g/M"));
    label.setText(text("untouched"));
    expression.setString(text("b[1]"), Parts(12));
    QCOMPARE(label.text(), text("untouched"));
    label.setParts(Parts(3));
    QCOMPARE(label.text(), text("g/M"));
    expression.setStringPrefix(text("N"), Parts(2));
    QCOMPARE(label.text(), text("g/N"));
    label.setParts(PathExpression::AllParts);
    QCOMPARE(label.text(), text("g/N/b[1]"));
}

void tst_PathExpressionLabel::followsNoFormerExpression()
{
    PathExpression first;
    PathExpression second;
    PathExpressionLabel label;
    QCOMPARE(label.text(), text("No path expression set!"));
    first.setString(text("at once"));
    label.setPathExpression(&first);
    QCOMPARE(label.text(), text("at once"));
    // Every connection from the former one goes: also those that others made.
    QObject::connect(&first, SIGNAL(expressionChanged(const QString&)), &label, SLOT(setText(const QString&)));
    label.setPathExpression(&second);
    second.setString(text("second"));
    first.setString(text("first"));
    QCOMPARE(label.text(), text("second"));
    label.setPathExpression(nullptr);
    second.setString(text("third"));
    QCOMPARE(label.text(), text("No path expression set!"));
}

QTEST_MAIN(tst_PathExpressionLabel)

#include "tst_pathexpressionlabel.moc"

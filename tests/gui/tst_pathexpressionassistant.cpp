#include "pathexpressionassistant.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlineedit.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"
#include "waitfor.h"

#include <QAbstractItemView>
#include <QCompleter>
#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

class tst_PathExpressionAssistant : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void completesStepByStep();
    void marksWhatMatchesNothing();
    void helpsAnyLine();
    void leavesTheLineAsItWas();
    void offersFromLeftToRight();
};

/** What is offered below @p edit; null when nothing is. */
static QString offered(const QLineEdit& edit)
{
    QCoreApplication::processEvents();
    QAbstractItemView* popup = edit.completer()->popup();
    return popup->isVisible() ? entriesText(popup->model(), -1) : QString();
}

static void press(const QLineEdit& edit, Qt::Key key)
{
    QTest::keyClick(edit.completer()->popup(), key);
}

/** A window with @p edit in it, which has the focus. */
struct Window : QWidget
{
    explicit Window(QWidget* edit)
    {
        edit->setParent(this);
        edit->resize(200, 30);
        resize(220, 60);
        show();
        activateWindow();
        edit->setFocus();
        hasFocus = waitFor([edit] { return edit->hasFocus(); });
    }
    bool hasFocus;
};

void tst_PathExpressionAssistant::completesStepByStep()
{
    const LetterFormat format;
    PathExpression expression;
    PathExpressionLineEdit* edit = new PathExpressionLineEdit(&expression);
    new PathExpressionAssistant(edit);
    Window window(edit);
    QVERIFY(window.hasFocus);
    QTest::keyClick(edit, Qt::Key_Down);
    QCOMPARE(offered(*edit), text("f"));
    QTest::keyClick(edit, Qt::Key_Escape);
    edit->completer()->popup()->hide();
    QTest::keyClicks(edit, text("f/"));
    QCOMPARE(offered(*edit), text("f/A, f/B, f/C"));
    press(*edit, Qt::Key_Down);
    press(*edit, Qt::Key_Down);
    press(*edit, Qt::Key_Return);
    QVERIFY(waitFor([&] { return expression.getString(PathExpression::AllParts) == text("f/B"); }));
    QCOMPARE(edit->text(), text("f/B"));
    QTest::keyClicks(edit, text("/"));
    QCOMPARE(offered(*edit), text("f/B/x, f/B/y"));
    QTest::keyClicks(edit, text("Y"));
    QCOMPARE(offered(*edit), text("f/B/y"));
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, text("y"));
    QCOMPARE(offered(*edit), QString()); // there is nothing left to be completed
    edit->setPathExpression(nullptr);
    QTest::keyClick(edit, Qt::Key_Down);
    QCOMPARE(offered(*edit), QString());
}

/** Whether @p edit has a mark below its text. */
static bool isMarked(QLineEdit* edit)
{
    QImage image(edit->size(), QImage::Format_RGB32);
    edit->render(&image);
    for (int x = 0; x < image.width(); ++x) {
        const QColor colour(image.pixel(x, image.height() - 3));
        if (colour.red() > colour.green() + 80)
            return true;
    }
    return false;
}

void tst_PathExpressionAssistant::marksWhatMatchesNothing()
{
    const LetterFormat format("Type");
    PathExpression expression;
    PathExpressionLineEdit* edit = new PathExpressionLineEdit(&expression);
    PathExpressionAssistant* assistant = new PathExpressionAssistant(edit);
    edit->setAccessibleDescription(text("A path"));
    Window window(edit);
    QVERIFY(window.hasFocus);
    const char* const nothing = "No known message type or field is called so";
    // Keys, with \n for Return; what is said of the text then.
    const TextRow rows[] = {{"f/ty", ""},
                            {"f/ty\n", nothing},
                            {"f/Type\n", ""},
                            {"f/Type/z", nothing},
                            {"", ""},
                            {"f/T*\n", "character 4: the wildcard stands alone; a star in a name is written \\*"},
                            {"*/*/y[3]", nothing},
                            {"f", ""}};
    const auto type = [&](const QString& keys) {
        edit->selectAll();
        QTest::keyClick(edit, Qt::Key_Delete);
        QTest::keyClicks(edit, QString(keys).remove(QLatin1Char('\n')));
        edit->completer()->popup()->hide();
        if (keys.endsWith(QLatin1Char('\n')))
            QTest::keyClick(edit, Qt::Key_Return);
        QCoreApplication::processEvents();
        const QString problem = assistant->getProblem();
        const bool isTold = edit->accessibleDescription() == (problem.isEmpty() ? text("A path") : problem);
        return isTold && isMarked(edit) != problem.isEmpty() ? problem : text("not told alike");
    };
    checkRows(rows, type);

    type(text("g/D/y\n"));
    QHelpEvent help(QEvent::ToolTip, QPoint(5, 5), edit->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(edit, &help);
    QVERIFY(QToolTip::text().contains(text(nothing)));
    FormatInfo late(text("g"));
    addTestType(&late, "D", "y");
    FormatRegistry::getInstance()->addFormat(&late);
    QVERIFY(waitFor([&] { return assistant->getProblem().isEmpty(); }));
    PathExpression other;
    other.setString(text("nobody"));
    edit->setPathExpression(&other);
    QVERIFY(waitFor([&] { return !assistant->getProblem().isEmpty(); }));
}

void tst_PathExpressionAssistant::offersFromLeftToRight()
{
    QApplication::setLayoutDirection(Qt::RightToLeft);
    QLineEdit edit;
    new PathExpressionAssistant(&edit);
    const Qt::LayoutDirection ofOptions = edit.completer()->popup()->layoutDirection();
    QApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(ofOptions, Qt::LeftToRight);
}

void tst_PathExpressionAssistant::helpsAnyLine()
{
    const LetterFormat format;
    PathExpression expression;
    PathExpressionComboBox* box = new PathExpressionComboBox(&expression, PathExpression::AllParts);
    box->setEditable(true);
    PathExpressionAssistant* assistant = new PathExpressionAssistant(box->lineEdit());
    Window window(box);
    box->lineEdit()->selectAll();
    QTest::keyClicks(box->lineEdit(), text("f/b/"));
    QVERIFY(waitFor([&] { return !assistant->getProblem().isEmpty(); })); // B it is, as only the last name is begun
    box->lineEdit()->selectAll();
    QTest::keyClicks(box->lineEdit(), text("f/B/"));
    QCOMPARE(offered(*box->lineEdit()), text("f/B/x, f/B/y"));
    press(*box->lineEdit(), Qt::Key_Down);
    press(*box->lineEdit(), Qt::Key_Return);
    QVERIFY(waitFor([&] { return assistant->getProblem().isEmpty(); }));
    QCOMPARE(box->lineEdit()->text(), text("f/B/x"));
}

void tst_PathExpressionAssistant::leavesTheLineAsItWas()
{
    PathExpression expression;
    expression.setString(text("nobody"));
    PathExpressionLineEdit edit(&expression);
    edit.setAccessibleDescription(text("A path"));
    PathExpressionAssistant* assistant = new PathExpressionAssistant(&edit);
    QVERIFY(!assistant->getProblem().isEmpty());
    edit.setAccessibleDescription(text("Another text"));
    delete assistant;
    QCOMPARE(edit.accessibleDescription(), text("Another text"));
    assistant = new PathExpressionAssistant(&edit);
    delete assistant;
    QCOMPARE(edit.accessibleDescription(), text("Another text"));
    QVERIFY(!edit.completer());
    QTest::keyClicks(&edit, text("x"));
    QTest::keyClick(&edit, Qt::Key_Return);
    QCOMPARE(expression.getString(PathExpression::AllParts), text("nobodyx"));
}

QTEST_MAIN(tst_PathExpressionAssistant)

#include "tst_pathexpressionassistant.moc"

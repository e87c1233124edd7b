#include "pathexpressioncombobox.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"

/** With "all on", "all off" or "all off TEXT" for the option that stands for all, too. */
struct Box : Chooser<PathExpressionComboBox>
{
    explicit Box(const char* thirdType = "C")
        : Chooser<PathExpressionComboBox>(thirdType)
    {
    }

    QString operator()(const QString& command)
    {
        const QStringList words = command.split(' ');
        if (words.first() == "all" && words.size() == 2)
            widget.setAllOptionEnabled(words.at(1) == "on");
        else if (words.first() == "all")
            widget.setAllOptionEnabled(words.at(1) == "on", words.at(2));
        return Chooser<PathExpressionComboBox>::operator()(command);
    }
};

class tst_PathExpressionComboBox : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void offersAllAndWhatTheSourceMatches();
    void optionThatReadsLikeAllIsTheWildCard();
    void followsItsExpressions();
    void choosingWritesTheText();
    void listenersMayChangeIt();
};

void tst_PathExpressionComboBox::offersAllAndWhatTheSourceMatches()
{
    Box box;
    const TextRow rows[] = {
        {"source", "<>, All, A, B, C"},
        {"set f/B", "All, A, <B>, C"},
        {"part 2 b", "<b>, All, A, B, C"}, // no option, and yet shown
        {"all off", "<b>, A, B, C"},
        {"parts 1", "<f>"},
        {"part 2 All", "<f>"},
        {"parts 2", "<All>, A, B, C"},
        {"all on", "<All>, A, B, C"}, // found among the entries, not the options

        // What is missing is said.
        {"expression off", "<Null path expression set!>"},
        {"options off", "<Null path expression set!>"},
        {"expression on", "<Null options source path expression set!>"},
        {"source nothing", "<Null options source path expression set!>"},
        {"options on", "<No options>"},
        {"part 2 *", "<No options>"},

        // The wild card is shown even when it is not offered.
        {"source", "<All>, A, B, C"},
        {"all off Any", "<Any>, A, B, C"},
        {"set /B", "A, <B>, C"},

        // The box is not rebuilt by what it writes.
        {"all on", "All, A, <B>, C"},
        {"set /no option", "<no option>, All, A, B, C"},
        {"choose 3", "no option, All, A, <B>, C"},
        {"expression on", "All, A, <B>, C"},
    };
    checkRows(rows, std::ref(box));
}

void tst_PathExpressionComboBox::optionThatReadsLikeAllIsTheWildCard()
{
    Box box("All");
    const auto play = [&](const QString& command) {
        const QString offered = box(command);
        return offered + text(box.expression.isWildCard(Parts(2)) ? " all" : "");
    };
    const TextRow ambiguous[] = {
        {"set f/B", "All, A, <B>, All"},    {"all off All", "A, <B>, All"},
        {"choose 2", "A, B, <All> all"},    {"all on every", "<every>, A, B, All all"},
        {"choose 3", "every, A, B, <All>"}, {"choose 0", "<every>, A, B, All all"},
    };
    checkRows(ambiguous, play);
}

void tst_PathExpressionComboBox::followsItsExpressions()
{
    Box box;
    box("all off");
    checkThatItFollows(&box);
    QCOMPARE(box("part 4 y"), text("<B>, C")); // rebuilt, and the same
    Box other;
    other("all off");
    checkThatItLeavesFormerExpressionsAlone(&other);
}

void tst_PathExpressionComboBox::choosingWritesTheText()
{
    Box box;
    box.expression.setString("f/C/x");
    PathRecorder recorder(&box.expression);
    const auto written = [&](const QString& command) {
        if (command == "down")
            QTest::keyClick(&box.widget, Qt::Key_Down);
        else
            box(command);
        return recorder.take();
    };
    const TextRow rows[] = {
        {"choose 1", "parts 2, text f/A/x, matches"},
        {"down", "parts 2, text f/B/x, matches"},
        {"type 4 x", "matches"},
        {"choose 3", "parts 2, text f/C/x, matches, matches"}, // the edit of another part is completed too
        {"choose 0", "parts 2, text f/*/x, matches"},          // never the text "All"
        {"set f/B", "parts 6, text f/B, matches"},

        // Rebuilding writes nothing.
        {"source */*/x", ""},
        {"source nothing", ""},
        {"options off", ""},
        {"all off", ""},
        {"options on", ""},
        {"type 2 B", "matches"},
        {"source", ""},
    };
    checkRows(rows, written);
    QCOMPARE(box.entries(), text("A, <B>, C"));
}

void tst_PathExpressionComboBox::listenersMayChangeIt()
{
    Box box;
    box("all off");
    checkThatListenersMayChangeIt(&box, SIGNAL(currentIndexChanged(int)));
}

QTEST_MAIN(tst_PathExpressionComboBox)

#include "tst_pathexpressioncombobox.moc"

#include "childprocess.h"
#include "dbg.h"
#include "testbase.h"
#include "textrows.h"

#include <QCoreApplication>

#include <cstdio>

class tst_Dbg : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void patternsChooseSubModules();
    void everyoneWhoAskedIsRemembered();
    void reportIsOneCompleteLine();
    void reportAbortsOnlyWhenToldTo();
};

// The parts of the program that a child process runs.

static int printAnswers(const QStringList& names)
{
    for (int i = 0; i < names.size(); ++i) {
        const QByteArray module = names.at(i).section(QLatin1Char('/'), 0, 0).toLatin1();
        const QByteArray subModule = names.at(i).section(QLatin1Char('/'), 1).toLatin1();
        if (dbg_SubModActive(module.constData(), subModule.constData()) == 1)
            std::printf("%s\n", qPrintable(names.at(i)));
    }
    return 0;
}

static int assertTwice()
{
    for (int i = 0; i < 2; ++i)
        dbg_Assert("corvelgui", "Sub", 0, "f", "file.cpp", 187, "not negative");
    return 7;
}

static int assertWith(const QStringList& arguments)
{
    const QByteArray message = arguments.at(0) == QLatin1String("null") ? QByteArray() : arguments.at(0).toLocal8Bit();
    const char* const text = message.isNull() ? 0 : message.constData();
    dbg_Assert(message.isNull() ? 0 : "corvelgui", message.isNull() ? 0 : "Sub", arguments.at(1).toInt(),
               message.isNull() ? 0 : "function", message.isNull() ? 0 : "file.cpp", 12, text);
    return 0;
}

// The names of those of a fixed set of sub-modules that are active with CORVEL_DEBUG set to the patterns.
static QString activeWith(const QString& patterns)
{
    const ChildResult child =
        runChild(QStringList() << QLatin1String("answers") << QLatin1String("gui/Tree") << QLatin1String("gui/Label")
                               << QLatin1String("guide/Tree") << QLatin1String("core/Tree") << QLatin1String("core/"),
                 QStringList(QLatin1String("CORVEL_DEBUG=") + patterns));
    if (child.crashed || child.exitCode != 0)
        return QLatin1String("child failed: ") + QString::fromLocal8Bit(child.errors.constData());
    return QString::fromLocal8Bit(child.output.constData()).simplified();
}

void tst_Dbg::patternsChooseSubModules()
{
    const TextRow rows[] = {{"", ""},
                            {"gui", "gui/Tree gui/Label"}, // a module's name means all of it
                            {" core/Tree ,, gui/Label,", "gui/Label core/Tree"},
                            {"*/Tree", "gui/Tree guide/Tree core/Tree"},
                            {"core/*", "core/Tree core/"},
                            {"g*/T*e", "gui/Tree guide/Tree"},
                            {"*e*/*re*", "guide/Tree core/Tree"},
                            {"gui/?ree,gui/?abe", "gui/Tree"}, // one character each
                            {"GUI", ""},
                            {"gui/Tre,ui/Tree", ""}};
    checkRows(rows, activeWith);
}

void tst_Dbg::everyoneWhoAskedIsRemembered()
{
    QVERIFY(!dbg_AskedSubModules().contains(QLatin1String("tests/Second")));
    dbg_SubModActive("tests", "Second");
    dbg_SubModActive("tests", "First");
    dbg_SubModActive("tests", "Second");
    dbg_SubModActive(0, 0);
    QCOMPARE(dbg_AskedSubModules().join(QLatin1String(" ")), QString::fromLatin1("/ tests/First tests/Second"));
}

static QString reportOf(const QString& levelAndMessage)
{
    const ChildResult child =
        runChild(QStringList() << QLatin1String("assertWith") << levelAndMessage.mid(2) << levelAndMessage.left(1),
                 QStringList());
    return QString::fromLocal8Bit(child.errors.constData()) + (child.exitCode ? text("failed") : QString());
}

void tst_Dbg::reportIsOneCompleteLine()
{
    const TextRow rows[] = {
        {"0 values < 1000", "corvel: assertion failed: values < 1000 (function at file.cpp:12, corvelgui/Sub)\n"},
        {"3 text", "corvel: assertion failed: text (function at file.cpp:12, corvelgui/Sub, level 3)\n"},
        {"0 %s %n 100%", "corvel: assertion failed: %s %n 100% (function at file.cpp:12, corvelgui/Sub)\n"},
        {"0 a\nb\n", "corvel: assertion failed: a b  (function at file.cpp:12, corvelgui/Sub)\n"},
        {"0 null", "corvel: assertion failed:  ( at :12, /)\n"}};
    checkRows(rows, reportOf);
}

void tst_Dbg::reportAbortsOnlyWhenToldTo()
{
    const QStringList twice(QLatin1String("assertTwice"));
    const QByteArray first("corvel: assertion failed: not negative (f at file.cpp:187, corvelgui/Sub)\n");
    const ChildResult returning = runChild(twice, QStringList(QLatin1String("CORVEL_ASSERT=report")));
    QVERIFY(!returning.crashed);
    QCOMPARE(returning.exitCode, 7);
    QCOMPARE(returning.errors, first + first);
    const ChildResult aborting = runChild(twice, QStringList(QLatin1String("CORVEL_ASSERT=abort")));
    QVERIFY(aborting.crashed);
    QCOMPARE(aborting.errors, first);
}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    const QStringList arguments = application.arguments();
    if (arguments.value(1) == QLatin1String("answers"))
        return printAnswers(arguments.mid(2));
    if (arguments.value(1) == QLatin1String("assertTwice"))
        return assertTwice();
    if (arguments.value(1) == QLatin1String("assertWith"))
        return assertWith(arguments.mid(2));
    tst_Dbg test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_dbg.moc"

#include "childprocess.h"
#include "dbg.h"
#include "testbase.h"

#include <QCoreApplication>

#include <cstdio>

class tst_Dbg : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void patternsChooseSubModules_data();
    void patternsChooseSubModules();
    void everyoneWhoAskedIsRemembered();
    void reportIsOneCompleteLine_data();
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

static QTestData& addRow(const char* name, const char* first, const char* second)
{
    return QTest::newRow(name) << QString::fromLatin1(first) << QString::fromLatin1(second);
}

void tst_Dbg::patternsChooseSubModules_data()
{
    QTest::addColumn<QString>("patterns");
    QTest::addColumn<QString>("active");
    addRow("nothing set", "", "");
    addRow("a module's name means all of it", "gui", "gui/Tree gui/Label");
    addRow("list with blanks and empty places", " core/Tree ,, gui/Label,", "gui/Label core/Tree");
    addRow("star for a sub-module", "*/Tree", "gui/Tree guide/Tree core/Tree");
    addRow("star may stand for nothing", "core/*", "core/Tree core/");
    addRow("star inside", "g*/T*e", "gui/Tree guide/Tree");
    addRow("several stars, found late", "*e*/*re*", "guide/Tree core/Tree");
    addRow("question mark is one character", "gui/?ree,gui/?abe", "gui/Tree");
    addRow("case matters", "GUI", "");
    addRow("a part is not the whole", "gui/Tre,ui/Tree", "");
}

void tst_Dbg::patternsChooseSubModules()
{
    QFETCH(QString, patterns);
    QFETCH(QString, active);
    QCOMPARE(activeWith(patterns), active);
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

void tst_Dbg::reportIsOneCompleteLine_data()
{
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("level");
    QTest::addColumn<QString>("line");
    addRow("plain", "values < 1000", "0")
        << QString::fromLatin1("values < 1000 (function at file.cpp:12, corvelgui/Sub)");
    addRow("level", "text", "3") << QString::fromLatin1("text (function at file.cpp:12, corvelgui/Sub, level 3)");
    addRow("not a format", "%s %n 100%", "0")
        << QString::fromLatin1("%s %n 100% (function at file.cpp:12, corvelgui/Sub)");
    addRow("line breaks", "a\nb\n", "0") << QString::fromLatin1("a b  (function at file.cpp:12, corvelgui/Sub)");
    addRow("nulls", "null", "0") << QString::fromLatin1(" ( at :12, /)");
}

void tst_Dbg::reportIsOneCompleteLine()
{
    QFETCH(QString, message);
    QFETCH(QString, level);
    QFETCH(QString, line);
    const ChildResult child = runChild(QStringList() << QLatin1String("assertWith") << message << level, QStringList());
    QCOMPARE(QString::fromLocal8Bit(child.errors.constData()),
             QString::fromLatin1("corvel: assertion failed: %1\n").arg(line));
    QCOMPARE(child.exitCode, 0);
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

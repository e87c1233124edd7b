#include "knownformats.h"
#include "testbase.h"

#include <cstdlib>

/** What expressions match, and what they offer. */
class tst_PathExpressionMatches : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void expressionMatches_data();
    void expressionMatches();
    void prefixMatchesUntilEditingIsComplete_data();
    void prefixMatchesUntilEditingIsComplete();
    void settingThePartEndsItsPrefix();
    void unfinishedTextIsNotMalformedWhileTyped_data();
    void unfinishedTextIsNotMalformedWhileTyped();
    void optionsAreThoseThatMatch_data();
    void optionsAreThoseThatMatch();
    void optionsEndWhereTheUserTypes_data();
    void optionsEndWhereTheUserTypes();
    void wildCardStandsForEverything();
    void matchesTellTheWayAndTheIndexes();
    void recursiveSubMessagesEnd();
    void typesThatComeLaterAreFound();
    void indexFindsWhatALookAtEveryFieldFinds();
};

void tst_PathExpressionMatches::expressionMatches_data()
{
    QTest::addColumn<QString>("whole");
    QTest::addColumn<bool>("considerSubMessages");
    QTest::addColumn<QString>("matches");

#define ROW(whole, sub, matches) QTest::newRow(whole " " #sub) << text(whole) << sub << text(matches)
    ROW("sense/View/time", false, "1.View | 1.View.time");
    ROW("link#2/ATTITUDE", false, "2.ATTITUDE | 2.ATTITUDE.roll");
    ROW("link/ATTITUDE/roll", false,
        "0.ATTITUDE 0.ATTITUDE 2.ATTITUDE | 0.ATTITUDE.roll 0.ATTITUDE.roll 0.ATTITUDE.roll 2.ATTITUDE.roll");
    ROW("link#1/ATTITUDE#1/roll", false, "0.ATTITUDE | 0.ATTITUDE.roll");
    ROW("*/ATTITUDE#2/roll#2", false, "0.ATTITUDE | 0.ATTITUDE.roll");
    ROW("*/*/roll#1", false, "0.ATTITUDE 0.ATTITUDE 2.ATTITUDE | 0.ATTITUDE.roll 0.ATTITUDE.roll 2.ATTITUDE.roll");
    ROW("*/ATTITUDE#3", false, " | ");
    ROW("link#3", false, " | ");
    ROW("*/*/time", false, "0.ATTITUDE 0.BATTERY 1.View | 0.ATTITUDE.time 0.BATTERY.time 1.View.time");
    ROW("//time", false, "0.ATTITUDE 0.BATTERY 1.View | 0.ATTITUDE.time 0.BATTERY.time 1.View.time");
    ROW("*/*/Roll", false, "0.BATTERY | 0.BATTERY.Roll");
    ROW("link#1/PING", false, "0.PING | ");
    ROW("link#1/PING/*", false, " | ");
    ROW("sense", false, "1.View | 1.View.time 1.View.object 1.View.host");
    ROW("sense/Vector/x", false, " | ");
    ROW("sense/Vector/x", true, "1.Vector | 1.Vector.x");
    ROW("sense/View/object/position/x", false, " | ");
    ROW("sense/View/object/position/x", true, "1.View | 1.Vector.x");
    ROW("sense/View/object[3]/position/x", true, "1.View | 1.Vector.x");
    ROW("sense/View/object[*]/position/x[*]", true, "1.View | 1.Vector.x");
    ROW("sense/View/host[3]/position/x", true, " | "); // not a repeated field
    ROW("sense/View/object/position/x[0]", true, " | ");
    ROW("sense/View/*/position/x", true, "1.View | 1.Vector.x");
    ROW("sense/View/host/*/*", true, "1.View | 1.Vector.x 1.Vector.y");
    ROW("sense/View/host/", true, "1.View | 1.Base.position 1.Base.speed");
    ROW("sense/View/host//y", true, "1.View | 1.Vector.y");
    ROW("*/BATTERY/mode/AUTO", false, "0.BATTERY | 0.BATTERY.mode.AUTO");
    ROW("*/*/*/*", false, "0.BATTERY | 0.BATTERY.mode.ARMED 0.BATTERY.mode.AUTO");
    ROW("*/BATTERY/voltages[2]", false, "0.BATTERY | 0.BATTERY.voltages");
    ROW("*/BATTERY/*[2]", false, "0.BATTERY | 0.BATTERY.voltages");
    ROW("*/BATTERY/[2]", false, "0.BATTERY | 0.BATTERY.voltages");
    ROW("*/*/time[2]", false, " | ");
    ROW("LINK/ATTITUDE", false, " | ");
    ROW("link/ATT", false, " | ");
    ROW("link /PING", false, " | ");
#undef ROW
}

void tst_PathExpressionMatches::expressionMatches()
{
    const Formats formats;
    QFETCH(QString, whole);
    QFETCH(bool, considerSubMessages);
    PathExpression expression;
    expression.setConsiderSubMessages(considerSubMessages);
    expression.setString(whole);
    QTEST(matchesOf(expression), "matches");
    QCOMPARE(expression.errorString(), QString());
}

void tst_PathExpressionMatches::prefixMatchesUntilEditingIsComplete_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("before");
    QTest::addColumn<QString>("after");

#define ROW(typed, before, after) QTest::newRow(typed) << text(typed) << text(before) << text(after)
    ROW("SE", "1.View", "");
    ROW("sense/v", "1.View", "");
    ROW("Sense/v", "", ""); // only the last name is being typed
    ROW("*/pi", "0.PING", "");
    ROW("*/*/ro", "0.ATTITUDE 0.BATTERY 0.ATTITUDE 2.ATTITUDE", "");
    ROW("*/*/roll", "0.ATTITUDE 0.BATTERY 0.ATTITUDE 2.ATTITUDE", "0.ATTITUDE 0.ATTITUDE 2.ATTITUDE");
    ROW("*/*/Roll", "0.ATTITUDE 0.BATTERY 0.ATTITUDE 2.ATTITUDE", "0.BATTERY");
    ROW("*/BATTERY/mode/a", "0.BATTERY", "");
    ROW("*/BATTERY/mode/armed", "0.BATTERY", "");
    ROW("*/BATTERY/mod/a", "", "");
    ROW("*/BATTERY/volt[2]", "", ""); // an index follows a name that is complete
#undef ROW
}

void tst_PathExpressionMatches::prefixMatchesUntilEditingIsComplete()
{
    const Formats formats;
    QFETCH(QString, typed);
    PathExpression expression;
    expression.setStringPrefix(typed, PathExpression::AllParts);
    QCOMPARE(expression.getString(PathExpression::AllParts), typed);
    QTEST(namesOf(expression.getMatchingMessageInfos()), "before");
    expression.completeEditing();
    QCOMPARE(expression.getString(PathExpression::AllParts), typed);
    QTEST(namesOf(expression.getMatchingMessageInfos()), "after");
}

void tst_PathExpressionMatches::settingThePartEndsItsPrefix()
{
    const Formats formats;
    PathExpression expression;
    expression.setStringPrefix(text("PI"), PathExpression::MessagePart);
    expression.setString(text("link#1"), PathExpression::FormatPart);
    QCOMPARE(matchesOf(expression), text("0.PING | ")); // another part: still being typed
    expression.setStringPrefix(text("batt"), PathExpression::MessagePart);
    expression.setStringPrefix(text("ro"), PathExpression::FieldPart);
    QCOMPARE(matchesOf(expression), text("0.BATTERY | 0.BATTERY.Roll")); // both
    expression.setString(QString(), PathExpression::FieldPart);
    expression.setString(text("PI"), PathExpression::MessagePart);
    QCOMPARE(matchesOf(expression), text(" | "));
    expression.setStringPrefix(text("PI"), PathExpression::MessagePart);
    QCOMPARE(matchesOf(expression), text("0.PING | "));
    expression.setString(text("link#1/PI"));
    QCOMPARE(matchesOf(expression), text(" | "));
}

void tst_PathExpressionMatches::unfinishedTextIsNotMalformedWhileTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("options");
    QTest::newRow("index begun") << text("*/BATTERY/voltages[") << text("link#1/BATTERY/voltages");
    QTest::newRow("index not closed") << text("*/BATTERY/voltages[1") << text("link#1/BATTERY/voltages");
    QTest::newRow("escape begun") << text("*/PI\\") << text("link#1/PING");
    QTest::newRow("number begun") << text("*/ATTITUDE#") << text("link#1/ATTITUDE#1 link#1/ATTITUDE#2 link#2/ATTITUDE");
}

void tst_PathExpressionMatches::unfinishedTextIsNotMalformedWhileTyped()
{
    const Formats formats;
    QFETCH(QString, typed);
    PathExpression expression;
    expression.setStringPrefix(typed, PathExpression::AllParts);
    QCOMPARE(expression.errorString(), QString());
    QTEST(optionsOf(expression, 15), "options");
    expression.completeEditing();
    QVERIFY(!expression.errorString().isEmpty());
}

void tst_PathExpressionMatches::optionsAreThoseThatMatch_data()
{
    QTest::addColumn<QString>("whole");
    QTest::addColumn<int>("parts");
    QTest::addColumn<QString>("options");

#define ROW(whole, parts, options) QTest::newRow(whole " " #parts) << text(whole) << parts << text(options)
    ROW("", 1, "link#1 sense link#2");
    ROW("*/ATTITUDE", 1, "link#1 link#2");
    ROW("*/*/voltages", 1, "link#1");
    ROW("*/*/roll", 2, "ATTITUDE#1 ATTITUDE#2 ATTITUDE");
    ROW("link#2", 2, "ATTITUDE");
    ROW("link", 3, "link#1/ATTITUDE#1 link#1/BATTERY link#1/ATTITUDE#2 link#1/PING link#2/ATTITUDE");
    ROW("*/ATTITUDE#1", 4, "time roll rollspeed pitch");
    ROW("link", 4, "time roll rollspeed pitch Roll voltages mode roll#1 roll#2");
    ROW("sense/View", 4, "time object host"); // sub-messages are gone into only where the path does
    ROW("sense/View/*", 4, "time object host");
    ROW("sense/View/host/position/*", 4, "host/position/x host/position/y");
    ROW("sense/View/*/*/x", 4, "object/position/x object/speed/x host/position/x host/speed/x");
    ROW("sense/View/object[2]/*/x", 15, "sense/View/object[2]/position/x sense/View/object[2]/speed/x");
    ROW("*/BATTERY/mode/*", 6, "BATTERY/mode/ARMED BATTERY/mode/AUTO");
    ROW("*/BATTERY/*[*]", 12, "time Roll voltages[*] mode");
    ROW("*/BATTERY/*[1]", 12, "voltages[1]");
    ROW("*/BATTERY/*[1]", 4, "voltages");
    ROW("*/BATTERY/*[1]", 8, "1");
    ROW("*/BATTERY/*", 8, "");
    ROW("*/*/time", 5, "link#1/time sense/time");
    ROW("*/*/roll", 15,
        "link#1/ATTITUDE#1/roll link#1/ATTITUDE#2/roll#1 link#1/ATTITUDE#2/roll#2 link#2/ATTITUDE/roll");
    ROW("nothing", 15, "");
    ROW("", 0, "");
#undef ROW
}

void tst_PathExpressionMatches::optionsAreThoseThatMatch()
{
    const Formats formats;
    QFETCH(QString, whole);
    QFETCH(int, parts);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(whole);
    QTEST(optionsOf(expression, parts), "options");
    const QStringList all = expression.getMatchingExpressionsStringList(Parts(parts));
    for (int maximum = 0; maximum <= all.size() + 1; ++maximum)
        QCOMPARE(expression.getMatchingExpressionsStringList(Parts(parts), maximum), all.mid(0, maximum));
}

void tst_PathExpressionMatches::optionsEndWhereTheUserTypes_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("typedParts");
    QTest::addColumn<int>("listedParts");
    QTest::addColumn<QString>("options");

#define ROW(typed, typedParts, listedParts, options)                                                                   \
    QTest::newRow(typed " in " #typedParts " of " #listedParts)                                                        \
        << text(typed) << typedParts << listedParts << text(options)
    ROW("", 15, 15, "link#1 sense link#2");
    ROW("L", 15, 15, "link#1 link#2");
    ROW("sense/", 15, 15, "sense/Vector sense/Base sense/View");
    ROW("sense/v", 15, 15, "sense/Vector sense/View");
    ROW("sense/View/", 15, 15, "sense/View/time sense/View/object sense/View/host");
    ROW("sense/View/H", 15, 15, "sense/View/host");
    ROW("sense/View/host/", 15, 15, "sense/View/host/position sense/View/host/speed");
    ROW("sense/View/host/sp", 15, 15, "sense/View/host/speed");
    ROW("*/*/ROLLS", 15, 15, "link#1/ATTITUDE#1/rollspeed");
    ROW("L", 1, 2, "ATTITUDE#1 BATTERY ATTITUDE#2 PING ATTITUDE"); // listed is not what is typed
    ROW("", 2, 2, "ATTITUDE#1 BATTERY ATTITUDE#2 PING Vector Base View ATTITUDE");
    ROW("at", 2, 2, "ATTITUDE#1 ATTITUDE#2 ATTITUDE");
    ROW("roll", 4, 4, "roll rollspeed Roll roll#1 roll#2");
#undef ROW
}

void tst_PathExpressionMatches::optionsEndWhereTheUserTypes()
{
    const Formats formats;
    QFETCH(QString, typed);
    QFETCH(int, typedParts);
    QFETCH(int, listedParts);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setStringPrefix(typed, Parts(typedParts));
    QTEST(optionsOf(expression, listedParts), "options");
}

void tst_PathExpressionMatches::wildCardStandsForEverything()
{
    const Formats formats;
    PathExpression expression;
    QVERIFY(!expression.isWildCard(Parts()));
    expression.setString(text("link#1/BATTERY/mode"));
    expression.setWildCard(PathExpression::FieldPart);
    QCOMPARE(expression.getString(PathExpression::AllParts), text("link#1/BATTERY/*"));
    QVERIFY(expression.isWildCard(PathExpression::FieldPart));
    QVERIFY(!expression.isWildCard(Parts(6)));
    QCOMPARE(optionsOf(expression, 4), text("time Roll voltages mode"));
    expression.setWildCard(PathExpression::AllParts);
    QCOMPARE(expression.getString(PathExpression::AllParts), text("*/*/*[*]"));
    QVERIFY(expression.isWildCard(PathExpression::AllParts));
    QCOMPARE(optionsOf(expression, 2), text("ATTITUDE#1 BATTERY ATTITUDE#2 View ATTITUDE"));
    expression.setString(text("\\*"), PathExpression::MessagePart);
    QVERIFY(!expression.isWildCard(PathExpression::MessagePart));
}

void tst_PathExpressionMatches::matchesTellTheWayAndTheIndexes()
{
    const Formats formats;
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(text("sense/*/object[2]/*/y[*]"));
    QStringList matches;
    Q_FOREACH (const PathExpression::Match& match, expression.getMatches()) {
        QString way = match.messageInfo->getName();
        for (int i = 0; i < match.fieldInfos.size(); ++i)
            way += QString::fromLatin1("/%1[%2]").arg(match.fieldInfos.at(i)->getName()).arg(match.indexes.at(i));
        matches << way;
    }
    QCOMPARE(matches,
             QStringList() << text("View/object[2]/position[-1]/y[-2]") << text("View/object[2]/speed[-1]/y[-2]"));
    QCOMPARE(optionsOf(expression, 15), text("sense/View/object[2]/position/y sense/View/object[2]/speed/y"));
    expression.setString(text("sense/View"));
    QCOMPARE(expression.getMatches().size(), 3);
    QCOMPARE(expression.getMatches().value(2).indexes, QVector<int>(1, PathExpression::NoIndex));
}

void tst_PathExpressionMatches::recursiveSubMessagesEnd()
{
    FormatInfo format(text("f"));
    MessageInfo* node = addTestType(&format, "Node", "value");
    Formats::addSub(node, "left", node);
    Formats::addSub(node, "right", node);
    FormatRegistry::getInstance()->addFormat(&format);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(text("f/Node/left/right/left/value"));
    QCOMPARE(matchesOf(expression), text("0.Node | 0.Node.value"));
    QCOMPARE(optionsOf(expression, 4), text("left/right/left/value"));
    expression.setString(text("f/Node/*/*/value"));
    QCOMPARE(optionsOf(expression, 4), text("left/left/value left/right/value right/left/value right/right/value"));

    // 2^63 ways: none is looked for twice where a field, or nothing, is the answer.
    const QString deep = QString::fromLatin1("*/").repeated(63);
    expression.setString(deep + text("nothing"), PathExpression::FieldPart);
    QCOMPARE(matchesOf(expression), text(" | "));
    QCOMPARE(optionsOf(expression, 4), QString());
    expression.setString(deep + text("value"), PathExpression::FieldPart);
    QCOMPARE(matchesOf(expression), text("0.Node | 0.Node.value"));
    const int count = expression.getMatchingExpressionsStringList(PathExpression::FieldPart).size();
    QVERIFY2(count > 10000 && count < 100000, qPrintable(QString::number(count)));
    QCOMPARE(expression.getMatchingExpressionsStringList(PathExpression::FieldPart, 200).size(), 200);

    // A name resolves at any depth, and the next is offered, by looking at what lies on the way only.
    const QString way = QString::fromLatin1("f/Node/") + QString::fromLatin1("left/right/").repeated(31);
    expression.setString(way + text("value"));
    QCOMPARE(matchesOf(expression), text("0.Node | 0.Node.value"));
    expression.setStringPrefix(way + text("R"), PathExpression::AllParts);
    QCOMPARE(optionsOf(expression, 15), way + text("right"));
}

void tst_PathExpressionMatches::typesThatComeLaterAreFound()
{
    FormatInfo hidden(text("hidden")); // not in the registry, but what it describes lies in a format that is
    FormatInfo format(text("f"));
    MessageInfo* node = addTestType(&format, "Node", "value");
    FormatRegistry::getInstance()->addFormat(&format);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(text("f/*/*/x"));
    QCOMPARE(optionsOf(expression, 15), QString());

    MessageInfo* point = addTestType(&format, "Point", "x value");
    Formats::addSub(node, "at", point); // the type changes, so that what follows it is numbered anew
    addTestType(&format, "Node", "node");
    FormatRegistry::getInstance()->updateFormat(&format);
    QCOMPARE(optionsOf(expression, 15), text("f/Node#1/at/x"));
    Formats::addSub(point, "next", point);
    Formats::addSub(point, "other", addTestType(&hidden, "Hidden", "x x", false));
    addTestType(&format, "Last", "x");
    FormatRegistry::getInstance()->updateFormat(&format);
    QCOMPARE(optionsOf(expression, 15), text("f/Node#1/at/x f/Point/next/x f/Point/other/x#1 f/Point/other/x#2"));
    expression.setString(text("*/*/*"));
    QCOMPARE(optionsOf(expression, 4), text("value at x next other node"));
    expression.setStringPrefix(text("*/*/X"), PathExpression::AllParts);
    QCOMPARE(optionsOf(expression, 15), text("f/Point/x f/Last/x"));
    FormatRegistry::getInstance()->removeFormat(&format);
    QCOMPARE(optionsOf(expression, 15), QString());
}

/** What the index must find, by looking at everything: names that begin so, or are so. */
static QVector<const FieldInfo*> lookAtEveryField(const FormatInfo& format, const QString& name, bool prefix)
{
    QVector<const FieldInfo*> found;
    const QString folded = name.toCaseFolded();
    Q_FOREACH (const MessageInfo* info, format.getMessageInfos()) {
        Q_FOREACH (const FieldInfo* field, info->getFieldInfos()) {
            if (prefix ? field->getName().toCaseFolded().startsWith(folded) : field->getName() == name)
                found.append(field);
        }
    }
    return found;
}

/** The names among @p fields, each once. */
static QStringList distinctNames(const QVector<const FieldInfo*>& fields)
{
    QStringList names;
    Q_FOREACH (const FieldInfo* field, fields)
        if (!names.contains(field->getName()))
            names.append(field->getName());
    return names;
}

void tst_PathExpressionMatches::indexFindsWhatALookAtEveryFieldFinds()
{
    const QString letters = text("abcABC_\xc3\xa4\xc3\x84ß\xce\xa3\xcf\x83\xcf\x82");
    srand(1511);
    FormatInfo format(text("f"));
    FormatRegistry::getInstance()->addFormat(&format);
    PathExpression expression;
    int found = 0;
    for (int i = 0; i < 500; ++i) {
        if (i % 50 == 0) { // the format grows while it is looked at
            for (int type = 0; type < 6; ++type) {
                MessageInfo* info = new MessageInfo(QString::number(type));
                for (int field = rand() % 60; field > 0; --field) {
                    QString name;
                    for (int length = 1 + rand() % 4; length > 0; --length)
                        name += letters.at(rand() % letters.size());
                    if (!info->getFieldInfo(name)) // so that names are listed as they are
                        info->addField(new TestFieldInfo(name));
                }
                format.addMessageInfo(info);
            }
            FormatRegistry::getInstance()->updateFormat(&format);
        }
        QString name;
        for (int length = rand() % 4; length > 0; --length)
            name += letters.at(rand() % letters.size());
        expression.setStringPrefix(text("f/*/") + name, PathExpression::AllParts);
        const QVector<const FieldInfo*> begin = lookAtEveryField(format, name, true);
        QVERIFY(expression.getMatchingFieldInfos() == begin);
        QCOMPARE(expression.getMatchingExpressionsStringList(PathExpression::AllParts).size(), begin.size());
        QCOMPARE(expression.getMatchingExpressionsStringList(PathExpression::FieldPart), distinctNames(begin));
        expression.completeEditing();
        if (!name.isEmpty())
            QVERIFY(expression.getMatchingFieldInfos() == lookAtEveryField(format, name, false));
        found += begin.size();
    }
    QVERIFY(found > 1000);
}

QTEST_MAIN(tst_PathExpressionMatches)

#include "tst_pathexpressionmatches.moc"

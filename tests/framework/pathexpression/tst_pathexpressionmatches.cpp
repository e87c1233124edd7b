#include "knownformats.h"
#include "testbase.h"

#include <cstdlib>

/** What an expression matches, "sub" before it for also in sub-messages. */
static QString matchesOfText(const QString& given)
{
    const QString mark = text("sub ");
    PathExpression expression;
    expression.setConsiderSubMessages(given.startsWith(mark));
    expression.setString(given.startsWith(mark) ? given.mid(mark.size()) : given);
    return expression.errorString() + matchesOf(expression);
}

/** The matching types while it is typed, and behind an arrow when it is complete. */
static QString matchesOfPrefix(const QString& given)
{
    PathExpression expression;
    expression.setStringPrefix(given, PathExpression::AllParts);
    const QString before = expression.errorString() + namesOf(expression.getMatchingMessageInfos());
    expression.completeEditing();
    if (expression.getString(PathExpression::AllParts) != given)
        return expression.getString(PathExpression::AllParts);
    return before + QLatin1String(" > ") +
           (expression.errorString().isEmpty() ? namesOf(expression.getMatchingMessageInfos()) : text("error"));
}

/** "2 sense" lists the options of part 2. */
static QString optionsOfText(QString given)
{
    const Parts parts = takeParts(&given);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(given);
    const QStringList all = expression.getMatchingExpressionsStringList(parts);
    for (int maximum = 0; maximum <= all.size() + 1; ++maximum)
        if (expression.getMatchingExpressionsStringList(parts, maximum) != all.mid(0, maximum))
            return QString::fromLatin1("other options when limited to %1").arg(maximum);
    return all.join(QLatin1String(" "));
}

/** "1 2 L": the options of the second parts while the text of the first is typed. */
static QString optionsOfPrefix(QString given)
{
    const Parts typed = takeParts(&given);
    const Parts listed = takeParts(&given);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setStringPrefix(given, typed);
    return expression.errorString() + optionsOf(expression, int(listed));
}

static QString randomName(int greatestLength)
{
    const QString letters = text("abcABC_\xc3\xa4\xc3\x84ß\xce\xa3\xcf\x83\xcf\x82");
    QString name;
    for (int length = rand() % (greatestLength + 1); length > 0; --length)
        name += letters.at(rand() % letters.size());
    return name;
}

/** What the index must find, by looking at everything: names that begin so, or are so. */
static QVector<const FieldInfo*> lookAtEveryField(const FormatInfo& format, const QString& name, bool prefix)
{
    QVector<const FieldInfo*> found;
    Q_FOREACH (const MessageInfo* info, format.getMessageInfos())
        Q_FOREACH (const FieldInfo* field, info->getFieldInfos())
            if (prefix ? field->getName().toCaseFolded().startsWith(name.toCaseFolded()) : field->getName() == name)
                found.append(field);
    return found;
}

/** What expressions match, and what they offer. */
class tst_PathExpressionMatches : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void expressionMatches()
    {
        const Formats formats;
        const TextRow rows[] = {
            {"link#2/ATTITUDE", "2.ATTITUDE | 2.ATTITUDE.roll"},
            {"link/ATTITUDE/roll",
             "0.ATTITUDE 0.ATTITUDE 2.ATTITUDE | 0.ATTITUDE.roll 0.ATTITUDE.roll 0.ATTITUDE.roll 2.ATTITUDE.roll"},
            {"link#1/ATTITUDE#1/roll", "0.ATTITUDE | 0.ATTITUDE.roll"},
            {"*/ATTITUDE#2/roll#2", "0.ATTITUDE | 0.ATTITUDE.roll"},
            {"*/*/roll#1", "0.ATTITUDE 0.ATTITUDE 2.ATTITUDE | 0.ATTITUDE.roll 0.ATTITUDE.roll 2.ATTITUDE.roll"},
            {"*/ATTITUDE#3", " | "},
            {"link#3", " | "},
            {"//time", "0.ATTITUDE 0.BATTERY 1.View | 0.ATTITUDE.time 0.BATTERY.time 1.View.time"},
            {"*/*/Roll", "0.BATTERY | 0.BATTERY.Roll"},
            {"link#1/PING", "0.PING | "},
            {"link#1/PING/*", " | "},
            {"sense", "1.View | 1.View.time 1.View.object 1.View.host"},
            {"sense/Vector/x", " | "},
            {"sub sense/Vector/x", "1.Vector | 1.Vector.x"},
            {"sense/View/object/position/x", " | "},
            {"sub sense/View/object/position/x", "1.View | 1.Vector.x"},
            {"sub sense/View/object[3]/position/x", "1.View | 1.Vector.x"},
            {"sub sense/View/object[*]/position/x[*]", "1.View | 1.Vector.x"},
            {"sub sense/View/host[3]/position/x", " | "}, // not a repeated field
            {"sub sense/View/object/position/x[0]", " | "},
            {"sub sense/View/*/position/x", "1.View | 1.Vector.x"},
            {"sub sense/View/host/*/*", "1.View | 1.Vector.x 1.Vector.y"},
            {"sub sense/View/host/", "1.View | 1.Base.position 1.Base.speed"},
            {"sub sense/View/host//y", "1.View | 1.Vector.y"},
            {"*/BATTERY/mode/AUTO", "0.BATTERY | 0.BATTERY.mode.AUTO"},
            {"*/*/*/*", "0.BATTERY | 0.BATTERY.mode.ARMED 0.BATTERY.mode.AUTO"},
            {"*/BATTERY/*[2]", "0.BATTERY | 0.BATTERY.voltages"},
            {"*/BATTERY/[2]", "0.BATTERY | 0.BATTERY.voltages"},
            {"*/*/time[2]", " | "},
            {"LINK/ATTITUDE", " | "},
            {"link/ATT", " | "},
            {"link /PING", " | "}};
        checkRows(rows, matchesOfText);
    }

    void namesOfTypesWithSeparatorsAreWrittenWithDots()
    {
        FormatInfo ros(text("ros"));
        addTestType(&ros, "geo/msg/Imu", "x msg");
        addTestType(&ros, "geo/msg/Image", "x");
        addTestType(&ros, "geo.msg.Image", "y");
        addTestType(&ros, "geo", "msg");
        addTestType(&ros, "std/Empty", "x");
        FormatRegistry::getInstance()->addFormat(&ros);
        const TextRow matches[] = {{"ros/geo.msg.Imu/x", "0.geo/msg/Imu | 0.geo/msg/Imu.x"},
                                   {"ros/geo\\/msg\\/Imu/x", "0.geo/msg/Imu | 0.geo/msg/Imu.x"},
                                   {"ros/geo.msg.Image#2/*", "0.geo.msg.Image | 0.geo.msg.Image.y"},
                                   {"ros/std/Empty/x", "0.std/Empty | 0.std/Empty.x"},
                                   {"*/std/Empty", "0.std/Empty | 0.std/Empty.x"},
                                   {"ros/geo/msg", "0.geo | 0.geo.msg"},
                                   {"ros/geo/msg/Imu", " | "}, // a type called geo comes first
                                   {"ros/std/*/x", " | "}};
        checkRows(matches, matchesOfText);
        const TextRow options[] = {{"15 15 ros/geo.msg.Im", "ros/geo.msg.Imu ros/geo.msg.Image#1 ros/geo.msg.Image#2"},
                                   {"15 15 ros/std/e", "ros/std.Empty/x"}};
        checkRows(options, optionsOfPrefix);
        PathExpression expression;
        expression.setupToMatchUnique(ros.getMessageInfos().at(1));
        QCOMPARE(expression.getString(PathExpression::AllParts), text("ros/geo.msg.Image#1"));
        QCOMPARE(namesOf(expression.getMatchingMessageInfos()), text("0.geo/msg/Image"));
    }

    void prefixMatchesUntilEditingIsComplete()
    {
        const Formats formats;
        const TextRow rows[] = {
            {"SE", "1.View > "},
            {"sense/v", "1.View > "},
            {"Sense/v", " > "}, // only the last name is being typed
            {"*/*/roll", "0.ATTITUDE 0.BATTERY 0.ATTITUDE 2.ATTITUDE > 0.ATTITUDE 0.ATTITUDE 2.ATTITUDE"},
            {"*/*/Roll", "0.ATTITUDE 0.BATTERY 0.ATTITUDE 2.ATTITUDE > 0.BATTERY"},
            {"*/BATTERY/mode/armed", "0.BATTERY > "},
            {"*/BATTERY/mod/a", " > "},
            {"*/BATTERY/volt[2]", " > "},                 // an index follows a name that is complete
            {"*/BATTERY/voltages[", "0.BATTERY > error"}, // unfinished is not malformed
            {"*/BATTERY/voltages[1", "0.BATTERY > error"},
            {"*/PI\\", "0.PING > error"},
            {"*/ATTITUDE#", "0.ATTITUDE 0.ATTITUDE 2.ATTITUDE > error"}};
        checkRows(rows, matchesOfPrefix);

        // Each part has a prefix of its own, which ends when it is set.
        PathExpression expression;
        expression.setStringPrefix(text("PI"), PathExpression::MessagePart);
        expression.setString(text("link#1"), PathExpression::FormatPart);
        QCOMPARE(matchesOf(expression), text("0.PING | "));
        expression.setStringPrefix(text("batt"), PathExpression::MessagePart);
        expression.setStringPrefix(text("ro"), PathExpression::FieldPart);
        QCOMPARE(matchesOf(expression), text("0.BATTERY | 0.BATTERY.Roll"));
        expression.setString(QString(), PathExpression::FieldPart);
        expression.setString(text("PI"), PathExpression::MessagePart);
        QCOMPARE(matchesOf(expression), text(" | "));
        expression.setStringPrefix(text("PI"), PathExpression::MessagePart);
        expression.setString(text("link#1/PI"));
        QCOMPARE(matchesOf(expression), text(" | "));
    }

    void optionsAreThoseThatMatch()
    {
        const Formats formats;
        const TextRow rows[] = {
            {"1 ", "link#1 sense link#2"},
            {"1 */ATTITUDE", "link#1 link#2"},
            {"2 */*/roll", "ATTITUDE#1 ATTITUDE#2 ATTITUDE"},
            {"2 link#2", "ATTITUDE"},
            {"3 link", "link#1/ATTITUDE#1 link#1/BATTERY link#1/ATTITUDE#2 link#1/PING link#2/ATTITUDE"},
            {"4 */ATTITUDE#1", "time roll rollspeed pitch"},
            {"4 link", "time roll rollspeed pitch Roll voltages mode roll#1 roll#2"},
            {"4 sense/View", "time object host"}, // sub-messages are gone into only where the path does
            {"4 sense/View/host/position/*", "host/position/x host/position/y"},
            {"4 sense/View/*/*/x", "object/position/x object/speed/x host/position/x host/speed/x"},
            {"15 sense/View/object[2]/*/x", "sense/View/object[2]/position/x sense/View/object[2]/speed/x"},
            {"6 */BATTERY/mode/*", "BATTERY/mode/ARMED BATTERY/mode/AUTO"},
            {"12 */BATTERY/*[*]", "time Roll voltages[*] mode"},
            {"12 */BATTERY/*[1]", "voltages[1]"},
            {"4 */BATTERY/*[1]", "voltages"},
            {"8 */BATTERY/*[1]", "1"},
            {"8 */BATTERY/*", ""},
            {"5 */*/time", "link#1/time sense/time"},
            {"15 */*/roll",
             "link#1/ATTITUDE#1/roll link#1/ATTITUDE#2/roll#1 link#1/ATTITUDE#2/roll#2 link#2/ATTITUDE/roll"},
            {"15 nothing", ""},
            {"0 ", ""}};
        checkRows(rows, optionsOfText);
    }

    void optionsEndWhereTheUserTypes()
    {
        const Formats formats;
        const TextRow rows[] = {{"15 15 ", "link#1 sense link#2"},
                                {"15 15 L", "link#1 link#2"},
                                {"15 15 sense/v", "sense/Vector sense/View"},
                                {"15 15 sense/View/", "sense/View/time sense/View/object sense/View/host"},
                                {"15 15 sense/View/host/", "sense/View/host/position sense/View/host/speed"},
                                {"15 15 sense/View/host/sp", "sense/View/host/speed"},
                                {"15 15 */*/ROLLS", "link#1/ATTITUDE#1/rollspeed"},
                                {"15 15 */BATTERY/voltages[1", "link#1/BATTERY/voltages"},
                                {"15 15 */ATTITUDE#", "link#1/ATTITUDE#1 link#1/ATTITUDE#2 link#2/ATTITUDE"},
                                {"1 2 L", "ATTITUDE#1 BATTERY ATTITUDE#2 PING ATTITUDE"}, // listed is not what is typed
                                {"2 2 ", "ATTITUDE#1 BATTERY ATTITUDE#2 PING Vector Base View ATTITUDE"},
                                {"2 2 at", "ATTITUDE#1 ATTITUDE#2 ATTITUDE"},
                                {"4 4 roll", "roll rollspeed Roll roll#1 roll#2"}};
        checkRows(rows, optionsOfPrefix);
    }

    void wildCardStandsForEverything()
    {
        const Formats formats;
        PathExpression expression;
        QVERIFY(!expression.isWildCard(Parts()));
        expression.setString(text("link#1/BATTERY/mode"));
        expression.setWildCard(PathExpression::FieldPart);
        QCOMPARE(expression.getString(PathExpression::AllParts), text("link#1/BATTERY/*"));
        QVERIFY(expression.isWildCard(PathExpression::FieldPart) && !expression.isWildCard(Parts(6)));
        expression.setWildCard(PathExpression::AllParts);
        QCOMPARE(expression.getString(PathExpression::AllParts), text("*/*/*[*]"));
        QVERIFY(expression.isWildCard(PathExpression::AllParts));
        QCOMPARE(optionsOf(expression, 2), text("ATTITUDE#1 BATTERY ATTITUDE#2 View ATTITUDE"));
        expression.setString(text("\\*"), PathExpression::MessagePart);
        QVERIFY(!expression.isWildCard(PathExpression::MessagePart));
    }

    void matchesTellTheWayAndTheIndexes()
    {
        const Formats formats;
        PathExpression expression;
        expression.setConsiderSubMessages(true);
        expression.setString(text("sense/*/object[2]/*/y[*]"));
        QStringList matches;
        Q_FOREACH (const FieldPath& match, expression.getMatches()) {
            QString way = match.getMessageInfo()->getName();
            Q_FOREACH (const FieldPath::Step& step, match.getSteps())
                way += QString::fromLatin1("/%1[%2]").arg(step.field->getName()).arg(step.index);
            matches << way;
        }
        QCOMPARE(matches.join(QLatin1String(" ")),
                 text("View/object[2]/position[0]/y[0] View/object[2]/speed[0]/y[0]"));
        QCOMPARE(optionsOf(expression, 15), text("sense/View/object[2]/position/y sense/View/object[2]/speed/y"));
        expression.setString(text("sense/View"));
        QCOMPARE(expression.getMatches().size(), 3);
        QCOMPARE(expression.getMatches().value(2).getIndex(), 0);
    }

    void recursiveSubMessagesEnd()
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

    void typesThatComeLaterAreFound()
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

    void indexFindsWhatALookAtEveryFieldFinds()
    {
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
                        const QString name = randomName(4);
                        if (!name.isEmpty() && !info->getFieldInfo(name)) // so that names are listed as they are
                            info->addField(new TestFieldInfo(name));
                    }
                    format.addMessageInfo(info);
                }
                FormatRegistry::getInstance()->updateFormat(&format);
            }
            const QString name = randomName(3);
            expression.setStringPrefix(text("f/*/") + name, PathExpression::AllParts);
            const QVector<const FieldInfo*> begin = lookAtEveryField(format, name, true);
            QStringList distinctNames;
            Q_FOREACH (const FieldInfo* field, begin)
                distinctNames << field->getName();
            distinctNames.removeDuplicates();
            QVERIFY(expression.getMatchingFieldInfos() == begin);
            QCOMPARE(expression.getMatchingExpressionsStringList(PathExpression::AllParts).size(), begin.size());
            QCOMPARE(expression.getMatchingExpressionsStringList(PathExpression::FieldPart), distinctNames);
            expression.completeEditing();
            if (!name.isEmpty())
                QVERIFY(expression.getMatchingFieldInfos() == lookAtEveryField(format, name, false));
            found += begin.size();
        }
        QVERIFY(found > 1000);
    }
};

QTEST_MAIN(tst_PathExpressionMatches)

#include "tst_pathexpressionmatches.moc"

#include "flagfieldinfo.h"
#include "pathfixtures.h"
#include "testbase.h"

#include <QSet>

#include <cstdlib>

typedef PathExpression::Parts Parts;

static const Parts s_allPartsAtStart = PathExpression::AllParts;

static QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/** What names what: the grammar, matching, options and signals. */
class tst_PathExpression : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void partsAreSingleBits();
    void textIsDividedAmongParts_data();
    void textIsDividedAmongParts();
    void newExpressionIsOpen();
    void expressionMatches_data();
    void expressionMatches();
    void prefixMatchesUntilEditingIsComplete_data();
    void prefixMatchesUntilEditingIsComplete();
    void settingThePartEndsItsPrefix();
    void malformedTextSaysWhere_data();
    void malformedTextSaysWhere();
    void unfinishedTextIsNotMalformedWhileTyped_data();
    void unfinishedTextIsNotMalformedWhileTyped();
    void anyTextIsSurvived();
    void anyNameSurvivesARoundTrip_data();
    void anyNameSurvivesARoundTrip();
    void everyDescriptionHasATextOfItsOwn();
    void descriptionsThatAreNotKnownMatchNothing();
    void optionsAreThoseThatMatch_data();
    void optionsAreThoseThatMatch();
    void optionsEndWhereTheUserTypes_data();
    void optionsEndWhereTheUserTypes();
    void wildCardStandsForEverything();
    void matchesTellTheWayAndTheIndexes();
    void recursiveSubMessagesEnd();
    void signalsSayWhatChanged();
    void formatsComeAndGo();
    void sameAddressIsNotTheSameFormat();
    void indexFindsWhatALookAtEveryFieldFinds();
};

/** Two formats of one name, two types of one name, flags, sub-messages, repeated fields. */
class Formats
{
public:
    Formats()
        : link(text("link"))
        , sense(text("sense"))
        , again(text("link"))
    {
        MessageInfo* attitude = addTestType(&link, "ATTITUDE", "time roll rollspeed pitch");
        Q_UNUSED(attitude);
        MessageInfo* battery = addTestType(&link, "BATTERY", "time Roll");
        battery->addField(new TestFieldInfo(text("voltages"), TestFieldInfo::Repeated));
        TestFieldInfo* mode = new TestFieldInfo(text("mode"));
        QVector<FieldInfo::Enumerator> flags;
        flags << FieldInfo::Enumerator(1, text("ARMED")) << FieldInfo::Enumerator(2, text("AUTO"));
        mode->setEnumerators(flags, true);
        FlagFieldInfo::addFlagsTo(mode);
        battery->addField(mode);
        addTestType(&link, "ATTITUDE", "roll roll");
        addTestType(&link, "PING", "");

        MessageInfo* vector = addTestType(&sense, "Vector", "x y", false);
        MessageInfo* base = addTestType(&sense, "Base", "", false);
        addSub(base, "position", vector);
        addSub(base, "speed", vector);
        MessageInfo* view = addTestType(&sense, "View", "time");
        addSub(view, "object", base, TestFieldInfo::Repeated);
        addSub(view, "host", base);

        addTestType(&again, "ATTITUDE", "roll");
        FormatRegistry::getInstance()->addFormat(&link);
        FormatRegistry::getInstance()->addFormat(&sense);
        FormatRegistry::getInstance()->addFormat(&again);
    }

    static void addSub(MessageInfo* info, const char* name, const MessageInfo* type, int flags = 0)
    {
        info->addField(new TestFieldInfo(text(name), flags, FieldType(type)));
    }

    FormatInfo link;
    FormatInfo sense;
    FormatInfo again;
};

/** "0.ATTITUDE.roll": the number of the format in the registry, the type and the field. */
static QString nameOf(const MessageInfo* info)
{
    const int format = FormatRegistry::getInstance()->getFormatInfos().indexOf(info->getFormatInfo());
    return QString::number(format) + QLatin1Char('.') + info->getName();
}

static QString nameOf(const FieldInfo* info)
{
    const FieldInfo* parent = info->getParentFieldInfo();
    return (parent ? nameOf(parent) : nameOf(info->getMessageInfos().first())) + QLatin1Char('.') + info->getName();
}

template <typename Info>
static QString namesOf(const QVector<const Info*>& infos)
{
    QStringList names;
    Q_FOREACH (const Info* info, infos)
        names << nameOf(info);
    return names.join(QLatin1String(" "));
}

static QString matchesOf(const PathExpression& expression)
{
    return namesOf(expression.getMatchingMessageInfos()) + QLatin1String(" | ") +
           namesOf(expression.getMatchingFieldInfos());
}

static QString optionsOf(const PathExpression& expression, int parts)
{
    return expression.getMatchingExpressionsStringList(Parts(parts)).join(QLatin1String(" "));
}

void tst_PathExpression::partsAreSingleBits()
{
    QCOMPARE(int(PathExpression::FormatPart), 1);
    QCOMPARE(int(PathExpression::MessagePart), 2);
    QCOMPARE(int(PathExpression::FieldPart), 4);
    QCOMPARE(int(PathExpression::IndexPart), 8);
    QCOMPARE(int(PathExpression::AllParts), 15);
    QCOMPARE(int(s_allPartsAtStart), 15);
}

void tst_PathExpression::textIsDividedAmongParts_data()
{
    QTest::addColumn<QString>("whole");
    QTest::addColumn<int>("parts");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("message");
    QTest::addColumn<QString>("field");
    QTest::addColumn<QString>("index");

#define ROW(whole, parts, format, message, field, index)                                                               \
    QTest::newRow(whole " of " #parts) << text(whole) << parts << text(format) << text(message) << text(field)         \
                                       << text(index)
    ROW("f/M/a", 15, "f", "M", "a", "");
    ROW("f/M/a/b/c", 15, "f", "M", "a/b/c", "");
    ROW("f/M/a[2]", 15, "f", "M", "a", "2");
    ROW("f/M/a[1]/b[*]", 15, "f", "M", "a[1]/b", "*");
    ROW("f", 15, "f", "", "", "");
    ROW("f/M", 15, "f", "M", "", "");
    ROW("/M", 15, "", "M", "", "");
    ROW("//a", 15, "", "", "a", "");
    ROW("//[2]", 15, "", "", "", "2");
    ROW("*/M", 15, "*", "M", "", "");
    ROW("f\\/g/M\\[2]/a\\[2\\]", 15, "f\\/g", "M\\[2]", "a\\[2\\]", "");
    ROW("f/M[2]", 15, "f", "M[2]", "", ""); // an index of a type is an error, but not lost
    ROW("", 15, "", "", "", "");
    ROW("f/M", 3, "f", "M", "-", "-");
    ROW("f/M/a", 3, "f", "M/a", "-", "-");
    ROW("M/a[2]", 14, "-", "M", "a", "2");
    ROW("f/a/b", 5, "f", "-", "a/b", "-");
    ROW("f[2]", 9, "f", "-", "-", "2");
    ROW("a/b[2]", 4, "-", "-", "a/b[2]", "-");
    ROW("2", 8, "-", "-", "-", "2");
    ROW("f/M", 1, "f/M", "-", "-", "-");
    ROW("", 4, "-", "-", "", "-");
#undef ROW
}

void tst_PathExpression::textIsDividedAmongParts()
{
    QFETCH(QString, whole);
    QFETCH(int, parts);
    PathExpression expression;
    for (int part = 1; part <= 8; part *= 2)
        expression.setString(text("-"), Parts(part));
    expression.setString(whole, Parts(parts));
    QTEST(expression.getString(PathExpression::FormatPart), "format");
    QTEST(expression.getString(PathExpression::MessagePart), "message");
    QTEST(expression.getString(PathExpression::FieldPart), "field");
    QTEST(expression.getString(PathExpression::IndexPart), "index");
    QCOMPARE(expression.getString(Parts(parts)), whole);
    QCOMPARE(expression.getString(Parts()), QString());
}

void tst_PathExpression::newExpressionIsOpen()
{
    const Formats formats;
    PathExpression expression;
    QCOMPARE(expression.getString(PathExpression::AllParts), QString());
    QVERIFY(!expression.isWildCard(PathExpression::FormatPart));
    QCOMPARE(optionsOf(expression, 1), text("link#1 sense link#2"));
    QCOMPARE(optionsOf(expression, 2), text("ATTITUDE#1 BATTERY ATTITUDE#2 PING View ATTITUDE"));
    QCOMPARE(expression.errorString(), QString());
    QCOMPARE(expression.errorPosition(), -1);
}

void tst_PathExpression::expressionMatches_data()
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

void tst_PathExpression::expressionMatches()
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

void tst_PathExpression::prefixMatchesUntilEditingIsComplete_data()
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

void tst_PathExpression::prefixMatchesUntilEditingIsComplete()
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

void tst_PathExpression::settingThePartEndsItsPrefix()
{
    const Formats formats;
    PathExpression expression;
    expression.setStringPrefix(text("PI"), PathExpression::MessagePart);
    expression.setString(text("link#1"), PathExpression::FormatPart);
    QCOMPARE(matchesOf(expression), text("0.PING | ")); // another part: still being typed
    expression.setString(text("PI"), PathExpression::MessagePart);
    QCOMPARE(matchesOf(expression), text(" | "));
    expression.setStringPrefix(text("PI"), PathExpression::MessagePart);
    QCOMPARE(matchesOf(expression), text("0.PING | "));
    expression.setString(text("link#1/PI"));
    QCOMPARE(matchesOf(expression), text(" | "));
}

void tst_PathExpression::malformedTextSaysWhere_data()
{
    QTest::addColumn<QString>("whole");
    QTest::addColumn<int>("parts");
    QTest::addColumn<int>("position");
    QTest::addColumn<QString>("says");

#define ROW(whole, parts, position, says) QTest::newRow(whole) << text(whole) << parts << position << text(says)
    ROW("link/ATT*", 15, 8, "character 9: the wildcard stands alone");
    ROW("**", 15, 1, "nothing can stand here");
    ROW("*x", 15, 1, "nothing can stand here");
    ROW("//*x", 15, 3, "only an index can stand here");
    ROW("link\\", 15, 4, "the character behind the \\ is missing");
    ROW("li\\nk", 15, 2, "can stand behind a \\");
    ROW("li\\0nk", 15, 2, "can stand behind a \\");
    ROW("\\0x", 15, 2, "nothing can stand here");
    ROW("link]", 15, 4, "no bracket was opened");
    ROW("link[1]/A", 15, 4, "only fields have an index");
    ROW("link/A[1]", 15, 6, "only fields have an index");
    ROW("link/A/f[1", 15, 8, "the ] is missing");
    ROW("link/A/f[]", 15, 8, "an index is a number or *");
    ROW("link/A/f[-1]", 15, 9, "an index is a number or *");
    ROW("link/A/f[99999999999]", 15, 9, "an index is a number or *");
    ROW("link/A/f[1]x", 15, 11, "nothing can stand behind an index");
    ROW("link/A/f[1][2]", 15, 11, "nothing can stand behind an index");
    ROW("link/A/f[1]x/g", 15, 11, "nothing can stand behind an index");
    ROW("link#/A", 15, 4, "a number from 1 must follow the #");
    ROW("link#0/A", 15, 4, "a number from 1 must follow the #");
    ROW("link#1x/A", 15, 6, "nothing can stand here");
    ROW("link#1#1/A", 15, 6, "nothing can stand here");
    ROW("#1", 15, 0, "the name before the # is missing");
    ROW("*#1", 15, 1, "nothing can stand here");
    ROW("link/A", 1, 4, "this part has one level only");
#undef ROW
}

void tst_PathExpression::malformedTextSaysWhere()
{
    const Formats formats;
    QFETCH(QString, whole);
    QFETCH(int, parts);
    QFETCH(QString, says);
    PathExpression expression;
    expression.setString(whole, Parts(parts));
    QTEST(expression.errorPosition(), "position");
    QVERIFY2(expression.errorString().contains(says), qPrintable(expression.errorString()));
    QCOMPARE(matchesOf(expression), text(" | "));
    QCOMPARE(optionsOf(expression, 1), QString());
    QCOMPARE(expression.getMatches().size(), 0);
    QCOMPARE(expression.getString(Parts(parts)), whole);
}

void tst_PathExpression::unfinishedTextIsNotMalformedWhileTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("options");
    QTest::newRow("index begun") << text("*/BATTERY/voltages[") << text("link#1/BATTERY/voltages");
    QTest::newRow("index not closed") << text("*/BATTERY/voltages[1") << text("link#1/BATTERY/voltages");
    QTest::newRow("escape begun") << text("*/PI\\") << text("link#1/PING");
    QTest::newRow("number begun") << text("*/ATTITUDE#") << text("link#1/ATTITUDE#1 link#1/ATTITUDE#2 link#2/ATTITUDE");
}

void tst_PathExpression::unfinishedTextIsNotMalformedWhileTyped()
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

void tst_PathExpression::anyTextIsSurvived()
{
    const Formats formats;
    const QString characters = text("ab0129///**[[]]##\\\\ \xc3\xa4");
    srand(4711);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    for (int i = 0; i < 20000; ++i) {
        QString any;
        for (int length = rand() % 24; length > 0; --length)
            any += characters.at(rand() % characters.size());
        const Parts parts(rand() % 16);
        if (rand() % 2)
            expression.setString(any, parts);
        else
            expression.setStringPrefix(any, parts);
        const QString whole = expression.getString(PathExpression::AllParts);
        const bool matched = !expression.getMatchingMessageInfos().isEmpty();
        if (!expression.errorString().isEmpty()) {
            QVERIFY(!matched);
            QVERIFY(expression.errorPosition() >= 0 && expression.errorPosition() <= whole.size());
            continue;
        }
        expression.completeEditing();
        if (!expression.errorString().isEmpty())
            continue;
        const QString before = matchesOf(expression);
        expression.setString(whole);
        QCOMPARE(expression.getString(PathExpression::AllParts), whole);
        QCOMPARE(matchesOf(expression), before);
    }
    QString deep(200000, QLatin1Char('/'));
    expression.setString(deep);
    QVERIFY(expression.errorString().contains(text("too many levels")));
}

void tst_PathExpression::anyNameSurvivesARoundTrip_data()
{
    QTest::addColumn<QString>("name");
    const char* names[] = {"",
                           "/",
                           "a/b",
                           "*",
                           "a*b",
                           "[2]",
                           "a[2]",
                           "\\",
                           "a\\",
                           "\\0",
                           "0",
                           "#1",
                           "a#1",
                           "a#1#",
                           "]",
                           "\\*[/]",
                           " a b",
                           "r.\n",
                           "\xc3\x84ußerst ß \xf0\x9f\x9a\x97",
                           "All"};
    for (size_t i = 0; i < sizeof(names) / sizeof(names[0]); ++i)
        QTest::newRow(qPrintable(QString::fromLatin1("%1 %2").arg(i).arg(text(names[i])))) << text(names[i]);
}

void tst_PathExpression::anyNameSurvivesARoundTrip()
{
    QFETCH(QString, name);
    // The format has the name everywhere, beside others that a wrong reading of its text would find.
    FormatInfo format(name);
    const char* others[] = {"a", "b", "00", "2", "a#1x", "\\\\", "//", "**"};
    for (int i = -1; i < int(sizeof(others) / sizeof(others[0])); ++i) {
        const QString typeName = i < 0 ? name : text(others[i]);
        MessageInfo* info = new MessageInfo(typeName);
        for (int j = -1; j < int(sizeof(others) / sizeof(others[0])); ++j) {
            TestFieldInfo* field = new TestFieldInfo(j < 0 ? name : text(others[j]));
            field->addSubField(new TestFieldInfo(name));
            field->addSubField(new TestFieldInfo(text("a")));
            info->addField(field);
        }
        format.addMessageInfo(info);
    }
    FormatRegistry::getInstance()->addFormat(&format);
    const MessageInfo* info = format.getMessageInfos().first();
    const FieldInfo* field = info->getFieldInfos().first()->getSubFieldInfos().first();
    PathExpression expression;
    expression.setupToMatchUnique(field);
    PathExpression copy;
    copy.setString(expression.getString(PathExpression::AllParts));
    QCOMPARE(copy.errorString(), QString());
    QCOMPARE(copy.getMatchingMessageInfos().size(), 1);
    QCOMPARE(copy.getMatchingMessageInfos().value(0), info);
    QCOMPARE(copy.getMatchingFieldInfos().size(), 1);
    QCOMPARE(copy.getMatchingFieldInfos().value(0), field);

    copy.setString(PathExpression::escape(name), PathExpression::FieldPart);
    QCOMPARE(copy.getMatchingFieldInfos().value(0), info->getFieldInfos().first());
    const QStringList options = copy.getMatchingExpressionsStringList(PathExpression::FieldPart);
    QCOMPARE(options, QStringList(PathExpression::escape(name)));
}

static void collectFields(const QVector<const FieldInfo*>& infos, QVector<const FieldInfo*>* all)
{
    Q_FOREACH (const FieldInfo* info, infos) {
        all->append(info);
        collectFields(info->getSubFieldInfos(), all);
    }
}

void tst_PathExpression::everyDescriptionHasATextOfItsOwn()
{
    Formats formats;
    // Components and the fields of a sub-message below one field, with the same names.
    MessageInfo* odd = addTestType(&formats.sense, "Odd", "");
    TestFieldInfo* both = new TestFieldInfo(text("both"), 0, FieldType(formats.sense.getMessageInfo(text("Vector"))));
    both->addSubField(new TestFieldInfo(text("x")));
    both->addSubField(new TestFieldInfo(text("x")));
    both->addSubField(new TestFieldInfo(text("y")));
    odd->addField(both);
    odd->addField(new TestFieldInfo(text("both")));
    FormatRegistry::getInstance()->updateFormat(&formats.sense);

    QSet<QString> texts;
    PathExpression expression;
    PathExpression copy;
    copy.setConsiderSubMessages(true);
    int types = 0;
    QVector<const FieldInfo*> fields;
    Q_FOREACH (const FormatInfo* format, FormatRegistry::getInstance()->getFormatInfos()) {
        Q_FOREACH (const MessageInfo* info, format->getMessageInfos()) {
            expression.setupToMatchUnique(info);
            copy.setString(expression.getString(Parts(3)));
            QCOMPARE(copy.getMatchingMessageInfos(), QVector<const MessageInfo*>(1, info));
            texts.insert(copy.getString(PathExpression::AllParts));
            collectFields(info->getFieldInfos(), &fields);
            ++types;
        }
    }
    QCOMPARE(types, 9);
    Q_FOREACH (const FieldInfo* info, fields) {
        expression.setupToMatchUnique(info);
        copy.setString(expression.getString(PathExpression::AllParts));
        QCOMPARE(copy.getMatchingFieldInfos(), QVector<const FieldInfo*>(1, info));
        texts.insert(copy.getString(PathExpression::AllParts));
    }
    QCOMPARE(fields.size(), 25);
    QCOMPARE(texts.size(), types + fields.size());
}

void tst_PathExpression::descriptionsThatAreNotKnownMatchNothing()
{
    const Formats formats;
    FormatInfo unknown(text("unknown"));
    MessageInfo* type = addTestType(&unknown, "T", "f");
    MessageInfo alone(text("PING"));
    TestFieldInfo nowhere(text("roll"));
    PathExpression expression;
    expression.setupToMatchUnique(type->getFieldInfos().first());
    QCOMPARE(expression.getString(PathExpression::AllParts), text("unknown/T/f"));
    QCOMPARE(matchesOf(expression), text(" | "));
    expression.setupToMatchUnique(&alone);
    QCOMPARE(matchesOf(expression), text(" | "));
    expression.setupToMatchUnique(&nowhere);
    QCOMPARE(matchesOf(expression), text(" | "));
    const QString before = expression.getString(PathExpression::AllParts);
    expression.setupToMatchUnique(static_cast<const MessageInfo*>(nullptr));
    expression.setupToMatchUnique(static_cast<const FieldInfo*>(nullptr));
    QCOMPARE(expression.getString(PathExpression::AllParts), before);
}

void tst_PathExpression::optionsAreThoseThatMatch_data()
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

void tst_PathExpression::optionsAreThoseThatMatch()
{
    const Formats formats;
    QFETCH(QString, whole);
    QFETCH(int, parts);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    expression.setString(whole);
    QTEST(optionsOf(expression, parts), "options");
}

void tst_PathExpression::optionsEndWhereTheUserTypes_data()
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

void tst_PathExpression::optionsEndWhereTheUserTypes()
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

void tst_PathExpression::wildCardStandsForEverything()
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

void tst_PathExpression::matchesTellTheWayAndTheIndexes()
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

void tst_PathExpression::recursiveSubMessagesEnd()
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
}

void tst_PathExpression::signalsSayWhatChanged()
{
    const Formats formats;
    PathExpression expression;
    PathRecorder recorder(&expression);
    expression.setString(text("link#1/ATTITUDE#1/roll"));
    QCOMPARE(recorder.take(), text("parts 7, text link#1/ATTITUDE#1/roll, matches"));
    expression.setString(text("link#1/ATTITUDE#1/roll"));
    QCOMPARE(recorder.take(), QString());
    expression.setString(text("link#1/ATTITUDE#1/pitch"));
    QCOMPARE(recorder.take(), text("parts 4, text link#1/ATTITUDE#1/pitch, matches"));
    expression.setString(text("BATTERY/pitch"), Parts(6));
    QCOMPARE(recorder.take(), text("parts 2, text link#1/BATTERY/pitch, matches"));
    expression.setStringPrefix(text("volt"), PathExpression::FieldPart);
    QCOMPARE(recorder.take(), text("parts 4, text link#1/BATTERY/volt, matches"));
    expression.completeEditing();
    QCOMPARE(recorder.take(), text("matches"));
    expression.completeEditing();
    QCOMPARE(recorder.take(), QString());
    expression.setStringPrefix(text("volt"), PathExpression::FieldPart);
    QCOMPARE(recorder.take(), text("matches"));
    expression.setString(text("volt"), PathExpression::FieldPart);
    QCOMPARE(recorder.take(), text("matches"));
    expression.setWildCard(Parts(3));
    QCOMPARE(recorder.take(), text("parts 3, text */*/volt, matches"));
    expression.setString(text("*"), PathExpression::FormatPart);
    QCOMPARE(recorder.take(), QString());
    expression.setConsiderSubMessages(true);
    QCOMPARE(recorder.take(), text("matches"));
    expression.setConsiderSubMessages(true);
    QCOMPARE(recorder.take(), QString());
    expression.setupToMatchUnique(formats.sense.getMessageInfo(text("View")));
    QCOMPARE(recorder.take(), text("parts 7, text sense/View, matches"));
    expression.setString(text("x"), Parts());
    expression.setStringPrefix(text("x"), Parts());
    QCOMPARE(recorder.take(), QString());
}

void tst_PathExpression::formatsComeAndGo()
{
    FormatRegistry* registry = FormatRegistry::getInstance();
    PathExpression expression;
    expression.setString(text("late/*/f"));
    PathRecorder recorder(&expression);
    {
        FormatInfo format(text("late"));
        addTestType(&format, "A", "f");
        QCOMPARE(matchesOf(expression), text(" | "));
        registry->addFormat(&format);
        QCOMPARE(recorder.take(), text("matches"));
        QCOMPARE(matchesOf(expression), text("0.A | 0.A.f"));
        registry->addFormat(&format);
        registry->addFormat(nullptr);
        QCOMPARE(recorder.take(), QString());
        addTestType(&format, "B", "f");
        registry->updateFormat(&format);
        QCOMPARE(recorder.take(), text("matches"));
        QCOMPARE(matchesOf(expression), text("0.A 0.B | 0.A.f 0.B.f"));
        registry->removeFormat(&format);
        QCOMPARE(recorder.take(), text("matches"));
        QCOMPARE(matchesOf(expression), text(" | "));
        registry->removeFormat(&format);
        registry->updateFormat(&format);
        QCOMPARE(recorder.take(), QString());
        registry->addFormat(&format);
        recorder.take();
    }
    QCOMPARE(recorder.take(), text("matches"));
    QCOMPARE(matchesOf(expression), text(" | "));
    QCOMPARE(registry->getFormatInfos().size(), 0);
}

void tst_PathExpression::sameAddressIsNotTheSameFormat()
{
    FormatRegistry* registry = FormatRegistry::getInstance();
    PathExpression expression;
    alignas(FormatInfo) char memory[sizeof(FormatInfo)];
    for (int i = 0; i < 3; ++i) {
        FormatInfo* format = new (memory) FormatInfo(text("f"));
        addTestType(format, QByteArray(1, char('A' + i)).constData(), "x");
        registry->addFormat(format);
        QCOMPARE(optionsOf(expression, 3), text("f/") + QLatin1Char(char('A' + i)));
        format->~FormatInfo();
    }
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

void tst_PathExpression::indexFindsWhatALookAtEveryFieldFinds()
{
    const QString letters = text("abcABC_\xc3\xa4\xc3\x84ß\xce\xa3\xcf\x83\xcf\x82");
    srand(1511);
    FormatInfo format(text("f"));
    for (int type = 0; type < 60; ++type) {
        MessageInfo* info = new MessageInfo(QString::number(type));
        for (int field = rand() % 60; field > 0; --field) {
            QString name;
            for (int length = rand() % 4; length > 0; --length)
                name += letters.at(rand() % letters.size());
            info->addField(new TestFieldInfo(name));
        }
        format.addMessageInfo(info);
    }
    FormatRegistry::getInstance()->addFormat(&format);
    PathExpression expression;
    int found = 0;
    for (int i = 0; i < 500; ++i) {
        QString name;
        for (int length = 1 + rand() % 3; length > 0; --length)
            name += letters.at(rand() % letters.size());
        expression.setStringPrefix(text("f/*/") + name, PathExpression::AllParts);
        const QVector<const FieldInfo*> begin = lookAtEveryField(format, name, true);
        QVERIFY(expression.getMatchingFieldInfos() == begin);
        QCOMPARE(expression.getMatchingExpressionsStringList(PathExpression::AllParts).size(), begin.size());
        expression.completeEditing();
        QVERIFY(expression.getMatchingFieldInfos() == lookAtEveryField(format, name, false));
        found += begin.size();
    }
    QVERIFY(found > 1000);
}

QTEST_MAIN(tst_PathExpression)

#include "tst_pathexpression.moc"

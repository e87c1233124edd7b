#include "knownformats.h"
#include "testbase.h"

#include <QSet>

#include <cstdlib>

static const Parts s_allPartsAtStart = PathExpression::AllParts;

/** Texts of expressions: the grammar, a name of its own for everything, and signals. */
class tst_PathExpression : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void partsAreSingleBits();
    void textIsDividedAmongParts_data();
    void textIsDividedAmongParts();
    void newExpressionIsOpen();
    void malformedTextSaysWhere_data();
    void malformedTextSaysWhere();
    void anyTextIsSurvived();
    void anyNameSurvivesARoundTrip_data();
    void anyNameSurvivesARoundTrip();
    void everyDescriptionHasATextOfItsOwn();
    void descriptionsThatAreNotKnownMatchNothing();
    void signalsSayWhatChanged();
    void formatsComeAndGo();
    void sameAddressIsNotTheSameFormat();
};

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

QTEST_MAIN(tst_PathExpression)

#include "tst_pathexpression.moc"

#include "knownformats.h"
#include "testbase.h"

#include <QSet>

#include <cstdlib>

static const Parts s_allPartsAtStart = PathExpression::AllParts;

/** "format|message|field|index" */
static QString partsOf(QString given)
{
    const Parts parts = takeParts(&given);
    PathExpression expression;
    for (int part = 1; part <= 8; part *= 2)
        expression.setString(text("-"), Parts(part));
    expression.setString(given, parts);
    if (expression.getString(parts) != given || !expression.getString(Parts()).isEmpty())
        return text("another text");
    QStringList texts;
    for (int part = 1; part <= 8; part *= 2)
        texts << expression.getString(Parts(part));
    return texts.join(QLatin1String("|"));
}

/** "8 the wildcard stands alone": where the error is and, up to a semicolon, what. */
static QString errorOf(QString given)
{
    const Parts parts = takeParts(&given);
    PathExpression expression;
    expression.setString(given, parts);
    if (matchesOf(expression) != text(" | ") || !optionsOf(expression, 1).isEmpty() ||
        !expression.getMatches().isEmpty() || expression.getString(parts) != given)
        return text("it matches, or has changed");
    const QString place = QString::fromLatin1("character %1: ").arg(expression.errorPosition() + 1);
    if (!expression.errorString().startsWith(place))
        return expression.errorString();
    return QString::number(expression.errorPosition()) + QLatin1Char(' ') +
           expression.errorString().mid(place.size()).section(QLatin1Char(';'), 0, 0);
}

static void collectFields(const QVector<const FieldInfo*>& infos, QVector<const FieldInfo*>* all)
{
    Q_FOREACH (const FieldInfo* info, infos) {
        all->append(info);
        collectFields(info->getSubFieldInfos(), all);
    }
}

/** Texts of expressions: the grammar, a name of its own for everything, and signals. */
class tst_PathExpression : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void textIsDividedAmongParts()
    {
        QCOMPARE(int(s_allPartsAtStart), 15);
        const TextRow rows[] = {{"15 f/M/a/b/c", "f|M|a/b/c|"},
                                {"15 f/M/a[2]", "f|M|a|2"},
                                {"15 f/M/a[1]/b[*]", "f|M|a[1]/b|*"},
                                {"15 f", "f|||"},
                                {"15 f/M", "f|M||"},
                                {"15 //a", "||a|"},
                                {"15 //[2]", "|||2"},
                                {"15 */M", "*|M||"},
                                {"15 f\\/g/M\\[2]/a\\[2\\]", "f\\/g|M\\[2]|a\\[2\\]|"},
                                {"15 f/M[2]", "f|M[2]||"}, // an index of a type is an error, but not lost
                                {"15 ", "|||"},
                                {"3 f/M/a", "f|M/a|-|-"},
                                {"14 M/a[2]", "-|M|a|2"},
                                {"5 f/a/b", "f|-|a/b|-"},
                                {"9 f[2]", "f|-|-|2"},
                                {"4 a/b[2]", "-|-|a/b[2]|-"},
                                {"8 2", "-|-|-|2"},
                                {"1 f/M", "f/M|-|-|-"},
                                {"4 ", "-|-||-"}};
        checkRows(rows, partsOf);
    }

    void malformedTextSaysWhere()
    {
        const Formats formats;
        const PathExpression open;
        QVERIFY(open.getString(PathExpression::AllParts).isEmpty() && open.errorPosition() == -1);
        QCOMPARE(optionsOf(open, 2), text("ATTITUDE#1 BATTERY ATTITUDE#2 PING View ATTITUDE"));
        const TextRow rows[] = {
            {"15 link/ATT*", "8 the wildcard stands alone"},
            {"15 **", "1 nothing can stand here"},
            {"15 //*x", "3 only an index can stand here"},
            {"15 link\\", "4 the character behind the \\ is missing"},
            {"15 li\\0nk", "2 only / * # [ ] and \\ can stand behind a \\, or 0 alone for an empty name"},
            {"15 \\0x", "2 nothing can stand here"},
            {"15 link]", "4 no bracket was opened"},
            {"15 link/A[1]", "6 only fields have an index"},
            {"15 link/A/f[1", "8 the ] is missing"},
            {"15 link/A/f[]", "8 an index is a number or *"},
            {"15 link/A/f[-1]", "9 an index is a number or *"},
            {"15 link/A/f[99999999999]", "9 an index is a number or *"},
            {"15 link/A/f[1]x", "11 nothing can stand behind an index"},
            {"15 link/A/f[1][2]", "11 nothing can stand behind an index"},
            {"15 link/A/f[1]x/g", "11 nothing can stand behind an index"},
            {"15 link#/A", "4 a number from 1 must follow the #"},
            {"15 link#0/A", "4 a number from 1 must follow the #"},
            {"15 link#1x/A", "6 nothing can stand here"},
            {"15 link#1#1/A", "6 nothing can stand here"},
            {"15 #1", "0 the name before the # is missing"},
            {"15 *#1", "1 nothing can stand here"},
            {"1 link/A", "4 this part has one level only"}};
        checkRows(rows, errorOf);
    }

    void anyTextIsSurvived()
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

    void anyNameSurvivesARoundTrip()
    {
        const QStringList names = text("|/|a/b|*|a*b|[2]|a[2]|\\|a\\|\\0|0|#1|a#1|a#1#|]|\\*[/]| a b|r.\n|"
                                       "\xc3\x84ußerst ß \xf0\x9f\x9a\x97")
                                      .split(QLatin1Char('|'));
        // Beside others that a wrong reading of its text would find.
        const char* const others[] = {"a", "b", "00", "2", "a#1x", "\\\\", "//", "**"};
        Q_FOREACH (const QString& name, names) {
            // The format has the name everywhere.
            FormatInfo format(name);
            for (int i = -1; i < int(sizeof(others) / sizeof(others[0])); ++i) {
                MessageInfo* info = new MessageInfo(i < 0 ? name : text(others[i]));
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
            QVERIFY2(copy.getMatchingMessageInfos() == QVector<const MessageInfo*>(1, info), qPrintable(name));
            QVERIFY2(copy.getMatchingFieldInfos() == QVector<const FieldInfo*>(1, field), qPrintable(name));

            const QString escaped = PathExpression::escape(name);
            copy.setString(escaped, PathExpression::FieldPart);
            QCOMPARE(copy.getMatchingFieldInfos().value(0), info->getFieldInfos().first());
            QCOMPARE(copy.getMatchingExpressionsStringList(PathExpression::FieldPart), QStringList(escaped));
        }
    }

    void everyDescriptionHasATextOfItsOwn()
    {
        Formats formats;
        // Components and the fields of a sub-message below one field, with the same names.
        MessageInfo* odd = addTestType(&formats.sense, "Odd", "");
        TestFieldInfo* both =
            new TestFieldInfo(text("both"), 0, FieldType(formats.sense.getMessageInfo(text("Vector"))));
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

    void descriptionsThatAreNotKnownMatchNothing()
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

    void signalsSayWhatChanged()
    {
        const Formats formats;
        PathExpression expression;
        PathRecorder recorder(&expression);
        for (int twice = 0; twice < 2; ++twice)
            expression.setString(text("link#1/ATTITUDE#1/roll"));
        expression.setString(text("link#1/ATTITUDE#1/pitch"));
        expression.setString(text("BATTERY/pitch"), Parts(6));
        QCOMPARE(recorder.take(), text("parts 7, text link#1/ATTITUDE#1/roll, matches, "
                                       "parts 4, text link#1/ATTITUDE#1/pitch, matches, "
                                       "parts 2, text link#1/BATTERY/pitch, matches"));
        expression.setStringPrefix(text("volt"), PathExpression::FieldPart);
        QCOMPARE(recorder.take(), text("parts 4, text link#1/BATTERY/volt, matches"));
        for (int twice = 0; twice < 2; ++twice)
            expression.completeEditing();
        QCOMPARE(recorder.take(), text("matches"));
        expression.setStringPrefix(text("volt"), PathExpression::FieldPart);
        expression.setString(text("volt"), PathExpression::FieldPart);
        QCOMPARE(recorder.take(), text("matches, matches"));
        expression.setWildCard(Parts(3));
        expression.setString(text("*"), PathExpression::FormatPart);
        QCOMPARE(recorder.take(), text("parts 3, text */*/volt, matches"));
        for (int twice = 0; twice < 2; ++twice)
            expression.setConsiderSubMessages(true);
        QCOMPARE(recorder.take(), text("matches"));
        expression.setupToMatchUnique(formats.sense.getMessageInfo(text("View")));
        expression.setString(text("x"), Parts());
        expression.setStringPrefix(text("x"), Parts());
        QCOMPARE(recorder.take(), text("parts 7, text sense/View, matches"));
    }

    void formatsComeAndGo()
    {
        FormatRegistry* registry = FormatRegistry::getInstance();
        PathExpression expression;
        expression.setString(text("late/*/f"));
        PathRecorder recorder(&expression);
        {
            FormatInfo format(text("late"));
            addTestType(&format, "A", "f");
            QCOMPARE(matchesOf(expression), text(" | "));
            for (int twice = 0; twice < 2; ++twice)
                registry->addFormat(&format);
            registry->addFormat(nullptr);
            QCOMPARE(recorder.take() + QLatin1Char(' ') + matchesOf(expression), text("matches 0.A | 0.A.f"));
            addTestType(&format, "B", "f");
            registry->updateFormat(&format);
            QCOMPARE(recorder.take() + QLatin1Char(' ') + matchesOf(expression), text("matches 0.A 0.B | 0.A.f 0.B.f"));
            for (int twice = 0; twice < 2; ++twice)
                registry->removeFormat(&format);
            registry->updateFormat(&format);
            QCOMPARE(recorder.take() + QLatin1Char(' ') + matchesOf(expression), text("matches  | "));
            registry->addFormat(&format);
            recorder.take();
        }
        QCOMPARE(recorder.take() + QLatin1Char(' ') + matchesOf(expression), text("matches  | "));
        QCOMPARE(registry->getFormatInfos().size(), 0);
    }

    void sameAddressIsNotTheSameFormat()
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
};

QTEST_MAIN(tst_PathExpression)

#include "tst_pathexpression.moc"

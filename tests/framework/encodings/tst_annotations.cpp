#include "annotations.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "testbase.h"
#include "testfolder.h"
#include "testformat.h"
#include "textrows.h"

namespace
{

/** A format of two message types, and a folder for annotation files. */
class Fixture
{
public:
    Fixture()
    {
        format.addMessageInfo(info);
        format.addMessageInfo(other);
        for (const char* name : {"x", "scaled", "array", "word", "common"}) {
            const int flags = *name == 'a'   ? TestFieldInfo::Repeated
                              : *name == 'w' ? TestFieldInfo::String
                                             : TestFieldInfo::Plain;
            info->addField(field(name, flags));
        }
        other->addField(field("common", TestFieldInfo::Plain));
    }

    /** Applies a file of that content; returns the errors, without the folder, a line each. Both with ' for ". */
    QString apply(const QString& content)
    {
        const QString path = m_folder.write(text("a.json"), content.toUtf8().replace('\'', '"'));
        QStringList errors;
        if (Annotations::apply(path, &format, &errors) != errors.isEmpty())
            return text("success and errors disagree");
        return m_folder.relative(errors.join(QLatin1Char('\n'))).replace(QLatin1Char('"'), QLatin1Char('\''));
    }

    QString applyVirtual(const QString& members)
    {
        return apply(text("{'messages': {'MSG': {'virtual': [{%1}]}}}").arg(members));
    }

    /** "x secondary confidential virtual (description), y": the fields with what is said of them. */
    static QString fieldsOf(const MessageInfo* info)
    {
        static const char* const roles[] = {"", " primary", " secondary"};
        QStringList fields;
        for (const FieldInfo* field : info->getFieldInfos()) {
            QString said = field->getName() + text(roles[field->getRole()]);
            if (field->isConfidential())
                said += text(" confidential");
            if (field->isVirtual() && field->isOptional() && !field->isRepeated())
                said += text(" virtual (%1)").arg(field->getDescription());
            fields += said;
        }
        return fields.join(text(", "));
    }

    /** What the field shows of a message of MSG with those values of the plain fields; "absent" when it has none. */
    QString shown(const char* name, double x, double scaled = -1) const
    {
        TestMessage* const message = new TestMessage(info);
        const MessageReference reference = MessageReference::adopt(message);
        message->set(info->getFieldInfo(text("x")), x)->fill(info->getFieldInfo(text("array")), 3, 5);
        if (scaled >= 0)
            message->set(info->getFieldInfo(text("scaled")), scaled);
        const FieldInfo* const field = info->getFieldInfo(text(name));
        if (!field)
            return text("no such field");
        const unsigned int count = field->getValueCount(message);
        if ((count == 1) != field->getValue(message, 0).isValid() || field->getValue(message, 1).isValid())
            return text("count and values disagree");
        return count == 0 ? text("absent") : field->getInterpretedString(field->getValue(message, 0), true);
    }

    FormatInfo format{text("test")};
    MessageInfo* const info = new MessageInfo(text("MSG"));
    MessageInfo* const other = new MessageInfo(text("OTHER"));

private:
    static FieldInfo* field(const char* name, int flags)
    {
        TestFieldInfo* const field = new TestFieldInfo(text(name), flags);
        field->setRole(FieldInfo::UnspecifiedRole);
        if (*name == 's') {
            field->setScale(0.01, 2);
            field->setInvalidValue(FieldValue::fromUnsigned(65535));
        }
        return field;
    }

    TestFolder m_folder;
};

QString errorsOf(const QString& content)
{
    return Fixture().apply(content);
}

QString errorsOfField(const QString& members)
{
    return errorsOf(text("{'messages': {'MSG': {'fields': {%1}}}}").arg(members));
}

QString errorsOfVirtual(const QString& members)
{
    return Fixture().applyVirtual(members);
}

/** The errors of a virtual field of that expression, without their begin. */
QString errorsOfExpression(const QString& expression)
{
    return errorsOfVirtual(text("'name': 'v',\n'expression': '%1'").arg(expression)).remove(text("a.json:2: MSG.v: "));
}

/** The value of "EXPRESSION" in a message whose plain fields are 3 and 150, or of "SCALED; EXPRESSION", -1 for none. */
QString valueOfExpression(const QString& given)
{
    Fixture f;
    const QString errors = f.applyVirtual(text("'name': 'v', 'expression': '%1'").arg(given.section(text("; "), -1)));
    return errors + f.shown("v", 3, given.contains(text("; ")) ? given.section(text("; "), 0, 0).toDouble() : 150);
}

} // namespace

class tst_Annotations : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rolesAndConfidentiality()
    {
        Fixture f;
        QCOMPARE(f.apply("{'messages': {'*': {'fields': {'common': {'role': 'secondary', 'confidential': true}}},"
                         "'MSG': {'fields': {'x': {'role': 'primary'}, 'common': {'confidential': false}}}}}"),
                 QString());
        QCOMPARE(f.fieldsOf(f.info), text("x primary, scaled, array, word, common secondary"));
        QCOMPARE(f.fieldsOf(f.other), text("common secondary confidential"));
    }

    void virtualFieldsFollowTheOthers()
    {
        Fixture f;
        QCOMPARE(f.apply("{'messages': {'MSG': {'virtual': [{'name': 'second', 'expression': 'x * 2', 'unit': 'm',"
                         "'decimals': 1, 'role': 'secondary', 'description': 'd'},"
                         "{'name': 'first', 'expression': 'second + 1'}, {'name': 'hidden', 'expression': 'common'},"
                         "{'name': 'deeper', 'expression': 'x + hidden'},"
                         "{'name': 'public', 'expression': 'common > 0', 'confidential': false}]},"
                         "'*': {'fields': {'common': {'confidential': true}}}}}"),
                 QString());
        QCOMPARE(f.fieldsOf(f.info), text("x, scaled, array, word, common confidential, second secondary virtual (d), "
                                          "first virtual (second + 1), hidden confidential virtual (common), "
                                          "deeper confidential virtual (x + hidden), public virtual (common > 0)"));
        QCOMPARE(f.shown("second", 1.5) + text(", ") + f.shown("first", 1.5), text("3.0 m, 4"));
    }

    void expressions()
    {
        const TextRow rows[] = {{"x", "3"},
                                {"scaled", "1.5"}, // transmitted as 150
                                {"array_0 + array_2", "12"},
                                {"x > 2 ? 10 : 20", "10"},
                                {"x == 3 && scaled <= 1.5", "1"},
                                {"sqrt(x^2 + 16)", "5"},
                                {"bit(x, 1) + bit(x, 2) * 10", "1"},
                                {"_pi", "3.141592653589793"},
                                {"ln(_e)", "1"},
                                {"sqrt(-x)", "nan"},
                                {"x / 0", "inf"},
                                {"array_3", "absent"},
                                {"x > 2 ? 1 : common", "absent"},
                                {"-1; x + scaled", "absent"},
                                {"65535; x + scaled", "absent"},
                                {"65534; x + scaled", "658.34"}};
        checkRows(rows, valueOfExpression);

        Fixture f;
        QCOMPARE(f.applyVirtual(text("'name': 'v', 'expression': 'x'")), QString());
        const MessageReference other = MessageReference::adopt(new TestMessage(f.other));
        QCOMPARE(f.info->getFieldInfo(text("v"))->getValueCount(other.get()), 0u);
    }

    void errors()
    {
        const TextRow documents[] = {
            {"", "a.json:1: malformed JSON: illegal value"},
            {"{\n'messages': {\n", "a.json:3: malformed JSON: unterminated object"},
            {"[]", "a.json:1: not an object"},
            {"{\n'message': {}}", "a.json:2: unknown key 'message'"},
            {"{\n'messages': []}", "a.json:2: 'messages' is not an object"},
            {"{'messages': {\n'GONE': {}}}", "a.json:2: GONE: unknown message type"},
            {"{'messages': {'MSG': {\n'field': {}}}}", "a.json:2: MSG: unknown key 'field'"},
            {"{'messages': {'*': {'fields': {\n'y': {}}}}}", "a.json:2: *.y: no message type has that field"},
            {"{'messages': {'*': {\n'virtual': []}}}", "a.json:2: *: unknown key 'virtual'"},
            {"{'messages': {'*': {'fields': {'common': {\n'role': 'main'}}}}}", // once
             "a.json:2: *.common: the role 'main' is neither 'primary' nor 'secondary'"},
            {"{'messages': {'MSG': {},\n'M\\u0053G': {}}}", "a.json:2: the key 'MSG' is there twice"},
            {"{'messages': {'MSG': {\n'virtual': {}}}}", "a.json:2: MSG: 'virtual' is not an array"},
            {"{'messages': {'MSG': {'virtual': [\n\n5]}}}", "a.json:3: MSG: a virtual field is not an object"}};
        checkRows(documents, errorsOf);
        const TextRow fields[] = {
            {"\n'y': {}", "a.json:2: MSG.y: unknown field"},
            {"'x': {\n'rule': 1}", "a.json:2: MSG.x: unknown key 'rule'"},
            {"'x': {\n'role': 2}", "a.json:2: MSG.x: 'role' is not a text"},
            {"'x': {\n'confidential': 1}", "a.json:2: MSG.x: 'confidential' is neither true nor false"}};
        checkRows(fields, errorsOfField);
        const TextRow virtualFields[] = {
            {"'expression': 'x'", "a.json:1: MSG: a virtual field without a name"},
            {"'name': 'v'", "a.json:1: MSG.v: a virtual field without an expression"},
            {"\n'name': 'x', 'expression': '1'", "a.json:2: MSG.x: there already is a field of that name"},
            {"'name': 'v', 'expression': 'x',\n'decimals': 18",
             "a.json:2: MSG.v: 'decimals' is not a number from 0 to 17"}};
        checkRows(virtualFields, errorsOfVirtual);
        const TextRow expressions[] = {
            {"x + y", "the expression names 'y', which is no field"},
            {"v + 1", "the expression names 'v', which is no field"},
            {"x_0", "the expression names 'x_0', which is no field"},
            {"word", "the expression names 'word', which is no number"},
            {"array", "the expression names 'array', which has several values: name one as in 'array_0'"},
            {"x = 3", "the expression cannot be understood: a comparison is written '==' (character 3)"},
            {"x, 3", "the expression cannot be understood: it has several results"},
            {"x + sqr(x)", "the expression cannot be understood: there is no function 'sqr' (character 5)"},
            {"(x + 3", "the expression cannot be understood: a parenthesis is missing (character 7)"},
            {"x + * 3", "the expression cannot be understood: '*' cannot stand here (character 5)"},
            {"x +", "the expression cannot be understood: something is missing at the end (character 4)"},
            {"x + 3\u00b0", "the expression cannot be understood: '\u00b0' cannot stand here (character 6)"}};
        checkRows(expressions, errorsOfExpression);
    }

    void whatIsRightIsApplied()
    {
        Fixture f;
        const QString errors = f.apply("{'messages': {'MSG': {'virtual': [\n"
                                       "{'name': 'bad', 'expression': '1 +'},\n"
                                       "{'name': 'good', 'expression': '\\'no', 'unit': 5},\n"
                                       "{'name': 'good', 'expression': 'x', 'unit': 5}], 'fields': {\n"
                                       "'x': {'role': 'secondary', 'confidential': 0}, 'gone': {'role': 'odd'}}}}}");
        QStringList lines;
        for (const QString& error : errors.split(QLatin1Char('\n')))
            lines += error.section(QLatin1Char(':'), 1, 1);
        QCOMPARE(lines.join(QLatin1Char(' ')), text("2 3 3 4 5 5 5"));
        QCOMPARE(f.fieldsOf(f.info), text("x secondary, scaled, array, word, common, good virtual (x)"));
        QCOMPARE(f.shown("good", 2), text("2"));
    }

    void files()
    {
        FormatInfo format(text("test"));
        QStringList errors;
        QVERIFY(!Annotations::apply(text("/nowhere/a.json"), &format, &errors));
        QVERIFY(!Annotations::apply(text("/dev/zero"), &format, &errors));
        QCOMPARE(errors.join(QLatin1Char('\n')), text("/nowhere/a.json:1: cannot be read: No such file or directory\n"
                                                      "/dev/zero:1: cannot be read: not a file"));
        QCOMPARE(Annotations::pathBeside(text("/a/b.c/my.dialect.xml")), text("/a/b.c/my.dialect.annotations.json"));
        QCOMPARE(Annotations::pathBeside(text("x.xml")), text("./x.annotations.json"));
    }
};

QTEST_GUILESS_MAIN(tst_Annotations)

#include "tst_annotations.moc"

#include "annotations.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "testbase.h"
#include "testformat.h"
#include "textrows.h"

#include <QTemporaryDir>

namespace
{

/** A format of two message types, and a folder for annotation files. */
class Fixture
{
public:
    Fixture()
        : info(new MessageInfo(text("MSG")))
        , other(new MessageInfo(text("OTHER")))
        , x(add(info, "x"))
        , scaled(add(info, "scaled"))
        , array(add(info, "array", TestFieldInfo::Repeated))
        , m_format(text("test"))
    {
        scaled->setScale(0.01, 2);
        scaled->setInvalidValue(FieldValue::fromUnsigned(65535));
        add(info, "word", TestFieldInfo::String);
        add(info, "common");
        add(other, "common");
        m_format.addMessageInfo(info);
        m_format.addMessageInfo(other);
    }

    /** Applies a file of that content; returns the errors, without the folder, a line each. Both with ' for ". */
    QString apply(const QByteArray& content)
    {
        QFile file(m_folder.filePath(text("a.json")));
        if (!file.open(QIODevice::WriteOnly) || file.write(QByteArray(content).replace('\'', '"')) != content.size())
            return text("cannot write");
        file.close();
        QStringList errors;
        if (Annotations::apply(file.fileName(), &m_format, &errors) != errors.isEmpty())
            return text("success and errors disagree");
        return errors.join(QLatin1Char('\n'))
            .remove(m_folder.path() + QLatin1Char('/'))
            .replace(QLatin1Char('"'), QLatin1Char('\''));
    }

    QString applyVirtual(const QString& members)
    {
        return apply("{'messages': {'MSG': {'virtual': [{" + members.toUtf8() + "}]}}}");
    }

    /** "x secondary confidential virtual, y": the fields with what is said of them. */
    static QString fieldsOf(const MessageInfo* info)
    {
        QStringList fields;
        for (const FieldInfo* field : info->getFieldInfos())
            fields += field->getName() +
                      text(field->getRole() == FieldInfo::PrimaryRole     ? " primary"
                           : field->getRole() == FieldInfo::SecondaryRole ? " secondary"
                                                                          : "") +
                      text(field->isConfidential() ? " confidential" : "") +
                      text(field->isVirtual() && field->isOptional() && !field->isRepeated() ? " virtual" : "");
        return fields.join(text(", "));
    }

    /** The one value as it is shown; "absent" when there is none. Takes the creator's reference of the message. */
    QString shown(const char* name, TestMessage* message) const
    {
        const MessageReference reference = MessageReference::adopt(message);
        const FieldInfo* field = info->getFieldInfo(text(name));
        if (!field)
            return text("no such field");
        const unsigned int count = field->getValueCount(message);
        if ((count == 1) != field->getValue(message, 0).isValid() || field->getValue(message, 1).isValid())
            return text("count and values disagree");
        return count == 0 ? text("absent") : field->getInterpretedString(field->getValue(message, 0), true);
    }

    MessageInfo* info;
    MessageInfo* other;
    TestFieldInfo* x;
    TestFieldInfo* scaled;
    TestFieldInfo* array;

private:
    static TestFieldInfo* add(MessageInfo* info, const char* name, int flags = TestFieldInfo::Plain)
    {
        TestFieldInfo* field = new TestFieldInfo(text(name), flags);
        field->setRole(FieldInfo::UnspecifiedRole);
        info->addField(field);
        return field;
    }

    QTemporaryDir m_folder;
    FormatInfo m_format;
};

QString errorsOf(const QString& content)
{
    return Fixture().apply(content.toUtf8());
}

QString errorsOfField(const QString& members)
{
    return errorsOf(QStringLiteral("{'messages': {'MSG': {'fields': {%1}}}}").arg(members));
}

QString errorsOfVirtual(const QString& members)
{
    return Fixture().applyVirtual(members);
}

/** The errors of a virtual field of that expression, without their begin. */
QString errorsOfExpression(const QString& expression)
{
    return Fixture()
        .applyVirtual(QStringLiteral("'name': 'v',\n'expression': '%1'").arg(expression))
        .remove(text("a.json:2: MSG.v: "));
}

QString valueOfExpression(const QString& expression)
{
    Fixture f;
    const QString errors = f.applyVirtual(text("'name': 'v', 'expression': '%1'").arg(expression));
    TestMessage* message = (new TestMessage(f.info))->set(f.x, 3)->set(f.scaled, 150)->fill(f.array, 3, 5);
    return errors + f.shown("v", message);
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
        QCOMPARE(f.fieldsOf(f.info),
                 text("x, scaled, array, word, common confidential, second secondary virtual, first virtual, "
                      "hidden confidential virtual, deeper confidential virtual, public virtual"));
        QCOMPARE(f.info->getFieldInfo(text("second"))->getDescription(), text("d"));
        QCOMPARE(f.info->getFieldInfo(text("first"))->getDescription(), text("second + 1"));
        QCOMPARE(f.shown("second", (new TestMessage(f.info))->set(f.x, 1.5)), text("3.0 m"));
        QCOMPARE(f.shown("first", (new TestMessage(f.info))->set(f.x, 1.5)), text("4"));
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
                                {"x > 2 ? 1 : common", "absent"}};
        QCOMPARE(differences(rows, valueOfExpression), QString());

        Fixture f;
        QCOMPARE(f.applyVirtual(text("'name': 'v', 'expression': 'x + scaled'")), QString());
        QCOMPARE(f.shown("v", (new TestMessage(f.info))->set(f.x, 3)), text("absent"));
        QCOMPARE(f.shown("v", (new TestMessage(f.info))->set(f.x, 3)->set(f.scaled, 65535)), text("absent"));
        QCOMPARE(f.shown("v", (new TestMessage(f.info))->set(f.x, 3)->set(f.scaled, 65534)), text("658.34"));
        QCOMPARE(f.shown("v", (new TestMessage(f.other))->set(f.x, 3)->set(f.scaled, 1)), text("absent"));
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
        QCOMPARE(differences(documents, errorsOf), QString());
        const TextRow fields[] = {
            {"\n'y': {}", "a.json:2: MSG.y: unknown field"},
            {"'x': {\n'rule': 1}", "a.json:2: MSG.x: unknown key 'rule'"},
            {"'x': {\n'role': 2}", "a.json:2: MSG.x: 'role' is not a text"},
            {"'x': {\n'confidential': 1}", "a.json:2: MSG.x: 'confidential' is neither true nor false"}};
        QCOMPARE(differences(fields, errorsOfField), QString());
        const TextRow virtualFields[] = {
            {"'expression': 'x'", "a.json:1: MSG: a virtual field without a name"},
            {"'name': 'v'", "a.json:1: MSG.v: a virtual field without an expression"},
            {"\n'name': 'x', 'expression': '1'", "a.json:2: MSG.x: there already is a field of that name"},
            {"'name': 'v', 'expression': 'x',\n'decimals': 18",
             "a.json:2: MSG.v: 'decimals' is not a number from 0 to 17"}};
        QCOMPARE(differences(virtualFields, errorsOfVirtual), QString());
        const TextRow expressions[] = {
            {"x + y", "the expression names 'y', which is no field"},
            {"v + 1", "the expression names 'v', which is no field"},
            {"x_0", "the expression names 'x_0', which is no field"},
            {"word", "the expression names 'word', which is no number"},
            {"array", "the expression names 'array', which has several values: name one as in 'array_0'"},
            {"x = 3", "'=' in the expression: a comparison is written '=='"},
            {"x, 3", "the expression has several results"}};
        QCOMPARE(differences(expressions, errorsOfExpression), QString());
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
        QCOMPARE(f.fieldsOf(f.info), text("x secondary, scaled, array, word, common, good virtual"));
        QCOMPARE(f.shown("good", (new TestMessage(f.info))->set(f.x, 2)), text("2"));
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

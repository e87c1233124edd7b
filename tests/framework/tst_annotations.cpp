#include "annotations.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "testbase.h"
#include "testformat.h"

#include <QRegularExpression>
#include <QTemporaryDir>

class tst_Annotations : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rolesAndConfidentiality();
    void virtualFieldsFollowTheOthers();
    void expressions_data();
    void expressions();
    void inputsThatAreMissing();
    void virtualFieldsOfConfidentialInputs();
    void errors_data();
    void errors();
    void whatIsRightIsApplied();
    void unreadableFiles();
    void pathBesideADefinition();
};

namespace
{

/** A format of two message types, and a folder for annotation files. */
class Fixture
{
public:
    Fixture();

    /** Applies a file of that text; returns the errors, without the folder, a line each. */
    QString apply(const QByteArray& text);

    /** The field of the first message type, or null. */
    const FieldInfo* field(const char* name) const { return info->getFieldInfo(QLatin1String(name)); }

    /** The one value as it is shown; "absent" when there is none. Takes the creator's reference of the message. */
    QString valueText(const char* name, TestMessage* message) const;

    MessageInfo* info;
    MessageInfo* other;
    TestFieldInfo* x;
    TestFieldInfo* scaled;
    TestFieldInfo* array;

private:
    static TestFieldInfo* add(MessageInfo* info, const char* name, int flags = TestFieldInfo::Plain);

    QTemporaryDir m_folder;
    FormatInfo m_format;
};

Fixture::Fixture()
    : info(new MessageInfo(QStringLiteral("MSG")))
    , other(new MessageInfo(QStringLiteral("OTHER")))
    , x(add(info, "x"))
    , scaled(add(info, "scaled"))
    , array(add(info, "array", TestFieldInfo::Repeated))
    , m_format(QStringLiteral("test"))
{
    scaled->setScale(0.01, 2);
    scaled->setInvalidValue(FieldValue::fromUnsigned(65535));
    add(info, "word", TestFieldInfo::String);
    add(info, "common");
    add(other, "common");
    m_format.addMessageInfo(info);
    m_format.addMessageInfo(other);
}

TestFieldInfo* Fixture::add(MessageInfo* info, const char* name, int flags)
{
    TestFieldInfo* field = new TestFieldInfo(QLatin1String(name), flags);
    field->setRole(FieldInfo::UnspecifiedRole);
    info->addField(field);
    return field;
}

QString Fixture::apply(const QByteArray& text)
{
    QFile file(m_folder.filePath(QStringLiteral("a.json")));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return QStringLiteral("cannot write");
    file.close();
    QStringList errors;
    const bool ok = Annotations::apply(file.fileName(), &m_format, &errors);
    if (ok != errors.isEmpty())
        return QStringLiteral("success and errors disagree");
    return errors.join(QLatin1Char('\n')).remove(m_folder.path() + QLatin1Char('/'));
}

QString Fixture::valueText(const char* name, TestMessage* message) const
{
    const MessageReference reference = MessageReference::adopt(message);
    const FieldInfo* field = info->getFieldInfo(QLatin1String(name));
    if (!field)
        return QStringLiteral("no such field");
    const unsigned int count = field->getValueCount(message);
    if ((count == 1) != field->getValue(message, 0).isValid() || field->getValue(message, 1).isValid())
        return QStringLiteral("count and values disagree");
    return count == 0 ? QStringLiteral("absent") : field->getInterpretedString(field->getValue(message, 0), true);
}

QByteArray virtualText(const QByteArray& members)
{
    return "{\"messages\": {\"MSG\": {\"virtual\": [{" + members + "}]}}}";
}

} // namespace

void tst_Annotations::rolesAndConfidentiality()
{
    Fixture f;
    const QByteArray text = R"({"messages": {
        "*": {"fields": {"common": {"role": "secondary", "confidential": true}}},
        "MSG": {"fields": {"x": {"role": "primary"}, "common": {"confidential": false}}}
    }})";
    QCOMPARE(f.apply(text), QString());
    QCOMPARE(f.x->getRole(), FieldInfo::PrimaryRole);
    QVERIFY(!f.x->isConfidential());
    QCOMPARE(f.field("common")->getRole(), FieldInfo::SecondaryRole);
    QVERIFY(!f.field("common")->isConfidential());
    QCOMPARE(f.other->getFieldInfos().first()->getRole(), FieldInfo::SecondaryRole);
    QVERIFY(f.other->getFieldInfos().first()->isConfidential());
    QCOMPARE(f.scaled->getRole(), FieldInfo::UnspecifiedRole);
}

void tst_Annotations::virtualFieldsFollowTheOthers()
{
    Fixture f;
    const QByteArray text = R"({"messages": {"MSG": {"virtual": [
        {"name": "second", "expression": "x * 2", "unit": "m", "decimals": 1, "role": "secondary", "description": "d"},
        {"name": "first", "expression": "second + 1"}
    ]}}})";
    QCOMPARE(f.apply(text), QString());
    QStringList names;
    for (const FieldInfo* info : f.info->getFieldInfos())
        names.append(info->getName());
    QCOMPARE(names.join(QLatin1Char(' ')), QStringLiteral("x scaled array word common second first"));
    const FieldInfo* second = f.field("second");
    QVERIFY(second->isVirtual() && second->isOptional() && !second->isRepeated() && !second->isConfidential());
    QCOMPARE(second->getRole(), FieldInfo::SecondaryRole);
    QCOMPARE(second->getDescription(), QStringLiteral("d"));
    QCOMPARE(f.field("first")->getDescription(), QStringLiteral("second + 1"));
    QVERIFY(second->occursIn(f.info));
    QCOMPARE(f.valueText("second", (new TestMessage(f.info))->set(f.x, 1.5)), QStringLiteral("3.0 m"));
    QCOMPARE(f.valueText("first", (new TestMessage(f.info))->set(f.x, 1.5)), QStringLiteral("4"));
    QVERIFY(!f.x->isVirtual());
}

void tst_Annotations::expressions_data()
{
    QTest::addColumn<QByteArray>("expression");
    QTest::addColumn<QString>("text");
    const auto row = [](const char* expression, const char* text) {
        QTest::newRow(expression) << QByteArray(expression) << QString::fromLatin1(text);
    };
    row("x", "3");
    row("scaled", "1.5"); // transmitted as 150
    row("array_0 + array_2", "12");
    row("x > 2 ? 10 : 20", "10");
    row("x == 3 && scaled <= 1.5", "1");
    row("sqrt(x^2 + 16)", "5");
    row("bit(x, 1) + bit(x, 2) * 10", "1");
    row("_pi", "3.141592653589793");
    row("ln(_e)", "1");
    row("sqrt(-x)", "nan");
    row("x / 0", "inf");
    row("array_3", "absent");
    row("common", "absent");
    row("x > 2 ? 1 : common", "absent");
}

void tst_Annotations::expressions()
{
    Fixture f;
    QFETCH(QByteArray, expression);
    QFETCH(QString, text);
    QCOMPARE(f.apply(virtualText("\"name\": \"v\", \"expression\": \"" + expression + '"')), QString());
    QCOMPARE(f.valueText("v", (new TestMessage(f.info))->set(f.x, 3)->set(f.scaled, 150)->setNumbers(f.array, 3, 5)),
             text);
}

void tst_Annotations::inputsThatAreMissing()
{
    Fixture f;
    const QByteArray text = virtualText(R"("name": "v", "expression": "x + scaled")");
    QCOMPARE(f.apply(text), QString());
    QCOMPARE(f.valueText("v", (new TestMessage(f.info))->set(f.x, 3)), QStringLiteral("absent"));
    QCOMPARE(f.valueText("v", (new TestMessage(f.info))->set(f.x, 3)->set(f.scaled, 65535)), QStringLiteral("absent"));
    QCOMPARE(f.valueText("v", (new TestMessage(f.info))->set(f.x, 3)->set(f.scaled, 65534)), QStringLiteral("658.34"));
    QCOMPARE(f.valueText("v", (new TestMessage(f.other))->set(f.x, 3)->set(f.scaled, 1)), QStringLiteral("absent"));
}

void tst_Annotations::virtualFieldsOfConfidentialInputs()
{
    Fixture f;
    const QByteArray text = R"({"messages": {"MSG": {
        "virtual": [
            {"name": "hidden", "expression": "common"},
            {"name": "deeper", "expression": "x + hidden"},
            {"name": "shown", "expression": "common > 0", "confidential": false},
            {"name": "other", "expression": "x"}
        ]}, "*": {"fields": {"common": {"confidential": true}}}
    }})";
    QCOMPARE(f.apply(text), QString());
    QVERIFY(f.field("hidden")->isConfidential());
    QVERIFY(f.field("deeper")->isConfidential());
    QVERIFY(!f.field("shown")->isConfidential());
    QVERIFY(!f.field("other")->isConfidential());
}

void tst_Annotations::errors_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("error");
    const auto row = [](const char* name, const QByteArray& text, const char* error) {
        QTest::newRow(name) << text << QString::fromLatin1(error);
    };
    row("empty", "", "a.json:1: malformed JSON: illegal value");
    row("unfinished", "{\n\"messages\": {\n", "a.json:3: malformed JSON: unterminated object");
    row("array", "[]", "a.json:1: not an object");
    row("unknown key", "{\n\"message\": {}}", "a.json:2: unknown key \"message\"");
    row("messages", "{\n\"messages\": []}", "a.json:2: \"messages\" is not an object");
    row("unknown message", "{\"messages\": {\n\"GONE\": {}}}", "a.json:2: GONE: unknown message type");
    row("unknown message key", "{\"messages\": {\"MSG\": {\n\"field\": {}}}}", "a.json:2: MSG: unknown key \"field\"");
    row("unknown field", "{\"messages\": {\"MSG\": {\"fields\": {\n\"y\": {}}}}}", "a.json:2: MSG.y: unknown field");
    row("unknown field of all", "{\"messages\": {\"*\": {\"fields\": {\n\"y\": {}}}}}",
        "a.json:2: *.y: no message type has that field");
    row("virtual for all", "{\"messages\": {\"*\": {\n\"virtual\": []}}}", "a.json:2: *: unknown key \"virtual\"");
    row("unknown property", "{\"messages\": {\"MSG\": {\"fields\": {\"x\": {\n\"rule\": 1}}}}}",
        "a.json:2: MSG.x: unknown key \"rule\"");
    row("role", "{\"messages\": {\"MSG\": {\"fields\": {\"x\": {\n\"role\": \"main\"}}}}}",
        "a.json:2: MSG.x: the role \"main\" is neither \"primary\" nor \"secondary\"");
    row("role of all, once", "{\"messages\": {\"*\": {\"fields\": {\"common\": {\n\"role\": \"main\"}}}}}",
        "a.json:2: *.common: the role \"main\" is neither \"primary\" nor \"secondary\"");
    row("role's type", "{\"messages\": {\"MSG\": {\"fields\": {\"x\": {\n\"role\": 2}}}}}",
        "a.json:2: MSG.x: \"role\" is not a text");
    row("confidential", "{\"messages\": {\"MSG\": {\"fields\": {\"x\": {\n\"confidential\": 1}}}}}",
        "a.json:2: MSG.x: \"confidential\" is neither true nor false");
    row("key twice", "{\"messages\": {\"MSG\": {},\n\"M\\u0053G\": {}}}", "a.json:2: the key \"MSG\" is there twice");
    row("virtual's type", "{\"messages\": {\"MSG\": {\n\"virtual\": {}}}}",
        "a.json:2: MSG: \"virtual\" is not an array");
    row("element's type", "{\"messages\": {\"MSG\": {\"virtual\": [\n\n5]}}}",
        "a.json:3: MSG: a virtual field is not an object");
    const auto virtualRow = [&row](const char* name, const char* members, const char* error) {
        row(name, virtualText(members), error);
    };
    virtualRow("no name", R"("expression": "x")", "a.json:1: MSG: a virtual field without a name");
    virtualRow("no expression", R"("name": "v")", "a.json:1: MSG.v: a virtual field without an expression");
    virtualRow("taken name", "\n\"name\": \"x\", \"expression\": \"1\"",
               "a.json:2: MSG.x: there already is a field of that name");
    virtualRow("decimals", "\"name\": \"v\", \"expression\": \"x\",\n\"decimals\": 18",
               "a.json:2: MSG.v: \"decimals\" is not a number from 0 to 17");
    virtualRow("unknown member", "\"name\": \"v\", \"expression\": \"x\",\n\"units\": \"m\"",
               "a.json:2: MSG.v: unknown key \"units\"");
    virtualRow("unknown input", "\"name\": \"v\",\n\"expression\": \"x + y\"",
               "a.json:2: MSG.v: the expression names \"y\", which is no field");
    virtualRow("itself", "\"name\": \"v\",\n\"expression\": \"v + 1\"",
               "a.json:2: MSG.v: the expression names \"v\", which is no field");
    virtualRow("element of a plain field", "\"name\": \"v\",\n\"expression\": \"x_0\"",
               "a.json:2: MSG.v: the expression names \"x_0\", which is no field");
    virtualRow("text", "\"name\": \"v\",\n\"expression\": \"word\"",
               "a.json:2: MSG.v: the expression names \"word\", which is no number");
    virtualRow("whole array", "\"name\": \"v\",\n\"expression\": \"array\"",
               "a.json:2: MSG.v: the expression names \"array\", which has several values: name one as in \"array_0\"");
    virtualRow("assignment", "\"name\": \"v\",\n\"expression\": \"x = 3\"",
               "a.json:2: MSG.v: \"=\" in the expression: a comparison is written \"==\"");
    virtualRow("several results", "\"name\": \"v\",\n\"expression\": \"x, 3\"",
               "a.json:2: MSG.v: the expression has several results");
}

void tst_Annotations::errors()
{
    Fixture f;
    QFETCH(QByteArray, text);
    QFETCH(QString, error);
    QCOMPARE(f.apply(text), error);
}

void tst_Annotations::whatIsRightIsApplied()
{
    Fixture f;
    const QByteArray text = R"({"messages": {
        "MSG": {
            "virtual": [
                {"name": "bad", "expression": "1 +"},
                {"name": "good", "expression": "\"no", "unit": 5},
                {"name": "good", "expression": "x", "unit": 5}
            ],
            "fields": {"x": {"role": "secondary", "confidential": 0}, "gone": {"role": "odd"}}
        }
    }})";
    QCOMPARE(f.apply(text)
                 .replace(QRegularExpression(QStringLiteral("understood: .*")), QStringLiteral("understood"))
                 .split(QLatin1Char('\n'))
                 .size(),
             7);
    QCOMPARE(f.x->getRole(), FieldInfo::SecondaryRole);
    QVERIFY(!f.field("bad"));
    QCOMPARE(f.valueText("good", (new TestMessage(f.info))->set(f.x, 2)), QStringLiteral("2"));
}

void tst_Annotations::unreadableFiles()
{
    FormatInfo format(QStringLiteral("test"));
    QStringList errors;
    QVERIFY(!Annotations::apply(QStringLiteral("/nowhere/a.json"), &format, &errors));
    QVERIFY(!Annotations::apply(QStringLiteral("/dev/zero"), &format, &errors));
    QCOMPARE(errors.join(QLatin1Char('\n')),
             QStringLiteral("/nowhere/a.json:1: cannot be read: No such file or directory\n"
                            "/dev/zero:1: cannot be read: not a file"));
}

void tst_Annotations::pathBesideADefinition()
{
    QCOMPARE(Annotations::pathBeside(QStringLiteral("/a/b.c/my.dialect.xml")),
             QStringLiteral("/a/b.c/my.dialect.annotations.json"));
    QCOMPARE(Annotations::pathBeside(QStringLiteral("x.xml")), QStringLiteral("./x.annotations.json"));
}

QTEST_GUILESS_MAIN(tst_Annotations)

#include "tst_annotations.moc"

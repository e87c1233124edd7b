#include "definitions.h"
#include "encoding.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "testbase.h"
#include "textrows.h"

namespace
{

/** Quotes are written as apostrophes, and the escapes \0 and \xff as such bytes, for the sake of the rows. */
QByteArray bytesOf(const QString& text)
{
    return text.toUtf8().replace('\'', '"').replace("\\xff", "\xff").replace("\\0", QByteArray(1, '\0'));
}

QString valueText(const FieldInfo* field, const Message* message, unsigned int index);

QString fieldsText(const Message* message)
{
    QStringList texts;
    for (const FieldInfo* field : message->getInfo()->getFieldInfos()) {
        const unsigned int count = field->getValueCount(message);
        QStringList values;
        for (unsigned int i = 0; i < count; ++i)
            values.append(valueText(field, message, i));
        if (field->getValue(message, count).isValid())
            values.append(QStringLiteral("more than there are"));
        if (field->isRepeated() && (count > 0 || !field->isOptional()))
            texts.append(field->getName() + QStringLiteral(": [") + values.join(QStringLiteral(", ")) +
                         QLatin1Char(']'));
        else if (count > 0)
            texts.append(field->getName() + QStringLiteral(": ") + values.join(QLatin1Char('|')));
    }
    return texts.join(QStringLiteral(", "));
}

/** Texts stand in quotes, and components behind their value. */
QString valueText(const FieldInfo* field, const Message* message, unsigned int index)
{
    const FieldValue value = field->getValue(message, index);
    if (!value.isValid())
        return QStringLiteral("null");
    if (value.getSubMessage())
        return QLatin1Char('{') + fieldsText(value.getSubMessage()) + QLatin1Char('}');
    QString text = field->getInterpretedString(value, true);
    if (value.getKind() == FieldValue::TextKind && !field->getName().startsWith(QLatin1Char('[')))
        text = QLatin1Char('"') + text + QLatin1Char('"');
    for (const FieldInfo* part : field->getSubFieldInfos())
        text += QLatin1Char(' ') + part->getName() + QLatin1Char('=') +
                part->getInterpretedString(part->getValue(message, index), true);
    return text;
}

QString typeText(const MessageInfo* info)
{
    QStringList texts;
    for (const FieldInfo* field : info->getFieldInfos()) {
        if (field->getName().startsWith(QLatin1Char('[')))
            continue;
        QString text = field->getName() + QLatin1Char(' ') + field->getType().toShortString();
        text += field->isRepeated() ? QStringLiteral("[]") : QString();
        text += field->isOptional() ? QString() : QStringLiteral(" required");
        for (const QString& more : {field->getUnit(), field->getRangeText(), field->getDescription()})
            text += more.isEmpty() ? QString() : QLatin1Char(' ') + more;
        if (field->getType().getSubMessageInfo() && field->getType().getSubMessageInfo() != info)
            text += QStringLiteral(" {") + typeText(field->getType().getSubMessageInfo()) + QLatin1Char('}');
        texts.append(text);
    }
    return texts.join(QStringLiteral(", "));
}

/** The type of "schema | message"; the text behind the last bar is a message of it. */
const MessageInfo* typeOf(Definitions* definitions, const QString& schema, const QString& sample, QString* error)
{
    TypeSchema given{QStringLiteral("T"), "json", schema.isEmpty() ? "" : "jsonschema", bytesOf(schema)};
    Encoding* const json = definitions->find(QStringLiteral("json"));
    const MessageInfo* const info = json->makeType(given, error);
    if (info)
        return info;
    given.sample = bytesOf(sample);
    return json->makeType(given, error);
}

/** What is read of "schema | message", or of "schema | first message | message". */
QString read(const QString& given)
{
    const QStringList parts = given.split(QStringLiteral(" | "));
    Definitions definitions;
    QString error;
    const MessageInfo* const info = typeOf(&definitions, parts.first(), parts.at(1), &error);
    const MessageReference message = MessageReference::adopt(info->newMessage(bytesOf(parts.last())));
    return (error.isEmpty() ? QString() : error + QStringLiteral("; ")) + fieldsText(message.get());
}

/** The fields that a type has. */
QString describe(const QString& given)
{
    const QStringList parts = given.split(QStringLiteral(" | "));
    Definitions definitions;
    QString error;
    return typeText(typeOf(&definitions, parts.first(), parts.value(1, QStringLiteral("{}")), &error));
}

} // namespace

/** Messages and schemas of JSON. */
class tst_JsonMessage : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void messagesSayThemselvesWhatTheyHave()
    {
        static const TextRow rows[] = {
            {" | {'a':1,'b':'x','c':true,'d':null,'e':{'f':[1,2.5,-3]},'g':[]}",
             "a: 1, b: \"x\", c: true, d: null, e: {f: [1, 2.5, -3]}"},
            {" | [1, 2]", "value: [1, 2]"},
            {" | 'x'", "value: \"x\""},
            {" | [[1,2],[],null,[3]]", "value: [{value: [1, 2]}, {value: []}, null, {value: [3]}]"},
            {" | [{'a':1},{'b':2},{}]", "value: [{a: 1}, {b: 2}, {}]"},
            {" |   {'':0,'a b':1,'\\u0061':2, '☃': 3}\r\n", ": 0, a b: 1, a: 2, ☃: 3"},
            // Every digit.
            {" | [18446744073709551615,-9223372036854775808,9007199254740993,0.1,1e3,-0,1.50]",
             "value: [18446744073709551615, -9223372036854775808, 9007199254740993, 0.1, 1000, -0, 1.5]"},
            {" | "
             "[18446744073709551616,-9223372036854775809,3.14159265358979323846,0.30000000000000004,1e400,-1E-400,5e-"
             "324]",
             "value: [18446744073709551616, -9223372036854775809, 3.14159265358979323846, 0.30000000000000004, 1e400, "
             "-1E-400, 5e-324]"},
            {" | [NaN,Infinity,-Infinity]", "value: [nan, inf, -inf]"},
            // Every character.
            {" | ['\\u00e9\\ud83d\\ude00😀\\n\\/\\\\\\u0001|']", "value: [\"é😀😀\n/\\\x01|\"]"},
            // What comes later and otherwise.
            {" | {'a':1} | {'a':2,'b':[1, 2]}", "a: 2, [unknown fields]: [b: [1, 2]]"},
            {" | {'a':1} | {'a':'x'}", "a: \"x\""},
            {" | {'a':1} | {'a':{'b': 1}}", "a: \"{\"b\": 1}\""},
            {" | {'a':null} | {'a':[1]}", "a: \"[1]\""},
            {" | {'a':{'b':1}} | {'a':3}", "[unknown fields]: [a: 3 (but a is an object)]"},
            {" | {'a':{'b':1}} | {'a':null}", "a: null"},
            {" | {'a':[1]} | {'a':null}", "[unknown fields]: [a: null (but a is an array)]"},
            {" | [{'a':1}] | [{'a':2},5,null]",
             "value: [{a: 2}, null, null], [unknown fields]: [value[1]: 5 (but value is an object)]"},
            {" | [[1]] | [[2],{}]",
             "value: [{value: [2]}, null], [unknown fields]: [value[1]: {} (but value is an array)]"},
            {" | null | {'a':1}", "[unknown fields]: [a: 1]"},
            {" | {'a':1} | [1]", "[unknown fields]: [value: [1]]"},
            {" | [1] | {'a':1}", "value: [], [unknown fields]: [value: {\"a\":1} (but value is an array)]"},
            {" | [1,{'a':2},[3]]", "value: [1, \"{\"a\":2}\", \"[3]\"]"},
        };
        QCOMPARE(differences(rows, read), QString());
    }

    void whatIsWrongIsTold()
    {
        static const TextRow rows[] = {
            {" | {'a':1} | {'a':1,'b':", "a: 1, [problems]: [b at byte 11: it ends before what is open was closed]"},
            {" | {'a':[{'b':1}]} | {'a':[{'b':1},{'b':'x",
             "a: [{b: 1}, {}], [problems]: [a[1].b at byte 19: a text does "
             "not end; it is not decoded]"},
            {" | {'a':1,'b':2} | {'a':1 'b':2}", "a: 1, [problems]: [a at byte 7: a comma or the end of what is open "
                                                 "was expected; the rest is not decoded]"},
            {" | {'a':1} | {'a':3}]", "a: 3, [problems]: [byte 7: 1 bytes follow the end; they are not decoded]"},
            {" | {'a':1} | {'a':3}\\0", "a: 3, [problems]: [byte 7: 1 bytes follow the end; they are not decoded]"},
            {" | {'a':1} | {'a':3,}", "a: 3, [problems]: [a at byte 7: the name of a member was expected; the rest is "
                                      "not decoded]"},
            {" | {'a':1} | {'a':3,'b'}",
             "a: 3, [problems]: [a at byte 7: a name without a value; the rest is not decoded]"},
            {" | {'a':1} | {'a':}", "[problems]: [a at byte 5: a value was expected; the rest is not decoded]"},
            {" | {'a':1} | ", "[problems]: [byte 0: there is nothing]"},
            {" | {'a':1} | {'a':tru}", "a: \"tru\", [problems]: [a at byte 5: no value of JSON, shown as it is]"},
            {" | {'a':1} | {'a':01}", "a: \"01\", [problems]: [a at byte 5: no value of JSON, shown as it is]"},
            {" | {'a':1} | {'a':'\\ud83d!'}",
             "a: \"\uFFFD!\", [problems]: [a at byte 5: half of a surrogate pair, shown "
             "as U+FFFD: \\ud83d]"},
            {" | {'a':1} | {'a':'\\q'}",
             "a: \"\\q\", [problems]: [a at byte 5: no escape of JSON, shown as it is: \\q]"},
            {" | {'a':1} | {'a':'\\xff', 'a':2}",
             "a: 2, [unknown fields]: [a: \"?\" (it is there again)], [problems]: [a at byte 6: not valid UTF-8; wrong "
             "bytes are shown as question marks, a at byte 10: the name is there more than once; the last value is "
             "shown]"},
            {" | {'a':1} | {'a':'x\ty'}",
             "a: \"x\ty\", [problems]: [a at byte 7: a control character without an escape]"},
        };
        QCOMPARE(differences(rows, read), QString());
    }

    void nothingIsReadTooDeeply()
    {
        static const TextRow rows[] = {
            {"100", "100 levels, "},
            {"101", "100 levels, [0][0] at byte 100: nested more than 100 deep; it is shown as it came"},
            {"100000", "100 levels, [0][0] at byte 100: nested more than 100 deep; it is shown as it came"},
        };
        const auto levels = [](const QString& depth) {
            const QByteArray bytes = QByteArray(depth.toInt(), '[') + QByteArray(depth.toInt(), ']');
            Definitions definitions;
            QString error;
            const MessageInfo* const info = typeOf(&definitions, QString(), QLatin1String(bytes), &error);
            const MessageReference whole = MessageReference::adopt(info->newMessage(bytes));
            int count = 0;
            for (const Message* message = whole.get(); message; ++count)
                message = message->getInfo()->getFieldInfos().constFirst()->getValue(message, 0).getSubMessage();
            const QString problem = info->getFieldInfo(QStringLiteral("[problems]"))->getValue(whole.get(), 0).toText();
            return QStringLiteral("%1 levels, %2")
                .arg(count)
                .arg(problem)
                .replace(QString::fromLatin1("[0]").repeated(98), QString());
        };
        QCOMPARE(differences(rows, levels), QString());
    }

    void schemasSayWhatThereIs()
    {
        static const TextRow rows[] = {
            {"{'type':'object','properties':{'a':{'type':'integer','description':'An a','minimum':0,'maximum':9},"
             "'b':{'type':['string','null'],'title':'B'},'c':{'type':'array','items':{'type':'number','unit':'m'}},"
             "'d':{'type':'string','enum':['on','off']}},'required':['a']}",
             "a integer required 0 to 9 An a, b string B, c number[] m, d string on, off"},
            {"{'properties':{'p':{'$ref':'#/$defs/P'},'q':{'$ref':'#/$defs/P','description':'Two'}},'$defs':{'P':"
             "{'type':'object','description':'One','properties':{'x':{'type':'number'},'next':{'$ref':'#/$defs/P'}}}}}",
             "p T.P One {x number, next T.P One}, q T.P Two {x number, next T.P One}"},
            {"{'properties':{'a':{'oneOf':[{'type':'null'},{'type':'object','properties':{'x':{'type':'number'}}}]},"
             "'b':{'anyOf':[{'type':'string'},{'type':'number'}]},'c':{'allOf':[{'properties':{'x':{'type':'integer'}}}"
             ","
             "{'properties':{'y':{'type':'boolean'}}}]}}}",
             "a T.a {x number}, b any, c T.c {x integer, y boolean}"},
            {"{'type':'array','items':{'type':'array','items':{'type':'integer'}}}", "value T.value[] required {value "
                                                                                     "integer[] required}"},
            {"{'properties':{'t':{'type':'object','title':'time','properties':{'sec':{'type':'integer'},'nsec':{'type':"
             "'integer'}}},'b':{'type':'string','contentEncoding':'base64'}}}",
             "t time, b base64"},
            // What is open is what the first message has.
            {"{'type':'object'} | {'a':{'b':'x'}}", "a T.a {b string}"},
            {"{'properties':{'a':{},'b':{'type':'object','additionalProperties':{'type':'number'}}}} | "
             "{'a':1,'b':{'c':2},'d':4}",
             "a number, b T.b {c number}"},
            {"{'$ref':'#'} | {'a':1}", "a number"},
            {"{'properties':{'a':{'$ref':'http://other/schema'}}} | {'a':[true]}", "a boolean[]"},
        };
        QCOMPARE(differences(rows, describe), QString());
    }

    void messagesAreReadWithSchemas()
    {
        static const TextRow rows[] = {
            {"{'properties':{'t':{'title':'time','type':'object','properties':{'sec':{},'nsec':{}}},'d':{'title':"
             "'duration','type':'object','properties':{'nsec':{},'sec':{}}}}} | {'t':{'sec':1718713540,'nsec':5},"
             "'d':{'sec':-1,'nsec':-500000000}}",
             "t: \"2024-06-18T12:25:40.000000005Z\" sec=1718713540 s nsec=5 ns, d: \"-1.5 s\" sec=-1 s nsec=-500000000 "
             "ns"},
            {"{'properties':{'t':{'title':'time','type':'object','properties':{'sec':{},'nsec':{}}}}} | "
             "{'t':{'sec':1.5,'nsec':0}}",
             "[unknown fields]: [t: {\"sec\":1.5,\"nsec\":0} (but t is time)]"},
            {"{'properties':{'b':{'type':'string','contentEncoding':'base64'},'c':{'type':'string','contentEncoding':"
             "'base64'}}} | {'b':'aGk=','c':'?'}",
             "b: 6869 (2 bytes), c: \"?\""},
            {"{'properties':{'l':{'oneOf':[{'title':'LOW','const':1},{'title':'HIGH','const':-2}]}}} | {'l':-2}",
             "l: HIGH (-2)"},
            {"{'properties':{'a':{'type':'integer','unit':'m'}}} | {'a':5,'extra':{'b':1}}",
             "a: 5 m, [unknown fields]: [extra: {\"b\":1}]"},
            // A schema that is of no use loses nothing.
            {"{'properties': | {'a':1}",
             "the schema is no JSON: properties at byte 14: it ends before what is open was "
             "closed; a: 1"},
            {"[] | {'a':1}", "the schema is neither an object nor true; a: 1"},
        };
        QCOMPARE(differences(rows, read), QString());
    }

    void typesStayAndGrow()
    {
        Definitions definitions;
        QString error;
        const auto type = [&](const char* sample) {
            return typeOf(&definitions, QString(), QLatin1String(sample), &error);
        };
        const MessageInfo* const first = type("{'a':1}");
        QCOMPARE(type("{'a':2}"), first);
        QCOMPARE(type("{}"), first);
        const MessageInfo* const second = type("{'b':2}");
        QCOMPARE(typeText(second), QStringLiteral("a number, b number"));
        QCOMPARE(type("{'a':1}"), second);
        QCOMPARE(typeText(first), QStringLiteral("a number"));

        QStringList problems;
        definitions.publish(&problems);
        QCOMPARE(definitions.getFormat(QStringLiteral("json"))->getMessageInfos().size(), 2);
        const TypeSchema schema = definitions.schemaOf(second);
        QCOMPARE(schema.messageEncoding, QByteArray("json"));
        QCOMPARE(schema.name + QLatin1String(schema.encoding + schema.data + schema.sample), QStringLiteral("T"));
    }
};

QTEST_GUILESS_MAIN(tst_JsonMessage)
#include "tst_jsonmessage.moc"

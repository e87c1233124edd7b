#include "definitions.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "mcapfixtures.h"
#include "messageinfo.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"

namespace
{

QByteArray dialect(const char* field)
{
    return QByteArray("<mavlink><messages><message id=\"4711\" name=\"PING\"><field type=\"uint8_t\" name=\"") + field +
           "\">A</field></message></messages></mavlink>";
}

} // namespace

/** Files of definitions and annotations of whatever encoding, told apart by their names or contents. */
class tst_Definitions : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void filesMeanWhatTheySay()
    {
        write("ping.xml", dialect("a"));
        write("other.xml", dialect("b"));
        write("text", "\xEF\xBB\xBF \n" + dialect("c"));
        write("beside.xml", dialect("d"));
        write("beside.annotations.json",
              "{\"messages\": {\"PING\": {\"fields\": {\"d\": {\"role\": \"secondary\"}}}}}");
        write("broken.xml", "<mavlink>\n<nothing");
        write("car.proto", "syntax = 'proto3'; package t; message Car { int32 a = 1; }");
        write("car.annotations.json", "{\"messages\": {\"t.Car\": {\"fields\": {\"a\": {\"role\": \"secondary\"}}}}}");
        write("set", McapFixtures::schema());
        write("nobodys", "hello");
        write("ws/demo/msg/Car.msg", "Wheel[4] wheels\r\nstd_msgs/Header header\r\nuint8 s");
        write("ws/demo/msg/Wheel.msg", "far/Tyre t");
        write("ws/std_msgs/msg/Header.msg", "builtin_interfaces/Time stamp\nstring frame_id\n");
        write("else/share/far/msg/Tyre.msg", "# Of a wheel\nuint7 a");
        write("good/far/msg/Tyre.msg", "uint8 a");
        write("ws/demo/msg/Lap.idl", "#include \"demo/msg/Part.idl\"\nmodule demo { module msg {\n"
                                     "struct Lap { demo::msg::Part part; }; }; };");
        write("ws/demo/msg/Part.idl", "module demo { module msg { struct Part { long x; }; }; };");
        write("plain.idl", "#include <base.idl>\nstruct A { B b; };\nmodule m { struct C : A { long c; }; };");
        write("base.idl", "struct B { long x; };");
        write("bad.idl", "#include \"worse.idl\"\nstruct A { long a; };");
        write("worse.idl", "struct B {\n  long 5; };");
        write("empty.idl", "module m { };");
        write("t.Bus.schema.json", "\xEF\xBB\xBF{\"properties\": {\"speed\": {\"type\": \"number\"}}}");
        write("pose", "{\"$schema\": \"\", \"properties\": {\"x\": {}}}");
        write("no.schema.json", "{\"a\":\n  ]}");
        write("zero.schema.json", "0");
        write("a.json",
              "{\"messages\": {\"*\": {\"fields\": {\"a\": {\"role\": \"primary\"}}},\n\"PING\": {\"virtual\": "
              "[{\"name\": \"v\", \"expression\": \"2 * a\"}]}}}");
        write("typo.json", "{\"messages\": {\"PINK\": {}}}");
        write("later.json", "{\"messages\": {\"t.Car\": {\"fields\": {\n\"x\": {}}}}}");

        static const TextRow rows[] = {
            {"load ping.xml", "PING.a"},
            {"load text", "PING.c"},
            {"load car.proto", "t.Car.a secondary"},
            {"load set", "demo.Point.x|demo.Point.n"},
            {"load nobodys", "nobodys: these are no definitions that can be read: MAVLink dialect (*.xml), Protocol "
                             "Buffers schema (*.proto *.desc *.pb *.bin), ROS 2 message definition (*.msg *.idl), JSON "
                             "schema (*.schema.json)"},
            {"load ws", "ws: cannot be read: not a file"},
            // What a definition of ROS needs stands beside it, or where imports are.
            {"load ws/demo/msg/Car.msg", "ws/demo/msg/Wheel.msg:1:1: the type far/Tyre is not defined"},
            {"import else,load ws/demo/msg/Car.msg", "else/share/far/msg/Tyre.msg:2:1: the type uint7 is not defined"},
            {"import good/far,load ws/demo/msg/Car.msg",
             "demo/msg/Car.wheels|demo/msg/Car.header|demo/msg/Car.s|demo/msg/Wheel.t|std_msgs/msg/Header.stamp|"
             "std_msgs/msg/Header.frame_id|far/msg/Tyre.a"},
            {"load good/far/msg/Tyre.msg,load good/far/msg/Tyre.msg", "far/msg/Tyre.a"},
            {"load good.msg", "good.msg: No such file or directory"},
            {"load ws/demo/msg/Lap.idl", "demo/msg/Lap.part|demo/msg/Part.x"},
            {"load plain.idl", "A.b|B.x|m::C.b|m::C.c|B.x"},
            {"load bad.idl", "worse.idl:2:8: a name is expected here"},
            {"load empty.idl", "empty.idl: there is no struct in it"},
            {"load t.Bus.schema.json,load pose", "t.Bus.speed|pose.x"},
            {"load no.schema.json", "no.schema.json:2:3: a at byte 8: a value was expected; the rest is not decoded"},
            {"load zero.schema.json", "zero.schema.json: the schema is neither an object nor true"},
            {"load missing", "missing: cannot be read: No such file or directory"},
            {"load broken.xml", "broken.xml:2: malformed XML: Premature end of document."},
            {"load ping.xml,load other.xml,load car.proto", "PING.b|t.Car.a secondary"},
            {"load ping.xml,load broken.xml", "broken.xml:2: malformed XML: Premature end of document.|PING.a"},
            // A source's own definitions are for nobody else.
            {"load ping.xml,name other.xml", "PING.a"},
            {"load ping.xml,name other.xml,as other.xml", "PING.b"},
            {"load ping.xml,as other.xml", "PING.a"},
            // What is annotated, before and after.
            {"load beside.xml", "PING.d secondary"},
            {"load beside.xml,name beside.xml", "PING.d secondary"},
            {"load ping.xml,annotate a.json,annotate a.json", "PING.a primary|PING.v"},
            {"annotate a.json,load ping.xml", "PING.a primary|PING.v"},
            {"annotate a.json,load ping.xml,load ping.xml", "PING.a primary|PING.v"},
            {"load car.proto,annotate a.json", "t.Car.a primary"},
            {"load ping.xml,annotate typo.json", "typo.json:1: PINK: unknown message type|PING.a"},
            {"annotate typo.json", ""},
            {"annotate later.json,load car.proto", "later.json:2: t.Car.x: unknown field|t.Car.a secondary"},
            // The definitions of all say what is wrong; those of one source may lack something.
            {"load ping.xml,name other.xml,annotate a.json,as other.xml", "PING.b"},
            {"load other.xml,annotate a.json", "a.json:1: *.a: no message type has that field|a.json:2: PING.v: the "
                                               "expression names \"a\", which is no field|PING.b"},
        };
        checkRows(rows, [this](const QString& steps) { return run(steps); });
    }

    void typesOfRecordingsHaveASchema()
    {
        Definitions definitions;
        QStringList errors;
        QVERIFY(definitions.load(write("points", McapFixtures::schema()), QStringList(), &errors));
        QString error;
        const MessageInfo* const point = definitions.findType(QStringLiteral("demo.Point"), &error);
        QVERIFY(point);
        const TypeSchema schema = definitions.schemaOf(point);
        QCOMPARE(schema.name, QStringLiteral("demo.Point"));
        QCOMPARE(schema.messageEncoding, QByteArray("protobuf"));
        QCOMPARE(schema.encoding, QByteArray("protobuf"));
        QCOMPARE(schema.data, McapFixtures::schema());
        const FormatInfo* const builtIn = definitions.getFormat(QStringLiteral("mavlink"));
        QVERIFY(definitions.schemaOf(builtIn->getMessageInfo(QStringLiteral("HEARTBEAT"))).isEmpty());
        QVERIFY(definitions.isComplete(builtIn));
        QVERIFY(!definitions.isComplete(definitions.getFormat(QStringLiteral("protobuf"))));
        QVERIFY(!definitions.find(QStringLiteral("smoke")));
    }

private:
    QString write(const char* name, const QByteArray& bytes) const
    {
        return m_folder.write(QLatin1String(name), bytes);
    }

    /** What is wrong after these steps, without the folder, and the fields of all types that files brought. */
    QString run(const QString& steps) const
    {
        Definitions definitions;
        QStringList found;
        QStringList imports;
        QString named;
        bool isLoaded = false;
        for (const QString& step : steps.split(QLatin1Char(','))) {
            const QString verb = step.section(QLatin1Char(' '), 0, 0);
            const QString path = m_folder.filePath(step.section(QLatin1Char(' '), 1));
            const int before = int(found.size());
            bool good = true;
            if (verb == QLatin1String("annotate"))
                good = definitions.annotate(path, &found);
            else if (verb == QLatin1String("import"))
                imports.append(path);
            else if (verb == QLatin1String("load"))
                good = definitions.load(path, imports, &found);
            else if (verb == QLatin1String("name"))
                good = definitions.load(path, QStringList(), &found, Definitions::NamingSources);
            else
                named = path;
            isLoaded =
                isLoaded || (good && path.endsWith(QLatin1String(".xml"))) || path.endsWith(QLatin1String("text"));
            if (good != (found.size() == before))
                found.append(QStringLiteral("%1 tells the wrong result").arg(step));
        }
        QString error;
        for (const QString& name : definitions.getTypeNames())
            definitions.findType(name, &error);
        definitions.publish(&found);
        QVector<const MessageInfo*> infos;
        if (isLoaded)
            infos += definitions.getFormat(QStringLiteral("mavlink"), named)->getMessageInfos();
        for (const char* encoding : {"protobuf", "cdr", "json"})
            infos += definitions.getFormat(QLatin1String(encoding))->getMessageInfos();
        for (const MessageInfo* info : std::as_const(infos)) {
            for (const FieldInfo* field : info->getFieldInfos()) {
                static const char* const roles[] = {"", " primary", " secondary"};
                if (!field->getName().startsWith(QLatin1Char('['))) // the encoding's own
                    found.append(info->getName() + QLatin1Char('.') + field->getName() +
                                 QLatin1String(roles[field->getRole()]));
            }
        }
        return m_folder.relative(found.join(QLatin1Char('|')));
    }

    TestFolder m_folder;
};

QTEST_GUILESS_MAIN(tst_Definitions)
#include "tst_definitions.moc"

#include "sourcearguments.h"

#include <QCommandLineParser>
#include <QFileInfo>

namespace
{

/** "a", "b" or "c". */
QString alternatives(const QStringList& names)
{
    QStringList quoted;
    for (const QString& name : names)
        quoted.append(QLatin1Char('"') + name + QLatin1Char('"'));
    const QString last = quoted.takeLast();
    return quoted.join(QLatin1String(", ")) + QLatin1String(" or ") + last;
}

QStringList containerNames()
{
    QStringList names;
    for (const Container* container : Container::getAll())
        names.append(QLatin1String(container->name));
    return names;
}

} // namespace

QList<QCommandLineOption> SourceArguments::getOptions()
{
    const QString file = QStringLiteral("FILE");
    const QString name = QStringLiteral("NAME");
    return {
        {{QStringLiteral("definitions"), QStringLiteral("dialect"), QStringLiteral("schema")},
         QStringLiteral(
             "File of definitions: a MAVLink dialect (XML) instead of the built-in one, a Protocol Buffers "
             "schema (.proto or a descriptor set), a definition of ROS 2 or DDS (.msg, .idl) or a JSON schema "
             "(.schema.json); can be repeated. MCAP recordings bring their own. Or "
             "FILTER=TYPE, such as \"fleet/+/car=demo.Car\": what the topics of a broker are that do not say it, a "
             "type "
             "of these files, \"mavlink\" or \"json\"."),
         file},
        {QStringLiteral("import-path"),
         QStringLiteral("Folder in which imports of schemas are looked for; can be repeated."),
         QStringLiteral("FOLDER")},
        {QStringLiteral("annotations"), QStringLiteral("Annotation file (JSON), such as for virtual fields."), file},
        {QStringLiteral("format"),
         QStringLiteral("What the input is, %1, instead of finding out.").arg(alternatives(containerNames())), name},
        {QStringLiteral("type"), QStringLiteral("Full name of the type of all messages, such as \"demo.Car\"."), name},
        {QStringLiteral("framing"),
         QStringLiteral("How messages of --type lie in the input, \"varint\" or \"u32\" for the length before each, or "
                        "\"datagram\" for none."),
         name},
    };
}

bool SourceArguments::read(const QCommandLineParser& parser, QString* error)
{
    for (const char* name : {"annotations", "format", "type", "framing"}) {
        if (parser.values(QLatin1String(name)).size() > 1) {
            *error = QStringLiteral("--%1 can be given once").arg(QLatin1String(name));
            return false;
        }
    }
    for (const QString& value : parser.values(QStringLiteral("definitions"))) {
        const bool isRule = value.contains(QLatin1Char('=')) && !QFileInfo::exists(value);
        (isRule ? topicTypes : definitions).append(value);
    }
    importPaths = parser.values(QStringLiteral("import-path"));
    annotations = parser.value(QStringLiteral("annotations"));
    stream.container = parser.value(QStringLiteral("format"));
    stream.typeName = parser.value(QStringLiteral("type"));
    stream.framing = parser.value(QStringLiteral("framing"));
    const auto check = [&](const char* name, const QString& value, const QStringList& possible) {
        if (parser.isSet(QLatin1String(name)) && !possible.contains(value))
            *error =
                QStringLiteral("--%1 is \"%2\"; it can be %3").arg(QLatin1String(name), value, alternatives(possible));
        return error->isEmpty();
    };
    return check("format", stream.container, containerNames()) &&
           check("framing", stream.framing, StreamOptions::getFramings());
}

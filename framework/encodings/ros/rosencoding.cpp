#include "rosencoding.h"

#include "idlparser.h"
#include "rosfiles.h"
#include "rosmsgparser.h"
#include "rostypebuilder.h"

#include <QCoreApplication>

static const Encoding::Traits CdrTraits{"cdr", QT_TRANSLATE_NOOP("Encoding", "ROS 2 message definition"), "*.msg *.idl",
                                        "ros2msg ros2idl omgidl", false};
static const Encoding::Traits Ros1Traits{"ros1", QT_TRANSLATE_NOOP("Encoding", "ROS 1 message definition"), "",
                                         "ros1msg", false};

// Of all schemas. A recording can bring one after the other.
static const qint64 MostBytes = 256 * 1024 * 1024;

CdrEncoding::CdrEncoding()
    : RosEncoding(CdrTraits, false)
{
}

Ros1Encoding::Ros1Encoding()
    : RosEncoding(Ros1Traits, true)
{
}

RosEncoding::RosEncoding(const Traits& traits, bool isRos1)
    : SchemaEncoding(traits)
    , m_isRos1(isRos1)
    , m_size(0)
{
}

const MessageInfo* RosEncoding::makeType(const TypeSchema& schema, QString* error)
{
    // The same schema gives the same type again, because views know it by its address.
    const QByteArray key = schema.encoding + '\0' + schema.name.toUtf8() + '\0' + schema.data;
    const std::lock_guard<std::mutex> lock(m_mutex);
    auto known = m_bySchema.constFind(key);
    if (known == m_bySchema.constEnd())
        known = m_bySchema.insert(key, make(schema));
    *error = known->error;
    return known->info;
}

Ros::Struct* RosEncoding::parse(const TypeSchema& schema, Ros::Schema* read, Ros::Fault* fault) const
{
    const QString text = Ros::decodeSchema(schema.data);
    const RosMsgParser::Dialect dialect = m_isRos1 ? RosMsgParser::Ros1 : RosMsgParser::Ros2;
    const bool isIdl = schema.encoding.endsWith("idl");
    return isIdl ? IdlParser(read, schema.encoding == "ros2idl").parse(text, schema.name, fault)
                 : RosMsgParser(dialect, read).parse(text, schema.name, fault);
}

RosEncoding::Made RosEncoding::make(const TypeSchema& schema)
{
    Made made{nullptr, QString()};
    if (schema.data.size() > Ros::GreatestSchemaSize || m_size + schema.data.size() > MostBytes) {
        made.error =
            QCoreApplication::translate("RosSchema", "the schema is too large: %1 bytes").arg(schema.data.size());
        return made;
    }
    m_size += schema.data.size();
    std::unique_ptr<Ros::Schema> read(new Ros::Schema);
    Ros::Fault fault;
    const Ros::Struct* const structure = parse(schema, read.get(), &fault);
    made.error = fault.toString();
    if (!structure)
        return made;
    const auto types = std::make_shared<const RosTypes>(std::move(read), m_isRos1);
    made.info = RosTypeBuilder(types, &m_made).build(structure);
    m_schemas.insert(made.info, schema);
    return made;
}

QVector<TypeSchema> RosEncoding::readFile(const QString& path, const QStringList& importPaths,
                                          QStringList* errors) const
{
    QVector<TypeSchema> types;
    RosFiles files(importPaths);
    Ros::Fault fault;
    if (files.read(path, &fault))
        for (const QString& name : files.getTypeNames())
            types.append({name, getTraits().name, files.getEncoding(), files.getSchema()});
    Ros::Schema schema;
    if (types.isEmpty() || !parse(types.constFirst(), &schema, &fault))
        errors->append(files.textOf(fault));
    return types;
}

#include "jsonencoding.h"

#include "jsoncheck.h"
#include "jsonlocator.h"
#include "jsonschema.h"
#include "jsontypebuilder.h"

#include <QFile>
#include <QFileInfo>

#include <utility>

namespace
{

const Encoding::Traits JsonTraits{
    "json", QT_TRANSLATE_NOOP("Encoding", "JSON schema"), "*.schema.json", "jsonschema", false, true};

// Of all types together. A recording can bring one after the other.
const std::size_t MostTypes = 10 * 1000;

} // namespace

JsonEncoding::JsonEncoding()
    : SchemaEncoding(JsonTraits)
{
}

JsonEncoding::JsonEncoding(const Traits& traits)
    : SchemaEncoding(traits)
{
}

JsonEncoding::~JsonEncoding() {}

/** What is known of that schema; null when there are too many. */
JsonEncoding::Type* JsonEncoding::typeOf(const TypeSchema& schema)
{
    const QByteArray key = schema.name.toUtf8() + '\0' + schema.encoding + '\0' + schema.data;
    const auto known = m_types.find(key);
    if (known != m_types.end())
        return &known->second;
    if (m_types.size() >= MostTypes)
        return nullptr;
    Type type{std::make_unique<JsonShapes>(), QString(), nullptr};
    if (readsSchema(schema.encoding) && !schema.data.isEmpty() &&
        !JsonSchema::read(schema.data, type.shapes.get(), &type.error))
        type.shapes = std::make_unique<JsonShapes>();
    return &m_types.emplace(key, std::move(type)).first->second;
}

const MessageInfo* JsonEncoding::makeType(const TypeSchema& schema, QString* error)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    Type* const type = typeOf(schema);
    if (!type) {
        *error = QCoreApplication::translate("JsonSchema", "there are more than %1 types").arg(quint64(MostTypes));
        return nullptr;
    }
    if (schema.sample.isNull() && (!type->error.isEmpty() || type->shapes->isOpen())) {
        *error = type->error;
        return nullptr;
    }
    // What is known stays, also where this message lacks it: types do not change back and forth.
    const bool changed = type->shapes->isOpen() && type->shapes->learn(JsonDocument(schema.sample));
    if (!type->info || changed) {
        JsonTypeBuilder builder(schema.name, &m_made);
        type->info = builder.build(type->shapes->getRoot());
        m_schemas.insert(type->info, {schema.name, schema.messageEncoding, schema.encoding, schema.data, QByteArray()});
    }
    return type->info;
}

// As files can begin.
static QByteArray withoutMark(const QByteArray& bytes)
{
    static const char mark[] = "\xef\xbb\xbf";
    return bytes.startsWith(mark) ? bytes.mid(int(qstrlen(mark))) : bytes;
}

bool JsonEncoding::recognizes(const QByteArray& head) const
{
    return withoutMark(head).trimmed().startsWith('{') && head.contains("\"$schema\"");
}

/** A schema is one type, which is called like the file. */
QVector<TypeSchema> JsonEncoding::readFile(const QString& path, const QStringList&, QStringList* errors) const
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        errors->append(path + QLatin1String(": ") + file.errorString());
        return QVector<TypeSchema>();
    }
    const QByteArray text = withoutMark(file.readAll());
    const JsonCheck check(text);
    if (!check.getProblems().isEmpty()) {
        const int place = check.getFirstPlace();
        const int lineBegin = place > 0 ? int(text.lastIndexOf('\n', place - 1)) + 1 : 0;
        errors->append(
            QStringLiteral("%1:%2:%3: ").arg(path).arg(JsonLocator::lineAt(text, place)).arg(place - lineBegin + 1) +
            check.getProblems().constFirst());
        return QVector<TypeSchema>();
    }
    QString type = QFileInfo(path).completeBaseName();
    if (type.endsWith(QLatin1String(".schema")))
        type.chop(int(qstrlen(".schema")));
    return QVector<TypeSchema>{{type, name(), "jsonschema", text}};
}

#include "schemaencoding.h"

#include "messageinfo.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

// A file can have many types; of more than these each is made when somebody asks for it.
static const int MostMadeAtOnce = 100;

SchemaEncoding::SchemaEncoding(const Traits& traits)
    : Encoding(traits)
    , m_format(QLatin1String(traits.name))
{
}

SchemaEncoding::~SchemaEncoding()
{
    qDeleteAll(m_made);
}

QVector<TypeSchema> SchemaEncoding::readFile(const QString&, const QStringList&, QStringList*) const
{
    return QVector<TypeSchema>();
}

FormatInfo* SchemaEncoding::load(const QString& path, const QStringList& importPaths, Definitions::Scope,
                                 QStringList* errors)
{
    QStringList found;
    const QVector<TypeSchema> types = readFile(path, importPaths, &found);
    for (const TypeSchema& type : types.mid(0, found.isEmpty() ? MostMadeAtOnce : 0)) {
        QString error;
        makeType(type, &error);
        if (!error.isEmpty())
            found.append(path + QLatin1String(": ") + error);
    }
    errors->append(found);
    if (!found.isEmpty())
        return nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    for (const TypeSchema& type : types) {
        const auto isSame = [&type](const TypeSchema& other) { return other.name == type.name; };
        m_loaded.erase(std::remove_if(m_loaded.begin(), m_loaded.end(), isSame), m_loaded.end());
        m_loaded.append(type);
    }
    return &m_format;
}

QStringList SchemaEncoding::getTypeNames() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QStringList names;
    for (const TypeSchema& type : m_loaded)
        names.append(type.name);
    return names;
}

const MessageInfo* SchemaEncoding::findType(const QString& name, QString* error)
{
    TypeSchema found;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        for (const TypeSchema& type : std::as_const(m_loaded))
            if (type.name == name)
                found = type;
        // Who has no file leaves it to others to say what is wrong.
        if (found.isEmpty() && !m_loaded.isEmpty())
            *error = QCoreApplication::translate("Encoding", "no file of definitions has a type \"%1\"").arg(name);
    }
    if (found.isEmpty())
        return nullptr;
    QString reason;
    const MessageInfo* info = makeType(found, &reason);
    // Nobody who asks by a name has a message, so what a schema leaves open stays unknown.
    if (!info && reason.isEmpty() && getTraits().isSelfDescribing) {
        found.sample = "{}";
        info = makeType(found, &reason);
    }
    if (!info)
        *error = reason;
    return info;
}

FormatInfo* SchemaEncoding::getFormat(const QString&)
{
    return &m_format;
}

QVector<FormatInfo*> SchemaEncoding::getFormats() const
{
    return QVector<FormatInfo*>{&m_format};
}

TypeSchema SchemaEncoding::schemaOf(const MessageInfo* info) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_schemas.value(info);
}

QVector<const MessageInfo*> SchemaEncoding::publish()
{
    QVector<MessageInfo*> made;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        made.swap(m_made);
    }
    QVector<const MessageInfo*> infos;
    for (MessageInfo* info : std::as_const(made)) {
        m_format.addMessageInfo(info);
        infos.append(info);
    }
    return infos;
}

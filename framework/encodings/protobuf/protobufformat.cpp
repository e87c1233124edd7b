#include "protobufformat.h"

#include "formatregistry.h"
#include "protobufimporter.h"
#include "protobufmessage.h"
#include "protobufschema.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QMutex>
#include <QMutexLocker>

#include <utility>

// Of all schemas. A recording can bring one after the other.
static const int MostElements = 1000 * 1000;

struct ProtobufFormat::Private
{
    /** One schema, built when its first type is asked for. */
    struct Entry
    {
        std::shared_ptr<ProtobufSchema> schema;
        QStringList errors;
    };

    const Entry& entryOf(const QByteArray& fileDescriptorSet)
    {
        const QHash<QByteArray, Entry>::const_iterator known = schemas.constFind(fileDescriptorSet);
        if (known != schemas.constEnd())
            return *known;
        Entry entry;
        entry.schema = std::make_shared<ProtobufSchema>();
        if (size > MostElements)
            entry.errors.append(
                QCoreApplication::translate("ProtobufFormat", "all schemas together are too large: %1 names")
                    .arg(size));
        else
            entry.schema->build(fileDescriptorSet, &entry.errors);
        size += entry.schema->getSize();
        return *schemas.insert(fileDescriptorSet, entry);
    }

    mutable QMutex mutex;
    QHash<QByteArray, Entry> schemas; // by their bytes
    int size = 0;                     // of them
    QVector<Entry> loaded;            // in the order of loading
    QVector<MessageInfo*> made;       // not published yet; owned
};

ProtobufFormat::ProtobufFormat(const QString& name)
    : FormatInfo(name)
    , m_private(new Private)
{
}

ProtobufFormat::~ProtobufFormat()
{
    removeMessageInfos(); // who shows messages lets go of them, while there is the schema that they need to be deleted
    qDeleteAll(m_private->made);
}

const MessageInfo* ProtobufFormat::addSchema(const QByteArray& fileDescriptorSet, const QString& fullTypeName,
                                             QString* error)
{
    const QMutexLocker locker(&m_private->mutex);
    const Private::Entry& entry = m_private->entryOf(fileDescriptorSet);
    if (const MessageInfo* const info = entry.schema->findType(fullTypeName, &m_private->made, error))
        return info;
    if (!entry.errors.isEmpty())
        *error = entry.errors.join(QStringLiteral("; "));
    return nullptr;
}

bool ProtobufFormat::loadSchema(const QString& path, const QStringList& importPaths, QStringList* errors)
{
    QByteArray bytes;
    if (QFileInfo(path).suffix().toLower() == QLatin1String("proto")) {
        QStringList found;
        bytes = ProtobufImporter::read(path, importPaths, &found);
        errors->append(found);
        if (!found.isEmpty())
            return false;
    } else {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly)) {
            errors->append(path + QStringLiteral(": ") + file.errorString());
            return false;
        }
        bytes = file.readAll();
    }
    const QMutexLocker locker(&m_private->mutex);
    const Private::Entry entry = m_private->entryOf(bytes);
    for (const QString& error : entry.errors)
        errors->append(path + QStringLiteral(": ") + error);
    if (!entry.errors.isEmpty())
        return false;
    for (int i = 0; i < m_private->loaded.size(); ++i) {
        if (m_private->loaded.at(i).schema == entry.schema) {
            m_private->loaded.remove(i);
            break;
        }
    }
    m_private->loaded.append(entry);
    return true;
}

const MessageInfo* ProtobufFormat::findType(const QString& fullTypeName, QString* error)
{
    const QMutexLocker locker(&m_private->mutex);
    QString reason;
    for (int i = static_cast<int>(m_private->loaded.size()) - 1; i >= 0; --i)
        if (const MessageInfo* const info =
                m_private->loaded.at(i).schema->findType(fullTypeName, &m_private->made, &reason))
            return info;
    *error =
        m_private->loaded.isEmpty()
            ? QCoreApplication::translate("ProtobufFormat", "no schema is loaded")
            : QCoreApplication::translate("ProtobufFormat", "no schema has a message type \"%1\"").arg(fullTypeName);
    return nullptr;
}

QStringList ProtobufFormat::getLoadedTypeNames() const
{
    const QMutexLocker locker(&m_private->mutex);
    QStringList names;
    for (const Private::Entry& entry : m_private->loaded)
        for (const QString& name : entry.schema->getTypeNames())
            if (!names.contains(name))
                names.append(name);
    return names;
}

QVector<const MessageInfo*> ProtobufFormat::publish()
{
    QVector<MessageInfo*> made;
    {
        const QMutexLocker locker(&m_private->mutex);
        made.swap(m_private->made);
    }
    QVector<const MessageInfo*> infos;
    for (MessageInfo* info : std::as_const(made)) {
        addMessageInfo(info);
        infos.append(info);
    }
    if (!infos.isEmpty())
        FormatRegistry::getInstance()->updateFormat(this);
    return infos;
}

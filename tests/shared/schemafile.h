#ifndef SCHEMAFILE_H
#define SCHEMAFILE_H

#include "protobufformat.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

/** The text of a schema in a file of its own, for programs that cannot go on without it. */
class SchemaFile
{
public:
    SchemaFile(const QString& name, const char* text)
        : m_path(m_folder.filePath(name))
    {
        QFile file(m_path);
        if (!file.open(QIODevice::WriteOnly) || file.write(text) < 0)
            std::abort();
    }

    QString getFolder() const { return m_folder.path(); }

    /** A type of the schema, which @p format reads; never null. */
    const MessageInfo* load(ProtobufFormat* format, const QString& type) const
    {
        QStringList errors;
        QString error;
        format->loadSchema(m_path, QStringList(), &errors);
        const MessageInfo* const info = format->findType(type, &error);
        if (!info)
            std::abort();
        return info;
    }

private:
    QTemporaryDir m_folder;
    QString m_path;
};

#endif

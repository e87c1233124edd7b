#ifndef SCHEMAFILE_H
#define SCHEMAFILE_H

#include "protobufformat.h"
#include "testfolder.h"

#include <cstdlib>

/** The text of a schema in a file of its own, for programs that cannot go on without it. */
class SchemaFile
{
public:
    SchemaFile(const QString& name, const char* text)
        : m_path(m_folder.write(name, text))
    {
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
    const TestFolder m_folder;
    const QString m_path;
};

#endif

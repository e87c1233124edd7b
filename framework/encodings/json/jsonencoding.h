#ifndef JSONENCODING_H
#define JSONENCODING_H

#include "schemaencoding.h"

#include <map>

class JsonShapes;

/** JSON: types of schemas that streams bring, or of what a first message has. */
class JsonEncoding : public SchemaEncoding
{
public:
    static const char* name() { return "json"; }

    JsonEncoding();
    ~JsonEncoding() override;

    bool recognizes(const QByteArray& head) const override;
    const MessageInfo* makeType(const TypeSchema& schema, QString* error) override;

protected:
    /** For messages of another name that are written as JSON. */
    explicit JsonEncoding(const Traits& traits);

    QVector<TypeSchema> readFile(const QString& path, const QStringList& importPaths,
                                 QStringList* errors) const override;

private:
    /** A schema, or what messages of one name without a schema have. */
    struct Type
    {
        std::unique_ptr<JsonShapes> shapes;
        QString error;           // why the schema is of no use; else empty
        const MessageInfo* info; // the newest; null before there is one
    };

    Type* typeOf(const TypeSchema& schema);

    std::map<QByteArray, Type> m_types; // by name and schema
};

#endif

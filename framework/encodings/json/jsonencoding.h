#ifndef JSONENCODING_H
#define JSONENCODING_H

#include "encoding.h"
#include "formatinfo.h"

#include <QMutex>

#include <map>

class JsonShapes;

/** JSON: types of schemas that streams bring, or of what a first message has. */
class JsonEncoding : public Encoding
{
public:
    static const char* name() { return "json"; }

    JsonEncoding();
    ~JsonEncoding() override;

    FormatInfo* getFormat(const QString& path) override;
    QVector<FormatInfo*> getFormats() const override;
    const MessageInfo* makeType(const TypeSchema& schema, QString* error) override;
    TypeSchema schemaOf(const MessageInfo* info) const override;
    QVector<const MessageInfo*> publish() override;

private:
    /** A schema, or what messages of one name without a schema have. */
    struct Type
    {
        std::unique_ptr<JsonShapes> shapes;
        QString error;           // why the schema is of no use; else empty
        const MessageInfo* info; // the newest; null before there is one
    };

    Type* typeOf(const TypeSchema& schema);

    FormatInfo m_format;
    mutable QMutex m_mutex;
    std::map<QByteArray, Type> m_types;              // by name and schema
    QHash<const MessageInfo*, TypeSchema> m_schemas; // of types that are received on their own
    QVector<MessageInfo*> m_made;                    // not published yet; owned
};

#endif

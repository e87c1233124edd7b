#ifndef PROTOBUFENCODING_H
#define PROTOBUFENCODING_H

#include "encoding.h"
#include "protobufformat.h"

/** Protocol Buffers: schemas from files and from streams, all in one format. */
class ProtobufEncoding : public Encoding
{
public:
    static const char* name() { return "protobuf"; }

    ProtobufEncoding();

    bool recognizes(const QByteArray& head) const override;
    FormatInfo* load(const QString& path, const QStringList& importPaths, Definitions::Scope scope,
                     QStringList* errors) override;
    FormatInfo* getFormat(const QString& path) override;
    QVector<FormatInfo*> getFormats() const override;
    QStringList getTypeNames() const override;
    const MessageInfo* findType(const QString& name, QString* error) override;
    const MessageInfo* makeType(const TypeSchema& schema, QString* error) override;
    TypeSchema schemaOf(const MessageInfo* info) const override;
    QVector<const MessageInfo*> publish() override;

private:
    mutable ProtobufFormat m_format;
};

#endif

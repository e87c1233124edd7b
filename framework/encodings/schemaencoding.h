#ifndef SCHEMAENCODING_H
#define SCHEMAENCODING_H

#include "encoding.h"
#include "formatinfo.h"

#include <QHash>

#include <mutex>

/** What encodings have in common whose types are made of the texts of schemas, all of them in one format. */
class SchemaEncoding : public Encoding
{
public:
    ~SchemaEncoding() override;

    FormatInfo* getFormat(const QString& path) override;
    QVector<FormatInfo*> getFormats() const override;
    TypeSchema schemaOf(const MessageInfo* info) const override;
    QVector<const MessageInfo*> publish() override;

protected:
    explicit SchemaEncoding(const Traits& traits);

    mutable std::mutex m_mutex;                      // for what follows, and what derived classes know
    QHash<const MessageInfo*, TypeSchema> m_schemas; // of types that are received on their own
    QVector<MessageInfo*> m_made;                    // not published yet; owned

private:
    mutable FormatInfo m_format;
};

#endif

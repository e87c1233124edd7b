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

    FormatInfo* load(const QString& path, const QStringList& importPaths, Definitions::Scope scope,
                     QStringList* errors) override;
    FormatInfo* getFormat(const QString& path) override;
    QVector<FormatInfo*> getFormats() const override;
    QStringList getTypeNames() const override;
    const MessageInfo* findType(const QString& name, QString* error) override;
    TypeSchema schemaOf(const MessageInfo* info) const override;
    QVector<const MessageInfo*> publish() override;

protected:
    explicit SchemaEncoding(const Traits& traits);

    /**
     * The types that a file of definitions has, each with a schema that has all it needs.
     *
     * @param errors  what is wrong with them is appended, with file, line and column where there are any
     */
    virtual QVector<TypeSchema> readFile(const QString& path, const QStringList& importPaths,
                                         QStringList* errors) const;

    mutable std::mutex m_mutex;                      // for what follows, and what derived classes know
    QHash<const MessageInfo*, TypeSchema> m_schemas; // of types that are received on their own
    QVector<MessageInfo*> m_made;                    // not published yet; owned

private:
    mutable FormatInfo m_format;
    QVector<TypeSchema> m_loaded; // from files, in the order of loading
};

#endif

#ifndef ENCODING_H
#define ENCODING_H

#include "definitions.h"

#include <QVector>

#include <memory>
#include <vector>

class FormatInfo;

/**
 * What the bytes of one message mean: owns types and their fields, read from files of definitions or made from schemas
 * that streams bring.
 *
 * Types once made stay for as long as the encoding, because views know them by their addresses. Operations may be
 * called on any thread, except where they say otherwise.
 */
class CORVELFRAMEWORK_EXPORT Encoding
{
public:
    /** What is known of an encoding beforehand. */
    struct Traits
    {
        const char* name;         ///< as recordings write it
        const char* title;        ///< what a file of its definitions is; to be translated, context "Encoding"
        const char* filePatterns; ///< of the names of such files, with spaces between: "*.proto *.desc"; may be empty
        const char* schemas;      ///< encodings of the schemas that streams bring, with spaces between; may be empty
        bool isComplete;          ///< whether a type that is in no file does not come later
        bool isSelfDescribing = false; ///< whether messages say what fields they have, so that they need no schema
    };

    virtual ~Encoding();

    const Traits& getTraits() const { return m_traits; }

    /** Whether there are files of its definitions. */
    bool hasFiles() const { return *m_traits.filePatterns; }
    /** Whether a file that begins so is one of definitions, for names that do not say it. */
    virtual bool recognizes(const QByteArray& head) const;

    /**
     * Reads a file of definitions. GUI thread. The parameters are those of Definitions::load().
     *
     * @return the format that its types belong to, also where this knew the file; null when it cannot be used
     */
    virtual FormatInfo* load(const QString& path, const QStringList& importPaths, Definitions::Scope scope,
                             QStringList* errors);

    /** The format of sources that name @p path, which was loaded, or of those that name none; never null. */
    virtual FormatInfo* getFormat(const QString& path) = 0;
    /** The formats in use now, which annotations are about: first that of sources that name no definitions. */
    virtual QVector<FormatInfo*> getFormats() const = 0;

    /** The types that files have, where messages do not say of what type they are. */
    virtual QStringList getTypeNames() const;
    /** The one of that name; null with @p error set where there is none. */
    virtual const MessageInfo* findType(const QString& name, QString* error);

    /** Whether types can be made from schemas at all. */
    bool hasSchemas() const { return *m_traits.schemas; }
    /** Whether types can be made from schemas of that encoding. */
    bool readsSchema(const QByteArray& encoding) const;
    /**
     * The type that a schema describes, complete but maybe not published; null with @p error set.
     *
     * Where messages describe themselves, null can also mean that a schema leaves something open, or that there is
     * none: whoever asks then does so again when there is a message, TypeSchema::sample, of which the type can be made.
     */
    virtual const MessageInfo* makeType(const TypeSchema& schema, QString* error);
    /** The schema of a type; empty for one of another encoding, or of an encoding without schemas. */
    virtual TypeSchema schemaOf(const MessageInfo* info) const;

    /** Adds the types that were made since the last call to their format. GUI thread. */
    virtual QVector<const MessageInfo*> publish();

protected:
    explicit Encoding(const Traits& traits);

private:
    Q_DISABLE_COPY(Encoding)

    const Traits m_traits;
};

/** One of each encoding there is. */
std::vector<std::unique_ptr<Encoding>> createEncodings();

#endif

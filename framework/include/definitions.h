#ifndef CORVEL_DEFINITIONS_H
#define CORVEL_DEFINITIONS_H

#include "corvelframework_export.h"

#include <QByteArray>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class Encoding;
class FormatInfo;
class MessageInfo;

/** What a recording says of a type, so that its messages can be read without other definitions. */
struct CORVELFRAMEWORK_EXPORT TypeSchema
{
    QString name;               ///< of the type
    QByteArray messageEncoding; ///< of its messages: "protobuf"
    QByteArray encoding;        ///< of the data: "protobuf", a serialized FileDescriptorSet; empty for no schema
    QByteArray data;
    QByteArray sample = QByteArray(); ///< a message, or null; see Encoding::makeType()

    bool isEmpty() const { return messageEncoding.isEmpty(); }
};

/**
 * What messages mean: one of each encoding with the types that it knows, from files of definitions, from what streams
 * bring, and with annotations.
 *
 * A program has one, which lives for as long as anything shows its messages, because views know types by their
 * addresses. What is loaded stays, also when other definitions take its place.
 *
 * @code
 * Definitions definitions;
 * QStringList errors;
 * definitions.load("car.proto", QStringList(), &errors);
 * definitions.annotate("car.json", &errors);
 * McapStreamDecoder decoder(&definitions);
 * @endcode
 *
 * GUI thread, except for what says otherwise.
 */
class CORVELFRAMEWORK_EXPORT Definitions
{
public:
    /** Who uses a file of definitions. */
    enum Scope
    {
        EverySource,  ///< those that name none of their own
        NamingSources ///< those that name it
    };

    /** A kind of files of definitions. */
    struct CORVELFRAMEWORK_EXPORT FileKind
    {
        QString title;        ///< "MAVLink dialect"
        QStringList patterns; ///< of file names: "*.xml"
    };

    Definitions();
    ~Definitions();

    /** The files of definitions that there can be, in the order in which they are asked for. */
    QVector<FileKind> getFileKinds() const;

    /** Whether types of the file @p path are for messages that do not say of what type they are. */
    bool hasNamedTypes(const QString& path) const;

    /**
     * Reads a file of definitions, of whatever encoding: told by its name or, where that says nothing, by how it
     * begins. What stands beside it as "NAME.annotations.json" is applied to its types.
     *
     * @param importPaths  folders in which files that it imports are looked for, for encodings that have that
     * @param errors       what was wrong, each as "file:line:column: text" where there is a place, also with
     * annotations; must not be null
     * @return whether its types can be used
     */
    bool load(const QString& path, const QStringList& importPaths, QStringList* errors, Scope scope = EverySource);

    /**
     * Applies an annotation file (docs/annotations.md) to all types, also to those that come later. Ignored for a file
     * that was applied before.
     *
     * Names of types that nobody knows are wrong where types come from files of definitions alone.
     *
     * @param errors  what was wrong, each as "file:line: message.field: text"; must not be null
     * @return whether there was no error
     */
    bool annotate(const QString& path, QStringList* errors);

    /**
     * Annotates what was made since the last call and tells the FormatRegistry: types, which belong to no format
     * before, and definitions that were built in and not asked for before.
     *
     * @param errors  what is wrong with the annotations of these is appended; must not be null
     */
    void publish(QStringList* errors);

    /** The encoding that recordings call so, or null. Any thread. */
    Encoding* find(const QString& name) const;
    /** The encoding of that class. Any thread. */
    template <class Row>
    Row* get() const
    {
        return static_cast<Row*>(find(QLatin1String(Row::name())));
    }

    /**
     * The format of an encoding for sources that name the file @p path of definitions, which was loaded, or for those
     * that name none. Null for an encoding that there is not. Any thread.
     */
    const FormatInfo* getFormat(const QString& encoding, const QString& path = QString()) const;
    /** Whether all types of a format are there, so that none of another name comes later. */
    bool isComplete(const FormatInfo* format) const;

    /** The formats of sources that name no definitions and bring none. Any thread. */
    QVector<const FormatInfo*> getCompleteFormats() const;
    /** The formats whose types streams can bring. Any thread. */
    QVector<const FormatInfo*> getSchemaFormats() const;

    /** The names of types that files have, where messages do not say themselves of what type they are. Any thread. */
    QStringList getTypeNames() const;
    /** The one of that name; null with the reason in @p error, which must not be null. Any thread. */
    const MessageInfo* findType(const QString& name, QString* error) const;

    /**
     * Says what the payloads of topics are that say nothing of it themselves: "FILTER=TYPE".
     *
     * The filter is one of MQTT ("fleet/+/car") or NATS ("fleet.*.car"); of several that match a topic the first one
     * holds. The type is the full name of one that files have, which are loaded before, or the name of an encoding
     * whose messages need none, such as "mavlink" or "json".
     *
     * @param error  what is wrong with the rule when false is returned; must not be null
     */
    bool addTopicType(const QString& rule, QString* error);
    /** The type that was said for a topic, as it was said; empty for none. Any thread. */
    QString getTopicType(const QString& topic) const;

    /** The schema of a type as a recording keeps it; empty where it has none. Any thread. */
    TypeSchema schemaOf(const MessageInfo* info) const;

private:
    Q_DISABLE_COPY(Definitions)

    struct Private;
    std::unique_ptr<Private> m_private;
};

#endif

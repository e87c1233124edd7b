#ifndef SOURCEFACTORY_H
#define SOURCEFACTORY_H

#include "byteinput.h"
#include "demonstration.h"
#include "streamdecoder.h"
#include "streamopener.h"

#include <QReadWriteLock>
#include <QString>
#include <QStringList>
#include <QVector>

#include <memory>

class Definitions;
class FormatInfo;

/** What the user said of a source: enough to open it, and to open it again after a loss. */
struct SourceOptions
{
    QString name;            ///< what the user calls it; empty for what its address says
    QString address;         ///< as InputAddress reads it; empty for a simulation
    QString definitions;     ///< a file of its own with the message types; empty for those in use or in the source
    QStringList importPaths; ///< where a schema's imports are looked for
    QString typeName;        ///< the one type of all messages of Protocol Buffers; empty where the source tells
    QStringList moreSchemas; ///< of Protocol Buffers, which are loaded besides
    QString framing;         ///< "varint", "u32", "datagram", or empty to find out
    QString container;       ///< the name of what it is; empty to find out
    QStringList topicTypes;  ///< rules for Definitions::addTopicType()
    double rate = 0;         ///< messages a second, of a recording without times; 0 for what holds for all
    QString password;        ///< what was typed into a dialog; never kept, shown or told

    const Demonstration* demonstration = &Demonstration::getAll().first(); ///< where there is no address

    bool isSimulation() const { return address.isEmpty(); }
};

/** What makes a source, once for each time that it is opened. */
struct SourceParts
{
    std::unique_ptr<ByteInput> input;
    std::unique_ptr<StreamOpener> opener;
    QString name;            ///< what people call it: the name of a file, an address
    QString path;            ///< of a file, absolute; else empty
    bool isLive = false;     ///< whether it is worth trying again when it is lost
    bool isDatagram = false; ///< whether it is open before anybody sends
};

/** Opens sources, and keeps the definitions that they are decoded with. */
class SourceFactory
{
public:
    SourceFactory();
    ~SourceFactory();

    /**
     * Uses the definitions in @p path for all sources that name none of their own.
     *
     * @param problems  what was wrong, also where the definitions are used all the same; must not be null
     * @return false when they cannot be used
     */
    bool loadDefinitions(const QString& path, QStringList* problems);
    /** The file of the definitions in use; empty for the built-in ones. */
    QString getDefinitionsPath() const { return m_path; }
    /** What messages mean; never null. */
    Definitions* getDefinitions() const { return m_definitions; }

    /** Adds the annotations in @p path to the definitions in use and to those that come later; false with what is wrong
     * with them. */
    bool annotate(const QString& path, QStringList* problems);

    /** Held for writing while descriptions change that are in use: whoever reads fields on another thread holds it for
     * reading. */
    QReadWriteLock* getDescriptionLock() { return &m_descriptionLock; }

    /** The types of the schema that @p options name; empty with what is wrong in @p error, which must not be null. */
    QStringList loadSchema(const SourceOptions& options, QString* error);

    /** What @p options describe; false with one sentence for the user in @p error, which must not be null. */
    bool create(const SourceOptions& options, SourceParts* parts, QString* error);

    /** What the recording is that @p options name, by its first bytes; null where these do not say it, and for others
     * than files. */
    const Container* recognize(const SourceOptions& options) const;

    /** Whether the definitions that @p options name are for messages that do not say of what type they are. */
    bool hasNamedTypes(const SourceOptions& options) const;

    /** A decoder as @p old with the definitions in use now; null where these are the same, or it is not known yet what
     * comes. */
    std::unique_ptr<StreamDecoder> createDecoder(const SourceOptions& options, const StreamDecoder* old);
    /** A decoder for single messages of such a source, which @p decoder decodes; null where these cannot stand alone.
     */
    std::unique_ptr<StreamDecoder> createMessageDecoder(const SourceOptions& options, const StreamDecoder* decoder);

    /** Makes exactly these formats known by name, or those in use when there are none. */
    void setKnownFormats(QVector<const FormatInfo*> formats);

private:
    bool loadNamed(const SourceOptions& options, StreamOptions* stream, QString* error);
    bool readOptions(const SourceOptions& options, StreamOptions* stream, QString* error);

    QReadWriteLock m_descriptionLock;
    Definitions* const m_definitions; // stay when this is gone, because views remember types by their addresses
    QString m_path;
    QVector<const FormatInfo*> m_known;
};

#endif

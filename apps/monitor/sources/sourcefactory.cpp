#include "sourcefactory.h"

#include "definitions.h"
#include "formatregistry.h"
#include "inputkind.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <vector>

static const int MostRecognized = 65536; // bytes; nobody asks for more of a recording

namespace
{

// They stay for as long as the program: trees remember by their types' addresses what was expanded.
Definitions* createDefinitions()
{
    static std::vector<std::unique_ptr<Definitions>> created;
    created.emplace_back(new Definitions);
    return created.back().get();
}

} // namespace

SourceFactory::SourceFactory()
    : m_definitions(createDefinitions())
{
    setKnownFormats({});
}

SourceFactory::~SourceFactory()
{
    for (const FormatInfo* format : std::as_const(m_known))
        FormatRegistry::getInstance()->removeFormat(format);
}

bool SourceFactory::loadDefinitions(const QString& path, QStringList* problems)
{
    const bool isKnown = m_known == m_definitions->getCompleteFormats();
    if (!m_definitions->load(path, QStringList(), problems))
        return false;
    if (!m_definitions->hasNamedTypes(path))
        m_path = path;
    if (isKnown)
        setKnownFormats({});
    return true;
}

bool SourceFactory::annotate(const QString& path, QStringList* problems)
{
    const QWriteLocker descriptions(&m_descriptionLock);
    return m_definitions->annotate(path, problems);
}

bool SourceFactory::readOptions(const SourceOptions& options, StreamOptions* stream, QString* error)
{
    stream->definitions = m_definitions;
    stream->container = options.container;
    stream->typeName = options.typeName;
    stream->framing = options.framing;
    if (!loadNamed(options, stream, error))
        return false;
    for (const QString& rule : options.topicTypes)
        if (!m_definitions->addTopicType(rule, error))
            return false;
    return true;
}

/** Loads the definitions that a source names, if it names any. */
bool SourceFactory::loadNamed(const SourceOptions& options, StreamOptions* stream, QString* error)
{
    if (options.definitions.isEmpty())
        return true;
    if (hasNamedTypes(options)) {
        loadSchema(options, error);
        return error->isEmpty();
    }
    QStringList problems; // those of annotations were told when these were chosen
    stream->definitionFile = options.definitions;
    if (m_definitions->load(options.definitions, options.importPaths, &problems, Definitions::NamingSources))
        return true;
    *error = QCoreApplication::translate("SourceFactory", "The definitions could not be loaded.") + QLatin1Char('\n') +
             problems.join(QLatin1Char('\n'));
    return false;
}

bool SourceFactory::create(const SourceOptions& options, SourceParts* parts, QString* error)
{
    StreamOptions stream;
    if (!readOptions(options, &stream, error))
        return false;
    if (options.isSimulation()) {
        stream.container = QLatin1String(options.demonstration->container);
        parts->input.reset(options.demonstration->create());
        parts->opener.reset(new StreamOpener(stream));
        parts->name = QCoreApplication::translate("Demonstration", options.demonstration->sourceName);
        return true;
    }
    InputAddress address;
    if (!InputAddress::parse(options.address, &address, error))
        return false;
    address.password = options.password;
    const bool isFile = address.kind->isFile();
    const QFileInfo file(QDir::cleanPath(address.path));
    // What cannot be there is told at once. A pipe may come to be later, and opening it would take its bytes.
    QFile recording(address.path);
    if (isFile && (!file.exists() || file.isFile()) && !recording.open(QIODevice::ReadOnly)) {
        *error = address.path + QLatin1String(": ") + recording.errorString();
        return false;
    }
    parts->input.reset(ByteInput::create(address));
    parts->name = isFile ? file.fileName() : parts->input->getName();
    if (isFile)
        parts->path = file.absoluteFilePath();
    if (!options.name.isEmpty())
        parts->name = options.name;
    parts->isLive = address.kind->isLive();
    parts->isDatagram = address.kind->isDatagram();
    // Who names a schema for what is no recording means bare messages of its type.
    if (stream.container.isEmpty() && hasNamedTypes(options) && !(isFile && file.isFile()))
        stream.container = QStringLiteral("delimited");
    parts->opener.reset(new StreamOpener(address, stream));
    return true;
}

const Container* SourceFactory::recognize(const SourceOptions& options) const
{
    InputAddress address;
    QString error;
    if (options.isSimulation() || !InputAddress::parse(options.address, &address, &error) || !address.kind->isFile())
        return nullptr;
    QFile file(address.path);
    if (!QFileInfo(address.path).isFile() || !file.open(QIODevice::ReadOnly)) // and what is a pipe keeps its bytes
        return nullptr;
    StreamHead head;
    head.bytes = file.read(MostRecognized);
    head.isAll = file.atEnd();
    StreamOptions stream;
    stream.definitions = m_definitions;
    stream.container = options.container;
    stream.typeName = options.typeName;
    stream.framing = options.framing;
    const Recognition found = Recognition::recognize(head, stream);
    return found.answer == Container::Yes ? found.container : nullptr;
}

bool SourceFactory::hasNamedTypes(const SourceOptions& options) const
{
    return !options.definitions.isEmpty() && m_definitions->hasNamedTypes(options.definitions);
}

QStringList SourceFactory::loadSchema(const SourceOptions& options, QString* error)
{
    QStringList problems;
    bool good = true;
    for (const QString& schema : options.moreSchemas + QStringList(options.definitions))
        good = m_definitions->load(schema, options.importPaths, &problems, Definitions::NamingSources) && good;
    if (!good)
        *error = QCoreApplication::translate("SourceFactory", "The schema could not be loaded.") + QLatin1Char('\n') +
                 problems.join(QLatin1Char('\n'));
    return good ? m_definitions->getTypeNames() : QStringList();
}

std::unique_ptr<StreamDecoder> SourceFactory::createDecoder(const SourceOptions& options, const StreamDecoder* old)
{
    StreamOptions stream;
    QString error;
    const Container* const container = old->getContainer();
    if (!container || !*container->bare || !readOptions(options, &stream, &error) ||
        container->getFormats(stream) == old->getFormats())
        return nullptr;
    return container->open(StreamHead(), stream).decoder;
}

std::unique_ptr<StreamDecoder> SourceFactory::createMessageDecoder(const SourceOptions& options,
                                                                   const StreamDecoder* decoder)
{
    StreamOptions stream;
    QString error;
    const Container* const bare =
        decoder->getContainer() ? Container::find(QLatin1String(decoder->getContainer()->bare)) : nullptr;
    if (!bare || !readOptions(options, &stream, &error))
        return nullptr;
    return bare->open(StreamHead(), stream).decoder;
}

void SourceFactory::setKnownFormats(QVector<const FormatInfo*> formats)
{
    if (formats.isEmpty())
        formats = m_definitions->getCompleteFormats();
    // Only the definitions in use are known by name: of two of a kind, every name would be ambiguous.
    for (const FormatInfo* format : std::as_const(m_known))
        if (!formats.contains(format))
            FormatRegistry::getInstance()->removeFormat(format);
    for (const FormatInfo* format : std::as_const(formats))
        FormatRegistry::getInstance()->addFormat(format); // ignores one that it knows
    m_known = formats;
}

#include "sourcefactory.h"

#include "definitions.h"
#include "detectingdecoder.h"
#include "formatregistry.h"
#include "inputkind.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "recordingopener.h"
#include "simulatorinput.h"
#include "tlogindex.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <vector>

namespace
{

// They stay for as long as the program: trees remember by their types' addresses what was expanded.
Definitions* createDefinitions()
{
    static std::vector<std::unique_ptr<Definitions>> created;
    created.emplace_back(new Definitions);
    return created.back().get();
}

const QString mavlink = QStringLiteral("mavlink");

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
    const FormatInfo* const before = m_definitions->getFormat(mavlink);
    if (!m_definitions->load(path, QStringList(), problems))
        return false;
    const bool isKnown = m_known == QVector<const FormatInfo*>{before};
    m_path = path;
    if (isKnown)
        setKnownFormats({});
    return true;
}

bool SourceFactory::annotate(const QString& path, QStringList* problems)
{
    return m_definitions->annotate(path, problems);
}

const MavlinkDialect* SourceFactory::findDialect(const SourceOptions& options, QString* error)
{
    const QString path = options.isSchema() ? QString() : options.definitions;
    QStringList problems; // those of annotations were told when these were chosen
    if (!path.isEmpty() && !m_definitions->load(path, QStringList(), &problems, Definitions::NamingSources)) {
        *error = QCoreApplication::translate("SourceFactory", "The definitions could not be loaded.") +
                 QLatin1Char('\n') + problems.join(QLatin1Char('\n'));
        return nullptr;
    }
    return static_cast<const MavlinkDialect*>(m_definitions->getFormat(mavlink, path));
}

bool SourceFactory::create(const SourceOptions& options, SourceParts* parts, QString* error)
{
    const MavlinkDialect* const dialect = findDialect(options, error);
    if (!dialect)
        return false;
    if (options.isSimulation()) {
        parts->input.reset(new SimulatorInput);
        parts->decoder.reset(new MavlinkStreamDecoder(dialect, MavlinkStreamDecoder::RawLayout));
        parts->name = QCoreApplication::translate("SourceFactory", "simulated vehicle");
        return true;
    }
    InputAddress address;
    if (!InputAddress::parse(options.address, &address, error))
        return false;
    const bool isFile = address.kind->isFile();
    if (isFile && QFileInfo(address.path).isDir()) {
        *error = QCoreApplication::translate("SourceFactory", "%1 is a folder.").arg(address.path);
        return false;
    }
    std::unique_ptr<ByteInput> input(ByteInput::create(address));
    parts->name = isFile ? QFileInfo(address.path).fileName() : input->getName();
    if (isFile)
        parts->path = QFileInfo(address.path).absoluteFilePath();
    parts->isLive = address.kind->isLive();
    const bool isPipe =
        !parts->isLive && (!isFile || (QFileInfo::exists(address.path) && !QFileInfo(address.path).isFile()));
    if (isPipe && !options.isSchema()) {
        // What comes through it is not waited for here.
        parts->input = std::move(input);
        parts->decoder.reset(new DetectingDecoder(dialect, m_definitions));
        return true;
    }

    RecordingOptions recording;
    recording.definitions = m_definitions;
    recording.definitionFile = options.definitions;
    recording.typeName = options.typeName;
    if (options.isSchema()) {
        loadSchema(options, error);
        if (!error->isEmpty())
            return false;
        if (isPipe || parts->isLive)
            recording.format = RecordingOptions::DelimitedFormat;
        recording.hasFraming = RecordingOptions::parseFraming(options.framing, &recording.framing) || isPipe;
    }
    OpenedRecording opened = openRecording(address, recording);
    if (!opened.isGood()) {
        *error = opened.error;
        return false;
    }
    parts->input = std::move(opened.input);
    parts->decoder = std::move(opened.decoder);
    parts->index = std::move(opened.index);
    if (!parts->index && isFile && parts->decoder->hasTimes() &&
        dynamic_cast<const MavlinkStreamDecoder*>(parts->decoder.get()))
        parts->index.reset(new TlogIndex(address.path, dialect));
    return true;
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

const FormatInfo* SourceFactory::knownFormatOf(const StreamDecoder* decoder) const
{
    if (const DetectingDecoder* const detecting = dynamic_cast<const DetectingDecoder*>(decoder))
        return detecting->getDialect();
    if (const MavlinkStreamDecoder* const mavlink = dynamic_cast<const MavlinkStreamDecoder*>(decoder))
        return mavlink->getDialect();
    return m_definitions->getFormat(QStringLiteral("protobuf"));
}

StreamDecoder* SourceFactory::createDecoder(const SourceOptions& options, const StreamDecoder* old)
{
    QString error;
    const MavlinkDialect* const dialect = findDialect(options, &error);
    if (!dialect || options.isSchema() || knownFormatOf(old) == dialect)
        return nullptr;
    if (const DetectingDecoder* const detecting = dynamic_cast<const DetectingDecoder*>(old))
        return detecting->isTlog() ? new MavlinkStreamDecoder(dialect, MavlinkStreamDecoder::TlogLayout)
                                   : static_cast<StreamDecoder*>(new DetectingDecoder(dialect, m_definitions));
    if (!dynamic_cast<const MavlinkStreamDecoder*>(old))
        return nullptr;
    return new MavlinkStreamDecoder(dialect, old->hasTimes() ? MavlinkStreamDecoder::TlogLayout
                                                             : MavlinkStreamDecoder::RawLayout);
}

StreamDecoder* SourceFactory::createMessageDecoder(const SourceOptions& options)
{
    QString error;
    return new MavlinkStreamDecoder(findDialect(options, &error), MavlinkStreamDecoder::RawLayout);
}

void SourceFactory::setKnownFormats(QVector<const FormatInfo*> formats)
{
    if (formats.isEmpty())
        formats.append(m_definitions->getFormat(mavlink));
    // Only the definitions in use are known by name: of two of a kind, every name would be ambiguous.
    for (const FormatInfo* format : std::as_const(m_known))
        if (!formats.contains(format))
            FormatRegistry::getInstance()->removeFormat(format);
    for (const FormatInfo* format : std::as_const(formats))
        FormatRegistry::getInstance()->addFormat(format); // ignores one that it knows
    m_known = formats;
}

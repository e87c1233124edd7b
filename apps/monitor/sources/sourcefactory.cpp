#include "sourcefactory.h"

#include "annotations.h"
#include "detectingdecoder.h"
#include "formatregistry.h"
#include "inputkind.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "protobufformat.h"
#include "recordingopener.h"
#include "simulatorinput.h"
#include "tlogindex.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <vector>

namespace
{

struct LoadedDialect
{
    std::unique_ptr<MavlinkDialect> dialect;
    QString path;
};

// Dialects stay for as long as the program: trees remember by their types' addresses what was expanded.
std::vector<LoadedDialect>& dialects()
{
    static std::vector<LoadedDialect> loaded;
    return loaded;
}

// Stays as long for the same reason.
ProtobufFormat* protobufFormat()
{
    static ProtobufFormat format;
    return &format;
}

// A file can be about types of either format. What is wrong with all of it is told once.
void applyAnnotations(const QString& path, MavlinkDialect* dialect, QStringList* problems)
{
    Annotations::apply(path, dialect, problems);
    protobufFormat()->addAnnotations(path, problems);
    problems->removeDuplicates();
}

} // namespace

SourceFactory::SourceFactory()
{
    if (dialects().empty())
        dialects().push_back({std::unique_ptr<MavlinkDialect>(MavlinkDialect::loadBuiltIn()), QString()});
    m_dialect = dialects().front().dialect.get();
    setKnownFormats({});
}

SourceFactory::~SourceFactory()
{
    for (const FormatInfo* format : std::as_const(m_known))
        FormatRegistry::getInstance()->removeFormat(format);
}

bool SourceFactory::loadDefinitions(const QString& path, const QString& annotations, QStringList* problems)
{
    std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::load(path, problems));
    if (!dialect)
        return false;
    if (!annotations.isEmpty())
        applyAnnotations(annotations, dialect.get(), problems);
    else if (QFile::exists(Annotations::pathBeside(path)))
        Annotations::apply(Annotations::pathBeside(path), dialect.get(), problems);
    for (const QString& more : std::as_const(m_annotations))
        if (more != annotations && more != Annotations::pathBeside(path))
            Annotations::apply(more, dialect.get(), problems);
    const bool isKnown = m_known == QVector<const FormatInfo*>{m_dialect};
    m_dialect = dialect.get();
    m_path = path;
    dialects().push_back({std::move(dialect), path});
    if (isKnown)
        setKnownFormats({});
    return true;
}

bool SourceFactory::annotate(const QString& path, QStringList* problems)
{
    if (m_annotations.contains(path))
        return true;
    m_annotations.append(path);
    // The definitions are this program's own; that they are const elsewhere keeps views from changing them.
    applyAnnotations(path, const_cast<MavlinkDialect*>(m_dialect), problems);
    FormatRegistry::getInstance()->updateFormat(m_dialect);
    return problems->isEmpty();
}

const MavlinkDialect* SourceFactory::findDialect(const QString& path, QString* error)
{
    if (path.isEmpty())
        return m_dialect;
    for (const LoadedDialect& loaded : dialects())
        if (loaded.path == path)
            return loaded.dialect.get();
    QStringList problems;
    std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::load(path, &problems));
    if (!dialect) {
        *error = QCoreApplication::translate("SourceFactory", "The definitions could not be loaded.") +
                 QLatin1Char('\n') + problems.join(QLatin1Char('\n'));
        return nullptr;
    }
    for (const QString& annotations : QStringList(Annotations::pathBeside(path)) + m_annotations)
        if (QFile::exists(annotations))
            Annotations::apply(annotations, dialect.get(), &problems); // whose faults were told when it was chosen
    dialects().push_back({std::move(dialect), path});
    return dialects().back().dialect.get();
}

bool SourceFactory::create(const SourceOptions& options, SourceParts* parts, QString* error)
{
    const MavlinkDialect* const dialect = findDialect(options.isSchema() ? QString() : options.definitions, error);
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
        parts->decoder.reset(new DetectingDecoder(dialect, protobufFormat()));
        return true;
    }

    RecordingOptions recording;
    recording.dialect = dialect;
    recording.protobuf = protobufFormat();
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
        good = protobufFormat()->loadSchema(schema, options.importPaths, &problems) && good;
    if (!good)
        *error = QCoreApplication::translate("SourceFactory", "The schema could not be loaded.") + QLatin1Char('\n') +
                 problems.join(QLatin1Char('\n'));
    return good ? protobufFormat()->getLoadedTypeNames() : QStringList();
}

StreamDecoder* SourceFactory::createDecoder(const SourceOptions& options, const StreamDecoder* old)
{
    QString error;
    const MavlinkDialect* const dialect = findDialect(options.definitions, &error);
    if (!dialect || options.isSchema() || old->getFormatInfo() == dialect)
        return nullptr;
    if (const DetectingDecoder* const detecting = dynamic_cast<const DetectingDecoder*>(old))
        return detecting->isTlog() ? new MavlinkStreamDecoder(dialect, MavlinkStreamDecoder::TlogLayout)
                                   : static_cast<StreamDecoder*>(new DetectingDecoder(dialect, protobufFormat()));
    if (!dynamic_cast<const MavlinkStreamDecoder*>(old))
        return nullptr;
    return new MavlinkStreamDecoder(dialect, old->hasTimes() ? MavlinkStreamDecoder::TlogLayout
                                                             : MavlinkStreamDecoder::RawLayout);
}

StreamDecoder* SourceFactory::createMessageDecoder(const SourceOptions& options)
{
    QString error;
    return new MavlinkStreamDecoder(findDialect(options.definitions, &error), MavlinkStreamDecoder::RawLayout);
}

void SourceFactory::setKnownFormats(QVector<const FormatInfo*> formats)
{
    if (formats.isEmpty())
        formats.append(m_dialect);
    // Only the definitions in use are known by name: of two of a kind, every name would be ambiguous.
    for (const FormatInfo* format : std::as_const(m_known))
        if (!formats.contains(format))
            FormatRegistry::getInstance()->removeFormat(format);
    for (const FormatInfo* format : std::as_const(formats))
        FormatRegistry::getInstance()->addFormat(format); // ignores one that it knows
    m_known = formats;
}

#include "definitions.h"

#include "annotationfile.h"
#include "annotations.h"
#include "encoding.h"
#include "formatinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "topicfilter.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>
#include <mutex>
#include <utility>

// Enough to tell one kind of file from another, whatever stands before the first element.
static const int HeadSize = 1024;

namespace
{

/** A file of annotations for types that come later, too. */
struct Annotation
{
    QString path;
    const FormatInfo* only; // null for all formats
    std::unique_ptr<AnnotationFile> file;
};

QStringList patternsOf(const Encoding& encoding)
{
    return QString::fromLatin1(encoding.getTraits().filePatterns).split(QLatin1Char(' '));
}

QString titleOf(const Encoding& encoding)
{
    return QCoreApplication::translate("Encoding", encoding.getTraits().title);
}

} // namespace

struct Definitions::Private
{
    Encoding* encodingFor(const QString& path, QString* error) const;
    bool isKnown(const QString& path) const;
    void annotateFormats(QStringList* errors);
    void add(Annotation annotation, QStringList* errors);

    const std::vector<std::unique_ptr<Encoding>> encodings = createEncodings();
    std::vector<Annotation> annotations;
    QSet<const FormatInfo*> annotated;           // of complete encodings, what got the annotations that there are
    std::mutex mutex;                            // for what follows
    QVector<QPair<QString, QString>> topicTypes; // by filter, in the order in which they were said
};

Definitions::Definitions()
    : m_private(new Private)
{
}

Definitions::~Definitions() {}

QVector<Definitions::FileKind> Definitions::getFileKinds() const
{
    QVector<FileKind> kinds;
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings)
        if (encoding->hasFiles())
            kinds.append({titleOf(*encoding), patternsOf(*encoding)});
    return kinds;
}

/** Whose definitions a file has; null with @p error set where nobody can read it. */
Encoding* Definitions::Private::encodingFor(const QString& path, QString* error) const
{
    // A pipe or a device could keep the reader waiting for ever.
    if (QFileInfo::exists(path) && !QFileInfo(path).isFile()) {
        *error = QCoreApplication::translate("Definitions", "cannot be read: not a file");
        return nullptr;
    }
    const QString name = QFileInfo(path).fileName();
    for (const std::unique_ptr<Encoding>& encoding : encodings)
        if (QDir::match(patternsOf(*encoding), name))
            return encoding.get();
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = QCoreApplication::translate("Definitions", "cannot be read: %1").arg(file.errorString());
        return nullptr;
    }
    const QByteArray head = file.read(HeadSize);
    QStringList known;
    for (const std::unique_ptr<Encoding>& encoding : encodings) {
        if (!encoding->hasFiles())
            continue;
        if (encoding->recognizes(head))
            return encoding.get();
        if (!encoding->hasFiles())
            continue;
        known.append(titleOf(*encoding) + QLatin1String(" (") + QLatin1String(encoding->getTraits().filePatterns) +
                     QLatin1Char(')'));
    }
    *error = QCoreApplication::translate("Definitions", "these are no definitions that can be read: %1")
                 .arg(known.join(QLatin1String(", ")));
    return nullptr;
}

bool Definitions::hasNamedTypes(const QString& path) const
{
    QString error;
    const Encoding* const encoding = m_private->encodingFor(path, &error);
    return encoding && !encoding->getTraits().isComplete;
}

bool Definitions::Private::isKnown(const QString& path) const
{
    return std::any_of(annotations.begin(), annotations.end(),
                       [&](const Annotation& annotation) { return annotation.path == path; });
}

/** Gives what is complete by now, and was not there before, the annotations that are about everything. */
void Definitions::Private::annotateFormats(QStringList* errors)
{
    for (const std::unique_ptr<Encoding>& encoding : encodings) {
        if (!encoding->getTraits().isComplete)
            continue;
        for (FormatInfo* format : encoding->getFormats()) {
            if (annotated.contains(format))
                continue;
            annotated.insert(format);
            for (const Annotation& annotation : annotations)
                if (!annotation.only)
                    Annotations::apply(annotation.path, format, errors);
            FormatRegistry::getInstance()->updateFormat(format);
        }
    }
}

void Definitions::Private::add(Annotation annotation, QStringList* errors)
{
    for (const std::unique_ptr<Encoding>& encoding : encodings) {
        const AnnotationFile::Extent extent =
            encoding->getTraits().isComplete ? AnnotationFile::AllTypes : AnnotationFile::SomeTypes;
        // Definitions of single sources may well lack what the common ones have.
        QStringList ignored;
        QStringList* found = errors;
        for (FormatInfo* format : encoding->getFormats()) {
            if (annotation.only && annotation.only != format)
                continue;
            annotation.file->apply(format->getMessageInfos(), extent, found);
            FormatRegistry::getInstance()->updateFormat(format);
            found = &ignored;
        }
    }
    annotations.push_back(std::move(annotation));
}

bool Definitions::load(const QString& path, const QStringList& importPaths, QStringList* errors, Scope scope)
{
    QString error;
    Encoding* const encoding = m_private->encodingFor(path, &error);
    if (!encoding) {
        errors->append(path + QLatin1String(": ") + error);
        return false;
    }
    FormatInfo* const format = encoding->load(path, importPaths, scope, errors);
    if (!format)
        return false;
    const QString beside = Annotations::pathBeside(path);
    if (QFile::exists(beside)) {
        if (!encoding->getTraits().isComplete && !m_private->isKnown(beside)) {
            publish(errors);
            if (std::unique_ptr<AnnotationFile> file = AnnotationFile::read(beside, errors))
                m_private->add({beside, format, std::move(file)}, errors);
        } else if (encoding->getTraits().isComplete && !m_private->annotated.contains(format)) {
            Annotations::apply(beside, format, errors);
        }
    }
    // Types that the file brought can be named and completed before there are messages.
    publish(errors);
    return true;
}

bool Definitions::annotate(const QString& path, QStringList* errors)
{
    if (m_private->isKnown(path))
        return true;
    const int before = int(errors->size());
    publish(errors);
    if (std::unique_ptr<AnnotationFile> file = AnnotationFile::read(path, errors))
        m_private->add({path, nullptr, std::move(file)}, errors);
    return int(errors->size()) == before;
}

void Definitions::publish(QStringList* errors)
{
    m_private->annotateFormats(errors);
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings) {
        const QVector<const MessageInfo*> infos = encoding->publish();
        if (infos.isEmpty())
            continue;
        const FormatInfo* const format = infos.constFirst()->getFormatInfo();
        for (const Annotation& annotation : m_private->annotations)
            if (!annotation.only || annotation.only == format)
                annotation.file->apply(infos, AnnotationFile::SomeTypes, errors);
        FormatRegistry::getInstance()->updateFormat(format);
    }
}

Encoding* Definitions::find(const QString& name) const
{
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings)
        if (name == QLatin1String(encoding->getTraits().name))
            return encoding.get();
    return nullptr;
}

const FormatInfo* Definitions::getFormat(const QString& encoding, const QString& path) const
{
    Encoding* const found = find(encoding);
    return found ? found->getFormat(path) : nullptr;
}

bool Definitions::isComplete(const FormatInfo* format) const
{
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings)
        for (const FormatInfo* other : encoding->getFormats())
            if (other == format)
                return encoding->getTraits().isComplete;
    return false;
}

QVector<const FormatInfo*> Definitions::getCompleteFormats() const
{
    QVector<const FormatInfo*> formats;
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings)
        if (encoding->getTraits().isComplete)
            formats.append(encoding->getFormat(QString()));
    return formats;
}

QVector<const FormatInfo*> Definitions::getSchemaFormats() const
{
    QVector<const FormatInfo*> formats;
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings)
        if (encoding->hasSchemas())
            formats.append(encoding->getFormat(QString()));
    return formats;
}

QStringList Definitions::getTypeNames() const
{
    QStringList names;
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings)
        names += encoding->getTypeNames();
    return names;
}

const MessageInfo* Definitions::findType(const QString& name, QString* error) const
{
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings)
        if (const MessageInfo* const info = encoding->findType(name, error))
            return info;
    return nullptr;
}

bool Definitions::addTopicType(const QString& rule, QString* error)
{
    const int equals = int(rule.lastIndexOf(QLatin1Char('=')));
    const QString filter = rule.left(equals);
    const QString type = rule.mid(equals + 1);
    QString reason = equals < 0 ? QCoreApplication::translate("Definitions", "FILTER=TYPE is expected")
                                : TopicFilter::describeFault(filter);
    if (reason.isEmpty()) {
        const Encoding* const encoding = find(type);
        const bool needsNoType =
            encoding && (encoding->getTraits().isSelfDescribing || encoding->getTraits().isComplete);
        if (type.isEmpty() || (!needsNoType && !findType(type, &reason) && reason.isEmpty()))
            reason = QCoreApplication::translate("Definitions", "there is no type \"%1\"").arg(type);
    }
    if (!reason.isEmpty()) {
        *error = rule + QLatin1String(": ") + reason;
        return false;
    }
    const std::lock_guard<std::mutex> lock(m_private->mutex);
    if (!m_private->topicTypes.contains({filter, type})) // a source that is opened again says it again
        m_private->topicTypes.append({filter, type});
    return true;
}

QString Definitions::getTopicType(const QString& topic) const
{
    const std::lock_guard<std::mutex> lock(m_private->mutex);
    for (const QPair<QString, QString>& one : std::as_const(m_private->topicTypes))
        if (TopicFilter::matches(one.first, topic))
            return one.second;
    return QString();
}

TypeSchema Definitions::schemaOf(const MessageInfo* info) const
{
    for (const std::unique_ptr<Encoding>& encoding : m_private->encodings) {
        const TypeSchema schema = encoding->schemaOf(info);
        if (!schema.isEmpty())
            return schema;
    }
    return TypeSchema();
}

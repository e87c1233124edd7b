#include "folderinput.h"

#include "mcapindex.h"
#include "message.h"
#include "recordingfolder.h"
#include "streamdecoder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryFile>

#include <zstd.h>

#include <algorithm>

namespace
{

const int PieceSize = 64 * 1024;

} // namespace

FolderInput::FolderInput(const InputAddress& address)
    : ByteInput(address.path)
    , m_path(address.path)
    , m_cancelled(false)
    , m_size(0)
    , m_part(0)
    , m_partOffset(0)
{
}

FolderInput::~FolderInput() {}

bool FolderInput::isFor(const QString& path)
{
    const QFileInfo info(path);
    return info.isDir() || (RecordingFolder::isCompressed(path) && info.isFile());
}

bool FolderInput::open()
{
    QStringList paths{m_path};
    QString error;
    if (QFileInfo(m_path).isDir()) {
        paths.clear();
        if (!RecordingFolder::read(m_path, &paths, &error, &m_notices)) {
            setError(error);
            return false;
        }
    }
    for (const QString& path : std::as_const(paths))
        if (!m_cancelled)
            add(path);
    if (m_cancelled) {
        setError(QCoreApplication::translate("FolderInput", "cancelled"));
        return false;
    }
    if (m_parts.empty()) {
        setError(m_notices.join(QStringLiteral("; ")));
        return false;
    }
    const bool isOrdered =
        QFileInfo(QDir(m_path).filePath(QStringLiteral("metadata.yaml"))).exists() || RecordingFolder::sort(&paths);
    if (m_parts.size() > 1 && !isOrdered)
        sortByTime();
    return true;
}

/** Opens a file; what cannot be read is told, and the others are read. */
void FolderInput::add(const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    std::unique_ptr<QFile> file(new QFile(path));
    if (!file->open(QIODevice::ReadOnly | QIODevice::Unbuffered)) {
        m_notices.append(name + QStringLiteral(": ") + file->errorString());
        return;
    }
    if (RecordingFolder::isCompressed(path))
        file = decompress(file.get(), name);
    const qint64 size = file ? file->size() : 0;
    if (size > 0) {
        m_parts.push_back({std::move(file), size, name});
        m_size += size;
    } else if (file) {
        m_notices.append(QCoreApplication::translate("FolderInput", "%1 is empty").arg(name));
    }
}

/** What a compressed file has, as far as it is whole; null where there is no room for it. */
std::unique_ptr<QFile> FolderInput::decompress(QFile* packed, const QString& name)
{
    std::unique_ptr<QFile> file(new QTemporaryFile(QDir::temp().filePath(QStringLiteral("corvel-XXXXXX.mcap"))));
    if (!file->open(QIODevice::ReadWrite)) {
        m_notices.append(name + QStringLiteral(": ") + file->errorString());
        return nullptr;
    }
    const std::unique_ptr<ZSTD_DStream, std::size_t (*)(ZSTD_DStream*)> stream(ZSTD_createDStream(), ZSTD_freeDStream);
    QByteArray output(int(ZSTD_DStreamOutSize()), Qt::Uninitialized);
    std::size_t left = 1; // of a frame that has begun
    while (!m_cancelled) {
        const QByteArray input = packed->read(qint64(ZSTD_DStreamInSize()));
        ZSTD_inBuffer in{input.constData(), std::size_t(input.size()), 0};
        bool isFull = true; // there may be more to come out
        while (in.pos < in.size || (isFull && left != 0 && !input.isEmpty())) {
            ZSTD_outBuffer out{output.data(), std::size_t(output.size()), 0};
            left = ZSTD_decompressStream(stream.get(), &out, &in);
            if (ZSTD_isError(left)) {
                m_notices.append(
                    QCoreApplication::translate("FolderInput", "%1 is damaged (%2); what comes before is read")
                        .arg(name, QString::fromLatin1(ZSTD_getErrorName(left))));
                return file;
            }
            isFull = out.pos == out.size;
            if (file->write(output.constData(), qint64(out.pos)) != qint64(out.pos)) {
                m_notices.append(QCoreApplication::translate("FolderInput", "%1 cannot be decompressed into %2: %3")
                                     .arg(name, file->fileName(), file->errorString()));
                return nullptr;
            }
        }
        if (!input.isEmpty())
            continue;
        if (left != 0)
            m_notices.append(
                QCoreApplication::translate("FolderInput", "%1 breaks off; what there is is read").arg(name));
        break;
    }
    file->flush();
    return file;
}

/** For files whose names tell no order. */
void FolderInput::sortByTime()
{
    std::vector<std::pair<qint64, Part>> parts;
    for (Part& part : m_parts) {
        QString error;
        const std::unique_ptr<McapIndex> index(
            McapIndex::load(part.file->fileName(), &error, [this](int) { return !m_cancelled; }));
        parts.emplace_back(index ? index->getStartTime() : qint64(Message::NoTime), std::move(part));
    }
    std::stable_sort(parts.begin(), parts.end(),
                     [](const auto& left, const auto& right) { return left.first < right.first; });
    m_parts.clear();
    for (auto& part : parts)
        m_parts.push_back(std::move(part.second));
}

ByteInput::Status FolderInput::read(QByteArray* bytes, int)
{
    bytes->clear();
    if (m_cancelled)
        return Nothing;
    while (m_part < m_parts.size() && m_partOffset >= m_parts[m_part].size) {
        ++m_part;
        m_partOffset = 0;
    }
    if (m_part == m_parts.size())
        return End;
    const Part& part = m_parts[m_part];
    if (!part.file->seek(m_partOffset)) {
        setError(part.name + QStringLiteral(": ") + part.file->errorString());
        return Failed;
    }
    *bytes = part.file->read(std::min(qint64(PieceSize), part.size - m_partOffset));
    if (bytes->isEmpty()) {
        setError(QCoreApplication::translate("FolderInput", "%1 became shorter").arg(part.name));
        return Failed;
    }
    m_partOffset += bytes->size();
    return Data;
}

bool FolderInput::seek(qint64 offset)
{
    m_part = 0;
    while (m_part < m_parts.size() && offset >= m_parts[m_part].size)
        offset -= m_parts[m_part++].size;
    m_partOffset = offset;
    return true;
}

QVector<InputFile> FolderInput::getFiles() const
{
    QVector<InputFile> files;
    for (const Part& part : m_parts)
        files.append({part.file->fileName(), part.size});
    return files;
}

QVector<StreamProblem> FolderInput::takeNotices()
{
    QVector<StreamProblem> notices;
    for (const QString& text : std::as_const(m_notices)) {
        StreamProblem notice;
        notice.kind = StreamProblem::InputFailure;
        notice.text = text;
        notices.append(notice);
    }
    m_notices.clear();
    return notices;
}

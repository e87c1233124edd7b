#include "fileseries.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

FileSeries::FileSeries(const OutputAddress& address, const Settings& settings, const StreamDecoder* decoder)
    : MessageOutput(decoder)
    , m_address(address)
    , m_settings(settings)
    , m_folder(QFileInfo(address.path).path())
    , m_base(QFileInfo(address.path).completeBaseName())
{
    // The file itself begins with its first message: of an input that cannot be read there is none.
    if (!QFileInfo(m_folder).isDir() || !QFileInfo(m_folder).isWritable())
        setError(QStringLiteral("%1: no files can be written to %2").arg(address.path, m_folder));
}

void FileSeries::setDecoder(const StreamDecoder* decoder)
{
    MessageOutput::setDecoder(decoder);
    if (m_output)
        m_output->setDecoder(decoder);
}

QStringList FileSeries::findFiles() const
{
    const QString ending = QLatin1Char('.') + QFileInfo(m_address.path).suffix();
    static const QRegularExpression number(QStringLiteral("\\A-[0-9]{6}(-[0-9]{8}T[0-9]{6}Z)?\\z"));
    QStringList files;
    for (const QString& name : QDir(m_folder).entryList(QDir::Files, QDir::Name)) {
        if (!name.startsWith(m_base) || !name.endsWith(ending))
            continue;
        const QString middle = name.mid(m_base.size(), name.size() - m_base.size() - ending.size());
        if (number.match(middle).hasMatch())
            files.append(name);
    }
    return files;
}

/** The path of a file that is not there, with the next number. */
QString FileSeries::nextPath(qint64 time) const
{
    const QStringList files = findFiles();
    const int last = files.isEmpty() ? 0 : files.constLast().mid(m_base.size() + 1, 6).toInt();
    const QString number = QString::number(last + 1).rightJustified(6, QLatin1Char('0'));
    const QString begun =
        QDateTime::fromMSecsSinceEpoch(time / 1000, Qt::UTC).toString(QStringLiteral("yyyyMMddTHHmmssZ"));
    return QStringLiteral("%1/%2-%3%4.%5")
        .arg(m_folder, m_base, number, isSeries() ? QLatin1Char('-') + begun : QString(),
             QFileInfo(m_address.path).suffix());
}

bool FileSeries::begin(qint64 time)
{
    const bool isNamed = !isSeries() && (m_settings.isReplaced || !QFileInfo::exists(m_address.path));
    const QString path = isNamed ? m_address.path : nextPath(time);
    if (!isNamed && !isSeries())
        addNotice(QStringLiteral("is there already; writing %1").arg(path));
    std::unique_ptr<QFile> file(new QFile(path));
    const QIODevice::OpenMode fresh = isNamed && m_settings.isReplaced ? QIODevice::Truncate : QIODevice::NewOnly;
    if (!file->open(QIODevice::WriteOnly | QIODevice::Unbuffered | fresh)) {
        setError(QStringLiteral("%1: %2").arg(path, file->errorString()));
        return false;
    }
    m_file = std::move(file);
    m_output.reset(m_address.kind->create({m_file.get(), "corvel-relay", m_settings.definitions}, getDecoder()));
    m_firstTime = time;
    return true;
}

void FileSeries::end()
{
    if (!m_output)
        return;
    m_output->close();
    m_output.reset();
    m_file->close();
    checkFile();
    m_file.reset();
    deleteOldest();
}

void FileSeries::checkFile()
{
    if (m_file->error() != QFileDevice::NoError && getErrorString().isEmpty())
        setError(QStringLiteral("%1: %2").arg(m_file->fileName(), m_file->errorString()));
}

void FileSeries::deleteOldest()
{
    if (m_settings.keep <= 0)
        return;
    QStringList files = findFiles();
    qint64 size = 0;
    for (const QString& name : files)
        size += QFileInfo(m_folder + QLatin1Char('/') + name).size();
    while (size > m_settings.keep && files.size() > 1) {
        const QString path = m_folder + QLatin1Char('/') + files.takeFirst();
        size -= QFileInfo(path).size();
        if (!QFile::remove(path))
            addNotice(QStringLiteral("%1 cannot be deleted").arg(path));
    }
}

void FileSeries::processReceived(const ReceivedMessage& message)
{
    const bool isLong = m_settings.splitTime > 0 && message.time - m_firstTime >= m_settings.splitTime;
    const bool isBig = m_settings.splitSize > 0 && m_file && m_file->size() >= m_settings.splitSize;
    if (isLong || isBig)
        end();
    if (!getErrorString().isEmpty() || (!m_output && !begin(message.time))) {
        addDropped();
        return;
    }
    m_output->processReceived(message);
    m_unflushed += message.size;
    // Else a part of what was taken counts in no file.
    if (m_settings.splitSize > 0 && m_unflushed > m_settings.splitSize / 8)
        flush();
}

void FileSeries::processProblem(const StreamProblem& problem)
{
    if (m_output)
        m_output->processProblem(problem);
}

void FileSeries::flush()
{
    if (!m_output)
        return;
    m_output->flush();
    m_unflushed = 0;
    checkFile();
}

void FileSeries::close()
{
    end();
}

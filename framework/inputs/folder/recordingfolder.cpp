#include "recordingfolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <yaml-cpp/yaml.h>

#include <algorithm>
#include <vector>

namespace
{

const char MetadataName[] = "metadata.yaml";
const char Compression[] = ".zstd";

// That of a recording of a thousand files and topics has a hundredth of it.
const qint64 GreatestMetadata = 16 * 1024 * 1024;

} // namespace

bool RecordingFolder::isCompressed(const QString& path)
{
    return path.endsWith(QLatin1String(Compression), Qt::CaseInsensitive);
}

bool RecordingFolder::read(const QString& folder, QStringList* paths, QString* error, QStringList* notices)
{
    const QDir directory(folder);
    const QStringList found = directory.entryList(
        {QStringLiteral("*.mcap"), QStringLiteral("*.mcap") + QLatin1String(Compression)}, QDir::Files, QDir::Name);
    QStringList names;
    if (directory.exists(QLatin1String(MetadataName))) {
        QString reason;
        if (!readMetadata(directory.filePath(QLatin1String(MetadataName)), &names, &reason)) {
            // A recording that was broken off may have half of it.
            if (found.isEmpty()) {
                *error = QLatin1String(MetadataName) + QLatin1String(": ") + reason;
                return false;
            }
            notices->append(QLatin1String(MetadataName) + QLatin1String(": ") + reason);
        }
    }
    for (const QString& name : std::as_const(names)) {
        if (directory.exists(name))
            paths->append(directory.filePath(name));
        else
            notices->append(QCoreApplication::translate("RecordingFolder", "%1 is missing, which %2 names")
                                .arg(name, QLatin1String(MetadataName)));
    }
    QStringList others;
    for (const QString& name : found) {
        if (names.contains(name))
            continue;
        others.append(directory.filePath(name));
        if (!names.isEmpty())
            notices->append(QCoreApplication::translate("RecordingFolder", "%1 is read last, for %2 does not name it")
                                .arg(name, QLatin1String(MetadataName)));
    }
    sort(&others);
    *paths += others;
    if (paths->isEmpty())
        *error = QCoreApplication::translate("RecordingFolder", "there is no recording in this folder: no file *.mcap");
    return !paths->isEmpty();
}

bool RecordingFolder::readMetadata(const QString& path, QStringList* names, QString* error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        *error = file.errorString();
        return false;
    }
    try {
        const YAML::Node whole = YAML::Load(file.read(GreatestMetadata).toStdString());
        if (!whole.IsMap() || !whole["rosbag2_bagfile_information"].IsDefined()) {
            *error = QCoreApplication::translate("RecordingFolder", "it says nothing of a recording");
            return false;
        }
        const YAML::Node information = whole["rosbag2_bagfile_information"];
        const YAML::Node files = information["relative_file_paths"];
        const std::size_t count = files.IsDefined() ? files.size() : 0;
        const std::string storage = information["storage_identifier"].as<std::string>("mcap");
        if (storage != "mcap") {
            *error = QCoreApplication::translate("RecordingFolder", "a recording in %1, which cannot be read")
                         .arg(QString::fromStdString(storage));
            return false;
        }
        for (std::size_t i = 0; i < count; ++i)
            // Older ones name the folder as well.
            names->append(QFileInfo(QString::fromStdString(files[i].as<std::string>())).fileName());
    } catch (const YAML::Exception& exception) {
        names->clear();
        *error = QString::fromStdString(exception.what());
        return false;
    }
    if (names->isEmpty())
        *error = QCoreApplication::translate("RecordingFolder", "it names no files");
    return !names->isEmpty();
}

bool RecordingFolder::sort(QStringList* paths)
{
    struct Entry
    {
        QString stem;
        qulonglong number;
        QString path;
    };
    static const QRegularExpression form(QStringLiteral("^(.*?)(\\d+)\\.mcap(\\.zstd)?$"),
                                         QRegularExpression::CaseInsensitiveOption);
    std::vector<Entry> entries;
    bool isTold = true;
    for (const QString& path : std::as_const(*paths)) {
        const QRegularExpressionMatch match = form.match(QFileInfo(path).fileName());
        entries.push_back({match.captured(1), match.captured(2).toULongLong(), path});
        isTold = isTold && match.hasMatch() && entries.back().stem == entries.front().stem;
    }
    if (!isTold)
        return false;
    std::sort(entries.begin(), entries.end(),
              [](const Entry& left, const Entry& right) { return left.number < right.number; });
    paths->clear();
    for (const Entry& entry : entries)
        paths->append(entry.path);
    return true;
}

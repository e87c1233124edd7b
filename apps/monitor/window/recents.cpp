#include "recents.h"

#include "byteinput.h"
#include "inputkind.h"
#include "sourcesession.h"

#include <QFileInfo>
#include <QSettings>

#include <algorithm>

static const int Most = 10;
static const char RecordingsKey[] = "recentRecordings";
static const char ConnectionsKey[] = "recentConnections";
static const char FilesKey[] = "recentFiles"; // where earlier versions kept recordings

Recents::Recents(QObject* parent)
    : QObject(parent)
{
}

static bool isFile(const QString& address)
{
    InputAddress parsed;
    QString error;
    return InputAddress::parse(address, &parsed, &error) && parsed.kind->isFile();
}

QString Recents::Entry::getTitle() const
{
    if (!options.name.isEmpty())
        return options.name;
    return isFile(options.address) ? QFileInfo(options.address).fileName() : options.address;
}

QString Recents::Entry::getDescription() const
{
    QStringList lines{options.address};
    if (!options.definitions.isEmpty())
        lines.append(options.definitions);
    if (!options.typeName.isEmpty())
        lines.append(options.typeName);
    return lines.join(QLatin1Char('\n'));
}

void Recents::remember(const SourceSession* session)
{
    Entry entry;
    entry.options = session->getOptions();
    if (entry.options.isSimulation())
        return;
    entry.hadPassword = !entry.options.password.isEmpty();
    entry.options.password.clear();
    const bool isRecording = !session->getPath().isEmpty();
    if (isRecording)
        entry.options.address = session->getPath(); // the program may be started elsewhere the next time
    else if (!session->isLive())
        return;
    QVector<Entry>& list = isRecording ? m_recordings : m_connections;
    const auto isSame = [&entry](const Entry& other) {
        return other.options.address == entry.options.address && other.options.name == entry.options.name;
    };
    list.erase(std::remove_if(list.begin(), list.end(), isSame), list.end());
    list.prepend(entry);
    if (list.size() > Most)
        list.removeLast();
    Q_EMIT changed();
}

static void save(QSettings& settings, const char* key, const QVector<Recents::Entry>& entries)
{
    settings.remove(QLatin1String(key));
    settings.beginWriteArray(QLatin1String(key), int(entries.size()));
    for (int i = 0; i < entries.size(); ++i) {
        const SourceOptions& options = entries.at(i).options;
        settings.setArrayIndex(i);
        settings.setValue(QLatin1String("address"), options.address);
        settings.setValue(QLatin1String("name"), options.name);
        settings.setValue(QLatin1String("definitions"), options.definitions);
        settings.setValue(QLatin1String("imports"), options.importPaths);
        settings.setValue(QLatin1String("type"), options.typeName);
        settings.setValue(QLatin1String("schemas"), options.moreSchemas);
        settings.setValue(QLatin1String("framing"), options.framing);
        settings.setValue(QLatin1String("container"), options.container);
        settings.setValue(QLatin1String("topics"), options.topicTypes);
        settings.setValue(QLatin1String("rate"), options.rate);
        settings.setValue(QLatin1String("hadPassword"), entries.at(i).hadPassword);
    }
    settings.endArray();
}

static void restore(QSettings& settings, const char* key, QVector<Recents::Entry>* entries)
{
    const int count = qMin(settings.beginReadArray(QLatin1String(key)), Most);
    entries->clear();
    for (int i = 0; i < count; ++i) {
        settings.setArrayIndex(i);
        Recents::Entry entry;
        SourceOptions& options = entry.options;
        options.address = settings.value(QLatin1String("address")).toString();
        options.name = settings.value(QLatin1String("name")).toString();
        options.definitions = settings.value(QLatin1String("definitions")).toString();
        options.importPaths = settings.value(QLatin1String("imports")).toStringList();
        options.typeName = settings.value(QLatin1String("type")).toString();
        options.moreSchemas = settings.value(QLatin1String("schemas")).toStringList();
        options.framing = settings.value(QLatin1String("framing")).toString();
        options.container = settings.value(QLatin1String("container")).toString();
        options.topicTypes = settings.value(QLatin1String("topics")).toStringList();
        options.rate = settings.value(QLatin1String("rate")).toDouble();
        entry.hadPassword = settings.value(QLatin1String("hadPassword")).toBool();
        if (!options.address.isEmpty()) // which would be a simulation
            entries->append(entry);
    }
    settings.endArray();
}

void Recents::saveSettings(QSettings& settings) const
{
    save(settings, RecordingsKey, m_recordings);
    save(settings, ConnectionsKey, m_connections);
    settings.remove(QLatin1String(FilesKey));
}

void Recents::restoreSettings(QSettings& settings)
{
    restore(settings, RecordingsKey, &m_recordings);
    restore(settings, ConnectionsKey, &m_connections);
    const QStringList before = settings.value(QLatin1String(FilesKey)).toStringList();
    for (const QString& path : before) {
        if (m_recordings.size() >= Most || path.isEmpty())
            continue;
        Entry entry;
        entry.options.address = path;
        m_recordings.append(entry);
    }
    Q_EMIT changed();
}

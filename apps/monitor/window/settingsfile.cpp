#include "settingsfile.h"

#include <QCoreApplication>
#include <QFile>
#include <QStandardPaths>

// Settings are a few kilobytes; what is larger is not ours.
static const qint64 GreatestSize = 16 * 1024 * 1024;

QString SettingsFile::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QLatin1String("/monitor.ini");
}

static bool isDamaged(const QString& path)
{
    QFile file(path);
    if (!file.exists())
        return false;
    if (!file.open(QIODevice::ReadOnly) || file.size() > GreatestSize)
        return true;
    // Qt's reader takes nearly everything; but what it writes is text.
    if (file.readAll().contains('\0'))
        return true;
    QSettings settings(path, QSettings::IniFormat);
    settings.allKeys();
    return settings.status() != QSettings::NoError;
}

std::unique_ptr<QSettings> SettingsFile::open(const QString& path, QString* problem)
{
    if (isDamaged(path)) {
        const QString aside = path + QLatin1String(".damaged");
        QFile::remove(aside);
        const bool moved = QFile::rename(path, aside);
        *problem = moved ? QCoreApplication::translate("SettingsFile",
                                                       "The settings were damaged. They were put aside as %1, and the "
                                                       "program starts with its defaults.")
                               .arg(aside)
                         : QCoreApplication::translate("SettingsFile", "The settings in %1 cannot be read.").arg(path);
    }
    return std::unique_ptr<QSettings>(new QSettings(path, QSettings::IniFormat));
}

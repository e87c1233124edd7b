#ifndef SETTINGSFILE_H
#define SETTINGSFILE_H

#include <QSettings>
#include <QString>

#include <memory>

/** The file in which the monitor keeps what should survive a restart. */
class SettingsFile
{
public:
    /** The user's own file. */
    static QString defaultPath();

    /**
     * Opens the settings at @p path. A file that is damaged is put aside under another name, and the settings are
     * empty.
     *
     * @param problem  what the user should be told, or left alone; must not be null
     * @return never null
     */
    static std::unique_ptr<QSettings> open(const QString& path, QString* problem);
};

#endif

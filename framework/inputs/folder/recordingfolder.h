#ifndef RECORDINGFOLDER_H
#define RECORDINGFOLDER_H

#include <QString>
#include <QStringList>

/** The files of a recording that lies in a folder, in the order in which they were written. */
class RecordingFolder
{
public:
    /**
     * Looks into a folder: into its metadata.yaml or, where there is none, for files of recordings.
     *
     * @param error    why false is returned; must not be null
     * @param notices  what is not as it should be, such as a file that is missing; must not be null
     */
    static bool read(const QString& folder, QStringList* paths, QString* error, QStringList* notices);

    /** Whether the file is compressed as a whole, as its name says. */
    static bool isCompressed(const QString& path);

    /**
     * Puts files in order: by the numbers at the ends of their names where these are otherwise the same.
     *
     * @return false where names do not tell the order; then they are sorted by name
     */
    static bool sort(QStringList* paths);

private:
    static bool readMetadata(const QString& path, QStringList* names, QString* error);
};

#endif

#ifndef MAVLINKDIALECTREADER_H
#define MAVLINKDIALECTREADER_H

#include "corvelframework_export.h"
#include "mavlinkdefinition.h"

#include <QByteArray>
#include <QHash>
#include <QStringList>

class MavlinkDialect;
class MavlinkMessageInfo;

/** Reads a dialect's definition files and builds the dialect. */
class CORVELFRAMEWORK_EXPORT MavlinkDialectReader
{
public:
    /** See MavlinkDialect::load(). */
    static MavlinkDialect* read(const QString& path, QStringList* errors);

    /** The same for a file whose contents are at hand; @p path names it, and includes are looked for beside it. */
    static MavlinkDialect* readBytes(const QString& path, const QByteArray& bytes, QStringList* errors);

    /** The most bytes that a definition file may have. */
    static const qint64 GreatestFileSize = 16 * 1024 * 1024;
    /** The most bytes that all files of a dialect may have together. */
    static const qint64 GreatestTotalSize = 64 * 1024 * 1024;
    /** The most files that a dialect may consist of. */
    static const int GreatestFileCount = 4096;

private:
    struct OpenFile
    {
        int index;       // in m_files
        int nextInclude; // in that file's includes
    };
    struct Enum
    {
        QVector<FieldInfo::Enumerator> enumerators;
        bool bitmask = false;
        quint64 greatest = 0;
    };

    MavlinkDialectReader() = default;

    static bool readFile(const QString& path, QByteArray* bytes, QString* error);
    void parseFile(const QString& path, const QString& identity, const QByteArray& bytes);
    void parseIncludes();
    void parseInclude(const MavlinkIncludeDefinition& include);
    bool isOpen(int index) const;
    QString describeCycle(int index) const;
    MavlinkDialect* build(QStringList* errors);
    void mergeEnums(const MavlinkDefinitionFile& file);
    void addMessage(const MavlinkMessageDefinition& message, MavlinkDialect* dialect);
    bool checkMessage(const MavlinkMessageDefinition& message);
    MavlinkMessageInfo* createMessageInfo(const MavlinkMessageDefinition& message) const;

    MavlinkDefinitionErrors m_errors;
    QVector<MavlinkDefinitionFile> m_files; // in the order in which they were met
    QHash<QString, int> m_indices;          // in m_files, by a path that is the same for one and the same file
    qint64 m_totalSize = 0;
    QVector<OpenFile> m_open; // the files that are being included, outermost first
    QVector<int> m_order;     // of m_files, when they are through: what a file includes comes before it
    QHash<QString, Enum> m_enums;
    QHash<QString, MavlinkPlace> m_enumEntries; // by names of enum and entry
    QHash<quint32, MavlinkMessageDefinition> m_byId;
    QHash<QString, MavlinkMessageDefinition> m_byName;
};

#endif

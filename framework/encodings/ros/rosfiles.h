#ifndef ROSFILES_H
#define ROSFILES_H

#include "rosschema.h"

#include <QSet>
#include <QStringList>

/**
 * Reads a .msg or .idl text and those that it needs from the disk, and puts them together to one schema such as
 * recordings have.
 *
 * What it needs is looked for as ROS has it, in "PACKAGE/msg/Type.msg": first beside it, then in the folders for
 * imports and what they have in "share".
 */
class RosFiles
{
public:
    explicit RosFiles(const QStringList& importPaths);

    /** False with @p fault set, which can stand in any of the files: textOf(). */
    bool read(const QString& path, Ros::Fault* fault);

    /** The types that the file itself has. */
    const QStringList& getTypeNames() const { return m_names; }
    /** How the schema is written: "ros2msg", "ros2idl" or "omgidl". */
    const QByteArray& getEncoding() const { return m_encoding; }
    const QByteArray& getSchema() const { return m_schema; }

    /** "file:line:column: text" of what is wrong with the schema, or with a file. */
    QString textOf(const Ros::Fault& fault) const;

private:
    /** A file, and the line of the schema that its first one became. */
    struct Part
    {
        QString path;
        int line;
    };

    bool load(const QString& path, QString* text, Ros::Fault* fault);
    void append(const QString& path, const QString& title, const QString& text);
    bool addMessage(const QString& path, const QString& title, Ros::Fault* fault);
    bool addIdl(const QString& path, const QString& title, Ros::Fault* fault);
    QString find(const QStringList& names, const QString& from) const;
    static QStringList structsOf(const QString& text);

    const QStringList m_importPaths;
    QString m_root; // the folder that packages are in
    QByteArray m_encoding;
    QByteArray m_schema;
    QStringList m_names;
    QSet<QString> m_known; // files, and names that were looked for
    std::vector<Part> m_parts;
    QString m_failed; // the file that cannot be read
    int m_line;       // of the schema that comes next
};

#endif

#ifndef MAVLINKDEFINITION_H
#define MAVLINKDEFINITION_H

#include "corvelframework_export.h"
#include "fieldinfo.h"
#include "fieldtype.h"

#include <QString>
#include <QStringList>
#include <QVector>

// What a dialect's XML files say, before any of it is turned into descriptions of message types.

/** Where in the files something stands. */
struct MavlinkPlace
{
    QString file;
    int line = 0;
};

struct MavlinkEntryDefinition
{
    FieldInfo::Enumerator enumerator;
    bool hasValue = true; ///< false: it gets the next one
    MavlinkPlace place;
};

struct MavlinkEnumDefinition
{
    QString name;
    bool bitmask = false;
    QVector<MavlinkEntryDefinition> entries;
};

struct MavlinkFieldDefinition
{
    QString name;
    QString typeName; ///< of one element, as it counts for the checksum
    FieldType::TypeCode typeCode = FieldType::NoType;
    int size = 0;  ///< bytes of one element
    int count = 0; ///< elements of an array; 0 for a plain field
    bool extension = false;
    bool displayAsBitmask = false;
    QString units;
    QString enumName;
    QString invalid;
    QString multiplier;
    QString least;
    QString greatest;
    QString description;
    MavlinkPlace place;

    int getLength() const { return count > 0 ? size * count : size; }
};

struct MavlinkMessageDefinition
{
    QString name;
    quint32 id = 0;
    QString description;
    QVector<MavlinkFieldDefinition> fields; ///< as in the file
    MavlinkPlace place;
};

struct MavlinkIncludeDefinition
{
    QString name;
    MavlinkPlace place;
};

/** What one file says. */
struct MavlinkDefinitionFile
{
    QString path;
    QVector<MavlinkIncludeDefinition> includes;
    QVector<MavlinkEnumDefinition> enums;
    QVector<MavlinkMessageDefinition> messages;
};

/** Collects errors as "file:line: text"; of a flood only the first are kept and the rest counted. */
class MavlinkDefinitionErrors
{
public:
    void add(const MavlinkPlace& place, const QString& text);
    bool isEmpty() const { return m_texts.isEmpty(); }
    QStringList toStringList() const;

private:
    QStringList m_texts;
    int m_more = 0;
};

#endif

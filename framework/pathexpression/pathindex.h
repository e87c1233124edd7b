#ifndef PATHINDEX_H
#define PATHINDEX_H

#include "pathnames.h"

#include <QObject>
#include <QVector>

class FieldInfo;
class FormatInfo;
class MessageInfo;

/** A type, whose name is that which paths write. */
struct PathType : PathEntry
{
    const MessageInfo* info;
    QVector<const FieldInfo*> fieldInfos; ///< shared with info, so that a field added there makes another vector
    int firstField;                       ///< of PathFormat::fields()
    int endField;
};

struct PathField : PathEntry
{
    bool repeated;
    bool hasComponents;
    int type; ///< of PathFormat::types(); -1 below the first level
    const FieldInfo* info;
    const MessageInfo* subMessage; ///< null when it is none
};

/** What a format holds, by name. */
class PathFormat : public PathEntry
{
public:
    PathFormat(const FormatInfo* format, int name);

    const FormatInfo* format() const { return m_format; }
    quint64 revision() const { return m_revision; }

    /** Reads what is new since the last time; everything when it is not only more types. */
    void update(quint64 revision, PathNames* names, PathNumbering* numbering);

    const std::vector<PathType>& types() const { return m_types; }
    /** The types of the name @p name, in order. */
    QVector<int> typesNamed(int name) const { return m_typesByName.value(name); }
    /** The type that @p info describes, or -1. */
    int typeOf(const MessageInfo* info) const { return m_typesByInfo.value(info, -1); }

    /** The fields that stand directly in the types, in order. */
    const std::vector<PathField>& fields() const { return m_fields; }
    /** The fields that others can lie below, in order. */
    const std::vector<int>& parentFields() const { return m_parentFields; }
    /** Of all fields that are called the same in a list of names, the first; in order. */
    const std::vector<int>& distinctFields() const { return m_distinctFields; }
    /** The fields of the name @p name, in order. */
    std::vector<int> fieldsNamed(const PathNames& names, int name) const;
    /** The fields, or the distinct fields, whose folded name begins with @p folded, in order. */
    std::vector<int> fieldsBeginningWith(const PathNames& names, const QString& folded, bool distinct) const;

    /** Describes @p infos, which stand next to each other. */
    static void readFields(const QVector<const FieldInfo*>& infos, int type, PathNames* names, PathNumbering* numbering,
                           std::vector<PathField>* fields);

private:
    bool hasOnlyGrown(const QVector<const MessageInfo*>& infos) const;
    void clear();
    void readType(const MessageInfo* info, PathNames* names, PathNumbering* numbering);
    void sortFields(size_t firstNew, const PathNames& names);

    const FormatInfo* m_format;
    quint64 m_revision;
    std::vector<PathType> m_types;
    QHash<int, QVector<int>> m_typesByName;
    QHash<const MessageInfo*, int> m_typesByInfo;
    std::vector<PathField> m_fields;
    std::vector<int> m_parentFields;
    std::vector<int> m_distinctFields;
    // The names of fields sorted by folded text, and the fields of name number i at [m_begins[i], m_begins[i + 1]) of
    // m_fieldsByName; those of them that are distinct come first, and end at m_distinctEnds[i].
    std::vector<int> m_sortedNames;
    std::vector<int> m_begins;
    std::vector<int> m_distinctEnds;
    std::vector<int> m_fieldsByName;
};

/**
 * The formats of the registry, by name: shared by all expressions.
 *
 * A format is read when it becomes known or changes, and nothing else with it, so that nobody who types waits for it.
 */
class PathIndex : public QObject
{
    Q_OBJECT

public:
    static PathIndex* getInstance();

    /** The index as the registry is now, also for who hears of a change before it does. */
    static PathIndex* getUpToDateInstance();

    const std::vector<PathFormat*>& formats() const { return m_formats; }
    /** The format with the type @p info, when it is known, and the number of the type there. */
    const PathFormat* findType(const MessageInfo* info, int* type) const;

    PathNames& names() { return m_names; }
    PathNumbering& numbering() { return m_numbering; }

private Q_SLOTS:
    void update();

private:
    PathIndex();

    PathNames m_names;
    PathNumbering m_numbering;
    std::vector<PathFormat*> m_formats;
    quint64 m_revision; ///< of the registry, when it was last looked at
};

#endif

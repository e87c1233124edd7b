#ifndef PATHINDEX_H
#define PATHINDEX_H

#include <QHash>
#include <QString>
#include <QVector>

#include <vector>

class FieldInfo;
class FormatInfo;
class MessageInfo;

/** Every name of a format, type or field once, under a number that it keeps for good. */
class PathNames
{
public:
    /** The number of @p name, which it gets if it has none yet. */
    int add(const QString& name);
    /** The number of @p name, or -1. */
    int find(const QString& name) const { return m_ids.value(name, -1); }

    int count() const { return static_cast<int>(m_names.size()); }
    /** Without the case of letters. */
    const QString& folded(int id) const { return m_names[static_cast<size_t>(id)].folded; }
    /** As it is written in a path. */
    const QString& text(int id) const { return m_names[static_cast<size_t>(id)].text; }

private:
    struct Name
    {
        QString folded;
        QString text;
    };

    QHash<QString, int> m_ids;
    std::vector<Name> m_names;
};

/** One of a list of descriptions, any two of which may have the same name. */
struct PathEntry
{
    PathEntry()
        : name(-1)
        , occurrence(1)
        , ambiguous(false)
    {
    }

    int name;       ///< by PathNames
    int occurrence; ///< from 1, among those of the same name
    bool ambiguous; ///< whether there are others of the same name
};

/** Tells entries of the same name apart. The names are numbered first. */
class PathNumbering
{
public:
    explicit PathNumbering(const PathNames& names);

    /** Fills in @p entry, the next of a list, and makes the former of its name ambiguous. */
    void number(PathEntry* entry);
    /** Begins with another list. */
    void restart();

private:
    std::vector<PathEntry*> m_last; // by name
    std::vector<int> m_touched;
};

struct PathType : PathEntry
{
    const MessageInfo* info;
    int firstField; ///< of PathFormat::fields()
    int endField;
};

struct PathField : PathEntry
{
    const FieldInfo* info;
    int type; ///< of PathFormat::types()
};

/** What a format holds, by name. The fields are looked at when they are asked for first. */
class PathFormat : public PathEntry
{
public:
    PathFormat(const FormatInfo* format, quint64 revision, PathNames* names);

    const FormatInfo* format() const { return m_format; }
    quint64 revision() const { return m_revision; }

    const std::vector<PathType>& types();
    /** The types of that name, in order. */
    QVector<int> typesNamed(int name);
    /** The fields that stand directly in the types, in order. */
    const std::vector<PathField>& fields();
    /** The fields of the name @p name, in order. */
    std::vector<int> fieldsNamed(int name);
    /** The fields whose folded name begins with @p folded, in order. */
    std::vector<int> fieldsBeginningWith(const QString& folded);

private:
    void readTypes();
    void readFields();
    void sortFieldsByName();

    const FormatInfo* m_format;
    quint64 m_revision;
    PathNames* m_names;
    bool m_hasTypes;
    bool m_hasFields;
    std::vector<PathType> m_types;
    QHash<int, QVector<int>> m_typesByName;
    std::vector<PathField> m_fields;
    // The names of fields sorted by folded text, and the fields of name number i at [m_begins[i], m_begins[i + 1]) of
    // m_fieldsByName.
    std::vector<int> m_sortedNames;
    std::vector<int> m_begins;
    std::vector<int> m_fieldsByName;
};

/** The formats of the registry, by name: shared by all expressions, and brought up to date when it is asked. */
class PathIndex
{
public:
    static PathIndex* getInstance();

    const std::vector<PathFormat*>& formats();
    PathNames& names() { return m_names; }

private:
    PathIndex() {}

    PathNames m_names;
    std::vector<PathFormat*> m_formats;
};

#endif

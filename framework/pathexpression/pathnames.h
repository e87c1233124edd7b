#ifndef PATHNAMES_H
#define PATHNAMES_H

#include <QHash>
#include <QString>

#include <vector>

/** Every name of a format, type or field once, under a number that it keeps for good. */
class PathNames
{
public:
    /** The number of @p name, which it gets if it has none yet. */
    int add(const QString& name);

    int count() const { return static_cast<int>(m_names.size()); }
    /** Without the case of letters. */
    const QString& folded(int id) const { return m_names[static_cast<size_t>(id)].folded; }
    /** As it is written in a path. */
    const QString& text(int id) const { return m_names[static_cast<size_t>(id)].text; }

    /** Puts the names with the numbers @p ids in the order of their folded texts; those before @p firstNew are. */
    void sort(std::vector<int>* ids, size_t firstNew) const;
    /** Where in @p sorted the names begin and end whose folded text begins with @p folded. */
    void findBeginningWith(const std::vector<int>& sorted, const QString& folded, size_t* begin, size_t* end) const;
    /** Where in @p sorted the name @p id is, or the size of it. */
    size_t find(const std::vector<int>& sorted, int id) const;

private:
    struct Name
    {
        QString folded;
        QString text;
    };

    QHash<QString, int> m_numbers; // the numbers and one more, so that 0 is none
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

/** Tells entries of the same name apart. */
class PathNumbering
{
public:
    explicit PathNumbering(const PathNames& names)
        : m_names(names)
    {
    }

    /** Begins with another list. */
    void restart();
    /** Fills in @p entry, the next of a list, and makes the former of its name ambiguous. */
    void number(PathEntry* entry);

private:
    const PathNames& m_names;
    std::vector<PathEntry*> m_last; // by name; kept over lists, as it is large where they are short
    std::vector<int> m_touched;
};

#endif

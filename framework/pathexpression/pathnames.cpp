#include "pathnames.h"

#include "pathtext.h"

#include <algorithm>

namespace
{

class FoldedLess
{
public:
    explicit FoldedLess(const PathNames& names)
        : m_names(names)
    {
    }
    bool operator()(int left, int right) const { return m_names.folded(left) < m_names.folded(right); }
    bool operator()(int left, const QString& right) const { return m_names.folded(left) < right; }

private:
    const PathNames& m_names;
};

class BeginsWith
{
public:
    BeginsWith(const PathNames& names, const QString& folded)
        : m_names(names)
        , m_folded(folded)
    {
    }
    bool operator()(int id) const { return m_names.folded(id).startsWith(m_folded); }

private:
    const PathNames& m_names;
    const QString m_folded;
};

/** A name with its first letters, which tell most names apart without a look at their texts. */
struct SortedName
{
    quint64 letters;
    const QString* folded;
    int id;

    bool operator<(const SortedName& other) const
    {
        return letters != other.letters ? letters < other.letters : *folded < *other.folded;
    }
};

} // namespace

int PathNames::add(const QString& name)
{
    int& number = m_numbers[name];
    if (!number) {
        Name entry;
        entry.folded = PathText::fold(name);
        entry.text = PathText::escape(name);
        m_names.push_back(entry);
        number = count();
    }
    return number - 1;
}

void PathNames::sort(std::vector<int>* ids, size_t firstNew) const
{
    std::vector<SortedName> names(ids->size() - firstNew);
    for (size_t i = 0; i < names.size(); ++i) {
        names[i].id = (*ids)[firstNew + i];
        names[i].folded = &folded(names[i].id);
        names[i].letters = 0;
        for (int k = 0; k < 4; ++k)
            names[i].letters =
                names[i].letters << 16 | (k < names[i].folded->size() ? names[i].folded->at(k).unicode() : 0);
    }
    std::sort(names.begin(), names.end());
    const std::vector<int>::iterator middle = ids->end() - static_cast<std::vector<int>::difference_type>(names.size());
    std::transform(names.begin(), names.end(), middle, [](const SortedName& name) { return name.id; });
    std::inplace_merge(ids->begin(), middle, ids->end(), FoldedLess(*this));
}

void PathNames::findBeginningWith(const std::vector<int>& sorted, const QString& folded, size_t* begin,
                                  size_t* end) const
{
    const std::vector<int>::const_iterator lower =
        std::lower_bound(sorted.begin(), sorted.end(), folded, FoldedLess(*this));
    const std::vector<int>::const_iterator upper = std::partition_point(lower, sorted.end(), BeginsWith(*this, folded));
    *begin = static_cast<size_t>(lower - sorted.begin());
    *end = static_cast<size_t>(upper - sorted.begin());
}

size_t PathNames::find(const std::vector<int>& sorted, int id) const
{
    std::vector<int>::const_iterator it = std::lower_bound(sorted.begin(), sorted.end(), folded(id), FoldedLess(*this));
    while (it != sorted.end() && *it != id && folded(*it) == folded(id))
        ++it;
    return it != sorted.end() && *it == id ? static_cast<size_t>(it - sorted.begin()) : sorted.size();
}

void PathNumbering::restart()
{
    for (size_t i = 0; i < m_touched.size(); ++i)
        m_last[static_cast<size_t>(m_touched[i])] = nullptr;
    m_touched.clear();
    if (m_last.size() < static_cast<size_t>(m_names.count()))
        m_last.resize(static_cast<size_t>(m_names.count()) * 2, nullptr);
}

void PathNumbering::number(PathEntry* entry)
{
    PathEntry*& last = m_last[static_cast<size_t>(entry->name)];
    if (last) {
        last->ambiguous = true;
        entry->ambiguous = true;
        entry->occurrence = last->occurrence + 1;
    } else {
        m_touched.push_back(entry->name);
    }
    last = entry;
}

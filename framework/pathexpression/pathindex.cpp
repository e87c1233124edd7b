#include "pathindex.h"

#include "fieldinfo.h"
#include "formatinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathtext.h"

#include <algorithm>

int PathNames::add(const QString& name)
{
    const int known = find(name);
    if (known >= 0)
        return known;
    const int id = count();
    m_ids.insert(name, id);
    Name entry;
    entry.folded = PathText::fold(name);
    entry.text = PathText::escape(name);
    m_names.push_back(entry);
    return id;
}

PathNumbering::PathNumbering(const PathNames& names)
    : m_last(static_cast<size_t>(names.count()), nullptr)
{
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

void PathNumbering::restart()
{
    for (size_t i = 0; i < m_touched.size(); ++i)
        m_last[static_cast<size_t>(m_touched[i])] = nullptr;
    m_touched.clear();
}

PathFormat::PathFormat(const FormatInfo* format, quint64 revision, PathNames* names)
    : m_format(format)
    , m_revision(revision)
    , m_names(names)
    , m_hasTypes(false)
    , m_hasFields(false)
{
    name = names->add(format->getName());
}

const std::vector<PathType>& PathFormat::types()
{
    if (!m_hasTypes)
        readTypes();
    return m_types;
}

void PathFormat::readTypes()
{
    m_hasTypes = true;
    const QVector<const MessageInfo*> infos = m_format->getMessageInfos();
    m_types.resize(static_cast<size_t>(infos.size()));
    for (int i = 0; i < infos.size(); ++i) {
        PathType& type = m_types[static_cast<size_t>(i)];
        type.info = infos.at(i);
        type.name = m_names->add(infos.at(i)->getName());
        type.firstField = 0;
        type.endField = 0;
        m_typesByName[type.name].append(i);
    }
    PathNumbering numbering(*m_names);
    for (size_t i = 0; i < m_types.size(); ++i)
        numbering.number(&m_types[i]);
}

QVector<int> PathFormat::typesNamed(int name)
{
    types();
    return m_typesByName.value(name);
}

const std::vector<PathField>& PathFormat::fields()
{
    if (!m_hasFields)
        readFields();
    return m_fields;
}

void PathFormat::readFields()
{
    types();
    m_hasFields = true;
    for (size_t t = 0; t < m_types.size(); ++t) {
        const QVector<const FieldInfo*> infos = m_types[t].info->getFieldInfos();
        m_types[t].firstField = static_cast<int>(m_fields.size());
        for (int i = 0; i < infos.size(); ++i) {
            PathField field;
            field.info = infos.at(i);
            field.name = m_names->add(infos.at(i)->getName());
            field.type = static_cast<int>(t);
            m_fields.push_back(field);
        }
        m_types[t].endField = static_cast<int>(m_fields.size());
    }
    PathNumbering numbering(*m_names);
    for (size_t i = 0; i < m_fields.size(); ++i) {
        if (i > 0 && m_fields[i].type != m_fields[i - 1].type)
            numbering.restart();
        numbering.number(&m_fields[i]);
    }
    sortFieldsByName();
}

namespace
{

struct FoldedLess
{
    explicit FoldedLess(const PathNames& names)
        : m_names(names)
    {
    }
    bool operator()(int left, int right) const { return m_names.folded(left) < m_names.folded(right); }
    bool operator()(int left, const QString& right) const { return m_names.folded(left) < right; }

private:
    const PathNames& m_names;
};

struct BeginsWith
{
    BeginsWith(const PathNames& names, const QString& folded)
        : m_names(names)
        , m_folded(folded)
    {
    }
    bool operator()(int name) const { return m_names.folded(name).startsWith(m_folded); }

private:
    const PathNames& m_names;
    const QString m_folded;
};

} // namespace

void PathFormat::sortFieldsByName()
{
    std::vector<int> counts(static_cast<size_t>(m_names->count()), 0); // then where the name's fields go
    for (size_t i = 0; i < m_fields.size(); ++i)
        if (counts[static_cast<size_t>(m_fields[i].name)]++ == 0)
            m_sortedNames.push_back(m_fields[i].name);
    std::sort(m_sortedNames.begin(), m_sortedNames.end(), FoldedLess(*m_names));
    int begin = 0;
    for (size_t i = 0; i < m_sortedNames.size(); ++i) {
        m_begins.push_back(begin);
        int& count = counts[static_cast<size_t>(m_sortedNames[i])];
        begin += count;
        count = m_begins.back();
    }
    m_begins.push_back(begin);
    m_fieldsByName.resize(m_fields.size());
    for (size_t i = 0; i < m_fields.size(); ++i)
        m_fieldsByName[static_cast<size_t>(counts[static_cast<size_t>(m_fields[i].name)]++)] = static_cast<int>(i);
}

std::vector<int> PathFormat::fieldsNamed(int name)
{
    fields();
    const FoldedLess less(*m_names);
    std::vector<int>::const_iterator it =
        std::lower_bound(m_sortedNames.begin(), m_sortedNames.end(), m_names->folded(name), less);
    while (it != m_sortedNames.end() && *it != name && m_names->folded(*it) == m_names->folded(name))
        ++it;
    if (it == m_sortedNames.end() || *it != name)
        return std::vector<int>();
    const size_t i = static_cast<size_t>(it - m_sortedNames.begin());
    return std::vector<int>(m_fieldsByName.begin() + m_begins[i], m_fieldsByName.begin() + m_begins[i + 1]);
}

std::vector<int> PathFormat::fieldsBeginningWith(const QString& folded)
{
    fields();
    const std::vector<int>& sorted = m_sortedNames;
    const std::vector<int>::const_iterator lower =
        std::lower_bound(sorted.begin(), sorted.end(), folded, FoldedLess(*m_names));
    const std::vector<int>::const_iterator upper =
        std::partition_point(lower, sorted.end(), BeginsWith(*m_names, folded));
    const int begin = m_begins[static_cast<size_t>(lower - sorted.begin())];
    const int end = m_begins[static_cast<size_t>(upper - sorted.begin())];
    std::vector<int> found(m_fieldsByName.begin() + begin, m_fieldsByName.begin() + end);
    if (upper - lower <= 1)
        return found;
    if (found.size() < m_fields.size() / 16) {
        std::sort(found.begin(), found.end());
        return found;
    }
    // Where much is found, ticking it off puts it in order sooner than sorting.
    std::vector<char> ticks(m_fields.size(), 0);
    for (size_t i = 0; i < found.size(); ++i)
        ticks[static_cast<size_t>(found[i])] = 1;
    found.clear();
    for (size_t i = 0; i < ticks.size(); ++i)
        if (ticks[i])
            found.push_back(static_cast<int>(i));
    return found;
}

PathIndex* PathIndex::getInstance()
{
    static PathIndex* const instance = new PathIndex; // never destroyed, as the registry
    return instance;
}

const std::vector<PathFormat*>& PathIndex::formats()
{
    const FormatRegistry* registry = FormatRegistry::getInstance();
    const QVector<const FormatInfo*> infos = registry->getFormatInfos();
    bool same = static_cast<size_t>(infos.size()) == m_formats.size();
    for (int i = 0; same && i < infos.size(); ++i)
        same = m_formats[static_cast<size_t>(i)]->revision() == registry->getRevision(infos.at(i));
    if (same)
        return m_formats;
    QHash<quint64, PathFormat*> known;
    for (size_t i = 0; i < m_formats.size(); ++i)
        known.insert(m_formats[i]->revision(), m_formats[i]);
    m_formats.clear();
    for (int i = 0; i < infos.size(); ++i) {
        const quint64 revision = registry->getRevision(infos.at(i));
        PathFormat* format = known.take(revision);
        m_formats.push_back(format ? format : new PathFormat(infos.at(i), revision, &m_names));
        m_formats.back()->occurrence = 1;
        m_formats.back()->ambiguous = false;
    }
    qDeleteAll(known);
    PathNumbering numbering(m_names);
    for (size_t i = 0; i < m_formats.size(); ++i)
        numbering.number(m_formats[i]);
    return m_formats;
}

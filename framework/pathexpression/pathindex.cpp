#include "pathindex.h"

#include "fieldinfo.h"
#include "formatinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathtext.h"

#include <algorithm>

PathFormat::PathFormat(const FormatInfo* format, int name)
    : m_format(format)
    , m_revision(0)
{
    this->name = name;
}

bool PathFormat::hasOnlyGrown(const QVector<const MessageInfo*>& infos) const
{
    if (static_cast<size_t>(infos.size()) < m_types.size())
        return false;
    for (size_t i = 0; i < m_types.size(); ++i) {
        const MessageInfo* info = infos.at(static_cast<int>(i));
        if (info != m_types[i].info)
            return false;
        const QVector<const FieldInfo*> fields = info->getFieldInfos();
        if (fields.constData() != m_types[i].fieldInfos.constData() || fields.size() != m_types[i].fieldInfos.size())
            return false;
    }
    return true;
}

void PathFormat::clear()
{
    m_types.clear();
    m_typesByName.clear();
    m_typesByInfo.clear();
    m_fields.clear();
    m_parentFields.clear();
    m_sortedNames.clear();
}

void PathFormat::update(quint64 revision, PathNames* names, PathNumbering* numbering)
{
    m_revision = revision;
    const QVector<const MessageInfo*> infos = m_format->getMessageInfos();
    if (!hasOnlyGrown(infos))
        clear();
    const size_t firstNew = m_fields.size();
    for (int i = static_cast<int>(m_types.size()); i < infos.size(); ++i)
        readType(infos.at(i), names, numbering);
    sortFields(firstNew, *names);
}

void PathFormat::readType(const MessageInfo* info, PathNames* names, PathNumbering* numbering)
{
    const int number = static_cast<int>(m_types.size());
    PathType type;
    type.info = info;
    type.name = names->add(PathText::typeName(info->getName()));
    type.fieldInfos = info->getFieldInfos();
    type.firstField = static_cast<int>(m_fields.size());
    readFields(type.fieldInfos, number, names, numbering, &m_fields);
    type.endField = static_cast<int>(m_fields.size());
    QVector<int>& namesakes = m_typesByName[type.name];
    if (!namesakes.isEmpty()) {
        m_types[static_cast<size_t>(namesakes.last())].ambiguous = true;
        type.ambiguous = true;
        type.occurrence = namesakes.size() + 1;
    }
    namesakes.append(number);
    m_typesByInfo.insert(info, number);
    for (int i = type.firstField; i < type.endField; ++i) {
        const PathField& field = m_fields[static_cast<size_t>(i)];
        if (field.hasComponents || field.subMessage)
            m_parentFields.push_back(i);
    }
    m_types.push_back(type);
}

void PathFormat::readFields(const QVector<const FieldInfo*>& infos, int type, PathNames* names,
                            PathNumbering* numbering, std::vector<PathField>* fields)
{
    const size_t first = fields->size();
    fields->resize(first + static_cast<size_t>(infos.size()));
    for (int i = 0; i < infos.size(); ++i) {
        const FieldInfo* info = infos.at(i);
        PathField& field = (*fields)[first + static_cast<size_t>(i)];
        field.name = names->add(info->getName());
        field.repeated = info->isRepeated();
        field.hasComponents = !info->getSubFieldInfos().isEmpty();
        field.type = type;
        field.info = info;
        field.subMessage = info->getType().getSubMessageInfo();
    }
    numbering->restart();
    for (size_t i = first; i < fields->size(); ++i)
        numbering->number(&(*fields)[i]);
}

void PathFormat::sortFields(size_t firstNew, const PathNames& names)
{
    const size_t oldNames = m_sortedNames.size();
    std::vector<int> counts(static_cast<size_t>(names.count()), 0); // by name; then where the name's fields go
    std::vector<int> distinctCounts(counts);
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const size_t name = static_cast<size_t>(m_fields[i].name);
        if (counts[name]++ == 0 && i >= firstNew)
            m_sortedNames.push_back(m_fields[i].name);
    }
    // Namesakes in one type are listed with numbers, so that each is a text of its own; in several types these repeat.
    m_distinctFields.clear();
    std::vector<char> isDistinct(m_fields.size(), 0);
    std::vector<char> seen(counts.size(), 0);
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const size_t name = static_cast<size_t>(m_fields[i].name);
        if (!m_fields[i].ambiguous && seen[name])
            continue;
        seen[name] = seen[name] || !m_fields[i].ambiguous;
        isDistinct[i] = 1;
        ++distinctCounts[name];
        m_distinctFields.push_back(static_cast<int>(i));
    }
    names.sort(&m_sortedNames, oldNames);

    m_begins.clear();
    m_distinctEnds.clear();
    int begin = 0;
    for (size_t i = 0; i < m_sortedNames.size(); ++i) {
        const size_t name = static_cast<size_t>(m_sortedNames[i]);
        m_begins.push_back(begin);
        m_distinctEnds.push_back(begin + distinctCounts[name]);
        begin += counts[name];
        distinctCounts[name] = m_begins.back();
        counts[name] = m_distinctEnds.back();
    }
    m_begins.push_back(begin);
    m_fieldsByName.resize(m_fields.size());
    for (size_t i = 0; i < m_fields.size(); ++i) {
        const size_t name = static_cast<size_t>(m_fields[i].name);
        int& place = isDistinct[i] ? distinctCounts[name] : counts[name];
        m_fieldsByName[static_cast<size_t>(place++)] = static_cast<int>(i);
    }
}

/** Puts @p found, which are less than @p count, in order. */
static void putInOrder(size_t count, std::vector<int>* found)
{
    if (found->size() < count / 16) {
        std::sort(found->begin(), found->end());
        return;
    }
    // Where much is found, ticking it off puts it in order sooner than sorting.
    std::vector<char> ticks(count, 0);
    for (size_t i = 0; i < found->size(); ++i)
        ticks[static_cast<size_t>((*found)[i])] = 1;
    found->clear();
    for (size_t i = 0; i < ticks.size(); ++i)
        if (ticks[i])
            found->push_back(static_cast<int>(i));
}

std::vector<int> PathFormat::fieldsNamed(const PathNames& names, int name) const
{
    const size_t i = names.find(m_sortedNames, name);
    if (i == m_sortedNames.size())
        return std::vector<int>();
    std::vector<int> found(m_fieldsByName.begin() + m_begins[i], m_fieldsByName.begin() + m_begins[i + 1]);
    putInOrder(m_fields.size(), &found);
    return found;
}

std::vector<int> PathFormat::fieldsBeginningWith(const PathNames& names, const QString& folded, bool distinct) const
{
    size_t begin;
    size_t end;
    names.findBeginningWith(m_sortedNames, folded, &begin, &end);
    std::vector<int> found;
    for (size_t i = begin; i < end; ++i)
        found.insert(found.end(), m_fieldsByName.begin() + m_begins[i],
                     m_fieldsByName.begin() + (distinct ? m_distinctEnds[i] : m_begins[i + 1]));
    putInOrder(m_fields.size(), &found);
    return found;
}

PathIndex::PathIndex()
    : m_numbering(m_names)
    , m_revision(0)
{
    connect(FormatRegistry::getInstance(), SIGNAL(formatsChanged()), this, SLOT(update()));
    update();
}

PathIndex* PathIndex::getInstance()
{
    static PathIndex* const instance = new PathIndex; // never destroyed, as the registry
    return instance;
}

PathIndex* PathIndex::getUpToDateInstance()
{
    PathIndex* const index = getInstance();
    if (index->m_revision != FormatRegistry::getInstance()->getRevision())
        index->update();
    return index;
}

const PathFormat* PathIndex::findType(const MessageInfo* info, int* type) const
{
    for (size_t i = 0; i < m_formats.size(); ++i) {
        if (m_formats[i]->format() == info->getFormatInfo()) {
            *type = m_formats[i]->typeOf(info);
            return *type < 0 ? nullptr : m_formats[i];
        }
    }
    return nullptr;
}

void PathIndex::update()
{
    const FormatRegistry* registry = FormatRegistry::getInstance();
    m_revision = registry->getRevision();
    const QVector<const FormatInfo*> infos = registry->getFormatInfos();
    QHash<const FormatInfo*, PathFormat*> known;
    for (size_t i = 0; i < m_formats.size(); ++i)
        known.insert(m_formats[i]->format(), m_formats[i]);
    m_formats.clear();
    for (int i = 0; i < infos.size(); ++i) {
        PathFormat* format = known.take(infos.at(i));
        m_formats.push_back(format ? format : new PathFormat(infos.at(i), m_names.add(infos.at(i)->getName())));
        m_formats.back()->occurrence = 1;
        m_formats.back()->ambiguous = false;
    }
    qDeleteAll(known);
    m_numbering.restart();
    for (size_t i = 0; i < m_formats.size(); ++i)
        m_numbering.number(m_formats[i]);
    for (int i = 0; i < infos.size(); ++i) {
        PathFormat* format = m_formats[static_cast<size_t>(i)];
        const quint64 revision = registry->getRevision(infos.at(i));
        if (format->revision() != revision)
            format->update(revision, &m_names, &m_numbering);
    }
}

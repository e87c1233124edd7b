#include "pathmatcher.h"

#include "fieldinfo.h"
#include "messageinfo.h"

#include <algorithm>

// Wildcards in sub-messages that contain each other can match in more ways than any memory holds. This is counted in
// fields passed through below the first level, and in levels of what is found there.
static const int maximumEffort = 2000000;

// "package/msg/Type"
static const int mostAddedLevels = 2;

/** @p segment, which asks for a type, with its name as that of a type is written. */
static PathSegment ofType(PathSegment segment)
{
    segment.name = PathText::typeName(segment.name);
    return segment;
}

PathMatcher::PathMatcher(const PathPattern& pattern, bool considerSubMessages)
    : m_pattern(pattern)
    , m_considerSubMessages(considerSubMessages)
    , m_names(PathIndex::getUpToDateInstance()->names())
    , m_format(want(pattern.format))
    , m_message(want(ofType(pattern.message)))
    , m_sink(nullptr)
    , m_found(0)
    , m_effort(0)
{
    for (int i = 0; i < pattern.fields.size(); ++i)
        m_fields.push_back(want(pattern.fields.at(i)));
    if (m_fields.empty())
        m_fields.push_back(want(PathSegment()));
}

PathPattern PathMatcher::withWholeTypeName(const PathPattern& pattern)
{
    const bool isName = pattern.message.kind == PathSegment::Name && !pattern.message.ordinal;
    if (pattern.errorPosition >= 0 || !isName || pattern.fields.isEmpty() || PathMatcher(pattern, true).findsTypes())
        return pattern;
    PathPattern whole = pattern;
    for (int added = 0; added < mostAddedLevels && !whole.fields.isEmpty(); ++added) {
        const PathSegment segment = whole.fields.first();
        const bool isNamed = segment.kind == PathSegment::Name || segment.kind == PathSegment::Prefix;
        if (!isNamed)
            break;
        const QString name = whole.message.name + QLatin1Char('.') + segment.name;
        whole.message = segment;
        whole.message.name = segment.kind == PathSegment::Prefix ? PathText::fold(name) : name;
        whole.fields.remove(0);
        if (segment.index == PathSegment::NoIndex && PathMatcher(whole, true).findsTypes()) {
            whole.levels = whole.fields.isEmpty() ? 2 : 3;
            return whole;
        }
    }
    return pattern;
}

/** Whether any type matches. */
bool PathMatcher::findsTypes() const
{
    const std::vector<PathFormat*>& formats = PathIndex::getInstance()->formats();
    for (size_t i = 0; i < formats.size(); ++i)
        if (matches(m_format, *formats[i]) && !matchingTypes(formats[i]).empty())
            return true;
    return false;
}

PathMatcher::Wanted PathMatcher::want(const PathSegment& segment) const
{
    Wanted wanted;
    wanted.segment = segment;
    wanted.name = segment.kind == PathSegment::Name ? m_names.add(segment.name) : -1;
    return wanted;
}

bool PathMatcher::matches(const Wanted& wanted, const PathEntry& entry) const
{
    if (wanted.segment.ordinal && wanted.segment.ordinal != entry.occurrence)
        return false;
    if (wanted.segment.kind == PathSegment::Name)
        return wanted.name == entry.name;
    return wanted.segment.kind != PathSegment::Prefix || m_names.folded(entry.name).startsWith(wanted.segment.name);
}

static bool matchesIndex(const PathSegment& segment, const PathField& field)
{
    return segment.index < 0 || field.repeated;
}

bool PathMatcher::isLookedAt(const PathType& type) const
{
    return m_considerSubMessages || type.info->isMain();
}

void PathMatcher::run(int levels, PathSink* sink)
{
    m_sink = sink;
    m_hit.steps = &m_steps;
    const std::vector<PathFormat*>& formats = PathIndex::getInstance()->formats();
    for (size_t i = 0; i < formats.size(); ++i) {
        if (!matches(m_format, *formats[i]))
            continue;
        m_hit.format = formats[i];
        m_hit.type = nullptr;
        m_hit.field = nullptr;
        const PathSink::Answer answer = levels == 1   ? report()
                                        : levels == 2 ? runTypes(formats[i])
                                                      : runFields(formats[i]);
        if (answer == PathSink::Stop)
            return;
    }
}

PathSink::Answer PathMatcher::report()
{
    ++m_found;
    m_effort += m_steps.empty() ? 0 : static_cast<int>(m_fields.size());
    return m_sink->found(m_hit);
}

std::vector<int> PathMatcher::matchingTypes(const PathFormat* format) const
{
    const std::vector<PathType>& types = format->types();
    std::vector<int> found;
    if (m_message.segment.kind == PathSegment::Name) {
        const QVector<int> named = format->typesNamed(m_message.name);
        for (int i = 0; i < named.size(); ++i) {
            const PathType& type = types[static_cast<size_t>(named.at(i))];
            if (isLookedAt(type) && matches(m_message, type))
                found.push_back(named.at(i));
        }
        return found;
    }
    for (size_t i = 0; i < types.size(); ++i)
        if (isLookedAt(types[i]) && matches(m_message, types[i]))
            found.push_back(static_cast<int>(i));
    return found;
}

PathSink::Answer PathMatcher::runTypes(const PathFormat* format)
{
    const std::vector<int> types = matchingTypes(format);
    for (size_t i = 0; i < types.size(); ++i) {
        m_hit.type = &format->types()[static_cast<size_t>(types[i])];
        const PathSink::Answer answer = report();
        if (answer >= PathSink::NextFormat)
            return answer;
    }
    return PathSink::Next;
}

/** The matching fields of @p types; where more levels follow, only those that have something below them. */
std::vector<int> PathMatcher::fieldsOfTypes(const PathFormat* format, const std::vector<int>& types) const
{
    const std::vector<PathField>& fields = format->fields();
    const std::vector<int>& parents = format->parentFields();
    std::vector<int> found;
    for (size_t i = 0; i < types.size(); ++i) {
        const PathType& type = format->types()[static_cast<size_t>(types[i])];
        if (m_fields.size() > 1) {
            std::vector<int>::const_iterator it = std::lower_bound(parents.begin(), parents.end(), type.firstField);
            for (; it != parents.end() && *it < type.endField; ++it)
                if (matches(m_fields.front(), fields[static_cast<size_t>(*it)]))
                    found.push_back(*it);
            continue;
        }
        for (int field = type.firstField; field < type.endField; ++field)
            if (matches(m_fields.front(), fields[static_cast<size_t>(field)]))
                found.push_back(field);
    }
    return found;
}

/** The fields of the name on the first level of the field path in matching types, in order, whatever their number. */
std::vector<int> PathMatcher::candidateFields(const PathFormat* format) const
{
    const std::vector<int> types = matchingTypes(format);
    const PathSegment& first = m_fields.front().segment;
    const bool everyName = first.kind == PathSegment::Open || first.kind == PathSegment::Wild;
    const bool everyType = types.size() == format->types().size();
    const bool distinct = m_sink->wantsDistinctFields() && everyType;
    if (everyName && distinct)
        return format->distinctFields();
    // A single type's fields are soon looked at; a name in many types is looked up.
    if (types.size() <= 1 || everyName)
        return fieldsOfTypes(format, types);
    const std::vector<int> named = first.kind == PathSegment::Name
                                       ? format->fieldsNamed(m_names, m_fields.front().name)
                                       : format->fieldsBeginningWith(m_names, first.name, distinct);
    if (everyType)
        return named;
    std::vector<char> ticks(format->types().size(), 0);
    for (size_t i = 0; i < types.size(); ++i)
        ticks[static_cast<size_t>(types[i])] = 1;
    std::vector<int> found;
    for (size_t i = 0; i < named.size(); ++i)
        if (ticks[static_cast<size_t>(format->fields()[static_cast<size_t>(named[i])].type)])
            found.push_back(named[i]);
    return found;
}

PathSink::Answer PathMatcher::runFields(const PathFormat* format)
{
    const std::vector<int> candidates = candidateFields(format);
    const PathSegment& first = m_fields.front().segment;
    int finishedType = -1;
    for (size_t i = 0; i < candidates.size(); ++i) {
        const PathField& field = format->fields()[static_cast<size_t>(candidates[i])];
        if (field.type == finishedType || (first.ordinal && first.ordinal != field.occurrence) ||
            !matchesIndex(first, field))
            continue;
        m_hit.type = &format->types()[static_cast<size_t>(field.type)];
        m_hit.field = &field;
        const PathSink::Answer answer = m_fields.size() == 1 ? report() : descend(&field, 1);
        if (answer >= PathSink::NextFormat)
            return answer;
        if (answer == PathSink::NextType)
            finishedType = field.type;
    }
    return PathSink::Next;
}

PathSink::Answer PathMatcher::descend(const PathField* parent, int level)
{
    const Place place(identityBelow(parent), level);
    if (!hasChildren(parent) || m_done.contains(place))
        return PathSink::Next;
    if (!m_sink->wantsEveryWay())
        m_done.insert(place);
    const int foundBefore = m_found;
    const Wanted& wanted = m_fields[static_cast<size_t>(level)];
    const bool last = level + 1 == static_cast<int>(m_fields.size());
    const Children& below = children(parent);
    for (const PathField* field = below.begin; field != below.end; ++field) {
        if (!matches(wanted, *field) || !matchesIndex(wanted.segment, *field))
            continue;
        if (++m_effort > maximumEffort && m_sink->wantsEveryWay())
            return PathSink::Stop;
        m_steps.push_back(field);
        const PathSink::Answer answer = last ? report() : descend(field, level + 1);
        m_steps.pop_back();
        if (answer != PathSink::Next)
            return answer;
    }
    if (m_found == foundBefore)
        m_done.insert(place);
    return PathSink::Next;
}

bool PathMatcher::hasChildren(const PathField* parent) const
{
    return (m_considerSubMessages && parent->subMessage) || parent->hasComponents;
}

/** The same for fields that the same lies below. */
const void* PathMatcher::identityBelow(const PathField* parent) const
{
    if (parent->hasComponents || !m_considerSubMessages)
        return parent->info;
    return parent->subMessage;
}

const PathMatcher::Children& PathMatcher::children(const PathField* parent)
{
    const void* identity = identityBelow(parent);
    const std::unordered_map<const void*, Children>::const_iterator known = m_children.find(identity);
    if (known != m_children.end())
        return known->second;
    PathIndex* index = PathIndex::getInstance();
    Children& below = m_children[identity];
    int type = -1;
    const PathFormat* format = parent->hasComponents ? nullptr : index->findType(parent->subMessage, &type);
    if (format) {
        below.begin = format->fields().data() + format->types()[static_cast<size_t>(type)].firstField;
        below.end = format->fields().data() + format->types()[static_cast<size_t>(type)].endField;
        return below;
    }
    QVector<const FieldInfo*> infos = parent->info->getSubFieldInfos();
    if (m_considerSubMessages && parent->subMessage)
        infos += parent->subMessage->getFieldInfos();
    PathFormat::readFields(infos, -1, &m_names, &index->numbering(), &below.own);
    below.begin = below.own.data();
    below.end = below.own.data() + below.own.size();
    return below;
}

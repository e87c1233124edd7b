#include "pathmatcher.h"

#include "fieldinfo.h"
#include "messageinfo.h"

#include <QHash>

// Wildcards in sub-messages that contain each other can match more than any memory holds. This is counted in fields
// passed through below the first level, and in levels of what is found there.
static const int maximumEffort = 2000000;

PathMatcher::PathMatcher(const PathPattern& pattern, bool considerSubMessages)
    : m_pattern(pattern)
    , m_considerSubMessages(considerSubMessages)
    , m_names(PathIndex::getInstance()->names())
    , m_fields(pattern.fields)
    , m_sink(nullptr)
    , m_found(0)
    , m_effort(0)
{
    if (m_fields.isEmpty())
        m_fields.append(PathSegment());
}

PathMatcher::Wanted PathMatcher::want(const PathSegment& segment) const
{
    Wanted wanted;
    wanted.segment = segment;
    wanted.name = segment.kind == PathSegment::Name ? m_names.find(segment.name) : -1;
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

static bool matchesIndex(const PathSegment& segment, const FieldInfo* info)
{
    return segment.index < 0 || info->isRepeated();
}

bool PathMatcher::matches(const PathSegment& segment, const PathStep& step) const
{
    if ((segment.ordinal && segment.ordinal != step.occurrence) || !matchesIndex(segment, step.info))
        return false;
    if (segment.kind == PathSegment::Name)
        return segment.name == step.info->getName();
    return segment.kind != PathSegment::Prefix || PathText::fold(step.info->getName()).startsWith(segment.name);
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
    m_format = want(m_pattern.format);
    for (size_t i = 0; i < formats.size(); ++i) {
        PathFormat* format = formats[i];
        if (!matches(m_format, *format))
            continue;
        m_hit.format = format;
        m_hit.type = nullptr;
        m_hit.field = nullptr;
        if (levels > 1)
            format->types(); // numbers the names
        if (levels > 2)
            format->fields();
        m_message = want(m_pattern.message);
        m_firstField = want(m_fields.first());
        const PathSink::Answer answer = levels == 1 ? report() : levels == 2 ? runTypes(format) : runFields(format);
        if (answer == PathSink::Stop)
            return;
    }
}

PathSink::Answer PathMatcher::report()
{
    ++m_found;
    m_effort += m_steps.empty() ? 0 : m_fields.size();
    return m_sink->found(m_hit);
}

std::vector<int> PathMatcher::matchingTypes(PathFormat* format) const
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

PathSink::Answer PathMatcher::runTypes(PathFormat* format)
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

/** The fields of the name on the first level of the field path in matching types, in order, whatever their number. */
std::vector<int> PathMatcher::candidateFields(PathFormat* format) const
{
    const std::vector<int> types = matchingTypes(format);
    const std::vector<PathField>& fields = format->fields();
    std::vector<int> found;
    const PathSegment& first = m_firstField.segment;
    // A single type's fields are soon looked at; a name in many types is looked up.
    if (types.size() <= 1 || first.kind == PathSegment::Open || first.kind == PathSegment::Wild) {
        for (size_t i = 0; i < types.size(); ++i) {
            const PathType& type = format->types()[static_cast<size_t>(types[i])];
            for (int field = type.firstField; field < type.endField; ++field)
                if (matches(m_firstField, fields[static_cast<size_t>(field)]))
                    found.push_back(field);
        }
        return found;
    }
    const std::vector<int> named = first.kind == PathSegment::Name
                                       ? (m_firstField.name < 0 ? found : format->fieldsNamed(m_firstField.name))
                                       : format->fieldsBeginningWith(first.name);
    if (types.size() == format->types().size())
        return named;
    std::vector<char> ticks(format->types().size(), 0);
    for (size_t i = 0; i < types.size(); ++i)
        ticks[static_cast<size_t>(types[i])] = 1;
    for (size_t i = 0; i < named.size(); ++i)
        if (ticks[static_cast<size_t>(fields[static_cast<size_t>(named[i])].type)])
            found.push_back(named[i]);
    return found;
}

PathSink::Answer PathMatcher::runFields(PathFormat* format)
{
    const std::vector<int> candidates = candidateFields(format);
    const std::vector<PathField>& fields = format->fields();
    const PathSegment& first = m_firstField.segment;
    int finishedType = -1;
    for (size_t i = 0; i < candidates.size(); ++i) {
        const PathField& field = fields[static_cast<size_t>(candidates[i])];
        if (field.type == finishedType || (first.ordinal && first.ordinal != field.occurrence) ||
            !matchesIndex(first, field.info))
            continue;
        m_hit.type = &format->types()[static_cast<size_t>(field.type)];
        m_hit.field = &field;
        const PathSink::Answer answer = m_fields.size() == 1 ? report() : descend(field.info, 1);
        if (answer >= PathSink::NextFormat)
            return answer;
        if (answer == PathSink::NextType)
            finishedType = field.type;
    }
    return PathSink::Next;
}

PathSink::Answer PathMatcher::descend(const FieldInfo* parent, int level)
{
    const Place place(parent, level);
    if (!hasChildren(parent) || m_done.contains(place))
        return PathSink::Next;
    if (!m_sink->wantsEveryWay())
        m_done.insert(place);
    const int foundBefore = m_found;
    const std::vector<PathStep>& steps = children(parent);
    for (size_t i = 0; i < steps.size(); ++i) {
        if (!matches(m_fields.at(level), steps[i]))
            continue;
        if (++m_effort > maximumEffort)
            return PathSink::Stop;
        m_steps.push_back(steps[i]);
        const PathSink::Answer answer = level + 1 == m_fields.size() ? report() : descend(steps[i].info, level + 1);
        m_steps.pop_back();
        if (answer != PathSink::Next)
            return answer;
    }
    if (m_found == foundBefore)
        m_done.insert(place);
    return PathSink::Next;
}

bool PathMatcher::hasChildren(const FieldInfo* parent) const
{
    return (m_considerSubMessages && parent->getType().getSubMessageInfo()) || !parent->getSubFieldInfos().isEmpty();
}

const std::vector<PathStep>& PathMatcher::children(const FieldInfo* parent)
{
    const std::unordered_map<const FieldInfo*, std::vector<PathStep>>::const_iterator known = m_children.find(parent);
    if (known != m_children.end())
        return known->second;
    QVector<const FieldInfo*> infos = parent->getSubFieldInfos();
    if (m_considerSubMessages && parent->getType().getSubMessageInfo())
        infos += parent->getType().getSubMessageInfo()->getFieldInfos();
    std::vector<PathStep> steps;
    QHash<QString, int> last; // by name
    for (int i = 0; i < infos.size(); ++i) {
        PathStep step = {infos.at(i), 1, false};
        const QString name = infos.at(i)->getName();
        const QHash<QString, int>::const_iterator former = last.constFind(name);
        if (former != last.constEnd()) {
            PathStep& other = steps[static_cast<size_t>(former.value())];
            other.ambiguous = true;
            step.ambiguous = true;
            step.occurrence = other.occurrence + 1;
        }
        last.insert(name, i);
        steps.push_back(step);
    }
    return m_children[parent] = steps;
}

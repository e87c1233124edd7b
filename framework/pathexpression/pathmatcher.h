#ifndef PATHMATCHER_H
#define PATHMATCHER_H

#include "pathindex.h"
#include "pathtext.h"

#include <QPair>
#include <QSet>

#include <unordered_map>

/** Something that matches. It is as deep as was looked for: what lies deeper is null. */
struct PathHit
{
    const PathFormat* format;
    const PathType* type;
    const PathField* field;
    const std::vector<const PathField*>* steps; ///< on the way to the match, below field; never null

    /** The matched field: the last step, or field when there is none. */
    const PathField* lastField() const { return steps->empty() ? field : steps->back(); }
};

/** Takes what a PathMatcher finds. */
class PathSink
{
public:
    enum Answer
    {
        Next,
        NextType,
        NextFormat,
        Stop
    };

    virtual ~PathSink() {}

    /** Takes @p hit and says what to look for next. */
    virtual Answer found(const PathHit& hit) = 0;

    /** Whether a field that is reached in several ways is to be found in each of them. */
    virtual bool wantsEveryWay() const { return true; }

    /** Whether of fields that are called the same, on the first level and in any type, one of a format is enough. */
    virtual bool wantsDistinctFields() const { return false; }
};

/** Finds what a pattern matches among the formats, in their order. */
class PathMatcher
{
public:
    /**
     * Joins what belongs together where @p pattern has the name of a type with separators in it, as in
     * "sensor_msgs/msg/Imu/x": when no type is called as the part for it says, but one as that and the next levels,
     * these belong to its name.
     */
    static PathPattern withWholeTypeName(const PathPattern& pattern);

    /** @p pattern must be well formed. */
    PathMatcher(const PathPattern& pattern, bool considerSubMessages);

    /**
     * Hands everything that matches to @p sink.
     *
     * @param levels  what to find: 1 formats, 2 types, 3 fields; no less than the pattern has. A pattern without fields
     *                matches all that stand directly in the types.
     */
    void run(int levels, PathSink* sink);

private:
    /** A level of the pattern that looks for names by number. */
    struct Wanted
    {
        PathSegment segment;
        int name; // of a segment that is a name
    };
    /** The fields below one: a type's in the index, or own. */
    struct Children
    {
        const PathField* begin;
        const PathField* end;
        std::vector<PathField> own;
    };
    typedef QPair<const void*, int> Place;

    Wanted want(const PathSegment& segment) const;
    bool matches(const Wanted& wanted, const PathEntry& entry) const;
    bool findsTypes() const;
    bool isLookedAt(const PathType& type) const;
    std::vector<int> matchingTypes(const PathFormat* format) const;
    std::vector<int> fieldsOfTypes(const PathFormat* format, const std::vector<int>& types) const;
    std::vector<int> candidateFields(const PathFormat* format) const;
    PathSink::Answer runTypes(const PathFormat* format);
    PathSink::Answer runFields(const PathFormat* format);
    PathSink::Answer descend(const PathField* parent, int level);
    PathSink::Answer report();
    bool hasChildren(const PathField* parent) const;
    const void* identityBelow(const PathField* parent) const;
    const Children& children(const PathField* parent);

    const PathPattern m_pattern;
    const bool m_considerSubMessages;
    PathNames& m_names;
    const Wanted m_format;
    const Wanted m_message;
    std::vector<Wanted> m_fields;

    PathSink* m_sink;
    PathHit m_hit;
    std::vector<const PathField*> m_steps;
    int m_found;
    int m_effort;
    std::unordered_map<const void*, Children> m_children; // whose values keep their addresses
    QSet<Place> m_done; // what lies below, and the level, where looking again would find nothing more
};

#endif

#ifndef PATHMATCHER_H
#define PATHMATCHER_H

#include "pathindex.h"
#include "pathtext.h"

#include <QPair>
#include <QSet>

#include <unordered_map>

/** A field on the way to a match, below one that stands directly in a type. */
struct PathStep
{
    const FieldInfo* info;
    int occurrence; ///< as of PathEntry, among the fields below the same field
    bool ambiguous;
};

/** Something that matches. It is as deep as was looked for: what lies deeper is null. */
struct PathHit
{
    const PathFormat* format;
    const PathType* type;
    const PathField* field;
    const std::vector<PathStep>* steps; ///< below field; never null

    /** The matched field: the last step, or field when there is none. */
    const FieldInfo* lastField() const { return steps->empty() ? field->info : steps->back().info; }
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
};

/** Finds what a pattern matches among the formats, in their order. */
class PathMatcher
{
public:
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
        int name; // of a segment that is a name; -1 when nothing has it
    };
    typedef QPair<const FieldInfo*, int> Place;

    Wanted want(const PathSegment& segment) const;
    bool matches(const Wanted& wanted, const PathEntry& entry) const;
    bool matches(const PathSegment& segment, const PathStep& step) const;
    bool isLookedAt(const PathType& type) const;
    std::vector<int> matchingTypes(PathFormat* format) const;
    std::vector<int> candidateFields(PathFormat* format) const;
    PathSink::Answer runTypes(PathFormat* format);
    PathSink::Answer runFields(PathFormat* format);
    PathSink::Answer descend(const FieldInfo* parent, int level);
    PathSink::Answer report();
    bool hasChildren(const FieldInfo* parent) const;
    const std::vector<PathStep>& children(const FieldInfo* parent);

    const PathPattern m_pattern;
    const bool m_considerSubMessages;
    const PathNames& m_names;
    Wanted m_format;
    Wanted m_message;
    QVector<PathSegment> m_fields;
    Wanted m_firstField;

    PathSink* m_sink;
    PathHit m_hit;
    std::vector<PathStep> m_steps;
    int m_found;
    int m_effort;
    std::unordered_map<const FieldInfo*, std::vector<PathStep>> m_children; // whose values keep their addresses
    QSet<Place> m_done; // field and level below it where looking again would find nothing more
};

#endif

#ifndef ROSLAYOUT_H
#define ROSLAYOUT_H

#include "rosschema.h"

#include <array>
#include <deque>
#include <map>
#include <unordered_map>

/** Where the values of a schema's types stand among the bytes, by one of the rules that there are for it. */
namespace Ros
{

/** What the rules of writing differ in. */
struct Rules
{
    quint8 alignment; ///< the greatest that there is
    enum Headers : quint8
    {
        NoHeaders,     ///< nothing but values
        OfMembers,     ///< what XCDR1 has of mutable structs and optional members: a header for each
        OfStructs,     ///< what XCDR2 has of appendable and mutable structs
        OfCollections, ///< and, before collections, of what are neither numbers nor enumerations
        OfEnumerations ///< and of these
    } headers;
    bool isAppendable;  ///< what a struct is of which the schema says nothing
    bool hasTerminator; ///< whether texts end with a zero byte, which is counted
};

struct Plan;

/** Bytes from a place to behind something, by the place's distance from the last multiple of 8, and what is before. */
typedef std::array<quint32, 8> Sizes;

/** What no message is as large as. */
const quint32 Endless = 0x80000000u;

/** A type. */
struct Node
{
    Kind kind;
    quint8 size = 0;      ///< of a number
    quint8 alignment = 1; ///< of its first byte
    bool isFixed = false;
    bool isPlain = true;    ///< whether no bytes can be wrong
    bool hasHeader = false; ///< whether the size of a collection stands before it
    quint32 count = 0;      ///< as of Type
    Sizes sizes{};          ///< where it is fixed; with what aligns it
    const Node* element = nullptr;
    const Plan* plan = nullptr;
};

/** The members of a struct: sections of what has a fixed size, each but the last with a member behind that has none. */
struct Plan
{
    enum Form : quint8
    {
        InOrder,
        Union,
        ShortList, ///< members with numbers, as in XCDR1
        List       ///< the same in XCDR2
    };
    struct Part
    {
        const Node* node;
        quint32 section; ///< that it stands in, or behind
        Sizes offsets;   ///< from the begin of the section, by its phase
        bool isOptional;
    };

    const Struct* structure = nullptr;
    Form form = InOrder;
    bool hasHeader = false; ///< whether its size stands before it
    std::vector<Part> parts{};
    std::vector<quint32> ends{}; ///< of each section but the last the number of the member behind it
    Sizes rest{};                ///< the size of the last section
    std::unordered_map<qint64, int> numbers{};
    int other = -1; ///< where no number is right

    /** Without so many bytes it is nothing: a time has both of its numbers. */
    quint32 getLeast() const { return structure->meaning == Struct::NoTime ? 0 : 8; }
    bool isList() const { return form >= ShortList; }
    /** The number of the member that a union has for a discriminator, or a list for an id; -1 for none. */
    int find(qint64 number) const
    {
        const auto found = numbers.find(number);
        return found == numbers.end() ? other : found->second;
    }
};

/** All structs of a schema by some rules. Made once, read from any thread. */
class Layout
{
public:
    Layout(const Schema& schema, const Rules& rules);

    const Rules& getRules() const { return m_rules; }
    const Plan* planOf(const Struct* structure) const { return &m_plans[structure->index]; }

private:
    const Node* nodeOf(const Type* type);
    void fillPlan(const Struct* structure);
    static void numberMembers(Plan* plan);
    void measure(Node* node) const;

    const Rules m_rules;
    std::vector<Plan> m_plans;
    std::vector<const Node*> m_structs;
    std::deque<Node> m_nodes;
    std::map<const Type*, const Node*> m_byType;
};

/** @p at, which is @p from or more, raised to a multiple of @p alignment from there. */
inline quint64 aligned(quint64 at, quint64 from, quint32 alignment)
{
    return from + ((at - from + alignment - 1) & ~quint64(alignment - 1));
}

/** Where @p count elements of a fixed size end that begin at @p at; without doing them one by one. */
quint64 endOf(const Sizes& sizes, quint64 at, quint64 from, quint64 count);

} // namespace Ros

#endif

#ifndef ROSWIRE_H
#define ROSWIRE_H

#include "roslayout.h"

#include <QString>

#include <cstring>
#include <memory>

namespace Ros
{

/** Where something begins, what it must not go beyond, and from where what is aligned is counted. */
struct Place
{
    // What changes most comes last: processors wait where 8 bytes are read of which 4 were just written.
    quint32 limit;
    quint32 origin;
    quint32 at;

    quint32 getLeft() const { return limit - at; }
    quint32 getPhase() const { return (at - origin) & 7; }
};

/** In what the length of a wide text is counted, and how wide its characters are. Nothing in a message tells. */
enum class WideText : quint8
{
    Units, ///< of 16 bits
    Bytes, ///< of these
    Words  ///< of 32 bits
};

/** A member of a list, with its number. */
struct Listed
{
    quint32 id = 0;
    bool isNeeded = false; ///< whether whoever does not know it must not use the rest
    bool isEnd = false;    ///< whether it is the mark behind the last one, which has no value
    Place value{};
};

/**
 * The bytes of one message: numbers and texts, and the ways past them. Borrows the bytes.
 *
 * Operations that return a bool say whether there was enough.
 */
class Wire
{
public:
    Wire() = default;
    Wire(const char* bytes, bool isSwapped, const Rules* rules, WideText wide)
        : m_bytes(bytes)
        , m_rules(rules)
        , m_isSwapped(isSwapped)
        , m_wide(wide)
    {
    }

    template <typename Number>
    Number read(quint32 at) const
    {
        Number number;
        std::memcpy(&number, m_bytes + at, sizeof number);
        if (m_isSwapped) {
            char* const bytes = reinterpret_cast<char*>(&number);
            for (std::size_t i = 0; i < sizeof number / 2; ++i)
                std::swap(bytes[i], bytes[sizeof number - 1 - i]);
        }
        return number;
    }

    const char* getBytes(quint32 at) const { return m_bytes + at; }
    bool hasTerminator() const { return m_rules->hasTerminator; }
    /** Of numbers of 32 bits. */
    quint32 getLengthAlignment() const { return std::min<quint32>(4, m_rules->alignment); }
    /** Whether an optional member has a header that says where it ends. */
    bool hasMemberHeaders() const { return m_rules->headers == Rules::OfMembers; }

    /** Goes to where something is that is aligned so. */
    static bool align(Place* place, quint32 alignment)
    {
        const quint64 at = aligned(place->at, place->origin, alignment);
        const bool good = at <= place->limit;
        place->at = good ? static_cast<quint32>(at) : place->limit;
        return good;
    }

    /** A number of 32 bits, and past it. */
    bool takeLength(Place* place, quint32* length) const
    {
        if (!align(place, getLengthAlignment()) || place->getLeft() < 4)
            return false;
        *length = read<quint32>(place->at);
        place->at += 4;
        return true;
    }

    /** Goes past it. */
    bool skip(const Node& node, Place* place) const;
    bool skip(const Plan::Part& part, Place* place) const;
    /** Goes into a struct: past its size, which it must not go beyond. */
    bool enter(const Plan& plan, Place* place) const;
    /** Goes to the first element of a collection. */
    bool open(const Node& node, Place* place, quint32* count) const;
    /** Goes to the value of an optional member; @p isThere says whether there is one, otherwise past it. */
    bool openOptional(Place* place, bool* isThere) const;
    /** Goes past a member of a list. */
    bool takeListed(Plan::Form form, Place* place, Listed* listed) const;
    /** Goes past the discriminator of a union, to the member number @p chosen; -1 for none. */
    bool openCase(const Plan& plan, Place* place, int* chosen) const;
    /** How many bytes the characters of a wide text take. */
    quint64 wideSize(quint32 length) const;

    /** How many elements can be there at most: each takes a byte at least, but for some that have nothing in them. */
    static quint32 mostElements(const Node& element, const Place& first);
    /** How many elements of a fixed size are there in whole. */
    static quint32 countWhole(const Node& element, const Place& first, quint32 count);
    /** The place of an element of a fixed size. */
    static Place elementAt(const Node& element, const Place& first, quint32 index);

    qint64 readInteger(Kind kind, quint32 at) const;
    /** What is four times as precise as a float, as nearly as a double can be. */
    double readQuadruple(quint32 at) const;
    QString readText(quint32 at, quint32 size) const;
    QString readWide(quint32 at, quint32 size) const;

private:
    bool skipStruct(const Plan& plan, Place* place) const;
    bool takeShort(Place* place, Listed* listed) const;

    const char* m_bytes = nullptr;
    const Rules* m_rules = nullptr;
    bool m_isSwapped = false;
    WideText m_wide = WideText::Units;
};

/** A struct in a message: where its members are, found as far as somebody asks. */
class View
{
public:
    View(const Wire* wire, const Plan* plan, const Place& start)
        : m_wire(wire)
        , m_plan(plan)
        , m_start(start)
    {
    }

    const Plan& getPlan() const { return *m_plan; }
    const Place& getStart() const { return m_start; }
    /** False when the member is absent, or lies beyond the end. */
    bool find(int member, Place* place) const;

private:
    enum
    {
        FewSections = 6
    };

    bool findSection(quint32 section, quint32* at) const;
    bool findListed(int member, Place* place) const;

    const Wire* m_wire;
    const Plan* m_plan;
    const Place m_start;
    mutable quint32 m_known = 0; // of the sections behind the first
    mutable quint32 m_few[FewSections];
    mutable std::unique_ptr<quint32[]> m_many;
    mutable std::unique_ptr<Place[]> m_listed;
};

} // namespace Ros

#endif

#ifndef JSONDOCUMENT_H
#define JSONDOCUMENT_H

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <string_view>
#include <vector>

/** A value, or the name of a member, in a JsonDocument. */
struct JsonNode
{
    enum Kind : quint8
    {
        Object, ///< its members follow, each a name and a value
        Array,  ///< its elements follow
        String,
        Number, ///< also NaN, Infinity and -Infinity, which many programs write
        True,
        False,
        Null,
        Odd ///< what is no JSON, or nested too deeply: only its text is known
    };

    quint32 begin; ///< of its text, with quotes or brackets, in the bytes
    quint32 end;
    quint32 next;  ///< the number of the node behind it and all that is in it
    quint32 count; ///< of members or elements
    Kind kind;

    bool isContainer() const { return kind == Object || kind == Array; }
};

/**
 * Where the values of a JSON text stand in its bytes. Nothing is converted or copied before somebody asks for a value.
 *
 * What is no JSON is read as far as that is possible, and getProblems() tells what is wrong.
 */
class JsonDocument
{
public:
    /** Objects and arrays that are nested deeper are not looked into. */
    static const int DeepestLevel = 100;

    explicit JsonDocument(const QByteArray& bytes);

    /** Whether not even the first value could be read. */
    bool isEmpty() const { return m_nodes.empty(); }
    /** The node of that number: 0 is the whole, 1 behind an object or array the first in it. */
    const JsonNode& at(quint32 node) const { return m_nodes[node]; }

    /** A value as it came. */
    std::string_view getRaw(quint32 node) const;
    /** A string without its quotes and escapes, anything else as it came. */
    QString getText(quint32 node) const;
    /** The name or string, if that is written without escapes; empty otherwise. */
    std::string_view getPlain(quint32 node) const;

    /** The value of a member of an object, the last one of that name; 0 when there is none. */
    quint32 findMember(quint32 object, const char* name) const;

    /** How many bytes stand before those that nodes count; negative where these were made of damaged ones. */
    int getSkipped() const { return m_skipped; }

    /** What is wrong, as "a.b[3] at byte 12: text". */
    const QStringList& getProblems() const;

private:
    friend class JsonWalker;

    bool read();

    QByteArray m_bytes; // with room behind them for the parser
    std::vector<JsonNode> m_nodes;
    int m_skipped;
    mutable bool m_isSuspect; // and was not checked so far
    mutable QStringList m_problems;
};

#endif

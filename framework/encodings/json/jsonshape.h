#ifndef JSONSHAPE_H
#define JSONSHAPE_H

#include "fieldinfo.h"

#include <QString>
#include <QVector>

#include <deque>
#include <vector>

class JsonDocument;

/** What is known of a value beforehand: from a schema, from a message, or from both. */
struct JsonShape
{
    enum Kind
    {
        Nothing, ///< so far
        Any,     ///< as it comes
        Boolean,
        Integer,
        Number,
        String,
        Bytes, ///< a string in base64
        Time,  ///< an object of seconds and nanoseconds
        Duration,
        Object,
        Array
    };

    struct Member
    {
        QString name;
        JsonShape* shape;
        QString description;
        bool isRequired;
    };

    Kind kind = Nothing;
    bool isOpen = false; ///< whether it is what messages make of it
    QString name;        ///< of a definition in the schema, where it has one
    QString description;
    QString rangeText;
    QString unit;
    QVector<FieldInfo::Enumerator> enumerators;
    std::vector<Member> members;
    JsonShape* items = nullptr; ///< of an array; what they are
};

/** The shapes of one type, which can contain themselves. */
class JsonShapes
{
public:
    JsonShapes();

    JsonShape* add();

    JsonShape* getRoot() const { return m_root; }
    void setRoot(JsonShape* root) { m_root = root; }

    /** Whether a message is needed to know what fields there are. */
    bool isOpen() const;

    /**
     * Makes of what is open what a message has there.
     *
     * @return whether anything became another
     */
    bool learn(const JsonDocument& message);

    /** Makes @p left what values of both kinds are. */
    void merge(JsonShape* left, const JsonShape* right) { merge(left, right, 0); }

private:
    void merge(JsonShape* left, const JsonShape* right, int depth);
    JsonShape* merged(const JsonShape* left, const JsonShape* right, int depth);
    bool learn(JsonShape* shape, const JsonDocument& message, quint32 node);
    bool learnMembers(JsonShape* shape, const JsonDocument& message, quint32 node);
    std::size_t findMember(const std::vector<JsonShape::Member>& members, const QString& name, std::size_t place);
    static bool turnInto(JsonShape* shape, JsonShape::Kind kind);

    std::deque<JsonShape> m_shapes;
    JsonShape* m_root;
    std::size_t m_lookedAt;
};

#endif

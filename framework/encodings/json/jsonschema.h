#ifndef JSONSCHEMA_H
#define JSONSCHEMA_H

#include "jsondocument.h"
#include "jsonshape.h"

#include <QCoreApplication>
#include <QHash>

#include <unordered_map>

/** Makes shapes of what a JSON schema says. Words that say nothing about what a value is are passed over. */
class JsonSchema
{
    Q_DECLARE_TR_FUNCTIONS(JsonSchema)

public:
    /**
     * Reads a schema and makes it the root of @p shapes.
     *
     * @param error  why that cannot be used; must not be null
     * @return whether it can be
     */
    static bool read(const QByteArray& schema, JsonShapes* shapes, QString* error);

private:
    JsonSchema(const JsonDocument& schema, JsonShapes* shapes);

    JsonShape* shapeOf(quint32 node);
    void fill(JsonShape* shape, quint32 node);
    void addTypes(JsonShape* shape, quint32 node);
    void addType(JsonShape* shape, JsonShape::Kind kind);
    void addMembers(JsonShape* shape, quint32 node);
    void addItems(JsonShape* shape, quint32 node);
    void addAlternatives(JsonShape* shape, quint32 node);
    void addConstants(JsonShape* shape, quint32 node);
    void describe(JsonShape* shape, quint32 node) const;
    bool recognizeTime(JsonShape* shape, quint32 node) const;

    quint32 find(quint32 node, const char* name) const;
    QString textOf(quint32 node, const char* name) const;
    QString descriptionOf(quint32 node) const;
    quint32 resolve(const QString& reference) const;
    /** The first thing in an object or array, and what comes behind each. */
    quint32 begin(quint32 node) const { return node + 1; }
    quint32 end(quint32 node) const { return m_schema.at(node).next; }

    const JsonDocument& m_schema;
    JsonShapes* m_shapes;
    std::unordered_map<quint32, JsonShape*> m_known;           // by node
    mutable QHash<quint32, QHash<QString, quint32>> m_members; // of great objects
    bool m_isTooGreat;
};

#endif

#ifndef IDLPARSER_H
#define IDLPARSER_H

#include "idlscanner.h"

#include <QHash>
#include <QSet>
#include <QStringList>

/** Reads the types of an IDL text: structs, unions, enumerations and what they need. */
class IdlParser
{
public:
    /** @param isRos  whether names of types are shown as ROS writes them, "a/b/T" */
    IdlParser(Ros::Schema* schema, bool isRos);

    /**
     * @param name  of the type, as it is shown
     * @return that type; null with @p fault set
     */
    Ros::Struct* parse(const QString& text, const QString& name, Ros::Fault* fault);

private:
    /** A number, a text or a truth value. */
    struct Value
    {
        enum Kind
        {
            Integer,
            Real,
            Text
        } kind = Integer;
        quint64 bits = 0; ///< of an integer; of a negative one its two's complement
        bool isNegative = false;
        double real = 0;
        QString text;
    };

    /** What stands before a definition. */
    struct Annotations
    {
        QString description{};
        QHash<QString, Value> values{}; ///< by name; of those without a value 0

        bool has(const char* name) const { return values.contains(QLatin1String(name)); }
        Value get(const char* name) const { return values.value(QLatin1String(name)); }
    };

    struct Symbol
    {
        const Ros::Type* type = nullptr; ///< null for a constant
        Value value{};
    };

    // Definitions, in idlparser.cpp.
    const IdlToken& peek(int distance = 0) const;
    const IdlToken& take();
    bool takeIf(const char* word);
    void expect(const char* word);
    QString takeName();
    [[noreturn]] void fail(const QString& text) const;
    void readDefinition();
    void readModule();
    void readStruct(const Annotations& annotations);
    void readUnion(const Annotations& annotations);
    void readCase(Ros::Struct* structure, const Ros::Type* discriminator);
    void readEnumeration(const Annotations& annotations, bool isBitmask);
    void readTypedef();
    void readConstant();
    void readMembers(Ros::Struct* structure, const Annotations& annotations, quint32* nextId);
    void addMember(Ros::Struct* structure, const Ros::Member& member);
    Ros::Struct* addStruct(const Annotations& annotations, bool isUnion);
    void addConstants();
    void countName();
    void define(const QString& name, const Symbol& symbol);
    const Symbol* find(const QString& name) const;

    // Types and values, in idltypes.cpp.
    Annotations readAnnotations();
    void readArguments(QHash<QString, Value>* values);
    void skipArguments();
    const Ros::Type* readType();
    const Ros::Type* readCollection();
    const Ros::Type* readDeclarator(const Ros::Type* type, QString* name);
    const Ros::Type* collectionOf(const Ros::Type* element, Ros::Kind kind, quint32 count, const QString& name);
    bool readPrimitive(Ros::Type* type);
    QString readScopedName();
    quint32 readSize();
    Value readValue(int level = 0);
    Value readOperand();
    Value combine(const QString& sign, const Value& left, const Value& right) const;
    static qint64 integerOf(const Value& value);
    static QString textOf(const Value& value);

    QString shownName(const QString& scoped) const;
    QString scoped(const QString& name) const;

    Ros::Schema* m_schema;
    const bool m_isRos;
    std::vector<IdlToken> m_tokens;
    std::size_t m_at;
    int m_depth;
    int m_bound; // how deep in "<...>", where ">" ends a value
    QStringList m_scope;
    QSet<QString> m_names;                                      // of the members of the struct that is being read
    QHash<QString, Symbol> m_symbols;                           // by name with scopes, "a::b::T"
    QHash<QString, Ros::Struct*> m_structs;                     // the same
    std::vector<std::pair<QString, Ros::Constant>> m_constants; // with their module
};

#endif

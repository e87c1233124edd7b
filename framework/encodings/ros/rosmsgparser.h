#ifndef ROSMSGPARSER_H
#define ROSMSGPARSER_H

#include "rosschema.h"

#include <QHash>
#include <QSet>
#include <QStringList>

/**
 * Reads the .msg language of ROS 1 and ROS 2: a text for the type itself, and one for each type that it needs, behind a
 * line of "=" and a line "MSG: name".
 */
class RosMsgParser
{
public:
    enum Dialect
    {
        Ros1,
        Ros2
    };

    RosMsgParser(Dialect dialect, Ros::Schema* schema);

    /**
     * @param name  of the type that stands before the first separator
     * @return that type; null with @p fault set
     */
    Ros::Struct* parse(const QString& text, const QString& name, Ros::Fault* fault);

private:
    bool readDefinitions(const QStringList& lines, const QString& name);
    bool readLine(const QString& line);
    QString takeValue(const Ros::Type& type, bool isConstant, QString* comment);
    QString* addConstant(const QString& name, const Ros::Type& type, const QString& value);
    QString* addMember(const QString& name, const Ros::Type& type, const QString& value, int column);
    bool readValue(const QString& text, Ros::Constant* constant);
    void readComment(const QString& comment, bool isIndented);
    bool readType(const QString& word, Ros::Type* type);
    bool readSize(QString text, quint32* size);
    void skipBlanks();
    QString takeName();
    void begin(const QString& name);
    bool end();
    void addPart();
    void nameParts();

    // Names, in rosmsgnames.cpp.
    /** "pkg/msg/Type" and "pkg/Type" are one. */
    static QString keyOf(const QString& name);
    bool resolve();
    bool resolve(Ros::Type* type, const QString& holder);
    Ros::Struct* find(const QString& name, const QString& holder);
    Ros::Struct* builtIn(const QString& key);
    void addServiceEvent(const QString& name);

    bool fail(const QString& text, int column = -1);

    const Dialect m_dialect;
    Ros::Schema* m_schema;
    QHash<QString, Ros::Struct*> m_byKey; // by names without what stands in the middle
    std::vector<Ros::Struct*> m_parts;    // of the definition: several of a service
    QString m_name;                       // of the definition
    Ros::Struct* m_struct;                // the part that is being read
    QSet<QString> m_names;                // of its members
    QStringList m_above;                  // the comment that the next line belongs to
    QStringList m_head;                   // that of the whole definition
    bool m_isHead;
    QString* m_lastComment; // of the last line that was no comment
    QString m_line;
    int m_at; // in the line
    int m_number;
    Ros::Fault m_fault;
};

#endif

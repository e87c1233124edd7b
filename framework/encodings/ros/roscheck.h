#ifndef ROSCHECK_H
#define ROSCHECK_H

#include "roswire.h"

#include <QStringList>

#include <vector>

/** Reads a message from its begin to its end and notes what is wrong with its bytes, as "a.b[3] at byte 12: text". */
class RosCheck
{
public:
    explicit RosCheck(const Ros::Wire& wire)
        : m_wire(wire)
    {
    }

    /** Reads a whole struct; false where nobody can tell how it goes on. */
    bool readsTo(const Ros::Plan& plan, Ros::Place place, bool isPlain);

    /** How many bytes were not needed. */
    quint32 getLeft() const { return m_left; }
    /** Whether every struct that says how long it is ended there: its sender knows the same members. */
    bool isExact() const { return m_isExact; }

    /** Of very many only the first. */
    const QStringList& getProblems() const { return m_problems; }

private:
    struct Step
    {
        const Ros::Struct* structure;
        std::size_t member;
        qint64 index; // -1 for none
    };

    bool readNode(const Ros::Node& node, Ros::Place* place);
    bool readText(const Ros::Node& node, Ros::Place* place);
    bool readCollection(const Ros::Node& node, Ros::Place* place);
    bool readStruct(const Ros::Plan& plan, Ros::Place* place, bool isPlain);
    bool readMembers(const Ros::Plan& plan, Ros::Place* place);
    bool readMember(const Ros::Plan& plan, std::size_t member, Ros::Place* place);
    bool readList(const Ros::Plan& plan, Ros::Place* place);
    void note(quint32 at, const QString& text);
    bool fail(quint32 at, const QString& text);
    bool failShort(const Ros::Place& place, quint64 size);

    const Ros::Wire& m_wire;
    quint32 m_left = 0;
    bool m_isExact = true;
    std::vector<Step> m_path;
    QStringList m_problems;
};

#endif

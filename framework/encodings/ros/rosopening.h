#ifndef ROSOPENING_H
#define ROSOPENING_H

#include "roswire.h"

#include <QByteArray>
#include <QStringList>

#include <atomic>
#include <memory>
#include <mutex>

/** A schema that was read, and the layouts of its types, made when the first message needs one. */
class RosTypes
{
public:
    enum
    {
        Xcdr1Layout = 1,
        LayoutCount = 9
    };

    /** @param isRos1  whether messages are written as ROS 1 does it, else in CDR */
    RosTypes(std::unique_ptr<Ros::Schema> schema, bool isRos1);

    bool isRos1() const { return m_isRos1; }
    bool hasWideText() const { return m_hasWideText; }
    /** Whether bytes that say they are XCDR1 can be read in one way only. */
    bool hasOneWay() const { return !m_isRos1 && !m_hasWideText; }
    const Ros::Schema& getSchema() const { return *m_schema; }
    /** Any thread. */
    const Ros::Layout& getLayout(int number) const
    {
        const Ros::Layout* const layout = m_layouts[number].load(std::memory_order_acquire);
        return layout ? *layout : makeLayout(number);
    }

private:
    const Ros::Layout& makeLayout(int number) const;

    const std::unique_ptr<Ros::Schema> m_schema;
    const bool m_isRos1;
    bool m_hasWideText;
    mutable std::mutex m_mutex; // for making layouts
    mutable std::unique_ptr<const Ros::Layout> m_owned[LayoutCount];
    mutable std::atomic<const Ros::Layout*> m_layouts[LayoutCount] = {};
};

/**
 * How a message is to be read: its first bytes say it, up to what writers do differently and nobody tells.
 *
 * Of the ways to read it that are left, it is the first by which the message ends where it should.
 */
class RosOpening
{
public:
    RosOpening(const RosTypes& types, const Ros::Struct* structure, const QByteArray& data);

    /** What is wrong with the message. */
    QStringList findProblems() const;

    Ros::Wire wire;
    const Ros::Plan* plan;
    Ros::Place start;

private:
    void tryAll(const RosTypes& types, const Ros::Struct* structure, const QByteArray& data, bool isSwapped,
                const int* numbers, int count);

    Ros::Place m_whole; // with what stands before the members
    bool m_isPlain;     // whether nothing stands there
    enum : quint8
    {
        NoProblem,
        TooShort,
        UnknownWay,
        Undecided
    } m_problem;
    int m_id; // of the way to write
};

#endif

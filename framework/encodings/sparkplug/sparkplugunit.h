#ifndef SPARKPLUGUNIT_H
#define SPARKPLUGUNIT_H

#include "sparkplugpayload.h"

#include <QByteArray>
#include <QHash>

#include <vector>

/**
 * The metrics of a node or a device as its last birth named them, with their newest values.
 *
 * Names with "/" in them are nested. The times of metrics stand below "[times]" in the same way, if any has one.
 */
class SparkplugUnit
{
public:
    /** More of one birth are left out. */
    static const int MostMetrics = 10000;

    /** Forgets everything, and takes what a birth says. */
    void setBirth(const Sparkplug::Payload& birth);

    /** Which metric has that name; -1 for none. */
    int find(std::string_view name) const;
    /** Takes the newest value of a metric. */
    void set(int number, const Sparkplug::Metric& metric);

    /** What getJson() is described by. */
    const QByteArray& getSchema() const { return m_schema; }
    /** The newest values. */
    QByteArray getJson() const;
    /** Bytes that all this takes, about. */
    qint64 getSize() const { return m_size; }

private:
    struct Value
    {
        quint32 type;
        QByteArray text;
        QByteArray time;
    };

    /** A level of names. */
    struct Level
    {
        QByteArray name; // in quotes
        int number = -1; // of a metric of that name
        std::vector<Level> below;
        QHash<QByteArray, int> places; // of what is below, by name
    };

    /** What stands before the value of a metric in JSON. */
    struct Step
    {
        QByteArray before;
        int number;
    };

    static void add(Level* level, std::string_view name, int number);
    static void plan(const Level& level, const QVector<QByteArray>& schemas, QByteArray* schema, QByteArray* text,
                     std::vector<Step>* steps);

    std::vector<Value> m_values;
    QHash<QByteArray, int> m_numbers; // by name
    std::vector<Step> m_steps;
    QByteArray m_end;            // what stands behind the last step
    std::size_t m_firstTime = 0; // of the steps, the first that is a time
    QByteArray m_schema;
    qint64 m_size = 0;
};

#endif

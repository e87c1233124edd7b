#include "sparkplugunit.h"

#include "sparkplugvalue.h"

#include <QVector>

using namespace Sparkplug;

namespace
{

const int DeepestName = 32;
const qint64 Overhead = 1000;          // of tables
const char OwnValue[] = "\"[value]\""; // of a metric below whose name there are others

} // namespace

void SparkplugUnit::setBirth(const Payload& birth)
{
    *this = SparkplugUnit();
    Level root;
    QVector<QByteArray> schemas;
    bool hasTimes = false;
    for (const Metric& metric : birth.metrics) {
        const QByteArray name(metric.name.data(), int(metric.name.size()));
        const quint32 type = SparkplugValue::typeOf(metric);
        const QByteArray schema = SparkplugValue::schema(metric, type);
        if (name.isEmpty() || schema.isEmpty() || m_numbers.contains(name) || m_values.size() >= MostMetrics)
            continue;
        const int number = int(m_values.size());
        m_values.push_back({type, QByteArray(), QByteArray()});
        m_numbers.insert(name, number);
        schemas.append(schema);
        add(&root, metric.name, number);
        set(number, metric);
        hasTimes = hasTimes || metric.timestamp > 0;
    }
    m_schema = "{\"type\":\"object\",\"properties\":{";
    QByteArray text = "{";
    plan(root, schemas, &m_schema, &text, &m_steps);
    m_firstTime = m_steps.size();
    if (hasTimes && !m_steps.empty()) {
        schemas.fill(SparkplugValue::timeSchema());
        m_schema += ",\"[times]\":{\"type\":\"object\",\"properties\":{";
        text += ",\"[times]\":{";
        plan(root, schemas, &m_schema, &text, &m_steps);
        m_schema += "}}";
        text += '}';
    }
    m_schema += "}}";
    m_end = text + '}';
    m_size += Overhead + 3 * m_schema.size();
}

void SparkplugUnit::add(Level* level, std::string_view name, int number)
{
    for (int depth = 0;; ++depth) {
        const std::size_t slash = depth < DeepestName ? name.find('/') : std::string_view::npos;
        const std::string_view first = name.substr(0, slash);
        if (!first.empty() || slash == std::string_view::npos) {
            const QByteArray key = SparkplugValue::quoted(first);
            auto place = level->places.constFind(key);
            if (place == level->places.constEnd()) {
                place = level->places.insert(key, int(level->below.size()));
                level->below.emplace_back();
                level->below.back().name = key;
            }
            level = &level->below[std::size_t(*place)];
        }
        if (slash == std::string_view::npos)
            break;
        name.remove_prefix(slash + 1);
    }
    // Two names that differ in nothing but empty levels.
    if (level->number < 0)
        level->number = number;
}

void SparkplugUnit::plan(const Level& level, const QVector<QByteArray>& schemas, QByteArray* schema, QByteArray* text,
                         std::vector<Step>* steps)
{
    const auto addMetric = [&](const QByteArray& name, int number) {
        *schema += name + ':' + schemas.at(number);
        steps->push_back({*text + name + ':', number});
        text->clear();
    };
    bool isFirst = level.number < 0;
    if (!isFirst)
        addMetric(OwnValue, level.number);
    for (const Level& one : level.below) {
        if (!isFirst) {
            *schema += ',';
            *text += ',';
        }
        isFirst = false;
        if (one.below.empty()) {
            addMetric(one.name, one.number);
            continue;
        }
        *schema += one.name + ":{\"type\":\"object\",\"properties\":{";
        *text += one.name + ":{";
        plan(one, schemas, schema, text, steps);
        *schema += "}}";
        *text += '}';
    }
}

int SparkplugUnit::find(std::string_view name) const
{
    return m_numbers.value(QByteArray::fromRawData(name.data(), int(name.size())), -1);
}

void SparkplugUnit::set(int number, const Metric& metric)
{
    Value& value = m_values[std::size_t(number)];
    m_size -= value.text.size();
    value.text = SparkplugValue::text(metric, value.type);
    m_size += value.text.size();
    value.time = SparkplugValue::timeText(metric.timestamp);
}

QByteArray SparkplugUnit::getJson() const
{
    QByteArray json;
    json.reserve(int(m_schema.size()));
    for (std::size_t i = 0; i < m_steps.size(); ++i) {
        const Value& value = m_values[std::size_t(m_steps[i].number)];
        json += m_steps[i].before;
        json += i < m_firstTime ? value.text : value.time;
    }
    return json + m_end;
}

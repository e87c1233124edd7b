#include "envelopetopics.h"

#include "envelope.h"

#include <algorithm>

namespace
{

const qint64 MostBytes = 64 * 1024 * 1024;
const std::size_t MostRules = 32;

QByteArray keyOf(std::string_view topic)
{
    return QByteArray::fromRawData(topic.data(), int(topic.size()));
}

} // namespace

TopicRule::Claim::Claim(const Envelope& envelope)
    : contentType(envelope.contentType)
{
    if (envelope.properties.empty())
        return;
    type = envelope.attribute("type");
    schema = envelope.attribute("dataschema");
}

TopicRule::TopicRule(const Claim& claim, const PayloadType& type)
    : contentType(claim.contentType)
    , type(claim.type)
    , schema(claim.schema)
    , found(type)
{
}

TopicRule* Topic::find(const TopicRule::Claim& claim)
{
    const auto found =
        std::find_if(rules.begin(), rules.end(), [&](const TopicRule& rule) { return rule.isOf(claim); });
    return found == rules.end() ? nullptr : &*found;
}

TopicRule* Topic::add(const TopicRule::Claim& claim, const PayloadType& found)
{
    if (rules.size() >= MostRules)
        rules.erase(rules.begin());
    rules.emplace_back(claim, found);
    return &rules.back();
}

Topic* EnvelopeTopics::findKnown(std::string_view topic)
{
    const auto found = m_topics.find(keyOf(topic));
    return found == m_topics.end() ? nullptr : &*found;
}

Topic* EnvelopeTopics::find(std::string_view topic, int* forgotten)
{
    *forgotten = 0;
    Topic* known = findKnown(topic);
    if (!known) {
        if (m_topics.size() >= MostTopics || m_kept + qint64(topic.size()) > MostBytes)
            *forgotten = forgetOldest();
        m_kept += qint64(topic.size());
        known = &*m_topics.insert(QByteArray(topic.data(), int(topic.size())), Topic());
    }
    known->lastUse = ++m_uses;
    return known;
}

// A quarter at once: of a flood of topics, to look for the oldest each time would be slow.
int EnvelopeTopics::forgetOldest()
{
    std::vector<quint64> uses;
    uses.reserve(std::size_t(m_topics.size()));
    for (const Topic& topic : std::as_const(m_topics))
        uses.push_back(topic.lastUse);
    const auto limit = uses.begin() + std::ptrdiff_t(uses.size() / 4);
    std::nth_element(uses.begin(), limit, uses.end());
    const quint64 newest = *limit;
    int forgotten = 0;
    for (auto topic = m_topics.begin(); topic != m_topics.end();) {
        if (topic->lastUse > newest) {
            ++topic;
            continue;
        }
        m_kept -= topic.key().size();
        topic = m_topics.erase(topic);
        ++forgotten;
    }
    return forgotten;
}

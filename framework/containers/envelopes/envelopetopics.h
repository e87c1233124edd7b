#ifndef ENVELOPETOPICS_H
#define ENVELOPETOPICS_H

#include "payloadtype.h"

#include <QHash>

#include <string>
#include <string_view>
#include <vector>

/** What is known of the payloads of a topic that say the same of themselves. */
struct TopicRule
{
    /** What an envelope says. */
    struct Claim
    {
        explicit Claim(const Envelope& envelope);

        std::string_view contentType;
        std::string_view type;
        std::string_view schema;
    };

    TopicRule(const Claim& claim, const PayloadType& found);

    bool isOf(const Claim& claim) const
    {
        return claim.contentType == contentType && claim.type == type && claim.schema == schema;
    }

    std::string contentType;
    std::string type;
    std::string schema;
    PayloadType found;
    quint32 id = 0; // of its one type
    quint32 sender = 0;
    bool isTold = false; // that it cannot be decoded
};

/** What is known of a topic. */
struct Topic
{
    /** What is known of such payloads; null for nothing. */
    TopicRule* find(const TopicRule::Claim& claim);
    TopicRule* add(const TopicRule::Claim& claim, const PayloadType& found);

    std::vector<TopicRule> rules;           // mostly one
    QHash<quint32, quint32> mavlinkSenders; // by those of frames
    quint64 lastUse = 0;
};

/** The topics that were heard of last: there is an end to them. */
class EnvelopeTopics
{
public:
    static const int MostTopics = 20000;

    /** What is known of a topic, also one that is new. Others may be forgotten for it, which is told by @p forgotten.
     */
    Topic* find(std::string_view topic, int* forgotten);
    /** Null where nothing is known. */
    Topic* findKnown(std::string_view topic);

private:
    int forgetOldest();

    QHash<QByteArray, Topic> m_topics;
    qint64 m_kept = 0; // bytes of names
    quint64 m_uses = 0;
};

#endif

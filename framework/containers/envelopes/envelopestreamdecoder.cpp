#include "envelopestreamdecoder.h"

#include "envelope.h"
#include "envelopenames.h"
#include "envelopeschemas.h"
#include "envelopetimes.h"
#include "envelopetopics.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "payloadtype.h"
#include "sparkplugnodes.h"
#include "utf8text.h"

#include <QCoreApplication>

namespace
{

const quint64 EndlessModulus = Q_UINT64_C(1) << 62;
const quint8 MavlinkSequenceBits = 8;
const quint64 LongestSkippedRun = 16384;
const qint64 LongWait = 1000 * 1000;
const int FrameShift = 44; // behind the numbers of messages, of which servers have fewer

QString textOf(std::string_view bytes)
{
    return Utf8Text::decode(bytes.data(), int(bytes.size()));
}

/** The topic without a last level that names the type, which is none of the sender. */
QString senderOf(const Envelope& envelope)
{
    const QString topic = textOf(envelope.topic);
    const QString type = textOf(envelope.attribute("type")).replace(QLatin1Char('/'), QLatin1Char('.'));
    const int rest = int(topic.size() - type.size()) - 1;
    bool endsWithType =
        !type.isEmpty() && rest > 0 && (topic.at(rest) == QLatin1Char('/') || topic.at(rest) == QLatin1Char('.'));
    // What means something in topics is "_" there.
    const QString reserved = QStringLiteral("+#*> ");
    for (int i = 0; i < type.size() && endsWithType; ++i) {
        const QChar written = topic.at(rest + 1 + i);
        endsWithType = written == type.at(i) || (written == QLatin1Char('_') && reserved.contains(type.at(i)));
    }
    return endsWithType ? topic.left(rest) : topic;
}

void setTime(qint64 nanoseconds, qint64* time, qint16* rest)
{
    *time = nanoseconds / 1000;
    *rest = qint16(nanoseconds % 1000);
}

/** What the envelope of a message says of it, whatever is in it. */
ReceivedMessage messageOf(const Envelope& envelope, qint64 arrivalTime)
{
    ReceivedMessage message;
    message.isKept = envelope.isKept;
    message.origin = envelope.origin;
    if (!envelope.isKept) {
        message.time = arrivalTime;
        if (envelope.time > 0)
            setTime(envelope.time, &message.time, &message.timeRest);
    }
    if (!envelope.properties.empty()) {
        const qint64 sent = EnvelopeTimes::read(envelope.attribute("time"));
        if (sent > 0)
            setTime(sent, &message.publishTime, &message.publishTimeRest);
        if (!envelope.isKept)
            message.sequence = EnvelopeTimes::readNumber(envelope.attribute("id"));
    }
    if (message.sequence < 0)
        message.sequence =
            envelope.isKept || envelope.sequence == 0 ? qint64(Message::NoSequence) : qint64(envelope.sequence);
    return message;
}

} // namespace

struct EnvelopeStreamDecoder::Private
{
    Private(const StreamOptions& options, bool live)
        : definitions(options.definitions)
        , isLive(live)
        , types(options)
        , nodes(options.definitions, &names)
    {
    }

    qint64 work(const char* bytes, qint64 size);
    void process(const char* bytes, qint64 size, quint64 end, qint64 arrivalTime);
    void processMessage(const QByteArray& bytes, quint64 end, qint64 arrivalTime);
    void processFrames(Topic* topic, ReceivedMessage message);
    TopicRule* ruleOf(Topic* topic);
    bool keepForLater(const QByteArray& bytes, quint64 end, qint64 arrivalTime);
    void endWaiting(const QByteArray& schemaTopic);
    void releaseWaiting(std::string_view schemaTopic);
    void reportGone(const QString& text);
    void reportForgotten(int topics);
    void reportSkipped(quint64 end);

    Definitions* const definitions;
    const bool isLive;
    PayloadTypes types;
    EnvelopeSchemas schemas;
    EnvelopeNames names;
    EnvelopeTopics topics;
    SparkplugNodes nodes;
    Envelope envelope; // that is being processed
    StreamSink* sink = nullptr;
    quint64 place = 0;    // in the stream, that is looked at
    quint64 reported = 0; // everything before has been told
    QByteArray pending;   // fed, and not enough for an envelope
    qint64 needed = 0;    // bytes that there must be of it
    qint64 arrivalTime = Message::NoTime;
};

namespace
{

/** Takes the frames of a payload, each with what is known of the payload. */
class FrameSink : public StreamSink
{
public:
    FrameSink(const QString& topicName, Topic* topic, const ReceivedMessage& common, EnvelopeNames* names,
              StreamSink* sink)
        : m_topicName(topicName)
        , m_topic(topic)
        , m_common(common)
        , m_names(names)
        , m_sink(sink)
    {
    }

    void processReceived(const ReceivedMessage& frame) override
    {
        ReceivedMessage message = frame;
        message.sender = senderOf(frame.sender);
        message.isKept = m_common.isKept;
        message.origin = m_common.origin ? m_common.origin + (m_frames++ << FrameShift) : 0;
        message.time = m_common.time;
        message.timeRest = m_common.timeRest;
        message.publishTime = m_common.publishTime;
        message.publishTimeRest = m_common.publishTimeRest;
        message.sequenceBits = MavlinkSequenceBits;
        if (m_common.isKept)
            message.sequence = Message::NoSequence;
        m_sink->processReceived(message);
    }

    void processProblem(const StreamProblem& frame) override
    {
        StreamProblem problem = frame;
        problem.hasFrame = true;
        problem.sender = frame.hasFrame ? senderOf(frame.sender) : m_names->addSender(m_topicName);
        m_sink->processProblem(problem);
    }

private:
    quint32 senderOf(quint32 frameSender)
    {
        const auto known = m_topic->mavlinkSenders.constFind(frameSender);
        if (known != m_topic->mavlinkSenders.constEnd())
            return *known;
        const QString name = QStringLiteral("%1 %2:%3").arg(m_topicName).arg(frameSender >> 8).arg(frameSender & 0xff);
        return *m_topic->mavlinkSenders.insert(frameSender, m_names->addSender(name));
    }

    const QString m_topicName;
    Topic* const m_topic;
    const ReceivedMessage& m_common;
    EnvelopeNames* const m_names;
    StreamSink* const m_sink;
    quint64 m_frames = 0;
};

} // namespace

EnvelopeStreamDecoder::EnvelopeStreamDecoder(const StreamOptions& options, bool isLive)
    : m_private(new Private(options, isLive))
{
}

EnvelopeStreamDecoder::~EnvelopeStreamDecoder() {}

void EnvelopeStreamDecoder::feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink)
{
    m_private->sink = sink;
    m_private->arrivalTime = arrivalTime;
    QByteArray& pending = m_private->pending;
    if (pending.isEmpty()) {
        const qint64 used = m_private->work(bytes, size);
        pending.append(bytes + used, int(size - used));
    } else {
        pending.append(bytes, size);
        if (pending.size() >= m_private->needed)
            pending.remove(0, int(m_private->work(pending.constData(), pending.size())));
    }
    if (arrivalTime == Message::NoTime)
        return;
    for (QByteArray topic = m_private->schemas.findOverdue(arrivalTime); !topic.isNull();
         topic = m_private->schemas.findOverdue(arrivalTime))
        m_private->endWaiting(topic);
}

void EnvelopeStreamDecoder::finish(StreamSink* sink)
{
    m_private->sink = sink;
    for (QByteArray topic = m_private->schemas.findOverdue(Message::NoTime); !topic.isNull();
         topic = m_private->schemas.findOverdue(Message::NoTime))
        m_private->endWaiting(topic);
    QByteArray& pending = m_private->pending;
    pending.remove(0, int(m_private->work(pending.constData(), pending.size()))); // which waits for more than there is
    if (pending.isEmpty()) {
        m_private->reportSkipped(m_private->place);
        return;
    }
    const bool isEnvelope = m_private->reported == m_private->place;
    const quint64 end = m_private->place + quint64(pending.size());
    StreamProblem problem;
    problem.kind = isEnvelope ? StreamProblem::TruncatedFrame : StreamProblem::SkippedBytes;
    problem.offset = m_private->reported;
    problem.length = end - m_private->reported;
    pending.clear();
    m_private->place = m_private->reported = end;
    sink->processProblem(problem);
}

void EnvelopeStreamDecoder::restart(quint64 offset)
{
    m_private->pending.clear();
    m_private->place = m_private->reported = offset;
}

quint64 EnvelopeStreamDecoder::getKeptOffset() const
{
    const quint64 first = m_private->schemas.findFirst();
    return m_private->pending.isEmpty() ? first : qMin(first, m_private->reported);
}

bool EnvelopeStreamDecoder::hasTimes() const
{
    return !m_private->isLive;
}

QString EnvelopeStreamDecoder::getSenderName(quint32 sender) const
{
    return m_private->names.getSender(sender);
}

void EnvelopeStreamDecoder::publishTypes(QStringList* problems) const
{
    m_private->definitions->publish(problems);
}

QString EnvelopeStreamDecoder::describeUnknown(quint32 id) const
{
    return EnvelopeNames::isUnknown(id) ? m_private->names.describe(id) : StreamDecoder::describeUnknown(id);
}

TypeSchema EnvelopeStreamDecoder::getUnknownSchema(quint32 id) const
{
    return m_private->names.getSchema(id);
}

quint64 EnvelopeStreamDecoder::getSequenceModulus() const
{
    return EndlessModulus;
}

/** Processes the envelopes that are there; how many bytes these, and what is none, are. */
qint64 EnvelopeStreamDecoder::Private::work(const char* bytes, qint64 size)
{
    qint64 done = 0;
    while (done < size) {
        qint64 used = 0;
        const EnvelopeReader::Result result = EnvelopeReader::read(bytes + done, size - done, &envelope, &used);
        if (result == EnvelopeReader::Incomplete) {
            needed = used;
            break;
        }
        place += quint64(used);
        if (result == EnvelopeReader::Whole) {
            reportSkipped(place - quint64(used));
            reported = place;
            process(bytes + done, used, place, arrivalTime);
        }
        while (place - reported >= LongestSkippedRun)
            reportSkipped(reported + LongestSkippedRun);
        done += used;
    }
    return done;
}

void EnvelopeStreamDecoder::Private::process(const char* bytes, qint64 size, quint64 end, qint64 time)
{
    const std::string_view topic = envelope.topic;
    switch (envelope.kind) {
    case Envelope::Notice: {
        StreamProblem problem;
        problem.kind = StreamProblem::ServerNotice;
        problem.offset = end;
        problem.id = 1;
        problem.text = textOf(envelope.payload);
        sink->processProblem(problem);
        return;
    }
    case Envelope::Gone:
        if (schemas.getState(topic) == EnvelopeSchemas::Unknown && !topics.findKnown(topic))
            endWaiting(QByteArray(topic.data(), int(topic.size())));
        else
            reportGone(textOf(envelope.payload));
        return;
    case Envelope::Message:
        break;
    }
    if (schemas.take(envelope)) {
        releaseWaiting(topic);
        return;
    }
    processMessage(QByteArray::fromRawData(bytes, int(size)), end, time);
}

void EnvelopeStreamDecoder::Private::processMessage(const QByteArray& bytes, quint64 end, qint64 time)
{
    // What says nothing of itself, and is nothing, is what a server is told to forget a message by.
    if (envelope.payload.empty() && envelope.contentType.empty() && envelope.properties.empty()) {
        reportGone(QCoreApplication::translate("Envelopes", "cleared"));
        return;
    }
    ReceivedMessage message = messageOf(envelope, time);
    message.offset = end - envelope.payload.size();
    message.data = envelope.payload.data();
    message.size = int(envelope.payload.size());
    if (nodes.process(envelope, message, sink))
        return;
    int forgotten = 0;
    Topic* const topic = topics.find(envelope.topic, &forgotten);
    if (forgotten > 0)
        reportForgotten(forgotten);
    TopicRule* const rule = ruleOf(topic);
    if (!rule && keepForLater(bytes, end, time))
        return;
    if (!rule)
        return processMessage(bytes, end, time); // nobody waits for its schema any more
    if (rule->found.what == PayloadType::MavlinkFrames)
        return processFrames(topic, message);
    message.info = rule->found.info;
    message.id = rule->id;
    message.sender = rule->sender;
    if (!message.info && !rule->isTold) {
        rule->isTold = true;
        StreamProblem problem;
        problem.kind = StreamProblem::UnusableDefinition;
        problem.offset = message.offset;
        problem.id = rule->id;
        problem.text = textOf(envelope.topic) + QLatin1String(": ") + rule->found.problem;
        sink->processProblem(problem);
    }
    sink->processReceived(message);
}

/** What is known of the payload; null where it waits for a schema. */
TopicRule* EnvelopeStreamDecoder::Private::ruleOf(Topic* topic)
{
    const TopicRule::Claim claim(envelope);
    TopicRule* rule = topic->find(claim);
    if (rule && rule->found.info)
        return rule;
    if (rule && rule->found.what == PayloadType::Undecodable) {
        const bool hasSchemaCome =
            !rule->found.isSchemaKnown && schemas.getState(schemas.topicFor(envelope)) == EnvelopeSchemas::Known;
        const bool mayLook = claim.contentType.empty() && claim.type.empty() && PayloadTypes::mayLook(envelope);
        if (!hasSchemaCome && !mayLook)
            return rule;
    } else if (rule) {
        return rule;
    }
    const PayloadType found = types.find(envelope, schemas);
    if (found.what == PayloadType::SchemaAwaited)
        return nullptr;
    if (!rule) {
        rule = topic->add(claim, found);
    } else if (found.what == PayloadType::Undecodable) {
        rule->found.isSchemaKnown = found.isSchemaKnown;
        return rule;
    }
    rule->found = found;
    rule->sender = names.addSender(senderOf(envelope));
    rule->id = found.info ? names.addType(found.info)
                          : names.addUnknown(QCoreApplication::translate("Envelopes", "%1 (%2, not decodable)")
                                                 .arg(textOf(envelope.topic), found.name),
                                             found.schema);
    return rule;
}

void EnvelopeStreamDecoder::Private::processFrames(Topic* topic, ReceivedMessage message)
{
    FrameSink frames(textOf(envelope.topic), topic, message, &names, sink);
    MavlinkStreamDecoder* const decoder = types.getMavlink();
    decoder->restart(message.offset);
    decoder->feed(message.data, message.size, message.time, &frames);
    decoder->finish(&frames);
}

/** Lets a message wait for its schema; false where that is waited for no longer. */
bool EnvelopeStreamDecoder::Private::keepForLater(const QByteArray& bytes, quint64 end, qint64 time)
{
    const std::string_view schema = schemas.topicFor(envelope);
    const QByteArray copy(bytes.constData(), bytes.size());
    if (schemas.keep(schema, {copy, end, time}))
        return true;
    const Envelope current = envelope;
    endWaiting(QByteArray(schema.data(), int(schema.size())));
    envelope = current;
    return false;
}

void EnvelopeStreamDecoder::Private::endWaiting(const QByteArray& schemaTopic)
{
    const std::string_view topic(schemaTopic.constData(), std::size_t(schemaTopic.size()));
    schemas.setMissing(topic);
    releaseWaiting(topic);
}

/** Processes what waited for a schema. */
void EnvelopeStreamDecoder::Private::releaseWaiting(std::string_view schemaTopic)
{
    for (const EnvelopeSchemas::Waiting& waiting : schemas.release(schemaTopic)) {
        qint64 used = 0;
        EnvelopeReader::read(waiting.bytes.constData(), waiting.bytes.size(), &envelope, &used);
        // What waited long must not seem to be a jump of the clock.
        const bool waitedLong = arrivalTime != Message::NoTime && arrivalTime - waiting.arrivalTime >= LongWait;
        processMessage(waiting.bytes, waiting.end, waitedLong ? arrivalTime : waiting.arrivalTime);
    }
}

/** Tells that what the topic of the envelope had is there no more. */
void EnvelopeStreamDecoder::Private::reportGone(const QString& text)
{
    StreamProblem problem;
    problem.kind = StreamProblem::SenderGone;
    problem.offset = place;
    problem.hasFrame = true;
    problem.text = text;
    const Topic* const topic = topics.findKnown(envelope.topic);
    for (const quint32 sender : topic ? topic->mavlinkSenders.values() : QList<quint32>()) {
        problem.sender = sender;
        sink->processProblem(problem);
    }
    if (topic && !topic->mavlinkSenders.isEmpty())
        return;
    const bool isKnown = topic && !topic->rules.empty();
    problem.sender = isKnown ? topic->rules.back().sender : names.addSender(textOf(envelope.topic));
    problem.id = isKnown ? topic->rules.back().id : 0;
    sink->processProblem(problem);
}

void EnvelopeStreamDecoder::Private::reportForgotten(int count)
{
    StreamProblem problem;
    problem.kind = StreamProblem::ServerNotice;
    problem.offset = place;
    problem.id = 1;
    problem.text =
        QCoreApplication::translate("Envelopes", "there are more than %1 topics: the %2 oldest are forgotten")
            .arg(int(EnvelopeTopics::MostTopics))
            .arg(count);
    sink->processProblem(problem);
}

void EnvelopeStreamDecoder::Private::reportSkipped(quint64 end)
{
    if (reported >= end)
        return;
    StreamProblem problem;
    problem.kind = StreamProblem::SkippedBytes;
    problem.offset = reported;
    problem.length = end - reported;
    reported = end;
    sink->processProblem(problem);
}

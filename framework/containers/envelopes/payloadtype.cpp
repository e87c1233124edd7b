#include "payloadtype.h"

#include "encoding.h"
#include "envelope.h"
#include "envelopeschemas.h"
#include "jsondocument.h"
#include "jsonencoding.h"
#include "mavlinkencoding.h"
#include "mavlinkframe.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "utf8text.h"

#include <QCoreApplication>

namespace
{

const int ShownBytes = 16;

QString textOf(std::string_view bytes)
{
    return Utf8Text::decode(bytes.data(), int(bytes.size()));
}

/** The last level of a topic, which mostly says what it is about. */
QString lastLevel(const QString& topic)
{
    const QChar separator = topic.contains(QLatin1Char('/')) ? QLatin1Char('/') : QLatin1Char('.');
    const QString last = topic.section(separator, -1);
    return last.isEmpty() ? topic : last;
}

/** The encoding of a media type; empty where that says nothing. */
QString encodingOf(std::string_view contentType)
{
    const QString type = textOf(contentType.substr(0, contentType.find(';'))).trimmed().toLower();
    if (type.endsWith(QLatin1String("/json")) || type.endsWith(QLatin1String("+json")))
        return QLatin1String(JsonEncoding::name());
    static const struct
    {
        const char* type;
        const char* encoding;
    } known[] = {{"application/protobuf", "protobuf"},
                 {"application/x-protobuf", "protobuf"},
                 {"application/x-protobuffer", "protobuf"},
                 {"application/cdr", "cdr"},
                 {"application/x-ros1", "ros1"}};
    for (const auto& one : known)
        if (type == QLatin1String(one.type))
            return QLatin1String(one.encoding);
    return QString();
}

/** Counts what is in a payload, and what is wrong. */
class LookSink : public StreamSink
{
public:
    void processReceived(const ReceivedMessage& message) override { known += message.info ? 1 : 0; }
    void processProblem(const StreamProblem&) override { ++problems; }

    int known = 0;
    int problems = 0;
};

char firstOf(std::string_view payload)
{
    const std::size_t first = payload.find_first_not_of(" \t\r\n");
    return first == std::string_view::npos ? '\0' : payload[first];
}

} // namespace

PayloadTypes::PayloadTypes(const StreamOptions& options)
    : m_options(options)
{
}

PayloadTypes::~PayloadTypes() {}

MavlinkStreamDecoder* PayloadTypes::getMavlink()
{
    if (!m_mavlink)
        m_mavlink.reset(new MavlinkStreamDecoder(
            m_options.definitions->get<MavlinkEncoding>()->getDialect(m_options.definitionFile),
            MavlinkStreamDecoder::RawLayout));
    return m_mavlink.get();
}

PayloadType PayloadTypes::find(const Envelope& envelope, const EnvelopeSchemas& schemas)
{
    PayloadType type;
    if (findTold(envelope, schemas, &type) || findMapped(envelope, &type) || findLook(envelope, &type))
        return type;
    const QString told = textOf(envelope.attribute("type"));
    type.name = !told.isEmpty()                 ? told
                : !envelope.contentType.empty() ? textOf(envelope.contentType)
                                                : QCoreApplication::translate("Envelopes", "unknown content");
    type.schema.name = told;
    type.schema.messageEncoding = QByteArray(envelope.contentType.data(), int(envelope.contentType.size()));
    if (type.problem.isEmpty())
        type.problem =
            QCoreApplication::translate("Envelopes", "nothing says what it is; it begins with %1")
                .arg(QString::fromLatin1(
                    QByteArray(envelope.payload.data(), int(qMin<std::size_t>(ShownBytes, envelope.payload.size())))
                        .toHex(' ')
                        .toUpper()));
    return type;
}

bool PayloadTypes::findTold(const Envelope& envelope, const EnvelopeSchemas& schemas, PayloadType* type)
{
    QString encodingName = encodingOf(envelope.contentType);
    const QString typeName = textOf(envelope.attribute("type"));
    const std::string_view schemaTopic = schemas.topicFor(envelope);
    type->schema.name = typeName.isEmpty() ? lastLevel(textOf(envelope.topic)) : typeName;
    if (!schemaTopic.empty()) {
        switch (schemas.getState(schemaTopic)) {
        case EnvelopeSchemas::Unknown:
            type->what = PayloadType::SchemaAwaited;
            return true;
        case EnvelopeSchemas::Missing:
            type->problem =
                QCoreApplication::translate("Envelopes", "its schema, %1, did not come").arg(textOf(schemaTopic));
            break;
        case EnvelopeSchemas::Known:
            const QString name = type->schema.name;
            type->schema = schemas.find(schemaTopic);
            type->isSchemaKnown = true;
            if (type->schema.name.isEmpty())
                type->schema.name = name;
            encodingName = QString::fromLatin1(type->schema.messageEncoding);
            break;
        }
    }
    Encoding* const encoding = encodingName.isEmpty() ? nullptr : m_options.definitions->find(encodingName);
    if (!encoding)
        return false;
    type->schema.messageEncoding = encodingName.toLatin1();
    if (!type->schema.encoding.isEmpty() || encoding->getTraits().isSelfDescribing)
        return makeType(encoding, envelope, type);
    QString error;
    if (!typeName.isEmpty())
        type->info = encoding->findType(typeName, &error);
    if (type->info)
        type->what = PayloadType::SingleMessage;
    else if (type->problem.isEmpty())
        type->problem =
            error.isEmpty() ? QCoreApplication::translate("Envelopes", "nothing says of what type it is") : error;
    return type->info;
}

/** Makes the type that its schema describes, or the payload itself. */
bool PayloadTypes::makeType(Encoding* encoding, const Envelope& envelope, PayloadType* type)
{
    QString error;
    type->info = encoding->makeType(type->schema, &error);
    if (!type->info && encoding->getTraits().isSelfDescribing) {
        type->schema.sample = QByteArray(envelope.payload.data(), int(envelope.payload.size()));
        type->info = encoding->makeType(type->schema, &error);
        type->schema.sample.clear();
    }
    if (!type->info) {
        type->problem =
            QCoreApplication::translate("Envelopes", "the schema %1 cannot be used: %2").arg(type->schema.name, error);
        return false;
    }
    type->what = PayloadType::SingleMessage;
    return true;
}

bool PayloadTypes::findMapped(const Envelope& envelope, PayloadType* type)
{
    const QString topic = textOf(envelope.topic);
    const QString told = m_options.definitions->getTopicType(topic);
    const QString name = told.isEmpty() ? m_options.typeName : told;
    if (name.isEmpty())
        return false;
    if (name == QLatin1String(MavlinkEncoding::name())) {
        type->what = PayloadType::MavlinkFrames;
        return true;
    }
    Encoding* const encoding = m_options.definitions->find(name);
    if (encoding && encoding->getTraits().isSelfDescribing) {
        type->schema = {lastLevel(topic), name.toLatin1(), QByteArray(), QByteArray()};
        return makeType(encoding, envelope, type);
    }
    QString error;
    type->info = m_options.definitions->findType(name, &error);
    if (type->info)
        type->what = PayloadType::SingleMessage;
    else
        type->problem = error;
    return type->info;
}

bool PayloadTypes::mayLook(const Envelope& envelope)
{
    const char first = firstOf(envelope.payload);
    return first == '{' || first == '[' || MavlinkFrame::isMagic(first);
}

bool PayloadTypes::isMavlink(const Envelope& envelope)
{
    if (envelope.payload.empty() || !MavlinkFrame::isMagic(envelope.payload.front()))
        return false;
    LookSink sink;
    getMavlink()->restart(0);
    getMavlink()->feed(envelope.payload.data(), int(envelope.payload.size()), ::Message::NoTime, &sink);
    getMavlink()->finish(&sink);
    return sink.known > 0 && sink.problems == 0;
}

bool PayloadTypes::findLook(const Envelope& envelope, PayloadType* type)
{
    // Who says what it is does not mean something else.
    if (!mayLook(envelope) || !encodingOf(envelope.contentType).isEmpty())
        return false;
    if (isMavlink(envelope)) {
        type->what = PayloadType::MavlinkFrames;
        return true;
    }
    const JsonDocument document(QByteArray(envelope.payload.data(), int(envelope.payload.size())));
    if (document.isEmpty() || !document.at(0).isContainer() || !document.getProblems().isEmpty())
        return false;
    type->schema = {lastLevel(textOf(envelope.topic)), JsonEncoding::name(), QByteArray(), QByteArray()};
    return makeType(m_options.definitions->get<JsonEncoding>(), envelope, type);
}

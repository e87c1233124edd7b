#include "sparkplugnodes.h"

#include "envelope.h"
#include "envelopenames.h"
#include "message.h"
#include "sparkplugbody.h"
#include "sparkplugencoding.h"
#include "sparkplugpayload.h"
#include "streamdecoder.h"
#include "utf8text.h"

#include <QCoreApplication>

namespace
{

const char Namespace[] = "spBv1.0";
const char SessionMetric[] = "bdSeq";

const qint64 MostBytes = 256 * 1024 * 1024;
const int MostUnits = 20000;

// Numbers come round at 256, and lie so far behind one another when a node was born anew that nobody takes that for a
// loss.
const int Modulus = 256;
const int LateNumbers = 16;
const qint64 BirthLeap = Q_INT64_C(1) << 40;

const quint64 LatestTime = Q_UINT64_C(253402300799999); // milliseconds

QString textOf(const QByteArray& utf8)
{
    return Utf8Text::decode(utf8);
}

QString tooMany()
{
    return QCoreApplication::translate("Envelopes", "there are too many nodes and devices");
}

bool isBirth(const QByteArray& kind)
{
    return kind.endsWith("BIRTH");
}

} // namespace

QString SparkplugNodes::Arrival::getTypeName() const
{
    return textOf(device.isEmpty() ? nodeName : nodeName + '/' + device);
}

SparkplugNodes::SparkplugNodes(Definitions* definitions, EnvelopeNames* names)
    : m_definitions(definitions)
    , m_names(names)
{
}

SparkplugNodes::~SparkplugNodes() {}

bool SparkplugNodes::process(const Envelope& envelope, const ReceivedMessage& received, StreamSink* sink)
{
    if (envelope.topic.substr(0, sizeof Namespace) != std::string(Namespace) + '/')
        return false;
    const QList<QByteArray> levels = QByteArray(envelope.topic.data(), int(envelope.topic.size())).split('/');
    static const QList<QByteArray> kinds{"NBIRTH", "NDATA", "NDEATH", "NCMD", "DBIRTH", "DDATA", "DDEATH", "DCMD"};
    const int place = int(kinds.indexOf(levels.value(2)));
    if (place < 0 || levels.size() != (place < 4 ? 4 : 5))
        return false;
    Arrival arrival;
    arrival.nodeName = levels.at(1) + '/' + levels.at(3);
    arrival.device = levels.value(4);
    arrival.kind = levels.at(2);
    ReceivedMessage message = received;
    message.sender = m_names->addSender(textOf(arrival.nodeName));
    QString error;
    if (!arrival.payload.read(envelope.payload))
        error = QCoreApplication::translate("Envelopes", "it is no payload of Sparkplug B");
    if (!error.isEmpty() || !SparkplugBody::unpack(&arrival.payload, &arrival.unpacked, &error)) {
        handOutUnknown(envelope, arrival.getTypeName(), error, message, sink);
        return true;
    }
    if (arrival.payload.timestamp > 0 && arrival.payload.timestamp <= LatestTime)
        message.publishTime = qint64(arrival.payload.timestamp) * 1000;
    if (arrival.kind.endsWith("CMD")) {
        handOutUnknown(envelope, arrival.getTypeName(), QCoreApplication::translate("Envelopes", "it is a command"),
                       message, sink);
        return true;
    }
    std::shared_ptr<Node> node = m_nodes.value(arrival.nodeName);
    if (!node && m_nodes.size() >= MostUnits) {
        handOutUnknown(envelope, arrival.getTypeName(), tooMany(), message, sink);
        return true;
    }
    if (!node)
        node = *m_nodes.insert(arrival.nodeName, std::make_shared<Node>());
    if (arrival.kind == "NDEATH") {
        hasDied(arrival, node.get(), message, sink);
        return true;
    }
    qint64 number = Message::NoSequence;
    if (countNumber(arrival, node.get(), &number) && !received.isKept)
        message.sequence = number;
    if (arrival.kind == "DDEATH") {
        hasDied(arrival, node.get(), message, sink);
        return true;
    }
    if (isBirth(arrival.kind))
        processBirth(arrival, node.get());
    Unit* const unit = arrival.device.isEmpty() ? node->unit.get() : node->devices.value(arrival.device).get();
    if (!unit || !unit->info) {
        handOutUnknown(envelope, arrival.getTypeName(),
                       unit ? unit->error : QCoreApplication::translate("Envelopes", "no birth yet"), message, sink);
        return true;
    }
    if (!isBirth(arrival.kind))
        processData(arrival, node.get(), unit);
    handOut(unit, message, sink);
    return true;
}

/** Accounts for the number of what came, one of those of all that the node and its devices send; false where it has
 * none. */
bool SparkplugNodes::countNumber(const Arrival& arrival, Node* node, qint64* number)
{
    if (!arrival.payload.hasNumber)
        return false;
    const qint64 came = qint64(arrival.payload.number);
    // A node that is born may begin anywhere.
    if (node->number < 0) {
        node->number = came;
    } else if (arrival.kind == "NBIRTH") {
        node->number = (node->number / BirthLeap + 1) * BirthLeap + came;
    } else {
        const qint64 step = (came - qint64(node->lastNumber) + Modulus) % Modulus;
        if (step > Modulus - LateNumbers) { // another way was faster
            *number = node->number + step - Modulus;
            return true;
        }
        // What is not handed out is not missed.
        node->number += arrival.kind == "DDEATH" ? qMax<qint64>(0, step - 1) : step;
    }
    node->lastNumber = quint64(came);
    *number = node->number;
    return true;
}

void SparkplugNodes::processBirth(const Arrival& arrival, Node* node)
{
    if (arrival.device.isEmpty()) {
        for (const std::shared_ptr<Unit>& device : std::as_const(node->devices))
            m_kept -= device->metrics.getSize();
        node->devices.clear();
        node->aliases.clear();
        const Sparkplug::Metric* const session = arrival.payload.find(SessionMetric);
        node->hasSession = session;
        node->session = session ? session->value.number : 0;
        if (!node->unit)
            node->unit.reset(new Unit);
    } else if (!node->devices.contains(arrival.device)) {
        node->devices.insert(arrival.device, std::make_shared<Unit>());
    }
    Unit* const unit = arrival.device.isEmpty() ? node->unit.get() : node->devices.value(arrival.device).get();
    m_kept -= unit->metrics.getSize();
    unit->info = nullptr;
    for (auto alias = node->aliases.begin(); alias != node->aliases.end();)
        alias = alias->first == unit ? node->aliases.erase(alias) : std::next(alias);
    if (m_kept > MostBytes || m_nodes.size() + node->devices.size() > MostUnits) {
        unit->metrics = SparkplugUnit();
        unit->error = tooMany();
        return;
    }
    unit->metrics.setBirth(arrival.payload);
    m_kept += unit->metrics.getSize();
    addAliases(arrival, node, unit);
    const TypeSchema schema{arrival.getTypeName(), JsonEncoding::name(), "jsonschema", unit->metrics.getSchema(),
                            unit->metrics.getJson()};
    unit->info = m_definitions->get<SparkplugEncoding>()->makeType(schema, &unit->error);
}

void SparkplugNodes::addAliases(const Arrival& arrival, Node* node, Unit* unit)
{
    for (const Sparkplug::Metric& metric : arrival.payload.metrics) {
        const int number = metric.hasAlias ? unit->metrics.find(metric.name) : -1;
        if (number >= 0)
            node->aliases.insert(metric.alias, {unit, number});
    }
}

void SparkplugNodes::processData(const Arrival& arrival, Node* node, Unit* unit)
{
    m_kept -= unit->metrics.getSize();
    for (const Sparkplug::Metric& metric : arrival.payload.metrics) {
        // What is told late is not what is.
        if (metric.isHistorical)
            continue;
        int number = metric.name.empty() ? -1 : unit->metrics.find(metric.name);
        if (number < 0 && metric.hasAlias) {
            const QPair<Unit*, int> named = node->aliases.value(metric.alias, {nullptr, -1});
            number = named.first == unit ? named.second : -1;
        }
        if (number >= 0)
            unit->metrics.set(number, metric);
    }
    m_kept += unit->metrics.getSize();
}

/** Tells that a node or a device is gone, unless a node has been born again meanwhile. */
void SparkplugNodes::hasDied(const Arrival& arrival, Node* node, ReceivedMessage message, StreamSink* sink)
{
    const Sparkplug::Metric* const session = arrival.payload.find(SessionMetric);
    if (arrival.device.isEmpty() && session && node->hasSession && session->value.number != node->session)
        return;
    StreamProblem problem;
    problem.kind = StreamProblem::SenderGone;
    problem.offset = message.offset;
    problem.hasFrame = true;
    problem.sender = message.sender;
    if (!arrival.device.isEmpty()) {
        const std::shared_ptr<Unit> device = node->devices.value(arrival.device);
        problem.id = device && device->info ? m_names->addType(device->info) : 0;
        problem.text = QCoreApplication::translate("Envelopes", "the device %1 has ended").arg(textOf(arrival.device));
        if (problem.id == 0)
            return; // nobody has heard of it
    } else {
        problem.text = QCoreApplication::translate("Envelopes", "its connection has ended");
    }
    sink->processProblem(problem);
}

void SparkplugNodes::handOut(const Unit* unit, ReceivedMessage message, StreamSink* sink)
{
    const QByteArray json = unit->metrics.getJson();
    const quint64 end = message.offset + quint64(message.size);
    message.info = unit->info;
    message.id = m_names->addType(unit->info);
    message.data = json.constData();
    message.size = int(json.size());
    message.offset = end - qMin(end, quint64(json.size()));
    sink->processReceived(message);
}

void SparkplugNodes::handOutUnknown(const Envelope& envelope, const QString& name, const QString& why,
                                    ReceivedMessage message, StreamSink* sink)
{
    message.id = m_names->addUnknown(QStringLiteral("%1 (%2)").arg(name, why), TypeSchema());
    if (!m_told.contains(message.id)) {
        m_told.insert(message.id);
        StreamProblem problem;
        problem.kind = StreamProblem::UnusableDefinition;
        problem.offset = message.offset;
        problem.id = message.id;
        problem.text =
            QStringLiteral("%1: %2").arg(Utf8Text::decode(envelope.topic.data(), int(envelope.topic.size())), why);
        sink->processProblem(problem);
    }
    sink->processReceived(message);
}

#include "sendertexts.h"

#include "fieldinfo.h"
#include "fieldwalk.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"

#include <QDateTime>
#include <QReadWriteLock>

#include <vector>

static const int PatienceMs = 1000;
static const int MostPieces = 1000; // senders whose texts are not complete
static const int MostPieceText = 20000;

namespace
{

/** From which number on a text is so bad, in ascending order. */
struct Level
{
    int number;
    Severity severity;
};

typedef std::vector<Level> Scale;

const Scale syslog = {{0, Severity::Emergency},   {1, Severity::Alert},   {2, Severity::Critical},
                      {3, Severity::Error},       {4, Severity::Warning}, {5, Severity::Notice},
                      {6, Severity::Information}, {7, Severity::Debug}};
const Scale ros1 = {{0, Severity::Information}, {1, Severity::Debug}, {2, Severity::Information},
                    {4, Severity::Warning},     {8, Severity::Error}, {16, Severity::Critical}};
const Scale ros2 = {{0, Severity::Information}, {1, Severity::Debug},  {20, Severity::Information},
                    {30, Severity::Warning},    {40, Severity::Error}, {50, Severity::Critical}};
const Scale foxglove = {{0, Severity::Information}, {1, Severity::Debug}, {2, Severity::Information},
                        {3, Severity::Warning},     {4, Severity::Error}, {5, Severity::Critical}};

/** Where a type has what; what is null it does not have. */
struct TextType
{
    const char* type;
    const char* text;
    const char* severity;
    const Scale* scale;
    const char* name;   // of who says it, where the sender is not enough
    const char* number; // of a text that comes in several messages, or 0
    const char* piece;  // from 0
};

const TextType table[] = {
    {"STATUSTEXT", "text", "severity", &syslog, nullptr, "id", "chunk_seq"},
    {"rosgraph_msgs/Log", "msg", "level", &ros1, "name", nullptr, nullptr},
    {"rcl_interfaces/msg/Log", "msg", "level", &ros2, "name", nullptr, nullptr},
    {"foxglove.Log", "message", "level", &foxglove, "name", nullptr, nullptr},
    {"foxglove_msgs/Log", "message", "level", &foxglove, "name", nullptr, nullptr},
    {"foxglove_msgs/msg/Log", "message", "level", &foxglove, "name", nullptr, nullptr},
};

FieldPath pathTo(const MessageInfo* info, const char* field)
{
    FieldPath path(info);
    return field && path.append(QLatin1String(field)) ? path : FieldPath();
}

QString textOf(const FieldWalk& walk)
{
    if (walk.getEnd() == FieldWalk::AllValues && walk.getField()->isStringField())
        return walk.getField()->getStringValue(walk.getHolder());
    const FieldValue value = walk.getValue();
    return value.getKind() == FieldValue::BytesKind ? QString::fromUtf8(value.toBytes()) : value.toText();
}

} // namespace

struct SenderTexts::Reader
{
    const TextType* type;
    FieldPath text;
    FieldPath severity;
    FieldPath name;
    FieldPath number;
    FieldPath piece;
    int field;
};

SenderTexts::SenderTexts(EventCauses* causes, int source, bool isLive, const Name& nameSender)
    : m_causes(causes)
    , m_source(source)
    , m_isLive(isLive)
    , m_nameSender(nameSender)
{
    m_clock.start();
}

SenderTexts::~SenderTexts() = default;

void SenderTexts::look(const ReceivedMessage& message)
{
    const QReadLocker descriptions(m_lock);
    std::shared_ptr<Reader> reader = m_readers.value(message.info);
    for (const TextType& type : table) {
        if (reader || message.info->getName() != QLatin1String(type.type))
            continue;
        const MessageInfo* const info = message.info;
        Reader found = {&type,
                        pathTo(info, type.text),
                        pathTo(info, type.severity),
                        pathTo(info, type.name),
                        pathTo(info, type.number),
                        pathTo(info, type.piece),
                        -1};
        if (found.text.isNull() || found.severity.isNull())
            continue; // another type of that name
        found.field = m_causes->addField(found.text);
        reader = std::make_shared<Reader>(found);
        m_readers.insert(info, reader);
    }
    if (reader)
        read(*reader, message);
    else
        m_others[message.id % m_others.size()] = message.info;
}

// Hidden texts are kept as well: who shows them asks then whether they are hidden.
void SenderTexts::read(const Reader& reader, const ReceivedMessage& received)
{
    const MessageReference message =
        MessageReference::adopt(received.info->newMessage(QByteArray::fromRawData(received.data, received.size)));
    const auto valueOf = [&](const FieldPath& path) {
        return FieldWalk(path, message.get(), FieldWalk::Everything).getValue();
    };
    Event event;
    event.source = m_source;
    event.type = received.info->getName();
    event.sender = m_nameSender(received);
    event.time = received.time;
    event.seen = m_isLive ? QDateTime::currentMSecsSinceEpoch() * 1000 : qint64(Message::NoTime);
    event.field = reader.field;
    const FieldWalk text(reader.text, message.get(), FieldWalk::Everything);
    event.text = textOf(text);
    const FieldInfo* const name = reader.name.getField();
    const QString who = name && !name->isConfidential()
                            ? textOf(FieldWalk(reader.name, message.get(), FieldWalk::Everything))
                            : QString();
    if (!who.isEmpty())
        event.text.prepend(who + QLatin1String(": "));
    const qint64 level = valueOf(reader.severity).toSigned();
    event.severity = reader.type->scale->front().severity;
    for (const Level& least : *reader.type->scale)
        if (level >= least.number)
            event.severity = least.severity;
    const quint64 number = valueOf(reader.number).toUnsigned();
    if (number == 0)
        tell(event);
    else
        addPiece(event, number, valueOf(reader.piece).toUnsigned(),
                 text.getValue(text.getCount() - 1).toUnsigned() == 0);
}

/** Adds to the text of a sender. The last piece does not fill its field. */
void SenderTexts::addPiece(const Event& event, quint64 text, quint64 number, bool isLast)
{
    auto known = m_pieces.find(event.sender);
    if (known != m_pieces.end() &&
        (known->text != text || known->next != number || known->event.text.size() > MostPieceText)) {
        tell(known->event);
        m_pieces.erase(known);
        known = m_pieces.end();
    }
    if (known == m_pieces.end()) {
        if (m_pieces.size() >= MostPieces)
            finish();
        known = m_pieces.insert(event.sender, Piece{text, number, event, 0});
        if (number > 0)
            known->event.text.prepend(QChar(0x2026)); // its beginning was lost
    } else {
        known->event.text += event.text;
    }
    known->next = number + 1;
    known->came = m_clock.elapsed();
    if (!isLast)
        return;
    const Event whole = known->event;
    m_pieces.erase(known);
    tell(whole);
}

void SenderTexts::refresh()
{
    for (auto piece = m_pieces.begin(); piece != m_pieces.end();) {
        if (m_clock.elapsed() - piece->came < PatienceMs) {
            ++piece;
            continue;
        }
        tell(piece->event);
        piece = m_pieces.erase(piece);
    }
}

void SenderTexts::finish()
{
    for (const Piece& piece : std::as_const(m_pieces))
        tell(piece.event);
    m_pieces.clear();
}

void SenderTexts::tell(const Event& event)
{
    const int row = m_causes->add(event);
    if (m_listen)
        m_listen(event, row);
}

#include "fieldpass.h"

#include "fieldinfo.h"
#include "fieldwalk.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "recordingindex.h"
#include "samefield.h"
#include "selectivedecoder.h"

#include <QElapsedTimer>
#include <QReadWriteLock>

#include <algorithm>
#include <cmath>
#include <limits>

namespace
{

const double NoValue = std::numeric_limits<double>::quiet_NaN();
const int ReadTimeoutMs = 100;
const int ShownMs = 100; // after which what there is is handed over
const std::size_t FullPiece = 1 << 15;
const std::size_t MostWaiting = 32;

} // namespace

FieldPass::FieldPass(SourceParts parts, const QVector<FieldPath>& paths, QReadWriteLock* lock)
    : m_paths(paths)
    , m_last(std::size_t(paths.size()))
    , m_lock(lock)
    , m_input(std::move(parts.input), std::move(parts.opener))
{
}

FieldPass::~FieldPass()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_input.cancel();
        m_taken.notify_all();
    }
    wait();
}

bool FieldPass::take(Piece* piece)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_waiting.empty())
        return false;
    *piece = std::move(m_waiting.front());
    m_waiting.pop_front();
    m_taken.notify_all();
    return true;
}

bool FieldPass::isOver() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_ended && m_waiting.empty();
}

QString FieldPass::getErrorString() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_error;
}

double FieldPass::numberOf(const FieldPath& path, const Message* message)
{
    return numberOf(path, FieldWalk(path, message, FieldWalk::Everything).getValue());
}

double FieldPass::numberOf(const FieldPath& path, const FieldValue& value)
{
    const FieldInfo* const field = path.getField();
    if (!value.isNumber() || field->isNotAvailable(value))
        return NoValue;
    const double number = value.toDouble() * field->getScaleFactor();
    return std::isfinite(number) ? number : NoValue;
}

void FieldPass::run()
{
    OpenedStream stream;
    if (open(&stream)) {
        m_decoder = stream.decoder.get();
        if (auto* const selective = dynamic_cast<SelectiveDecoder*>(stream.decoder.get()))
            selective->setTypeFilter([this](const MessageInfo* info) { return info && !wantsOf(info).empty(); });
        read(stream.decoder.get());
        m_decoder = nullptr;
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_ended = true;
}

bool FieldPass::open(OpenedStream* stream)
{
    if (!m_input.open(stream)) {
        fail(m_input.getError());
        return false;
    }
    if (stream->needsIndex && stream->index)
        stream->index->prepare([this](int) { return !m_input.isCancelled(); });
    return !m_input.isCancelled();
}

void FieldPass::read(StreamDecoder* decoder)
{
    QElapsedTimer sinceShown;
    sinceShown.start();
    QByteArray bytes;
    qint64 position = 0;
    while (!m_input.isCancelled()) {
        const ByteInput::Status status = m_input.get()->read(&bytes, ReadTimeoutMs);
        if (status == ByteInput::Failed)
            fail(m_input.get()->getErrorString());
        const QReadLocker descriptions(m_lock);
        // A recording that goes on is read as far as it is there.
        if (status != ByteInput::Data) {
            decoder->finish(this);
            handOverAll();
            return;
        }
        decoder->feed(bytes.constData(), int(bytes.size()), Message::NoTime, this);
        position += bytes.size();
        m_percent = int(100 * position / std::max(position, m_input.get()->getSize()));
        if (sinceShown.hasExpired(ShownMs)) {
            handOverAll();
            sinceShown.start();
        }
    }
}

const FieldPass::Wants& FieldPass::wantsOf(const MessageInfo* info)
{
    const auto known = m_wants.find(info);
    if (known != m_wants.end())
        return known->second;
    Wants wants;
    for (int i = 0; i < int(m_paths.size()); ++i) {
        const FieldPath field = SameField::in(m_paths.at(i), info);
        if (!field.isNull())
            wants.push_back({i, field});
    }
    return m_wants.emplace(info, wants).first->second;
}

void FieldPass::processReceived(const ReceivedMessage& received)
{
    if (!received.info)
        return;
    if (received.info != m_wantedInfo) {
        m_wantedInfo = received.info;
        m_wanted = &wantsOf(received.info);
    }
    if (m_wanted->empty() || received.time == Message::NoTime || m_input.isCancelled())
        return;
    // The bytes stay where they are.
    const MessageReference message =
        MessageReference::adopt(received.info->newMessage(QByteArray::fromRawData(received.data, received.size)));
    for (const Want& want : *m_wanted) {
        const std::size_t i = std::size_t(want.path);
        Piece*& piece = m_last[i].piece;
        if (!piece || m_last[i].sender != received.sender) {
            std::unique_ptr<Piece>& known = m_pieces[quint64(i) << 32 | received.sender];
            if (!known)
                known.reset(new Piece{int(i), m_decoder->getSenderName(received.sender), {}});
            piece = known.get();
            m_last[i].sender = received.sender;
        }
        piece->values.push_back({double(received.time) / 1e6, numberOf(want.field, message.get())});
        if (piece->values.size() >= FullPiece)
            handOver(piece);
    }
}

void FieldPass::handOverAll()
{
    for (const auto& piece : m_pieces)
        if (!piece.second->values.empty())
            handOver(piece.second.get());
}

void FieldPass::handOver(Piece* piece)
{
    Piece full{piece->path, piece->sender, std::move(piece->values)};
    piece->values = std::vector<Value>();
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_waiting.size() >= MostWaiting) {
        // Whoever takes may be waiting to change descriptions.
        m_lock->unlock();
        m_taken.wait(lock, [this] { return m_input.isCancelled() || m_waiting.size() < MostWaiting; });
        lock.unlock();
        m_lock->lockForRead();
        lock.lock();
    }
    m_waiting.push_back(std::move(full));
}

void FieldPass::fail(const QString& text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_error = text;
}

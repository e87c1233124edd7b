#include "fieldreader.h"

#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "recordingindex.h"
#include "samefield.h"
#include "selectivedecoder.h"

static const int ShownMs = 100; // after which what there is is handed over
static const std::size_t FullPiece = 1 << 15;

FieldReader::FieldReader(FieldPass* pass, SourceParts parts)
    : m_pass(pass)
    , m_input(std::move(parts.input), std::move(parts.opener))
    , m_last(std::size_t(pass->m_paths.size()))
{
}

bool FieldReader::open()
{
    if (!m_input.open(&m_stream))
        return false;
    if (m_stream.needsIndex && m_stream.index)
        m_stream.index->prepare([this](int) { return !m_input.isCancelled(); });
    if (auto* const selective = dynamic_cast<SelectiveDecoder*>(m_stream.decoder.get()))
        selective->setTypeFilter([this](const MessageInfo* info) { return info && !wantsOf(info).empty(); });
    return !m_input.isCancelled();
}

void FieldReader::work()
{
    m_sinceShown.start();
    while ((m_section = m_pass->nextSection())) {
        const auto goOn = [this](qint64 bytes) {
            m_pass->m_bytes += bytes;
            if (m_sinceShown.hasExpired(ShownMs)) {
                handOverAll();
                m_sinceShown.start();
            }
            return true;
        };
        const bool isGood = m_input.decode(m_stream, m_section->begin, m_section->end, this, m_pass->m_lock, goOn);
        if (!m_input.getError().isEmpty())
            m_pass->fail(m_input.getError());
        m_pass->m_lock->lockForRead();
        handOverAll();
        m_pass->m_lock->unlock();
        m_pass->endSection(m_section, !isGood);
    }
}

const FieldReader::Wants& FieldReader::wantsOf(const MessageInfo* info)
{
    const auto known = m_wants.find(info);
    if (known != m_wants.end())
        return known->second;
    Wants wants;
    for (int i = 0; i < int(m_pass->m_paths.size()); ++i) {
        const FieldPath field = SameField::in(m_pass->m_paths.at(i), info);
        if (!field.isNull())
            wants.push_back({i, field});
    }
    return m_wants.emplace(info, wants).first->second;
}

void FieldReader::processReceived(const ReceivedMessage& received)
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
        Last& last = m_last[std::size_t(want.path)];
        if (!last.piece || last.sender != received.sender)
            last = {pieceOf(want.path, received.sender), received.sender};
        last.piece->values.push_back({double(received.time) / 1e6, FieldPass::numberOf(want.field, message.get())});
        if (last.piece->values.size() >= FullPiece)
            handOver(last.piece);
    }
}

FieldPass::Piece* FieldReader::pieceOf(int path, quint32 sender)
{
    FieldPass::Piece*& known = m_byKey[quint64(path) << 32 | sender];
    if (!known) {
        m_pieces.emplace_back(new FieldPass::Piece{path, m_stream.decoder->getSenderName(sender), {}});
        known = m_pieces.back().get();
        handOver(known); // of all senders one after the other, whose values come when there are some
    }
    return known;
}

void FieldReader::handOverAll()
{
    for (const auto& piece : m_pieces)
        if (!piece->values.empty())
            handOver(piece.get());
}

void FieldReader::handOver(FieldPass::Piece* piece)
{
    FieldPass::Piece full{piece->path, piece->sender, std::move(piece->values)};
    piece->values = std::vector<FieldPass::Value>();
    m_pass->handOver(m_section, std::move(full));
}

#include "recordingpass.h"

#include "message.h"
#include "messagestatistics.h"
#include "recordingindex.h"

#include <algorithm>

static const int ReadTimeoutMs = 100;
static const int FiguresMs = 250;
static const quint64 MostLead = 16; // bytes before a message that belong to it, and not to a record of their own
static const quint64 MessagesBetweenLooks = 4096; // at the time of day

namespace
{

/** Gives messages, whose bytes go no farther, to who reads texts in them, and then to who counts. */
class HandOn : public StreamSink
{
public:
    HandOn(SenderTexts* texts, StreamRelay* relay)
        : m_texts(texts)
        , m_relay(relay)
    {
    }

    void processReceived(const ReceivedMessage& message) override
    {
        m_texts->SenderTexts::processReceived(message);
        m_relay->StreamRelay::processReceived(message);
    }
    void processProblem(const StreamProblem& problem) override { m_relay->processProblem(problem); }

private:
    SenderTexts* m_texts;
    StreamRelay* m_relay;
};

} // namespace

RecordingPass::RecordingPass(std::unique_ptr<PassInput> input, std::unique_ptr<PassInput> other,
                             const std::function<void()>& tell, QReadWriteLock* lock)
    : m_tell(tell)
    , m_input(std::move(input))
    , m_other(std::move(other))
    , m_isOver(false)
    , m_position(0)
    , m_rowsMet(0)
    , m_texts(&m_said, m_said.addSource(QString()), false,
              [this](const ReceivedMessage& message) { return m_stream.decoder->getSenderName(message.sender); })
    , m_watch(&m_events, m_events.addSource(QString()), false)
    , m_monitor(&m_coordinator)
    , m_time(Message::NoTime)
{
    m_monitor.setListener(&m_watch);
    m_texts.setDescriptionLock(lock);
    m_texts.setListener([this](const Event& event, int row) { m_textMarks.add(event, row); });
    m_watch.setListener([this](const Event& event, int row) { m_faultMarks.add(event, row); });
    m_coordinator.setGapsListed(false); // views ask for those of the types that somebody looks at
}

RecordingPass::~RecordingPass()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_input->cancel();
        if (m_other)
            m_other->cancel();
        m_wake.notify_all();
    }
    if (m_thread.joinable())
        m_thread.join();
}

void RecordingPass::start()
{
    m_thread = std::thread([this] { run(); });
}

bool RecordingPass::takeFigures(OverviewFigures* figures)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_figures)
        return false;
    *figures = std::move(*m_figures);
    m_figures.reset();
    return true;
}

void RecordingPass::run()
{
    if (open()) {
        m_monitor.begin(m_stream.decoder.get());
        m_sinceFigures.start();
        std::thread counting([this] { m_relay.passTo(this); });
        decode();
        m_relay.end();
        counting.join();
        m_monitor.finish();
        gatherEvents();
    }
    if (m_input->isCancelled())
        return;
    closeOther();
    showFigures();
    m_isOver = true;
    m_tell();
    qint64 wish = 0;
    while (m_error.isEmpty() && waitForWish(&wish))
        search(wish);
}

bool RecordingPass::open()
{
    if (!m_input->open(&m_stream)) {
        m_error = m_input->getError();
        return false;
    }
    m_size = m_input->get()->getSize();
    if (!m_stream.index)
        return true;
    if (!m_stream.index->prepare([this](int) { return !m_input->isCancelled(); }))
        return false;
    const qint64 start = m_stream.index->getStartTime();
    if (start != Message::NoTime && m_stream.index->getEndTime() != Message::NoTime) {
        m_density.setSpan(start, m_stream.index->getEndTime());
        for (EventMarks* const marks : {&m_textMarks, &m_faultMarks})
            marks->setSpan(start, m_stream.index->getEndTime());
    }
    return true;
}

/** Puts what both threads found into one list, in the order of time. */
void RecordingPass::gatherEvents()
{
    m_texts.finish();
    const QVector<int> rows = m_events.add(m_said);
    const QVector<int> places = m_events.sortByTime();
    for (const EventMark& mark : m_textMarks.get())
        m_marks.append({mark.time, places.at(rows.at(mark.row))});
    for (const EventMark& mark : m_faultMarks.get())
        m_marks.append({mark.time, places.at(mark.row)});
    std::sort(m_marks.begin(), m_marks.end(),
              [](const EventMark& left, const EventMark& right) { return left.time < right.time; });
}

void RecordingPass::decode()
{
    HandOn sink(&m_texts, &m_relay);
    QByteArray bytes;
    qint64 wish = 0;
    while (!m_input->isCancelled()) {
        if (takeWish(&wish))
            lookBack(wish);
        const ByteInput::Status status = m_input->get()->read(&bytes, ReadTimeoutMs);
        if (!bytes.isEmpty())
            m_stream.decoder->feed(bytes.constData(), int(bytes.size()), Message::NoTime, &sink);
        m_position += quint64(bytes.size());
        if (status == ByteInput::Failed)
            m_error = m_input->get()->getErrorString();
        if (status == ByteInput::End || status == ByteInput::Failed)
            break;
    }
    m_stream.decoder->finish(&sink);
}

void RecordingPass::processReceived(const ReceivedMessage& message)
{
    if (m_input->isCancelled())
        return;
    const int row = m_monitor.getIdentities().rowOf(message);
    m_counters.countMessage(message, row);
    if (message.time != Message::NoTime)
        m_time = message.time;
    m_monitor.countMessage(message, row);
    // A time can stand before its message.
    const bool hasLead = message.offset >= m_end && message.offset - m_end <= MostLead;
    m_density.countMessage(row, message.time, hasLead ? m_end : message.offset);
    m_end = message.offset + quint64(message.size);
    if (std::size_t(row) >= m_times.size()) {
        m_times.resize(std::size_t(row) + 1, Times{Message::NoTime, Message::NoTime});
        m_rowsMet = row + 1;
    }
    if (message.time != Message::NoTime) {
        Times& times = m_times[std::size_t(row)];
        times.last = message.time;
        if (times.first == Message::NoTime)
            times.first = message.time;
    }
    if (++m_messages % MessagesBetweenLooks == 0 && m_sinceFigures.hasExpired(FiguresMs))
        showFigures();
}

void RecordingPass::processProblem(const StreamProblem& problem)
{
    if (m_input->isCancelled())
        return;
    m_monitor.processProblem(problem);
    switch (problem.kind) {
    case StreamProblem::ChecksumFailure:
    case StreamProblem::LengthMismatch:
    case StreamProblem::UnsupportedFrame:
    case StreamProblem::SkippedBytes:
    case StreamProblem::TruncatedFrame:
    case StreamProblem::InputFailure:
        m_density.countDamage(m_time);
        break;
    default:
        break;
    }
}

/** Copies what is known so far for other threads. */
void RecordingPass::showFigures()
{
    std::unique_ptr<OverviewFigures> figures(new OverviewFigures);
    figures->percent = m_size > 0 ? int(double(m_position) / double(m_size) * 100) : 0;
    figures->messages = m_messages;
    figures->density = m_density.getAll();
    figures->damage = m_density.getDamage();
    QHash<int, qint64> lost;
    for (const MessageStatisticsCoordinator::SenderStatistics& sender : m_coordinator.getSenderStatistics())
        lost.insert(sender.sender, sender.numbered ? qint64(sender.lost) : -1);
    const StreamIdentities& identities = m_monitor.getIdentities();
    for (int i = 0; i < int(m_times.size()); ++i) {
        const StreamIdentities::Row& known = identities.getRows().at(i);
        OverviewRow row;
        row.info = known.info;
        row.typeName = known.typeName;
        row.sender = identities.getSenderName(known.sender);
        row.count = m_counters.getCount(i);
        row.bytes = m_counters.getByteCount(i);
        row.firstTime = m_times[std::size_t(i)].first;
        row.lastTime = m_times[std::size_t(i)].last;
        if (const MessageStatistics* const statistics = m_coordinator.find(m_monitor.getStream(), i)) {
            row.interval = statistics->getLastInterval();
            row.isRegular = statistics->isCurrentlyRegular();
            row.gaps = statistics->getNumberOfGaps();
            row.missing = statistics->getNumberOfMissingEpochs();
        }
        row.lost = lost.value(known.sender, -1);
        figures->rows.append(row);
    }
    const std::lock_guard<std::mutex> lock(m_mutex);
    const bool isNew = !m_figures;
    m_figures = std::move(figures);
    m_sinceFigures.start();
    if (isNew)
        m_tell();
}

#include "latestmessagesource.h"

#include "livestream.h"
#include "messageinfo.h"

#include <QElapsedTimer>

#include <algorithm>

static const int SliceMs = 5;
static const int SliceMessages = 32; // after which the clock is looked at

LatestMessageSource::LatestMessageSource(QObject* parent)
    : MessageSource(parent)
{
    m_tick.setSingleShot(true); // started by an arrival: a silent link costs nothing
    setRate(DefaultRate);
    connect(&m_tick, &QTimer::timeout, this, &LatestMessageSource::beginTick);
    m_rest.setSingleShot(true);
    m_rest.setInterval(0);
    connect(&m_rest, &QTimer::timeout, this, &LatestMessageSource::goOn);
}

LatestMessageSource::~LatestMessageSource() = default;

void LatestMessageSource::addSession(const LiveStream* session, LatestMessages* messages)
{
    m_sessions.push_back({session, messages});
}

void LatestMessageSource::removeSession(const LiveStream* session)
{
    for (std::size_t i = 0; i < m_sessions.size(); ++i) {
        if (m_sessions[i].session == session) {
            LatestMessages* const messages = m_sessions[i].messages;
            m_sessions.erase(m_sessions.begin() + std::ptrdiff_t(i));
            forget(messages);
            return;
        }
    }
}

void LatestMessageSource::setSender(const QString& sender)
{
    if (m_sender == sender)
        return;
    m_sender = sender;
    for (const Session& session : m_sessions)
        forgetShown(*session.messages);
    showAgain();
    Q_EMIT senderChanged();
    emitPending(); // also while views stand still: what they show would be another sender's
}

void LatestMessageSource::renameSender(const QString& before, const QString& now)
{
    if (m_sender == before)
        m_sender = now;
}

bool LatestMessageSource::isStandingStill() const
{
    for (const Session& session : m_sessions)
        if (!session.session->isStandingStill())
            return false;
    return !m_sessions.empty();
}

void LatestMessageSource::forgetShown(const LatestMessages& messages)
{
    for (const LatestMessages::Entry& entry : messages.getEntries())
        if (entry.info)
            m_forgotten.insert(entry.info);
}

void LatestMessageSource::forget(LatestMessages* messages)
{
    dropGathered();
    forgetShown(*messages);
    messages->clear();
    showRestOfForgotten();
    if (!m_suspended)
        emitPending();
}

/** What is kept of other rows of types that are forgotten is to be shown once more. */
void LatestMessageSource::showRestOfForgotten()
{
    for (const Session& session : m_sessions) {
        for (LatestMessages::Entry& entry : session.messages->getEntries()) {
            if (!m_forgotten.contains(entry.info))
                continue;
            entry.pending = true;
            session.messages->setPending(true);
        }
    }
}

void LatestMessageSource::showAgain()
{
    for (const Session& session : m_sessions) {
        for (LatestMessages::Entry& entry : session.messages->getEntries())
            entry.pending = true;
        session.messages->setPending(true);
    }
    noteArrival();
}

MessageReference LatestMessageSource::makeMessage(const LiveStream* session, const LatestMessages::Entry& entry) const
{
    if (!entry.info)
        return MessageReference();
    const QString sender = session->getSenderName(entry.row);
    if (!m_sender.isEmpty() && sender != m_sender)
        return MessageReference();
    Message* const message = entry.info->newMessage(entry.data);
    message->setTime(entry.time);
    message->setSequence(entry.sequence);
    message->setSender(sender);
    return MessageReference::adopt(message);
}

MessageReference LatestMessageSource::getLatest(const MessageInfo* info, const QString& sender) const
{
    // Of a thousand senders, looking through everything for each would take long.
    const bool isShownEnough = m_suspended || !sender.isEmpty();
    const MessageReference shown = isShownEnough ? m_shown.value({info, sender}) : MessageReference();
    if (!shown.isNull())
        return shown;
    const QString wanted = sender.isEmpty() ? m_sender : sender;
    const LiveStream* newestSession = nullptr;
    const LatestMessages::Entry* newest = nullptr;
    for (const Session& session : m_sessions) {
        for (const LatestMessages::Entry& entry : std::as_const(*session.messages).getEntries()) {
            if (entry.info != info || (newest && entry.order < newest->order))
                continue;
            if (!wanted.isEmpty() && session.session->getSenderName(entry.row) != wanted)
                continue;
            newestSession = session.session;
            newest = &entry;
        }
    }
    return newest ? makeMessage(newestSession, *newest) : MessageReference();
}

quint64 LatestMessageSource::getOvertakenCount() const
{
    quint64 count = 0;
    for (const Session& session : m_sessions)
        count += session.messages->getOvertakenCount();
    return count;
}

void LatestMessageSource::setRate(int rate)
{
    m_rate = qBound(1, rate, 60);
    m_tick.setInterval(1000 / m_rate);
}

void LatestMessageSource::setSuspended(bool suspended)
{
    m_suspended = suspended;
    if (suspended) {
        m_tick.stop();
        dropGathered();
    } else {
        emitPending();
    }
}

void LatestMessageSource::noteArrival()
{
    if (!m_suspended && !m_tick.isActive() && !m_rest.isActive())
        m_tick.start();
}

void LatestMessageSource::showNow()
{
    if (m_suspended)
        return;
    m_tick.stop();
    beginTick();
}

void LatestMessageSource::beginTick()
{
    gatherPending();
    goOn();
}

void LatestMessageSource::goOn()
{
    emitGathered(SliceMs);
    if (m_next < m_pending.size() && !m_suspended)
        m_rest.start();
    else if (std::any_of(m_sessions.cbegin(), m_sessions.cend(),
                         [](const Session& session) { return session.messages->isPending(); }))
        noteArrival(); // which came meanwhile
}

void LatestMessageSource::emitPending()
{
    gatherPending();
    emitGathered(-1);
}

/** What was gathered and not handed on is still pending where it is kept. */
void LatestMessageSource::dropGathered()
{
    m_rest.stop();
    for (; m_next < m_pending.size(); ++m_next)
        m_pending[m_next].messages->setPending(true);
    m_pending.clear();
    m_next = 0;
}

void LatestMessageSource::gatherPending()
{
    dropGathered();
    for (const Session& session : m_sessions) {
        const QSet<const MessageInfo*> replaced = session.messages->takeReplaced();
        if (replaced.isEmpty())
            continue;
        m_forgotten += replaced;
        showRestOfForgotten();
    }
    QSet<const MessageInfo*> gone;
    gone.swap(m_forgotten);
    for (const MessageInfo* info : std::as_const(gone)) {
        for (auto shown = m_shown.begin(); shown != m_shown.end();)
            shown = shown.key().info == info ? m_shown.erase(shown) : std::next(shown);
        Q_EMIT forgotten(info);
    }
    for (const Session& session : m_sessions) {
        if (!session.messages->isPending())
            continue;
        session.messages->setPending(false);
        QVector<LatestMessages::Entry>& entries = session.messages->getEntries();
        for (int place = 0; place < entries.size(); ++place) {
            LatestMessages::Entry& entry = entries[place];
            if (entry.pending)
                m_pending.push_back({entry.order, session.messages, session.session, place});
            if (entry.isGone && !entry.isGoneTold && entry.info)
                m_gone.append({entry.info, session.session->getSenderName(entry.row)});
            entry.isGoneTold = entry.isGone;
        }
    }
    // In order of arrival, so that of two senders' messages of one type the newer is what a view ends up with.
    std::sort(m_pending.begin(), m_pending.end(), [](const Pending& a, const Pending& b) { return a.order < b.order; });
}

/** Hands on for so long, or all of it; listeners may gather anew meanwhile. */
void LatestMessageSource::emitGathered(int milliseconds)
{
    QElapsedTimer timer;
    timer.start();
    while (m_next < m_pending.size()) {
        if (milliseconds >= 0 && m_next % SliceMessages == SliceMessages - 1 && timer.hasExpired(milliseconds))
            break;
        emitOne(m_pending[m_next++]);
    }
    if (m_next < m_pending.size())
        return;
    QVector<Subject> gone;
    gone.swap(m_gone);
    for (const Subject& subject : std::as_const(gone))
        Q_EMIT senderGone(subject.info, subject.sender);
}

void LatestMessageSource::emitOne(const Pending& pending)
{
    LatestMessages::Entry& entry = pending.messages->getEntries()[pending.place];
    const MessageReference message = makeMessage(pending.session, entry);
    // One that came since is handed on here and, in its order among the others, once more.
    entry.pending = entry.order != pending.order;
    if (entry.pending)
        pending.messages->setPending(true);
    if (message.isNull())
        return;
    m_isRepeating = entry.shown == entry.order;
    entry.shown = entry.order;
    m_shown.insert({message->getInfo(), message->getSender()}, message);
    m_shown.insert({message->getInfo(), QString()}, message);
    const bool isEarlier = entry.isEarlier; // a listener may change what is kept
    Q_EMIT newMessage(message.get());
    m_isRepeating = false;
    if (isEarlier)
        Q_EMIT earlierShown(message->getInfo(), message->getSender());
}

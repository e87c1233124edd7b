#include "latestmessagesource.h"

#include "livestream.h"
#include "messageinfo.h"

#include <algorithm>

LatestMessageSource::LatestMessageSource(QObject* parent)
    : MessageSource(parent)
{
    m_tick.setSingleShot(true); // started by an arrival: a silent link costs nothing
    setRate(DefaultRate);
    connect(&m_tick, &QTimer::timeout, this, &LatestMessageSource::emitPending);
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
            m_overtakenBefore += messages->getOvertakenCount();
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

MessageReference LatestMessageSource::makeMessage(const Session& session, const LatestMessages::Entry& entry) const
{
    if (!entry.info)
        return MessageReference();
    const QString sender = session.session->getSenderName(entry.row);
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
    const Session* newestSession = nullptr;
    const LatestMessages::Entry* newest = nullptr;
    for (const Session& session : m_sessions) {
        for (const LatestMessages::Entry& entry : std::as_const(*session.messages).getEntries()) {
            if (entry.info != info || (newest && entry.order < newest->order))
                continue;
            if (!wanted.isEmpty() && session.session->getSenderName(entry.row) != wanted)
                continue;
            newestSession = &session;
            newest = &entry;
        }
    }
    return newest ? makeMessage(*newestSession, *newest) : MessageReference();
}

quint64 LatestMessageSource::getOvertakenCount() const
{
    quint64 count = m_overtakenBefore;
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
    if (suspended)
        m_tick.stop();
    else
        emitPending();
}

void LatestMessageSource::noteArrival()
{
    if (!m_suspended && !m_tick.isActive())
        m_tick.start();
}

void LatestMessageSource::emitPending()
{
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
    struct Pending
    {
        quint64 order;
        MessageReference message;
    };
    std::vector<Pending> pending;
    QVector<Subject> ended;
    for (const Session& session : m_sessions) {
        if (!session.messages->isPending())
            continue;
        session.messages->setPending(false);
        for (LatestMessages::Entry& entry : session.messages->getEntries()) {
            const MessageReference message = entry.pending ? makeMessage(session, entry) : MessageReference();
            entry.pending = false;
            if (!message.isNull())
                pending.push_back({entry.order, message});
            if (entry.isGone && !entry.isGoneTold && entry.info)
                ended.append({entry.info, session.session->getSenderName(entry.row)});
            entry.isGoneTold = entry.isGone;
        }
    }
    // In order of arrival, so that of two senders' messages of one type the newer is what a view ends up with.
    std::sort(pending.begin(), pending.end(), [](const Pending& a, const Pending& b) { return a.order < b.order; });
    for (const Pending& one : pending) {
        m_shown.insert({one.message->getInfo(), one.message->getSender()}, one.message);
        m_shown.insert({one.message->getInfo(), QString()}, one.message);
        Q_EMIT newMessage(one.message.get());
    }
    for (const Subject& subject : std::as_const(ended))
        Q_EMIT senderGone(subject.info, subject.sender);
}

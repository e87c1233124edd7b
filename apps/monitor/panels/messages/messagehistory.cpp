#include "messagehistory.h"

#include "desk.h"
#include "message.h"
#include "messagelist.h"

#include <algorithm>

static const int ToldMs = 500;

MessageHistory::MessageHistory(Desk* desk, MessageList* list, QObject* parent)
    : QObject(parent)
    , m_desk(desk)
    , m_list(list)
{
    connect(desk->getSources(), &SourceModel::sessionAboutToBeRemoved, this, [this](SourceSession* session) {
        m_leaps.remove(session);
        for (Reading& reading : m_readings)
            if (reading.session == session)
                reading.pass.reset();
    });
}

MessageHistory::~MessageHistory() = default;

MessagePass::Wish MessageHistory::wishOf(const SourceSession* session, const QVector<Subject>& types,
                                         const QString& only)
{
    MessagePass::Wish wish;
    const QString qualifier = session->getQualifier();
    wish.isWanted = [types, only, qualifier](const MessageInfo* info, const QString& sender) {
        const QString name = SourceSession::nameWith(sender, qualifier);
        return (only.isEmpty() || only == name) &&
               std::any_of(types.cbegin(), types.cend(),
                           [&](const Subject& subject) { return subject.covers(info, name); });
    };
    for (const Subject& subject : types)
        wish.types.insert(subject.info);
    wish.place = session->getPlace();
    wish.mostMessages = MessageList::MostMessages;
    wish.mostBytes = MessageList::MostBytes;
    return wish;
}

/** Whether there is anything before the place, as far as is known what comes from where. */
bool MessageHistory::hasAny(const SourceSession* session, const MessagePass::Wish& wish)
{
    const StreamPlace& place = wish.place;
    if (!session->isPlayback() || session->getPath().isEmpty() || !place.isKnown ||
        (place.isSought && place.time <= session->getSource()->getStartTime()))
        return false;
    const StreamIdentities& identities = session->getIdentities();
    for (const StreamIdentities::Row& row : identities.getRows())
        if (wish.types.contains(row.info) && wish.isWanted(row.info, identities.getSenderName(row.sender)))
            return true;
    if (session->getOverview())
        for (const OverviewRow& row : session->getOverview()->getRows())
            if (wish.types.contains(row.info) && wish.isWanted(row.info, row.sender))
                return true;
    return false;
}

bool MessageHistory::isWorthIt(const QVector<Subject>& types, const QString& only) const
{
    for (int i = 0; i < m_desk->getSources()->getCount(); ++i) {
        const SourceSession* const session = m_desk->getSources()->getSession(i);
        if (hasAny(session, wishOf(session, types, only)))
            return true;
    }
    return false;
}

void MessageHistory::begin(const QVector<Subject>& types, const QString& only)
{
    cancel();
    for (int i = 0; i < m_desk->getSources()->getCount(); ++i) {
        SourceSession* const session = m_desk->getSources()->getSession(i);
        m_leaps.insert(session, session->getPlace().leaps);
        const MessagePass::Wish wish = wishOf(session, types, only);
        SourceParts parts;
        SourceParts more;
        QString error;
        if (!hasAny(session, wish))
            continue;
        if (!m_desk->getFactory()->create(session->getOptions(), &parts, &error)) {
            Q_EMIT m_desk->failed(error);
            continue;
        }
        m_desk->getFactory()->create(session->getOptions(), &more, &error); // or it takes longer
        m_readings.push_back({session, std::make_unique<MessagePass>(std::move(parts), std::move(more), wish)});
    }
    if (!m_readings.empty())
        m_list->beginReading();
    for (const Reading& reading : m_readings)
        reading.pass->start();
    m_since.start();
}

void MessageHistory::cancel()
{
    m_readings.clear();
    m_hasCome = false;
    m_isFull = false;
}

/** In the list, what was read takes the place of what had been noted. */
void MessageHistory::noteCome(Reading* reading)
{
    if (reading->hasCome)
        return;
    reading->hasCome = m_hasCome = true;
    QSet<QString> senders;
    const StreamIdentities& identities = reading->session->getIdentities();
    for (int i = 0; i < identities.getSenderCount(); ++i)
        senders.insert(reading->session->qualifiedName(identities.getSenderName(i)));
    m_list->removeNoted([&senders](const QString& sender) { return senders.contains(sender); });
}

void MessageHistory::work()
{
    std::vector<EarlierMessage> messages;
    for (std::size_t i = 0; i < m_readings.size(); ++i) {
        Reading& reading = m_readings[i];
        while (reading.pass && reading.pass->take(&messages)) {
            noteCome(&reading);
            for (EarlierMessage& message : messages)
                message.sender = reading.session->qualifiedName(message.sender);
            m_isFull = m_isFull || reading.pass->isFull();
            if (!m_list->addRead(messages, int(i)))
                reading.pass.reset();
        }
        if (!reading.pass || !reading.pass->isOver())
            continue;
        const QString error = reading.pass->getErrorString();
        if (reading.pass->isGood())
            noteCome(&reading);
        reading.pass.reset();
        if (!error.isEmpty())
            Q_EMIT m_desk->failed(error);
    }
}

bool MessageHistory::isReading() const
{
    return std::any_of(m_readings.cbegin(), m_readings.cend(), [](const Reading& one) { return bool(one.pass); });
}

bool MessageHistory::hasLeapt()
{
    bool hasLeapt = false;
    qint64 first = 0;
    qint64 last = 0;
    for (int i = 0; i < m_desk->getSources()->getCount(); ++i) {
        const SourceSession* const session = m_desk->getSources()->getSession(i);
        const StreamPlace& place = session->getPlace();
        const int before = m_leaps.value(session, 0);
        m_leaps.insert(session, place.leaps);
        if (before == place.leaps || !place.isKnown || place.time == Message::NoTime ||
            place.time <= session->getSource()->getStartTime())
            continue;
        hasLeapt = hasLeapt || !m_list->getTimes(&first, &last) || place.time < first || place.time > last;
    }
    return hasLeapt;
}

QString MessageHistory::getNote() const
{
    for (const Reading& reading : m_readings)
        if (reading.pass && m_since.hasExpired(ToldMs))
            return tr("Reading %1: %2 %").arg(reading.session->getName()).arg(reading.pass->getPercent());
    return QString();
}

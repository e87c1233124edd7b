#include "desk.h"

#include "corvel.h"
#include "language.h"
#include "message.h"

static const int SaidMilliseconds = 5000;

Desk::Desk(QObject* parent)
    : QObject(parent)
    , m_types(&m_coordinator)
    , m_sources(&m_factory, {&m_coordinator, &m_events, &m_latest, &m_tap})
{
    m_coordinator.setGapsListed(false); // before anybody unfolds them
    connect(&m_sources, &SourceModel::sessionAdded, this, &Desk::addSession);
    connect(&m_sources, &SourceModel::sessionAboutToBeRemoved, &m_types, &MessageTypeModel::removeSession);
    connect(&m_sources, &SourceModel::sessionRemoved, this, &Desk::chosenSourceChanged);
}

Desk::~Desk()
{
    m_sources.closeAll(); // while there is what they report to
}

void Desk::addSession(SourceSession* session)
{
    m_types.addSession(session);
    connect(session, &SourceSession::formatChanged, &m_sources, &SourceModel::followFormats);
    connect(session, &SourceSession::recordingFailed, this, &Desk::failed);
    connect(session, &SourceSession::problem, this, &Desk::problem);
    connect(session, &SourceSession::recovered, this, &Desk::recovered);
    connect(session, &SourceSession::overviewGrown, this, [this, session]() { Q_EMIT overviewGrown(session); });
    connect(session, &SourceSession::overviewEnded, this, [this, session]() { Q_EMIT overviewEnded(session); });
    // A sender that was chosen stays so when its name tells its source, or tells it no longer.
    connect(session, &SourceSession::senderRenamed, this, [this](const QString& before, const QString& now) {
        m_latest.renameSender(before, now);
        m_types.renameSender(before, now);
        for (Subject& chosen : m_chosenTypes)
            if (chosen.sender == before)
                chosen.sender = now;
        Q_EMIT senderRenamed(before, now);
    });
}

void Desk::refresh()
{
    m_sources.refresh();
    if (!m_isPaused)
        m_types.refresh();
}

SourceSession* Desk::getChosenSource() const
{
    return m_sources.rowOf(m_chosenSource) >= 0 ? m_chosenSource.data() : m_sources.getSession(0);
}

void Desk::chooseSource(SourceSession* session)
{
    m_chosenSource = session;
    Q_EMIT chosenSourceChanged();
}

void Desk::chooseTypes(const QVector<Subject>& types)
{
    m_chosenTypes = types;
    Q_EMIT chosenTypesChanged();
}

void Desk::chooseMessage(const MessageReference& message)
{
    m_chosenMessage = message;
    Q_EMIT chosenMessageChanged();
}

void Desk::setCurrentField(const FieldPath& path, const Subject& subject)
{
    if (path == m_currentField && subject == m_currentSubject)
        return;
    m_currentField = path;
    m_currentSubject = subject;
    Q_EMIT currentFieldChanged();
}

RecordingOverview* Desk::getOverview(const SourceSession* session)
{
    return session ? session->getOverview() : nullptr;
}

SourceSession* Desk::findRecording(qint64 time)
{
    QVector<SourceSession*> candidates(1, getChosenSource());
    for (int i = 0; i < m_sources.getCount(); ++i)
        candidates.append(m_sources.getSession(i));
    for (SourceSession* const session : std::as_const(candidates)) {
        const StreamSource* const source = session ? session->getSource() : nullptr;
        if (source && source->isSeekable() && time >= source->getStartTime() && time <= source->getEndTime())
            return session;
    }
    return nullptr;
}

void Desk::jumpTo(qint64 time)
{
    SourceSession* const session = time == Message::NoTime ? nullptr : findRecording(time);
    if (session)
        jumpTo(session, time);
    else
        Q_EMIT said(tr("No recording that is open has this time."), SaidMilliseconds);
}

void Desk::jumpTo(SourceSession* session, qint64 time)
{
    session->getSource()->setPaused(true); // who wants to see a place would not see it pass by
    session->getSource()->seek(time);
}

void Desk::setPaused(bool paused)
{
    m_isPaused = paused;
    Q_EMIT pausedChanged(paused);
    m_latest.setSuspended(m_isPaused || !m_isVisible);
}

void Desk::setVisible(bool visible)
{
    m_isVisible = visible;
    m_latest.setSuspended(m_isPaused || !m_isVisible);
}

void Desk::setPreferences(const Preferences& preferences)
{
    const Preferences before = m_preferences;
    m_preferences = preferences;
    m_latest.setRate(preferences.tickRate);
    if (preferences.theme != before.theme)
        Theme::apply(preferences.theme);
    if (preferences.language != before.language)
        Language::install(preferences.language);
    if (preferences.decimals != Corvel::floatingPointDecimals()) {
        Corvel::setFloatingPointDecimals(preferences.decimals);
        renew(); // also while nothing new is shown
    }
    if (preferences.annotations != before.annotations && !preferences.annotations.isEmpty())
        Q_EMIT annotationsRequested(preferences.annotations);
    Q_EMIT preferencesChanged();
}

void Desk::setConfidentialShown(bool shown)
{
    Corvel::setConfidentialInformationDisplayEnabled(shown);
    renew();
}

void Desk::offerUse(const FieldUse& use)
{
    m_fieldUses.append(use);
    Q_EMIT fieldUseOffered(use);
}

bool Desk::wish(const QString& use, const QString& expression, QString* fault)
{
    for (const FieldUse& offered : std::as_const(m_fieldUses)) {
        if (offered.name != use)
            continue;
        const QString wrong = offered.wish(expression);
        if (fault)
            *fault = wrong;
        return true;
    }
    return false;
}

#include "opener.h"

#include "desk.h"
#include "filefilters.h"

#include <QFileInfo>

Opener::Opener(Desk* desk, QObject* parent)
    : QObject(parent)
    , m_desk(desk)
{
    connect(desk, &Desk::annotationsRequested, this, &Opener::loadAnnotations);
}

bool Opener::loadDialect(const QString& path, const QString& annotations)
{
    QStringList problems;
    const bool loaded = m_desk->getFactory()->loadDefinitions(path, &problems);
    if (!annotations.isEmpty())
        m_desk->getFactory()->annotate(annotations, &problems);
    if (!problems.isEmpty())
        Q_EMIT m_desk->failed((loaded ? tr("The annotations have faults; the rest of them is used.")
                                      : tr("The definitions could not be loaded.")) +
                              QLatin1String("\n\n") + problems.join(QLatin1Char('\n')));
    for (int i = 0; loaded && i < m_desk->getSources()->getCount(); ++i)
        m_desk->getSources()->getSession(i)->useNewDefinitions();
    return loaded;
}

bool Opener::loadAnnotations(const QString& path)
{
    QStringList problems;
    const bool good = m_desk->getFactory()->annotate(path, &problems);
    m_desk->renew(); // what is annotated may be shown already
    if (!good)
        Q_EMIT m_desk->failed(tr("The annotations have faults; the rest of them is used.") + QLatin1String("\n\n") +
                              problems.join(QLatin1Char('\n')));
    return good;
}

bool Opener::openAll(const QStringList& addresses)
{
    QStringList errors;
    for (const QString& address : addresses) {
        if (FileFilters::isDefinitions(*m_desk->getFactory()->getDefinitions(), address)) {
            loadDialect(address, QString()); // says itself what is wrong
            continue;
        }
        SourceOptions options = m_definitions;
        options.address = address;
        QString error;
        if (!open(options, &error))
            errors.append(error);
    }
    if (!errors.isEmpty())
        Q_EMIT m_desk->failed(errors.join(QLatin1Char('\n')));
    return errors.isEmpty();
}

static bool isUnrecognized(const SourceSession* session)
{
    const QFileInfo file(session->getPath());
    return session->getState() == SourceSession::Failed && file.isFile() && file.size() > 0 &&
           !session->getSource()->getDecoder()->getContainer();
}

SourceSession* Opener::open(const SourceOptions& options, QString* error)
{
    const QPointer<SourceSession> demonstration = m_demonstration;
    StreamSource::Playback playback = m_playback;
    if (options.rate > 0) {
        playback.messagesPerSecond = options.rate;
        playback.factor = 1;
    }
    SourceSession* const session = m_desk->getSources()->open(options, playback, error);
    if (!session)
        return nullptr;
    // One that somebody records has become more than a demonstration.
    if (demonstration && !demonstration->getRecorder().isRecording())
        m_desk->getSources()->close(demonstration.data());
    m_demonstration = nullptr;
    connect(session, &SourceSession::problem, this, [this, session]() {
        if (isUnrecognized(session))
            Q_EMIT schemaMissing(session);
    });
    Q_EMIT m_desk->recovered();
    Q_EMIT opened(session);
    return session;
}

void Opener::openSimulation(bool untilAnother, const Demonstration* demonstration)
{
    SourceOptions options;
    options.demonstration = demonstration;
    QString error;
    SourceSession* const session = open(options, &error);
    if (untilAnother)
        m_demonstration = session;
}

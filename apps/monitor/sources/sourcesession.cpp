#include "sourcesession.h"

#include "formatinfo.h"
#include "latestmessagesource.h"
#include "message.h"
#include "messagestatisticscoordinator.h"
#include "playbacktime.h"

static const int LongestWait = 30;
static const int LeastRateMilliseconds = 1000;

static const int SilentSeconds = 5; // without anything, until people are told

static int s_second = 1000;

SourceSession::SourceSession(const SourceOptions& options, SourceFactory* factory, const Receivers& receivers,
                             QObject* parent)
    : QObject(parent)
    , m_options(options)
    , m_factory(factory)
    , m_receivers(receivers)
    , m_recorder(factory->getDefinitions())
    , m_tap(receivers.tap, this)
    , m_reception(new ReceptionMonitor(receivers.coordinator))
{
    connect(&m_retryTimer, &QTimer::timeout, this, &SourceSession::countDown);
    connect(&m_recorder, &Recorder::failed, this, [this](const QString& text) {
        m_watch->add(Severity::Error, text);
        Q_EMIT recordingFailed(text);
        Q_EMIT changed();
    });
    m_receivers.latest->addSession(this, &m_latest);
}

SourceSession::~SourceSession()
{
    m_receivers.latest->removeSession(this);
    if (m_reception->getStream() >= 0) {
        m_reception->finish();
        m_receivers.coordinator->removeStream(m_reception->getStream());
    }
}

void SourceSession::setSecondOfWaiting(int milliseconds)
{
    s_second = milliseconds;
}

void SourceSession::open(const QString& name, SourceParts parts, const StreamSource::Playback& playback)
{
    m_name = name;
    m_eventSource = m_receivers.events->addSource(name);
    m_watch.reset(new EventWatch(m_receivers.events, m_eventSource, true));
    m_reception->setListener(m_watch.get());
    m_texts.reset(new SenderTexts(m_receivers.events, m_eventSource, true, [this](const ReceivedMessage& message) {
        return m_identities.getSenderName(m_identities.getRows().at(message.row).sender);
    }));
    m_path = parts.path;
    m_live = parts.isLive;
    m_datagram = parts.isDatagram;
    m_playback = playback;
    start(std::move(parts), false);
}

void SourceSession::start(SourceParts parts, bool paused)
{
    m_retryTimer.stop();
    m_tap.begin();
    std::unique_ptr<StreamSource> source(new StreamSource(parts.input.release(), parts.opener.release()));
    source->setIdentities(&m_identities);
    if (m_source)
        source->setCounters(m_source->getCounters());
    source->setPlayback(m_playback);
    m_reception->follow(source.get(), m_name);
    source->addObserver(&m_latest);
    source->addObserver(&m_recorder);
    m_recorder.setDecoder(source->getDecoder());
    source->addObserver(&m_tap);
    source->addObserver(m_texts.get());
    connect(source.get(), &StreamSource::received, m_receivers.latest, &LatestMessageSource::noteArrival);
    connect(source.get(), &StreamSource::stateChanged, this, &SourceSession::processState);
    connect(source.get(), &StreamSource::sought, this, &SourceSession::processSought);
    connect(source.get(), &StreamSource::decoderChanged, this, &SourceSession::processDecoderChange);
    connect(source.get(), &StreamSource::recognized, this, &SourceSession::formatChanged);
    connect(source.get(), &StreamSource::datagramsDropped, this, [this](qint64 count) { m_dropped += count; });
    connect(source.get(), &StreamSource::problem, this, &SourceSession::problem);
    connect(source.get(), &StreamSource::received, this, [this]() { m_lastArrival = QDateTime::currentDateTimeUtc(); });
    m_source = std::move(source);
    m_lastArrival = QDateTime();
    m_sinceRate.start();
    if (paused) {
        m_source->setPaused(true);
        m_source->step();
    }
    m_source->start();
}

bool SourceSession::startRecording(const QString& path, QString* error)
{
    if (!m_recorder.start(path, m_source->getDecoder(), error))
        return false;
    m_watch->add(Severity::Information, tr("recording to %1").arg(path));
    Q_EMIT changed();
    return true;
}

void SourceSession::stopRecording()
{
    if (!m_recorder.isRecording())
        return;
    const QString path = m_recorder.getPath();
    const QString problem = m_recorder.stop();
    if (problem.isEmpty())
        m_watch->add(Severity::Information, tr("recorded to %1").arg(path));
    else
        m_watch->add(Severity::Error, tr("the end of %1 could not be written: %2").arg(path, problem));
    if (!problem.isEmpty())
        Q_EMIT recordingFailed(tr("The end of %1 could not be written: %2.").arg(path, problem));
    Q_EMIT changed();
}

bool SourceSession::isStandingStill() const
{
    return isPlayback() && (m_source->isPaused() || m_state == Ended);
}

bool SourceSession::isPlayback() const
{
    return m_source && !m_live && m_source->getState() >= StreamSource::Running && !m_source->isLive();
}

double SourceSession::getAge(int row) const
{
    const qint64 time = m_latest.getTime(row);
    // Live streams may carry the times of another clock, by which nothing but their own newest message tells the time.
    const bool isOfArrival = !isPlayback() && !m_source->getDecoder()->hasTimes();
    const qint64 now = isOfArrival ? QDateTime::currentMSecsSinceEpoch() * 1000 : m_source->getCurrentTime();
    return time == Message::NoTime || now == Message::NoTime ? -1 : double(qMax<qint64>(0, now - time)) / 1e6;
}

void SourceSession::useNewDefinitions()
{
    if (std::unique_ptr<StreamDecoder> decoder = m_factory->createDecoder(m_options, m_source->getDecoder()))
        m_source->setDecoder(decoder.release());
}

void SourceSession::processDecoderChange()
{
    const std::unique_ptr<StreamDecoder> decoder = m_factory->createMessageDecoder(m_options, m_source->getDecoder());
    m_receivers.latest->forgetShown(m_latest);
    const QHash<quint32, const MessageInfo*> infos =
        decoder ? m_latest.decodeAnew(decoder.get()) : QHash<quint32, const MessageInfo*>();
    m_identities.changeTypes(infos);
    ReceptionCounters counters = m_source->getCounters();
    counters.changeTypes(m_identities);
    m_source->setCounters(counters);
    m_reception->changeTypes(m_source->getDecoder());
    m_recorder.setDecoder(m_source->getDecoder());
    m_receivers.latest->noteArrival();
    m_watch->add(Severity::Information, tr("other definitions (%1); what came before was counted without them")
                                            .arg(m_source->getDecoder()->getFormats().constFirst()->getName()));
    if (m_overview)
        startOverview();
    Q_EMIT formatChanged();
    Q_EMIT changed();
}

void SourceSession::startOverview()
{
    const auto open = [this]() {
        SourceParts parts;
        QString error;
        return m_factory->create(m_options, &parts, &error)
                   ? std::make_unique<PassInput>(std::move(parts.input), std::move(parts.opener))
                   : nullptr;
    };
    m_overview.reset();
    if (std::unique_ptr<PassInput> input = open()) { // else the stream has told
        m_overview.reset(new RecordingOverview(std::move(input), open(), m_factory->getDefinitions(),
                                               m_factory->getDescriptionLock()));
        connect(m_overview.get(), &RecordingOverview::grown, this, &SourceSession::overviewGrown);
        connect(m_overview.get(), &RecordingOverview::ended, this, &SourceSession::overviewEnded);
        connect(m_overview.get(), &RecordingOverview::annotationProblem, this, [this](const QString& text) {
            StreamProblem problem;
            problem.kind = StreamProblem::FaultyAnnotation;
            problem.id = ++m_annotationProblems;
            problem.text = text;
            m_reception->processProblem(problem);
        });
        connect(m_overview.get(), &RecordingOverview::foundBefore, this, &SourceSession::takeEarlier);
        m_overview->start();
    }
    Q_EMIT overviewGrown();
}

/** Shows what was there before the place to which the recording was taken, where nothing newer has come. */
void SourceSession::takeEarlier(qint64 time, const QVector<EarlierMessage>& messages)
{
    if (time != m_soughtTime)
        return;
    QVector<LatestMessages::Entry> entries;
    for (const EarlierMessage& message : messages) {
        LatestMessages::Entry entry;
        entry.info = message.info;
        entry.id = message.id;
        entry.row = m_identities.rowOf(message.info, message.typeName, message.id, message.sender);
        entry.data = message.data;
        entry.time = message.time;
        entry.sequence = message.sequence;
        entries.append(entry);
    }
    m_latest.addEarlier(entries);
    m_receivers.latest->showNow();
}

void SourceSession::processSought(qint64 time)
{
    m_receivers.latest->forget(&m_latest);
    m_texts->finish();
    if (m_stepsBack)
        m_reception->startAnew(tr("stepped back; counts and statistics begin there"));
    else
        m_reception->startAnew(tr("jumped to %1; counts and statistics begin there").arg(PlaybackTime::clockText(time)),
                               tr("jumped to another place; counts and statistics begin there"));
    m_stepsBack = false;
    m_soughtTime = time;
    m_tap.leap(time);
    if (m_overview)
        m_overview->findBefore(time);
    Q_EMIT changed();
}

void SourceSession::stepBack()
{
    if (!m_source->isSeekable())
        return;
    m_stepsBack = true;
    m_source->setPaused(true);
    m_source->stepBack();
}

void SourceSession::reconnect(bool paused)
{
    SourceParts parts;
    QString error;
    if (m_factory->create(m_options, &parts, &error)) {
        m_retrySeconds = 0;
        if (!m_live) { // a recording is read from its beginning
            m_reception->startAnew(tr("read again from the beginning"));
            m_receivers.latest->forget(&m_latest);
            m_source->setCounters(ReceptionCounters());
        }
        start(std::move(parts), paused);
        return;
    }
    m_error = error;
    setState(Failed);
    scheduleRetry();
}

void SourceSession::processState(int state)
{
    switch (state) {
    case StreamSource::Idle:
    case StreamSource::Opening:
        setState(Opening);
        break;
    case StreamSource::Running:
        if (!m_error.isEmpty())
            Q_EMIT recovered();
        m_error.clear();
        setState(Receiving);
        if (!m_overview && isPlayback() && !m_path.isEmpty() && m_source->getSize() > 0)
            startOverview();
        break;
    case StreamSource::Finished:
        m_texts->finish();
        setState(Ended);
        scheduleRetry();
        break;
    case StreamSource::Failed:
        m_texts->finish();
        m_error = m_source->getErrorString();
        if (m_error.startsWith(m_options.address + QLatin1String(": "))) // the name stands beside it
            m_error.remove(0, m_options.address.size() + 2);
        setState(Failed);
        if (!m_live) // nobody tries again
            Q_EMIT problem(m_source->getErrorString());
        scheduleRetry();
        break;
    }
}

void SourceSession::scheduleRetry()
{
    if (!m_live)
        return;
    m_retrySeconds = qBound(1, 2 * m_retrySeconds, LongestWait);
    m_secondsLeft = m_retrySeconds;
    m_retryTimer.start(s_second);
    setState(Waiting);
}

void SourceSession::countDown()
{
    if (--m_secondsLeft > 0) {
        Q_EMIT changed();
        return;
    }
    const int wait = m_retrySeconds;
    reconnect();
    m_retrySeconds = wait; // until something is received
}

void SourceSession::setState(State state)
{
    m_state = state;
    Q_EMIT changed();
}

SourceSession::Standing SourceSession::getStanding() const
{
    switch (m_state) {
    case Opening:
        return BeingOpened;
    case Ended:
        return m_source->isStopped() ? Stopped : Over;
    case Failed:
        return Lost;
    case Waiting:
        return Retrying;
    case Receiving:
        break;
    }
    if (isPlayback())
        return m_source->isPaused() ? Paused : Playing;
    if (m_lastArrival.isNull())
        return m_datagram ? Listening : Connected;
    return m_lastArrival.msecsTo(QDateTime::currentDateTimeUtc()) < qint64(SilentSeconds) * s_second ? Coming : Silent;
}

QString SourceSession::getStateText() const
{
    switch (getStanding()) {
    case BeingOpened: {
        const int percent = m_source->getPreparedPercent();
        return percent < 0 ? tr("opening") : tr("looking through it, %1 %").arg(percent);
    }
    case Listening:
        return tr("listening");
    case Connected:
        return tr("connected");
    case Coming:
        return tr("receiving");
    case Silent:
        return tr("silent since %1").arg(m_lastArrival.toLocalTime().toString(QLatin1String("HH:mm:ss")));
    case Playing:
        return tr("playing");
    case Paused:
        return tr("paused");
    case Stopped:
        return tr("stopped");
    case Over:
        return tr("ended");
    case Lost:
        return tr("failed: %1").arg(m_error);
    case Retrying:
        if (m_error.isEmpty())
            return tr("ended, again in %1 s").arg(m_secondsLeft);
        return tr("again in %1 s: %2").arg(m_secondsLeft).arg(m_error);
    }
    return QString();
}

QString SourceSession::nameWith(const QString& sender, const QString& qualifier)
{
    if (qualifier.isNull())
        return sender;
    return sender.isEmpty() ? qualifier : tr("%1 @ %2", "sender and source").arg(sender, qualifier);
}

QString SourceSession::getSenderName(int row) const
{
    return qualifiedName(m_identities.getSenderName(m_identities.getRows().at(row).sender));
}

void SourceSession::setQualified(bool qualified)
{
    if (m_qualified == qualified)
        return;
    QStringList before;
    for (int i = 0; i < m_identities.getSenderCount(); ++i)
        before.append(qualifiedName(m_identities.getSenderName(i)));
    m_qualified = qualified;
    for (int i = 0; i < before.size(); ++i)
        Q_EMIT senderRenamed(before.at(i), qualifiedName(m_identities.getSenderName(i)));
    m_receivers.coordinator->setStreamLabel(m_reception->getStream(), qualified ? m_name : QString());
    m_receivers.latest->showAgain();
    Q_EMIT changed();
}

void SourceSession::setPlayback(const StreamSource::Playback& playback)
{
    m_playback = playback;
    m_source->setPlayback(playback);
}

void SourceSession::refresh()
{
    m_reception->refresh();
    m_texts->refresh();
    const qint64 elapsed = m_sinceRate.elapsed();
    if (elapsed < LeastRateMilliseconds)
        return;
    m_sinceRate.restart();
    if (m_dropped > 0) {
        m_watch->add(Severity::Warning,
                     tr("a datagram was dropped by the system: they came faster than they could be taken"),
                     quint64(m_dropped));
        m_dropped = 0;
    }
    const ReceptionCounters& counters = getCounters();
    const quint64 messages = counters.getMessageCount() + counters.getUnknownCount();
    const double seconds = double(elapsed) / 1000;
    // Counters that began anew say nothing for the moment.
    m_messageRate = messages >= m_rateMessages ? double(messages - m_rateMessages) / seconds : 0;
    m_byteRate = counters.getByteCount() >= m_rateBytes ? double(counters.getByteCount() - m_rateBytes) / seconds : 0;
    if (messages > m_rateMessages)
        m_retrySeconds = 0;
    m_rateMessages = messages;
    m_rateBytes = counters.getByteCount();
}

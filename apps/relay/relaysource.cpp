#include "relaysource.h"

#include "inputkind.h"
#include "streamopener.h"

static const int LongestPause = 30;

RelaySource::RelaySource(const InputAddress& address, const StreamOptions& options, double speed, StreamSink* sink)
    : m_address(address)
    , m_options(options)
    , m_speed(speed)
    , m_sink(sink)
{
    m_retryTimer.setSingleShot(true);
    connect(&m_retryTimer, &QTimer::timeout, this, &RelaySource::start);
}

RelaySource::~RelaySource() {}

void RelaySource::start()
{
    std::unique_ptr<StreamSource> source(
        new StreamSource(ByteInput::create(m_address), new StreamOpener(m_address, m_options)));
    source->setIdentities(&m_identities);
    StreamSource::Playback playback;
    playback.factor = m_speed;
    source->setPlayback(playback);
    source->addObserver(m_sink);
    connect(source.get(), &StreamSource::recognized, this, &RelaySource::recognized);
    connect(source.get(), &StreamSource::received, this, &RelaySource::received);
    connect(source.get(), &StreamSource::problem, this, &RelaySource::told);
    connect(source.get(), &StreamSource::stateChanged, this, &RelaySource::processState, Qt::QueuedConnection);
    m_source = std::move(source);
    ++m_run;
    m_source->setPaused(m_paused);
    m_source->start();
}

void RelaySource::setPaused(bool paused)
{
    if (paused == m_paused)
        return;
    m_paused = paused;
    m_source->setPaused(paused);
}

void RelaySource::stop()
{
    m_isEnded = true;
    m_retryTimer.stop();
    m_source->stop();
}

void RelaySource::finish()
{
    if (m_address.session.isEmpty() || m_source->getState() != StreamSource::Running)
        return stop();
    m_isFinishing = true;
    m_source->finish();
}

void RelaySource::processState(int state)
{
    if (m_isEnded || sender() != m_source.get())
        return;
    if (state == StreamSource::Running) {
        m_pause = 0;
        return;
    }
    if (state != StreamSource::Finished && state != StreamSource::Failed)
        return;
    if (m_isFinishing)
        return stop();
    const bool hasFailed = state == StreamSource::Failed;
    const QString reason = hasFailed ? m_source->getErrorString() : m_address.toString() + QLatin1String(": ended");
    // A server that keeps a session is there again, or lets others in, sooner or later.
    if (m_address.kind->isLive() || (hasFailed && !m_address.session.isEmpty())) {
        lose(reason);
        return;
    }
    m_isEnded = true;
    m_hasFailed = hasFailed;
    if (hasFailed)
        Q_EMIT told(reason);
    Q_EMIT ended();
}

void RelaySource::lose(const QString& reason)
{
    m_pause = qBound(1, 2 * m_pause, LongestPause);
    Q_EMIT told(QStringLiteral("%1; trying again in %2 s").arg(reason).arg(m_pause));
    m_retryTimer.start(1000 * m_pause);
}

#ifndef RELAYSOURCE_H
#define RELAYSOURCE_H

#include "byteinput.h"
#include "container.h"
#include "streamidentities.h"
#include "streamsource.h"

#include <QObject>
#include <QTimer>

#include <memory>

/**
 * An input that is read on a thread of its own. A live one that is lost is opened again, after a pause that grows from
 * one second to half a minute; a recording ends.
 */
class RelaySource : public QObject
{
    Q_OBJECT

public:
    /** @param sink  gets what comes, on this thread; must outlive this object */
    RelaySource(const InputAddress& address, const StreamOptions& options, double speed, StreamSink* sink);
    ~RelaySource() override;

    const InputAddress& getAddress() const { return m_address; }
    const StreamDecoder* getDecoder() const { return m_source->getDecoder(); }
    const StreamIdentities& getIdentities() const { return m_identities; }
    bool isEnded() const { return m_isEnded; }
    bool hasFailed() const { return m_hasFailed; }

    void start();
    /** Holds a recording before its next message, or lets it go on. */
    void setPaused(bool paused);
    void stop();
    /** Ends it; one with a session when all was confirmed that it has handed out. */
    void finish();

    /** How many times it was opened. */
    int getRun() const { return m_run; }
    /** See ByteInput::confirm(); of this run. */
    quint64 getHandedOut() const { return m_source->getHandedOut(); }
    void confirm(quint64 offset) { m_source->confirm(offset); }

Q_SIGNALS:
    /** What it is that comes is known. */
    void recognized();
    /** Messages were handed out. */
    void received();
    /** It is over for good. */
    void ended();
    /** One line for people. */
    void told(const QString& text);

private:
    void processState(int state);
    void lose(const QString& reason);

    const InputAddress m_address;
    const StreamOptions m_options;
    const double m_speed;
    StreamSink* m_sink;
    StreamIdentities m_identities;
    std::unique_ptr<StreamSource> m_source;
    QTimer m_retryTimer;
    int m_pause = 0; // seconds before the next try
    int m_run = 0;
    bool m_paused = false;
    bool m_isFinishing = false;
    bool m_isEnded = false;
    bool m_hasFailed = false;
};

#endif

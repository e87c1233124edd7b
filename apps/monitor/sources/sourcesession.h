#ifndef SOURCESESSION_H
#define SOURCESESSION_H

#include "eventwatch.h"
#include "latestmessages.h"
#include "livestream.h"
#include "messagetap.h"
#include "receptionmonitor.h"
#include "recorder.h"
#include "recordingoverview.h"
#include "sendertexts.h"
#include "sourcefactory.h"
#include "streamsource.h"

#include <QDateTime>
#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

class LatestMessageSource;
class MessageStatisticsCoordinator;

/**
 * A source that is open: its stream, what was received, and what becomes of it when it is lost.
 *
 * A live source that fails or ends is opened again after 1 s, and then after twice as long each time, up to 30 s.
 * Counts, statistics and events go on over that.
 */
class SourceSession : public QObject, public LiveStream
{
    Q_OBJECT

public:
    enum State
    {
        Opening,
        Receiving,
        Ended,
        Failed,
        Waiting ///< to be opened again
    };

    /** The same as people see it. */
    enum Standing
    {
        BeingOpened,
        Listening, ///< open to whoever may send, and nobody did
        Connected, ///< and nothing came so far
        Coming,
        Silent, ///< nothing comes any more
        Playing,
        Paused,
        Stopped, ///< a recording, before its end
        Over,
        Lost, ///< for good
        Retrying
    };

    /** Where what is received goes. Everything is borrowed. */
    struct Receivers
    {
        MessageStatisticsCoordinator* coordinator;
        EventCauses* events;
        LatestMessageSource* latest;
        MessageTap* tap = nullptr; ///< may be null
    };

    SourceSession(const SourceOptions& options, SourceFactory* factory, const Receivers& receivers,
                  QObject* parent = nullptr);
    ~SourceSession() override;

    /** Opens the source for the first time. */
    void open(const QString& name, SourceParts parts, const StreamSource::Playback& playback);

    const SourceOptions& getOptions() const { return m_options; }
    const QString& getName() const { return m_name; }
    /** The absolute path of a recording; empty for anything else. */
    const QString& getPath() const { return m_path; }

    /** Whether it is tried again when it is lost. */
    bool isLive() const { return m_live; }

    State getState() const { return m_state; }
    Standing getStanding() const;
    /** The standing in words, with the reason of a failure and the seconds until another try. */
    QString getStateText() const;
    /** Why the source failed last; empty while it is well. */
    const QString& getErrorText() const { return m_error; }

    StreamSource* getSource() { return m_source.get(); }
    const StreamSource* getSource() const { return m_source.get(); }
    /** How far it was handed out to whoever asks the tap. */
    const StreamPlace& getPlace() const { return m_tap.getPlace(); }
    /** What types of its messages can be of; empty while it is not known what comes. */
    QVector<const FormatInfo*> getFormats() const { return m_source->getDecoder()->getFormats(); }
    /** The stream's number with the coordinator. */
    int getStream() const { return m_reception->getStream(); }
    /** Its number among the sources of events. */
    int getEventSource() const { return m_eventSource; }
    /** For how many seconds nothing came of a row, in the recording's own time where it is one; negative when nothing
     * did, or it has no times. */
    double getAge(int row) const;
    const ReceptionCounters& getCounters() const { return m_source->getCounters(); }
    /** Whether there is a message of a row: it was counted, or is from before the place of a jump. */
    bool hasMessage(int row) const { return getCounters().getCount(row) > 0 || m_latest.has(row); }
    /** Who sends what, over all connections and jumps; a row is never taken away. */
    const StreamIdentities& getIdentities() const { return m_identities; }

    /** How the sender of a row is written: as by its format, with the source's name where several are open. */
    QString getSenderName(int row) const override;
    /** How a sender is written that its format calls so. */
    QString qualifiedName(const QString& sender) const { return nameWith(sender, getQualifier()); }
    /** The same without the session, for any thread; @p qualifier is its getQualifier() when it was called so. */
    static QString nameWith(const QString& sender, const QString& qualifier);
    /** What names of senders have behind them; null for nothing. */
    QString getQualifier() const { return m_qualified ? m_name : QString(); }
    /** Whether sender names and statistics carry the name of the source. */
    void setQualified(bool qualified);

    void setPlayback(const StreamSource::Playback& playback);
    const StreamSource::Playback& getPlayback() const { return m_playback; }
    /** Whether it is a recording, which can be played faster, slower and not at all. */
    bool isPlayback() const;

    /** What there is in all of a recording; null for what is none, and before it is known to be one. Another one takes
     * its place when the definitions change. */
    RecordingOverview* getOverview() const { return m_overview.get(); }

    /** Whether it is a recording from which nothing comes because it is paused or over. */
    bool isStandingStill() const override;

    /** Records what arrives from now on, also over reconnections; false with the reason in @p error. For the user by
     * way of SourceModel, which knows what files are in use. */
    bool startRecording(const QString& path, QString* error);
    void stopRecording();
    const Recorder& getRecorder() const { return m_recorder; }

    /** Decodes with the definitions that the factory has for it now: also what is kept of what came before. */
    void useNewDefinitions();

    /** Opens the source anew now, by the user's wish; a recording with @p paused waits at its first message. */
    void reconnect(bool paused = false);
    /** Goes back in a recording to the message before the newest one. */
    void stepBack();
    /** How long a second of waiting, or of silence, takes in milliseconds; for tests. */
    static void setSecondOfWaiting(int milliseconds);

    /** Messages, also of unknown types, and bytes a second, of the last second or so. */
    double getMessageRate() const { return m_messageRate; }
    double getByteRate() const { return m_byteRate; }
    /** Lets time go on: rates, and events that were folded. For a timer of a quarter second or so. */
    void refresh();

Q_SIGNALS:
    /** State or texts changed. */
    void changed();
    /** A sender is called otherwise now, see setQualified(). */
    void senderRenamed(const QString& before, const QString& now);
    /** It failed before, and is well again. */
    void recovered();
    /** The source has other definitions now. */
    void formatChanged();
    /** Recording ended because it could not be written. */
    void recordingFailed(const QString& text);
    /** Something was wrong with the stream, see StreamSource::problem(). */
    void problem(const QString& text);
    /** There is another getOverview(), or there is more in it. */
    void overviewGrown();
    /** getOverview() is complete. */
    void overviewEnded();

private:
    void start(SourceParts parts, bool paused);
    void processState(int state);
    void processSought(qint64 time);
    void processDecoderChange();
    void startOverview();
    void takeEarlier(qint64 time, const QVector<EarlierMessage>& messages);
    void scheduleRetry();
    void countDown();
    void setState(State state);

    SourceOptions m_options;
    SourceFactory* m_factory;
    Receivers m_receivers;
    QString m_name;
    QString m_path;
    bool m_live = false;
    bool m_datagram = false;
    bool m_qualified = false;
    qint64 m_soughtTime = 0;  // where the recording was taken
    bool m_stepsBack = false; // what is sought next
    State m_state = Opening;
    QString m_error;
    StreamSource::Playback m_playback;

    LatestMessages m_latest;
    Recorder m_recorder;
    SessionTap m_tap;
    StreamIdentities m_identities;
    int m_eventSource = -1;
    std::unique_ptr<EventWatch> m_watch;
    std::unique_ptr<SenderTexts> m_texts;
    std::unique_ptr<StreamSource> m_source;
    std::unique_ptr<ReceptionMonitor> m_reception; // follows m_source, and goes first

    std::unique_ptr<RecordingOverview> m_overview;
    quint32 m_annotationProblems = 0; // that the overview told of

    QTimer m_retryTimer;
    int m_retrySeconds = 0; // of the next wait
    int m_secondsLeft = 0;

    QDateTime m_lastArrival; // since it was opened; null before the first
    qint64 m_dropped = 0;    // datagrams, of which the log does not know yet
    QElapsedTimer m_sinceRate;
    quint64 m_rateMessages = 0;
    quint64 m_rateBytes = 0;
    double m_messageRate = 0;
    double m_byteRate = 0;
};

#endif

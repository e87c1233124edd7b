#ifndef RELAY_H
#define RELAY_H

#include "definitions.h"
#include "messagepublisher.h"
#include "outlet.h"
#include "relayoptions.h"
#include "selection.h"

#include <QElapsedTimer>
#include <QLockFile>
#include <QObject>
#include <QTemporaryDir>
#include <QTimer>

#include <deque>
#include <memory>
#include <vector>

class RelaySource;

/** Gives each message of its sources once to each of its outputs, until all is over or somebody asks it to end. */
class Relay : public QObject
{
    Q_OBJECT

public:
    enum ExitStatus
    {
        Success = 0,
        WrongUsage = 1,
        Unwritable = 2
    };

    explicit Relay(const RelayOptions& options);
    ~Relay() override;

    /** Begins; the exit status of a program that need not run, or -1. */
    int start();
    /** Takes no more from the inputs, and ends when the outputs have what came, or a few seconds later. */
    void interrupt();

Q_SIGNALS:
    void ended(int exitStatus);

private:
    /** What a source hands out, on its way to the outputs. */
    class Tap : public StreamSink
    {
    public:
        Tap(Relay* relay, int source)
            : m_relay(relay)
            , m_source(source)
        {
        }
        void processReceived(const ReceivedMessage& message) override { m_relay->pass(m_source, message); }
        void processProblem(const StreamProblem& problem) override { m_relay->passDamage(m_source, problem); }

    private:
        Relay* m_relay;
        int m_source;
    };
    /** A place in what a source hands out, and what every output had to have when it was there. */
    struct Mark
    {
        int run;
        quint64 offset;
        QVector<quint64> sealed; // by output
    };
    struct Source
    {
        std::unique_ptr<Tap> tap;
        std::unique_ptr<RelaySource> source;
        const StreamDecoder* decoder = nullptr; // of which it is known who takes it
        QVector<bool> takers;                   // by output
        QVector<signed char> isSelected;        // by row; -1 while not known
        quint64 origin = 0;                     // of its messages, without their numbers; 0 for none
        quint64 messages = 0;
        std::deque<Mark> marks; // with a session, what is not confirmed
    };

    bool loadDefinitions();
    bool openOutlets();
    bool openBufferFolder(QString* error);
    Outlet::Settings settingsFor(const OutputAddress& address, const QString& run) const;
    void openSources();
    void findTakers(Source* source);
    bool isSelected(Source* source, const ReceivedMessage& message);
    void pass(int source, const ReceivedMessage& message);
    void passDamage(int source, const StreamProblem& problem);
    void mark(Source* source);
    void confirm();
    void hold();
    void look();
    void endOutlets();
    void finish();
    void printCounts();

    const RelayOptions m_options;
    Definitions m_definitions;
    Selection m_selection;
    MessagePublisher m_publisher;
    std::unique_ptr<QTemporaryDir> m_temporary;
    std::unique_ptr<QLockFile> m_lock;
    QString m_bufferFolder;
    std::vector<std::unique_ptr<Outlet>> m_outlets;
    std::vector<Source> m_sources;
    QTimer m_timer;
    QTimer m_statsTimer;
    QElapsedTimer m_sinceStats;
    QVector<quint64> m_lastCounts; // by output
    QElapsedTimer m_sinceInterrupt;
    QElapsedTimer m_sinceConfirm; // or the last flush for the sake of it
    bool m_isEnding = false;
    bool m_hasFailed = false;
    QVector<bool> m_isFailureTold; // by output
};

#endif

#ifndef OUTLETWORKER_H
#define OUTLETWORKER_H

#include "publishedstream.h"

#include <QObject>
#include <QTimer>

#include <memory>

class MessageOutput;
class Outlet;

/** What happens on the thread of an Outlet: takes blocks from its queue and gives their messages to the output. */
class OutletWorker : public QObject, private StreamSink
{
    Q_OBJECT

public:
    explicit OutletWorker(Outlet* outlet);
    ~OutletWorker() override;

public Q_SLOTS:
    /** Makes the output; what is wrong is told to the outlet. */
    void start();
    /** Takes what there is, for a moment. */
    void work();
    /** Has the output hand out what it was given. */
    void flush();

private:
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;

    void takeBlocks();
    void followRun(const QString& run);
    void confirm();
    void tell();
    void finish();

    Outlet* m_outlet;
    std::unique_ptr<PublishedStream> m_stream;
    std::unique_ptr<MessageOutput> m_output;
    QTimer m_timer; // for what changes by itself: readiness, confirmations
    QTimer m_flushTimer;
    QString m_problem; // of the queue, that was told last
    bool m_isFinishing = false;
    quint64 m_taken = 0;     // messages
    quint64 m_confirmed = 0; // of these
};

#endif

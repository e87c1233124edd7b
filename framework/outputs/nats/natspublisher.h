#ifndef NATSPUBLISHER_H
#define NATSPUBLISHER_H

#include "natssetup.h"

#include <QPair>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

/**
 * A connection to a server with JetStream, which comes about on a thread of its own and is made again when it was lost.
 * It only publishes. One thread, which asks now and then for what has happened.
 */
class NatsPublisher
{
public:
    typedef QVector<QPair<QByteArray, QByteArray>> Headers;

    struct Settings
    {
        NatsSetup setup;
        QByteArray stream;   ///< that is made when there is none of that name; empty for none
        QByteArray subjects; ///< that such a stream takes
    };
    /** What became of a message. */
    struct Answer
    {
        enum Kind
        {
            Stored,
            Refused, ///< for good
            NotNow   ///< such as without a stream
        };
        quint64 number;
        Kind kind;
        QString text; ///< why it is not stored
    };

    explicit NatsPublisher(const Settings& settings);
    ~NatsPublisher();

    bool isConnected() const;
    /** How many connections there were: with another one, what was not answered is to be published again. */
    int getConnections() const;
    std::vector<Answer> takeAnswers();
    QStringList takeNotices();
    /** Looks after a connection that ended for good. */
    void look();

    /** Publishes a message, whose answer says @p number; 0 is for those whose answer nobody waits for. What cannot be
     * sent has no answer, and @p error is set when it never can. */
    void publish(const QByteArray& subject, const QByteArray& payload, const Headers& headers, quint64 number,
                 QString* error);

private:
    Q_DISABLE_COPY(NatsPublisher)
    struct Shared;

    void connect();

    std::shared_ptr<Shared> m_shared; // with threads of the library
};

#endif

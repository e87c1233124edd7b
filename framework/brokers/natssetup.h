#ifndef NATSSETUP_H
#define NATSSETUP_H

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QVector>

#include <nats/nats.h>

/** What a connection to servers of NATS needs. */
struct NatsSetup
{
    /** Takes what the parameters of an address say: "user", "password-file", "creds", "tls", "ca", "cert" and "key",
     * all of which may be missing. A password that is nowhere is that of the environment variable CORVEL_NATS_PASSWORD.
     * False with @p error set where a file cannot be read. */
    bool read(const QMap<QString, QString>& parameters, QString* error);

    struct Server
    {
        QString host;
        quint16 port;
    };

    /** Takes the servers of an address: the first one, and @p others, "HOST[:PORT]" with commas between them. False
     * with
     * @p reason where that is something else. */
    bool readServers(const Server& one, const QString& others, QString* reason);

    /** Says so to the library, which then tries the servers in their order, from that at the place @p first on. */
    natsStatus apply(natsOptions* options, int first = 0) const;

    QVector<Server> servers;

    QByteArray user;
    QByteArray password;    ///< without a user, a token
    QByteArray credentials; ///< a file; may be empty
    bool isEncrypted = false;
    QByteArray authority;   ///< the file of certificates to trust; empty for those of the system
    QByteArray certificate; ///< the file of one's own; may be empty
    QByteArray key;         ///< that it has
};

#endif

#ifndef NATSSETUP_H
#define NATSSETUP_H

#include <QByteArray>
#include <QMap>
#include <QString>

#include <nats/nats.h>

/** What a connection to a server of NATS needs, beside where that is. */
struct NatsSetup
{
    /** Takes what the parameters of an address say: "user", "password-file", "creds", "tls", "ca", "cert" and "key",
     * all of which may be missing. A password that is nowhere is that of the environment variable CORVEL_NATS_PASSWORD.
     * False with @p error set where a file cannot be read. */
    bool read(const QMap<QString, QString>& parameters, QString* error);

    /** Says so to the library. */
    natsStatus apply(natsOptions* options) const;

    QByteArray user;
    QByteArray password;    ///< without a user, a token
    QByteArray credentials; ///< a file; may be empty
    bool isEncrypted = false;
    QByteArray authority;   ///< the file of certificates to trust; empty for those of the system
    QByteArray certificate; ///< the file of one's own; may be empty
    QByteArray key;         ///< that it has
};

#endif

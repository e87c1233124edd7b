#ifndef NATSKINDS_H
#define NATSKINDS_H

#include "byteinput.h"
#include "inputkind.h"

/** Subjects of NATS servers, as they are published: "nats://host/fleet.*.state". */
extern const InputKind NatsInputKind;
/** Streams that NATS servers keep, as recordings that go on: "jetstream://host/FLEET/fleet.7.>". */
extern const InputKind JetStreamInputKind;

/** What an address says of how a server is reached. */
struct NatsSettings
{
    /** Fills it in; false with the reason in @p error where a file that the address names is not there. */
    bool read(const InputAddress& address, QString* error);

    struct Server
    {
        QString host;
        quint16 port;
    };

    QVector<Server> servers;
    bool isEncrypted = false; ///< even if the server does not want that
    QByteArray user;
    QByteArray password;    ///< without a user it is a token
    QByteArray credentials; ///< the path of a file with a user's token and key
    QByteArray authority;   ///< paths of files with certificates and a key
    QByteArray certificate;
    QByteArray key;
};

/** The subjects of the path of an address: a comma stands between them, and "%" before what stands for another
 * character. */
QVector<QByteArray> natsSubjects(const QString& path);

#endif

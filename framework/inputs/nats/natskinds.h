#ifndef NATSKINDS_H
#define NATSKINDS_H

#include "byteinput.h"
#include "inputkind.h"
#include "natssetup.h"

/** Subjects of NATS servers, as they are published: "nats://host/fleet.*.state". */
extern const InputKind NatsInputKind;
/** Streams that NATS servers keep, as recordings that go on: "jetstream://host/FLEET/fleet.7.>". */
extern const InputKind JetStreamInputKind;

/** What an address says of how a server is reached. */
struct NatsSettings
{
    /** Takes what the address says; false with the reason in @p error where a file that the address names is not there.
     */
    bool read(const InputAddress& address, QString* error);

    NatsSetup setup;
};

/** The subjects of the path of an address: a comma stands between them, and "%" before what stands for another
 * character. */
QVector<QByteArray> natsSubjects(const QString& path);

#endif

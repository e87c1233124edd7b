#ifndef NATSMESSAGE_H
#define NATSMESSAGE_H

#include "envelope.h"

#include <memory>

#include <nats/nats.h>

struct NatsMessageDeleter
{
    void operator()(natsMsg* message) const { natsMsg_Destroy(message); }
};

/** A message of the client's library, which is owned. */
typedef std::unique_ptr<natsMsg, NatsMessageDeleter> NatsMessage;

/** What a message says; its texts are those of the message. */
Envelope readNatsMessage(natsMsg* message);

/** The value of a header; empty where there is none. */
std::string_view natsHeader(natsMsg* message, const char* name);

/** Adds the headers of a message as it is stored: "NATS/1.0", and a line for each. */
void readNatsHeaders(std::string_view block, Envelope* envelope);

#endif

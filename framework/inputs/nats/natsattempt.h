#ifndef NATSATTEMPT_H
#define NATSATTEMPT_H

#include "natskinds.h"

#include <QJsonObject>

#include <atomic>

/** How a connection comes about, in a few seconds that can be ended at any time. */
namespace NatsAttempt
{

/** What a server says of itself before anything else; empty with the reason in @p error when it is none. */
QJsonObject readGreeting(const NatsSetup::Server& server, const std::atomic<bool>& cancelled, QString* error);

/** Connects with options, which are taken over; null with the reason in @p error. */
natsConnection* connect(natsOptions* options, const std::atomic<bool>& cancelled, QString* error);

/** Why no connection comes about, of which the library says @p text; empty for nothing. */
QString describe(natsStatus status, const QString& text);

} // namespace NatsAttempt

#endif

#include "natsrequests.h"

#include "natsconnection.h"

#include <QCoreApplication>
#include <QJsonDocument>

NatsRequests::NatsRequests(NatsConnection* connection, int channel)
    : m_connection(connection)
    , m_channel(channel)
{
}

bool NatsRequests::open(QString* error)
{
    m_inbox = NatsConnection::createInbox();
    return m_connection->subscribe(m_channel, m_inbox + ".*", error);
}

quint64 NatsRequests::send(const QByteArray& operation, const QJsonObject& wish)
{
    const QByteArray text = wish.isEmpty() ? QByteArray() : QJsonDocument(wish).toJson(QJsonDocument::Compact);
    m_connection->publish("$JS.API." + operation, text, m_inbox + '.' + QByteArray::number(++m_last));
    return m_last;
}

QJsonObject NatsRequests::read(natsMsg* message, quint64* number)
{
    const QByteArray subject = natsMsg_GetSubject(message);
    *number = subject.mid(subject.lastIndexOf('.') + 1).toULongLong();
    if (natsMsg_IsNoResponders(message)) {
        const QJsonObject error{{QStringLiteral("code"), int(NoJetStream)}};
        return QJsonObject{{QStringLiteral("error"), error}};
    }
    return QJsonDocument::fromJson(QByteArray(natsMsg_GetData(message), natsMsg_GetDataLength(message))).object();
}

int NatsRequests::getErrorCode(const QJsonObject& answer)
{
    const QJsonObject error = answer.value(QLatin1String("error")).toObject();
    const int code = error.value(QLatin1String("err_code")).toInt();
    return code ? code : error.value(QLatin1String("code")).toInt();
}

QString NatsRequests::describeError(const QJsonObject& answer)
{
    const QString text = answer.value(QLatin1String("error")).toObject().value(QLatin1String("description")).toString();
    switch (getErrorCode(answer)) {
    case NoJetStream:
        return QCoreApplication::translate("NatsInput", "the server has no JetStream, or none for this user");
    case NoSuchStream:
        return QCoreApplication::translate("NatsInput", "there is no stream of that name");
    default:
        return QCoreApplication::translate("NatsInput", "the server says: %1").arg(text);
    }
}

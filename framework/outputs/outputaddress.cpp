#include "outputkind.h"

#include <QCoreApplication>
#include <QUrl>

namespace
{

/** The kind that @p text is an address of, and what it begins with. */
const OutputKind* findKind(const QString& text, QString* scheme)
{
    for (const OutputKind* kind : OutputKind::getAll()) {
        for (const QString& one : QString::fromLatin1(kind->schemes).split(QLatin1Char(' '))) {
            if (!one.isEmpty() && text.startsWith(one)) {
                *scheme = one;
                return kind;
            }
        }
    }
    for (const OutputKind* kind : OutputKind::getAll())
        if (kind->isFile() && text.endsWith(QLatin1Char('.') + QLatin1String(kind->fileEnding), Qt::CaseInsensitive))
            return kind;
    return nullptr;
}

bool readParameters(const QString& text, OutputAddress* address, QString* reason)
{
    for (const QString& part : text.split(QLatin1Char('&'))) {
        const QString name = part.section(QLatin1Char('='), 0, 0);
        if (!part.contains(QLatin1Char('='))) {
            *reason = QCoreApplication::translate("Output", "\"%1\" is no parameter; NAME=VALUE is one").arg(part);
            return false;
        }
        if (!address->kind->getParameters().contains(name)) {
            *reason = QCoreApplication::translate("Output", "there is no parameter \"%1\"; there is: %2")
                          .arg(name, address->kind->getParameters().join(QLatin1String(", ")));
            return false;
        }
        if (address->parameters.contains(name)) {
            *reason = QCoreApplication::translate("Output", "\"%1\" is told twice").arg(name);
            return false;
        }
        address->parameters.insert(name, QUrl::fromPercentEncoding(part.mid(name.size() + 1).toUtf8()));
    }
    return true;
}

/** An address as it can be shown when it is wrong. */
QString withoutSecrets(const QString& text)
{
    const QString address = text.section(QLatin1Char('?'), 0, 0);
    const int at = int(address.lastIndexOf(QLatin1Char('@')));
    return at < 0 ? address : address.section(QLatin1Char(':'), 0, 0) + QLatin1String("://...") + address.mid(at);
}

/** What stands behind the scheme: "HOST:PORT/PATH". */
bool readPlace(QString rest, OutputAddress* address, QString* reason)
{
    if (rest.startsWith(QLatin1String("//")))
        rest.remove(0, 2);
    address->path = rest.section(QLatin1Char('/'), 1);
    QString place = rest.section(QLatin1Char('/'), 0, 0);
    const int at = int(place.lastIndexOf(QLatin1Char('@')));
    if (at >= 0) {
        address->user = QUrl::fromPercentEncoding(place.left(at).toUtf8());
        place.remove(0, at + 1);
        if (address->user.contains(QLatin1Char(':'))) {
            *reason =
                QCoreApplication::translate("Output", "a password does not stand in an address, where others see it");
            return false;
        }
        if (!QLatin1String(address->kind->usage).contains(QLatin1String("USER@"))) {
            *reason = QCoreApplication::translate("Output", "there are no users");
            return false;
        }
    }
    if (QLatin1String(address->kind->usage).contains(QLatin1String("[,HOST"))) {
        address->servers = place.section(QLatin1Char(','), 1);
        place = place.section(QLatin1Char(','), 0, 0);
    }
    const bool hasHost = !place.isEmpty() && !place.startsWith(QLatin1Char(':'));
    if (!hasHost)
        place.prepend(QLatin1String("host"));
    const QUrl url(QLatin1String("x://") + place, QUrl::StrictMode);
    if (!url.isValid() || url.port(1) < 1 || place.endsWith(QLatin1Char(':'))) {
        *reason =
            QCoreApplication::translate(
                "Output", "\"%1\" is no host with a port; an IPv6 address stands in brackets, ports are 1 to 65535")
                .arg(hasHost ? place : place.mid(4));
        return false;
    }
    if (hasHost)
        address->host = url.host();
    address->port = quint16(url.port(address->kind->defaultPort));
    return true;
}

} // namespace

bool OutputAddress::parse(const QString& text, OutputAddress* address, QString* error)
{
    OutputAddress result;
    QString scheme;
    result.kind = findKind(text, &scheme);
    QString reason;
    if (!result.kind) {
        QStringList usages;
        for (const OutputKind* kind : OutputKind::getAll())
            usages.append(QLatin1String(kind->usage));
        *error = QCoreApplication::translate("Output", "%1 is no output; there is: %2")
                     .arg(text, usages.join(QLatin1String(", ")));
        return false;
    }
    bool isRight = true;
    if (result.kind->isFile()) {
        result.path = text;
    } else {
        const QString rest = text.mid(scheme.size());
        const int question = int(rest.indexOf(QLatin1Char('?')));
        isRight = (question < 0 || readParameters(rest.mid(question + 1), &result, &reason)) &&
                  readPlace(rest.left(question), &result, &reason);
    }
    if (!isRight || (result.kind->check && !result.kind->check(&result, &reason))) {
        *error = withoutSecrets(text) + QLatin1String(": ") + reason;
        return false;
    }
    *address = result;
    return true;
}

QString OutputAddress::getName() const
{
    if (kind->isFile())
        return path;
    QString scheme = QString::fromLatin1(kind->schemes).section(QLatin1Char(' '), 0, 0);
    const bool isUrl = QLatin1String(kind->usage).contains(QLatin1String("://"));
    const QString written = host.contains(QLatin1Char(':')) ? QLatin1Char('[') + host + QLatin1Char(']') : host;
    return scheme + QLatin1String(isUrl ? "//" : "") + written + QLatin1Char(':') + QString::number(port) +
           (path.isEmpty() ? QString() : QLatin1Char('/') + path);
}

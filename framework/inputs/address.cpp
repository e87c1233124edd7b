#include "byteinput.h"

#include "fileinput.h"
#include "inputkind.h"

#include <QCoreApplication>
#include <QHostAddress>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>

namespace
{

/** The kind that @p text is an address of, and what it begins with. */
const InputKind* findKind(const QString& text, QString* scheme)
{
    const InputKind* fallback = nullptr;
    for (const InputKind* kind : InputKind::getAll()) {
        for (const QString& one : QString::fromLatin1(kind->schemes).split(QLatin1Char(' '))) {
            if (one.isEmpty()) {
                fallback = kind;
                continue;
            }
            const bool isPrefix = one.endsWith(QLatin1Char(':')) || one.endsWith(QLatin1Char('/'));
            if (isPrefix ? text.startsWith(one) : text == one) {
                *scheme = one;
                return kind;
            }
        }
    }
    scheme->clear();
    return fallback;
}

QString firstScheme(const InputKind* kind)
{
    return QString::fromLatin1(kind->schemes).section(QLatin1Char(' '), 0, 0);
}

bool hasParameters(const InputKind* kind)
{
    for (const InputField& field : kind->getFields())
        if (field.isParameter())
            return true;
    return false;
}

bool parsePort(const QString& text, quint16* port)
{
    // toUInt() alone would also take a sign and blanks.
    for (const QChar character : text)
        if (character < QLatin1Char('0') || character > QLatin1Char('9'))
            return false;
    bool right = false;
    const uint number = text.toUInt(&right);
    if (!right || number < 1 || number > 65535)
        return false;
    *port = static_cast<quint16>(number);
    return true;
}

// Takes "HOST", "HOST:PORT", ":PORT", "[IPV6]" and "[IPV6]:PORT" apart. An IPv6 address needs its brackets.
bool splitHostAndPort(const QString& text, QString* host, QString* port, QString* error)
{
    int end = 0;
    if (text.startsWith(QLatin1Char('['))) {
        end = int(text.indexOf(QLatin1Char(']')));
        if (end < 0) {
            *error = QCoreApplication::translate("InputAddress", "the bracket of the IPv6 address is not closed");
            return false;
        }
        *host = text.mid(1, end - 1);
        if (QHostAddress(*host).protocol() != QAbstractSocket::IPv6Protocol) {
            *error = QCoreApplication::translate("InputAddress", "\"%1\" is no IPv6 address").arg(*host);
            return false;
        }
        ++end;
    } else {
        if (text.count(QLatin1Char(':')) > 1) {
            *error = QCoreApplication::translate("InputAddress", "an IPv6 address stands in brackets");
            return false;
        }
        end = int(text.indexOf(QLatin1Char(':')));
        if (end < 0)
            end = int(text.size());
        *host = text.left(end);
    }
    const QString rest = text.mid(end);
    if (!rest.isEmpty() && !rest.startsWith(QLatin1Char(':'))) {
        *error = QCoreApplication::translate("InputAddress", "\"%1\" is not expected behind the host").arg(rest);
        return false;
    }
    *port = rest.mid(1);
    return true;
}

bool splitParameters(const InputKind* kind, const QString& text, QMap<QString, QString>* parameters, QString* error)
{
    QStringList names;
    for (const InputField& field : kind->getFields())
        if (field.isParameter())
            names.append(QLatin1String(field.name));
    for (const QString& part : text.split(QLatin1Char('&'))) {
        const int equals = int(part.indexOf(QLatin1Char('=')));
        const QString name = part.left(equals);
        if (equals < 0) {
            *error = QCoreApplication::translate("InputAddress", "\"%1\" is no parameter; NAME=VALUE is one").arg(part);
            return false;
        }
        if (!names.contains(name)) {
            *error = QCoreApplication::translate("InputAddress", "there is no parameter \"%1\"; there is: %2")
                         .arg(name, names.join(QLatin1String(", ")));
            return false;
        }
        if (parameters->contains(name)) {
            *error = QCoreApplication::translate("InputAddress", "\"%1\" is told twice").arg(name);
            return false;
        }
        parameters->insert(name, QUrl::fromPercentEncoding(part.mid(equals + 1).toUtf8()));
    }
    return true;
}

/** Where in @p text, behind its scheme, a password begins that stands before a host; -1 for nowhere. */
int findPassword(const QString& text)
{
    // A port and a path can look a little like one.
    static const QRegularExpression password(QStringLiteral("^[^:/@?\\[]*:(?!\\d+(/|\\?|$))(?=.*@)"));
    const QRegularExpressionMatch match = password.match(text);
    return match.hasMatch() ? int(match.capturedEnd()) : -1;
}

/** An address as it may be shown, without a password that somebody wrote into it. */
QString masked(const QString& text)
{
    const int scheme = int(text.indexOf(QLatin1String("://"))) + 3;
    const int begin = scheme < 3 ? -1 : findPassword(text.mid(scheme));
    QString shown = text;
    if (begin >= 0) {
        const int end = int(text.lastIndexOf(QLatin1Char('@')));
        shown.replace(scheme + begin, end - scheme - begin, QStringLiteral("***"));
    }
    static const QRegularExpression parameter(QStringLiteral("([?&]password=)[^&]*"));
    return shown.replace(parameter, QStringLiteral("\\1***"));
}

// Takes "USER@HOST:PORT,HOST:PORT/PATH" apart as far as the kind has these, and leaves host and port.
void splitUserAndPath(QString* rest, InputAddress* address)
{
    if (address->kind->hasField(QStringLiteral("path"))) {
        const int slash = int(rest->indexOf(QLatin1Char('/')));
        address->path = slash < 0 ? QString() : rest->mid(slash + 1);
        rest->truncate(slash < 0 ? int(rest->size()) : slash);
    }
    if (address->kind->hasField(QStringLiteral("servers"))) {
        const int comma = int(rest->indexOf(QLatin1Char(',')));
        if (comma >= 0)
            address->parameters.insert(QStringLiteral("servers"), rest->mid(comma + 1));
        rest->truncate(comma < 0 ? int(rest->size()) : comma);
    }
    if (address->kind->hasField(QStringLiteral("user"))) {
        const int at = int(rest->lastIndexOf(QLatin1Char('@')));
        if (at >= 0)
            address->parameters.insert(QStringLiteral("user"), QUrl::fromPercentEncoding(rest->left(at).toUtf8()));
        rest->remove(0, at + 1);
    }
}

// Reads what stands behind the scheme.
bool readRest(QString rest, InputAddress* address, QString* error)
{
    const InputKind* const kind = address->kind;
    if (kind->hasField(QStringLiteral("password")) && findPassword(rest) >= 0) {
        *error = QCoreApplication::translate("InputAddress",
                                             "a password stands in no address, which is shown and logged; a file, the "
                                             "environment or the dialog has it");
        return false;
    }
    const int question = hasParameters(kind) ? int(rest.indexOf(QLatin1Char('?'))) : -1;
    if (question >= 0) {
        if (!splitParameters(kind, rest.mid(question + 1), &address->parameters, error))
            return false;
        rest.truncate(question);
    }
    if (!kind->hasField(QStringLiteral("host"))) {
        address->path = rest;
        return true;
    }
    QString port;
    address->port = kind->defaultPort;
    splitUserAndPath(&rest, address);
    if (!splitHostAndPort(rest, &address->host, &port, error))
        return false;
    if (!port.isEmpty() && !parsePort(port, &address->port)) {
        *error = QCoreApplication::translate("InputAddress", "\"%1\" is no port; ports are 1 to 65535").arg(port);
        return false;
    }
    return true;
}

QString bracketed(const QString& host)
{
    return host.contains(QLatin1Char(':')) ? QLatin1Char('[') + host + QLatin1Char(']') : host;
}

} // namespace

InputAddress::InputAddress()
    : kind(&StandardInputKind)
    , port(0)
{
}

InputAddress InputAddress::ofFile(const QString& path)
{
    InputAddress address;
    address.kind = &FileInputKind;
    address.path = path;
    return address;
}

bool InputAddress::parse(const QString& text, InputAddress* address, QString* error)
{
    if (text.isEmpty()) {
        *error = QCoreApplication::translate("InputAddress", "no input is named");
        return false;
    }
    InputAddress result;
    QString scheme;
    result.kind = findKind(text, &scheme);
    QString rest = result.kind->properties & InputKind::WholeUrlProperty ? text : text.mid(scheme.size());
    if (scheme.endsWith(QLatin1Char(':')) && rest.startsWith(QLatin1String("//")))
        rest.remove(0, 2);
    QString reason;
    if (!readRest(rest, &result, &reason) || (result.kind->check && !result.kind->check(&result, &reason))) {
        *error = masked(text) + QLatin1String(": ") + reason;
        return false;
    }
    *address = result;
    return true;
}

QString InputAddress::toString() const
{
    if (kind->properties & InputKind::WholeUrlProperty)
        return path;
    QString text = firstScheme(kind);
    const QString user = kind->hasField(QStringLiteral("user")) ? parameters.value(QStringLiteral("user")) : QString();
    if (!user.isEmpty())
        text += QString::fromLatin1(QUrl::toPercentEncoding(user)) + QLatin1Char('@');
    if (!kind->hasField(QStringLiteral("host")))
        text += path;
    else
        text += QString::fromLatin1("%1:%2").arg(bracketed(host)).arg(port);
    const QString servers = parameters.value(QStringLiteral("servers"));
    if (!servers.isEmpty())
        text += QLatin1Char(',') + servers;
    if (kind->hasField(QStringLiteral("host")) && !path.isEmpty())
        text += QLatin1Char('/') + path;
    QChar sign = QLatin1Char('?');
    for (const InputField& field : kind->getFields()) {
        const QString name = QLatin1String(field.name);
        if (!field.isParameter() || !parameters.contains(name))
            continue;
        QString value = parameters.value(name);
        value.replace(QLatin1Char('%'), QLatin1String("%25")).replace(QLatin1Char('&'), QLatin1String("%26"));
        text += sign + name + QLatin1Char('=') + value;
        sign = QLatin1Char('&');
    }
    return text;
}

QString InputAddress::getValue(const QString& name) const
{
    if (name == QLatin1String("path"))
        return path;
    if (name == QLatin1String("host"))
        return host;
    if (name == QLatin1String("port"))
        return QString::number(port);
    if (name == QLatin1String("password"))
        return password;
    for (const InputField& field : kind->getFields())
        if (name == QLatin1String(field.name))
            return parameters.value(name, QLatin1String(field.value));
    return QString();
}

void InputAddress::setValue(const QString& name, const QString& value)
{
    if (name == QLatin1String("path"))
        path = value.contains(QLatin1String("://")) || !(kind->properties & InputKind::WholeUrlProperty)
                   ? value
                   : firstScheme(kind) + value;
    else if (name == QLatin1String("host"))
        host = value.startsWith(QLatin1Char('[')) && value.endsWith(QLatin1Char(']')) ? value.mid(1, value.size() - 2)
                                                                                      : value;
    else if (name == QLatin1String("port"))
        port = quint16(value.toUShort());
    else if (name == QLatin1String("password"))
        password = value;
    else
        parameters.insert(name, value);
}

#ifndef BROKERACCESS_H
#define BROKERACCESS_H

#include <QByteArray>
#include <QMap>
#include <QString>

/** Who connects to a broker, and by which certificates. */
struct BrokerAccess
{
    /** Takes what the parameters of an address say: "user", "password-file", "ca", "cert" and "key", all of which may
     * be missing. A password that is nowhere is that of the environment variable @p passwordVariable. False with
     * @p error set where a file cannot be read, also that of the parameter @p other. */
    bool read(const QMap<QString, QString>& parameters, const char* passwordVariable, QString* error,
              const char* other = "");

    QByteArray user;
    QByteArray password;
    QByteArray authority;   ///< the file of certificates to trust; empty for those of the system
    QByteArray certificate; ///< the file of one's own; may be empty
    QByteArray key;         ///< that it has
};

#endif

#include "brokeraccess.h"

#include <QFile>

static const int GreatestPassword = 65535;

bool BrokerAccess::read(const QMap<QString, QString>& parameters, const char* passwordVariable, QString* error,
                        const char* other)
{
    for (const char* name : {"password-file", "ca", "cert", "key", other}) {
        const QString path = parameters.value(QLatin1String(name));
        QFile file(path);
        if (!path.isEmpty() && !file.open(QIODevice::ReadOnly)) {
            *error = path + QLatin1String(": ") + file.errorString();
            return false;
        }
        if (file.isOpen() && qstrcmp(name, "password-file") == 0)
            password = file.readLine(GreatestPassword + 2).trimmed();
    }
    user = parameters.value(QStringLiteral("user")).toUtf8();
    if (password.isEmpty())
        password = qgetenv(passwordVariable);
    authority = QFile::encodeName(parameters.value(QStringLiteral("ca")));
    certificate = QFile::encodeName(parameters.value(QStringLiteral("cert")));
    key = QFile::encodeName(parameters.value(QStringLiteral("key")));
    return true;
}

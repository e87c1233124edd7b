#include "inputhelp.h"

#include "inputkind.h"

QString inputHelp()
{
    QString text;
    for (const InputKind* kind : InputKind::getAll()) {
        text += QStringLiteral("\n  %1\n      %2").arg(QLatin1String(kind->usage), QLatin1String(kind->title));
        if (QLatin1String(kind->example) != QLatin1String(kind->usage))
            text += QStringLiteral(", such as ") + QLatin1String(kind->example);
        if (kind->defaultPort)
            text += QStringLiteral("; port %1 unless told").arg(kind->defaultPort);
    }
    return text.mid(1);
}

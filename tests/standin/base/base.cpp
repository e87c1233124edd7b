#include "dbg.h"
#include "memleaktracer.h"

int dbg_SubModActive(const char* module, const char* subModule)
{
    MemLeakTracer::getInstance()->asked += QString::fromLatin1(module) + QLatin1Char('/') + QLatin1String(subModule);
    return -2; // any int is an answer, as long as it is not ~0
}

void dbg_Assert(const char*, const char* subModule, int, const char* function, const char*, int line, const char*)
{
    qWarning("%s %s %d", subModule, function, line);
}

MemLeakTracer* MemLeakTracer::getInstance()
{
    static MemLeakTracer instance;
    return &instance;
}

QStringList MemLeakTracer::getUnlevelReport() const
{
    QStringList report;
    for (auto account = objects.constBegin(); account != objects.constEnd(); ++account)
        if (account.value() != 0)
            report.append(account.key());
    return report;
}

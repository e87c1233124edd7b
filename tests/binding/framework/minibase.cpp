#include "dbg.h"
#include "memleaktracer.h"

#include <QMap>
#include <QStringList>

// What the test program asks, by names that no header declares.
QStringList g_asked;
QStringList g_assertions;
QMap<QString, int> g_objects;

int dbg_SubModActive(const char* module, const char* subModule)
{
    g_asked.append(QString::fromLatin1(module) + QLatin1Char('/') + QLatin1String(subModule));
    return -2; // any int is an answer, as long as it is not ~0
}

void dbg_Assert(const char*, const char* subModule, int, const char* function, const char*, int line, const char*)
{
    g_assertions.append(
        QString::fromLatin1("%1 %2 %3").arg(QLatin1String(subModule), QLatin1String(function)).arg(line));
}

MemLeakTracer* MemLeakTracer::getInstance()
{
    static MemLeakTracer instance;
    return &instance;
}

void MemLeakTracer::doAllocateObject(QString className)
{
    ++g_objects[className];
}

void MemLeakTracer::doDeallocateObject(QString className)
{
    --g_objects[className];
}

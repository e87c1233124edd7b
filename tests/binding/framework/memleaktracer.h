#ifndef MEMLEAKTRACER_H
#define MEMLEAKTRACER_H

#include <QString>

class MemLeakTracer
{
public:
    static MemLeakTracer* getInstance();
    void doAllocateObject(QString className);
    void doDeallocateObject(QString className);
};

#endif

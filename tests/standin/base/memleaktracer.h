#ifndef MEMLEAKTRACER_H
#define MEMLEAKTRACER_H

#include <QMap>
#include <QStringList>

class MemLeakTracer
{
public:
    static MemLeakTracer* getInstance();
    void doAllocateObject(QString className) { ++objects[className]; }
    void doDeallocateObject(QString className) { --objects[className]; }

    QStringList getUnlevelReport() const;

    QMap<QString, int> objects;
    QStringList asked; // "module/submodule" of dbg_SubModActive()
};

#endif

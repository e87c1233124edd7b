#ifndef CORVEL_MEMLEAKTRACER_H
#define CORVEL_MEMLEAKTRACER_H

#include "corvelbase_export.h"

#include <QHash>
#include <QMutex>
#include <QString>
#include <QStringList>

/**
 * Keeps account of how many objects of each class exist, so that a leak shows as a class that is not level.
 *
 * Every constructor of an accounted class calls doAllocateObject() with the class name, every destructor
 * doDeallocateObject(). With the environment variable CORVEL_LEAK_REPORT set (to anything but "0"), the classes that
 * are not level are printed to the error stream when the program exits; with CORVEL_LEAK_REPORT=all every class is.
 *
 * All operations are safe to call from any thread.
 */
class CORVELBASE_EXPORT MemLeakTracer
{
public:
    /** The account of one class. */
    struct Account
    {
        Account();

        quint64 allocated;   ///< objects constructed so far
        quint64 deallocated; ///< objects destroyed so far
        qint64 peak;         ///< the most that existed at one time
    };

    /** The process-wide tracer; never null, and never destroyed before the program's exit report. */
    static MemLeakTracer* getInstance();

    /** Enters a new object of the class @p className. */
    void doAllocateObject(QString className);

    /** Enters the end of an object of the class @p className. */
    void doDeallocateObject(QString className);

    /** The account of @p className; all zero for a class never entered. */
    Account getAccount(const QString& className) const;

    /** The classes entered so far, sorted. */
    QStringList getClassNames() const;

    /** The number of objects of @p className that exist now; negative when more were destroyed than constructed. */
    qint64 getLiveCount(const QString& className) const;

    /** One line for every class that is not level, sorted by class: "Name: 3 allocated, 2 deallocated, peak 2". */
    QStringList getUnlevelReport() const;

private:
    MemLeakTracer();
    ~MemLeakTracer();
    Q_DISABLE_COPY(MemLeakTracer)

    static void printReport();
    QStringList getReport(bool unlevelOnly) const;

    mutable QMutex m_mutex;
    QHash<QString, Account> m_accounts;
};

#endif

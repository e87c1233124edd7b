#ifndef DIAGNOSTICS_H
#define DIAGNOSTICS_H

#include "dbg.h"
#include "memleaktracer.h"

#include <QString>

/** Defines the statics with which a source file takes part in the diagnostics; once, at the top of each source file. */
#define CORVEL_DIAGNOSTICS(subModule)                                                                                  \
    static const char* s_tagModCheck = "corvelgui";                                                                    \
    static const char* s_tagSubMod = subModule;                                                                        \
    static int dbg_bSubModActive = ~0

/** Asks, once for each source file, whether its debug output is wanted; the first line of every function. */
#define CORVEL_DEBUG_HOOK()                                                                                            \
    do {                                                                                                               \
        if (dbg_bSubModActive == ~0)                                                                                   \
            dbg_bSubModActive = dbg_SubModActive(s_tagModCheck, s_tagSubMod);                                          \
    } while (false)

/**
 * Reports a failed check; execution carries on. The file's s_szFilename must be defined.
 *
 * The line is a fixed number, by which reports of all versions of the library are told apart and searched for; it does
 * not follow the code.
 */
#define CORVEL_ASSERT(condition, function, line, message)                                                              \
    do {                                                                                                               \
        if (!(condition))                                                                                              \
            dbg_Assert(s_tagModCheck, s_tagSubMod, 0, function, s_szFilename, line, message);                          \
    } while (false)

/** Enters an object into the accounting of its class; the last line of what a constructor sets up. */
#define CORVEL_ALLOCATED(className) MemLeakTracer::getInstance()->doAllocateObject(QString::fromLatin1(className))

/** Takes an object out of the accounting of its class; the first line of a destructor behind the debug hook. */
#define CORVEL_DEALLOCATED(className) MemLeakTracer::getInstance()->doDeallocateObject(QString::fromLatin1(className))

#endif

#ifndef CORVEL_DBG_H
#define CORVEL_DBG_H

#include "corvelbase_export.h"

#include <QStringList>

/**
 * Tells whether debug output of a sub-module is wanted, and remembers that it was asked for.
 *
 * The environment variable CORVEL_DEBUG holds a comma-separated list of "module/submodule" patterns with the wildcards
 * `*` and `?`; a pattern without a slash names a whole module. "corvelgui/Message*,corvelframework" is an example. The
 * variable is read at the first call. Callers keep the answer in a static of their own and ask once.
 *
 * @param module     name of the library, for instance "corvelgui"; null is taken as an empty name
 * @param subModule  name of the part of it, usually a class; null is taken as an empty name
 * @return 1 when a pattern matches, else 0. Safe to call from any thread.
 */
CORVELBASE_EXPORT int dbg_SubModActive(const char* module, const char* subModule);

/**
 * Reports a failed internal check as one line on the error stream and returns, so that the caller can carry on.
 *
 * With the environment variable CORVEL_ASSERT set to "abort" the program is aborted after the line was written. The
 * line is written at once, so that lines of several threads do not mix.
 *
 * @param module     name of the library; this and all other texts may be null
 * @param subModule  name of the part of it
 * @param level      severity; 0 is the only one in use, and others are printed
 * @param function   bare name of the function that checked
 * @param file       source file, relative to the library's root
 * @param line       line that the report names
 * @param message    what ought to have been true
 */
CORVELBASE_EXPORT void dbg_Assert(const char* module, const char* subModule, int level, const char* function,
                                  const char* file, int line, const char* message);

/** The sub-modules that asked dbg_SubModActive() so far, as sorted "module/submodule" texts, for a diagnostics page. */
CORVELBASE_EXPORT QStringList dbg_AskedSubModules();

#endif

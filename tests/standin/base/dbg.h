#ifndef DBG_H
#define DBG_H

int dbg_SubModActive(const char* module, const char* subModule);
void dbg_Assert(const char* module, const char* subModule, int, const char* function, const char* file, int line,
                const char* message);

#endif

#include "dbg.h"

#include <QByteArray>
#include <QMutex>
#include <QSet>

#include <cstdio>
#include <cstdlib>

namespace
{

// Everything that the answers depend on. Never destroyed: other libraries' statics may still ask while the program
// ends.
struct DebugSwitches
{
    DebugSwitches()
        : patterns(qgetenv("CORVEL_DEBUG").split(','))
    {
    }

    QMutex mutex;
    QList<QByteArray> patterns;
    QSet<QByteArray> asked;
};

DebugSwitches& debugSwitches()
{
    static DebugSwitches* const switches = new DebugSwitches;
    return *switches;
}

const char* orEmpty(const char* text)
{
    return text ? text : "";
}

// Wildcard match with * and ?; iterative, so that a pattern of many stars stays cheap.
bool matches(const char* pattern, const char* text)
{
    const char* star = 0;
    const char* retry = 0;
    while (*text) {
        if (*pattern == '*') {
            star = ++pattern;
            retry = text;
        } else if (*pattern == '?' || *pattern == *text) {
            ++pattern;
            ++text;
        } else if (star) {
            pattern = star;
            text = ++retry;
        } else {
            return false;
        }
    }
    while (*pattern == '*')
        ++pattern;
    return !*pattern;
}

} // namespace

int dbg_SubModActive(const char* module, const char* subModule)
{
    const QByteArray name = QByteArray(orEmpty(module)) + '/' + orEmpty(subModule);
    DebugSwitches& switches = debugSwitches();
    QMutexLocker locker(&switches.mutex);
    switches.asked.insert(name);
    for (int i = 0; i < switches.patterns.size(); ++i) {
        QByteArray pattern = switches.patterns.at(i).trimmed();
        if (pattern.isEmpty())
            continue;
        if (!pattern.contains('/'))
            pattern += "/*";
        if (matches(pattern.constData(), name.constData()))
            return 1;
    }
    return 0;
}

void dbg_Assert(const char* module, const char* subModule, int level, const char* function, const char* file, int line,
                const char* message)
{
    QByteArray text("corvel: assertion failed: ");
    text += orEmpty(message);
    text += " (";
    text += orEmpty(function);
    text += " at ";
    text += orEmpty(file);
    text += ':';
    text += QByteArray::number(line);
    text += ", ";
    text += orEmpty(module);
    text += '/';
    text += orEmpty(subModule);
    if (level != 0) {
        text += ", level ";
        text += QByteArray::number(level);
    }
    text += ')';
    text.replace('\n', ' '); // one report is one line, whatever the message holds
    text += '\n';
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
    std::fflush(stderr);
    if (qgetenv("CORVEL_ASSERT") == "abort")
        std::abort();
}

QStringList dbg_AskedSubModules()
{
    DebugSwitches& switches = debugSwitches();
    QMutexLocker locker(&switches.mutex);
    QStringList names;
    Q_FOREACH (const QByteArray& name, switches.asked)
        names.append(QString::fromLatin1(name.constData()));
    names.sort();
    return names;
}

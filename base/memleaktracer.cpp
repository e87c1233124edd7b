#include "memleaktracer.h"

#include <QMutexLocker>

#include <cstdio>
#include <cstdlib>

MemLeakTracer::Account::Account()
    : allocated(0)
    , deallocated(0)
    , peak(0)
{
}

MemLeakTracer::MemLeakTracer() {}

MemLeakTracer::~MemLeakTracer() {}

MemLeakTracer* MemLeakTracer::getInstance()
{
    // Never destroyed: objects with static storage may report after any order of destruction we could choose.
    static MemLeakTracer* const instance = []() {
        if (!qgetenv("CORVEL_LEAK_REPORT").isEmpty() && qgetenv("CORVEL_LEAK_REPORT") != "0")
            std::atexit(printReport);
        return new MemLeakTracer;
    }();
    return instance;
}

void MemLeakTracer::doAllocateObject(QString className)
{
    QMutexLocker locker(&m_mutex);
    Account& account = m_accounts[className];
    ++account.allocated;
    const qint64 live = static_cast<qint64>(account.allocated - account.deallocated);
    if (live > account.peak)
        account.peak = live;
}

void MemLeakTracer::doDeallocateObject(QString className)
{
    QMutexLocker locker(&m_mutex);
    ++m_accounts[className].deallocated;
}

MemLeakTracer::Account MemLeakTracer::getAccount(const QString& className) const
{
    QMutexLocker locker(&m_mutex);
    return m_accounts.value(className);
}

QStringList MemLeakTracer::getClassNames() const
{
    QMutexLocker locker(&m_mutex);
    QStringList names = m_accounts.keys();
    names.sort();
    return names;
}

qint64 MemLeakTracer::getLiveCount(const QString& className) const
{
    const Account account = getAccount(className);
    return static_cast<qint64>(account.allocated - account.deallocated);
}

QStringList MemLeakTracer::getUnlevelReport() const
{
    return getReport(true);
}

QStringList MemLeakTracer::getReport(bool unlevelOnly) const
{
    QStringList lines;
    const QStringList names = getClassNames();
    for (int i = 0; i < names.size(); ++i) {
        const Account account = getAccount(names.at(i));
        if (unlevelOnly && account.allocated == account.deallocated)
            continue;
        lines.append(QString::fromLatin1("%1: %2 allocated, %3 deallocated, peak %4")
                         .arg(names.at(i))
                         .arg(account.allocated)
                         .arg(account.deallocated)
                         .arg(account.peak));
    }
    return lines;
}

void MemLeakTracer::printReport()
{
    const QStringList lines = getInstance()->getReport(qgetenv("CORVEL_LEAK_REPORT") != "all");
    QByteArray text;
    for (int i = 0; i < lines.size(); ++i)
        text += "corvel: objects: " + lines.at(i).toLocal8Bit() + '\n';
    std::fwrite(text.constData(), 1, static_cast<std::size_t>(text.size()), stderr);
}

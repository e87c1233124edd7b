#ifndef WINDOWPROBE_H
#define WINDOWPROBE_H

#include <QFile>
#include <QObject>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <unistd.h>
#include <vector>

/** What this process holds in memory. */
inline double megabytesInUse()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

/** Posts an event to the window's thread every 5 ms from another one, and notes how long each waits. */
class WindowProbe : public QObject
{
public:
    void start()
    {
        m_thread = std::thread([this]() {
            while (!m_stopped) {
                const Clock::time_point posted = Clock::now();
                QMetaObject::invokeMethod(
                    this,
                    [this, posted]() {
                        m_waits.push_back(std::chrono::duration<double, std::milli>(Clock::now() - posted).count());
                    },
                    Qt::QueuedConnection);
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
            }
        });
    }

    void stop()
    {
        m_stopped = true;
        m_thread.join();
    }

    /** After stop(). */
    void report()
    {
        std::sort(m_waits.begin(), m_waits.end());
        const auto at = [this](double share) { return m_waits[std::size_t(share * double(m_waits.size() - 1))]; };
        const auto late = std::upper_bound(m_waits.begin(), m_waits.end(), 16.0);
        std::printf("answers after: median %.2f ms, 90 %% %.2f ms, 99 %% %.2f ms, at most %.2f ms (%zu events, %.2f %% "
                    "under 16 ms)\n",
                    at(0.5), at(0.9), at(0.99), at(1), m_waits.size(),
                    100.0 * double(late - m_waits.begin()) / double(m_waits.size()));
    }

private:
    using Clock = std::chrono::steady_clock;

    std::vector<double> m_waits; // milliseconds
    std::thread m_thread;
    std::atomic<bool> m_stopped{false};
};

#endif

#ifndef WINDOWPROBE_H
#define WINDOWPROBE_H

#include <QFile>
#include <QObject>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <malloc.h>
#include <thread>
#include <unistd.h>
#include <utility>
#include <vector>

/** What this process holds in memory. */
inline double megabytesInUse()
{
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

/** Of these, what somebody holds: without what was given back and is kept for the next one. */
inline double megabytesAllocated()
{
    const struct mallinfo2 info = mallinfo2();
    return double(info.uordblks + info.hblkhd) / 1e6;
}

/** Posts an event to the window's thread every 5 ms from another one, and notes how long each waits. */
class WindowProbe : public QObject
{
public:
    void start()
    {
        m_start = Clock::now();
        m_thread = std::thread([this]() {
            while (!m_stopped) {
                const Clock::time_point posted = Clock::now();
                QMetaObject::invokeMethod(
                    this,
                    [this, posted]() {
                        const Clock::time_point now = Clock::now();
                        m_waits.push_back(std::chrono::duration<double, std::milli>(now - posted).count());
                        m_longest.emplace_back(m_waits.back(), std::chrono::duration<double>(posted - m_start).count());
                        if (m_longest.size() > 1000)
                            keepLongest();
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
        keepLongest();
        std::printf("the longest");
        for (const auto& wait : m_longest)
            std::printf(", %.0f ms after %.1f s", wait.first, wait.second);
        std::printf("\n");
    }

private:
    using Clock = std::chrono::steady_clock;

    void keepLongest()
    {
        std::sort(m_longest.rbegin(), m_longest.rend());
        m_longest.resize(std::min<std::size_t>(m_longest.size(), 10));
    }

    Clock::time_point m_start;
    std::vector<double> m_waits;                      // milliseconds
    std::vector<std::pair<double, double>> m_longest; // milliseconds, and the seconds when they began
    std::thread m_thread;
    std::atomic<bool> m_stopped{false};
};

#endif

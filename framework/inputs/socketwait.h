#ifndef SOCKETWAIT_H
#define SOCKETWAIT_H

#include <QtGlobal>

#include <QElapsedTimer>

#include <atomic>

/**
 * Calls @p waitOnce(milliseconds) in short slices until it is true, the time is over, or @p cancelled is set.
 *
 * Sockets without an event loop cannot be woken from another thread; asking again every few milliseconds is what is
 * left.
 *
 * @param goOn  asked after each slice: whether waiting still makes sense
 * @return what the last call gave
 */
template <typename WaitOnce, typename GoOn>
bool waitInSlices(int timeoutMs, const std::atomic<bool>& cancelled, WaitOnce waitOnce, GoOn goOn)
{
    const qint64 slice = 50;
    QElapsedTimer timer;
    timer.start();
    for (;;) {
        const qint64 rest = timeoutMs - timer.elapsed();
        if (waitOnce(static_cast<int>(qBound(qint64(0), rest, slice))))
            return true;
        if (cancelled || rest <= slice || !goOn())
            return false;
    }
}

#endif

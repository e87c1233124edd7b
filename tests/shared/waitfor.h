#ifndef WAITFOR_H
#define WAITFOR_H

#include <QCoreApplication>
#include <QElapsedTimer>

/**
 * Runs the event loop until @p condition, a callable, holds; at most @p deadlineMs.
 *
 * @return whether the condition came to hold
 */
template <typename Condition>
bool waitFor(Condition condition, int deadlineMs = 10000)
{
    QElapsedTimer timer;
    timer.start();
    while (!condition()) {
        if (timer.elapsed() > deadlineMs)
            return false;
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    return true;
}

#endif

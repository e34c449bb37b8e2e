#pragma once

#include "s3racechecker.h"

#include <QRecursiveMutex>

/// A QRecursiveMutex whose holders a race checker knows.
class s3RecursiveMutex
{
public:
    s3RecursiveMutex() = default;

    void lock()
    {
        s3RaceChecker::beforeLock(this);
        m_mutex.lock();
        s3RaceChecker::afterLock(this);
    }

    /// Only by the thread that holds it, once for each lock().
    void unlock()
    {
        s3RaceChecker::beforeUnlock(this);
        m_mutex.unlock();
        s3RaceChecker::afterUnlock(this);
    }

private:
    Q_DISABLE_COPY_MOVE(s3RecursiveMutex)

    QRecursiveMutex m_mutex;
};

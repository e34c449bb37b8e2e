#pragma once

#include <QThread>

#include <atomic>

/// The base of the core's worker threads, and the place where code asks for the main thread. A derived class overrides
/// run() and calls runFinish() as its last action; a run() that ends in any other way is a programming error.
class s3ThreadBase : public QThread
{
    Q_OBJECT

public:
    s3ThreadBase();
    ~s3ThreadBase() override;

    /// Whether the caller is on the thread of the application object, without which this is a failed assertion. From
    /// any thread, as are the two assertions.
    [[nodiscard]] static bool currentIsMainThread();
    static void assertInMainThread();
    static void assertNotInMainThread();

    /// Starts the thread with the priority of the calling one; a running thread stays as it is. Whether it runs, or has
    /// come to the end of its run() meanwhile.
    bool start();
    /// What start() has returned last.
    [[nodiscard]] bool isStarted() const { return m_started; }

    /// Where postToReceiver() posts to; not owned. Not from the main thread.
    void setEventReceiver(QObject *receiver);
    /// Posts \a event, which then belongs to Qt. Without a receiver nothing happens, and it stays the caller's.
    void postToReceiver(QEvent *event);

    /// As QThread's, for what the thread has done to be known to a race checker as well.
    bool wait(QDeadlineTimer deadline = QDeadlineTimer(QDeadlineTimer::Forever));
    /// In milliseconds.
    bool wait(unsigned long time);

    using QThread::quit;
    /// Asks the thread's event loop to end. With \a waitEnd it waits for the end, 5000 milliseconds at most: a thread
    /// that takes longer goes on running.
    virtual void quit(bool waitEnd);

    bool event(QEvent *event) override;

public Q_SLOTS:
    /// Called on the worker thread when run() has ended.
    void slotFinished();

protected:
    virtual void deleteIfWanted();
    /// For the end of run().
    void runFinish();

    /// Whether the object schedules its own deletion after run(). To be set before start().
    bool m_deleteWhenFinished = false;

private:
    QObject *m_eventReceiver = nullptr;
    bool m_started = false;
    // Written by the worker; start() may read it while run() comes to its end.
    std::atomic_bool m_runFinished = false;
};

#include "s3threadbase.h"

#include "s3assert.h"
#include "s3elapsedtimer.h"
#include "s3racechecker.h"
#include "s3trace.h"
#include "s3tracearg.h"

#include <QCoreApplication>

#include <climits>

using namespace Qt::Literals::StringLiterals;

s3ThreadBase::s3ThreadBase()
{
    S3_TRACE(110, u"s3ThreadBase::s3ThreadBase()"_s + s3TraceArg(u"this"_s, this));
    // Direct, since this object lives in the thread that made it, and the slot is for the one that has ended.
    connect(this, &QThread::finished, this, &s3ThreadBase::slotFinished, Qt::DirectConnection);
}

s3ThreadBase::~s3ThreadBase()
{
    S3_TRACE(110, u"s3ThreadBase::~s3ThreadBase()"_s + s3TraceArg(u"this"_s, this));
}

bool s3ThreadBase::currentIsMainThread()
{
    const QCoreApplication *const application = QCoreApplication::instance();
    S3_ASSERT_AT(application != nullptr, "(static_cast<QApplication *>(QCoreApplication::instance())) != nullptr",
                 QString(), 199, "s3ThreadBase::currentIsMainThread");
    const QThread *const mainThread = application->thread();
    const QThread *const currentThread = QThread::currentThread();
    S3_ASSERT_AT(mainThread != nullptr && currentThread != nullptr, "mainThread != nullptr && currentThread != nullptr",
                 QString(), 204, "s3ThreadBase::currentIsMainThread");
    return currentThread == mainThread;
}

void s3ThreadBase::assertInMainThread()
{
    S3_ASSERT_AT(currentIsMainThread(), "currentIsMainThread()", QString(), 215, "s3ThreadBase::assertInMainThread");
}

void s3ThreadBase::assertNotInMainThread()
{
    S3_ASSERT_AT(!currentIsMainThread(), "! currentIsMainThread()", QString(), 224,
                 "s3ThreadBase::assertNotInMainThread");
}

bool s3ThreadBase::start()
{
    m_started = isRunning();
    if (!m_started) {
        // A former run counts as ended before slotFinished() has been called for it, which looks at the mark.
        QThread::wait();
        m_runFinished = false;
        QThread::start(QThread::InheritPriority);
        m_started = isRunning() || m_runFinished;
    }
    return m_started;
}

void s3ThreadBase::setEventReceiver(QObject *receiver)
{
    assertNotInMainThread();
    m_eventReceiver = receiver;
}

void s3ThreadBase::postToReceiver(QEvent *event)
{
    if (event == nullptr || m_eventReceiver == nullptr)
        return;
    s3RaceChecker::handOver(event);
    QCoreApplication::postEvent(m_eventReceiver, event);
}

bool s3ThreadBase::wait(QDeadlineTimer deadline)
{
    const bool hasEnded = QThread::wait(deadline);
    if (hasEnded)
        s3RaceChecker::takeOver(this);
    return hasEnded;
}

bool s3ThreadBase::wait(unsigned long time)
{
    return wait(time == ULONG_MAX ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(qint64(time)));
}

bool s3ThreadBase::event(QEvent *event)
{
    if (event->type() == QEvent::DeferredDelete)
        s3RaceChecker::takeOver(this);
    return QThread::event(event);
}

void s3ThreadBase::quit(bool waitEnd)
{
    S3_TRACE(110, u"s3ThreadBase::quit()"_s + s3TraceArg(u"this"_s, this) + s3TraceArg(u"waitEnd"_s, waitEnd));
    if (!isRunning())
        return;
    QThread::quit();
    if (!waitEnd)
        return;
    s3ElapsedTimer timer(true);
    wait(QDeadlineTimer(5000));
    S3_TRACE(110, u"s3ThreadBase::quit()"_s + s3TraceArg(u"elapsed"_s, timer.text(false)));
}

void s3ThreadBase::slotFinished()
{
    assertNotInMainThread();
    S3_ASSERT_AT(m_runFinished, "m_runFinished == true",
                 u"Kein runFinish() Aufruf in der abgeleiteten run() Funktion"_s, 174, "s3ThreadBase::slotFinished");
    deleteIfWanted();
    s3RaceChecker::handOver(this);
}

void s3ThreadBase::deleteIfWanted()
{
    if (!m_deleteWhenFinished)
        return;
    s3RaceChecker::handOver(this);
    deleteLater();
}

void s3ThreadBase::runFinish()
{
    m_runFinished = true;
}

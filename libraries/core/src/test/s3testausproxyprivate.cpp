#include "s3testausproxyprivate.h"

#include "protocol/s3logstream.h"
#include "s3debuggeroutput.h"
#include "s3racechecker.h"
#include "s3testflags.h"
#include "s3threadbase.h"

#include <QCoreApplication>
#include <QScopedValueRollback>
#include <QThread>

#include <mutex>

using namespace Qt::Literals::StringLiterals;

s3TestausProxyPrivate::s3TestausProxyPrivate()
    : fileName(u"testaus.txt"_s)
{
}

bool s3TestausProxyPrivate::beginPiece()
{
    lineMutex.lock();
    const std::lock_guard lock(lineDepthMutex);
    ++lineDepth;
    return lineDepth == 1;
}

void s3TestausProxyPrivate::endLine()
{
    const std::lock_guard lock(lineDepthMutex);
    for (; lineDepth > 0; --lineDepth)
        lineMutex.unlock();
}

void s3TestausProxyPrivate::enqueue(const QString &text, bool endOfLine)
{
    if (QCoreApplication::instance() == nullptr)
        return;

    if (isOnThisThread()) {
        // Other threads append while they hold lineMutex, as the caller does: it can only be a flush that is in the
        // way.
        if (queueMutex.tryLock()) {
            queue.append({text, endOfLine});
            queueMutex.unlock();
        }
        flush();
        return;
    }

    auto *const event = new s3TestausProxyPrivatFlushEvent;
    {
        // A copy of its own for the main thread: neither thread has to wait for the other to count references to it,
        // and a race checker, which doesn't see Qt's counting, finds nothing that two threads share.
        Entry entry{QString(text.constData(), text.size()), endOfLine};
        const std::lock_guard lock(queueMutex);
        queue.append(std::move(entry));
    }
    // Not under the lock: a flush that finds it taken leaves the entries to the next event, and there might be none.
    s3RaceChecker::handOver(event);
    QCoreApplication::postEvent(this, event, Qt::NormalEventPriority);
}

void s3TestausProxyPrivate::customEvent(QEvent *event)
{
    s3RaceChecker::takeOver(event);
    if (event->type() == s3TestausProxyPrivatFlushEvent::type())
        flush();
}

void s3TestausProxyPrivate::flush()
{
    const std::unique_lock lock(queueMutex, std::try_to_lock);
    if (!lock.owns_lock() || queue.isEmpty())
        return;
    s3ThreadBase::assertInMainThread();

    const QScopedValueRollback flushing(m_isFlushing, true);
    const bool toDebugger = s3HasTestFlag(202);
    const bool toFile =
        s3HasTestFlag(55) && s3LogStream::openChannel(u"testaus"_s, fileName, QStringConverter::Utf16LE);
    while (!queue.isEmpty())
        put(queue.takeFirst(), toDebugger, toFile);
}

void s3TestausProxyPrivate::put(const Entry &entry, bool toDebugger, bool toFile) const
{
    if (callback != nullptr)
        callback(entry.text, entry.endOfLine);
    if (toDebugger)
        s3OutputDebugString(entry.endOfLine ? entry.text + u'\n' : entry.text);
    if (!toFile)
        return;
    QTextStream &stream = s3LogStream::channelStream(u"testaus"_s);
    stream << entry.text;
    if (entry.endOfLine)
        stream << Qt::endl;
    if (!s3HasTestFlag(96))
        stream.flush();
}

bool s3TestausProxyPrivate::isCalledByFlush() const
{
    return isOnThisThread() && m_isFlushing;
}

bool s3TestausProxyPrivate::isOnThisThread() const
{
    return thread() == QThread::currentThread();
}

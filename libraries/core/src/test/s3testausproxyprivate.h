#pragma once

#include "protocol/s3customevent.h"
#include "s3mutex.h"
#include "s3testausproxy.h"

#include <QList>
#include <QMutex>

/// Asks for a flush; carries nothing.
class s3TestausProxyPrivatFlushEvent : public s3CustomEventBase<s3TestausProxyPrivatFlushEvent>
{
};

/// The queue behind s3TestausProxy, and what is done with it. Locks are taken in the order lineMutex, lineDepthMutex,
/// queueMutex.
class s3TestausProxyPrivate : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        QString text;
        bool endOfLine = false;
    };

    /// Takes lineMutex for this thread. Whether it is the first piece of a line.
    [[nodiscard]] bool beginPiece();
    /// Gives lineMutex back, however many pieces the line had.
    void endLine();

    /// On the main thread it flushes as well, on others it asks the main thread to.
    void enqueue(const QString &text, bool endOfLine);
    void flush();
    /// Whether the caller has been called by a flush; false on all threads but the main one.
    [[nodiscard]] bool isCalledByFlush() const;
    /// Whether the caller is on the main thread, on which this object is once there is an application. Doesn't ask the
    /// application, which may just be going.
    [[nodiscard]] bool isOnThisThread() const;

    /// Waiting output, oldest first.
    QList<Entry> queue;
    QString fileName;
    s3TestausProxy::Callback callback = nullptr;
    /// Held from the first piece of a line to its end, so that lines of two threads don't mix.
    s3RecursiveMutex lineMutex;
    /// The number of holds of lineMutex.
    qint32 lineDepth = 0;
    QMutex lineDepthMutex;
    /// Guards the queue, and is held throughout a flush.
    QMutex queueMutex;

    s3TestausProxyPrivate();

protected:
    void customEvent(QEvent *event) override;

private:
    void put(const Entry &entry, bool toDebugger, bool toFile) const;

    // Read and written on the main thread only.
    bool m_isFlushing = false;
};

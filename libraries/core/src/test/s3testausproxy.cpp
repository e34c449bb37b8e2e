#include "s3testausproxy.h"

#include "s3assert.h"
#include "s3testausproxyprivate.h"
#include "s3testflags.h"
#include "s3threadbase.h"
#include "s3trace.h"

#include <QCoreApplication>
#include <QMutex>
#include <QScopeGuard>
#include <QTime>

#include <atomic>
#include <mutex>

using namespace Qt::Literals::StringLiterals;

namespace {

std::atomic_bool proxyExists = false;

// Only one thread may take what belongs to none.
QMutex moveMutex;

} // namespace

s3TestausProxy::s3TestausProxy()
    : m_private(std::make_unique<s3TestausProxyPrivate>())
{
    proxyExists = true;
    if (QCoreApplication::instance() == nullptr) {
        // Nobody knows yet whether this is the main thread. Qt lets any thread take what belongs to none.
        moveToThread(nullptr);
        m_private->moveToThread(nullptr);
    }
}

s3TestausProxy::~s3TestausProxy() = default;

s3TestausProxy *s3TestausProxy::instance()
{
    static auto *const proxy = new s3TestausProxy;
    proxy->moveToMainThread();
    return proxy;
}

bool s3TestausProxy::exists()
{
    return proxyExists;
}

void s3TestausProxy::moveToMainThread()
{
    const QCoreApplication *const application = QCoreApplication::instance();
    if (application == nullptr)
        return;
    QThread *const mainThread = application->thread();
    S3_ASSERT_AT(mainThread != nullptr, "mainThread != nullptr", QString(), 67, "s3TestausProxy::moveToMainThread");
    if (thread() == mainThread)
        return;
    const std::lock_guard lock(moveMutex);
    QThread *const currentThread = QThread::currentThread();
    if (thread() == nullptr) {
        m_private->moveToThread(currentThread);
        moveToThread(currentThread);
    }
    if (thread() == currentThread && currentThread != mainThread) {
        m_private->moveToThread(mainThread);
        moveToThread(mainThread);
    }
}

void s3TestausProxy::write(const QString &text, bool endOfLine)
{
    if (QCoreApplication::instance() == nullptr)
        return;
    const bool active = m_private->callback != nullptr || s3HasTestFlag(55) || s3HasTestFlag(202);
    if (!active)
        return;
    // It would be dropped anyway, but only after it had waited for the line of another thread, which waits for the
    // flush.
    if (m_private->isCalledByFlush())
        return;
    // On its first call this writes a line of its own, which must not come into the middle of the one that starts here.
    if (!m_private->isOnThisThread())
        static_cast<void>(s3TestausProxyPrivatFlushEvent::type());

    const bool isFirstPiece = m_private->beginPiece();
    const auto end = qScopeGuard([this, endOfLine] {
        if (endOfLine)
            m_private->endLine();
    });
    const bool withTime = s3HasTestFlag(96) && isFirstPiece;
    m_private->enqueue(withTime ? QTime::currentTime().toString(u"[HH:mm:ss.zzz] "_s) + text : text, endOfLine);
}

void s3TestausProxy::setFileName(const QString &name)
{
    if (name.isEmpty())
        return;
    m_private->fileName = name;
    s3TestFlagsGUI::instance()->insert(55);
}

void s3TestausProxy::setCallback(Callback callback)
{
    m_private->callback = callback;
}

void s3WriteTrace(const QString &line)
{
    s3TestausProxy::instance()->write(line, true);
}

#include "comapartment.h"

#include "callpatience.h"
#include "referencecounted.h"

#include <objbase.h>
#include <objidl.h>
#include <wrl/client.h>

namespace {

/// Posted to the thread, and to none of its windows.
constexpr UINT wakeUpMessage = WM_APP;

/// COM leaves posted messages in the queue, which takes ten thousand of them and then no more of anything.
void takeWakeUpMessages()
{
    auto *const threadItself = reinterpret_cast<HWND>(qintptr(-1));
    MSG message;
    while (PeekMessageW(&message, threadItself, wakeUpMessage, wakeUpMessage, PM_REMOVE) != FALSE) {
        // It comes whatever was asked for, and is for somebody else.
        if (message.message == WM_QUIT) {
            PostQuitMessage(int(message.wParam));
            return;
        }
    }
}

class PatientFilter : public ReferenceCounted<IMessageFilter>
{
public:
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO) override
    {
        return SERVERCALL_ISHANDLED;
    }

    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override
    {
        const std::optional<CallPatience::Duration> pause = CallPatience::ofProcess().rejected();
        constexpr DWORD giveUp = DWORD(-1);
        return pause ? DWORD(pause->count()) : giveUp;
    }

    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD elapsed, DWORD) override
    {
        takeWakeUpMessages();
        return CallPatience::ofProcess().unanswered(CallPatience::Duration(elapsed)) ? PENDINGMSG_CANCELCALL
                                                                                     : PENDINGMSG_WAITDEFPROCESS;
    }

private:
    [[nodiscard]] bool implements(REFIID iid) const override { return iid == __uuidof(IMessageFilter); }
};

} // namespace

/// The message filter of a thread, and what has COM ask it while a call isn't answered.
class ComCallWatch
{
public:
    /// The one that all apartments of the thread share.
    [[nodiscard]] static std::shared_ptr<ComCallWatch> ofThread();

    ComCallWatch();
    ~ComCallWatch();

private:
    Q_DISABLE_COPY_MOVE(ComCallWatch)

    bool m_hasFilter = false;
    IMessageFilter *m_earlierFilter = nullptr;
    HANDLE m_timer = nullptr;
};

std::shared_ptr<ComCallWatch> ComCallWatch::ofThread()
{
    thread_local std::weak_ptr<ComCallWatch> shared;
    std::shared_ptr<ComCallWatch> watch = shared.lock();
    if (watch == nullptr) {
        watch = std::make_shared<ComCallWatch>();
        shared = watch;
    }
    return watch;
}

ComCallWatch::ComCallWatch()
{
    const auto filter = adopt<IMessageFilter>(new PatientFilter);
    m_hasFilter = SUCCEEDED(CoRegisterMessageFilter(filter.Get(), &m_earlierFilter));
    // The filter hears of a call that isn't answered only when a message arrives. Those of a window's timer don't count
    // while COM waits, posted ones do.
    const auto post = [](void *thread, BOOLEAN) {
        PostThreadMessageW(DWORD(reinterpret_cast<quintptr>(thread)), wakeUpMessage, 0, 0);
    };
    constexpr auto period = DWORD(CallPatience::interval.count());
    if (CreateTimerQueueTimer(&m_timer, nullptr, post, reinterpret_cast<void *>(quintptr(GetCurrentThreadId())), period,
                              period, WT_EXECUTEINTIMERTHREAD) == FALSE)
        m_timer = nullptr;
}

ComCallWatch::~ComCallWatch()
{
    if (m_timer != nullptr)
        DeleteTimerQueueTimer(nullptr, m_timer, INVALID_HANDLE_VALUE);
    takeWakeUpMessages();
    if (m_hasFilter) {
        CoRegisterMessageFilter(m_earlierFilter, nullptr);
        if (m_earlierFilter != nullptr)
            m_earlierFilter->Release();
    }
}

ComApartment::ComApartment()
    : m_entered(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
{
    if (m_entered)
        m_watch = ComCallWatch::ofThread();
}

ComApartment::~ComApartment()
{
    if (!m_entered)
        return;
    m_watch.reset();
    CoUninitialize();
}

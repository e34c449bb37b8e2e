#include "comapartment.h"

#include "callpatience.h"
#include "referencecounted.h"

#include <objidl.h>
#include <wrl/client.h>

namespace {

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
        return CallPatience::ofProcess().isTooLong(CallPatience::Duration(elapsed)) ? PENDINGMSG_CANCELCALL
                                                                                    : PENDINGMSG_WAITDEFPROCESS;
    }

private:
    [[nodiscard]] bool implements(REFIID iid) const override { return iid == __uuidof(IMessageFilter); }
};

} // namespace

ComApartment::ComApartment()
    : m_entered(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
{
    if (!m_entered)
        return;
    const auto filter = adopt<IMessageFilter>(new PatientFilter);
    m_hasFilter = SUCCEEDED(CoRegisterMessageFilter(filter.Get(), &m_earlierFilter));
    // The filter hears of a call that isn't answered only when a message arrives. Those of a window's timer don't count
    // while COM waits, posted ones do.
    const auto post = [](void *thread, BOOLEAN) {
        PostThreadMessageW(DWORD(reinterpret_cast<quintptr>(thread)), WM_NULL, 0, 0);
    };
    constexpr auto period = DWORD(CallPatience::interval.count());
    if (CreateTimerQueueTimer(&m_timer, nullptr, post, reinterpret_cast<void *>(quintptr(GetCurrentThreadId())), period,
                              period, WT_EXECUTEINTIMERTHREAD) == FALSE)
        m_timer = nullptr;
}

ComApartment::~ComApartment()
{
    if (!m_entered)
        return;
    if (m_timer != nullptr)
        DeleteTimerQueueTimer(nullptr, m_timer, INVALID_HANDLE_VALUE);
    if (m_hasFilter) {
        CoRegisterMessageFilter(m_earlierFilter, nullptr);
        if (m_earlierFilter != nullptr)
            m_earlierFilter->Release();
    }
    CoUninitialize();
}

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
    Microsoft::WRL::ComPtr<IMessageFilter> filter;
    filter.Attach(new PatientFilter);
    m_hasFilter = SUCCEEDED(CoRegisterMessageFilter(filter.Get(), &m_earlierFilter));
    // The filter hears of a call that isn't answered only when a message arrives.
    m_timer = SetTimer(nullptr, 0, UINT(CallPatience::interval.count()), nullptr);
}

ComApartment::~ComApartment()
{
    if (!m_entered)
        return;
    KillTimer(nullptr, m_timer);
    if (m_hasFilter) {
        CoRegisterMessageFilter(m_earlierFilter, nullptr);
        if (m_earlierFilter != nullptr)
            m_earlierFilter->Release();
    }
    CoUninitialize();
}

#include "standinclass.h"

#include "automation/referencecounted.h"
#include "simulation/simulatedoutlook.h"
#include "standinserver.h"

using Microsoft::WRL::ComPtr;

namespace {

class StandInClass : public ReferenceCounted<IClassFactory>
{
public:
    explicit StandInClass(StandInServer &server)
        : m_server(server)
    {
    }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown *outer, REFIID iid, void **object) override
    {
        *object = nullptr;
        if (outer != nullptr)
            return CLASS_E_NOAGGREGATION;
        // Held for the time in between, so that an Outlook that isn't available ends the server.
        m_server.hold();
        const ComPtr<IDispatch> application = adopt(m_server.createApplication());
        const HRESULT status = application != nullptr ? application->QueryInterface(iid, object) : E_FAIL;
        m_server.letGo();
        return status;
    }

    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override
    {
        if (lock != FALSE)
            m_server.hold();
        else
            m_server.letGo();
        return S_OK;
    }

private:
    [[nodiscard]] bool implements(REFIID iid) const override { return iid == __uuidof(IClassFactory); }

    StandInServer &m_server;
};

class BusyFilter : public ReferenceCounted<IMessageFilter>
{
public:
    explicit BusyFilter(const StandInServer &server)
        : m_server(server)
    {
    }

    /// Only calls of members are rejected. A release would be lost if it were.
    DWORD STDMETHODCALLTYPE HandleInComingCall(DWORD, HTASK, DWORD, LPINTERFACEINFO call) override
    {
        const bool ofMember = call != nullptr && call->iid == __uuidof(IDispatch);
        const bool busy = m_server.outlook() != nullptr && m_server.outlook()->server().isBusy();
        return ofMember && busy ? SERVERCALL_REJECTED : SERVERCALL_ISHANDLED;
    }

    DWORD STDMETHODCALLTYPE RetryRejectedCall(HTASK, DWORD, DWORD) override { return DWORD(-1); }

    DWORD STDMETHODCALLTYPE MessagePending(HTASK, DWORD, DWORD) override { return PENDINGMSG_WAITDEFPROCESS; }

private:
    [[nodiscard]] bool implements(REFIID iid) const override { return iid == __uuidof(IMessageFilter); }

    const StandInServer &m_server;
};

} // namespace

ComPtr<IClassFactory> createStandInClass(StandInServer &server)
{
    return adopt<IClassFactory>(new StandInClass(server));
}

ComPtr<IMessageFilter> createBusyFilter(const StandInServer &server)
{
    return adopt<IMessageFilter>(new BusyFilter(server));
}

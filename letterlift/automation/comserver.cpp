#include "comserver.h"

#include "compatience.h"

#include <objbase.h>

using Microsoft::WRL::ComPtr;

namespace {

/// A server that is about to end is as good as one that is busy: the next attempt starts a new one.
bool isPassing(HRESULT status)
{
    return isRejection(status) || status == CO_E_SERVER_STOPPING;
}

} // namespace

ComPtr<IDispatch> createComServer(const QString &name)
{
    CLSID classId{};
    if (FAILED(CLSIDFromString(reinterpret_cast<const OLECHAR *>(name.utf16()), &classId)))
        return nullptr;
    ComPtr<IDispatch> server;
    const auto create = [&] {
        return CoCreateInstance(classId, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(server.ReleaseAndGetAddressOf()));
    };
    return SUCCEEDED(withPatience(create, isPassing)) ? server : nullptr;
}

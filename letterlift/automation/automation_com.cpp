#include "automation.h"

#include "callpatience.h"
#include "comapartment.h"
#include "comerror.h"
#include "comobject.h"

#include <QDebug>
#include <QThread>

#include <memory>

using Microsoft::WRL::ComPtr;

namespace {

/// A server that is about to end is as good as one that is busy: the next attempt starts a new one.
bool isPassing(HRESULT status)
{
    return isRejection(status) || status == CO_E_SERVER_STOPPING;
}

ComPtr<IDispatch> createServer(const QString &progId)
{
    CLSID classId{};
    if (FAILED(CLSIDFromString(reinterpret_cast<const OLECHAR *>(progId.utf16()), &classId)))
        return nullptr;
    CallPatience &patience = CallPatience::ofProcess();
    for (;;) {
        ComPtr<IDispatch> server;
        const HRESULT status = CoCreateInstance(classId, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(server.GetAddressOf()));
        if (!isPassing(status)) {
            patience.taken();
            return SUCCEEDED(status) ? server : nullptr;
        }
        const std::optional<CallPatience::Duration> pause = patience.rejected();
        if (!pause)
            return nullptr;
        QThread::msleep(ulong(pause->count()));
    }
}

} // namespace

bool prepareAutomation(QString &)
{
    return true;
}

AutomationObject *createAutomationObject(const QString &progId, QObject *parent)
{
    auto apartment = std::make_shared<ComApartment>();
    const ComPtr<IDispatch> server = createServer(progId);
    if (server == nullptr)
        qWarning("QAxBase::setControl: requested control %s could not be instantiated", qUtf8Printable(progId));
    return new ComObject(std::move(apartment), server, parent);
}

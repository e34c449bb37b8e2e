#pragma once

#include "callpatience.h"
#include "comerror.h"

#include <QThread>

/// Makes \a call, which gives an HRESULT, until the server takes it. \a isPassing tells which results are worth another
/// attempt. Windows asks the message filter before it returns a rejection, Wine 8 doesn't; either way CallPatience has
/// the last word.
template<typename Call>
[[nodiscard]] HRESULT withPatience(Call call, bool (*isPassing)(HRESULT) = isRejection)
{
    CallPatience &patience = CallPatience::ofProcess();
    for (;;) {
        const HRESULT status = call();
        if (!isPassing(status)) {
            // The message filter has cancelled a call that wasn't answered.
            if (status != RPC_E_CALL_CANCELED)
                patience.answered();
            return status;
        }
        const std::optional<CallPatience::Duration> pause = patience.rejected();
        if (!pause)
            return status;
        QThread::msleep(ulong(pause->count()));
    }
}

#pragma once

#include "automationobject.h"

#include <QString>

#include <oaidl.h>

/// True if the server has rejected the call and may take it later.
[[nodiscard]] bool isRejection(HRESULT status);

/// Why a call failed in the second way, for \a status other than DISP_E_EXCEPTION. \a argument is the number, from 1,
/// of the argument that the server named, if it named one.
[[nodiscard]] QString comErrorText(HRESULT status, int argument);

/// What the server tells of its exception, with the deferred fill-in done. The texts of \a info are freed.
[[nodiscard]] AutomationException takeException(EXCEPINFO &info);

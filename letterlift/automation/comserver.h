#pragma once

#include <QString>

#include <oaidl.h>
#include <wrl/client.h>

/// The object of a new or running server for \a name, a ProgID or a class's number in braces. A server that is busy is
/// asked again for as long as CallPatience allows. Null if there is none.
[[nodiscard]] Microsoft::WRL::ComPtr<IDispatch> createComServer(const QString &name);

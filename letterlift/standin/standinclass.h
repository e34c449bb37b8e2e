#pragma once

#include <objidl.h>
#include <wrl/client.h>

class StandInServer;

/// The class object that COM hands to clients; it makes the application object. \a server has to outlive it.
[[nodiscard]] Microsoft::WRL::ComPtr<IClassFactory> createStandInClass(StandInServer &server);

/// Rejects calls while the simulated Outlook is busy, as the real one does while it starts or shows a dialog.
[[nodiscard]] Microsoft::WRL::ComPtr<IMessageFilter> createBusyFilter(const StandInServer &server);

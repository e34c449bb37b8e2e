#pragma once

#include <QtGlobal>

#include <type_traits>

/// Calls \a function with \a context so that a fault of the machine in it, such as an access to memory that isn't
/// there, ends the function and not the process. Returns 0 if the function has returned, otherwise the fault's code as
/// Windows names it (winnt.h: 0xC0000005 is an access violation), on each system.
///
/// What a fault ends isn't unwound: no destructor of the function's own frames runs, and a lock that it holds stays
/// held. So it is for code that reads what may be broken, and owns nothing while it does. C++ exceptions pass through,
/// with their destructors. A stack overflow isn't guarded, and neither are breakpoints. Calls may be nested, and made
/// by any number of threads; a fault of a thread that is in no guarded call goes its usual way.
///
/// With GCC or Clang on Windows it is a vectored handler that meets the fault, in front of all handlers that stand in
/// frames. A fault that a function of the system would have met itself (IsBadReadPtr probes memory so, and others turn
/// one into an error code) ends the guarded function there; with Visual C++ the system's function goes on.
[[nodiscard]] quint32 s3GuardedCall(void (*function)(void *context), void *context);

/// The same for a lambda or any other object that can be called without arguments.
template<typename Function>
[[nodiscard]] quint32 s3Guarded(Function &&function)
{
    using Target = std::remove_reference_t<Function>;
    return s3GuardedCall([](void *context) { (*static_cast<Target *>(context))(); }, &function);
}

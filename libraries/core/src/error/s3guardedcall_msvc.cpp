#include "s3guardedcall.h"

#include <windows.h>

namespace {

int filter(DWORD code)
{
    constexpr DWORD severityMask = 0xF0000000;
    constexpr DWORD severityError = 0xC0000000;
    const bool guarded = (code & severityMask) == severityError && code != EXCEPTION_STACK_OVERFLOW;
    return guarded ? EXCEPTION_EXECUTE_HANDLER : EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

quint32 s3GuardedCall(void (*function)(void *), void *context)
{
    __try {
        function(context);
    } __except (filter(GetExceptionCode())) {
        return GetExceptionCode();
    }
    return 0;
}

// For GCC and Clang, which have no __try. A vectored handler puts the thread back to where the guarded call began.

#include "s3guardedcall.h"

#include <windows.h>

#include <mutex>

// The function comes back a second time when a fault has been met, which the compiler has to know.
extern "C" __declspec(dllimport) void WINAPI RtlCaptureContext(PCONTEXT) __attribute__((returns_twice));

namespace {

struct Guard
{
    CONTEXT start{};
    volatile quint32 code = 0;
    Guard *outer = nullptr;
};

// Not thread_local: GCC's allocates at a thread's first access, and the handler sees the exceptions of all threads.
DWORD guardSlot()
{
    static const DWORD slot = TlsAlloc();
    return slot;
}

std::mutex handlerMutex;
int guardedCalls = 0;
void *handler = nullptr;
DWORD slotOfHandler = TLS_OUT_OF_INDEXES;

bool isGuarded(DWORD code)
{
    constexpr DWORD severityMask = 0xF0000000;
    constexpr DWORD severityError = 0xC0000000;
    return (code & severityMask) == severityError && code != EXCEPTION_STACK_OVERFLOW;
}

LONG CALLBACK onException(EXCEPTION_POINTERS *exception)
{
    const DWORD code = exception->ExceptionRecord->ExceptionCode;
    if (!isGuarded(code))
        return EXCEPTION_CONTINUE_SEARCH;
    const DWORD lastError = GetLastError(); // TlsGetValue sets it
    auto *const guard = static_cast<Guard *>(TlsGetValue(slotOfHandler));
    SetLastError(lastError);
    if (guard == nullptr)
        return EXCEPTION_CONTINUE_SEARCH;
    guard->code = code;
    *exception->ContextRecord = guard->start;
    return EXCEPTION_CONTINUE_EXECUTION;
}

/// Its destructor is for a C++ exception that passes.
class Entry
{
public:
    explicit Entry(Guard &guard)
    {
        const std::lock_guard lock(handlerMutex);
        slotOfHandler = guardSlot();
        guard.outer = static_cast<Guard *>(TlsGetValue(slotOfHandler));
        TlsSetValue(slotOfHandler, &guard);
        // In front of all others: they are told of what the process can't live with.
        if (guardedCalls++ == 0)
            handler = AddVectoredExceptionHandler(1, onException);
    }

    ~Entry()
    {
        const std::lock_guard lock(handlerMutex);
        TlsSetValue(slotOfHandler, static_cast<Guard *>(TlsGetValue(slotOfHandler))->outer);
        if (--guardedCalls == 0)
            RemoveVectoredExceptionHandler(handler);
    }

private:
    Q_DISABLE_COPY_MOVE(Entry)
};

} // namespace

quint32 s3GuardedCall(void (*function)(void *), void *context)
{
    Guard guard;
    const Entry entry(guard);
    RtlCaptureContext(&guard.start);
    if (guard.code == 0)
        function(context);
    return guard.code;
}

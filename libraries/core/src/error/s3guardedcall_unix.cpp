#include "s3guardedcall.h"

#include <array>
#include <csetjmp>
#include <csignal>
#include <mutex>

namespace {

constexpr std::array<int, 4> guardedSignals{SIGSEGV, SIGBUS, SIGILL, SIGFPE};

struct Guard
{
    sigjmp_buf jump{};
    volatile quint32 code = 0;
    Guard *outer = nullptr;
};

thread_local Guard *innermost = nullptr;

// The actions belong to the process. They are ours while any thread is in a guarded call, and what was there before
// gets what isn't for us.
std::mutex actionMutex;
int guardedCalls = 0;
std::array<struct sigaction, guardedSignals.size()> earlierActions{};

quint32 codeOf(int signal, int reason)
{
    switch (signal) {
    case SIGBUS:
        return 0xC0000006;
    case SIGILL:
        return 0xC000001D;
    case SIGFPE:
        switch (reason) {
        case FPE_INTDIV:
            return 0xC0000094;
        case FPE_INTOVF:
            return 0xC0000095;
        case FPE_FLTDIV:
            return 0xC000008E;
        case FPE_FLTOVF:
            return 0xC0000091;
        case FPE_FLTUND:
            return 0xC0000093;
        case FPE_FLTRES:
            return 0xC000008F;
        case FPE_FLTSUB:
            return 0xC000008C;
        default:
            return 0xC0000090;
        }
    default:
        return 0xC0000005;
    }
}

void passOn(int signal, siginfo_t *info, void *context)
{
    for (size_t i = 0; i < guardedSignals.size(); ++i) {
        if (guardedSignals.at(i) != signal)
            continue;
        const struct sigaction &earlier = earlierActions.at(i);
        if ((earlier.sa_flags & SA_SIGINFO) != 0) {
            earlier.sa_sigaction(signal, info, context);
        } else if (earlier.sa_handler != SIG_DFL && earlier.sa_handler != SIG_IGN) {
            earlier.sa_handler(signal);
        } else {
            // The instruction is tried again, and this time the system does what it does with a fault.
            sigaction(signal, &earlier, nullptr);
        }
    }
}

void onSignal(int signal, siginfo_t *info, void *context)
{
    Guard *const guard = innermost;
    if (guard == nullptr) {
        passOn(signal, info, context);
        return;
    }
    guard->code = codeOf(signal, info->si_code);
    siglongjmp(guard->jump, 1);
}

void takeActions()
{
    const std::lock_guard lock(actionMutex);
    if (guardedCalls++ > 0)
        return;
    struct sigaction action = {};
    action.sa_sigaction = onSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    for (size_t i = 0; i < guardedSignals.size(); ++i)
        sigaction(guardedSignals.at(i), &action, &earlierActions.at(i));
}

void giveActionsBack()
{
    const std::lock_guard lock(actionMutex);
    if (--guardedCalls > 0)
        return;
    for (size_t i = 0; i < guardedSignals.size(); ++i)
        sigaction(guardedSignals.at(i), &earlierActions.at(i), nullptr);
}

/// Its destructor is for a C++ exception that passes.
class Entry
{
public:
    explicit Entry(Guard &guard)
    {
        guard.outer = innermost;
        takeActions();
        innermost = &guard;
    }

    ~Entry()
    {
        innermost = innermost->outer;
        giveActionsBack();
    }

private:
    Q_DISABLE_COPY_MOVE(Entry)
};

} // namespace

quint32 s3GuardedCall(void (*function)(void *), void *context)
{
    Guard guard;
    const Entry entry(guard);
    if (sigsetjmp(guard.jump, 1) == 0)
        function(context);
    return guard.code;
}

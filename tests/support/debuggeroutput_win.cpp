#include "debuggeroutput.h"

#include <qt_windows.h>

namespace {

// winnt.h of some compilers doesn't have it.
constexpr DWORD wideTextForDebugger = 0x4001000A;
constexpr DWORD textForDebugger = 0x40010006;

QString *output = nullptr;

// A debugger gets the text as the arguments of an exception. Without one, the exception comes to the process's own
// handlers: the wide form first, and the other one if nobody has taken it.
LONG CALLBACK listen(EXCEPTION_POINTERS *pointers)
{
    const EXCEPTION_RECORD &record = *pointers->ExceptionRecord;
    if (output == nullptr || record.NumberParameters < 2)
        return EXCEPTION_CONTINUE_SEARCH;
    if (record.ExceptionCode == wideTextForDebugger) {
        output->append(QString::fromWCharArray(reinterpret_cast<const wchar_t *>(record.ExceptionInformation[1])));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    if (record.ExceptionCode == textForDebugger) {
        output->append(QString::fromLocal8Bit(reinterpret_cast<const char *>(record.ExceptionInformation[1])));
        return EXCEPTION_CONTINUE_EXECUTION;
    }
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

QString debuggerOutputOf(void (*function)())
{
    QString text;
    output = &text;
    void *const handler = AddVectoredExceptionHandler(1, listen);
    function();
    RemoveVectoredExceptionHandler(handler);
    output = nullptr;
    return text;
}

#include "s3testflags.h"

s3TestFlagsGUI *s3TestFlagsGUI::instance()
{
    // Not a function-local static with its guard: the first access lies in a static initialiser of the main thread.
    static s3TestFlagsGUI *flags = nullptr;
    if (flags == nullptr)
        flags = new s3TestFlagsGUI;
    return flags;
}

#pragma once

#include <QString>

/// What a developer sees while \a function runs: what goes to the debugger on Windows, to standard error elsewhere. For
/// less than a pipe takes.
[[nodiscard]] QString debuggerOutputOf(void (*function)());

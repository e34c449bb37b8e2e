#pragma once

#include <QString>

/// The operating system's text for the error \a code: errno's values on Linux, those of GetLastError() on Windows.
/// Empty where the system has none. Any thread.
[[nodiscard]] QString s3ErrorText(unsigned code);

/// The text of this thread's last system error, a blank, and its code in parentheses; the code alone, "(2)", where the
/// system has no text. What goes on between the failure and this call may change the error: call it first. Any thread.
[[nodiscard]] QString s3LastErrorText();

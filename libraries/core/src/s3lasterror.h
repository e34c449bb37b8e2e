#pragma once

/// The code of this thread's last system error, errno or GetLastError(). Any thread.
[[nodiscard]] unsigned s3LastErrorCode();

/// Lets there be none, for who asks after an operation that may fail without one. Any thread.
void s3ClearLastError();

#pragma once

/// The code of this thread's last system error, errno or GetLastError(). Any thread.
[[nodiscard]] unsigned s3LastErrorCode();

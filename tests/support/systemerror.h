#pragma once

/// Sets this thread's last system error, errno or that of GetLastError().
void setSystemError(unsigned code);

#include "s3lasterror.h"

#include <windows.h>

unsigned s3LastErrorCode()
{
    return GetLastError();
}

void s3ClearLastError()
{
    SetLastError(0);
}

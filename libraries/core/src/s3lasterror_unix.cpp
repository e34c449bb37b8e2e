#include "s3lasterror.h"

#include <cerrno>

unsigned s3LastErrorCode()
{
    return unsigned(errno);
}

void s3ClearLastError()
{
    errno = 0;
}

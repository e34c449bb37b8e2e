#include "systemerror.h"

#include <cerrno>

void setSystemError(unsigned code)
{
    errno = int(code);
}

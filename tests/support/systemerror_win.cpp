#include "systemerror.h"

#include <windows.h>

void setSystemError(unsigned code)
{
    SetLastError(code);
}

#include "s3debuggeroutput.h"

#include <qt_windows.h>

void s3OutputDebugString(const QString &text)
{
    OutputDebugStringW(reinterpret_cast<const wchar_t *>(text.utf16()));
}

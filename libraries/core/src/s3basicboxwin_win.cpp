#include "s3basicboxwin.h"

#include <qt_windows.h>

int s3BasicBoxWin::messageBox(const QString &title, const QString &text, quint32 flags)
{
    return MessageBoxW(nullptr, reinterpret_cast<const wchar_t *>(text.utf16()),
                       reinterpret_cast<const wchar_t *>(title.utf16()), flags);
}

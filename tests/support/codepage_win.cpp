#include "codepage.h"

#include <windows.h>

QString fromCodePage(int codePage, const QByteArray &bytes)
{
    QString result(bytes.size(), Qt::Uninitialized);
    const int length = MultiByteToWideChar(UINT(codePage), MB_ERR_INVALID_CHARS, bytes.constData(), int(bytes.size()),
                                           reinterpret_cast<wchar_t *>(result.data()), int(result.size()));
    return length == bytes.size() ? result : QString();
}

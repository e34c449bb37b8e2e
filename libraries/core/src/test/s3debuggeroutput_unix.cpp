#include "s3debuggeroutput.h"

#include <cstdio>

void s3OutputDebugString(const QString &text)
{
    // In one piece, so that what other threads and processes write there doesn't come in between.
    const QByteArray bytes = text.toUtf8();
    std::fwrite(bytes.constData(), 1, size_t(bytes.size()), stderr);
    std::fflush(stderr);
}

#include "debuggeroutput.h"

#include <array>
#include <cstdio>
#include <unistd.h>

QString debuggerOutputOf(void (*function)())
{
    std::array<int, 2> ends{};
    if (pipe(ends.data()) != 0)
        qFatal("No pipe can be had");
    std::fflush(stderr);
    const int before = dup(STDERR_FILENO);
    dup2(ends[1], STDERR_FILENO);
    close(ends[1]);
    function();
    std::fflush(stderr);
    dup2(before, STDERR_FILENO);
    close(before);

    QByteArray bytes;
    std::array<char, 4096> buffer{};
    for (ssize_t count = 0; (count = read(ends[0], buffer.data(), buffer.size())) > 0;)
        bytes.append(buffer.data(), count);
    close(ends[0]);
    return QString::fromUtf8(bytes);
}

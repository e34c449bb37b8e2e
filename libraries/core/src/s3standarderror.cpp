#include "s3standarderror.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <ctime>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr int patience = 3000;

/// Keeps SIGPIPE, whose usual effect is the end of the process, from this thread for as long as it lives.
class NoBrokenPipe
{
public:
    NoBrokenPipe()
    {
        sigemptyset(&m_signal);
        sigaddset(&m_signal, SIGPIPE);
        sigset_t pending;
        sigemptyset(&pending);
        sigpending(&pending);
        m_wasPending = sigismember(&pending, SIGPIPE) == 1;
        if (pthread_sigmask(SIG_BLOCK, &m_signal, &m_before) == 0)
            m_isBlocked = true;
    }
    ~NoBrokenPipe()
    {
        if (!m_isBlocked)
            return;
        const timespec noTime = {};
        while (!m_wasPending && sigtimedwait(&m_signal, nullptr, &noTime) == -1 && errno == EINTR) {
        }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

private:
    Q_DISABLE_COPY_MOVE(NoBrokenPipe)

    sigset_t m_signal = {};
    sigset_t m_before = {};
    bool m_wasPending = false;
    bool m_isBlocked = false;
};

bool waitForRoom()
{
    pollfd standardError{STDERR_FILENO, POLLOUT, 0};
    int count = -1;
    do
        count = poll(&standardError, 1, patience);
    while (count < 0 && errno == EINTR);
    return count > 0 && (standardError.revents & POLLOUT) != 0;
}

} // namespace

void s3WriteToStandardError(const QByteArray &bytes)
{
    if (fcntl(STDERR_FILENO, F_GETFD) < 0)
        return;
    const NoBrokenPipe noBrokenPipe;
    qsizetype written = 0;
    while (written < bytes.size() && waitForRoom()) {
        // A pipe with any room takes so much without blocking.
        const qsizetype length = std::min(bytes.size() - written, qsizetype(PIPE_BUF));
        const ssize_t count = write(STDERR_FILENO, bytes.constData() + written, size_t(length));
        if (count < 0 && errno != EINTR && errno != EAGAIN)
            return;
        written += std::max(count, ssize_t(0));
    }
}

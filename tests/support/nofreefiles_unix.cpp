#include "nofreefiles.h"

#include <sys/resource.h>

namespace {

// No descriptor has a lower number: those of the standard streams are open.
constexpr rlim_t noFurtherFile = 3;

} // namespace

NoFreeFiles::NoFreeFiles()
{
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return;
    const rlim_t previous = limit.rlim_cur;
    limit.rlim_cur = noFurtherFile;
    if (setrlimit(RLIMIT_NOFILE, &limit) == 0)
        m_previousLimit = previous;
}

NoFreeFiles::~NoFreeFiles()
{
    rlimit limit{};
    if (!isActive() || getrlimit(RLIMIT_NOFILE, &limit) != 0)
        return;
    limit.rlim_cur = m_previousLimit;
    setrlimit(RLIMIT_NOFILE, &limit);
}

#include "unprivileged.h"

#include <grp.h>
#include <unistd.h>

namespace {

constexpr uid_t nobody = 65534;

} // namespace

Unprivileged::Unprivileged()
    : m_wasRoot(geteuid() == 0)
{
    // The groups go as well, as what belongs to root's group is often open to it, and the real ids, as access() looks
    // at those. The saved ids lead back.
    if (m_wasRoot &&
        (setgroups(0, nullptr) != 0 || setresgid(nobody, nobody, 0) != 0 || setresuid(nobody, nobody, 0) != 0))
        _exit(1);
}

Unprivileged::~Unprivileged()
{
    if (m_wasRoot && (setresuid(0, 0, 0) != 0 || setresgid(0, 0, 0) != 0))
        _exit(1);
}

bool Unprivileged::isPossible()
{
    return true;
}

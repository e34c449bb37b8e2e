#include "smalldisk.h"

#include <QFile>

#include <sched.h>
#include <sys/mount.h>

SmallDisk::SmallDisk(const QString &directory)
    : m_directory(directory)
{
    // Private all the way down: a mount in a shared tree would reach the other processes in spite of the namespace.
    m_active = unshare(CLONE_NEWNS) == 0 && mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
               mount("none", QFile::encodeName(directory).constData(), "tmpfs", 0, "size=64k") == 0;
}

SmallDisk::~SmallDisk()
{
    if (m_active)
        umount2(QFile::encodeName(m_directory).constData(), MNT_DETACH);
}

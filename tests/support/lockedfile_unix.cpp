#include "lockedfile.h"

#include <QFile>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace {

bool setImmutable(int descriptor, bool on)
{
    int flags = 0;
    if (ioctl(descriptor, FS_IOC_GETFLAGS, &flags) != 0)
        return false;
    flags = on ? flags | FS_IMMUTABLE_FL : flags & ~FS_IMMUTABLE_FL;
    return ioctl(descriptor, FS_IOC_SETFLAGS, &flags) == 0;
}

} // namespace

LockedFile::LockedFile(const QString &path)
{
    const int descriptor = open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    if (descriptor < 0)
        return;
    if (setImmutable(descriptor, true))
        m_handle = descriptor;
    else
        close(descriptor);
}

LockedFile::~LockedFile()
{
    if (!isActive())
        return;
    setImmutable(int(m_handle), false);
    close(int(m_handle));
}

bool LockedFile::isActive() const
{
    return m_handle >= 0;
}

QFileDevice::FileError LockedFile::errorOfRemoval()
{
    return QFileDevice::PermissionsError;
}

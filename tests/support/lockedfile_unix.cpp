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
    : m_descriptor(open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC))
{
    if (m_descriptor >= 0 && !setImmutable(m_descriptor, true)) {
        close(m_descriptor);
        m_descriptor = -1;
    }
}

LockedFile::~LockedFile()
{
    if (m_descriptor < 0)
        return;
    setImmutable(m_descriptor, false);
    close(m_descriptor);
}

bool LockedFile::isActive() const
{
    return m_descriptor >= 0;
}

QFileDevice::FileError LockedFile::errorOfRemoval()
{
    return QFileDevice::PermissionsError;
}

#include "lockedfile.h"

#include <qt_windows.h>

LockedFile::LockedFile(const QString &path)
    : m_file(CreateFileW(reinterpret_cast<LPCWSTR>(path.utf16()), GENERIC_READ, 0, nullptr, OPEN_EXISTING,
                         FILE_ATTRIBUTE_NORMAL, nullptr))
{
}

LockedFile::~LockedFile()
{
    if (isActive())
        CloseHandle(m_file);
}

bool LockedFile::isActive() const
{
    return m_file != INVALID_HANDLE_VALUE;
}

QFileDevice::FileError LockedFile::errorOfRemoval()
{
    return QFileDevice::RemoveError;
}

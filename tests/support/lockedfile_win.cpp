#include "lockedfile.h"

#include <qt_windows.h>

LockedFile::LockedFile(const QString &path)
    : m_handle(std::intptr_t(CreateFileW(reinterpret_cast<LPCWSTR>(path.utf16()), GENERIC_READ, 0, nullptr,
                                         OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr)))
{
}

LockedFile::~LockedFile()
{
    if (isActive())
        CloseHandle(HANDLE(m_handle));
}

bool LockedFile::isActive() const
{
    return HANDLE(m_handle) != INVALID_HANDLE_VALUE;
}

QFileDevice::FileError LockedFile::errorOfRemoval()
{
    return QFileDevice::RemoveError;
}

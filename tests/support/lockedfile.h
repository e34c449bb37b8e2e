#pragma once

#include <QFileDevice>
#include <QString>

#include <cstdint>

/// For as long as it lives, nobody can remove or write to the file, whatever rights it has: on Linux it is immutable,
/// which takes a file system that knows that and the right to ask for it; on Windows it is open and shared with nobody.
class LockedFile
{
public:
    explicit LockedFile(const QString &path);
    ~LockedFile();

    /// False where the file couldn't be locked.
    [[nodiscard]] bool isActive() const;

    /// The error of a forced removal: on Linux the attempt to make the file writable has the last word, as its
    /// permissions are locked as well.
    [[nodiscard]] static QFileDevice::FileError errorOfRemoval();

private:
    LockedFile(const LockedFile &) = delete;
    LockedFile &operator=(const LockedFile &) = delete;

    std::intptr_t m_handle = -1; ///< the system's, -1 for none
};

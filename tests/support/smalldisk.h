#pragma once

#include <QString>

/// For as long as it lives, the directory is a disk of its own with 64 KiB, which only this process sees. On Linux that
/// takes the right to mount; Windows has no such thing.
class SmallDisk
{
public:
    explicit SmallDisk(const QString &directory);
    ~SmallDisk();

    /// False where no disk could be had.
    [[nodiscard]] bool isActive() const { return m_active; }

private:
    SmallDisk(const SmallDisk &) = delete;
    SmallDisk &operator=(const SmallDisk &) = delete;

    QString m_directory;
    bool m_active = false;
};

#pragma once

/// For as long as it lives this process can't open another file, which fails with a code of its own
/// (QFileDevice::ResourceError).
class NoFreeFiles
{
public:
    NoFreeFiles();
    ~NoFreeFiles();

    /// False where there is no such limit to set.
    [[nodiscard]] bool isActive() const { return m_previousLimit > 0; }

private:
    NoFreeFiles(const NoFreeFiles &) = delete;
    NoFreeFiles &operator=(const NoFreeFiles &) = delete;

    unsigned long m_previousLimit = 0;
};

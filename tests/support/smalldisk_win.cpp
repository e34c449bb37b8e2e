#include "smalldisk.h"

SmallDisk::SmallDisk(const QString &directory)
    : m_directory(directory)
{
}

SmallDisk::~SmallDisk() = default;

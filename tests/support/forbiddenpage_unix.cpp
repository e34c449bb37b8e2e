#include "forbiddenpage.h"

#include <sys/mman.h>

namespace {

constexpr size_t pageSize = 4096;

} // namespace

ForbiddenPage::ForbiddenPage()
{
    void *const page = mmap(nullptr, pageSize, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (page == MAP_FAILED)
        qFatal("No page can be had");
    m_address = static_cast<char *>(page);
}

ForbiddenPage::~ForbiddenPage()
{
    munmap(m_address, pageSize);
}

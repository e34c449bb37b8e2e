#include "forbiddenpage.h"

#include <windows.h>

ForbiddenPage::ForbiddenPage()
    : m_address(static_cast<char *>(VirtualAlloc(nullptr, 4096, MEM_RESERVE | MEM_COMMIT, PAGE_NOACCESS)))
{
    if (m_address == nullptr)
        qFatal("No page can be had");
}

ForbiddenPage::~ForbiddenPage()
{
    VirtualFree(m_address, 0, MEM_RELEASE);
}

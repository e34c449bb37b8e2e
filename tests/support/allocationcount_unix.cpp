#include "allocationcount.h"

#include <cstddef>

namespace {

thread_local qint64 allocations = 0;

} // namespace

#if defined(__has_feature)
#    if __has_feature(address_sanitizer)
#        define HAS_ADDRESS_SANITIZER
#    endif
#endif
#ifdef __SANITIZE_ADDRESS__
#    define HAS_ADDRESS_SANITIZER
#endif

#ifdef HAS_ADDRESS_SANITIZER

#    include <sanitizer/allocator_interface.h>

namespace {

// The sanitizer's own functions are to stay.
const int installed = __sanitizer_install_malloc_and_free_hooks([](const volatile void *, size_t) { ++allocations; },
                                                                [](const volatile void *) {});

} // namespace

bool AllocationCount::isPossible()
{
    return installed != 0;
}

#else

extern "C" {

void *__libc_malloc(size_t size);                // NOLINT(bugprone-reserved-identifier): the C library's name
void *__libc_calloc(size_t count, size_t size);  // NOLINT(bugprone-reserved-identifier)
void *__libc_realloc(void *memory, size_t size); // NOLINT(bugprone-reserved-identifier)

void *malloc(size_t size)
{
    ++allocations;
    return __libc_malloc(size);
}

void *calloc(size_t count, size_t size)
{
    ++allocations;
    return __libc_calloc(count, size);
}

void *realloc(void *memory, size_t size)
{
    ++allocations;
    return __libc_realloc(memory, size);
}
}

bool AllocationCount::isPossible()
{
    return true;
}

#endif

AllocationCount::AllocationCount()
    : m_before(allocations)
{
}

qint64 AllocationCount::count() const
{
    return allocations - m_before;
}

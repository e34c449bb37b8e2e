#include "s3racechecker.h"

#include <sanitizer/tsan_interface.h>

void s3RaceChecker::handOver(const void *address)
{
    __tsan_release(const_cast<void *>(address));
}

void s3RaceChecker::takeOver(const void *address)
{
    __tsan_acquire(const_cast<void *>(address));
}

void s3RaceChecker::beforeLock(void *address)
{
    __tsan_mutex_pre_lock(address, __tsan_mutex_write_reentrant);
}

void s3RaceChecker::afterLock(void *address)
{
    __tsan_mutex_post_lock(address, __tsan_mutex_write_reentrant, 0);
}

void s3RaceChecker::beforeUnlock(void *address)
{
    __tsan_mutex_pre_unlock(address, 0);
}

void s3RaceChecker::afterUnlock(void *address)
{
    __tsan_mutex_post_unlock(address, 0);
}

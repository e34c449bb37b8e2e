#pragma once

/// What a race checker can't see by itself, because it happens inside Qt, which isn't built for one: the locks of
/// QRecursiveMutex (those of QMutex report themselves) and the way of an event to its receiver. Each function does
/// nothing in a build without such a checker. From any thread.
namespace s3RaceChecker {

/// What this thread has written up to now is seen by the thread that calls takeOver() with the same address later.
void handOver(const void *address);
void takeOver(const void *address);

/// Around the operations of a recursive lock at \a address.
void beforeLock(void *address);
void afterLock(void *address);
void beforeUnlock(void *address);
void afterUnlock(void *address);

} // namespace s3RaceChecker

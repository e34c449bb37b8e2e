#include "s3racechecker.h"

void s3RaceChecker::handOver(const void *) {}

void s3RaceChecker::takeOver(const void *) {}

void s3RaceChecker::beforeLock(void *) {}

void s3RaceChecker::afterLock(void *) {}

void s3RaceChecker::beforeUnlock(void *) {}

void s3RaceChecker::afterUnlock(void *) {}

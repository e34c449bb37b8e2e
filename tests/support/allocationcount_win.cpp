#include "allocationcount.h"

AllocationCount::AllocationCount() = default;

qint64 AllocationCount::count() const
{
    return m_before;
}

bool AllocationCount::isPossible()
{
    return false;
}

#pragma once

#include <QtGlobal>

/// Counts how often this thread has asked for memory since it was constructed. The object file replaces the process's
/// allocation functions where it has to, so it is a source of the test that wants it and not of the library of all.
class AllocationCount
{
public:
    AllocationCount();

    [[nodiscard]] qint64 count() const;

    /// False where there is no way to know.
    [[nodiscard]] static bool isPossible();

private:
    qint64 m_before = 0;
};

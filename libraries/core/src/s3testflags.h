#pragma once

#include "s3singleton.h"

#include <QSet>

/// A set of numbers with which testers and support turn on traces and special behaviour.
class s3TestFlags : public QSet<qint32>
{
};

/// The flags of this process. They are filled near its start, by the main thread, and only read after that, by any
/// thread and without a lock. docs/architecture.md lists the numbers that the core asks for.
class s3TestFlagsGUI : public s3TestFlags, public s3Singleton<s3TestFlagsGUI>
{
public:
    /// Never null. Made on the first call, at the latest by a static initialiser of the core; fit for those of others.
    [[nodiscard]] static s3TestFlagsGUI *instance()
    {
        if (s_instance == nullptr) [[unlikely]]
            create();
        return s_instance;
    }

private:
    s3TestFlagsGUI() = default;

    static void create();

    // In reach of every trace site: a call would cost more than all the rest of a site whose flag isn't set. And not a
    // function-local static with its guard, because the first access lies in a static initialiser of the main thread.
    static constinit inline s3TestFlagsGUI *s_instance = nullptr;
};

/// What stands in front of every trace: cheap when no flag is set, and without allocation in any case.
[[nodiscard]] inline bool s3HasTestFlag(qint32 flag)
{
    const s3TestFlagsGUI *const flags = s3TestFlagsGUI::instance();
    return !flags->isEmpty() && flags->contains(flag);
}

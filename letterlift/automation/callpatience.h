#pragma once

#include <chrono>
#include <optional>

/// How long a client goes on trying to reach a server that is alive and doesn't do what it is asked for.
///
/// A server that rejects a call (Outlook does while it starts, or shows a dialog of its own) is asked again for a
/// limited time. The limit is one for all calls until the server takes one again: a run makes some twenty calls, and a
/// server that is stuck would otherwise cost each of them the whole limit.
class CallPatience
{
public:
    using Duration = std::chrono::milliseconds;

    /// COM repeats a call at once for less than this (IMessageFilter::RetryRejectedCall).
    static constexpr Duration interval{100};
    /// Outlook is ready within this time even on slow machines.
    static constexpr Duration rejectionLimit{20'000};
    /// For a call that was taken and isn't answered. Outlook's questions to the user, such as the one for the profile,
    /// are answered by a person, who gets the time to do so.
    static constexpr Duration silenceLimit{600'000};

    explicit CallPatience(Duration rejections = rejectionLimit, Duration silence = silenceLimit);

    /// The one of this process. Main thread.
    [[nodiscard]] static CallPatience &ofProcess();

    /// A call was rejected. Gives how long to wait before it is tried again; empty if it has failed.
    [[nodiscard]] std::optional<Duration> rejected();
    /// The server has taken a call.
    void taken();
    /// True if a call that was taken \a elapsed ago is to be given up.
    [[nodiscard]] bool isTooLong(Duration elapsed) const;

private:
    Duration m_rejectionLimit;
    Duration m_silenceLimit;
    Duration m_waited{0};
};

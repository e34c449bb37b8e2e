#pragma once

#include <QtGlobal>

#include <chrono>
#include <optional>

/// How long a client goes on trying to reach a server that is alive and doesn't do what it is asked for. Each limit is
/// one for all calls until the server answers one again: a run makes some twenty calls, and a server that is stuck
/// would otherwise cost each of them the whole limit.
///
/// A server that rejects a call (Outlook does while it starts, or shows a dialog of its own) is asked again for a
/// limited time. One that takes a call and is silent is waited for longer, but only once: after that the calls that
/// follow get no more than a short grace.
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
    /// For the calls after one that was given up for its silence. A server that has come back answers within this time.
    static constexpr Duration silenceGrace{1'000};

    explicit CallPatience(Duration rejections = rejectionLimit, Duration silence = silenceLimit,
                          Duration grace = silenceGrace);

    /// The one of this process. Main thread.
    [[nodiscard]] static CallPatience &ofProcess();

    /// A call was rejected. Gives how long to wait before it is tried again; empty if it has failed.
    [[nodiscard]] std::optional<Duration> rejected();
    /// A call was taken \a elapsed ago and isn't answered yet. True if it has failed, and is to be given up.
    [[nodiscard]] bool unanswered(Duration elapsed);
    /// The server has taken a call and answered it.
    void answered();

    /// For the time of an operation whose client doesn't tell how its calls have ended. If none was given up, the
    /// server has answered. Not nested.
    class Operation
    {
    public:
        explicit Operation(CallPatience &patience);
        ~Operation();

    private:
        Q_DISABLE_COPY_MOVE(Operation)

        CallPatience &m_patience;
    };

private:
    Duration m_rejectionLimit;
    Duration m_silenceLimit;
    Duration m_silenceGrace;
    Duration m_waited{0};
    bool m_silent = false;  // since the last answer a call was given up for its silence
    bool m_givenUp = false; // so was a call of the operation, for whatever reason
};

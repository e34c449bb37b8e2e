#pragma once

/// Takes the rights of an ordinary user for as long as it lives, where the test runs as root, for whom no file is
/// unreadable. There, the user has to be able to pass the directories on the way, which QTemporaryDir keeps to its
/// owner.
class Unprivileged
{
public:
    Unprivileged();
    ~Unprivileged();

    /// Whether file permissions can be taken away from this process at all.
    [[nodiscard]] static bool isPossible();

private:
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;

    bool m_wasRoot = false;
};

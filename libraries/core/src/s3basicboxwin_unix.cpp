#include "s3basicboxwin.h"

#include "s3desktopbox.h"

#include <QByteArrayList>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <spawn.h>
#include <string_view>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

namespace {

bool isSet(const char *variable)
{
    const char *const value = std::getenv(variable);
    return value != nullptr && *value != '\0';
}

// --- Standard error, for when nothing else is left ---

void writeToStandardError(const QString &title, const QString &text)
{
    const QByteArray bytes = title.toUtf8() + ": " + text.toUtf8() + '\n';
    qsizetype written = 0;
    while (written < bytes.size()) {
        const ssize_t count = write(STDERR_FILENO, bytes.constData() + written, size_t(bytes.size() - written));
        if (count < 0 && errno == EINTR)
            continue;
        if (count <= 0)
            return;
        written += count;
    }
}

// --- What a program is started with, all of it made before there is a second process ---

// Only in folders with a full path: a box isn't to run what lies in the working directory.
QByteArray findProgram(const char *name)
{
    const char *const path = std::getenv("PATH");
    for (const QByteArray &folder : QByteArray(path == nullptr ? "/usr/bin:/bin" : path).split(':')) {
        if (!folder.startsWith('/'))
            continue;
        const QByteArray program = folder + '/' + name;
        struct stat status = {};
        if (stat(program.constData(), &status) == 0 && S_ISREG(status.st_mode) &&
            access(program.constData(), X_OK) == 0)
            return program;
    }
    return {};
}

bool isUtf8Locale()
{
    for (const char *const variable : {"LC_ALL", "LC_CTYPE", "LANG"}) {
        if (isSet(variable)) {
            const QByteArray locale = QByteArray(std::getenv(variable)).toLower();
            return locale.contains("utf-8") || locale.contains("utf8");
        }
    }
    return false;
}

QByteArrayList environmentOfTool()
{
    // What is set for the Qt of this process, or a test of it, isn't meant for a program of the desktop.
    static constexpr std::array<std::string_view, 4> dropped = {
        "QT_QPA_PLATFORM=", "QT_QPA_GENERIC_PLUGINS=", "QT_QPA_PLATFORM_PLUGIN_PATH=", "QT_PLUGIN_PATH="};
    const bool isUtf8 = isUtf8Locale();
    QByteArrayList variables;
    for (char *const *variable = environ; *variable != nullptr; ++variable) {
        const std::string_view assignment(*variable);
        const bool isDropped = std::any_of(dropped.begin(), dropped.end(),
                                           [&](std::string_view start) { return assignment.starts_with(start); });
        if (!isDropped && (isUtf8 || !assignment.starts_with("LC_ALL=")))
            variables += QByteArray(*variable);
    }
    // zenity refuses arguments that aren't of its locale.
    if (!isUtf8)
        variables += "LC_ALL=C.UTF-8";
    return variables + s3DesktopTool::environment();
}

// As execve() wants it; valid as long as \a texts is.
std::vector<char *> pointersTo(QByteArrayList &texts)
{
    std::vector<char *> pointers;
    pointers.reserve(size_t(texts.size()) + 1);
    for (QByteArray &text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

// --- The program's run ---

/// A pipe that nothing but what it is given to inherits. Where no descriptor is left, both ends are -1.
class Pipe
{
public:
    Pipe()
    {
        if (pipe2(m_ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
            m_ends = {-1, -1};
    }
    ~Pipe()
    {
        closeEnd(0);
        closeEnd(1);
    }

    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    [[nodiscard]] int writeEnd() const { return m_ends[1]; }
    void closeWriteEnd() { closeEnd(1); }

private:
    Q_DISABLE_COPY_MOVE(Pipe)

    void closeEnd(size_t index)
    {
        if (m_ends[index] >= 0)
            close(m_ends[index]);
        m_ends[index] = -1;
    }

    std::array<int, 2> m_ends = {-1, -1};
};

/// Starts programs with the standard streams that they are given, and without the signal mask and handlers of this
/// process: it may have been stopped in a handler.
class Spawn
{
public:
    Spawn()
    {
        posix_spawn_file_actions_init(&m_actions);
        posix_spawnattr_init(&m_attributes);
        sigset_t signalSet;
        sigemptyset(&signalSet);
        posix_spawnattr_setsigmask(&m_attributes, &signalSet);
        sigfillset(&signalSet);
        posix_spawnattr_setsigdefault(&m_attributes, &signalSet);
        posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF);
    }
    ~Spawn()
    {
        posix_spawnattr_destroy(&m_attributes);
        posix_spawn_file_actions_destroy(&m_actions);
    }

    /// -1 for nothing to read from, or to write to.
    void setStream(int stream, int descriptor)
    {
        if (descriptor >= 0)
            posix_spawn_file_actions_adddup2(&m_actions, descriptor, stream);
        else
            posix_spawn_file_actions_addopen(&m_actions, stream, "/dev/null", O_RDWR, 0);
    }

    [[nodiscard]] pid_t start(char *const *arguments, char *const *environment) const
    {
        pid_t child = -1;
        return posix_spawn(&child, arguments[0], &m_actions, &m_attributes, arguments, environment) == 0 ? child : -1;
    }

private:
    Q_DISABLE_COPY_MOVE(Spawn)

    posix_spawn_file_actions_t m_actions = {};
    posix_spawnattr_t m_attributes = {};
};

QByteArray readAvailable(int descriptor)
{
    std::array<char, 64> buffer = {};
    ssize_t count = -1;
    do
        count = read(descriptor, buffer.data(), buffer.size());
    while (count < 0 && errno == EINTR);
    return {buffer.data(), std::max(count, ssize_t(0))};
}

std::optional<int> run(const s3DesktopTool &tool, const QByteArray &program, const s3DesktopBox &box)
{
    QByteArrayList arguments = QByteArrayList{program} + tool.arguments(box);
    QByteArrayList environment = environmentOfTool();
    const std::vector<char *> argumentPointers = pointersTo(arguments);
    const std::vector<char *> environmentPointers = pointersTo(environment);

    // A shortened text fits into a pipe, so it is written before anyone reads.
    const QByteArray text = tool.input(box);
    Pipe input;
    if (!text.isEmpty() && write(input.writeEnd(), text.constData(), size_t(text.size())) != text.size())
        return {};
    input.closeWriteEnd();
    const Pipe output;
    Spawn spawn;
    spawn.setStream(STDIN_FILENO, text.isEmpty() ? -1 : input.readEnd());
    spawn.setStream(STDOUT_FILENO, output.writeEnd());
    const pid_t child = spawn.start(argumentPointers.data(), environmentPointers.data());
    if (child < 0)
        return {};

    int status = 0;
    pid_t ended = -1;
    do
        ended = waitpid(child, &status, 0);
    while (ended < 0 && errno == EINTR);
    // This process lets its children go without a word: the box has been there, but its answer is lost.
    if (ended < 0)
        return 0;
    if (!WIFEXITED(status))
        return {};
    // What the program has left running may hold the pipe for longer, so its end isn't waited for.
    int left = 0;
    const bool hasReadInput = ioctl(input.readEnd(), FIONREAD, &left) == 0 && left == 0;
    return tool.result(box, {WEXITSTATUS(status), readAvailable(output.readEnd()), hasReadInput});
}

} // namespace

int s3BasicBoxWin::messageBox(const QString &title, const QString &text, quint32 flags)
{
    const s3DesktopBox box(title, text, flags);
    const QString whole = box.wholeText();
    const bool hasX11 = isSet("DISPLAY");
    // The desktop's programs show the start of a long text.
    const bool isWritten = whole != box.text();
    if (isWritten)
        writeToStandardError(box.title(), whole);
    for (const s3DesktopTool &tool : s3DesktopTool::all()) {
        const bool hasDisplay = hasX11 || (!tool.needsX11 && isSet("WAYLAND_DISPLAY"));
        const QByteArray program = hasDisplay ? findProgram(tool.name) : QByteArray();
        if (program.isEmpty())
            continue;
        if (const std::optional<int> result = run(tool, program, box))
            return *result;
    }
    if (!isWritten)
        writeToStandardError(box.title(), whole);
    return 0;
}

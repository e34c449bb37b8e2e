#include "s3basicboxwin.h"

#include "s3desktopbox.h"
#include "s3standarderror.h"

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
#include <sys/mman.h>
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

QByteArray nameOf(const QByteArray &assignment)
{
    return assignment.first(std::max(assignment.indexOf('='), qsizetype(0)));
}

QByteArrayList environmentOfTool()
{
    QByteArrayList added = s3DesktopTool::environment();
    // zenity refuses arguments that aren't of its locale.
    if (!isUtf8Locale())
        added += "LC_ALL=C.UTF-8";
    // What is set for the Qt of this process, or a test of it, isn't meant for a program of the desktop.
    QByteArrayList dropped{"QT_QPA_PLATFORM", "QT_QPA_GENERIC_PLUGINS", "QT_QPA_PLATFORM_PLUGIN_PATH",
                           "QT_PLUGIN_PATH"};
    // Of two assignments the first would count.
    for (const QByteArray &assignment : added)
        dropped += nameOf(assignment);
    QByteArrayList variables;
    // Null after clearenv().
    for (char *const *variable = environ; variable != nullptr && *variable != nullptr; ++variable) {
        const QByteArray assignment(*variable);
        if (!dropped.contains(nameOf(assignment)))
            variables += assignment;
    }
    return variables + added;
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
    explicit Pipe(bool isWanted)
    {
        if (isWanted && pipe2(m_ends.data(), O_CLOEXEC | O_NONBLOCK) != 0)
            m_ends = {-1, -1};
    }
    ~Pipe()
    {
        closeEnd(0);
        closeEnd(1);
    }

    [[nodiscard]] int readEnd() const { return m_ends[0]; }
    [[nodiscard]] int writeEnd() const { return m_ends[1]; }

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

/// A text to read from, of any length; a pipe may be small. Where it can't be had, the descriptor is -1.
class TextFile
{
public:
    explicit TextFile(const QByteArray &text)
        : m_descriptor(text.isEmpty() ? -1 : memfd_create("box", MFD_CLOEXEC))
        , m_length(text.size())
    {
        if (m_descriptor >= 0 && (pwrite(m_descriptor, text.constData(), size_t(m_length), 0) != m_length))
            closeDescriptor();
    }
    ~TextFile() { closeDescriptor(); }

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    /// By a process that shares the descriptor.
    [[nodiscard]] bool hasBeenRead() const { return lseek(m_descriptor, 0, SEEK_CUR) == m_length; }

private:
    Q_DISABLE_COPY_MOVE(TextFile)

    void closeDescriptor()
    {
        if (m_descriptor >= 0)
            close(m_descriptor);
        m_descriptor = -1;
    }

    int m_descriptor;
    const qsizetype m_length;
};

/// Starts programs with the standard streams that they are given, and without the signal mask and handlers of this
/// process: it may have been stopped in a handler.
class Spawn
{
public:
    Spawn()
    {
        note(posix_spawn_file_actions_init(&m_actions));
        note(posix_spawnattr_init(&m_attributes));
        sigset_t signalSet;
        sigemptyset(&signalSet);
        note(posix_spawnattr_setsigmask(&m_attributes, &signalSet));
        sigfillset(&signalSet);
        note(posix_spawnattr_setsigdefault(&m_attributes, &signalSet));
        note(posix_spawnattr_setflags(&m_attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF));
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
            note(posix_spawn_file_actions_adddup2(&m_actions, descriptor, stream));
        else
            note(posix_spawn_file_actions_addopen(&m_actions, stream, "/dev/null", O_RDWR, 0));
    }

    /// -1 if it can't be started as it was to be.
    [[nodiscard]] pid_t start(char *const *arguments, char *const *environment) const
    {
        pid_t child = -1;
        return !m_hasFailed && posix_spawn(&child, arguments[0], &m_actions, &m_attributes, arguments, environment) == 0
                   ? child
                   : -1;
    }

private:
    Q_DISABLE_COPY_MOVE(Spawn)

    void note(int error)
    {
        if (error != 0)
            m_hasFailed = true;
    }

    bool m_hasFailed = false;
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

// MessageBoxW's result when there is no answer.
constexpr int noAnswer = 0;

// Nothing if there was no box.
std::optional<int> run(const s3DesktopTool &tool, const QByteArray &program, const s3DesktopBox &box)
{
    QByteArrayList arguments = QByteArrayList{program} + tool.arguments(box);
    QByteArrayList environment = environmentOfTool();
    const std::vector<char *> argumentPointers = pointersTo(arguments);
    const std::vector<char *> environmentPointers = pointersTo(environment);

    const QByteArray text = tool.input(box);
    const TextFile input(text);
    if (!text.isEmpty() && input.descriptor() < 0)
        return {};
    const Pipe output(tool.hasOutput(box));
    Spawn spawn;
    spawn.setStream(STDIN_FILENO, input.descriptor());
    spawn.setStream(STDOUT_FILENO, output.writeEnd());
    const pid_t child = spawn.start(argumentPointers.data(), environmentPointers.data());
    if (child < 0)
        return {};

    int status = 0;
    pid_t ended = -1;
    do
        ended = waitpid(child, &status, 0);
    while (ended < 0 && errno == EINTR);
    // This process lets its children go without a word. There has been a box, if the program hasn't failed.
    if (ended < 0)
        return noAnswer;
    if (!WIFEXITED(status))
        return {};
    // What the program has left running may hold the pipe for longer, so its end isn't waited for.
    return tool.result(box, {WEXITSTATUS(status), readAvailable(output.readEnd()), input.hasBeenRead()});
}

std::optional<int> runFirst(const s3DesktopBox &box, bool thatFits)
{
    const bool hasX11 = isSet("DISPLAY");
    for (const s3DesktopTool &tool : s3DesktopTool::all()) {
        const bool hasDisplay = hasX11 || (!tool.needsX11 && isSet("WAYLAND_DISPLAY"));
        if (!hasDisplay || tool.fits(box) != thatFits)
            continue;
        const QByteArray program = findProgram(tool.name);
        const std::optional<int> result = program.isEmpty() ? std::nullopt : run(tool, program, box);
        if (result)
            return result;
    }
    return {};
}

} // namespace

int s3BasicBoxWin::messageBox(const QString &title, const QString &text, quint32 flags)
{
    // Whoever stopped in a handler finds it as it was.
    const int error = errno;
    const s3DesktopBox box(title, text, flags);
    std::optional<int> result = runFirst(box, true);
    if (!result)
        result = runFirst(box, false);
    // After the box, since standard error may keep its writer waiting. A box shows only the start of a long text.
    const QString &whole = box.wholeText();
    if (result.value_or(noAnswer) == noAnswer || whole != box.text())
        s3WriteToStandardError(box.title().toUtf8() + ": " + whole.toUtf8() + '\n');
    errno = error;
    return result.value_or(noAnswer);
}

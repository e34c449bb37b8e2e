// What the box without Qt makes of the state of its process: environment, signals, descriptors, and a standard error
// that nobody reads.

#include "debuggeroutput.h"
#include "desktopprograms.h"
#include "nofreefiles.h"

#include <QElapsedTimer>
#include <QTest>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <unistd.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// Another value for a variable while this lives; none if it is null.
class Variable
{
public:
    Variable(const char *name, const QByteArray &value)
        : m_name(name)
        , m_wasSet(qEnvironmentVariableIsSet(name))
        , m_before(qgetenv(name))
    {
        set(!value.isNull(), value);
    }
    ~Variable() { set(m_wasSet, m_before); }

private:
    Q_DISABLE_COPY_MOVE(Variable)

    void set(bool isSet, const QByteArray &value) const
    {
        if (isSet)
            qputenv(m_name, value);
        else
            qunsetenv(m_name);
    }

    const char *m_name;
    const bool m_wasSet;
    const QByteArray m_before;
};

/// A standard stream is closed, or another one, while this lives.
class Stream
{
public:
    explicit Stream(int stream, int replacement = -1)
        : m_stream(stream)
        , m_before(fcntl(stream, F_DUPFD_CLOEXEC, 10))
    {
        if (replacement >= 0)
            dup2(replacement, stream);
        else
            close(stream);
    }
    ~Stream()
    {
        dup2(m_before, m_stream);
        close(m_before);
    }

private:
    Q_DISABLE_COPY_MOVE(Stream)

    const int m_stream;
    const int m_before;
};

void showWithoutFreeFiles()
{
    const NoFreeFiles files;
    if (files.isActive())
        DesktopPrograms::show();
}

} // namespace

class tst_s3NativeBoxSurroundings : public QObject, private DesktopPrograms
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }
    void cleanup() { std::signal(SIGCHLD, SIG_DFL); }
    void environmentOfThePrograms();
    void inheritedStatusesOfZenityDoNotCount();
    void environmentOfTheProgramsInALocaleWithoutUtf8_data();
    void environmentOfTheProgramsInALocaleWithoutUtf8();
    void withoutAnEnvironment();
    void programHasTheUsualSignals();
    void childrenThatNobodyWaitsFor_data();
    void childrenThatNobodyWaitsFor();
    void signalsWhileItWaits();
    void errnoStays();
    void withoutFreeDescriptors();
    void withoutStandardStreams_data();
    void withoutStandardStreams();
    void outputThatNobodyAsksForIsNotWaitedFor();
    void standardErrorWithoutReader();
    void standardErrorThatNobodyReads();
    void standardErrorThatIsClosed();
};

void tst_s3NativeBoxSurroundings::environmentOfThePrograms()
{
    const Variable platform("QT_QPA_PLATFORM", "offscreen");
    const Variable platformPlugins("QT_QPA_PLATFORM_PLUGIN_PATH", "/nonexistent");
    const Variable genericPlugins("QT_QPA_GENERIC_PLUGINS", "other");
    const Variable plugins("QT_PLUGIN_PATH", "/nonexistent");
    const Variable other("LL_OTHER", "stays");
    addProgram(u"kdialog"_s, "echo \"$QT_QPA_PLATFORM,$QT_QPA_PLATFORM_PLUGIN_PATH,$QT_QPA_GENERIC_PLUGINS,"
                             "$QT_PLUGIN_PATH,$LL_OTHER,$LC_ALL,$DISPLAY\" >" +
                                 recordPath(u"variables"_s));
    show();
    QCOMPARE(recordOf(u"variables"_s), ",,,,stays,C.UTF-8,:0\n"_ba);
    QCOMPARE(result, int(QMessageBox::Ok));
}

// By the list itself, since a shell keeps but one of two assignments.
void tst_s3NativeBoxSurroundings::inheritedStatusesOfZenityDoNotCount()
{
    const Variable ok("ZENITY_OK", "1");
    const Variable cancel("ZENITY_CANCEL", "0");
    const Variable extra("ZENITY_EXTRA", "0");
    const Variable escape("ZENITY_ESC", "0");
    addProgram(u"zenity"_s, "/usr/bin/tr '\\0' '\\n' </proc/$$/environ >" + recordPath(u"variables"_s) + "\nexit 101");
    show();
    QCOMPARE(result, int(QMessageBox::Ok));
    QByteArrayList assignments;
    for (const QByteArray &assignment : recordOf(u"variables"_s).split('\n')) {
        if (assignment.startsWith("ZENITY_"))
            assignments += assignment;
    }
    std::sort(assignments.begin(), assignments.end());
    QCOMPARE(assignments, (QByteArrayList{"ZENITY_CANCEL=102", "ZENITY_ESC=104", "ZENITY_EXTRA=103", "ZENITY_OK=101"}));
}

void tst_s3NativeBoxSurroundings::environmentOfTheProgramsInALocaleWithoutUtf8_data()
{
    QTest::addColumn<QByteArray>("all");
    QTest::addColumn<QByteArray>("characters");
    QTest::addColumn<QByteArray>("language");
    QTest::addColumn<QByteArray>("ofTheProgram");
    const QByteArray unset;
    QTest::newRow("none is set") << unset << unset << unset << "C.UTF-8"_ba;
    QTest::newRow("all decides") << "C"_ba
                                 << "de_DE.utf8"_ba
                                 << "de_DE.utf8"_ba
                                 << "C.UTF-8"_ba;
    QTest::newRow("all is UTF-8") << "de_DE.UTF-8"_ba
                                  << "C"_ba
                                  << "C"_ba
                                  << "de_DE.UTF-8"_ba;
    QTest::newRow("characters decide") << unset << "C"_ba
                                       << "de_DE.utf8"_ba
                                       << "C.UTF-8"_ba;
    QTest::newRow("characters are UTF-8") << unset << "de_DE.utf8"_ba
                                          << "C"_ba
                                          << ""_ba;
    QTest::newRow("language is UTF-8") << ""_ba << unset << "de_DE.utf8"_ba
                                       << ""_ba;
    QTest::newRow("language isn't") << ""_ba << unset << "de_DE@euro"_ba
                                    << "C.UTF-8"_ba;
}

void tst_s3NativeBoxSurroundings::environmentOfTheProgramsInALocaleWithoutUtf8()
{
    QFETCH(const QByteArray, all);
    QFETCH(const QByteArray, characters);
    QFETCH(const QByteArray, language);
    const Variable allCategories("LC_ALL", all);
    const Variable charactersAlone("LC_CTYPE", characters);
    const Variable languageAlone("LANG", language);
    addProgram(u"zenity"_s, "echo \"$LC_ALL\" >" + recordPath(u"variables"_s) + "\nexit 101");
    show();
    QCOMPARE(result, int(QMessageBox::Ok));
    QFETCH(const QByteArray, ofTheProgram);
    QCOMPARE(recordOf(u"variables"_s), ofTheProgram + '\n');
}

void tst_s3NativeBoxSurroundings::withoutAnEnvironment()
{
    char **const before = environ;
    environ = nullptr;
    const QString output = debuggerOutputOf(show);
    environ = before;
    QCOMPARE(output, u"Title: Text\n"_s);
    QCOMPARE(result, 0);
}

void tst_s3NativeBoxSurroundings::programHasTheUsualSignals()
{
    // As in a handler of this process.
    sigset_t blocked;
    sigset_t before;
    sigfillset(&blocked);
    pthread_sigmask(SIG_SETMASK, &blocked, &before);
    std::signal(SIGPIPE, SIG_IGN);
    addProgram(u"kdialog"_s,
               "while read -r name value; do case $name in SigBlk:|SigIgn:) echo \"$name$value\";; esac; done "
               "</proc/self/status >" +
                   recordPath(u"signals"_s));
    show();
    std::signal(SIGPIPE, SIG_DFL);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    const QByteArrayList record = recordOf(u"signals"_s).split('\n');
    QCOMPARE(record.value(0), "SigBlk:0000000000000000"_ba);
    // Without the two beyond 31, which the C library keeps for itself.
    QVERIFY(record.value(1).startsWith("SigIgn:"));
    QCOMPARE(record.value(1).sliced(7).toULongLong(nullptr, 16) & 0x7FFFFFFF, 0u);
}

void tst_s3NativeBoxSurroundings::childrenThatNobodyWaitsFor_data()
{
    QTest::addColumn<int>("status");
    QTest::newRow("box") << 0;
    QTest::newRow("program that fails") << 255;
}

void tst_s3NativeBoxSurroundings::childrenThatNobodyWaitsFor()
{
    QFETCH(const int, status);
    std::signal(SIGCHLD, SIG_IGN);
    addRecorder(u"kdialog"_s, status);
    addRecorder(u"zenity"_s, 101);
    // There may have been a box, so there is no second one; but there may have been none as well.
    QCOMPARE(debuggerOutputOf(show), u"Title: Text\n"_s);
    QCOMPARE(result, 0);
    QVERIFY(wasCalled(u"kdialog"_s));
    QVERIFY(!wasCalled(u"zenity"_s));
}

void tst_s3NativeBoxSurroundings::signalsWhileItWaits()
{
    static volatile std::sig_atomic_t count = 0;
    count = 0;
    struct sigaction before = {};
    struct sigaction handler = {};
    // Without SA_RESTART, so that waiting ends with EINTR.
    handler.sa_handler = [](int) {
        count = count + 1;
    };
    sigaction(SIGUSR1, &handler, &before);
    addRecorder(u"zenity"_s, 101, "for i in 1 2 3; do kill -USR1 $PPID; /bin/sleep 0.1; done");
    const QString output = debuggerOutputOf(show);
    sigaction(SIGUSR1, &before, nullptr);
    QCOMPARE(int(count), 3);
    QCOMPARE(output, u""_s);
    QCOMPARE(result, int(QMessageBox::Ok));
}

void tst_s3NativeBoxSurroundings::errnoStays()
{
    errno = ENOTTY;
    show();
    QCOMPARE(errno, ENOTTY);
}

void tst_s3NativeBoxSurroundings::withoutFreeDescriptors()
{
    for (const QString &program : {u"kdialog"_s, u"zenity"_s, u"xmessage"_s})
        addRecorder(program, 101);
    // The programs are under the same limit, and complain before.
    const QString output = debuggerOutputOf(showWithoutFreeFiles);
    QVERIFY2(output.endsWith(u"Title: Text\n"_s), qPrintable(output));
    QCOMPARE(result, 0);
}

void tst_s3NativeBoxSurroundings::withoutStandardStreams_data()
{
    QTest::addColumn<QList<int>>("streams");
    QTest::addColumn<QString>("program");
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    const QList<QList<int>> lists{{0}, {1}, {2}, {0, 1}, {0, 2}, {1, 2}, {0, 1, 2}};
    for (const QList<int> &streams : lists) {
        QByteArray name;
        for (const int stream : streams)
            name += QByteArray::number(stream);
        QTest::addRow("%s, text is read", name.constData()) << streams << u"xmessage"_s << ok;
        QTest::addRow("%s, output is read", name.constData()) << streams << u"zenity"_s << yesNoCancel;
    }
}

void tst_s3NativeBoxSurroundings::withoutStandardStreams()
{
    QFETCH(const QList<int>, streams);
    QFETCH(const QString, program);
    QFETCH(const QMessageBox::StandardButtons, buttons);
    const bool readsText = program == u"xmessage"_s;
    addProgram(program,
               readsText ? "/bin/cat >" + recordPath(u"input"_s) + "\nexit 101" : "echo No; exit $ZENITY_ESC"_ba);
    call.buttons = buttons;
    {
        std::array<std::optional<Stream>, 3> closed;
        for (const int stream : streams)
            closed.at(size_t(stream)).emplace(stream);
        show();
    }
    QCOMPARE(result, int(readsText ? QMessageBox::Ok : QMessageBox::No));
    if (readsText)
        QCOMPARE(recordOf(u"input"_s), "Text\n"_ba);
}

void tst_s3NativeBoxSurroundings::outputThatNobodyAsksForIsNotWaitedFor()
{
    // More than a pipe takes.
    addRecorder(u"kdialog"_s, 0, "/usr/bin/head -c 200000 /dev/zero || exit 77");
    QCOMPARE(debuggerOutputOf(show), u""_s);
    QCOMPARE(result, int(QMessageBox::Ok));
}

void tst_s3NativeBoxSurroundings::standardErrorWithoutReader()
{
    std::array<int, 2> ends = {};
    QCOMPARE(pipe2(ends.data(), O_CLOEXEC), 0);
    close(ends[0]);
    addRecorder(u"zenity"_s, 101);
    call.text = u"x"_s.repeated(3001);
    // The usual effect of SIGPIPE is the end of this process.
    QVERIFY(std::signal(SIGPIPE, SIG_DFL) != SIG_ERR);
    {
        const Stream standardError(STDERR_FILENO, ends[1]);
        show();
    }
    close(ends[1]);
    QCOMPARE(result, int(QMessageBox::Ok));
    QVERIFY(wasCalled(u"zenity"_s));
    // Nor does it come late, and it isn't kept away for good.
    sigset_t set;
    sigemptyset(&set);
    sigpending(&set);
    QCOMPARE(sigismember(&set, SIGPIPE), 0);
    pthread_sigmask(SIG_SETMASK, nullptr, &set);
    QCOMPARE(sigismember(&set, SIGPIPE), 0);
}

void tst_s3NativeBoxSurroundings::standardErrorThatNobodyReads()
{
    std::array<int, 2> ends = {};
    QCOMPARE(pipe2(ends.data(), O_CLOEXEC), 0);
    addRecorder(u"zenity"_s, 101);
    // More than the pipe takes.
    call.text = u"x"_s.repeated(200000);
    QElapsedTimer timer;
    timer.start();
    {
        const Stream standardError(STDERR_FILENO, ends[1]);
        show();
    }
    const qint64 elapsed = timer.elapsed();
    close(ends[0]);
    close(ends[1]);
    QCOMPARE(result, int(QMessageBox::Ok));
    QVERIFY(wasCalled(u"zenity"_s));
    QVERIFY2(elapsed >= 2500 && elapsed < 30000, qPrintable(QString::number(elapsed)));
}

void tst_s3NativeBoxSurroundings::standardErrorThatIsClosed()
{
    addRecorder(u"zenity"_s, 1);
    {
        const Stream standardError(STDERR_FILENO);
        show();
    }
    QCOMPARE(result, 0);
    QVERIFY(wasCalled(u"zenity"_s));
}

QTEST_MAIN(tst_s3NativeBoxSurroundings)
#include "tst_s3nativeboxsurroundings.moc"

// The box without Qt, as the desktop's programs show it: stand-ins tell how they are called, and the one that is
// everywhere shows a real box on an X display.

#include "debuggeroutput.h"
#include "s3basicbox.h"
#include "s3basicboxwin.h"
#include "s3testflags.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QMetaEnum>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <chrono>
#include <csignal>
#include <future>
#include <memory>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

struct Call
{
    QMessageBox::Icon type = QMessageBox::Critical;
    QString title = u"Title"_s;
    QString text = u"Text"_s;
    QMessageBox::StandardButtons buttons = QMessageBox::Ok;
    QMessageBox::StandardButton defaultButton = QMessageBox::NoButton;
};

// debuggerOutputOf() takes functions without a context.
Call call;
int result = 0;

void show()
{
    result = s3BasicBoxWin::show(call.type, call.title, call.text, call.buttons, call.defaultButton);
}

constexpr int failed = -1;

const QMessageBox::StandardButtons okCancel = QMessageBox::Ok | QMessageBox::Cancel;
const QMessageBox::StandardButtons yesNo = QMessageBox::Yes | QMessageBox::No;
const QMessageBox::StandardButtons yesNoCancel = yesNo | QMessageBox::Cancel;

/// A display of its own for as long as this lives.
class XDisplay
{
public:
    XDisplay()
    {
        m_server.start(u"/usr/bin/Xvfb"_s, {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1280x1024x24"_s,
                                            u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
        while (!m_server.canReadLine() && m_server.waitForReadyRead(20000)) {
        }
        m_name = ':' + m_server.readLine().trimmed();
    }
    ~XDisplay() { end(); }

    void end()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }
    [[nodiscard]] bool isThere() const { return m_name.size() > 1; }
    [[nodiscard]] const QByteArray &name() const { return m_name; }

    /// What xdotool prints; nothing if it fails.
    [[nodiscard]] QByteArray run(const QStringList &arguments) const
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, QString::fromLatin1(m_name));
        process.setProcessEnvironment(environment);
        process.start(u"/usr/bin/xdotool"_s, arguments);
        process.waitForFinished(10000);
        return process.exitCode() == 0 ? process.readAllStandardOutput().trimmed() : QByteArray();
    }
    [[nodiscard]] QByteArray windowNamed(const QString &title) const
    {
        return run({u"search"_s, u"--onlyvisible"_s, u"--name"_s, u'^' + title + u'$'});
    }

private:
    Q_DISABLE_COPY_MOVE(XDisplay)

    QProcess m_server;
    QByteArray m_name;
};

} // namespace

class tst_s3NativeBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void orderOfPrograms_data();
    void orderOfPrograms();
    void withoutDisplayTextGoesToStandardError_data();
    void withoutDisplayTextGoesToStandardError();
    void withoutProgramsTextGoesToStandardError();
    void programsThatFailAreFollowedByTheNext_data();
    void programsThatFailAreFollowedByTheNext();
    void programThatCannotBeRunIsFollowedByTheNext_data();
    void programThatCannotBeRunIsFollowedByTheNext();
    void onlyFullPathsAreSearched();
    void titleAndTextReachTheProgramAsTheyAre();
    void outputOfTheProgramIsRead();
    void inputReachesTheProgram();
    void programThatHasNotReadItsInputHasFailed();
    void longTextIsCutInTheBoxAndWholeOnStandardError_data();
    void longTextIsCutInTheBoxAndWholeOnStandardError();
    void environmentOfThePrograms();
    void environmentOfTheProgramsInALocaleWithoutUtf8();
    void programHasTheUsualSignals();
    void childrenThatNobodyWaitsFor();
    void whatAProgramLeavesRunningIsNotWaitedFor();
    void flag335MakesAWarningNative();
    void fatalIsNative();
    void fatalChoiceIsNative();
    void realBox_data();
    void realBox();
    void realBoxWhoseDisplayGoesAway();

private:
    void addProgram(const QString &name, const QByteArray &commands) const;
    void addRecorder(const QString &name, int status, const QByteArray &commands = {}) const;
    [[nodiscard]] bool wasCalled(const QString &name) const;
    [[nodiscard]] QStringList argumentsOf(const QString &name) const;
    [[nodiscard]] QByteArray recordOf(const QString &name) const;
    [[nodiscard]] QString resultOf(const QString &name, int status, const QByteArray &commands = {});

    std::unique_ptr<QTemporaryDir> m_programs;
    std::unique_ptr<QTemporaryDir> m_records;
};

void tst_s3NativeBox::init()
{
    m_programs = std::make_unique<QTemporaryDir>();
    m_records = std::make_unique<QTemporaryDir>();
    qputenv("PATH", QFile::encodeName(m_programs->path()));
    qputenv("DISPLAY", ":0");
    qunsetenv("WAYLAND_DISPLAY");
    qputenv("LC_ALL", "C.UTF-8");
    call = {};
    result = failed;
    s3TestFlagsGUI::instance()->clear();
}

void tst_s3NativeBox::cleanup()
{
    std::signal(SIGCHLD, SIG_DFL);
}

void tst_s3NativeBox::addProgram(const QString &name, const QByteArray &commands) const
{
    QFile file(m_programs->filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + commands + '\n');
    file.close();
    QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
}

// Notes its arguments, and ends with the status.
void tst_s3NativeBox::addRecorder(const QString &name, int status, const QByteArray &commands) const
{
    addProgram(name, "printf '%s\\0' \"$@\" >" + QFile::encodeName(m_records->filePath(name)) + '\n' + commands +
                         "\nexit " + QByteArray::number(status));
}

bool tst_s3NativeBox::wasCalled(const QString &name) const
{
    return QFile::exists(m_records->filePath(name));
}

QByteArray tst_s3NativeBox::recordOf(const QString &name) const
{
    QFile file(m_records->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "no such file"_ba;
}

QStringList tst_s3NativeBox::argumentsOf(const QString &name) const
{
    QStringList arguments = QString::fromUtf8(recordOf(name)).split(QChar(u'\0'));
    arguments.removeLast();
    return arguments;
}

// The button that the call gives, "failed" if the program counts as one that has failed.
QString tst_s3NativeBox::resultOf(const QString &name, int status, const QByteArray &commands)
{
    addRecorder(name, status, commands);
    const QString output = debuggerOutputOf(show);
    if (!wasCalled(name))
        return u"not called"_s;
    if (!output.isEmpty())
        return result == 0 ? u"failed"_s : output;
    const QMetaObject &boxes = QMessageBox::staticMetaObject;
    return QString::fromLatin1(boxes.enumerator(boxes.indexOfEnumerator("StandardButton")).valueToKey(result));
}

void tst_s3NativeBox::orderOfPrograms_data()
{
    QTest::addColumn<QStringList>("programs");
    QTest::addColumn<QString>("called");
    QTest::newRow("all") << QStringList{u"kdialog"_s, u"zenity"_s, u"xmessage"_s} << u"kdialog"_s;
    QTest::newRow("no kdialog") << QStringList{u"zenity"_s, u"xmessage"_s} << u"zenity"_s;
    QTest::newRow("xmessage alone") << QStringList{u"xmessage"_s} << u"xmessage"_s;
}

void tst_s3NativeBox::orderOfPrograms()
{
    QFETCH(const QStringList, programs);
    QFETCH(const QString, called);
    for (const QString &program : programs)
        addRecorder(program, program == u"xmessage"_s ? 101 : 0);
    QCOMPARE(debuggerOutputOf(show), u""_s);
    QCOMPARE(result, int(QMessageBox::Ok));
    for (const QString &program : programs)
        QCOMPARE(wasCalled(program), program == called);
}

void tst_s3NativeBox::withoutDisplayTextGoesToStandardError_data()
{
    QTest::addColumn<QByteArray>("x11");
    QTest::addColumn<QByteArray>("wayland");
    QTest::addColumn<QString>("called");
    QTest::newRow("neither") << QByteArray() << QByteArray() << u""_s;
    QTest::newRow("X11") << ":0"_ba << QByteArray() << u"xmessage"_s;
    QTest::newRow("Wayland alone, which xmessage doesn't know") << QByteArray() << "wayland-0"_ba << u""_s;
}

void tst_s3NativeBox::withoutDisplayTextGoesToStandardError()
{
    QFETCH(const QByteArray, x11);
    QFETCH(const QByteArray, wayland);
    QFETCH(const QString, called);
    addRecorder(u"xmessage"_s, 101);
    qputenv("DISPLAY", x11);
    qputenv("WAYLAND_DISPLAY", wayland);
    call.text = u"L\u00E4st\nline"_s;
    QCOMPARE(debuggerOutputOf(show), called.isEmpty() ? u"Title: L\u00E4st\nline\n"_s : u""_s);
    QCOMPARE(result, called.isEmpty() ? 0 : int(QMessageBox::Ok));
    QCOMPARE(wasCalled(u"xmessage"_s), !called.isEmpty());
    if (x11.isEmpty()) {
        addRecorder(u"zenity"_s, 101);
        static_cast<void>(debuggerOutputOf(show));
        QCOMPARE(wasCalled(u"zenity"_s), !wayland.isEmpty());
    }
}

void tst_s3NativeBox::withoutProgramsTextGoesToStandardError()
{
    call.text = u"<html><b>bold</b> &amp; more</html>"_s;
    QCOMPARE(debuggerOutputOf(show), u"Title: bold & more\n"_s);
    QCOMPARE(result, 0);
}

void tst_s3NativeBox::programsThatFailAreFollowedByTheNext_data()
{
    QTest::addColumn<QByteArray>("commands");
    QTest::newRow("exit status of its own") << "exit 255"_ba;
    QTest::newRow("no display") << "exit 1"_ba;
    QTest::newRow("killed by a signal") << "kill -ABRT $$"_ba;
}

void tst_s3NativeBox::programsThatFailAreFollowedByTheNext()
{
    QFETCH(const QByteArray, commands);
    for (const QString &program : {u"kdialog"_s, u"zenity"_s, u"xmessage"_s})
        addRecorder(program, 0, commands);
    QCOMPARE(debuggerOutputOf(show), u"Title: Text\n"_s);
    QCOMPARE(result, 0);
    for (const QString &program : {u"kdialog"_s, u"zenity"_s, u"xmessage"_s})
        QVERIFY2(wasCalled(program), qPrintable(program));

    addRecorder(u"xmessage"_s, 101);
    QCOMPARE(debuggerOutputOf(show), u""_s);
    QCOMPARE(result, int(QMessageBox::Ok));
}

void tst_s3NativeBox::programThatCannotBeRunIsFollowedByTheNext_data()
{
    QTest::addColumn<QString>("what");
    QTest::newRow("not executable") << u"no rights"_s;
    QTest::newRow("a folder") << u"folder"_s;
    QTest::newRow("interpreter is missing") << u"interpreter"_s;
    QTest::newRow("no program") << u"text"_s;
}

void tst_s3NativeBox::programThatCannotBeRunIsFollowedByTheNext()
{
    QFETCH(const QString, what);
    const QString name = m_programs->filePath(u"kdialog"_s);
    if (what == u"folder"_s) {
        QVERIFY(QDir().mkpath(name));
    } else {
        QFile file(name);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(what == u"text"_s ? "text" : "#!/no/such/interpreter\n");
        file.close();
        if (what != u"no rights"_s)
            QVERIFY(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
    QCOMPARE(resultOf(u"zenity"_s, 101), u"Ok"_s);
}

void tst_s3NativeBox::onlyFullPathsAreSearched()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir::setCurrent(m_programs->path()));
    addRecorder(u"kdialog"_s, 0);
    for (const QByteArray &path :
         {""_ba, "."_ba, ":"_ba, "../"_ba + QFile::encodeName(QFileInfo(m_programs->path()).fileName())}) {
        qputenv("PATH", path);
        QCOMPARE(debuggerOutputOf(show), u"Title: Text\n"_s);
        QVERIFY(!wasCalled(u"kdialog"_s));
    }
    qputenv("PATH", ":/nonexistent:" + QFile::encodeName(m_programs->path()));
    QCOMPARE(debuggerOutputOf(show), u""_s);
    QVERIFY(QDir::setCurrent(before));
}

void tst_s3NativeBox::titleAndTextReachTheProgramAsTheyAre()
{
    call.title = u"--L\u00E4st"_s;
    call.text = u"-- $(x) `y` '%s'\nC:\\new \U0001F600"_s;
    QCOMPARE(resultOf(u"zenity"_s, 101), u"Ok"_s);
    QCOMPARE(argumentsOf(u"zenity"_s),
             (QStringList{u"--error"_s, u"--no-markup"_s, u"--title="_s + call.title, u"--text="_s + call.text}));
}

void tst_s3NativeBox::outputOfTheProgramIsRead()
{
    call.buttons = yesNoCancel;
    QCOMPARE(resultOf(u"zenity"_s, 77, "echo No; exit $ZENITY_ESC"), u"No"_s);
    QCOMPARE(resultOf(u"zenity"_s, 77, "exit $ZENITY_ESC"), u"Cancel"_s);
}

void tst_s3NativeBox::inputReachesTheProgram()
{
    call.text = u"first\n-second"_s;
    const QByteArray record = QFile::encodeName(m_records->filePath(u"input"_s));
    QCOMPARE(resultOf(u"xmessage"_s, 101, "/bin/cat >" + record), u"Ok"_s);
    QCOMPARE(recordOf(u"input"_s), "first\n-second\n"_ba);
    // The others get an end at once, and not what this process reads from.
    QCOMPARE(resultOf(u"zenity"_s, 101, "/bin/cat >" + record), u"Ok"_s);
    QCOMPARE(recordOf(u"input"_s), ""_ba);
}

void tst_s3NativeBox::programThatHasNotReadItsInputHasFailed()
{
    call.buttons = okCancel;
    QCOMPARE(resultOf(u"xmessage"_s, 1), u"failed"_s);
    QCOMPARE(resultOf(u"xmessage"_s, 1, "/bin/cat >/dev/null"), u"Cancel"_s);
}

void tst_s3NativeBox::longTextIsCutInTheBoxAndWholeOnStandardError_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("shown");
    QTest::newRow("40 lines") << u"line\n"_s.repeated(39) + u"end"_s << u"line\n"_s.repeated(39) + u"end"_s;
    QTest::newRow("41 lines") << u"line\n"_s.repeated(40) + u"end"_s << u"line\n"_s.repeated(40) + u"[...]"_s;
    QTest::newRow("3,000 characters") << u"x"_s.repeated(3000) << u"x"_s.repeated(3000);
    QTest::newRow("3,001 characters") << u"x"_s.repeated(3001) << u"x"_s.repeated(3000) + u"\n[...]"_s;
    QTest::newRow("60,000 characters") << u"x"_s.repeated(60000) << u"x"_s.repeated(3000) + u"\n[...]"_s;
}

void tst_s3NativeBox::longTextIsCutInTheBoxAndWholeOnStandardError()
{
    QFETCH(const QString, text);
    QFETCH(const QString, shown);
    call.text = text;
    addRecorder(u"zenity"_s, 101);
    QCOMPARE(debuggerOutputOf(show), text == shown ? u""_s : u"Title: "_s + text + u'\n');
    QCOMPARE(argumentsOf(u"zenity"_s).last(), u"--text="_s + shown);
    // Once, also if there is no box in the end.
    addRecorder(u"zenity"_s, 1);
    QCOMPARE(debuggerOutputOf(show), u"Title: "_s + text + u'\n');
}

void tst_s3NativeBox::environmentOfThePrograms()
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_PLUGIN_PATH", "/nonexistent");
    qputenv("LL_OTHER", "stays");
    addProgram(u"kdialog"_s, "echo \"$QT_QPA_PLATFORM,$QT_PLUGIN_PATH,$LL_OTHER,$LC_ALL,$DISPLAY\" >" +
                                 QFile::encodeName(m_records->filePath(u"variables"_s)));
    show();
    qunsetenv("QT_PLUGIN_PATH");
    QCOMPARE(recordOf(u"variables"_s), ",,stays,C.UTF-8,:0\n"_ba);
    QCOMPARE(result, int(QMessageBox::Ok));
}

void tst_s3NativeBox::environmentOfTheProgramsInALocaleWithoutUtf8()
{
    qputenv("LC_ALL", "C");
    addProgram(u"zenity"_s,
               "echo \"$LC_ALL\" >" + QFile::encodeName(m_records->filePath(u"variables"_s)) + "\nexit 101");
    show();
    QCOMPARE(recordOf(u"variables"_s), "C.UTF-8\n"_ba);
    qputenv("LC_ALL", "");
    const QByteArray language = qgetenv("LANG");
    qputenv("LANG", "de_DE.utf8");
    show();
    QCOMPARE(recordOf(u"variables"_s), "\n"_ba);
    qputenv("LANG", language);
}

void tst_s3NativeBox::programHasTheUsualSignals()
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
                   QFile::encodeName(m_records->filePath(u"signals"_s)));
    show();
    std::signal(SIGPIPE, SIG_DFL);
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    const QByteArrayList record = recordOf(u"signals"_s).split('\n');
    QCOMPARE(record.value(0), "SigBlk:0000000000000000"_ba);
    // Without the two beyond 31, which the C library keeps for itself.
    QVERIFY(record.value(1).startsWith("SigIgn:"));
    QCOMPARE(record.value(1).sliced(7).toULongLong(nullptr, 16) & 0x7FFFFFFF, 0u);
}

void tst_s3NativeBox::childrenThatNobodyWaitsFor()
{
    std::signal(SIGCHLD, SIG_IGN);
    addRecorder(u"kdialog"_s, 0);
    addRecorder(u"zenity"_s, 101);
    // The box has been there, so there is no second one.
    QCOMPARE(debuggerOutputOf(show), u""_s);
    QCOMPARE(result, 0);
    QVERIFY(wasCalled(u"kdialog"_s));
    QVERIFY(!wasCalled(u"zenity"_s));
}

void tst_s3NativeBox::whatAProgramLeavesRunningIsNotWaitedFor()
{
    addRecorder(u"zenity"_s, 101, "/bin/sleep 20 2>/dev/null &");
    QElapsedTimer timer;
    timer.start();
    show();
    QCOMPARE(result, int(QMessageBox::Ok));
    QVERIFY(timer.elapsed() < 15000);
}

void tst_s3NativeBox::flag335MakesAWarningNative()
{
    s3TestFlagsGUI::instance()->insert(335);
    addRecorder(u"zenity"_s, 101);
    QCOMPARE(s3BasicBox::show(QMessageBox::Warning, u"T"_s, u"X"_s, okCancel, QMessageBox::Cancel, false),
             int(QMessageBox::Cancel));
    QCOMPARE(argumentsOf(u"zenity"_s),
             (QStringList{u"--question"_s, u"--icon-name=dialog-warning"_s, u"--no-markup"_s, u"--title=T"_s,
                          u"--text=X"_s, u"--ok-label=Cancel"_s, u"--cancel-label=OK"_s}));
}

void tst_s3NativeBox::fatalIsNative()
{
    addRecorder(u"zenity"_s, 101);
    QCOMPARE(s3BasicBox::fatal(u"X"_s), int(QMessageBox::Ok));
    QCOMPARE(argumentsOf(u"zenity"_s).value(0), u"--error"_s);
    QVERIFY(argumentsOf(u"zenity"_s).contains(u"--text=X"_s));
}

void tst_s3NativeBox::fatalChoiceIsNative()
{
    addProgram(u"zenity"_s, "exit $ZENITY_CANCEL");
    QCOMPARE(s3BasicBox::fatalChoice(u"X"_s, yesNo, QMessageBox::No), int(QMessageBox::Yes));
    QCOMPARE(s3BasicBox::fatalChoice(u"X"_s, yesNo, QMessageBox::Yes), int(QMessageBox::No));
}

void tst_s3NativeBox::realBox_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<int>("button");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    QTest::newRow("Ok") << ok << QMessageBox::NoButton << int(QMessageBox::Ok);
    QTest::newRow("Cancel") << okCancel << QMessageBox::Cancel << int(QMessageBox::Cancel);
    QTest::newRow("No of three") << yesNoCancel << QMessageBox::No << int(QMessageBox::No);
}

void tst_s3NativeBox::realBox()
{
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    const XDisplay display;
    QVERIFY(display.isThere());
    qputenv("DISPLAY", display.name());
    const QString title = u"A real box"_s;
    QVERIFY(QFile::link(u"/usr/bin/xmessage"_s, m_programs->filePath(u"xmessage"_s)));
    qputenv("PATH", QFile::encodeName(m_programs->path()));

    // On another thread, while this one looks at the display and has no event loop.
    std::future<int> answer = std::async(std::launch::async, [&] {
        return int(s3BasicBoxWin::show(QMessageBox::Critical, title, u"Text"_s, buttons, defaultButton));
    });
    QTRY_VERIFY_WITH_TIMEOUT(!display.windowNamed(title).isEmpty(), 20000);
    QVERIFY(answer.wait_for(500ms) == std::future_status::timeout);
    // A box may not take the first key, as it comes up.
    while (answer.wait_for(200ms) == std::future_status::timeout) {
        const QString window = QString::fromLatin1(display.windowNamed(title));
        if (!window.isEmpty())
            static_cast<void>(display.run({u"windowfocus"_s, u"--sync"_s, window, u"key"_s, u"Return"_s}));
    }
    QTEST(answer.get(), "button");
}

void tst_s3NativeBox::realBoxWhoseDisplayGoesAway()
{
    XDisplay display;
    QVERIFY(display.isThere());
    qputenv("DISPLAY", display.name());
    QVERIFY(QFile::link(u"/usr/bin/xmessage"_s, m_programs->filePath(u"xmessage"_s)));
    qputenv("PATH", QFile::encodeName(m_programs->path()));
    std::future<int> answer = std::async(std::launch::async, [] {
        return int(
            s3BasicBoxWin::show(QMessageBox::Critical, u"Short-lived"_s, u"Text"_s, okCancel, QMessageBox::NoButton));
    });
    QTRY_VERIFY_WITH_TIMEOUT(!display.windowNamed(u"Short-lived"_s).isEmpty(), 20000);
    display.end();
    QCOMPARE(answer.get(), int(QMessageBox::Cancel));
    // Nobody is there any more.
    call.title = u"Without a server"_s;
    const QString output = debuggerOutputOf(show);
    QVERIFY2(output.endsWith(u"Without a server: Text\n"_s), qPrintable(output));
    QCOMPARE(result, 0);
}

QTEST_MAIN(tst_s3NativeBox)
#include "tst_s3nativebox_unix.moc"

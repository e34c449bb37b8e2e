// The box without Qt, as the desktop's programs show it: stand-ins tell how they are called.

#include "debuggeroutput.h"
#include "desktopprograms.h"
#include "s3basicbox.h"
#include "s3testflags.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_s3NativeBox : public QObject, private DesktopPrograms
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }
    void orderOfPrograms_data();
    void orderOfPrograms();
    void programThatDoesNotFitIsTheLastResort_data();
    void programThatDoesNotFitIsTheLastResort();
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
    void longTextIsWrittenAfterTheBox();
    void whatAProgramLeavesRunningIsNotWaitedFor();
    void flag335MakesAWarningNative();
    void fatalIsNative();
    void fatalChoiceIsNative();
};

void tst_s3NativeBox::orderOfPrograms_data()
{
    QTest::addColumn<QStringList>("programs");
    QTest::addColumn<QString>("called");
    QTest::newRow("all") << QStringList{u"kdialog"_s, u"zenity"_s, u"xmessage"_s} << u"kdialog"_s;
    QTest::newRow("kdialog and xmessage without zenity") << QStringList{u"kdialog"_s, u"xmessage"_s} << u"kdialog"_s;
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

void tst_s3NativeBox::programThatDoesNotFitIsTheLastResort_data()
{
    QTest::addColumn<QStringList>("failing");
    QTest::addColumn<QString>("called");
    QTest::newRow("none fails") << QStringList{} << u"zenity"_s;
    QTest::newRow("zenity fails") << QStringList{u"zenity"_s} << u"xmessage"_s;
    QTest::newRow("both fail") << QStringList{u"zenity"_s, u"xmessage"_s} << u"kdialog"_s;
}

void tst_s3NativeBox::programThatDoesNotFitIsTheLastResort()
{
    QFETCH(const QStringList, failing);
    QFETCH(const QString, called);
    call.buttons = okCancel;
    call.defaultButton = QMessageBox::Cancel;
    const QMap<QString, int> ok{{u"kdialog"_s, 0}, {u"zenity"_s, 102}, {u"xmessage"_s, 101}};
    for (auto program = ok.begin(); program != ok.end(); ++program)
        addRecorder(program.key(), failing.contains(program.key()) ? 255 : program.value());
    QCOMPARE(debuggerOutputOf(show), u""_s);
    QCOMPARE(result, int(QMessageBox::Ok));
    for (const QString &program : ok.keys())
        QCOMPARE(wasCalled(program), program == called || failing.contains(program));
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
    const QString name = programPath(u"kdialog"_s);
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
    QVERIFY(QDir::setCurrent(folder()));
    addRecorder(u"kdialog"_s, 0);
    for (const QByteArray &path :
         {""_ba, "."_ba, ":"_ba, "../"_ba + QFile::encodeName(QFileInfo(folder()).fileName())}) {
        qputenv("PATH", path);
        QCOMPARE(debuggerOutputOf(show), u"Title: Text\n"_s);
        QVERIFY(!wasCalled(u"kdialog"_s));
    }
    qputenv("PATH", ":/nonexistent:" + QFile::encodeName(folder()));
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
    const QByteArray record = recordPath(u"input"_s);
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
    QTest::newRow("40 lines and a line end") << u"line\n"_s.repeated(40) << u"line\n"_s.repeated(40);
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

void tst_s3NativeBox::longTextIsWrittenAfterTheBox()
{
    call.text = u"x"_s.repeated(3001);
    addRecorder(u"zenity"_s, 101, "echo box >&2");
    const QString output = debuggerOutputOf(show);
    QVERIFY2(output.startsWith(u"box\nTitle: x"_s), qPrintable(output.left(100)));
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
    QVERIFY(argumentsOf(u"zenity"_s).contains(u"--title=Vexa"_s));
    QCOMPARE(argumentsOf(u"zenity"_s).value(0), u"--error"_s);
    QVERIFY(argumentsOf(u"zenity"_s).contains(u"--text=X"_s));
}

void tst_s3NativeBox::fatalChoiceIsNative()
{
    addProgram(u"zenity"_s, "exit $ZENITY_CANCEL");
    QCOMPARE(s3BasicBox::fatalChoice(u"X"_s, yesNo, QMessageBox::No), int(QMessageBox::Yes));
    QCOMPARE(s3BasicBox::fatalChoice(u"X"_s, yesNo, QMessageBox::Yes), int(QMessageBox::No));
}

QTEST_MAIN(tst_s3NativeBox)
#include "tst_s3nativebox_unix.moc"

// The box without Qt, as the program that is everywhere shows it on an X display.

#include "debuggeroutput.h"
#include "desktopprograms.h"
#include "s3basicboxwin.h"

#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTest>

#include <chrono>
#include <future>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr qint64 patience = 20000;

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

class tst_s3RealBox : public QObject, private DesktopPrograms
{
    Q_OBJECT

private Q_SLOTS:
    void init() { reset(); }
    void realBox_data();
    void realBox();
    void realBoxWhoseDisplayGoesAway();
};

void tst_s3RealBox::realBox_data()
{
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<int>("button");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    QTest::newRow("Ok") << ok << QMessageBox::NoButton << int(QMessageBox::Ok);
    QTest::newRow("Cancel") << okCancel << QMessageBox::Cancel << int(QMessageBox::Cancel);
    QTest::newRow("No of three") << yesNoCancel << QMessageBox::No << int(QMessageBox::No);
}

void tst_s3RealBox::realBox()
{
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    // Before the display, which ends the box by its own end if the test fails.
    std::future<int> answer;
    const XDisplay display;
    QVERIFY(display.isThere());
    qputenv("DISPLAY", display.name());
    const QString title = u"A real box"_s;
    QVERIFY(QFile::link(u"/usr/bin/xmessage"_s, programPath(u"xmessage"_s)));

    // On another thread, while this one looks at the display and has no event loop.
    answer = std::async(std::launch::async, [title, buttons, defaultButton] {
        return int(s3BasicBoxWin::show(QMessageBox::Critical, title, u"Text"_s, buttons, defaultButton));
    });
    QTRY_VERIFY_WITH_TIMEOUT(!display.windowNamed(title).isEmpty(), 20000);
    QVERIFY(answer.wait_for(500ms) == std::future_status::timeout);
    // A box may not take the first key, as it comes up.
    QElapsedTimer timer;
    timer.start();
    while (answer.wait_for(200ms) == std::future_status::timeout) {
        QVERIFY2(timer.elapsed() < patience, "the box doesn't take the key");
        const QString window = QString::fromLatin1(display.windowNamed(title));
        if (!window.isEmpty())
            static_cast<void>(display.run({u"windowfocus"_s, u"--sync"_s, window, u"key"_s, u"Return"_s}));
    }
    QTEST(answer.get(), "button");
}

void tst_s3RealBox::realBoxWhoseDisplayGoesAway()
{
    std::future<int> answer;
    XDisplay display;
    QVERIFY(display.isThere());
    qputenv("DISPLAY", display.name());
    QVERIFY(QFile::link(u"/usr/bin/xmessage"_s, programPath(u"xmessage"_s)));
    answer = std::async(std::launch::async, [] {
        return int(
            s3BasicBoxWin::show(QMessageBox::Critical, u"Short-lived"_s, u"Text"_s, okCancel, QMessageBox::NoButton));
    });
    QTRY_VERIFY_WITH_TIMEOUT(!display.windowNamed(u"Short-lived"_s).isEmpty(), 20000);
    display.end();
    QVERIFY(answer.wait_for(20s) == std::future_status::ready);
    QCOMPARE(answer.get(), int(QMessageBox::Cancel));
    // Nobody is there any more.
    call.title = u"Without a server"_s;
    const QString output = debuggerOutputOf(show);
    QVERIFY2(output.endsWith(u"Without a server: Text\n"_s), qPrintable(output));
    QCOMPARE(result, 0);
}

QTEST_MAIN(tst_s3RealBox)
#include "tst_s3realbox.moc"

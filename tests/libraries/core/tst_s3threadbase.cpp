#include "s3threadbase.h"

#include "assertion.h"
#include "test/s3testausproxy.h"

#include <QElapsedTimer>
#include <QEvent>
#include <QPointer>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QSemaphore>
#include <QTest>

#include <climits>
#include <thread>
#include <type_traits>

using namespace Qt::Literals::StringLiterals;

class tst_s3ThreadBase : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup();
    void mainThreadBeforeTheApplicationFailsItsAssertion();
    void mainThread();
    void assertInMainThread();
    void assertNotInMainThread();
    void startedThreadRuns();
    void startOfARunningThreadChangesNothing();
    void startOfAThreadThatEndsAtOnce();
    void startOnceMore();
    void startWhileTheFormerRunComesToItsEnd();
    void waitTakesMilliseconds();
    void priorityIsThatOfTheCaller();
    void quitWithoutWaitingReturnsAtOnce();
    void quitWaitsForTheEnd();
    void quitWaitsFiveSecondsAtMost();
    void quitOfAThreadThatDoesNotRun();
    void finishedOnTheMainThread();
    void finishedWithoutRunFinish();
    void runWithoutRunFinishEndsTheProcess();
    void deletesItselfOnlyIfWanted_data();
    void deletesItselfOnlyIfWanted();
    void deletionIsVirtual();
    void receiverIsNotSetOnTheMainThread();
    void eventsGoToTheReceiver();
    void eventWithoutReceiverStaysTheCallers();
    void tracesWithFlag110();
    void noTraceWithoutFlag110();
};

static_assert(std::is_base_of_v<QThread, s3ThreadBase>);

namespace {

const QString sourceFile = u"libraries/core/src/s3threadbase"_s;

const QString beforeMain = failedAssertion([] { static_cast<void>(s3ThreadBase::currentIsMainThread()); });

template<typename Function>
void onAnotherThread(Function function)
{
    std::thread(function).join();
}

QStringList written;

void record(const QString &text, bool)
{
    written.append(text);
}

class ShortThread : public s3ThreadBase
{
public:
    ~ShortThread() override { wait(); }
    void deleteWhenFinished() { m_deleteWhenFinished = true; }
    void end() { runFinish(); }

protected:
    void run() override { runFinish(); }
};

class LoopThread : public ShortThread
{
public:
    ~LoopThread() override
    {
        quit();
        wait();
    }

protected:
    void run() override
    {
        exec();
        runFinish();
    }
};

class BlockedThread : public ShortThread
{
public:
    ~BlockedThread() override
    {
        release();
        wait();
    }
    void release() { m_semaphore.release(); }
    std::atomic<int> priorityInRun = -1;
    std::atomic<int> runs = 0;

protected:
    void run() override
    {
        ++runs;
        priorityInRun = priority();
        m_semaphore.acquire();
        runFinish();
    }

private:
    QSemaphore m_semaphore;
};

class SilentlyEndingThread : public s3ThreadBase
{
protected:
    void run() override {}
};

class Receiver : public QObject
{
public:
    int events = 0;

protected:
    void customEvent(QEvent *event) override
    {
        if (event->type() == QEvent::User)
            ++events;
    }
};

} // namespace

void tst_s3ThreadBase::cleanup()
{
    s3TestausProxy::instance()->setCallback(nullptr);
    s3TestFlagsGUI::instance()->clear();
    written.clear();
}

void tst_s3ThreadBase::mainThreadBeforeTheApplicationFailsItsAssertion()
{
    QVERIFY(isAssertion(beforeMain, u"(static_cast<QApplication *>(QCoreApplication::instance())) != nullptr"_s,
                        sourceFile, 199, u"s3ThreadBase::currentIsMainThread"_s));
}

void tst_s3ThreadBase::mainThread()
{
    QVERIFY(s3ThreadBase::currentIsMainThread());
    onAnotherThread([] { QVERIFY(!s3ThreadBase::currentIsMainThread()); });
}

void tst_s3ThreadBase::assertInMainThread()
{
    QCOMPARE(failedAssertion([] { s3ThreadBase::assertInMainThread(); }), QString());
    QString text;
    onAnotherThread([&text] { text = failedAssertion([] { s3ThreadBase::assertInMainThread(); }); });
    QVERIFY(isAssertion(text, u"currentIsMainThread()"_s, sourceFile, 215, u"s3ThreadBase::assertInMainThread"_s));
}

void tst_s3ThreadBase::assertNotInMainThread()
{
    onAnotherThread([] { QCOMPARE(failedAssertion([] { s3ThreadBase::assertNotInMainThread(); }), QString()); });
    const QString text = failedAssertion([] { s3ThreadBase::assertNotInMainThread(); });
    QVERIFY(isAssertion(text, u"! currentIsMainThread()"_s, sourceFile, 224, u"s3ThreadBase::assertNotInMainThread"_s));
}

void tst_s3ThreadBase::startedThreadRuns()
{
    BlockedThread thread;
    QVERIFY(!thread.isStarted());
    QVERIFY(thread.start());
    QVERIFY(thread.isStarted());
    QVERIFY(thread.isRunning());
}

void tst_s3ThreadBase::startOfARunningThreadChangesNothing()
{
    BlockedThread thread;
    QVERIFY(thread.start());
    QTRY_VERIFY(thread.priorityInRun >= 0);
    thread.end();
    QVERIFY(thread.start());
    QVERIFY(thread.isStarted());
    // The mark of the run stays: on this thread the only failure left is that this isn't the worker.
    QVERIFY(isAssertion(failedAssertion([&thread] { thread.slotFinished(); }), u"! currentIsMainThread()"_s, sourceFile,
                        224, u"s3ThreadBase::assertNotInMainThread"_s));
    onAnotherThread([&thread] { QCOMPARE(failedAssertion([&thread] { thread.slotFinished(); }), QString()); });
    thread.release();
    QVERIFY(thread.wait());
    QVERIFY(thread.isFinished());
    QCOMPARE(thread.runs.load(), 1);
}

void tst_s3ThreadBase::startOfAThreadThatEndsAtOnce()
{
    // Some of these end before start() asks whether they run, others after that.
    for (int i = 0; i < 500; ++i) {
        ShortThread thread;
        QVERIFY(thread.start());
    }
}

void tst_s3ThreadBase::startOnceMore()
{
    ShortThread thread;
    QVERIFY(thread.start());
    QVERIFY(thread.wait());
    QVERIFY(thread.start());
}

void tst_s3ThreadBase::startWhileTheFormerRunComesToItsEnd()
{
    // It counts as finished before it has looked whether its run came to the end, which a new start takes back.
    for (int i = 0; i < 500; ++i) {
        ShortThread thread;
        QVERIFY(thread.start());
        while (!thread.isFinished())
            continue;
        QVERIFY(thread.start());
    }
}

void tst_s3ThreadBase::waitTakesMilliseconds()
{
    BlockedThread thread;
    QVERIFY(thread.start());
    QVERIFY(!thread.wait(1));
    thread.release();
    QVERIFY(thread.wait(ULONG_MAX));
}

void tst_s3ThreadBase::priorityIsThatOfTheCaller()
{
    QCOMPARE(int(QThread::InheritPriority), 7);
    BlockedThread thread;
    QVERIFY(thread.start());
    QTRY_COMPARE(thread.priorityInRun.load(), int(QThread::InheritPriority));
}

void tst_s3ThreadBase::quitWithoutWaitingReturnsAtOnce()
{
    BlockedThread thread;
    QVERIFY(thread.start());
    QElapsedTimer timer;
    timer.start();
    thread.quit(false);
    QVERIFY(timer.elapsed() < 1000);
    QVERIFY(thread.isRunning());
}

void tst_s3ThreadBase::quitWaitsForTheEnd()
{
    LoopThread thread;
    QVERIFY(thread.start());
    thread.quit(true);
    QVERIFY(thread.isFinished());
}

void tst_s3ThreadBase::quitWaitsFiveSecondsAtMost()
{
    BlockedThread thread;
    QVERIFY(thread.start());
    QElapsedTimer timer;
    timer.start();
    thread.quit(true);
    QVERIFY(timer.elapsed() >= 4990);
    QVERIFY(timer.elapsed() < 20'000); // what a loaded machine adds
    QVERIFY(thread.isRunning());
}

void tst_s3ThreadBase::quitOfAThreadThatDoesNotRun()
{
    s3TestFlagsGUI::instance()->insert(110);
    ShortThread thread;
    s3TestausProxy::instance()->setCallback(record);
    thread.quit(true);
    QCOMPARE(written.size(), 1); // and no second one with the time that it has waited
    QVERIFY(written.first().endsWith(u" waitEnd=true"_s));
}

void tst_s3ThreadBase::finishedOnTheMainThread()
{
    ShortThread thread;
    thread.end();
    const QString text = failedAssertion([&thread] { thread.slotFinished(); });
    QVERIFY(isAssertion(text, u"! currentIsMainThread()"_s, sourceFile, 224, u"s3ThreadBase::assertNotInMainThread"_s));
}

void tst_s3ThreadBase::finishedWithoutRunFinish()
{
    ShortThread thread;
    QString before;
    QString after;
    onAnotherThread([&] {
        before = failedAssertion([&thread] { thread.slotFinished(); });
        thread.end();
        after = failedAssertion([&thread] { thread.slotFinished(); });
    });
    QVERIFY(isAssertion(before, u"m_runFinished == true"_s, sourceFile, 174, u"s3ThreadBase::slotFinished"_s,
                        u"Kein runFinish() Aufruf in der abgeleiteten run() Funktion"_s));
    QCOMPARE(after, QString());
}

void tst_s3ThreadBase::runWithoutRunFinishEndsTheProcess()
{
    QProcess process;
    // On Windows Qt's messages go to a debugger otherwise.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"QT_FORCE_STDERR_LOGGING"_s, u"1"_s);
    process.setProcessEnvironment(environment);
    process.start(QCoreApplication::applicationFilePath(), {u"--silent-end"_s});
    QVERIFY(process.waitForFinished());
    const QByteArray output = process.readAllStandardError();
    QVERIFY2(output.contains("Kein runFinish() Aufruf in der abgeleiteten run() Funktion"), output.constData());
    QVERIFY(process.exitStatus() == QProcess::CrashExit || process.exitCode() != 0);
}

void tst_s3ThreadBase::deletesItselfOnlyIfWanted_data()
{
    QTest::addColumn<bool>("wanted");
    QTest::newRow("wanted") << true;
    QTest::newRow("not wanted") << false;
}

void tst_s3ThreadBase::deletesItselfOnlyIfWanted()
{
    QFETCH(const bool, wanted);
    auto *const thread = new ShortThread;
    const QPointer<ShortThread> watched = thread;
    if (wanted)
        thread->deleteWhenFinished();
    QVERIFY(thread->start());
    QVERIFY(thread->wait());
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCOMPARE(watched.isNull(), wanted);
    delete watched;
}

void tst_s3ThreadBase::deletionIsVirtual()
{
    class CountingThread : public ShortThread
    {
    public:
        ~CountingThread() override { wait(); }
        std::atomic<int> calls = 0;

    protected:
        void deleteIfWanted() override { ++calls; }
    };
    CountingThread thread;
    QVERIFY(thread.start());
    QVERIFY(thread.wait());
    QCOMPARE(thread.calls.load(), 1);
}

void tst_s3ThreadBase::receiverIsNotSetOnTheMainThread()
{
    ShortThread thread;
    const QString text = failedAssertion([&] { thread.setEventReceiver(this); });
    QVERIFY(isAssertion(text, u"! currentIsMainThread()"_s, sourceFile, 224, u"s3ThreadBase::assertNotInMainThread"_s));
}

void tst_s3ThreadBase::eventsGoToTheReceiver()
{
    Receiver receiver;
    ShortThread thread;
    onAnotherThread([&] {
        thread.setEventReceiver(&receiver);
        thread.postToReceiver(new QEvent(QEvent::User));
        thread.postToReceiver(nullptr);
    });
    QCOMPARE(receiver.events, 0);
    QCoreApplication::processEvents();
    QCOMPARE(receiver.events, 1);
}

void tst_s3ThreadBase::eventWithoutReceiverStaysTheCallers()
{
    ShortThread thread;
    const auto event = std::make_unique<QEvent>(QEvent::User);
    thread.postToReceiver(event.get());
    QCoreApplication::processEvents();
    QCOMPARE(event->type(), QEvent::User);
}

void tst_s3ThreadBase::tracesWithFlag110()
{
    s3TestFlagsGUI::instance()->insert(110);
    s3TestausProxy::instance()->setCallback(record);
    QString address;
    {
        LoopThread thread;
        address =
            u"0x"_s + QString::number(quintptr(static_cast<s3ThreadBase *>(&thread)), 16).rightJustified(16, u'0');
        address.replace(u"0x00000000"_s, u"0x"_s);
        thread.quit(false);
        QVERIFY(thread.start());
        thread.quit(true);
    }
    QCOMPARE(written.size(), 5);
    QCOMPARE(written.at(0), u"s3ThreadBase::s3ThreadBase() this="_s + address);
    QCOMPARE(written.at(1), u"s3ThreadBase::quit() this="_s + address + u" waitEnd=false"_s);
    QCOMPARE(written.at(2), u"s3ThreadBase::quit() this="_s + address + u" waitEnd=true"_s);
    const QRegularExpression elapsed(uR"(^s3ThreadBase::quit\(\) elapsed="[0-9.]+ ms"$)"_s);
    QVERIFY2(elapsed.match(written.at(3)).hasMatch(), qPrintable(written.at(3)));
    QCOMPARE(written.at(4), u"s3ThreadBase::~s3ThreadBase() this="_s + address);
}

void tst_s3ThreadBase::noTraceWithoutFlag110()
{
    s3TestFlagsGUI::instance()->insert(111);
    s3TestausProxy::instance()->setCallback(record);
    {
        ShortThread thread;
        thread.quit(false);
    }
    QCOMPARE(written, QStringList());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (QCoreApplication::arguments().value(1) == u"--silent-end"_s) {
        SilentlyEndingThread thread;
        thread.start();
        thread.wait();
        return 0;
    }
    tst_s3ThreadBase test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_s3threadbase.moc"

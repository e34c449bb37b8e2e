// All that threads of the core do with each other, for a race checker to look at. Fails as well if a line is torn, lost
// or out of order.

#include "protocol/s3customevent.h"
#include "protocol/s3logstream.h"
#include "protocol/s3qeventprotocol.h"
#include "s3basicbox.h"
#include "s3dictionaries.h"
#include "s3racechecker.h"
#include "s3testflags.h"
#include "s3threadbase.h"
#include "test/s3testausproxy.h"
#include "tracewriters.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>

#include <atomic>
#include <cstdio>
#include <semaphore>
#include <thread>
#include <vector>

using namespace Qt::Literals::StringLiterals;

class PassedEvent : public s3CustomEventBase<PassedEvent>
{
public:
    int number = 0;
};

namespace {

bool failed = false;

void expect(bool holds, const char *what)
{
    if (holds)
        return;
    failed = true;
    std::fprintf(stderr, "Not so: %s\n", what);
}

template<typename Function>
void atOnce(int count, Function function)
{
    std::vector<std::thread> threads;
    threads.reserve(size_t(count));
    for (int i = 0; i < count; ++i)
        threads.emplace_back(function);
    for (std::thread &thread : threads)
        thread.join();
}

void firstUse()
{
    atOnce(8, [] { s3TestausProxy::instance()->write(u"nobody hears it"_s, true); });
    expect(s3TestausProxy::instance()->thread() == QCoreApplication::instance()->thread(), "proxy on the main thread");
    atOnce(8, [] { expect(s3QEventProtocol::eventName(PassedEvent::type()) == u"class PassedEvent"_s, "event name"); });
}

void endOutput()
{
    s3TestausProxy::instance()->setCallback(nullptr);
    s3TestFlagsGUI::instance()->clear();
    writtenLines().clear();
}

void linesOfManyThreads(bool withTime)
{
    const QTemporaryDir directory;
    s3TestausProxy::instance()->setFileName(directory.filePath(u"testaus.txt"_s));
    s3TestausProxy::instance()->setCallback(recordLine);
    if (withTime)
        s3TestFlagsGUI::instance()->insert(96);
    writeFromThreads(8);
    const QString what = fault(writtenLines(), 9, withTime);
    expect(what.isEmpty(), qUtf8Printable(what));
    s3LogStream::closeChannel(u"testaus"_s);
    endOutput();
}

/// The event loop runs only when all are queued.
void linesInTheQueue()
{
    s3TestausProxy::instance()->setCallback(recordLine);
    std::atomic<int> next = 0;
    atOnce(8, [&next] { writeLines(next++); });
    QCoreApplication::processEvents();
    const QString what = fault(writtenLines(), 8, false);
    expect(what.isEmpty(), qUtf8Printable(what));
    endOutput();
}

/// Each line while the flush of the one before may still be running.
void linesOneByOne()
{
    constexpr int rounds = 500;
    s3TestausProxy::instance()->setCallback(recordLine);
    std::counting_semaphore<> next(0);
    std::thread thread([&next] {
        for (int round = 0; round < rounds; ++round) {
            next.acquire();
            s3TestausProxy::instance()->write(QString::number(round), true);
        }
    });
    for (int round = 0; round < rounds; ++round) {
        next.release();
        while (writtenLines().size() <= round)
            QCoreApplication::processEvents();
    }
    thread.join();
    expect(writtenLines().size() == rounds, "each line once");
    endOutput();
}

/// A callback that writes, which is dropped, while other threads are in the middle of a line.
void callbackThatWrites()
{
    s3TestausProxy::instance()->setCallback([](const QString &text, bool endOfLine) {
        recordLine(text, endOfLine);
        s3TestausProxy::instance()->write(u"dropped"_s, true);
    });
    writeFromThreads(8);
    const QString what = fault(writtenLines(), 9, false);
    expect(what.isEmpty(), qUtf8Printable(what));
    endOutput();
}

/// Boxes of threads that have come to grief, by way of the channel of tests, while the main thread translates and opens
/// other channels.
void fatalBoxes()
{
    constexpr int rounds = 200;
    const QTemporaryDir directory;
    const QString fileName = directory.filePath(u"error.txt"_s);
    s3LogStream::openChannel(u"error"_s, fileName, QStringConverter::Utf8);
    std::thread boxes([] {
        atOnce(4, [] {
            for (int round = 0; round < rounds; ++round)
                s3BasicBox::fatal(u"text"_s);
        });
    });
    for (int round = 0; round < rounds; ++round) {
        static_cast<void>(translate(u"text %1"_s.arg(round)));
        s3LogStream::openChannel(u"other"_s, directory.filePath(u"other.txt"_s), QStringConverter::Utf8);
        s3LogStream::closeChannel(u"other"_s);
    }
    boxes.join();
    s3LogStream::closeChannel(u"error"_s);
    QFile file(fileName);
    expect(file.open(QIODevice::ReadOnly), "file of the channel");
    expect(file.readAll() == "s3BasicBox::show(): text\n"_ba.repeated(qsizetype(4) * rounds), "a line for each box");
}

class Receiver : public QObject
{
public:
    int sum = 0;

protected:
    void customEvent(QEvent *event) override
    {
        s3RaceChecker::takeOver(event);
        if (event->type() == PassedEvent::type())
            sum += static_cast<const PassedEvent *>(event)->number;
    }
};

class Worker : public s3ThreadBase
{
public:
    Worker(QObject &receiver, bool deletesItself)
        : m_receiver(receiver)
    {
        m_deleteWhenFinished = deletesItself;
    }
    ~Worker() override { wait(); }

protected:
    void run() override
    {
        setEventReceiver(&m_receiver);
        for (int i = 0; i < 100; ++i) {
            auto *const event = new PassedEvent;
            event->number = 1;
            postToReceiver(event);
            s3TestausProxy::instance()->write(QString::number(i), true);
        }
        exec();
        runFinish();
    }

private:
    QObject &m_receiver;
};

void workers(bool deleteThemselves)
{
    s3TestausProxy::instance()->setCallback(recordLine);
    s3TestFlagsGUI::instance()->insert(110);
    Receiver receiver;
    std::vector<Worker *> threads;
    for (int i = 0; i < 8; ++i) {
        threads.push_back(new Worker(receiver, deleteThemselves));
        expect(threads.back()->start(), "worker started");
    }
    while (receiver.sum < 800)
        QCoreApplication::processEvents();
    for (Worker *thread : threads)
        thread->quit(true);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    if (!deleteThemselves)
        qDeleteAll(threads);
    expect(receiver.sum == 800, "each event once");
    endOutput();
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    static_cast<void>(s3TestFlagsGUI::instance());
    firstUse();
    linesOfManyThreads(false);
    linesOfManyThreads(true);
    linesInTheQueue();
    linesOneByOne();
    callbackThatWrites();
    fatalBoxes();
    workers(false);
    workers(true);
    return failed ? 1 : 0;
}

#include "test/s3testausproxy.h"

#include "protocol/s3logstream.h"
#include "s3testflags.h"
#include "s3threadbase.h"

#include <QFile>
#include <QRegularExpression>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

using namespace Qt::Literals::StringLiterals;

class tst_s3TestausThreads : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void firstUseOnAnotherThreadMovesToTheMainOne();
    void typeOfTheFlushEventIsTracedBeforeTheFirstLine();
    void cleanup();
    void linesOfManyThreads_data();
    void linesOfManyThreads();
    void linesBeyondTheQueueOfOneFlush();
};

namespace {

constexpr int linesOfAThread = 400;

QStringList written;

void record(const QString &text, bool endOfLine)
{
    static QString line;
    line += text;
    if (endOfLine) {
        written.append(line);
        line.clear();
    }
}

void writeLine(int writer, int number)
{
    s3TestausProxy *const proxy = s3TestausProxy::instance();
    const QString head = u"writer=%1 number=%2"_s.arg(QString::number(writer), QString::number(number));
    if (number % 2 == 0) {
        proxy->write(head + u" middle end"_s, true);
        return;
    }
    proxy->write(head, false);
    if (number % 8 == 1)
        QThread::yieldCurrentThread();
    proxy->write(u" middle"_s, false);
    proxy->write(u" end"_s, true);
}

/// Starts \a threads writers, lets the main thread write as well and run its event loop until they have ended.
void writeFromThreads(int threads)
{
    std::atomic<int> ended = 0;
    std::vector<std::thread> writers;
    for (int writer = 1; writer <= threads; ++writer) {
        writers.emplace_back([writer, &ended] {
            for (int number = 0; number < linesOfAThread; ++number)
                writeLine(writer, number);
            ++ended;
        });
    }
    int number = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&number] {
        if (number < linesOfAThread)
            writeLine(0, number++);
    });
    timer.start(0);
    while (ended < threads || number < linesOfAThread)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    for (std::thread &writer : writers)
        writer.join();
    QCoreApplication::processEvents();
}

/// What is wrong with these lines; empty if each is whole, none is missing and those of each writer are in order.
QString fault(const QStringList &lines, int writers, bool withTime)
{
    static const QRegularExpression plain(uR"(^writer=(\d+) number=(\d+) middle end$)"_s);
    static const QRegularExpression stamped(uR"(^\[\d\d:\d\d:\d\d\.\d\d\d\] writer=(\d+) number=(\d+) middle end$)"_s);
    std::map<int, int> next;
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = (withTime ? stamped : plain).match(line);
        if (!match.hasMatch())
            return u"torn: "_s + line;
        if (match.captured(2).toInt() != next[match.captured(1).toInt()]++)
            return u"lost or out of order: "_s + line;
    }
    for (int writer = 0; writer < writers; ++writer) {
        if (next[writer] != linesOfAThread)
            return u"lost: writer %1 has %2"_s.arg(writer).arg(next[writer]);
    }
    return {};
}

QStringList linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QString text = QStringDecoder(QStringConverter::Utf16LE)(file.readAll());
    if (text.endsWith(u'\n'))
        text.chop(1);
    return text.split(u'\n');
}

} // namespace

void tst_s3TestausThreads::firstUseOnAnotherThreadMovesToTheMainOne()
{
    QVERIFY(!s3TestausProxy::exists());
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] { static_cast<void>(s3TestausProxy::instance()); });
    }
    for (std::thread &thread : threads)
        thread.join();
    QVERIFY(s3TestausProxy::exists());
    QCOMPARE(s3TestausProxy::instance()->thread(), QCoreApplication::instance()->thread());
}

void tst_s3TestausThreads::typeOfTheFlushEventIsTracedBeforeTheFirstLine()
{
    s3TestFlagsGUI::instance()->insert(404);
    s3TestausProxy::instance()->setCallback(record);
    std::thread([] {
        s3TestausProxy::instance()->write(u"a"_s, false);
        s3TestausProxy::instance()->write(u"b"_s, true);
    }).join();
    QCoreApplication::processEvents();
    QCOMPARE(written.size(), 2);
    const QRegularExpression pattern(uR"(^s3CustomEventBase<class s3TestausProxyPrivatFlushEvent>::type\(\) = \d+$)"_s);
    QVERIFY2(pattern.match(written.at(0)).hasMatch(), qPrintable(written.at(0)));
    QCOMPARE(written.at(1), u"ab"_s);
}

void tst_s3TestausThreads::cleanup()
{
    s3TestausProxy::instance()->setCallback(nullptr);
    s3TestFlagsGUI::instance()->clear();
    s3LogStream::closeChannel(u"testaus"_s);
    written.clear();
}

void tst_s3TestausThreads::linesOfManyThreads_data()
{
    QTest::addColumn<int>("threads");
    QTest::addColumn<bool>("withTime");
    QTest::newRow("one other thread") << 1 << false;
    QTest::newRow("eight threads") << 8 << false;
    QTest::newRow("eight threads, with the time") << 8 << true;
    QTest::newRow("thirty-two threads") << 32 << false;
}

void tst_s3TestausThreads::linesOfManyThreads()
{
    QFETCH(const int, threads);
    QFETCH(const bool, withTime);
    const QTemporaryDir directory;
    const QString path = directory.filePath(u"testaus.txt"_s);
    s3TestausProxy::instance()->setFileName(path);
    s3TestausProxy::instance()->setCallback(record);
    if (withTime)
        s3TestFlagsGUI::instance()->insert(96);
    writeFromThreads(threads);
    QCOMPARE(fault(written, threads + 1, withTime), QString());
    QCOMPARE(linesOf(path), written);
}

void tst_s3TestausThreads::linesBeyondTheQueueOfOneFlush()
{
    // The event loop runs only when all are queued.
    s3TestausProxy::instance()->setCallback(record);
    std::vector<std::thread> writers;
    for (int writer = 0; writer < 8; ++writer) {
        writers.emplace_back([writer] {
            for (int number = 0; number < linesOfAThread; ++number)
                writeLine(writer, number);
        });
    }
    for (std::thread &writer : writers)
        writer.join();
    QVERIFY(written.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(fault(written, 8, false), QString());
}

QTEST_GUILESS_MAIN(tst_s3TestausThreads)
#include "tst_s3testausthreads.moc"

#include "test/s3testausproxy.h"

#include "tracewriters.h"

#include "protocol/s3logstream.h"
#include "s3testflags.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QRegularExpression>
#include <QSemaphore>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>

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
    void noLineNeedsAnotherOneToComeOut();
};

namespace {

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
    threads.reserve(4);
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
    s3TestausProxy::instance()->setCallback(recordLine);
    std::thread([] {
        s3TestausProxy::instance()->write(u"a"_s, false);
        s3TestausProxy::instance()->write(u"b"_s, true);
    }).join();
    QCoreApplication::processEvents();
    QCOMPARE(writtenLines().size(), 2);
    const QRegularExpression pattern(uR"(^s3CustomEventBase<class s3TestausProxyPrivatFlushEvent>::type\(\) = \d+$)"_s);
    QVERIFY2(pattern.match(writtenLines().at(0)).hasMatch(), qPrintable(writtenLines().at(0)));
    QCOMPARE(writtenLines().at(1), u"ab"_s);
}

void tst_s3TestausThreads::cleanup()
{
    s3TestausProxy::instance()->setCallback(nullptr);
    s3TestFlagsGUI::instance()->clear();
    s3LogStream::closeChannel(u"testaus"_s);
    writtenLines().clear();
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
    s3TestausProxy::instance()->setCallback(recordLine);
    if (withTime)
        s3TestFlagsGUI::instance()->insert(96);
    writeFromThreads(threads);
    QCOMPARE(fault(writtenLines(), threads + 1, withTime), QString());
    QCOMPARE(linesOf(path), writtenLines());
    // Windows removes no file that is open.
    s3LogStream::closeChannel(u"testaus"_s);
}

void tst_s3TestausThreads::linesBeyondTheQueueOfOneFlush()
{
    // The event loop runs only when all are queued.
    s3TestausProxy::instance()->setCallback(recordLine);
    std::vector<std::thread> writers;
    writers.reserve(8);
    for (int writer = 0; writer < 8; ++writer)
        writers.emplace_back(writeLines, writer);
    for (std::thread &writer : writers)
        writer.join();
    QVERIFY(writtenLines().isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(fault(writtenLines(), 8, false), QString());
}

void tst_s3TestausThreads::noLineNeedsAnotherOneToComeOut()
{
    constexpr int rounds = 2000;
    s3TestausProxy::instance()->setCallback(recordLine);
    QSemaphore next;
    std::thread thread([&next] {
        for (int round = 0; round < rounds; ++round) {
            next.acquire();
            s3TestausProxy::instance()->write(QString::number(round), true);
        }
    });
    int stuck = 0;
    for (int round = 0; round < rounds; ++round) {
        next.release();
        const QDeadlineTimer deadline(2000);
        while (writtenLines().size() <= round - stuck && !deadline.hasExpired())
            QCoreApplication::processEvents();
        if (deadline.hasExpired() && ++stuck == 3)
            break;
    }
    next.release(rounds);
    thread.join();
    QCOMPARE(stuck, 0);
    QCOMPARE(writtenLines().size(), rounds);
}

QTEST_GUILESS_MAIN(tst_s3TestausThreads)
#include "tst_s3testausthreads.moc"

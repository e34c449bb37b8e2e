#include "test/s3testausproxy.h"

#include "assertion.h"
#include "debuggeroutput.h"
#include "protocol/s3logstream.h"
#include "s3threadbase.h"
#include "s3trace.h"
#include "test/s3testausproxyprivate.h"

#include <QDir>
#include <QRegularExpression>
#include <QSemaphore>
#include <QStringDecoder>
#include <QTemporaryDir>
#include <QTest>

#include <thread>
#include <type_traits>

using namespace Qt::Literals::StringLiterals;

class tst_s3TestausProxy : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void writtenBeforeTheApplicationIsDropped();
    void instanceStays();
    void nothingWithoutAFlag();
    void otherFlagsOpenNothing();
    void flag55WritesTheFileOfTheDefaultName();
    void fileIsUtf16WithItsMark();
    void fileNameSetsTheFlag();
    void emptyFileNameChangesNothing();
    void fileIsEmptiedByTheFirstOutput();
    void fileThatCannotBeOpenedIsTriedAgain();
    void flag202GoesToTheDebuggerAndToNoFile();
    void bothFlags();
    void callbackGetsEachPiece();
    void piecesBecomeOneLine();
    void flag96PutsTheTimeInFrontOfALine();
    void flag96StampsPiecesOnce();
    void flag96LeavesPiecesInTheStream();
    void lineWrittenDuringAFlushIsDropped();
    void callbackThatWritesWhileAnotherThreadIsInALine();
    void traceIsAWholeLine();
    void lineOfAnotherThreadWaitsForTheEventLoop();
    void otherEventsDoNotFlush();
    void flushOnAnotherThreadFailsItsAssertion();

private:
    [[nodiscard]] static QString contents(const QString &fileName);

    std::unique_ptr<QTemporaryDir> m_directory;
    QString m_directoryBefore;
};

static_assert(std::is_base_of_v<s3Singleton<s3TestausProxy>, s3TestausProxy>);
static_assert(std::is_base_of_v<QObject, s3TestausProxy>);
static_assert(std::is_base_of_v<QObject, s3TestausProxyPrivate>);

namespace {

QList<std::pair<QString, bool>> written;

void record(const QString &text, bool endOfLine)
{
    written.append({text, endOfLine});
}

QStringList writtenTexts()
{
    QStringList texts;
    for (const auto &[text, endOfLine] : written)
        texts.append(text);
    return texts;
}

const bool existedBefore = s3TestausProxy::exists();
const bool writtenBeforeMain = [] {
    // Not on this thread, so that the tests have a proxy which is made where it mustn't stay.
    std::thread([] {
        s3TestausProxy::instance()->setCallback(record);
        s3TestausProxy::instance()->write(u"too early"_s, true);
        s3TestausProxy::instance()->setCallback(nullptr);
    }).join();
    return !written.isEmpty();
}();

s3TestausProxy &proxy()
{
    return *s3TestausProxy::instance();
}

} // namespace

QString tst_s3TestausProxy::contents(const QString &fileName)
{
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly))
        return u"no such file"_s;
    return QStringDecoder(QStringConverter::Utf16LE)(file.readAll());
}

void tst_s3TestausProxy::init()
{
    m_directoryBefore = QDir::currentPath();
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(QDir::setCurrent(m_directory->path()));
    proxy().setFileName(u"testaus.txt"_s);
    s3TestFlagsGUI::instance()->clear();
    written.clear();
}

void tst_s3TestausProxy::cleanup()
{
    proxy().setCallback(nullptr);
    s3TestFlagsGUI::instance()->clear();
    s3LogStream::closeChannel(u"testaus"_s);
    QVERIFY(QDir::setCurrent(m_directoryBefore));
}

void tst_s3TestausProxy::writtenBeforeTheApplicationIsDropped()
{
    QVERIFY(!existedBefore);
    QVERIFY(s3TestausProxy::exists());
    QVERIFY(!writtenBeforeMain);
    proxy().setCallback(record);
    proxy().write(u"in time"_s, true);
    QCOMPARE(writtenTexts(), QStringList{u"in time"_s});
}

void tst_s3TestausProxy::instanceStays()
{
    QCOMPARE(s3TestausProxy::instance(), s3TestausProxy::instance());
    QCOMPARE(proxy().thread(), QCoreApplication::instance()->thread());
    QVERIFY(s3ThreadBase::currentIsMainThread());
}

void tst_s3TestausProxy::nothingWithoutAFlag()
{
    proxy().write(u"nobody"_s, true);
    proxy().setCallback(record);
    proxy().write(u"somebody"_s, true);
    QCOMPARE(writtenTexts(), QStringList{u"somebody"_s});
    QVERIFY(QDir().entryList(QDir::Files).isEmpty());
}

void tst_s3TestausProxy::otherFlagsOpenNothing()
{
    s3TestFlagsGUI::instance()->insert(96);
    s3TestFlagsGUI::instance()->insert(226);
    proxy().write(u"nobody"_s, true);
    QVERIFY(QDir().entryList(QDir::Files).isEmpty());
}

void tst_s3TestausProxy::flag55WritesTheFileOfTheDefaultName()
{
    QCOMPARE(s3TestausProxyPrivate().fileName, u"testaus.txt"_s);
    s3TestFlagsGUI::instance()->insert(55);
    QVERIFY(QDir().entryList(QDir::Files).isEmpty());
    proxy().write(u"one"_s, true);
    proxy().write(u"two"_s, true);
    QCOMPARE(contents(u"testaus.txt"_s), u"one\ntwo\n"_s);
}

void tst_s3TestausProxy::fileIsUtf16WithItsMark()
{
    s3TestFlagsGUI::instance()->insert(55);
    proxy().write(u"ä"_s, true);
    QFile file(u"testaus.txt"_s);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("\xFF\xFE\xE4\0\n\0", 6));
}

void tst_s3TestausProxy::fileNameSetsTheFlag()
{
    proxy().setFileName(u"other.txt"_s);
    QVERIFY(s3HasTestFlag(55));
    proxy().write(u"one"_s, true);
    QCOMPARE(contents(u"other.txt"_s), u"one\n"_s);
    QVERIFY(!QFile::exists(u"testaus.txt"_s));
}

void tst_s3TestausProxy::emptyFileNameChangesNothing()
{
    proxy().setFileName(QString());
    QVERIFY(!s3HasTestFlag(55));
    s3TestFlagsGUI::instance()->insert(55);
    proxy().write(u"one"_s, true);
    QCOMPARE(contents(u"testaus.txt"_s), u"one\n"_s);
}

void tst_s3TestausProxy::fileIsEmptiedByTheFirstOutput()
{
    QFile file(u"testaus.txt"_s);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("old");
    file.close();
    s3TestFlagsGUI::instance()->insert(55);
    QCOMPARE(file.size(), 3);
    proxy().write(u"new"_s, true);
    QCOMPARE(contents(u"testaus.txt"_s), u"new\n"_s);
}

void tst_s3TestausProxy::fileThatCannotBeOpenedIsTriedAgain()
{
    proxy().setFileName(u"folder/testaus.txt"_s);
    proxy().write(u"lost"_s, true);
    QVERIFY(QDir().mkdir(u"folder"_s));
    proxy().write(u"kept"_s, true);
    QCOMPARE(contents(u"folder/testaus.txt"_s), u"kept\n"_s);
}

void tst_s3TestausProxy::flag202GoesToTheDebuggerAndToNoFile()
{
    s3TestFlagsGUI::instance()->insert(202);
    const QString output = debuggerOutputOf([] {
        proxy().write(u"piece "_s, false);
        proxy().write(u"line"_s, true);
    });
    QCOMPARE(output, u"piece line\n"_s);
    QVERIFY(QDir().entryList(QDir::Files).isEmpty());
}

void tst_s3TestausProxy::bothFlags()
{
    s3TestFlagsGUI::instance()->insert(55);
    s3TestFlagsGUI::instance()->insert(202);
    QCOMPARE(debuggerOutputOf([] { proxy().write(u"line"_s, true); }), u"line\n"_s);
    QCOMPARE(contents(u"testaus.txt"_s), u"line\n"_s);
}

void tst_s3TestausProxy::callbackGetsEachPiece()
{
    proxy().setCallback(record);
    proxy().write(u"a"_s, false);
    proxy().write(u"b"_s, true);
    const QList<std::pair<QString, bool>> expected{{u"a"_s, false}, {u"b"_s, true}};
    QCOMPARE(written, expected);
    QVERIFY(QDir().entryList(QDir::Files).isEmpty());
}

void tst_s3TestausProxy::piecesBecomeOneLine()
{
    s3TestFlagsGUI::instance()->insert(55);
    proxy().write(u"a"_s, false);
    proxy().write(u"b"_s, false);
    proxy().write(u"c"_s, true);
    proxy().write(u"d"_s, true);
    QCOMPARE(contents(u"testaus.txt"_s), u"abc\nd\n"_s);
}

void tst_s3TestausProxy::flag96PutsTheTimeInFrontOfALine()
{
    s3TestFlagsGUI::instance()->insert(55);
    s3TestFlagsGUI::instance()->insert(96);
    proxy().write(u"a"_s, true);
    proxy().write(u"b"_s, true);
    const QRegularExpression pattern(uR"(^\[\d\d:\d\d:\d\d\.\d\d\d\] a\n\[\d\d:\d\d:\d\d\.\d\d\d\] b\n$)"_s);
    QVERIFY2(pattern.match(contents(u"testaus.txt"_s)).hasMatch(), qPrintable(contents(u"testaus.txt"_s)));
}

void tst_s3TestausProxy::flag96StampsPiecesOnce()
{
    s3TestFlagsGUI::instance()->insert(55);
    s3TestFlagsGUI::instance()->insert(96);
    proxy().setCallback(record);
    proxy().write(u"a"_s, false);
    QTest::qSleep(5);
    proxy().write(u"b"_s, false);
    proxy().write(u"c"_s, true);
    const QRegularExpression pattern(uR"(^(\[\d\d:\d\d:\d\d\.\d\d\d\] a)bc\n$)"_s);
    const QRegularExpressionMatch match = pattern.match(contents(u"testaus.txt"_s));
    QVERIFY2(match.hasMatch(), qPrintable(contents(u"testaus.txt"_s)));
    QCOMPARE(written.first().first, match.captured(1));
}

void tst_s3TestausProxy::flag96LeavesPiecesInTheStream()
{
    s3TestFlagsGUI::instance()->insert(55);
    proxy().write(u"a"_s, false);
    QCOMPARE(contents(u"testaus.txt"_s), u"a"_s);
    s3TestFlagsGUI::instance()->insert(96);
    proxy().write(u"b"_s, false);
    QCOMPARE(contents(u"testaus.txt"_s), u"a"_s);
    proxy().write(u"c"_s, true);
    QCOMPARE(contents(u"testaus.txt"_s), u"abc\n"_s);
}

void tst_s3TestausProxy::lineWrittenDuringAFlushIsDropped()
{
    s3TestFlagsGUI::instance()->insert(55);
    proxy().setCallback([](const QString &text, bool endOfLine) {
        record(text, endOfLine);
        proxy().write(u"from within"_s, true);
        proxy().write(u"piece from within"_s, false);
    });
    proxy().write(u"a"_s, true);
    proxy().write(u"b"_s, false);
    proxy().write(u"c"_s, true);
    QCoreApplication::processEvents();
    QCOMPARE(contents(u"testaus.txt"_s), u"a\nbc\n"_s);
    QCOMPARE(writtenTexts(), (QStringList{u"a"_s, u"b"_s, u"c"_s}));
}

void tst_s3TestausProxy::callbackThatWritesWhileAnotherThreadIsInALine()
{
    proxy().setCallback([](const QString &text, bool endOfLine) {
        record(text, endOfLine);
        proxy().write(u"from within"_s, true);
    });
    QSemaphore begun;
    QSemaphore seen;
    std::thread thread([&] {
        proxy().write(u"a"_s, false);
        begun.release();
        seen.acquire();
        proxy().write(u"b"_s, true);
    });
    begun.acquire();
    QCoreApplication::processEvents();
    QCOMPARE(writtenTexts(), QStringList{u"a"_s});
    seen.release();
    thread.join();
    QCoreApplication::processEvents();
    QCOMPARE(writtenTexts(), (QStringList{u"a"_s, u"b"_s}));
}

void tst_s3TestausProxy::traceIsAWholeLine()
{
    s3TestFlagsGUI::instance()->insert(226);
    proxy().setCallback(record);
    S3_TRACE(226, u"s3Dir::setCurrent() result=true"_s);
    const QList<std::pair<QString, bool>> expected{{u"s3Dir::setCurrent() result=true"_s, true}};
    QCOMPARE(written, expected);
}

void tst_s3TestausProxy::lineOfAnotherThreadWaitsForTheEventLoop()
{
    proxy().setCallback(record);
    std::thread([] { proxy().write(u"a"_s, true); }).join();
    QVERIFY(written.isEmpty());
    QCoreApplication::processEvents();
    QCOMPARE(writtenTexts(), QStringList{u"a"_s});
}

void tst_s3TestausProxy::otherEventsDoNotFlush()
{
    s3TestausProxyPrivate queue;
    queue.callback = record;
    queue.queue.append({u"a"_s, true});
    QEvent other(QEvent::User);
    QCoreApplication::sendEvent(&queue, &other);
    QVERIFY(written.isEmpty());
    s3TestausProxyPrivatFlushEvent flush;
    QCoreApplication::sendEvent(&queue, &flush);
    QCOMPARE(writtenTexts(), QStringList{u"a"_s});
}

void tst_s3TestausProxy::flushOnAnotherThreadFailsItsAssertion()
{
    s3TestausProxyPrivate queue;
    QString empty;
    QString waiting;
    std::thread([&] {
        empty = failedAssertion([&] { queue.flush(); });
        queue.queue.append({u"a"_s, true});
        waiting = failedAssertion([&] { queue.flush(); });
    }).join();
    QCOMPARE(empty, QString());
    QVERIFY(isAssertion(waiting, u"currentIsMainThread()"_s, u"libraries/core/src/s3threadbase"_s, 215,
                        u"s3ThreadBase::assertInMainThread"_s));
    QVERIFY(queue.queueMutex.tryLock());
    queue.queueMutex.unlock();
}

QTEST_GUILESS_MAIN(tst_s3TestausProxy)
#include "tst_s3testausproxy.moc"

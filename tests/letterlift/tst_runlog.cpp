#include "runlog.h"
#include "unprivileged.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>
#include <QThread>

using namespace Qt::Literals::StringLiterals;

namespace {

struct Message
{
    QtMsgType type;
    QString text;
};

QList<Message> forwarded;

void collectMessage(QtMsgType type, const QMessageLogContext &, const QString &text)
{
    forwarded.append({type, text});
}

} // namespace

class tst_RunLog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase();
    void emptyFileNameLeavesTheLogOff();
    void messageGoesToFileAndPreviousHandler();
    void secondRunStartsEmpty();
    void logStaysEmptyWithoutMessages();
    void emptyMessageGoesNowhere();
    void textIsUtf8();
    void textStandsLiterally();
    void streamedItemsFormOneMessage();
    void warningsOfOthersAreLogged();
    void categoryStandsInFrontAsQtsDefaultHasIt();
    void messageWithLineBreaks();
    void logListHasOneLineAnElement();
    void logListTakesTextsLiterally();
    void debugRuleAddressesACategory_data();
    void debugRuleAddressesACategory();
    void backslashesInDirectory();
    void readOnlyDirectory();
    void missingDirectory();
    void severalThreads();

private:
    [[nodiscard]] QByteArray logText() const;

    std::unique_ptr<QTemporaryDir> m_directory;
    QtMessageHandler m_testHandler = nullptr;
};

void tst_RunLog::initTestCase()
{
    // The log keeps the handler that it finds at its first opening.
    m_testHandler = qInstallMessageHandler(collectMessage);
    openRunLog(u"."_s, u""_s);
    qDebug("before the log is open");
    QCOMPARE(forwarded.size(), 1);
}

void tst_RunLog::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    openRunLog(m_directory->path(), u"letterlift.log"_s);
    forwarded.clear();
}

void tst_RunLog::cleanupTestCase()
{
    qInstallMessageHandler(m_testHandler);
}

QByteArray tst_RunLog::logText() const
{
    QFile file(m_directory->filePath(u"letterlift.log"_s));
    return file.open(QIODevice::ReadOnly | QIODevice::Text) ? file.readAll() : QByteArray("no file");
}

void tst_RunLog::emptyFileNameLeavesTheLogOff()
{
    openRunLog(m_directory->filePath(u"other"_s), u""_s);
    logStream() << u"still in the first place"_s;
    QCOMPARE(logText(), "still in the first place\n");
}

void tst_RunLog::messageGoesToFileAndPreviousHandler()
{
    logStream() << u"Sending mail"_s;
    QCOMPARE(logText(), "Sending mail\n");
    QCOMPARE(forwarded.size(), 1);
    QCOMPARE(forwarded.first().type, QtDebugMsg);
    QCOMPARE(forwarded.first().text, u"Sending mail"_s);
}

void tst_RunLog::secondRunStartsEmpty()
{
    logStream() << u"first"_s;
    openRunLog(m_directory->path(), u"letterlift.log"_s);
    QCOMPARE(logText(), "");
    logStream() << u"second"_s;
    QCOMPARE(logText(), "second\n");
    // The handler isn't its own previous handler.
    QCOMPARE(forwarded.size(), 2);
}

void tst_RunLog::logStaysEmptyWithoutMessages()
{
    QVERIFY(!QFile::exists(m_directory->filePath(u"letterlift.log"_s)));
}

void tst_RunLog::emptyMessageGoesNowhere()
{
    logStream() << u""_s;
    qWarning("%s", "");
    QVERIFY(!QFile::exists(m_directory->filePath(u"letterlift.log"_s)));
    QCOMPARE(forwarded.size(), 0);
}

void tst_RunLog::textIsUtf8()
{
    logStream() << u"Größe Ωμέγα 😀"_s;
    QCOMPARE(logText(), u"Größe Ωμέγα 😀\n"_s.toUtf8());
}

void tst_RunLog::textStandsLiterally()
{
    logStream() << u"\"quoted\" \\back\\ %1 \t end "_s;
    QCOMPARE(logText(), "\"quoted\" \\back\\ %1 \t end \n");
}

void tst_RunLog::streamedItemsFormOneMessage()
{
    logStream() << u"one"_s << 2;
    QCOMPARE(logText(), "one 2\n");
}

void tst_RunLog::warningsOfOthersAreLogged()
{
    qWarning("QAxBase: something");
    QCOMPARE(logText(), "QAxBase: something\n");
    QCOMPARE(forwarded.value(0).type, QtWarningMsg);
}

void tst_RunLog::categoryStandsInFrontAsQtsDefaultHasIt()
{
    const QLoggingCategory category("some.category");
    qCWarning(category, "text");
    QCOMPARE(logText(), "some.category: text\n");
    QCOMPARE(forwarded.value(0).text, u"text"_s);
}

void tst_RunLog::messageWithLineBreaks()
{
    qWarning("one\ntwo\n");
    QCOMPARE(logText(), "one\ntwo\n\n");
}

void tst_RunLog::logListHasOneLineAnElement()
{
    logList({u"a@example.com"_s, u"b@example.com"_s}, u"Adding Recipient"_s);
    QCOMPARE(logText(), "Adding Recipient [a@example.com]\nAdding Recipient [b@example.com]\n");
    logList({}, u"Adding Copy Recipient"_s);
    QCOMPARE(forwarded.size(), 2);
}

void tst_RunLog::logListTakesTextsLiterally()
{
    logList({u"%1 %2"_s}, u"Attaching %2"_s);
    QCOMPARE(logText(), "Attaching %2 [%1 %2]\n");
}

void tst_RunLog::debugRuleAddressesACategory_data()
{
    QTest::addColumn<bool>("on");
    QTest::newRow("on") << true;
    QTest::newRow("off") << false;
}

void tst_RunLog::debugRuleAddressesACategory()
{
    QFETCH(const bool, on);
    const QLoggingCategory addressed("debug", QtFatalMsg);
    const QLoggingCategory longer("debugx", QtFatalMsg);
    const QLoggingCategory other("xdebug", QtFatalMsg);
    setDebugLogging(on);
    QCOMPARE(addressed.isDebugEnabled(), on);
    QCOMPARE(addressed.isWarningEnabled(), on);
    QVERIFY(!longer.isDebugEnabled());
    QVERIFY(!other.isDebugEnabled());
    logStream() << u"the same line"_s;
    QCOMPARE(logText(), "the same line\n");
}

void tst_RunLog::backslashesInDirectory()
{
    openRunLog(m_directory->path().replace(u'/', u'\\'), u"letterlift.log"_s);
    logStream() << u"here"_s;
    QCOMPARE(logText(), "here\n");
}

void tst_RunLog::readOnlyDirectory()
{
    if (!Unprivileged::isPossible())
        QSKIP("File permissions can't be taken from this process here");
    const auto readOnly = QFile::ReadOther | QFile::ExeOther | QFile::ReadOwner | QFile::ExeOwner;
    QVERIFY(QFile::setPermissions(m_directory->path(), readOnly));
    {
        const Unprivileged user;
        openRunLog(m_directory->path(), u"letterlift.log"_s);
        logStream() << u"lost"_s;
    }
    QVERIFY(!QFile::exists(m_directory->filePath(u"letterlift.log"_s)));
    QCOMPARE(forwarded.size(), 1);
    QFile::setPermissions(m_directory->path(), readOnly | QFile::WriteOwner);
}

void tst_RunLog::missingDirectory()
{
    openRunLog(m_directory->filePath(u"no such"_s), u"letterlift.log"_s);
    logStream() << u"lost"_s;
    QCOMPARE(forwarded.size(), 1);
}

void tst_RunLog::severalThreads()
{
    constexpr int threadCount = 4;
    constexpr int lineCount = 100;
    std::vector<std::unique_ptr<QThread>> threads;
    for (int t = 0; t < threadCount; ++t) {
        threads.emplace_back(QThread::create([t] {
            for (int i = 0; i < lineCount; ++i)
                logStream() << u"thread %1 line %2"_s.arg(t).arg(i);
        }));
        threads.back()->start();
    }
    for (const auto &thread : threads)
        QVERIFY(thread->wait());

    const QList<QByteArray> lines = logText().split('\n');
    QCOMPARE(lines.size(), threadCount * lineCount + 1);
    QCOMPARE(forwarded.size(), threadCount * lineCount);
    QList<int> next(threadCount, 0);
    for (const QByteArray &line : lines.first(lines.size() - 1)) {
        const QList<QByteArray> words = line.split(' ');
        QCOMPARE(words.size(), 4);
        QCOMPARE(words.at(3).toInt(), next[words.at(1).toInt()]++);
    }
}

QTEST_GUILESS_MAIN(tst_RunLog)
#include "tst_runlog.moc"

// What the simulated backend does beyond the contract of all: it takes members in one form only, and says what is wrong
// with the mailbox that it is given.

#include "automation/automation.h"
#include "automation/automationobject.h"
#include "testfile.h"

#include <QFile>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_SimulatedBackend : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void otherFormOfAMemberIsUnknown();
    void failedWriteIsTold();
    void defaultStore();
    void refusedScenario_data();
    void refusedScenario();
    void missingScenario();
    void unwritableStore();

private:
    void useScenario(const QByteArray &json);
    [[nodiscard]] std::unique_ptr<AutomationObject> application();

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_SimulatedBackend::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    qputenv("LETTERLIFT_OUTLOOK_STORE", QFile::encodeName(m_directory->filePath(u"store"_s)));
    qunsetenv("LETTERLIFT_OUTLOOK_SCENARIO");
}

void tst_SimulatedBackend::useScenario(const QByteArray &json)
{
    const QString path = writeTestFile(m_directory->filePath(u"scenario.json"_s), json);
    qputenv("LETTERLIFT_OUTLOOK_SCENARIO", QFile::encodeName(path));
}

std::unique_ptr<AutomationObject> tst_SimulatedBackend::application()
{
    return std::unique_ptr<AutomationObject>(createAutomationObject(u"Outlook.Application"_s, nullptr));
}

void tst_SimulatedBackend::otherFormOfAMemberIsUnknown()
{
    const auto object = application();
    for (const char *const form : {"Session()", "session", "CreateItem", "CreateItem(int)"}) {
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^QAxBase: Error calling IDispatch member "_s));
        QCOMPARE(object->querySubObject(form), nullptr);
    }
}

void tst_SimulatedBackend::failedWriteIsTold()
{
    useScenario(R"({"failures": [{"object": "MailItem", "member": "Subject"}]})");
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Subject: The server raised"_s));
    QVERIFY(!mail->setProperty("Subject", u"s"_s));
}

void tst_SimulatedBackend::defaultStore()
{
    qunsetenv("LETTERLIFT_OUTLOOK_STORE");
    QStandardPaths::setTestModeEnabled(true);
    const QString journal =
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u"/outlook/journal.jsonl"_s;
    QFile::remove(journal);
    QVERIFY(!application()->isNull());
    QVERIFY(QFile::exists(journal));
    QStandardPaths::setTestModeEnabled(false);
}

void tst_SimulatedBackend::refusedScenario_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("place");

    QTest::newRow("broken") << QByteArray("{\n  \"version\": \n}") << u"line 3, column 1: "_s;
    QTest::newRow("unknown key") << QByteArray(R"({"failures": [{"object": "Session", "membr": "Logon"}]})")
                                 << u"failures[0]: unknown key \"membr\""_s;
}

void tst_SimulatedBackend::refusedScenario()
{
    QFETCH(const QByteArray, json);
    QFETCH(const QString, place);
    useScenario(json);
    const QString expected =
        u"Simulated Outlook: The scenario %1 is refused: %2"_s.arg(m_directory->filePath(u"scenario.json"_s), place);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^"_s + QRegularExpression::escape(expected)));
    QString errorMessage;
    QVERIFY(!prepareAutomation(errorMessage));
    QVERIFY2(errorMessage.startsWith(expected), qPrintable(errorMessage));

    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^"_s + QRegularExpression::escape(expected)));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"could not be instantiated$"_s));
    QVERIFY(application()->isNull());
}

void tst_SimulatedBackend::missingScenario()
{
    const QString path = m_directory->filePath(u"missing.json"_s);
    qputenv("LETTERLIFT_OUTLOOK_SCENARIO", QFile::encodeName(path));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Simulated Outlook: The scenario "_s));
    QString errorMessage;
    QVERIFY(!prepareAutomation(errorMessage));
    QVERIFY2(errorMessage.contains(path), qPrintable(errorMessage));
}

void tst_SimulatedBackend::unwritableStore()
{
    QFile file(m_directory->filePath(u"file"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    qputenv("LETTERLIFT_OUTLOOK_STORE", QFile::encodeName(file.fileName() + u"/store"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^Simulated Outlook: The folder "_s));
    QString errorMessage;
    QVERIFY(!prepareAutomation(errorMessage));
    QVERIFY2(errorMessage.contains(file.fileName()), qPrintable(errorMessage));
}

QTEST_GUILESS_MAIN(tst_SimulatedBackend)
#include "tst_simulatedbackend.moc"

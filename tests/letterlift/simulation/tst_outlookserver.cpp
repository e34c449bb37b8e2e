#include "simulation/outlookserver.h"
#include "testmailbox.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_OutlookServer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void journalLines_data();
    void journalLines();
    void createIsRecorded();
    void failedCreateIsRecorded();
    void plannedFailureHidesTheOperation();
    void plannedFailureOfOneCall();
    void callsAreCountedOverAllObjectsOfAKind();
    void otherMembersAreNotTouched();
    void failureIsRecorded();
    void busyServerRejectsAndRecordsNothing();
    void deadServerRecordsNothing();
    void otherValueIsGivenAndRecorded();
    void silentServerDoesWhatItIsAsked();
    void failureOfTheModelIsRecorded();
};

void tst_OutlookServer::journalLines_data()
{
    QTest::addColumn<JournalEntry>("entry");
    QTest::addColumn<QByteArray>("line");

    const ObjectReference mail{ObjectKind::MailItem, 1};
    const QVariant account = QVariant::fromValue(ObjectReference{ObjectKind::Account, 2});
    QTest::newRow("get") << JournalEntry{mail, Operation::Get, u"Subject"_s, {}, u"a\"b\n"_s, {}}
                         << QByteArray(
                                R"x({"object":"MailItem#1","operation":"get","member":"Subject","arguments":[],)x"
                                R"x("result":"a\"b\n"})x");
    QTest::newRow("set an object") << JournalEntry{mail, Operation::Set, u"SendUsingAccount"_s, {account}, {}, {}}
                                   << QByteArray(
                                          R"x({"object":"MailItem#1","operation":"set","member":"SendUsingAccount",)x"
                                          R"x("arguments":[{"object":"Account#2"}],"result":null})x");
    QTest::newRow("query") << JournalEntry{mail, Operation::Query, u"Item(QVariant)"_s, {1, true}, account, {}}
                           << QByteArray(R"x({"object":"MailItem#1","operation":"query","member":"Item(QVariant)",)x"
                                         R"x("arguments":[1,true],"result":{"object":"Account#2"}})x");
    QTest::newRow("release") << JournalEntry{mail, Operation::Release, {}, {}, {}, {}}
                             << QByteArray(R"x({"object":"MailItem#1","operation":"release"})x");
    QTest::newRow("exception")
        << JournalEntry{mail, Operation::Call, u"Send()"_s, {}, {}, failureOf(FailureKind::Exception, -7)}
        << QByteArray(R"x({"object":"MailItem#1","operation":"call","member":"Send()","arguments":[],"result":null,)x"
                      R"x("failure":{"code":-7,"kind":"exception"}})x");
    QTest::newRow("missing")
        << JournalEntry{mail, Operation::Call, u"Send()"_s, {}, {}, failureOf(FailureKind::Missing)}
        << QByteArray(R"x({"object":"MailItem#1","operation":"call","member":"Send()","arguments":[],"result":null,)x"
                      R"x("failure":{"kind":"missing"}})x");
}

void tst_OutlookServer::journalLines()
{
    QFETCH(const JournalEntry, entry);
    const QByteArray line = journalLine(entry);
    QTEST(line, "line");
    QVERIFY(QJsonDocument::fromJson(line).isObject());
}

void tst_OutlookServer::createIsRecorded()
{
    MemoryEnvironment environment;
    OutlookServer server(Scenario(), environment);
    QVERIFY(server.create(u"Outlook.Application"_s).has_value());
    QCOMPARE(journalLine(environment.journal.first()),
             QByteArray(R"x({"object":"Application#1","operation":"create","member":"Outlook.Application",)x"
                        R"x("arguments":[],"result":{"object":"Application#1"}})x"));
}

void tst_OutlookServer::failedCreateIsRecorded()
{
    Scenario scenario;
    scenario.available = false;
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    QVERIFY(!server.create(u"Outlook.Application"_s).has_value());
    QCOMPARE(environment.journal.first().failure->kind, FailureKind::Null);
    QVERIFY(!environment.journal.first().result.isValid());
}

void tst_OutlookServer::plannedFailureHidesTheOperation()
{
    Scenario scenario;
    scenario.failures = {{ObjectKind::Application, u"CreateItem(OlItemType)"_s, {}, {}}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    const ModelResult result =
        server.perform(Operation::Query, application, u"CreateItem(OlItemType)"_s, {u"olMailItem"_s});
    QCOMPARE(result.failure->kind, FailureKind::Exception);
    QVERIFY(!result.value.isValid());
}

void tst_OutlookServer::plannedFailureOfOneCall()
{
    Scenario scenario;
    scenario.failures = {{ObjectKind::Application, u"Version"_s, 2, failureOf(FailureKind::Missing)}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    QList<bool> failed;
    for (int call = 0; call < 3; ++call)
        failed.append(server.perform(Operation::Get, application, u"Version"_s, {}).failure.has_value());
    QCOMPARE(failed, QList<bool>({false, true, false}));
}

void tst_OutlookServer::callsAreCountedOverAllObjectsOfAKind()
{
    Scenario scenario;
    scenario.failures = {{ObjectKind::MailItem, u"Subject"_s, 2, {}}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    QList<bool> failed;
    for (int item = 0; item < 2; ++item) {
        const ModelResult mail =
            server.perform(Operation::Query, application, u"CreateItem(OlItemType)"_s, {u"olMailItem"_s});
        failed.append(server.perform(Operation::Set, mail.value.value<ObjectReference>(), u"Subject"_s, {u"s"_s})
                          .failure.has_value());
    }
    QCOMPARE(failed, QList<bool>({false, true}));
}

void tst_OutlookServer::otherMembersAreNotTouched()
{
    Scenario scenario;
    scenario.failures = {{ObjectKind::Session, u"Version"_s, {}, {}}, {ObjectKind::Application, u"version"_s, {}, {}}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    QCOMPARE(server.perform(Operation::Get, application, u"Version"_s, {}).value, QVariant(scenario.version));
}

void tst_OutlookServer::failureIsRecorded()
{
    Scenario scenario;
    scenario.failures = {{ObjectKind::Application, u"Version"_s, {}, failureOf(FailureKind::Null)}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    QVERIFY(server.perform(Operation::Get, application, u"Version"_s, {}).failure.has_value());
    QCOMPARE(journalLine(environment.journal.last()),
             QByteArray(R"x({"object":"Application#1","operation":"get","member":"Version","arguments":[],)x"
                        R"x("result":null,"failure":{"kind":"null"}})x"));
}

void tst_OutlookServer::busyServerRejectsAndRecordsNothing()
{
    Scenario scenario;
    Failure busy = failureOf(FailureKind::Busy);
    busy.milliseconds = 60'000;
    scenario.failures = {{ObjectKind::Application, u"Session"_s, 1, busy}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    const ModelResult session = server.perform(Operation::Query, application, u"Session"_s, {});
    QVERIFY(!session.failure.has_value());
    QVERIFY(session.value.isValid());
    QVERIFY(server.isBusy());
    const qsizetype lines = environment.journal.size();
    QCOMPARE(server.perform(Operation::Get, application, u"Version"_s, {}).failure->kind, FailureKind::Rejected);
    QCOMPARE(environment.journal.size(), lines);
    server.release(session.value.value<ObjectReference>());
    QCOMPARE(environment.journal.size(), lines + 1);
}

void tst_OutlookServer::deadServerRecordsNothing()
{
    Scenario scenario;
    scenario.failures = {{ObjectKind::Application, u"Version"_s, 1, failureOf(FailureKind::Death)}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    QCOMPARE(server.perform(Operation::Get, application, u"Version"_s, {}).failure->kind, FailureKind::Death);
    QCOMPARE(environment.journal.last().failure->kind, FailureKind::Death);
    const qsizetype lines = environment.journal.size();
    QCOMPARE(server.perform(Operation::Get, application, u"Version"_s, {}).failure->kind, FailureKind::Gone);
    server.release(application);
    QCOMPARE(environment.journal.size(), lines);
}

void tst_OutlookServer::otherValueIsGivenAndRecorded()
{
    Scenario scenario;
    Failure value = failureOf(FailureKind::Value);
    value.value = 7;
    scenario.failures = {{ObjectKind::Application, u"Version"_s, 1, value}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    QCOMPARE(server.perform(Operation::Get, application, u"Version"_s, {}).value, QVariant(7));
    QCOMPARE(journalLine(environment.journal.last()),
             QByteArray(R"x({"object":"Application#1","operation":"get","member":"Version","arguments":[],)x"
                        R"x("result":7,"failure":{"kind":"value"}})x"));
}

void tst_OutlookServer::silentServerDoesWhatItIsAsked()
{
    Scenario scenario;
    Failure silence = failureOf(FailureKind::Silence);
    silence.milliseconds = 5;
    scenario.failures = {{ObjectKind::Application, u"Version"_s, 1, silence}};
    MemoryEnvironment environment;
    OutlookServer server(scenario, environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    const ModelResult result = server.perform(Operation::Get, application, u"Version"_s, {});
    QCOMPARE(result.value, QVariant(scenario.version));
    QCOMPARE(result.failure->milliseconds, 5);
}

void tst_OutlookServer::failureOfTheModelIsRecorded()
{
    MemoryEnvironment environment;
    OutlookServer server(Scenario(), environment);
    const ObjectReference application = *server.create(u"Outlook.Application"_s);
    const ModelResult result = server.perform(Operation::Call, application, u"NoSuchMember()"_s, {1});
    QCOMPARE(result.failure->kind, FailureKind::Missing);
    QCOMPARE(environment.journal.last().member, u"NoSuchMember()"_s);
    QCOMPARE(environment.journal.last().arguments, QVariantList{1});
    QCOMPARE(environment.journal.last().failure->kind, FailureKind::Missing);
}

QTEST_GUILESS_MAIN(tst_OutlookServer)
#include "tst_outlookserver.moc"

#include "simulation/scenario.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_Scenario : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void everyKeyIsOptional();
    void everyKeyIsRead();
    void failureDefaults();
    void refused_data();
    void refused();
    void manyEntries();
    void builtInMailbox();
    void sameKeyInSeveralObjects();
    void kindNames();
};

void tst_Scenario::everyKeyIsOptional()
{
    QString errorText;
    const std::optional<Scenario> scenario = readScenario("{}", errorText);
    QVERIFY2(scenario.has_value(), qPrintable(errorText));
    QVERIFY(scenario->available);
    QVERIFY(scenario->version.startsWith(u"16.0."_s));
    QVERIFY(scenario->accounts.isEmpty());
    QVERIFY(scenario->globalAddressList.isEmpty());
    QVERIFY(scenario->addresses.isEmpty());
    QVERIFY(scenario->failures.isEmpty());
    QCOMPARE(scenario->plainSignature, u""_s);
    QCOMPARE(scenario->htmlSignature, u""_s);
}

void tst_Scenario::everyKeyIsRead()
{
    const QByteArray json = R"x({
        "available": false,
        "version": "15.0.1.2",
        "accounts": [{"DisplayName": "A", "SmtpAddress": "a@example.com"}, {}],
        "globalAddressList": [{"Alias": "b", "PrimarySmtpAddress": "b@example.com"}, {"exchangeUser": false}],
        "addresses": {"Kim": {"resolves": false, "Type": "EX", "PrimarySmtpAddress": "k@example.com"}, "Bo": {}},
        "signature": {"plain": "p", "html": "h"},
        "failures": [{"object": "MailItem", "member": "Send()", "kind": "exception", "code": -5, "source": "s",
                      "description": "d", "help": "h", "call": 2}]
})x";
    QString errorText;
    const std::optional<Scenario> scenario = readScenario(json, errorText);
    QVERIFY2(scenario.has_value(), qPrintable(errorText));
    QVERIFY(!scenario->available);
    QCOMPARE(scenario->version, u"15.0.1.2"_s);
    QCOMPARE(scenario->accounts.size(), 2);
    QCOMPARE(scenario->accounts.first().displayName, u"A"_s);
    QCOMPARE(scenario->accounts.first().smtpAddress, u"a@example.com"_s);
    QCOMPARE(scenario->globalAddressList.size(), 2);
    QVERIFY(scenario->globalAddressList.first().exchangeUser);
    QCOMPARE(scenario->globalAddressList.first().alias, u"b"_s);
    QCOMPARE(scenario->globalAddressList.first().primarySmtpAddress, u"b@example.com"_s);
    QVERIFY(!scenario->globalAddressList.last().exchangeUser);
    QVERIFY(!scenario->addresses.value(u"Kim"_s).resolves);
    QCOMPARE(scenario->addresses.value(u"Kim"_s).type, u"EX"_s);
    QCOMPARE(scenario->addresses.value(u"Kim"_s).primarySmtpAddress, u"k@example.com"_s);
    QVERIFY(scenario->addresses.value(u"Bo"_s).resolves);
    QCOMPARE(scenario->addresses.value(u"Bo"_s).type, u"SMTP"_s);
    QCOMPARE(scenario->plainSignature, u"p"_s);
    QCOMPARE(scenario->htmlSignature, u"h"_s);

    const PlannedFailure &planned = scenario->failures.first();
    QCOMPARE(planned.object, ObjectKind::MailItem);
    QCOMPARE(planned.member, u"Send()"_s);
    QCOMPARE(planned.call, 2);
    QCOMPARE(planned.failure.kind, FailureKind::Exception);
    QCOMPARE(planned.failure.code, -5);
    QCOMPARE(planned.failure.source, u"s"_s);
    QCOMPARE(planned.failure.description, u"d"_s);
    QCOMPARE(planned.failure.help, u"h"_s);
}

void tst_Scenario::failureDefaults()
{
    QString errorText;
    const auto scenario = readScenario(R"x({"failures": [{"object": "Session", "member": "Logon()"}]})x", errorText);
    QVERIFY2(scenario.has_value(), qPrintable(errorText));
    const PlannedFailure &planned = scenario->failures.first();
    QCOMPARE(planned.failure.kind, FailureKind::Exception);
    QCOMPARE(planned.failure.code, 4096);
    QVERIFY(!planned.call.has_value());
}

void tst_Scenario::refused_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<QString>("errorText");

    const auto add = [](const char *name, const char *json, const QString &errorText) {
        QTest::newRow(name) << QByteArray(json) << errorText;
    };
    add("empty", "", u"line 1, column 1: illegal value"_s);
    add("broken", "{\n \"version\": \"1\",\n}", u"line 3, column 1: object is missing after a comma"_s);
    add("a list", "[]", u"top level: an object is expected"_s);
    add("unknown key", R"({"versoin": "1"})", uR"(top level: unknown key "versoin")"_s);
    add("key in another case", R"({"Version": "1"})", uR"(top level: unknown key "Version")"_s);
    add("unknown key of an account", R"({"accounts": [{}, {"smtpAddress": "x"}]})",
        uR"(accounts[1]: unknown key "smtpAddress")"_s);
    add("unknown key of a list entry", R"({"globalAddressList": [{"alias": "x"}]})",
        uR"(globalAddressList[0]: unknown key "alias")"_s);
    add("unknown key of an address", R"({"addresses": {"Kim": {"type": "EX"}}})",
        uR"(addresses["Kim"]: unknown key "type")"_s);
    add("unknown key of the signature", R"({"signature": {"rtf": ""}})", uR"(signature: unknown key "rtf")"_s);
    add("unknown key of a failure", R"({"failures": [{"object": "Session", "member": "Accounts", "codes": 1}]})",
        uR"(failures[0]: unknown key "codes")"_s);
    add("no bool", R"({"available": 1})", u"available: true or false is expected"_s);
    add("no text", R"({"version": 16})", u"version: a text is expected"_s);
    add("no list", R"({"accounts": {}})", u"accounts: a list is expected"_s);
    add("no object in the list", R"({"accounts": ["a"]})", u"accounts[0]: an object is expected"_s);
    add("addresses as list", R"({"addresses": []})", u"addresses: an object is expected"_s);
    add("no object kind", R"({"failures": [{"object": "Mail", "member": "Accounts"}]})",
        uR"(failures[0].object: the kind of object "Mail" doesn't exist)"_s);
    add("failure without object", R"({"failures": [{"member": "Accounts"}]})",
        uR"(failures[0].object: the kind of object "" doesn't exist)"_s);
    add("failure without member", R"({"failures": [{"object": "Session"}]})",
        uR"(failures[0].member: Session has no member "")"_s);
    add("misspelt member", R"({"failures": [{"object": "MailItem", "member": "Subjekt"}]})",
        uR"(failures[0].member: MailItem has no member "Subjekt")"_s);
    add("member without its signature", R"({"failures": [{"object": "MailItem", "member": "Send"}]})",
        uR"(failures[0].member: MailItem has no member "Send")"_s);
    add("member of another kind", R"({"failures": [{"object": "Session", "member": "Subject"}]})",
        uR"(failures[0].member: Session has no member "Subject")"_s);
    add("unknown kind of failure", R"({"failures": [{"object": "Session", "member": "Accounts", "kind": "mood"}]})",
        uR"(failures[0].kind: the kind of failure "mood" doesn't exist)"_s);
    add("code with fraction", R"({"failures": [{"object": "Session", "member": "Accounts", "code": 1.5}]})",
        u"failures[0].code: a whole number of 32 bits is expected"_s);
    add("code over 32 bits", R"({"failures": [{"object": "Session", "member": "Accounts", "code": 4294967296}]})",
        u"failures[0].code: a whole number of 32 bits is expected"_s);
    add("code as text", R"({"failures": [{"object": "Session", "member": "Accounts", "code": "4096"}]})",
        u"failures[0].code: a whole number of 32 bits is expected"_s);
    add("call 0", R"({"failures": [{"object": "Session", "member": "Accounts", "call": 0}]})",
        u"failures[0].call: calls are counted from 1"_s);
    add("key twice", "{\"version\": \"1\",\n \"accounts\": [], \"version\": \"2\"}",
        uR"(line 2, column 18: duplicate key "version")"_s);
    add("key twice further down", R"({"accounts": [{"DisplayName": "a\"{", "DisplayName": "b"}]})",
        uR"(line 1, column 39: duplicate key "DisplayName")"_s);
}

void tst_Scenario::refused()
{
    QFETCH(const QByteArray, json);
    QString errorText;
    QVERIFY(!readScenario(json, errorText).has_value());
    QTEST(errorText, "errorText");
}

void tst_Scenario::manyEntries()
{
    QByteArray json = R"({"globalAddressList": [{})";
    for (int i = 1; i < 100'000; ++i)
        json += R"(,{"Alias": "a", "PrimarySmtpAddress": "a@example.com"})";
    QString errorText;
    const std::optional<Scenario> scenario = readScenario(json + "]}", errorText);
    QVERIFY2(scenario.has_value(), qPrintable(errorText));
    QCOMPARE(scenario->globalAddressList.size(), 100'000);
}

void tst_Scenario::builtInMailbox()
{
    const Scenario scenario = builtInScenario();
    QVERIFY(scenario.available);
    QVERIFY(!scenario.accounts.isEmpty());
    QVERIFY(!scenario.globalAddressList.isEmpty());
    QVERIFY(!scenario.plainSignature.isEmpty());
    QVERIFY(!scenario.htmlSignature.isEmpty());
    QVERIFY(scenario.failures.isEmpty());
}

void tst_Scenario::sameKeyInSeveralObjects()
{
    QString errorText;
    QVERIFY2(readScenario(R"({"accounts": [{"DisplayName": "version"}, {"DisplayName": "accounts"}], "version": "1"})",
                          errorText)
                 .has_value(),
             qPrintable(errorText));
}

void tst_Scenario::kindNames()
{
    for (int i = 0; i < objectKindCount; ++i)
        QCOMPARE(objectKindFromName(objectKindName(ObjectKind(i))), ObjectKind(i));
    QStringList names;
    for (int i = 0; i < objectKindCount; ++i)
        names.append(objectKindName(ObjectKind(i)));
    QCOMPARE(names.join(u' '),
             u"Application Session Accounts Account Recipient AddressList AddressEntries AddressEntry "
             "ExchangeUser MailItem Recipients ReplyRecipients Attachments Element Inspector Document "
             "WordApplication Selection"_s);
    QVERIFY(!objectKindFromName(u"mailitem"_s).has_value());
}

QTEST_GUILESS_MAIN(tst_Scenario)
#include "tst_scenario.moc"

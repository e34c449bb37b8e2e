#include "automation/automationobject.h"
#include "outlook.h"
#include "testmailbox.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_OutlookRecipients : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void collections_data();
    void collections();
    void emptyListDoesNotFetchTheCollection();
    void collectionThatFailsIsPassedOver();
    void elementThatFailsIsPassedOver();
    void typeThatFailsIsPassedOver();
    void missingAttachmentIsWarnedOf();
    void resolve_data();
    void resolve();
    void resolveWithoutSession();
    void failedLookupKeepsTheAddress_data();
    void failedLookupKeepsTheAddress();
    void exchangeAddressOfAnotherTypeEmptiesTheResult();
    void aliasWalk_data();
    void aliasWalk();
    void aliasWalkWithoutExchangeUsers();
    void aliasWalkStopsAtTheFirstMatch();
    void aliasWalkSwitchesTheMetaObjectOffFirst();
    void aliasWalkLogsItsTime_data();
    void aliasWalkLogsItsTime();
    void aliasWalkPassesOverFailingEntries();
    void aliasWalkKeepsItsWrappers();
    void noOriginator();
    void originator_data();
    void originator();
    void originatorIsLogged();
    void firstMatchingAccountWins();
    void failingAccountIsPassedOver();
    void accountsThatFailArePassedOver();

private:
    [[nodiscard]] Outlook &outlook();

    std::unique_ptr<TestMailbox> m_mailbox;
    std::unique_ptr<Outlook> m_outlook;
};

void tst_OutlookRecipients::init()
{
    m_mailbox = std::make_unique<TestMailbox>();
}

void tst_OutlookRecipients::cleanup()
{
    m_outlook.reset();
    QCOMPARE(AutomationObject::liveCount(), 0);
}

/// Started with the scenario as it stands at the first call.
Outlook &tst_OutlookRecipients::outlook()
{
    if (m_outlook == nullptr) {
        m_outlook = std::make_unique<Outlook>(nullptr, m_mailbox->factory());
        m_mailbox->environment.journal.clear();
    }
    return *m_outlook;
}

void tst_OutlookRecipients::collections_data()
{
    using Adder = void (Outlook::*)(const QStringList &);
    QTest::addColumn<Adder>("add");
    QTest::addColumn<QStringList>("operations");

    const auto recipients = [](int type) {
        return QStringList{
            u"MailItem#1 query Recipients"_s, uR"(Recipients#1 query Add(const QVariant&) ["b@example.com"])"_s,
            u"Element#1 set Type [%1]"_s.arg(type), uR"(Recipients#1 query Add(const QVariant&) ["a@example.com"])"_s,
            u"Element#2 set Type [%1]"_s.arg(type)};
    };
    QTest::newRow("To") << Adder(&Outlook::addRecipients) << recipients(1);
    QTest::newRow("Cc") << Adder(&Outlook::addCopyRecipients) << recipients(2);
    QTest::newRow("Bcc") << Adder(&Outlook::addBlindCopyRecipients) << recipients(3);
    QTest::newRow("reply recipients have no type")
        << Adder(&Outlook::addReplyRecipients)
        << QStringList{u"MailItem#1 query ReplyRecipients"_s,
                       uR"(ReplyRecipients#1 query Add(const QVariant&) ["b@example.com"])"_s,
                       uR"(ReplyRecipients#1 query Add(const QVariant&) ["a@example.com"])"_s};
    QTest::newRow("attachments have no type")
        << Adder(&Outlook::addAttachments)
        << QStringList{u"MailItem#1 query Attachments"_s,
                       uR"(Attachments#1 query Add(const QVariant&) ["b@example.com"])"_s,
                       uR"(Attachments#1 query Add(const QVariant&) ["a@example.com"])"_s};
}

void tst_OutlookRecipients::collections()
{
    using Adder = void (Outlook::*)(const QStringList &);
    QFETCH(const Adder, add);
    m_mailbox->environment.files = {{u"a@example.com"_s, "x"}, {u"b@example.com"_s, "x"}};
    (outlook().*add)({u"b@example.com"_s, u"a@example.com"_s});
    QTEST(m_mailbox->operations(), "operations");
}

void tst_OutlookRecipients::emptyListDoesNotFetchTheCollection()
{
    outlook().addRecipients({});
    outlook().addReplyRecipients({});
    outlook().addAttachments({});
    QCOMPARE(m_mailbox->operations(), QStringList());
}

void tst_OutlookRecipients::collectionThatFailsIsPassedOver()
{
    m_mailbox->addFailure(ObjectKind::MailItem, u"Recipients"_s, FailureKind::Missing);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Recipients"_s));
    outlook().addRecipients({u"a"_s});
    QCOMPARE(m_mailbox->operations(), QStringList{u"MailItem#1 query Recipients"_s});
}

void tst_OutlookRecipients::elementThatFailsIsPassedOver()
{
    m_mailbox->scenario.failures.append({ObjectKind::Recipients, u"Add(const QVariant&)"_s, 1, {}});
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Add\\(const QVariant&\\)"_s));
    outlook().addRecipients({u"a"_s, u"b"_s});
    QCOMPARE(m_mailbox->operationsOf(u"Element"_s), QStringList{u"Element#1 set Type [1]"_s});
}

void tst_OutlookRecipients::typeThatFailsIsPassedOver()
{
    m_mailbox->addFailure(ObjectKind::Element, u"Type"_s, FailureKind::Exception);
    const QRegularExpression warning(u"IDispatch member Type"_s);
    QTest::ignoreMessage(QtWarningMsg, warning);
    QTest::ignoreMessage(QtWarningMsg, warning);
    outlook().addCopyRecipients({u"a"_s, u"b"_s});
    outlook().display();
    QCOMPARE(m_mailbox->environment.drafts.value(1).to.size(), 2);
}

void tst_OutlookRecipients::missingAttachmentIsWarnedOf()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Add\\(const QVariant&\\)"_s));
    outlook().addAttachments({u"/missing.pdf"_s});
    QCOMPARE(m_mailbox->operations().size(), 2);
}

void tst_OutlookRecipients::resolve_data()
{
    QTest::addColumn<bool>("resolves");
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("result");
    QTest::addColumn<bool>("walked");

    QTest::newRow("not resolved") << false << u"SMTP"_s << u"kim@example.com"_s << false;
    QTest::newRow("EX") << true << u"EX"_s << u"primary@example.com"_s << false;
    QTest::newRow("SMTP, alias found") << true << u"SMTP"_s << u"kim.sample@example.com"_s << true;
    QTest::newRow("another type") << true << u"MAPIPDL"_s << u"kim@example.com"_s << false;
    QTest::newRow("type in another case") << true << u"smtp"_s << u"kim@example.com"_s << false;
}

void tst_OutlookRecipients::resolve()
{
    QFETCH(const bool, resolves);
    QFETCH(const QString, type);
    QFETCH(const bool, walked);
    m_mailbox->scenario.addresses.insert(u"kim@example.com"_s, {resolves, type, u"primary@example.com"_s});
    m_mailbox->scenario.globalAddressList = {{true, u"kim"_s, u"kim.sample@example.com"_s}};
    QTEST(outlook().resolveSmtpAddress(u"kim@example.com"_s), "result");
    QCOMPARE(m_mailbox->operations().contains(u"Session#1 query GetGlobalAddressList()"_s), walked);
    QVERIFY(m_mailbox->releases().contains(u"Recipient#1"_s));
    QVERIFY(!m_mailbox->releases().contains(u"Session#1"_s));
}

void tst_OutlookRecipients::resolveWithoutSession()
{
    m_mailbox->scenario.available = false;
    QCOMPARE(outlook().resolveSmtpAddress(u"kim@example.com"_s), u"kim@example.com"_s);
    QTest::ignoreMessage(
        QtDebugMsg, QRegularExpression(u"^getPrimarySmtpAddressForAliasAddress\\(a@b\\) = , elapsed = [0-9]+ ms$"_s));
    QCOMPARE(outlook().getPrimarySmtpAddressForAliasAddress(u"a@b"_s), u""_s);
    QCOMPARE(outlook().findAccount(u"a@b"_s), nullptr);
}

void tst_OutlookRecipients::failedLookupKeepsTheAddress_data()
{
    QTest::addColumn<ObjectKind>("object");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QString>("type");

    QTest::newRow("recipient") << ObjectKind::Session << u"CreateRecipient(QString)"_s << u"EX"_s;
    QTest::newRow("resolve") << ObjectKind::Recipient << u"Resolve()"_s << u"EX"_s;
    QTest::newRow("address entry") << ObjectKind::Recipient << u"AddressEntry()"_s << u"EX"_s;
    QTest::newRow("type") << ObjectKind::AddressEntry << u"Type"_s << u"EX"_s;
    QTest::newRow("Exchange user") << ObjectKind::AddressEntry << u"GetExchangeUser()"_s << u"EX"_s;
    QTest::newRow("list") << ObjectKind::Session << u"GetGlobalAddressList()"_s << u"SMTP"_s;
    QTest::newRow("entries") << ObjectKind::AddressList << u"AddressEntries"_s << u"SMTP"_s;
    QTest::newRow("count") << ObjectKind::AddressEntries << u"Count"_s << u"SMTP"_s;
}

void tst_OutlookRecipients::failedLookupKeepsTheAddress()
{
    QFETCH(const ObjectKind, object);
    QFETCH(const QString, member);
    QFETCH(const QString, type);
    m_mailbox->scenario.addresses.insert(u"kim@example.com"_s, {true, type, u"primary@example.com"_s});
    m_mailbox->scenario.globalAddressList = {{true, u"kim"_s, u"kim.sample@example.com"_s}};
    m_mailbox->addFailure(object, member, FailureKind::Exception);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member "_s + QRegularExpression::escape(member)));
    QCOMPARE(outlook().resolveSmtpAddress(u"kim@example.com"_s), u"kim@example.com"_s);
}

void tst_OutlookRecipients::exchangeAddressOfAnotherTypeEmptiesTheResult()
{
    m_mailbox->scenario.addresses.insert(u"kim"_s, {true, u"EX"_s, u"primary@example.com"_s});
    m_mailbox->addFailure(ObjectKind::ExchangeUser, u"PrimarySmtpAddress"_s, FailureKind::Missing);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member PrimarySmtpAddress"_s));
    QCOMPARE(outlook().resolveSmtpAddress(u"kim"_s), u""_s);
}

void tst_OutlookRecipients::aliasWalk_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("result");

    QTest::newRow("alias and domain") << u"kim@example.com"_s << u"kim.sample@example.com"_s;
    QTest::newRow("alias in another case") << u"Kim@example.com"_s << u""_s;
    QTest::newRow("domain in another case") << u"kim@Example.com"_s << u""_s;
    QTest::newRow("alias in another domain goes on to the next") << u"kim@example.net"_s << u"kim@example.net"_s;
    QTest::newRow("no such alias") << u"robin@example.com"_s << u""_s;
    QTest::newRow("no @ matches only an address without domain") << u"local"_s << u"localuser"_s;
    QTest::newRow("no @, other users") << u"kim"_s << u""_s;
    QTest::newRow("further @ are ignored") << u"kim@example.com@x"_s << u"kim.sample@example.com"_s;
    QTest::newRow("empty") << u""_s << u""_s;
}

void tst_OutlookRecipients::aliasWalk()
{
    QFETCH(const QString, address);
    m_mailbox->scenario.globalAddressList = {{false, u"kim"_s, u"list@example.com"_s},
                                             {true, u"kim"_s, u"kim@example.org"_s},
                                             {true, u"local"_s, u"localuser"_s},
                                             {true, u"kim"_s, u"kim.sample@example.com"_s},
                                             {true, u"kim"_s, u"kim@example.net"_s}};
    QTEST(outlook().getPrimarySmtpAddressForAliasAddress(address), "result");
}

void tst_OutlookRecipients::aliasWalkWithoutExchangeUsers()
{
    m_mailbox->scenario.globalAddressList = {{false, {}, {}}, {false, {}, {}}, {false, {}, {}}};
    QTest::ignoreMessage(QtDebugMsg,
                         QRegularExpression(u"^getPrimarySmtpAddressForAliasAddress\\(kim@example\\.com\\) = , "
                                            "elapsed = [0-9]+ ms$"_s));
    QCOMPARE(outlook().resolveSmtpAddress(u"kim@example.com"_s), u"kim@example.com"_s);
    QCOMPARE(m_mailbox->operationsOf(u"AddressEntries"_s).size(), 1 + 3);
}

void tst_OutlookRecipients::aliasWalkStopsAtTheFirstMatch()
{
    m_mailbox->scenario.globalAddressList = {
        {false, {}, {}}, {true, u"a"_s, u"first@example.com"_s}, {true, u"a"_s, u"second@example.com"_s}};
    QCOMPARE(outlook().getPrimarySmtpAddressForAliasAddress(u"a@example.com"_s), u"first@example.com"_s);
    QCOMPARE(m_mailbox->operations(),
             QStringList({u"Application#1 query Session"_s, u"Session#1 query GetGlobalAddressList()"_s,
                          u"AddressList#1 query AddressEntries"_s, u"AddressEntries#1 get Count"_s,
                          u"AddressEntries#1 query Item(QVariant) [1]"_s, u"AddressEntry#1 query GetExchangeUser()"_s,
                          u"AddressEntries#1 query Item(QVariant) [2]"_s, u"AddressEntry#2 query GetExchangeUser()"_s,
                          u"ExchangeUser#1 get Alias"_s, u"ExchangeUser#1 get PrimarySmtpAddress"_s}));
}

namespace {

/// Answers every query with another one of its kind, and writes down what is asked.
class Recorder : public AutomationObject
{
public:
    Recorder(QStringList &log, const QString &name, QObject *parent)
        : AutomationObject(parent)
        , m_log(log)
        , m_name(name)
    {
    }

    [[nodiscard]] bool isNull() const override { return false; }
    [[nodiscard]] AutomationObject *querySubObject(const char *name, const QVariantList &) override
    {
        add(QString::fromLatin1(name));
        return new Recorder(m_log, QString::fromLatin1(name), this);
    }
    QVariant dynamicCall(const char *name, const QVariantList &) override
    {
        add(QString::fromLatin1(name));
        return QVariant();
    }
    [[nodiscard]] QVariant property(const char *name) override
    {
        add(QString::fromLatin1(name));
        return QByteArrayView(name) == "Count" ? QVariant(1) : QVariant(u"a@b"_s);
    }
    bool setProperty(const char *, const QVariant &) override { return false; }
    [[nodiscard]] QVariant asVariant() const override { return QVariant(); }
    void disableMetaObject() override { add(u"disableMetaObject"_s); }

private:
    void add(const QString &operation) { m_log.append(m_name + u": "_s + operation); }

    QStringList &m_log;
    QString m_name;
};

} // namespace

void tst_OutlookRecipients::aliasWalkSwitchesTheMetaObjectOffFirst()
{
    QStringList log;
    Outlook recorded(nullptr,
                     [&log](const QString &progId, QObject *parent) { return new Recorder(log, progId, parent); });
    log.clear();
    QCOMPARE(recorded.getPrimarySmtpAddressForAliasAddress(u"kim@example.com"_s), u""_s);
    log.removeIf([](const QString &line) { return !line.startsWith(u"Item"_s); });
    QCOMPARE(log, QStringList({u"Item(QVariant): disableMetaObject"_s, u"Item(QVariant): GetExchangeUser()"_s}));
}

void tst_OutlookRecipients::aliasWalkLogsItsTime_data()
{
    QTest::addColumn<QString>("address");
    QTest::addColumn<QString>("line");

    QTest::newRow("found")
        << u"kim@example.com"_s
        << u"^getPrimarySmtpAddressForAliasAddress\\(kim@example\\.com\\) = kim\\.sample@example\\.com, "
           "elapsed = [0-9]+ ms$"_s;
    QTest::newRow("not found")
        << u"x@example.com"_s
        << u"^getPrimarySmtpAddressForAliasAddress\\(x@example\\.com\\) = , elapsed = [0-9]+ ms$"_s;
}

void tst_OutlookRecipients::aliasWalkLogsItsTime()
{
    QFETCH(const QString, address);
    QFETCH(const QString, line);
    m_mailbox->scenario.globalAddressList = {{true, u"kim"_s, u"kim.sample@example.com"_s}};
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(line));
    QVERIFY(outlook().getPrimarySmtpAddressForAliasAddress(address) != address);
}

void tst_OutlookRecipients::aliasWalkPassesOverFailingEntries()
{
    m_mailbox->scenario.globalAddressList = {{true, u"kim"_s, u"one@example.com"_s},
                                             {true, u"kim"_s, u"two@example.com"_s},
                                             {true, u"kim"_s, u"three@example.com"_s}};
    m_mailbox->scenario.failures = {{ObjectKind::AddressEntries, u"Item(QVariant)"_s, 1, {}},
                                    {ObjectKind::AddressEntry, u"GetExchangeUser()"_s, 1, {}}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Item\\(QVariant\\)"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member GetExchangeUser\\(\\)"_s));
    QCOMPARE(outlook().getPrimarySmtpAddressForAliasAddress(u"kim@example.com"_s), u"three@example.com"_s);
}

void tst_OutlookRecipients::aliasWalkKeepsItsWrappers()
{
    m_mailbox->scenario.globalAddressList = {{true, u"a"_s, u"a@example.com"_s}, {true, u"b"_s, u"b@example.com"_s}};
    Outlook &started = outlook();
    const int before = AutomationObject::liveCount();
    QCOMPARE(started.getPrimarySmtpAddressForAliasAddress(u"none@example.com"_s), u""_s);
    QCOMPARE(AutomationObject::liveCount(), before + 3 + 2 * 2); // session, list, entries; two for each entry
    QCOMPARE(m_mailbox->releases(), QStringList());
}

void tst_OutlookRecipients::noOriginator()
{
    outlook().setOriginator(u""_s);
    QCOMPARE(m_mailbox->operations(), QStringList());
}

void tst_OutlookRecipients::originator_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("operation");

    QTest::newRow("account by address") << u"orders@example.com"_s
                                        << uR"(MailItem#1 set SendUsingAccount [{"object":"Account#2"}])"_s;
    QTest::newRow("account by display name")
        << u"Order desk"_s << uR"(MailItem#1 set SendUsingAccount [{"object":"Account#2"}])"_s;
    QTest::newRow("address in another case")
        << u"Orders@example.com"_s << uR"(MailItem#1 set SentOnBehalfOfName ["Orders@example.com"])"_s;
    QTest::newRow("alias address") << u"desk@example.com"_s
                                   << uR"(MailItem#1 set SendUsingAccount [{"object":"Account#2"}])"_s;
    QTest::newRow("resolved address goes on behalf")
        << u"kim@example.com"_s << uR"(MailItem#1 set SentOnBehalfOfName ["kim.sample@example.com"])"_s;
    QTest::newRow("Exchange address") << u"Sales"_s << uR"(MailItem#1 set SentOnBehalfOfName ["sales@example.com"])"_s;
    QTest::newRow("unknown") << u"x@example.org"_s << uR"(MailItem#1 set SentOnBehalfOfName ["x@example.org"])"_s;
}

void tst_OutlookRecipients::originator()
{
    QFETCH(const QString, from);
    m_mailbox->scenario.accounts = {{u"Robin Example"_s, u"robin@example.com"_s},
                                    {u"Order desk"_s, u"orders@example.com"_s}};
    m_mailbox->scenario.globalAddressList = {{true, u"kim"_s, u"kim.sample@example.com"_s},
                                             {true, u"desk"_s, u"orders@example.com"_s}};
    m_mailbox->scenario.addresses.insert(u"Sales"_s, {true, u"EX"_s, u"sales@example.com"_s});
    outlook().setOriginator(from);
    QTEST(m_mailbox->operations().last(), "operation");
    QCOMPARE(m_mailbox->operationsOf(u"MailItem"_s).size(), 1);
}

void tst_OutlookRecipients::originatorIsLogged()
{
    m_mailbox->scenario.addresses.insert(u"Sales"_s, {true, u"EX"_s, u"sales@example.com"_s});
    QTest::ignoreMessage(QtDebugMsg, "Originator [sales@example.com]");
    outlook().setOriginator(u"Sales"_s);
}

void tst_OutlookRecipients::firstMatchingAccountWins()
{
    m_mailbox->scenario.accounts = {
        {u"A"_s, u"a@example.com"_s}, {u"b@example.com"_s, u"c@example.com"_s}, {u"B"_s, u"b@example.com"_s}};
    AutomationObject *const account = outlook().findAccount(u"b@example.com"_s);
    QVERIFY(account != nullptr);
    QCOMPARE(account->property("SmtpAddress"), u"c@example.com"_s);
    QCOMPARE(m_mailbox->operationsOf(u"Accounts"_s),
             QStringList({u"Accounts#1 get Count"_s, u"Accounts#1 query Item(QVariant) [1]"_s,
                          u"Accounts#1 query Item(QVariant) [2]"_s}));
    QCOMPARE(m_mailbox->operationsOf(u"Account#1"_s),
             QStringList({u"Account#1 get DisplayName"_s, u"Account#1 get SmtpAddress"_s}));
}

void tst_OutlookRecipients::failingAccountIsPassedOver()
{
    m_mailbox->scenario.accounts = {{u"A"_s, u"a@example.com"_s}, {u"A"_s, u"b@example.com"_s}};
    m_mailbox->scenario.failures = {{ObjectKind::Accounts, u"Item(QVariant)"_s, 1, {}}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Item\\(QVariant\\)"_s));
    AutomationObject *const account = outlook().findAccount(u"A"_s);
    QVERIFY(account != nullptr);
    QCOMPARE(account->property("SmtpAddress"), u"b@example.com"_s);
}

void tst_OutlookRecipients::accountsThatFailArePassedOver()
{
    m_mailbox->addFailure(ObjectKind::Session, u"Accounts"_s, FailureKind::Exception);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Accounts"_s));
    outlook().setOriginator(u"kim@example.com"_s);
    QCOMPARE(m_mailbox->operations().last(), uR"(MailItem#1 set SentOnBehalfOfName ["kim@example.com"])"_s);
}

QTEST_GUILESS_MAIN(tst_OutlookRecipients)
#include "tst_outlookrecipients.moc"

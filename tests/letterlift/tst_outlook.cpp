#include "automation/automationobject.h"
#include "outlook.h"
#include "testmailbox.h"

#include <QTest>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

class tst_Outlook : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void startAndEnd();
    void logIsWritten();
    void noOutlook();
    void version_data();
    void version();
    void versionOfAnotherType();
    void logonExceptionIsWarnedOf();
    void sessionMissingLeavesNoMailItem();
    void createItemFails_data();
    void createItemFails();
    void importance_data();
    void importance();
    void plainProperties_data();
    void plainProperties();
    void displayAndSend();
    void code4096OnMailItemThrows_data();
    void code4096OnMailItemThrows();
    void otherCodeOnMailItemIsPassedOver();
    void otherFailuresOnMailItemAreWarnedOf();
    void exceptionSlotIsPrivateAndOnlyOne();
    void wrappersThatStayAndGo();

private:
    std::unique_ptr<TestMailbox> m_mailbox;
};

void tst_Outlook::init()
{
    m_mailbox = std::make_unique<TestMailbox>();
}

void tst_Outlook::cleanup()
{
    QCOMPARE(AutomationObject::liveCount(), 0);
}

void tst_Outlook::startAndEnd()
{
    {
        const Outlook outlook(nullptr, m_mailbox->factory());
    }
    QCOMPARE(m_mailbox->operations(), QStringList({u"Application#1 create Outlook.Application"_s,
                                                   u"Application#1 query Session"_s, u"Session#1 call Logon()"_s,
                                                   uR"(Application#1 query CreateItem(OlItemType) ["olMailItem"])"_s,
                                                   u"Application#1 query Session"_s, u"Session#1 call Logoff()"_s}));
    QCOMPARE(m_mailbox->releases(), QStringList({u"Session#1"_s, u"MailItem#1"_s, u"Session#1"_s, u"Application#1"_s}));
}

void tst_Outlook::logIsWritten()
{
    QTest::ignoreMessage(QtDebugMsg, "Displaying mail");
    QTest::ignoreMessage(QtDebugMsg, "Sending mail");
    QTest::ignoreMessage(QtDebugMsg, "Logoff()");
    Outlook outlook(nullptr, m_mailbox->factory());
    outlook.addRecipients({u"a@example.com"_s});
    outlook.display();
    outlook.sendMail();
}

void tst_Outlook::noOutlook()
{
    m_mailbox->scenario.available = false;
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    {
        Outlook outlook(nullptr, m_mailbox->factory());
        QVERIFY(!outlook.version().isValid());
        outlook.setOriginator(u"a@example.com"_s);
        outlook.addRecipients({u"a@example.com"_s});
        outlook.setSubject(u"s"_s);
        outlook.setBody(u"b"_s, true, true);
        outlook.setBodyFromHtmlFile(u"f.html"_s, false);
        outlook.display();
        outlook.sendMail();
    }
    QCOMPARE(m_mailbox->operations(), QStringList{u"Application#1 create Outlook.Application"_s});
}

void tst_Outlook::version_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("version");

    QTest::newRow("four numbers") << u"16.0.13231.20126"_s << u"16.0.13231.20126"_s;
    QTest::newRow("further numbers") << u"16.0.0.13231.1"_s << u"16.0.0.13231"_s;
    QTest::newRow("empty") << u""_s << u""_s;
    QTest::newRow("0.0") << u"0.0"_s << u""_s;
    QTest::newRow("no number") << u"Outlook"_s << u""_s;
}

void tst_Outlook::version()
{
    QFETCH(const QString, text);
    m_mailbox->scenario.version = text;
    const Outlook outlook(nullptr, m_mailbox->factory());
    QTEST(outlook.version().toString(), "version");
}

namespace {

/// An application whose version is a number and not a text.
class NumberVersion : public AutomationObject
{
public:
    using AutomationObject::AutomationObject;

    [[nodiscard]] bool isNull() const override { return false; }
    [[nodiscard]] AutomationObject *querySubObject(const char *, const QVariantList &) override { return nullptr; }
    QVariant dynamicCall(const char *, const QVariantList &) override { return QVariant(); }
    [[nodiscard]] QVariant property(const char *) override { return 16.5; }
    bool setProperty(const char *, const QVariant &) override { return false; }
    [[nodiscard]] QVariant asVariant() const override { return QVariant(); }
    void disableMetaObject() override {}
};

} // namespace

void tst_Outlook::versionOfAnotherType()
{
    const Outlook outlook(nullptr, [](const QString &, QObject *parent) { return new NumberVersion(parent); });
    QVERIFY(!outlook.version().isValid());
}

void tst_Outlook::logonExceptionIsWarnedOf()
{
    m_mailbox->addFailure(ObjectKind::Session, u"Logon()"_s, FailureKind::Exception);
    QTest::ignoreMessage(QtWarningMsg,
                         "QAxBase: Error calling IDispatch member Logon(): The server raised an exception\n"
                         "    Code: 4096\n    Source: Source\n    Description: Description\n    Help: Help");
    const Outlook outlook(nullptr, m_mailbox->factory());
    QCOMPARE(m_mailbox->operations().last(), uR"(Application#1 query CreateItem(OlItemType) ["olMailItem"])"_s);
}

void tst_Outlook::sessionMissingLeavesNoMailItem()
{
    m_mailbox->addFailure(ObjectKind::Application, u"Session"_s, FailureKind::Missing);
    const QRegularExpression warning(u"^QAxBase: Error calling IDispatch member Session"_s);
    QTest::ignoreMessage(QtWarningMsg, warning);
    QTest::ignoreMessage(QtWarningMsg, warning); // at the end, for the log-off
    Outlook outlook(nullptr, m_mailbox->factory());
    outlook.display();
    QCOMPARE(m_mailbox->operations(),
             QStringList({u"Application#1 create Outlook.Application"_s, u"Application#1 query Session"_s}));
}

void tst_Outlook::createItemFails_data()
{
    QTest::addColumn<FailureKind>("kind");
    QTest::addColumn<QString>("warning");

    QTest::newRow("null, which Outlook may give without a word") << FailureKind::Null << QString();
    QTest::newRow("missing") << FailureKind::Missing << u"^QAxBase: Error calling IDispatch member "_s;
    QTest::newRow("exception") << FailureKind::Exception << u"^QAxBase: Error calling IDispatch member "_s;
}

void tst_Outlook::createItemFails()
{
    QFETCH(const FailureKind, kind);
    QFETCH(const QString, warning);
    m_mailbox->addFailure(ObjectKind::Application, u"CreateItem(OlItemType)"_s, kind);
    if (!warning.isEmpty())
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(warning));
    Outlook outlook(nullptr, m_mailbox->factory());
    QVERIFY(outlook.version().isValid());
    outlook.setSubject(u"s"_s);
    outlook.addRecipients({u"a@example.com"_s});
    outlook.setBody(u"b"_s, false, false);
    outlook.display();
    QVERIFY(m_mailbox->operationsOf(u"MailItem"_s).isEmpty());
}

void tst_Outlook::importance_data()
{
    QTest::addColumn<int>("priority");
    QTest::addColumn<int>("importance");

    QTest::newRow("1 is high") << 1 << 2;
    QTest::newRow("2 is high") << 2 << 2;
    QTest::newRow("3 is normal, and set all the same") << 3 << 1;
    QTest::newRow("4 is low") << 4 << 0;
    QTest::newRow("5 is low") << 5 << 0;
}

void tst_Outlook::importance()
{
    QFETCH(const int, priority);
    QFETCH(const int, importance);
    Outlook outlook(nullptr, m_mailbox->factory());
    outlook.setImportance(priority);
    QCOMPARE(m_mailbox->operationsOf(u"MailItem"_s), QStringList{u"MailItem#1 set Importance [%1]"_s.arg(importance)});
}

void tst_Outlook::plainProperties_data()
{
    using Setter = std::function<void(Outlook &)>;
    QTest::addColumn<Setter>("set");
    QTest::addColumn<QString>("operation");

    QTest::newRow("subject") << Setter([](Outlook &o) { o.setSubject(u"Figures \"3\""_s); })
                             << uR"(MailItem#1 set Subject ["Figures \"3\""])"_s;
    QTest::newRow("read receipt") << Setter([](Outlook &o) { o.setReadReceiptRequested(true); })
                                  << u"MailItem#1 set ReadReceiptRequested [true]"_s;
    QTest::newRow("read receipt, also false") << Setter([](Outlook &o) { o.setReadReceiptRequested(false); })
                                              << u"MailItem#1 set ReadReceiptRequested [false]"_s;
    QTest::newRow("delivery report") << Setter([](Outlook &o) { o.setDeliveryReportRequested(true); })
                                     << u"MailItem#1 set OriginatorDeliveryReportRequested [true]"_s;
    QTest::newRow("delivery report, also false") << Setter([](Outlook &o) { o.setDeliveryReportRequested(false); })
                                                 << u"MailItem#1 set OriginatorDeliveryReportRequested [false]"_s;
}

void tst_Outlook::plainProperties()
{
    QFETCH(const std::function<void(Outlook &)>, set);
    QFETCH(const QString, operation);
    Outlook outlook(nullptr, m_mailbox->factory());
    set(outlook);
    QCOMPARE(m_mailbox->operationsOf(u"MailItem"_s), QStringList{operation});
}

void tst_Outlook::displayAndSend()
{
    Outlook outlook(nullptr, m_mailbox->factory());
    outlook.addRecipients({u"a@example.com"_s});
    outlook.display();
    QCOMPARE(m_mailbox->environment.drafts.size(), 1);
    outlook.sendMail();
    QCOMPARE(m_mailbox->environment.drafts.size(), 0);
    QCOMPARE(m_mailbox->environment.sent.size(), 1);
    QCOMPARE(m_mailbox->operationsOf(u"MailItem#1"_s).last(2),
             QStringList({u"MailItem#1 call Display()"_s, u"MailItem#1 call Send()"_s}));
}

void tst_Outlook::code4096OnMailItemThrows_data()
{
    using Step = std::function<void(Outlook &)>;
    QTest::addColumn<QString>("member");
    QTest::addColumn<Step>("step");

    QTest::newRow("Send()") << u"Send()"_s << Step([](Outlook &o) { o.sendMail(); });
    QTest::newRow("Display()") << u"Display()"_s << Step([](Outlook &o) { o.display(); });
    QTest::newRow("a property") << u"Subject"_s << Step([](Outlook &o) { o.setSubject(u"s"_s); });
    QTest::newRow("a collection") << u"Recipients"_s << Step([](Outlook &o) { o.addRecipients({u"a"_s}); });
    QTest::newRow("originator") << u"SentOnBehalfOfName"_s << Step([](Outlook &o) { o.setOriginator(u"a@b"_s); });
    QTest::newRow("inspector") << u"GetInspector()"_s << Step([](Outlook &o) { o.setBodyFromHtmlFile(u"f"_s, true); });
}

void tst_Outlook::code4096OnMailItemThrows()
{
    QFETCH(const QString, member);
    QFETCH(const std::function<void(Outlook &)>, step);
    m_mailbox->addFailure(ObjectKind::MailItem, member, FailureKind::Exception, 0x1000);
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    Outlook outlook(nullptr, m_mailbox->factory());
    QString text;
    try {
        step(outlook);
    } catch (const std::exception &e) {
        text = QString::fromUtf8(e.what());
    }
    QCOMPARE(text, u"At least one originator or recipient is invalid."_s);
}

void tst_Outlook::otherCodeOnMailItemIsPassedOver()
{
    m_mailbox->addFailure(ObjectKind::MailItem, u"Send()"_s, FailureKind::Exception, 4097);
    m_mailbox->addFailure(ObjectKind::MailItem, u"Subject"_s, FailureKind::Exception, -2147467259);
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    Outlook outlook(nullptr, m_mailbox->factory());
    outlook.setSubject(u"s"_s);
    outlook.sendMail();
    QVERIFY(m_mailbox->environment.sent.isEmpty());
}

void tst_Outlook::otherFailuresOnMailItemAreWarnedOf()
{
    m_mailbox->addFailure(ObjectKind::MailItem, u"Send()"_s, FailureKind::Missing);
    m_mailbox->addFailure(ObjectKind::MailItem, u"Subject"_s, FailureKind::Death);
    QTest::ignoreMessage(QtWarningMsg, "QAxBase: Error calling IDispatch member Subject: The server is gone");
    QTest::ignoreMessage(QtWarningMsg, "QAxBase: Error calling IDispatch member Send(): The server is gone");
    QTest::ignoreMessage(QtWarningMsg, "QAxBase: Error calling IDispatch member Session: The server is gone");
    Outlook outlook(nullptr, m_mailbox->factory());
    outlook.setSubject(u"s"_s);
    outlook.sendMail();
}

void tst_Outlook::exceptionSlotIsPrivateAndOnlyOne()
{
    const QMetaObject &meta = Outlook::staticMetaObject;
    QCOMPARE(meta.className(), "Outlook");
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 1);
    QCOMPARE(meta.method(meta.methodOffset()).methodSignature(), "exception(int)");
    QCOMPARE(meta.method(meta.methodOffset()).access(), QMetaMethod::Private);
}

void tst_Outlook::wrappersThatStayAndGo()
{
    m_mailbox->scenario.accounts = {{u"A"_s, u"a@example.com"_s}, {u"B"_s, u"b@example.com"_s}};
    Outlook outlook(nullptr, m_mailbox->factory());
    QCOMPARE(AutomationObject::liveCount(), 2); // application and mail item; the session of the log-on has gone

    outlook.addRecipients({u"a"_s, u"b"_s});
    outlook.addAttachments({});
    QCOMPARE(AutomationObject::liveCount(), 2); // a collection goes, and its elements with it

    QVERIFY(outlook.findAccount(u"b@example.com"_s) != nullptr);
    QCOMPARE(AutomationObject::liveCount(), 6); // session, accounts and two accounts stay

    // Of the address lookup only the recipient goes, with its address entry: the session stays, and that of the alias
    // walk with its list and entries.
    QCOMPARE(outlook.resolveSmtpAddress(u"x@example.com"_s), u"x@example.com"_s);
    QCOMPARE(AutomationObject::liveCount(), 6 + 1 + 3);

    outlook.setBody(u"b"_s, false, true);
    QCOMPARE(AutomationObject::liveCount(), 6 + 1 + 3 + 2); // the signature's item and its inspector
}

QTEST_GUILESS_MAIN(tst_Outlook)
#include "tst_outlook.moc"

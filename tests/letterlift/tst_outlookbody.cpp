#include "automation/automationobject.h"
#include "outlook.h"
#include "testmailbox.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_OutlookBody : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void withoutSignature_data();
    void withoutSignature();
    void signatureFromSeparateItem_data();
    void signatureFromSeparateItem();
    void signatureFromTheMailItself();
    void versionLimit_data();
    void versionLimit();
    void separateItemIsDeletedAtTheEnd();
    void nothingIsDeletedBelowTheLimit();
    void separateItemFails();
    void separateItemWithoutMail();
    void separateItemHasNoExceptionReceiver();
    void signatureThatCannotBeReadIsEmpty();
    void inspectorFailureKeepsTheText();
    void embeddedFileWithoutSignature();
    void embeddedFileWithSignature();
    void missingStepInsertsNothing_data();
    void missingStepInsertsNothing();
    void missingHtmlFileIsWarnedOf();
    void bodyIsLogged();

private:
    [[nodiscard]] Outlook &outlook();

    std::unique_ptr<TestMailbox> m_mailbox;
    std::unique_ptr<Outlook> m_outlook;
};

namespace {

const QString belowLimit = u"16.0.0.13230"_s;
const QString insertFileOperation = u"Selection#1 call InsertFile(QString, QVariant&, QVariant&, QVariant&, QVariant&) "
                                    "[\"/f.html\",\"\",false,false,false]"_s;

} // namespace

void tst_OutlookBody::init()
{
    m_mailbox = std::make_unique<TestMailbox>();
    m_mailbox->scenario.plainSignature = u"plain signature"_s;
    m_mailbox->scenario.htmlSignature = u"<p>html signature</p>"_s;
}

void tst_OutlookBody::cleanup()
{
    m_outlook.reset();
    QCOMPARE(AutomationObject::liveCount(), 0);
}

/// Started with the scenario as it stands at the first call.
Outlook &tst_OutlookBody::outlook()
{
    if (m_outlook == nullptr) {
        m_outlook = std::make_unique<Outlook>(nullptr, m_mailbox->factory());
        m_mailbox->environment.journal.clear();
    }
    return *m_outlook;
}

void tst_OutlookBody::withoutSignature_data()
{
    QTest::addColumn<bool>("html");
    QTest::addColumn<QStringList>("operations");

    QTest::newRow("plain") << false
                           << QStringList{u"MailItem#1 set BodyFormat [1]"_s, uR"(MailItem#1 set Body ["text"])"_s};
    QTest::newRow("html") << true
                          << QStringList{u"MailItem#1 set BodyFormat [2]"_s, uR"(MailItem#1 set HTMLBody ["text"])"_s};
}

void tst_OutlookBody::withoutSignature()
{
    QFETCH(const bool, html);
    outlook().setBody(u"text"_s, html, false);
    QTEST(m_mailbox->operations(), "operations");
}

void tst_OutlookBody::signatureFromSeparateItem_data()
{
    QTest::addColumn<bool>("html");
    QTest::addColumn<QStringList>("operations");

    const QString create = uR"(Application#1 query CreateItem(OlItemType) ["olMailItem"])"_s;
    QTest::newRow("plain") << false
                           << QStringList{u"MailItem#1 set BodyFormat [1]"_s,
                                          u"Application#1 get Version"_s,
                                          create,
                                          u"MailItem#2 set BodyFormat [1]"_s,
                                          u"MailItem#2 query GetInspector()"_s,
                                          u"MailItem#2 call Body"_s,
                                          uR"(MailItem#1 set Body ["textplain signature"])"_s};
    QTest::newRow("html") << true
                          << QStringList{u"MailItem#1 set BodyFormat [2]"_s,
                                         u"Application#1 get Version"_s,
                                         create,
                                         u"MailItem#2 set BodyFormat [2]"_s,
                                         u"MailItem#2 query GetInspector()"_s,
                                         u"MailItem#2 call HTMLBody"_s,
                                         uR"(MailItem#1 set HTMLBody ["text<p>html signature</p>"])"_s};
}

void tst_OutlookBody::signatureFromSeparateItem()
{
    QFETCH(const bool, html);
    QTest::ignoreMessage(QtDebugMsg, "Creating new mail item (get signature)");
    outlook().setBody(u"text"_s, html, true);
    QTEST(m_mailbox->operations(), "operations");
}

void tst_OutlookBody::signatureFromTheMailItself()
{
    m_mailbox->scenario.version = belowLimit;
    outlook().setBody(u"text"_s, false, true);
    QCOMPARE(m_mailbox->operations(),
             QStringList({u"MailItem#1 set BodyFormat [1]"_s, u"Application#1 get Version"_s,
                          u"MailItem#1 set BodyFormat [1]"_s, u"MailItem#1 query GetInspector()"_s,
                          u"MailItem#1 call Body"_s, uR"(MailItem#1 set Body ["textplain signature"])"_s}));
}

void tst_OutlookBody::versionLimit_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("separateItem");

    QTest::newRow("exactly the limit") << u"16.0.0.13231"_s << true;
    QTest::newRow("one build lower") << belowLimit << false;
    QTest::newRow("real-looking version, higher third number") << u"16.0.13231.20126"_s << true;
    QTest::newRow("major 15 with higher numbers") << u"15.0.5000.99999"_s << false;
    QTest::newRow("three numbers only, a prefix") << u"16.0.0"_s << false;
    QTest::newRow("major 17") << u"17.0.0.0"_s << true;
}

void tst_OutlookBody::versionLimit()
{
    QFETCH(const QString, version);
    QFETCH(const bool, separateItem);
    m_mailbox->scenario.version = version;
    outlook().setBody(u"text"_s, true, true);
    QCOMPARE(!m_mailbox->operationsOf(u"MailItem#2"_s).isEmpty(), separateItem);
}

void tst_OutlookBody::separateItemIsDeletedAtTheEnd()
{
    outlook().setBody(u"text"_s, false, true);
    m_mailbox->environment.journal.clear();
    QTest::ignoreMessage(QtDebugMsg, "Deleting new mail item");
    QTest::ignoreMessage(QtDebugMsg, "Logoff()");
    m_outlook.reset();
    QCOMPARE(m_mailbox->operations(), QStringList({u"MailItem#2 call Delete()"_s, u"Application#1 query Session"_s,
                                                   u"Session#1 call Logoff()"_s}));
    QCOMPARE(m_mailbox->releases(),
             QStringList({u"MailItem#2"_s, u"Inspector#1"_s, u"MailItem#1"_s, u"Session#1"_s, u"Application#1"_s}));
}

void tst_OutlookBody::nothingIsDeletedBelowTheLimit()
{
    m_mailbox->scenario.version = belowLimit;
    outlook().setBody(u"text"_s, false, true);
    m_outlook.reset();
    QVERIFY(!m_mailbox->operations().contains(u"MailItem#1 call Delete()"_s));
}

void tst_OutlookBody::separateItemFails()
{
    m_mailbox->scenario.failures = {{ObjectKind::Application, u"CreateItem(OlItemType)"_s, 2, {}}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member CreateItem"_s));
    outlook().setBody(u"text"_s, false, true);
    QCOMPARE(m_mailbox->operations().last(), uR"(MailItem#1 set Body ["text"])"_s);
}

void tst_OutlookBody::separateItemWithoutMail()
{
    m_mailbox->scenario.failures = {{ObjectKind::Application, u"Session"_s, 1, {}}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member Session"_s));
    outlook().setBody(u"text"_s, false, true);
    m_outlook.reset();
    QCOMPARE(m_mailbox->operationsOf(u"MailItem"_s),
             QStringList({u"MailItem#1 set BodyFormat [1]"_s, u"MailItem#1 query GetInspector()"_s,
                          u"MailItem#1 call Body"_s, u"MailItem#1 call Delete()"_s}));
}

void tst_OutlookBody::separateItemHasNoExceptionReceiver()
{
    m_mailbox->scenario.failures = {{ObjectKind::MailItem, u"GetInspector()"_s, 1, {}}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member GetInspector\\(\\)[^$]*Code: 4096"_s));
    outlook().setBody(u"text"_s, false, true);
    QCOMPARE(m_mailbox->operations().last(), uR"(MailItem#1 set Body ["text"])"_s);
}

void tst_OutlookBody::signatureThatCannotBeReadIsEmpty()
{
    m_mailbox->scenario.failures = {{ObjectKind::MailItem, u"HTMLBody"_s, 1, failureOf(FailureKind::Missing)}};
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Error calling IDispatch member HTMLBody"_s));
    outlook().setBody(u"text"_s, true, true);
    QCOMPARE(m_mailbox->operations().last(), uR"(MailItem#1 set HTMLBody ["text"])"_s);
}

void tst_OutlookBody::inspectorFailureKeepsTheText()
{
    m_mailbox->addFailure(ObjectKind::MailItem, u"GetInspector()"_s, FailureKind::Missing);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member GetInspector"_s));
    outlook().setBody(u"text"_s, false, true);
    QCOMPARE(m_mailbox->operations().last(), uR"(MailItem#1 set Body ["text"])"_s);
}

void tst_OutlookBody::embeddedFileWithoutSignature()
{
    m_mailbox->environment.files.insert(u"/f.html"_s, "<p>file</p>");
    outlook().display();
    m_mailbox->environment.journal.clear();
    QTest::ignoreMessage(QtDebugMsg, "Adding Body from html file [/f.html]");
    outlook().setBodyFromHtmlFile(u"/f.html"_s, false);
    QCOMPARE(m_mailbox->operations(),
             QStringList({uR"(MailItem#1 set HTMLBody [""])"_s, u"MailItem#1 set BodyFormat [2]"_s,
                          u"MailItem#1 query GetInspector()"_s, u"Inspector#1 query WordEditor()"_s,
                          u"Document#1 query Application()"_s, u"WordApplication#1 query Selection()"_s,
                          insertFileOperation}));
    QCOMPARE(m_mailbox->releases(), QStringList());
    QCOMPARE(m_mailbox->environment.drafts.value(1).body, u"<p>file</p>"_s);
}

void tst_OutlookBody::embeddedFileWithSignature()
{
    m_mailbox->environment.files.insert(u"/f.html"_s, "<p>file</p>");
    outlook().display();
    m_mailbox->environment.journal.clear();
    outlook().setBodyFromHtmlFile(u"/f.html"_s, true);
    QCOMPARE(m_mailbox->operations().first(), u"MailItem#1 set BodyFormat [2]"_s);
    QCOMPARE(m_mailbox->operations().last(), insertFileOperation);
    QVERIFY(!m_mailbox->operations().join(u' ').contains(u"set HTMLBody"_s));
    QCOMPARE(m_mailbox->environment.drafts.value(1).body, u"<p>file</p><p>html signature</p>"_s);
}

void tst_OutlookBody::missingStepInsertsNothing_data()
{
    QTest::addColumn<ObjectKind>("object");
    QTest::addColumn<QString>("member");

    QTest::newRow("inspector") << ObjectKind::MailItem << u"GetInspector()"_s;
    QTest::newRow("editor") << ObjectKind::Inspector << u"WordEditor()"_s;
    QTest::newRow("Word") << ObjectKind::Document << u"Application()"_s;
    QTest::newRow("selection") << ObjectKind::WordApplication << u"Selection()"_s;
    QTest::newRow("insertion") << ObjectKind::Selection
                               << u"InsertFile(QString, QVariant&, QVariant&, QVariant&, QVariant&)"_s;
}

void tst_OutlookBody::missingStepInsertsNothing()
{
    QFETCH(const ObjectKind, object);
    QFETCH(const QString, member);
    m_mailbox->environment.files.insert(u"/f.html"_s, "<p>file</p>");
    m_mailbox->addFailure(object, member, FailureKind::Missing);
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member "_s + QRegularExpression::escape(member)));
    outlook().display();
    outlook().setBodyFromHtmlFile(u"/f.html"_s, false);
    QVERIFY(m_mailbox->operations().last().contains(member));
    QCOMPARE(m_mailbox->environment.drafts.value(1).body, u""_s);
}

void tst_OutlookBody::missingHtmlFileIsWarnedOf()
{
    outlook().display();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"IDispatch member InsertFile"_s));
    outlook().setBodyFromHtmlFile(u"/missing.html"_s, true);
    QCOMPARE(m_mailbox->environment.drafts.value(1).body, u"<p>html signature</p>"_s);
}

void tst_OutlookBody::bodyIsLogged()
{
    QTest::ignoreMessage(QtDebugMsg, "Adding Body [line one\nline two]");
    outlook().setBody(u"line one\nline two"_s, false, false);
}

QTEST_GUILESS_MAIN(tst_OutlookBody)
#include "tst_outlookbody.moc"

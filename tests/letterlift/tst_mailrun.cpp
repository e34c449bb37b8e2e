#include "automation/automationobject.h"
#include "boxwatcher.h"
#include "mailrun.h"
#include "testfile.h"
#include "testmailbox.h"

#include <QFile>
#include <QLoggingCategory>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_MailRun : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void orderOfARun();
    void sendDecides();
    void unknownExceptionTypesPass();
    void errorTexts_data();
    void errorTexts();
    void invalidVersionStopsTheRun_data();
    void invalidVersionStopsTheRun();
    void failedRunHasTouchedNothing_data();
    void failedRunHasTouchedNothing();
    void htmlFileIsShownFirst();
    void otherSuffixesAreText_data();
    void otherSuffixesAreText();
    void vanishedFileRunsWithDefaults();
    void debugRuleIsSet();
    void linesOfARun();

private:
    int run(const QByteArray &lines);

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<TestMailbox> m_mailbox;
};

void tst_MailRun::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    m_mailbox = std::make_unique<TestMailbox>();
}

void tst_MailRun::cleanup()
{
    QCOMPARE(AutomationObject::liveCount(), 0);
}

int tst_MailRun::run(const QByteArray &lines)
{
    const QString path = writeTestFile(m_directory->filePath(u"mail.vxm"_s), "[VEXAMAIL]\n" + lines + "\n");
    MailRun mailRun(path, m_mailbox->factory());
    return mailRun.run();
}

void tst_MailRun::orderOfARun()
{
    QFile attachment(m_directory->filePath(u"a.pdf"_s));
    QVERIFY(attachment.open(QIODevice::WriteOnly));
    m_mailbox->environment.files.insert(attachment.fileName(), "x");
    QCOMPARE(run("BODY=text\nSUBJECT=s\nATTACHMENT1=a.pdf\nREPLYTO1=r\nBCC1=b\nCC1=c\nTO1=t\nFROMADDRESS=f\n"
                 "PRIORITY=1\nREADRECEIPT=1\nDELIVERYRECEIPT=1"),
             0);
    QStringList operations = m_mailbox->operationsOf(u"MailItem"_s);
    QCOMPARE(operations, QStringList({uR"(MailItem#1 set SentOnBehalfOfName ["f"])"_s, u"MailItem#1 query Recipients"_s,
                                      u"MailItem#1 query Recipients"_s, u"MailItem#1 query Recipients"_s,
                                      u"MailItem#1 query ReplyRecipients"_s, u"MailItem#1 set Importance [2]"_s,
                                      u"MailItem#1 set ReadReceiptRequested [true]"_s,
                                      u"MailItem#1 set OriginatorDeliveryReportRequested [true]"_s,
                                      u"MailItem#1 query Attachments"_s, uR"(MailItem#1 set Subject ["s"])"_s,
                                      u"MailItem#1 set BodyFormat [1]"_s, uR"(MailItem#1 set Body ["text"])"_s,
                                      u"MailItem#1 call Display()"_s}));
    QCOMPARE(m_mailbox->operationsOf(u"Element"_s).first(3),
             QStringList({u"Element#1 set Type [1]"_s, u"Element#2 set Type [2]"_s, u"Element#3 set Type [3]"_s}));
}

void tst_MailRun::sendDecides()
{
    QCOMPARE(run("TO1=t\nSEND=1"), 0);
    QCOMPARE(m_mailbox->environment.sent.size(), 1);
    QCOMPARE(m_mailbox->environment.drafts.size(), 0);
    QVERIFY(!m_mailbox->operations().contains(u"MailItem#1 call Display()"_s));
}

void tst_MailRun::unknownExceptionTypesPass()
{
    // Only std::exception is turned into a box.
    struct Foreign
    {
    };
    class Throwing : public AutomationObject
    {
    public:
        using AutomationObject::AutomationObject;
        [[nodiscard]] bool isNull() const override { return false; }
        [[nodiscard]] AutomationObject *querySubObject(const char *name, const QVariantList &) override
        {
            if (QByteArrayView(name) == "Recipients")
                throw Foreign();
            return new Throwing(this);
        }
        QVariant dynamicCall(const char *, const QVariantList &) override { return QVariant(); }
        [[nodiscard]] QVariant property(const char *) override { return u"16.0.0.1"_s; }
        bool setProperty(const char *, const QVariant &) override { return true; }
        [[nodiscard]] QVariant asVariant() const override { return QVariant(); }
        void disableMetaObject() override {}
    };

    QFile file(m_directory->filePath(u"mail.vxm"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("[VEXAMAIL]\nTO1=t\n") > 0);
    file.close();
    MailRun mailRun(file.fileName(), [](const QString &, QObject *parent) { return new Throwing(parent); });
    const BoxWatcher watcher;
    bool passed = false;
    try {
        QCOMPARE(mailRun.run(), 0);
    } catch (const Foreign &) {
        passed = true;
    }
    QVERIFY(passed);
    QVERIFY(watcher.boxes().isEmpty());
}

void tst_MailRun::errorTexts_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("failingMember");
    QTest::addColumn<QString>("text");

    const QString prefix = u"Couldn't send email.\n\n"_s;
    QTest::newRow("embedding in plain text")
        << QByteArray("BODYFILE=f.html") << u""_s
        << prefix + u"An HTML file can only be embedded in an HTML email, not in a plain text email."_s;
    QTest::newRow("embedding and sending")
        << QByteArray("BODYFILE=f.html\nHTMLBODY=1\nSEND=1") << u""_s
        << prefix +
               u"Sending an email with an embedded HTML file is not supported by Outlook due to technical limitations."_s;
    QTest::newRow("embedding in plain text comes first")
        << QByteArray("BODYFILE=f.html\nSEND=1") << u""_s
        << prefix + u"An HTML file can only be embedded in an HTML email, not in a plain text email."_s;
    QTest::newRow("missing body file has no prefix")
        << QByteArray("BODYFILE=f.txt") << u""_s << u"Couldn't find body file {dir}/f.txt"_s;
    for (const auto &member : {u"Send()"_s, u"Subject"_s, u"Recipients"_s})
        QTest::addRow("4096 on %s", qPrintable(member))
            << QByteArray("SEND=1\nTO1=t") << member << prefix + u"At least one originator or recipient is invalid."_s;
    QTest::newRow("4096 on Display()") << QByteArray("TO1=t") << u"Display()"_s
                                       << prefix + u"At least one originator or recipient is invalid."_s;
}

void tst_MailRun::errorTexts()
{
    QFETCH(const QByteArray, lines);
    QFETCH(const QString, failingMember);
    QFETCH(QString, text);
    text.replace(u"{dir}"_s, m_directory->path());
    if (!failingMember.isEmpty())
        m_mailbox->addFailure(ObjectKind::MailItem, failingMember, FailureKind::Exception, 4096);

    QTest::ignoreMessage(QtDebugMsg, text.toUtf8().constData());
    const BoxWatcher watcher;
    QCOMPARE(run(lines), -1);
    QCOMPARE(watcher.boxes().size(), 1);
    const BoxWatcher::Box &box = watcher.boxes().first();
    QCOMPARE(box.text, text);
    QCOMPARE(box.title, u""_s);
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::Ok);
    QVERIFY(!box.hasParent);
    QVERIFY(m_mailbox->environment.sent.isEmpty());
}

void tst_MailRun::invalidVersionStopsTheRun_data()
{
    QTest::addColumn<bool>("available");
    QTest::addColumn<QString>("version");

    QTest::newRow("no Outlook") << false << u""_s;
    QTest::newRow("empty version") << true << u""_s;
    QTest::newRow("0.0") << true << u"0.0"_s;
}

void tst_MailRun::invalidVersionStopsTheRun()
{
    QFETCH(const bool, available);
    QFETCH(const QString, version);
    m_mailbox->scenario.available = available;
    m_mailbox->scenario.version = version;
    const BoxWatcher watcher;
    QCOMPARE(run("TO1=t"), -1);
    QCOMPARE(watcher.boxes().size(), 1);
    QCOMPARE(watcher.boxes().first().text, u"MS Outlook not found. Please install MS Outlook first."_s);
    QCOMPARE(watcher.boxes().first().title, u""_s);
    QCOMPARE(watcher.boxes().first().icon, QMessageBox::Critical);
    QVERIFY(m_mailbox->operationsOf(u"MailItem"_s).isEmpty());
}

void tst_MailRun::failedRunHasTouchedNothing_data()
{
    QTest::addColumn<QByteArray>("lines");

    QTest::newRow("missing body file") << QByteArray("BODYFILE=f.txt");
    QTest::newRow("embedding in plain text") << QByteArray("BODYFILE=f.html");
    QTest::newRow("embedding and sending") << QByteArray("BODYFILE=f.html\nHTMLBODY=1\nSEND=1");
}

void tst_MailRun::failedRunHasTouchedNothing()
{
    QFETCH(const QByteArray, lines);
    const BoxWatcher watcher;
    QCOMPARE(run("FROMADDRESS=f\nTO1=t\nSUBJECT=s\n" + lines), -1);
    QCOMPARE(watcher.boxes().size(), 1);
    QVERIFY(m_mailbox->operationsOf(u"MailItem"_s).isEmpty());
}

void tst_MailRun::htmlFileIsShownFirst()
{
    m_mailbox->environment.files.insert(m_directory->filePath(u"f.html"_s), "<p>file</p>");
    QCOMPARE(run("BODYFILE=f.html\nHTMLBODY=1\nBODY=not used\nBODYZ1=neither"), 0);
    const QStringList operations = m_mailbox->operationsOf(u"MailItem#1"_s);
    const qsizetype display = operations.indexOf(u"MailItem#1 call Display()"_s);
    QCOMPARE(operations.sliced(display),
             QStringList({u"MailItem#1 call Display()"_s, uR"(MailItem#1 set HTMLBody [""])"_s,
                          u"MailItem#1 set BodyFormat [2]"_s, u"MailItem#1 query GetInspector()"_s}));
    QCOMPARE(m_mailbox->environment.drafts.value(1).body, u"<p>file</p>"_s);
}

void tst_MailRun::otherSuffixesAreText_data()
{
    QTest::addColumn<QString>("fileName");

    QTest::newRow("upper case") << u"f.HTML"_s;
    QTest::newRow("two suffixes") << u"f.v1.html"_s;
    QTest::newRow("htm") << u"f.htm"_s;
    QTest::newRow("no suffix") << u"html"_s;
}

void tst_MailRun::otherSuffixesAreText()
{
    QFETCH(const QString, fileName);
    QFile file(m_directory->filePath(fileName));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("<p>\nfile") > 0);
    file.close();
    QCOMPARE(run("HTMLBODY=1\nBODYFILE=" + fileName.toUtf8()), 0);
    QVERIFY(m_mailbox->operations().contains(uR"(MailItem#1 set HTMLBody ["<p><BR>file"])"_s));
}

void tst_MailRun::vanishedFileRunsWithDefaults()
{
    MailRun mailRun(m_directory->filePath(u"missing.vxm"_s), m_mailbox->factory());
    QCOMPARE(mailRun.run(), 0);
    QVERIFY(m_mailbox->operations().contains(uR"x(MailItem#1 set Subject ["(no subject)"])x"_s));
    QCOMPARE(m_mailbox->environment.drafts.size(), 1);
}

void tst_MailRun::debugRuleIsSet()
{
    const QLoggingCategory addressed("debug", QtWarningMsg);
    QCOMPARE(run("DEBUG=1"), 0);
    QVERIFY(addressed.isDebugEnabled());
    QCOMPARE(run("DEBUG=0"), 0);
    QVERIFY(!addressed.isDebugEnabled());
}

void tst_MailRun::linesOfARun()
{
    m_mailbox->scenario.version = u"16.0.13231.20126"_s;
    const QByteArray path = m_directory->filePath(u"mail.vxm"_s).toUtf8();
    QTest::ignoreMessage(QtDebugMsg, "Reading parameter from file " + path);
    QTest::ignoreMessage(QtDebugMsg, "Outlook Version found: 16.0.13231.20126");
    QTest::ignoreMessage(QtDebugMsg, "Adding Recipient [t]");
    QTest::ignoreMessage(QtDebugMsg, "Adding Copy Recipient [c]");
    QTest::ignoreMessage(QtDebugMsg, "Adding Blind Copy Recipient [b]");
    QTest::ignoreMessage(QtDebugMsg, "Adding Reply Recipient [r]");
    QTest::ignoreMessage(QtDebugMsg, "Adding Subject [s]");
    QTest::ignoreMessage(QtDebugMsg, "Adding Body [x]");
    QTest::ignoreMessage(QtDebugMsg, "Displaying mail");
    QTest::ignoreMessage(QtDebugMsg, QRegularExpression(u"^run\\(\\) elapsed = [0-9.]+ ms$"_s));
    QTest::ignoreMessage(QtDebugMsg, "Logoff()");
    QCOMPARE(run("TO1=t\nCC1=c\nBCC1=b\nREPLYTO1=r\nSUBJECT=s\nBODY=x"), 0);
}

QTEST_MAIN(tst_MailRun)
#include "tst_mailrun.moc"

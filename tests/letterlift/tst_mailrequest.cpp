#include "mailrequest.h"
#include "nofreefiles.h"
#include "testfile.h"
#include "unprivileged.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_MailRequest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void defaults();
    void flags_data();
    void flags();
    void priority_data();
    void priority();
    void fromAddress_data();
    void fromAddress();
    void lists_data();
    void lists();
    void subject_data();
    void subject();
    void accessorsReadCaseInsensitively();
    void missingAttachmentIsDropped();
    void attachmentPathsCountFromTheParameterFile();
    void attachmentGapEndsTheList();
    void attachmentTwiceIsOne();
    void attachmentMayBeDirectory();
    void absoluteAttachmentStaysAsWritten();
    void bodyFile_data();
    void bodyFile();
    void body_data();
    void body();
    void bodyFileInUtf16();
    void bodyFileInLatin1GoesThroughTheSystemEncoding();
    void missingBodyFile();
    void directoryAsBodyFile();
    void unreadableBodyFile();
    void failedBodyKeepsWhatWasGathered();
    void codeWithoutTextLeavesErrorMessageAlone();
    void bodyLeavesErrorMessageAlone();
    void bodyFileErrorText_data();
    void bodyFileErrorText();

private:
    [[nodiscard]] MailRequest request(const QByteArray &lines);
    void write(const QString &name, const QByteArray &bytes);

    std::unique_ptr<QTemporaryDir> m_directory;
};

void tst_MailRequest::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void tst_MailRequest::write(const QString &name, const QByteArray &bytes)
{
    writeTestFile(m_directory->filePath(name), bytes);
}

MailRequest tst_MailRequest::request(const QByteArray &lines)
{
    write(u"mail.vxm"_s, "[VEXAMAIL]\n" + lines + "\n");
    return MailRequest(m_directory->filePath(u"mail.vxm"_s));
}

void tst_MailRequest::defaults()
{
    const MailRequest mail = request("");
    QVERIFY(!mail.send());
    QVERIFY(!mail.debug());
    QVERIFY(!mail.htmlBody());
    QVERIFY(!mail.useSignature());
    QVERIFY(!mail.readReceipt());
    QVERIFY(!mail.deliveryReceipt());
    QCOMPARE(mail.priority(), 3);
    QCOMPARE(mail.fromAddress(), u""_s);
    QCOMPARE(mail.to(), QStringList());
    QCOMPARE(mail.cc(), QStringList());
    QCOMPARE(mail.bcc(), QStringList());
    QCOMPARE(mail.replyTo(), QStringList());
    QCOMPARE(mail.attachments(), QStringList());
    QCOMPARE(mail.subject(), u"(no subject)"_s);
    QCOMPARE(mail.newline(), u";"_s);
    QCOMPARE(mail.bodyFile(), u""_s);
    QString errorMessage;
    QCOMPARE(mail.body(errorMessage), u""_s);
    QCOMPARE(errorMessage, u""_s);
}

void tst_MailRequest::flags_data()
{
    using Flag = bool (MailRequest::*)() const;
    QTest::addColumn<QByteArray>("key");
    QTest::addColumn<Flag>("flag");

    QTest::newRow("SEND") << QByteArray("SEND") << Flag(&MailRequest::send);
    QTest::newRow("DEBUG") << QByteArray("DEBUG") << Flag(&MailRequest::debug);
    QTest::newRow("HTMLBODY") << QByteArray("HTMLBODY") << Flag(&MailRequest::htmlBody);
    QTest::newRow("USESIGNATURE") << QByteArray("USESIGNATURE") << Flag(&MailRequest::useSignature);
    QTest::newRow("READRECEIPT") << QByteArray("READRECEIPT") << Flag(&MailRequest::readReceipt);
    QTest::newRow("DELIVERYRECEIPT") << QByteArray("DELIVERYRECEIPT") << Flag(&MailRequest::deliveryReceipt);
}

void tst_MailRequest::flags()
{
    using Flag = bool (MailRequest::*)() const;
    QFETCH(const QByteArray, key);
    QFETCH(const Flag, flag);
    QVERIFY((request(key + "=1").*flag)());
    QVERIFY(!(request(key + "=0").*flag)());
    QVERIFY(!(request(key + "=yes").*flag)());
}

void tst_MailRequest::priority_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<int>("priority");

    QTest::newRow("1") << QByteArray("1") << 1;
    QTest::newRow("5") << QByteArray("5") << 5;
    QTest::newRow("9 reads as 5") << QByteArray("9") << 5;
    QTest::newRow("0 reads as 1") << QByteArray("0") << 1;
    QTest::newRow("negative reads as 1") << QByteArray("-7") << 1;
    QTest::newRow("no number reads as 1") << QByteArray("abc") << 1;
    QTest::newRow("empty reads as 1") << QByteArray("") << 1;
    QTest::newRow("hexadecimal") << QByteArray("0x2") << 2;
    QTest::newRow("octal 8 reads as 5") << QByteArray("010") << 5;
}

void tst_MailRequest::priority()
{
    QFETCH(const QByteArray, value);
    QTEST(request("PRIORITY=" + value).priority(), "priority");
}

void tst_MailRequest::fromAddress_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("address");

    QTest::newRow("FROMADDRESS") << QByteArray("FROMADDRESS=a") << u"a"_s;
    QTest::newRow("FROMADRESS") << QByteArray("FROMADRESS=x") << u"x"_s;
    QTest::newRow("both") << QByteArray("FROMADRESS=x\nFROMADDRESS=a") << u"a"_s;
    QTest::newRow("the first empty") << QByteArray("FROMADDRESS=\nFROMADRESS=x") << u"x"_s;
}

void tst_MailRequest::fromAddress()
{
    QFETCH(const QByteArray, lines);
    QTEST(request(lines).fromAddress(), "address");
}

void tst_MailRequest::lists_data()
{
    using List = QStringList (MailRequest::*)() const;
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<List>("list");
    QTest::addColumn<QStringList>("values");

    QTest::newRow("TO, exact duplicates go")
        << QByteArray("TO1=a\nTO2=a\nTO3=A") << List(&MailRequest::to) << QStringList{u"a"_s, u"A"_s};
    QTest::newRow("CC") << QByteArray("CC1=b\nCC2=a\nCC3=b") << List(&MailRequest::cc) << QStringList{u"b"_s, u"a"_s};
    QTest::newRow("BCC") << QByteArray("BCC1=a\nBCC2=a") << List(&MailRequest::bcc) << QStringList{u"a"_s};
    QTest::newRow("BCC isn't CC") << QByteArray("BCC1=a") << List(&MailRequest::cc) << QStringList{};
    QTest::newRow("REPLY-TO") << QByteArray("REPLY-TO1=a") << List(&MailRequest::replyTo) << QStringList{u"a"_s};
    QTest::newRow("both spellings, one entry")
        << QByteArray("REPLY-TO1=a\nREPLYTO1=a") << List(&MailRequest::replyTo) << QStringList{u"a"_s};
    QTest::newRow("both spellings, order") << QByteArray("REPLYTO1=b\nREPLY-TO1=a\nREPLY-TO2=c")
                                           << List(&MailRequest::replyTo) << QStringList{u"a"_s, u"c"_s, u"b"_s};
    QTest::newRow("each spelling has its own numbers")
        << QByteArray("REPLY-TO1=a\nREPLYTO2=b") << List(&MailRequest::replyTo) << QStringList{u"a"_s};
}

void tst_MailRequest::lists()
{
    using List = QStringList (MailRequest::*)() const;
    QFETCH(const QByteArray, lines);
    QFETCH(const List, list);
    QTEST((request(lines).*list)(), "values");
}

void tst_MailRequest::subject_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QString>("subject");

    QTest::newRow("given") << QByteArray("SUBJECT=Quarterly figures") << u"Quarterly figures"_s;
    QTest::newRow("empty") << QByteArray("SUBJECT=") << u""_s;
    QTest::newRow("absent") << QByteArray("") << u"(no subject)"_s;
}

void tst_MailRequest::subject()
{
    QFETCH(const QByteArray, lines);
    QTEST(request(lines).subject(), "subject");
}

void tst_MailRequest::accessorsReadCaseInsensitively()
{
    const MailRequest mail = request("send=J\nto1=a\nreply-to1=b\nSubject=s");
    QVERIFY(mail.send());
    QCOMPARE(mail.to(), QStringList{u"a"_s});
    QCOMPARE(mail.replyTo(), QStringList{u"b"_s});
    QCOMPARE(mail.subject(), u"s"_s);
}

void tst_MailRequest::missingAttachmentIsDropped()
{
    write(u"present.pdf"_s, "x");
    QCOMPARE(request("ATTACHMENT1=missing.pdf\nATTACHMENT2=present.pdf").attachments(),
             QStringList{m_directory->filePath(u"present.pdf"_s)});
}

void tst_MailRequest::attachmentPathsCountFromTheParameterFile()
{
    QVERIFY(QDir(m_directory->path()).mkdir(u"sub"_s));
    write(u"sub/a.txt"_s, "x");
    QCOMPARE(request("ATTACHMENT1=sub/a.txt").attachments(), QStringList{m_directory->filePath(u"sub/a.txt"_s)});
    QCOMPARE(request("ATTACHMENT1=sub\\a.txt").attachments(), QStringList{m_directory->filePath(u"sub/a.txt"_s)});
}

void tst_MailRequest::attachmentGapEndsTheList()
{
    write(u"a"_s, "x");
    write(u"b"_s, "x");
    QCOMPARE(request("ATTACHMENT1=a\nATTACHMENT3=b").attachments(), QStringList{m_directory->filePath(u"a"_s)});
}

void tst_MailRequest::attachmentTwiceIsOne()
{
    write(u"a"_s, "x");
    const QByteArray absolute = m_directory->filePath(u"a"_s).toUtf8();
    QCOMPARE(request("ATTACHMENT1=a\nATTACHMENT2=" + absolute).attachments(),
             QStringList{m_directory->filePath(u"a"_s)});
}

void tst_MailRequest::attachmentMayBeDirectory()
{
    QVERIFY(QDir(m_directory->path()).mkdir(u"sub"_s));
    QCOMPARE(request("ATTACHMENT1=sub").attachments(), QStringList{m_directory->filePath(u"sub"_s)});
}

void tst_MailRequest::absoluteAttachmentStaysAsWritten()
{
    write(u"a"_s, "x");
    const QString path = m_directory->path() + u"/./a"_s;
    QCOMPARE(request("ATTACHMENT1=" + path.toUtf8()).attachments(), QStringList{path});
}

void tst_MailRequest::bodyFile_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::addColumn<QString>("path");

    QTest::newRow("relative, existing or not") << QByteArray("no/such.txt") << u"{dir}/no/such.txt"_s;
    QTest::newRow("relative with backslash") << QByteArray("no\\such.txt") << u"{dir}/no/such.txt"_s;
    QTest::newRow("absolute") << QByteArray("{dir}/../x.txt") << u"{dir}/../x.txt"_s;
    QTest::newRow("empty") << QByteArray("") << u""_s;
}

void tst_MailRequest::bodyFile()
{
    QFETCH(QByteArray, value);
    QFETCH(QString, path);
    const MailRequest mail = request("BODYFILE=" + value.replace("{dir}", m_directory->path().toUtf8()));
    QCOMPARE(mail.bodyFile(), path.replace(u"{dir}"_s, m_directory->path()));
}

void tst_MailRequest::body_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<QString>("plain");
    QTest::addColumn<QString>("html");

    const QByteArray none;
    QTest::newRow("default separator") << QByteArray("BODY=line one;line two") << none << u"line one\nline two"_s
                                       << u"line one<BR>line two"_s;
    QTest::newRow("empty NEWLINE replaces nothing") << QByteArray("BODY=a;b\nNEWLINE=") << none << u"a;b"_s << u"a;b"_s;
    QTest::newRow("long NEWLINE") << QByteArray("BODY=a||b;c||d\nNEWLINE=||") << none << u"a\nb;c\nd"_s
                                  << u"a<BR>b;c<BR>d"_s;
    QTest::newRow("NEWLINE is case-sensitive")
        << QByteArray("BODY=a#n#b#N#c\nNEWLINE=#N#") << none << u"a#n#b\nc"_s << u"a#n#b<BR>c"_s;
    QTest::newRow("BODYZ alone has no leading separator")
        << QByteArray("BODYZ1=a\nBODYZ2=b") << none << u"a\nb"_s << u"a<BR>b"_s;
    QTest::newRow("BODYZ behind BODY") << QByteArray("BODY=x;y\nBODYZ1=a;b") << none << u"x\ny\na;b"_s
                                       << u"x<BR>y<BR>a;b"_s;
    QTest::newRow("body file behind both") << QByteArray("BODY=x\nBODYZ1=a\nBODYFILE=body.txt")
                                           << QByteArray("f;1\nf2\n") << u"x\na\nf;1\nf2"_s << u"x<BR>a<BR>f;1<BR>f2"_s;
    QTest::newRow("body file with CRLF") << QByteArray("BODYFILE=body.txt") << QByteArray("a\r\nb\r\n") << u"a\nb"_s
                                         << u"a<BR>b"_s;
    QTest::newRow("empty lines at the front leave no trace")
        << QByteArray("BODYFILE=body.txt") << QByteArray("\n\na\n\nb\n") << u"a\n\nb"_s << u"a<BR><BR>b"_s;
    QTest::newRow("empty lines at the front, text before")
        << QByteArray("BODY=x\nBODYFILE=body.txt") << QByteArray("\na\n") << u"x\n\na"_s << u"x<BR><BR>a"_s;
    QTest::newRow("empty lines at the end stay")
        << QByteArray("BODYFILE=body.txt") << QByteArray("a\n\n\n") << u"a\n\n"_s << u"a<BR><BR>"_s;
    QTest::newRow("nothing is escaped") << QByteArray("BODY=<b>&amp\nBODYFILE=body.txt") << QByteArray("x < y\n")
                                        << u"<b>&amp\nx < y"_s << u"<b>&amp<BR>x < y"_s;
    QTest::newRow("empty body file") << QByteArray("BODY=x\nBODYFILE=body.txt") << QByteArray("") << u"x"_s << u"x"_s;
}

void tst_MailRequest::body()
{
    QFETCH(const QByteArray, lines);
    QFETCH(const QByteArray, file);
    write(u"body.txt"_s, file);
    QString errorMessage;
    QTEST(request(lines).body(errorMessage), "plain");
    QTEST(request("HTMLBODY=1\n" + lines).body(errorMessage), "html");
    QCOMPARE(errorMessage, u""_s);
}

void tst_MailRequest::bodyFileInUtf16()
{
    write(u"body.txt"_s, QByteArray("\xff\xfe\xe4\0\n\0b\0", 8));
    QString errorMessage;
    QCOMPARE(request("BODYFILE=body.txt").body(errorMessage), u"ä\nb"_s);
}

void tst_MailRequest::bodyFileInLatin1GoesThroughTheSystemEncoding()
{
    write(u"body.txt"_s, "\xe4x");
    QString errorMessage;
    QCOMPARE(request("BODYFILE=body.txt").body(errorMessage), QString::fromLocal8Bit("\xe4x"));
}

void tst_MailRequest::missingBodyFile()
{
    QString errorMessage;
    QCOMPARE(request("BODY=x\nBODYFILE=missing.txt").body(errorMessage), u"x"_s);
    QCOMPARE(errorMessage, u"Couldn't find body file "_s + m_directory->filePath(u"missing.txt"_s));
}

void tst_MailRequest::directoryAsBodyFile()
{
    QVERIFY(QDir(m_directory->path()).mkdir(u"sub"_s));
    QFile directory(m_directory->filePath(u"sub"_s));
    QVERIFY(!directory.open(QIODevice::ReadOnly));
    QString errorMessage;
    QCOMPARE(request("BODY=x\nBODYFILE=sub").body(errorMessage), u"x"_s);
    QCOMPARE(errorMessage, MailRequest::bodyFileErrorText(directory.error(), directory.fileName()));
}

void tst_MailRequest::unreadableBodyFile()
{
    if (!Unprivileged::isPossible())
        QSKIP("File permissions can't be taken from this process here");
    write(u"body.txt"_s, "x");
    const MailRequest mail = request("BODYFILE=body.txt");
    QFile(m_directory->filePath(u"body.txt"_s)).setPermissions({});
    QFile::setPermissions(m_directory->path(),
                          QFile::ReadOther | QFile::ExeOther | QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    const Unprivileged user;
    // QFile::open() has had OpenError for a refused file and not PermissionsError; whatever it has selects the
    // text.
    QFile file(m_directory->filePath(u"body.txt"_s));
    QVERIFY(!file.open(QIODevice::ReadOnly));
    QString errorMessage;
    QCOMPARE(mail.body(errorMessage), u""_s);
    QVERIFY(!errorMessage.isEmpty());
    QCOMPARE(errorMessage, MailRequest::bodyFileErrorText(file.error(), file.fileName()));
}

void tst_MailRequest::failedBodyKeepsWhatWasGathered()
{
    QString errorMessage;
    QCOMPARE(request("BODY=x\nBODYZ1=y\nBODYFILE=missing.txt").body(errorMessage), u"x\ny"_s);
}

void tst_MailRequest::codeWithoutTextLeavesErrorMessageAlone()
{
    write(u"body.txt"_s, "never read");
    const MailRequest mail = request("BODY=x\nBODYZ1=y\nBODYFILE=body.txt");
    QString errorMessage = u"from before"_s;
    QString text;
    {
        const NoFreeFiles limit;
        if (!limit.isActive())
            QSKIP("The number of open files can't be limited here");
        text = mail.body(errorMessage);
    }
    QCOMPARE(text, u"x\ny"_s);
    QCOMPARE(errorMessage, u"from before"_s);
}

void tst_MailRequest::bodyLeavesErrorMessageAlone()
{
    QString errorMessage = u"from before"_s;
    QCOMPARE(request("BODY=x").body(errorMessage), u"x"_s);
    QCOMPARE(errorMessage, u"from before"_s);
}

void tst_MailRequest::bodyFileErrorText_data()
{
    QTest::addColumn<QFileDevice::FileError>("error");
    QTest::addColumn<QString>("text");

    QTest::newRow("open") << QFileDevice::OpenError << u"Couldn't find body file path"_s;
    QTest::newRow("read") << QFileDevice::ReadError << u"Couldn't read body file path"_s;
    QTest::newRow("permissions") << QFileDevice::PermissionsError << u"Couldn't access body file path"_s;
    for (const QFileDevice::FileError other :
         {QFileDevice::NoError, QFileDevice::WriteError, QFileDevice::FatalError, QFileDevice::ResourceError,
          QFileDevice::AbortError, QFileDevice::TimeOutError, QFileDevice::UnspecifiedError, QFileDevice::RemoveError,
          QFileDevice::RenameError, QFileDevice::PositionError, QFileDevice::ResizeError, QFileDevice::CopyError})
        QTest::addRow("no text for %d", other) << other << u""_s;
}

void tst_MailRequest::bodyFileErrorText()
{
    QFETCH(const QFileDevice::FileError, error);
    QTEST(MailRequest::bodyFileErrorText(error, u"path"_s), "text");
}

QTEST_GUILESS_MAIN(tst_MailRequest)
#include "tst_mailrequest.moc"

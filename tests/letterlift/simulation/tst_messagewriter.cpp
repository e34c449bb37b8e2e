// The messages are read back by Python's email package, which shares no code with the library that writes them.

#include "simulation/mailmessage.h"
#include "simulation/messagewriter.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

class tst_MessageWriter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void linesEndInCrLf();
    void plainText();
    void htmlText();
    void headers_data();
    void headers();
    void originator_data();
    void originator();
    void receipts();
    void noReceipts();
    void addresses_data();
    void addresses();
    void namesWithoutAddress_data();
    void namesWithoutAddress();
    void subjects_data();
    void subjects();
    void attachments_data();
    void attachments();
    void bodies_data();
    void bodies();
    void largeBody();

private:
    [[nodiscard]] QJsonObject readBack(const MailMessage &message);
    [[nodiscard]] static MailMessage simpleMessage();
};

namespace {

constexpr auto reader = R"(
import email, email.policy, json, sys
message = email.message_from_bytes(sys.stdin.buffer.read(), policy=email.policy.default)
body = message.get_body(preferencelist=("html", "plain"))
defects = [str(defect) for part in message.walk() for defect in part.defects]
print(json.dumps({
    "headers": {name.lower(): str(value) for name, value in message.items()},
    "addresses": {name: [[a.display_name, a.addr_spec] for a in message[name].addresses]
                  for name in ("From", "Sender", "To", "Cc", "Bcc", "Reply-To") if message[name] and name != "Sender"},
    "groups": {name: [g.display_name for g in message[name].groups] for name in ("To", "Cc", "Bcc") if message[name]},
    "type": body.get_content_type(),
    "charset": body.get_content_charset(),
    "body": body.get_content(),
    "attachments": [[part.get_filename(), part.get_content_type(), part.get_payload(decode=True).hex()]
                    for part in message.iter_attachments()],
    "defects": defects}))
)";

} // namespace

MailMessage tst_MessageWriter::simpleMessage()
{
    MailMessage message;
    message.from = {u"Robin Example"_s, u"robin@example.com"_s};
    message.to = {{u"a@example.com"_s, {}}};
    message.subject = u"s"_s;
    message.body = u"text"_s;
    return message;
}

QJsonObject tst_MessageWriter::readBack(const MailMessage &message)
{
    QProcess python;
    python.start(u"python3"_s, {u"-c"_s, QString::fromLatin1(reader)});
    python.write(writeMessage(message));
    python.closeWriteChannel();
    if (!python.waitForFinished() || python.exitCode() != 0)
        qFatal("Python can't read the message: %s", python.readAllStandardError().constData());
    const QJsonObject result = QJsonDocument::fromJson(python.readAllStandardOutput()).object();
    if (!result[u"defects"].toArray().isEmpty())
        qFatal("Defects in the message: %s", QJsonDocument(result[u"defects"].toArray()).toJson().constData());
    return result;
}

void tst_MessageWriter::initTestCase()
{
    // Wine starts no program of the system below with pipes to it. There the acceptance cases read the messages.
    if (QStandardPaths::findExecutable(u"python3"_s).isEmpty())
        QSKIP("There is no Python here to read the messages with");
}

void tst_MessageWriter::linesEndInCrLf()
{
    MailMessage message = simpleMessage();
    message.body = u"one\ntwo\r\nthree"_s;
    message.attachments = {{u"a.bin"_s, QByteArray(500, 'x')}};
    const QByteArray bytes = writeMessage(message);
    QVERIFY(bytes.count("\r\n") > 20);
    QCOMPARE(bytes.count('\n'), bytes.count("\r\n"));
    QCOMPARE(bytes.count('\r'), bytes.count("\r\n"));
}

void tst_MessageWriter::plainText()
{
    const QJsonObject message = readBack(simpleMessage());
    QCOMPARE(message[u"type"].toString(), u"text/plain"_s);
    QCOMPARE(message[u"charset"].toString(), u"utf-8"_s);
    QCOMPARE(message[u"body"].toString(), u"text\r\n"_s);
    QVERIFY(message[u"attachments"].toArray().isEmpty());
    const QJsonObject headers = message[u"headers"].toObject();
    QVERIFY(headers.contains(u"date"_s));
    QVERIFY(headers.contains(u"message-id"_s));
    QCOMPARE(headers[u"mime-version"].toString(), u"1.0"_s);
    QVERIFY(!headers.contains(u"x-unsent"_s));
}

void tst_MessageWriter::htmlText()
{
    MailMessage mail = simpleMessage();
    mail.html = true;
    mail.body = u"<p>Größe</p>"_s;
    const QJsonObject message = readBack(mail);
    QCOMPARE(message[u"type"].toString(), u"text/html"_s);
    QCOMPARE(message[u"body"].toString(), u"<p>Größe</p>\r\n"_s);
}

void tst_MessageWriter::headers_data()
{
    QTest::addColumn<Importance>("importance");
    QTest::addColumn<bool>("draft");
    QTest::addColumn<QString>("importanceHeader");
    QTest::addColumn<QString>("priorityHeader");

    QTest::newRow("high draft") << Importance::High << true << u"high"_s << u"1"_s;
    QTest::newRow("normal") << Importance::Normal << false << u"normal"_s << u"3"_s;
    QTest::newRow("low") << Importance::Low << false << u"low"_s << u"5"_s;
}

void tst_MessageWriter::headers()
{
    QFETCH(const Importance, importance);
    QFETCH(const bool, draft);
    MailMessage mail = simpleMessage();
    mail.importance = importance;
    mail.draft = draft;
    const QJsonObject headers = readBack(mail)[u"headers"].toObject();
    QTEST(headers[u"importance"].toString(), "importanceHeader");
    QTEST(headers[u"x-priority"].toString(), "priorityHeader");
    QCOMPARE(headers.contains(u"x-unsent"_s), draft);
    if (draft)
        QCOMPARE(headers[u"x-unsent"].toString(), u"1"_s);
}

void tst_MessageWriter::originator_data()
{
    QTest::addColumn<MessageAddress>("from");
    QTest::addColumn<MessageAddress>("sender");
    QTest::addColumn<QString>("fromHeader");
    QTest::addColumn<QString>("senderHeader");

    const MessageAddress account{u"Robin Example"_s, u"robin@example.com"_s};
    QTest::newRow("account") << account << MessageAddress() << u"Robin Example <robin@example.com>"_s << u""_s;
    QTest::newRow("on behalf") << MessageAddress{u"chief@example.com"_s, {}} << account << u"chief@example.com"_s
                               << u"Robin Example <robin@example.com>"_s;
    QTest::newRow("on behalf, account without address")
        << MessageAddress{u"chief@example.com"_s, {}} << MessageAddress{u"robin@example.com"_s, {}}
        << u"chief@example.com"_s << u"robin@example.com"_s;
    QTest::newRow("no account") << MessageAddress() << MessageAddress() << u"Simulated Outlook <outlook@localhost>"_s
                                << u""_s;
}

void tst_MessageWriter::originator()
{
    QFETCH(const MessageAddress, from);
    QFETCH(const MessageAddress, sender);
    MailMessage mail = simpleMessage();
    mail.from = from;
    mail.sender = sender;
    const QJsonObject headers = readBack(mail)[u"headers"].toObject();
    QTEST(headers[u"from"].toString(), "fromHeader");
    QTEST(headers[u"sender"].toString(), "senderHeader");
}

void tst_MessageWriter::receipts()
{
    MailMessage mail = simpleMessage();
    mail.readReceipt = true;
    mail.deliveryReport = true;
    const QJsonObject headers = readBack(mail)[u"headers"].toObject();
    QCOMPARE(headers[u"disposition-notification-to"].toString(), u"Robin Example <robin@example.com>"_s);
    QCOMPARE(headers[u"return-receipt-to"].toString(), u"Robin Example <robin@example.com>"_s);
}

void tst_MessageWriter::noReceipts()
{
    const QJsonObject headers = readBack(simpleMessage())[u"headers"].toObject();
    QVERIFY(!headers.contains(u"disposition-notification-to"_s));
    QVERIFY(!headers.contains(u"return-receipt-to"_s));
}

void tst_MessageWriter::addresses_data()
{
    QTest::addColumn<MessageAddress>("address");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("addrSpec");

    QTest::newRow("address alone") << MessageAddress{u"a@example.com"_s, {}} << u""_s << u"a@example.com"_s;
    QTest::newRow("name and address") << MessageAddress{u"Kim Sample <kim@example.com>"_s, {}} << u"Kim Sample"_s
                                      << u"kim@example.com"_s;
    QTest::newRow("resolved name") << MessageAddress{u"Kim"_s, u"kim@example.com"_s} << u"Kim"_s
                                   << u"kim@example.com"_s;
    QTest::newRow("resolved name beyond ASCII")
        << MessageAddress{u"Zażółć Größe"_s, u"z@example.com"_s} << u"Zażółć Größe"_s << u"z@example.com"_s;
    QTest::newRow("resolved name with comma")
        << MessageAddress{u"Sample, Kim"_s, u"kim@example.com"_s} << u"Sample, Kim"_s << u"kim@example.com"_s;
    QTest::newRow("quoted name with @") << MessageAddress{u"\"Kim @ home\" <kim@example.com>"_s, {}} << u"Kim @ home"_s
                                        << u"kim@example.com"_s;
    QTest::newRow("blanks around") << MessageAddress{u" a@example.com "_s, {}} << u""_s << u"a@example.com"_s;
    QTest::newRow("resolved to itself") << MessageAddress{u"a@example.com"_s, u"a@example.com"_s} << u""_s
                                        << u"a@example.com"_s;
}

void tst_MessageWriter::addresses()
{
    QFETCH(const MessageAddress, address);
    QFETCH(const QString, name);
    QFETCH(const QString, addrSpec);
    MailMessage mail = simpleMessage();
    mail.to = {address};
    mail.cc = {address, {u"second@example.com"_s, {}}};
    mail.bcc = {address};
    mail.replyTo = {address};
    const QJsonObject lists = readBack(mail)[u"addresses"].toObject();
    for (const QString &header : {u"To"_s, u"Cc"_s, u"Bcc"_s, u"Reply-To"_s}) {
        const QJsonArray first = lists[header].toArray().at(0).toArray();
        QCOMPARE(first.at(0).toString(), name);
        QCOMPARE(first.at(1).toString(), addrSpec);
    }
    QCOMPARE(lists[u"Cc"].toArray().size(), 2);
}

void tst_MessageWriter::namesWithoutAddress_data()
{
    QTest::addColumn<QString>("text");

    QTest::newRow("name") << u"Piosespa"_s;
    QTest::newRow("name with comma") << u"Sample, Kim"_s;
    QTest::newRow("name beyond ASCII") << u"Größe"_s;
    QTest::newRow("two @") << u"x@y@z"_s;
    QTest::newRow("address and more") << u"a@example.com garbage"_s;
    QTest::newRow("name, address and more") << u"Kim <kim@example.com> tail"_s;
    QTest::newRow("open bracket") << u"<a@example.com"_s;
    QTest::newRow("two addresses") << u"a@example.com, b@example.com"_s;
    QTest::newRow("no domain") << u"a@"_s;
    QTest::newRow("no local part") << u"@example.com"_s;
}

void tst_MessageWriter::namesWithoutAddress()
{
    QFETCH(const QString, text);
    MailMessage mail = simpleMessage();
    mail.to = {{text, {}}};
    const QJsonObject message = readBack(mail);
    QCOMPARE(message[u"addresses"][u"To"].toArray(), QJsonArray());
    QCOMPARE(message[u"groups"][u"To"].toArray(), QJsonArray{text});
}

void tst_MessageWriter::subjects_data()
{
    QTest::addColumn<QString>("subject");

    QTest::newRow("ASCII") << u"Quarterly figures"_s;
    QTest::newRow("empty") << u""_s;
    QTest::newRow("Latin") << u"Größe und Übermaß"_s;
    QTest::newRow("Greek") << u"Ωμέγα"_s;
    QTest::newRow("emoji") << u"Done 😀"_s;
    QTest::newRow("NUL becomes the replacement character") << QString(u"ab\0cd"_s);
    QTest::newRow("long") << u"long words and more "_s.repeated(30).trimmed();
    QTest::newRow("long beyond ASCII") << u"größe "_s.repeated(60).trimmed();
}

void tst_MessageWriter::subjects()
{
    QFETCH(QString, subject);
    MailMessage mail = simpleMessage();
    mail.subject = subject;
    const QJsonObject headers = readBack(mail)[u"headers"].toObject();
    QVERIFY(headers.contains(u"subject"_s));
    QCOMPARE(headers[u"subject"].toString(), subject.replace(QChar(u'\0'), QChar(QChar::ReplacementCharacter)));
}

void tst_MessageWriter::attachments_data()
{
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("type");

    QTest::newRow("pdf") << u"figures.pdf"_s << QByteArray("%PDF-1.4\n") << u"application/pdf"_s;
    QTest::newRow("csv, beyond ASCII") << u"Übersicht März.csv"_s << QByteArray("a;b\n") << u"text/csv"_s;
    QTest::newRow("unknown, all bytes") << u"data.unknownsuffix"_s << QByteArray("\0\1\2\xff\r\n\n\r", 8)
                                        << u"application/octet-stream"_s;
    QTest::newRow("empty") << u"empty.pdf"_s << QByteArray() << u"application/pdf"_s;
    QTest::newRow("blanks and quotes") << u"a \"b\" c.pdf"_s << QByteArray("x") << u"application/pdf"_s;
    QTest::newRow("long name") << u"größe "_s.repeated(20) + u".pdf"_s << QByteArray("x") << u"application/pdf"_s;
}

void tst_MessageWriter::attachments()
{
    QFETCH(const QString, fileName);
    QFETCH(const QByteArray, content);
    QFETCH(const QString, type);
    MailMessage mail = simpleMessage();
    mail.attachments = {{fileName, content}, {u"second.txt"_s, "second"}};
    const QJsonObject message = readBack(mail);
    QCOMPARE(message[u"body"].toString(), u"text"_s);
    const QJsonArray list = message[u"attachments"].toArray();
    QCOMPARE(list.size(), 2);
    QCOMPARE(list.at(0).toArray().at(0).toString(), fileName);
    QCOMPARE(list.at(0).toArray().at(1).toString(), type);
    QCOMPARE(list.at(0).toArray().at(2).toString(), QString::fromLatin1(content.toHex()));
    QCOMPARE(list.at(1).toArray().at(0).toString(), u"second.txt"_s);
}

void tst_MessageWriter::bodies_data()
{
    QTest::addColumn<QString>("body");
    QTest::addColumn<QString>("alone"); // as read from a message without attachments: its last line has a line end

    const auto add = [](const char *name, const QString &body, const QString &alone) {
        QTest::newRow(name) << body << alone;
    };
    add("empty", u""_s, u""_s);
    add("one line end", u"\n"_s, u"\n"_s);
    add("no line end at the end", u"one\ntwo"_s, u"one\ntwo\n"_s);
    add("empty lines", u"\n\none\n\n\ntwo\n\n"_s, u"\n\none\n\n\ntwo\n\n"_s);
    add("dots and From", u".\nFrom here\n..\n"_s, u".\nFrom here\n..\n"_s);
    add("looks like a boundary", u"--\n-- \n--=-\n"_s, u"--\n-- \n--=-\n"_s);
    add("white space at line ends", u"a \nb\t\n "_s, u"a \nb\t\n "_s);
    add("long line", u"word "_s.repeated(400), u"word "_s.repeated(400));
    add("beyond ASCII", u"Größe Ωμέγα 😀\n"_s, u"Größe Ωμέγα 😀\n"_s);
    add("equals signs", u"a=b=3D\n"_s, u"a=b=3D\n"_s);
}

void tst_MessageWriter::bodies()
{
    QFETCH(const QString, body);
    MailMessage mail = simpleMessage();
    mail.body = body;
    QTEST(readBack(mail)[u"body"].toString().replace(u"\r\n"_s, u"\n"_s), "alone");
    mail.attachments = {{u"a.pdf"_s, "x"}};
    QCOMPARE(readBack(mail)[u"body"].toString().replace(u"\r\n"_s, u"\n"_s), body);
}

void tst_MessageWriter::largeBody()
{
    MailMessage mail = simpleMessage();
    mail.body = u"Größe und Gewicht\n"_s.repeated(50'000);
    QCOMPARE(readBack(mail)[u"body"].toString().replace(u"\r\n"_s, u"\n"_s), mail.body);
}

QTEST_GUILESS_MAIN(tst_MessageWriter)
#include "tst_messagewriter.moc"

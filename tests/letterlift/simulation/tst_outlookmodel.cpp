#include "simulation/outlookmodel.h"
#include "testmailbox.h"

#include <QTest>

using namespace Qt::Literals::StringLiterals;

using Access = OutlookModel::Access;

class tst_OutlookModel : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void members_data();
    void members();
    void sameObjectHasSameNumber();
    void newObjectsHaveNewNumbers();
    void unlistedAddressResolvesAsSmtp();
    void unresolvedAddressHasNoEntry();
    void recipientHasNoEntryBeforeItIsResolved();
    void exchangeAddressHasUserWithAlias();
    void smtpAddressHasNoExchangeUser();
    void indexOutOfBounds_data();
    void indexOutOfBounds();
    void typeMismatch_data();
    void typeMismatch();
    void methodIsNoProperty();
    void signatureAppearsWithTheInspector_data();
    void signatureAppearsWithTheInspector();
    void signatureAppearsOnce();
    void writtenTextKeepsTheSignatureAway();
    void displayOpensTheItem();
    void signatureInOneFormServesBoth();
    void bodyFormatConverts();
    void htmlBodyMakesHtml();
    void sendNeedsRecipients();
    void sendRefusesUnknownNames();
    void sentItemIsGone();
    void deletedItemIsGone();
    void displayedMailIsKeptUpToDate();
    void notDisplayedMailIsNotSaved();
    void messageHoldsWhatTheItemHas();
    void originator_data();
    void originator();
    void missingAttachmentRaisesException();
    void attachmentHasNoWritableType();
    void insertFileIntoPlainText();
    void insertMissingFileRaisesException();

private:
    ModelResult call(const ObjectReference &object, const QString &member, const QVariantList &arguments = {});
    ObjectReference query(const ObjectReference &object, const QString &member, const QVariantList &arguments = {});
    QVariant get(const ObjectReference &object, const QString &member);
    ModelResult set(const ObjectReference &object, const QString &member, const QVariant &value);
    ObjectReference newMail();
    ObjectReference session();
    ObjectReference resolvedRecipient(const QString &text);
    ObjectReference addRecipient(const ObjectReference &mail, const QString &address, int type);

    Scenario m_scenario;
    std::unique_ptr<MemoryEnvironment> m_environment;
    std::unique_ptr<OutlookModel> m_model;
};

void tst_OutlookModel::init()
{
    m_scenario = Scenario();
    m_scenario.plainSignature = u"plain"_s;
    m_scenario.htmlSignature = u"<p>html</p>"_s;
    m_environment = std::make_unique<MemoryEnvironment>();
    m_model = std::make_unique<OutlookModel>(m_scenario, *m_environment);
}

ModelResult tst_OutlookModel::call(const ObjectReference &object, const QString &member, const QVariantList &arguments)
{
    return m_model->perform(object, Access::Call, member, arguments);
}

ObjectReference tst_OutlookModel::query(const ObjectReference &object, const QString &member,
                                        const QVariantList &arguments)
{
    return call(object, member, arguments).value.value<ObjectReference>();
}

QVariant tst_OutlookModel::get(const ObjectReference &object, const QString &member)
{
    return m_model->perform(object, Access::Get, member, {}).value;
}

ModelResult tst_OutlookModel::set(const ObjectReference &object, const QString &member, const QVariant &value)
{
    return m_model->perform(object, Access::Set, member, {value});
}

ObjectReference tst_OutlookModel::newMail()
{
    return query(m_model->application(), u"CreateItem"_s, {u"olMailItem"_s});
}

ObjectReference tst_OutlookModel::session()
{
    return query(m_model->application(), u"Session"_s);
}

ObjectReference tst_OutlookModel::resolvedRecipient(const QString &text)
{
    const ObjectReference recipient = query(session(), u"CreateRecipient"_s, {text});
    if (!call(recipient, u"Resolve"_s).value.toBool())
        qFatal("The recipient isn't resolved");
    return recipient;
}

ObjectReference tst_OutlookModel::addRecipient(const ObjectReference &mail, const QString &address, int type)
{
    const ObjectReference element = query(query(mail, u"Recipients"_s), u"Add"_s, {address});
    set(element, u"Type"_s, type);
    return element;
}

void tst_OutlookModel::members_data()
{
    QTest::addColumn<ObjectKind>("kind");
    QTest::addColumn<QString>("signature");

    const auto add = [](ObjectKind kind, std::initializer_list<const char *> signatures) {
        for (const char *const signature : signatures)
            QTest::addRow("%s.%s", qPrintable(objectKindName(kind)), signature)
                << kind << QString::fromLatin1(signature);
    };
    using enum ObjectKind;
    add(Application, {"Version", "Session", "CreateItem(OlItemType)"});
    add(Session, {"Logon()", "Logoff()", "CreateRecipient(QString)", "GetGlobalAddressList()", "Accounts"});
    add(Accounts, {"Count", "Item(QVariant)"});
    add(Account, {"DisplayName", "SmtpAddress"});
    add(Recipient, {"Resolve()", "AddressEntry()"});
    add(AddressList, {"AddressEntries"});
    add(AddressEntries, {"Count", "Item(QVariant)"});
    add(AddressEntry, {"Type", "GetExchangeUser()"});
    add(ExchangeUser, {"PrimarySmtpAddress", "Alias"});
    add(MailItem, {"Display()", "Send()", "Delete()", "GetInspector()", "Subject", "Importance", "ReadReceiptRequested",
                   "OriginatorDeliveryReportRequested", "BodyFormat", "Body", "HTMLBody", "SendUsingAccount",
                   "SentOnBehalfOfName", "Recipients", "ReplyRecipients", "Attachments"});
    add(Recipients, {"Add(const QVariant&)"});
    add(ReplyRecipients, {"Add(const QVariant&)"});
    add(Attachments, {"Add(const QVariant&)"});
    add(Element, {"Type"});
    add(Inspector, {"WordEditor()"});
    add(Document, {"Application()"});
    add(WordApplication, {"Selection()"});
    add(Selection, {"InsertFile(QString, QVariant&, QVariant&, QVariant&, QVariant&)"});
}

void tst_OutlookModel::members()
{
    QFETCH(const ObjectKind, kind);
    QFETCH(const QString, signature);
    QCOMPARE(OutlookModel::memberSignature(kind, signature.left(signature.indexOf(u'('))), signature);
    QCOMPARE(OutlookModel::memberSignature(kind, u"NoSuchMember"_s), u""_s);
}

void tst_OutlookModel::sameObjectHasSameNumber()
{
    QCOMPARE(session(), session());
    const ObjectReference mail = newMail();
    QCOMPARE(query(mail, u"Recipients"_s), query(mail, u"Recipients"_s));
    QCOMPARE(query(mail, u"GetInspector"_s), query(mail, u"GetInspector"_s));
}

void tst_OutlookModel::newObjectsHaveNewNumbers()
{
    QCOMPARE(newMail().toString(), u"MailItem#1"_s);
    const ObjectReference second = newMail();
    QCOMPARE(second.toString(), u"MailItem#2"_s);
    QCOMPARE(addRecipient(second, u"a"_s, 1).toString(), u"Element#1"_s);
    QCOMPARE(addRecipient(second, u"a"_s, 1).toString(), u"Element#2"_s);
    QCOMPARE(query(session(), u"CreateRecipient"_s, {u"a"_s}).number, 1);
    QCOMPARE(query(session(), u"CreateRecipient"_s, {u"a"_s}).number, 2);
}

void tst_OutlookModel::unlistedAddressResolvesAsSmtp()
{
    const ObjectReference recipient = query(session(), u"CreateRecipient"_s, {u"x@example.com"_s});
    QCOMPARE(call(recipient, u"Resolve"_s).value, QVariant(true));
    QCOMPARE(get(query(recipient, u"AddressEntry"_s), u"Type"_s), QVariant(u"SMTP"_s));
}

void tst_OutlookModel::unresolvedAddressHasNoEntry()
{
    m_scenario.addresses.insert(u"x"_s, {false, u"SMTP"_s, {}});
    const ObjectReference recipient = query(session(), u"CreateRecipient"_s, {u"x"_s});
    QCOMPARE(call(recipient, u"Resolve"_s).value, QVariant(false));
    const ModelResult entry = call(recipient, u"AddressEntry"_s);
    QVERIFY(!entry.value.isValid());
    QVERIFY(!entry.failure.has_value());
}

void tst_OutlookModel::recipientHasNoEntryBeforeItIsResolved()
{
    const ObjectReference recipient = query(session(), u"CreateRecipient"_s, {u"x@example.com"_s});
    QVERIFY(!call(recipient, u"AddressEntry"_s).value.isValid());
    QVERIFY(call(recipient, u"Resolve"_s).value.toBool());
    QVERIFY(call(recipient, u"AddressEntry"_s).value.isValid());
}

void tst_OutlookModel::exchangeAddressHasUserWithAlias()
{
    m_scenario.addresses.insert(u"Kim"_s, {true, u"EX"_s, u"kim.sample@example.com"_s});
    m_scenario.addresses.insert(u"Bo"_s, {true, u"EX"_s, u"bo@example.com"_s});
    m_scenario.globalAddressList = {{true, u"kim"_s, u"kim.sample@example.com"_s}};
    const ObjectReference kim = query(query(resolvedRecipient(u"Kim"_s), u"AddressEntry"_s), u"GetExchangeUser"_s);
    QCOMPARE(get(kim, u"PrimarySmtpAddress"_s), QVariant(u"kim.sample@example.com"_s));
    QCOMPARE(get(kim, u"Alias"_s), QVariant(u"kim"_s));
    const ObjectReference bo = query(query(resolvedRecipient(u"Bo"_s), u"AddressEntry"_s), u"GetExchangeUser"_s);
    QCOMPARE(get(bo, u"PrimarySmtpAddress"_s), QVariant(u"bo@example.com"_s));
    QCOMPARE(get(bo, u"Alias"_s), QVariant(u""_s));
}

void tst_OutlookModel::smtpAddressHasNoExchangeUser()
{
    const ObjectReference entry = query(resolvedRecipient(u"x@example.com"_s), u"AddressEntry"_s);
    const ModelResult user = call(entry, u"GetExchangeUser"_s);
    QVERIFY(!user.value.isValid());
    QVERIFY(!user.failure.has_value());
}

void tst_OutlookModel::indexOutOfBounds_data()
{
    QTest::addColumn<QVariant>("index");

    QTest::newRow("0") << QVariant(0);
    QTest::newRow("one too many") << QVariant(3);
    QTest::newRow("negative") << QVariant(-1);
    QTest::newRow("text") << QVariant(u"first"_s);
}

void tst_OutlookModel::indexOutOfBounds()
{
    QFETCH(const QVariant, index);
    m_scenario.accounts = {{}, {}};
    m_scenario.globalAddressList = {{}, {}};
    const ObjectReference entries = query(query(session(), u"GetGlobalAddressList"_s), u"AddressEntries"_s);
    for (const ObjectReference &list : {query(session(), u"Accounts"_s), entries}) {
        const ModelResult result = call(list, u"Item"_s, {index});
        QVERIFY(result.failure.has_value());
        QCOMPARE(result.failure->kind, FailureKind::Exception);
        QCOMPARE(get(list, u"Count"_s), QVariant(2));
    }
}

void tst_OutlookModel::typeMismatch_data()
{
    QTest::addColumn<QString>("member");
    QTest::addColumn<QVariant>("value");

    QTest::newRow("importance above") << u"Importance"_s << QVariant(3);
    QTest::newRow("importance below") << u"Importance"_s << QVariant(-1);
    QTest::newRow("importance as text") << u"Importance"_s << QVariant(u"high"_s);
    QTest::newRow("format") << u"BodyFormat"_s << QVariant(4);
    QTest::newRow("nothing as subject") << u"Subject"_s << QVariant();
    QTest::newRow("nothing as body") << u"Body"_s << QVariant();
    QTest::newRow("nothing as html") << u"HTMLBody"_s << QVariant();
    QTest::newRow("text as account") << u"SendUsingAccount"_s << QVariant(u"a@example.com"_s);
    QTest::newRow("no account as account")
        << u"SendUsingAccount"_s << QVariant::fromValue(ObjectReference{ObjectKind::Session, 1});
    QTest::newRow("unknown account") << u"SendUsingAccount"_s
                                     << QVariant::fromValue(ObjectReference{ObjectKind::Account, 9});
}

void tst_OutlookModel::typeMismatch()
{
    QFETCH(const QString, member);
    QFETCH(const QVariant, value);
    const ModelResult result = set(newMail(), member, value);
    QVERIFY(result.failure.has_value());
    QCOMPARE(result.failure->kind, FailureKind::Missing);
}

void tst_OutlookModel::methodIsNoProperty()
{
    const ObjectReference mail = newMail();
    QCOMPARE(m_model->perform(mail, Access::Get, u"Display"_s, {}).failure->kind, FailureKind::Missing);
    QCOMPARE(set(mail, u"Display"_s, 1).failure->kind, FailureKind::Missing);
    QCOMPARE(m_model->perform(mail, Access::Get, u"SendUsingAccount"_s, {}).failure->kind, FailureKind::Missing);
    QCOMPARE(call({ObjectKind::MailItem, 99}, u"Display"_s).failure->kind, FailureKind::Missing);
    QVERIFY(m_environment->drafts.isEmpty());
}

void tst_OutlookModel::signatureAppearsWithTheInspector_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<QString>("member");
    QTest::addColumn<QString>("text");

    QTest::newRow("plain") << 1 << u"Body"_s << u"plain"_s;
    QTest::newRow("html") << 2 << u"HTMLBody"_s << u"<p>html</p>"_s;
}

void tst_OutlookModel::signatureAppearsWithTheInspector()
{
    QFETCH(const int, format);
    QFETCH(const QString, member);
    const ObjectReference mail = newMail();
    set(mail, u"BodyFormat"_s, format);
    QCOMPARE(get(mail, member), QVariant(u""_s));
    query(mail, u"GetInspector"_s);
    QTEST(get(mail, member).toString(), "text");
}

void tst_OutlookModel::signatureAppearsOnce()
{
    const ObjectReference mail = newMail();
    query(mail, u"GetInspector"_s);
    query(mail, u"GetInspector"_s);
    call(mail, u"Display"_s);
    QCOMPARE(get(mail, u"HTMLBody"_s), QVariant(u"<p>html</p>"_s));
}

void tst_OutlookModel::writtenTextKeepsTheSignatureAway()
{
    const ObjectReference mail = newMail();
    set(mail, u"HTMLBody"_s, u""_s);
    query(mail, u"GetInspector"_s);
    QCOMPARE(get(mail, u"HTMLBody"_s), QVariant(u""_s));
}

void tst_OutlookModel::displayOpensTheItem()
{
    const ObjectReference mail = newMail();
    call(mail, u"Display"_s);
    QCOMPARE(get(mail, u"HTMLBody"_s), QVariant(u"<p>html</p>"_s));
}

void tst_OutlookModel::signatureInOneFormServesBoth()
{
    m_scenario.htmlSignature.clear();
    const ObjectReference mail = newMail();
    query(mail, u"GetInspector"_s);
    QCOMPARE(get(mail, u"HTMLBody"_s), QVariant(u"<html><body>plain</body></html>"_s));

    m_scenario.htmlSignature = u"<p>html</p>"_s;
    m_scenario.plainSignature.clear();
    const ObjectReference plainMail = newMail();
    set(plainMail, u"BodyFormat"_s, 1);
    query(plainMail, u"GetInspector"_s);
    QCOMPARE(get(plainMail, u"Body"_s), QVariant(u"html"_s));
}

void tst_OutlookModel::bodyFormatConverts()
{
    const ObjectReference mail = newMail();
    QCOMPARE(get(mail, u"BodyFormat"_s), QVariant(2));
    set(mail, u"BodyFormat"_s, 1);
    set(mail, u"Body"_s, u"a < b\nc"_s);
    QCOMPARE(get(mail, u"HTMLBody"_s), QVariant(u"<html><body>a &lt; b<br>\nc</body></html>"_s));
    set(mail, u"BodyFormat"_s, 2);
    QCOMPARE(get(mail, u"HTMLBody"_s), QVariant(u"<html><body>a &lt; b<br>\nc</body></html>"_s));
    QCOMPARE(get(mail, u"Body"_s), QVariant(u"a < b\nc"_s));
    set(mail, u"BodyFormat"_s, 1);
    QCOMPARE(get(mail, u"Body"_s), QVariant(u"a < b\nc"_s));
}

void tst_OutlookModel::htmlBodyMakesHtml()
{
    const ObjectReference mail = newMail();
    set(mail, u"BodyFormat"_s, 1);
    set(mail, u"HTMLBody"_s, u"<b>x</b>"_s);
    QCOMPARE(get(mail, u"BodyFormat"_s), QVariant(2));
    QCOMPARE(get(mail, u"Body"_s), QVariant(u"x"_s));
    set(mail, u"Body"_s, u"y"_s);
    QCOMPARE(get(mail, u"HTMLBody"_s), QVariant(u"<html><body>y</body></html>"_s));
}

void tst_OutlookModel::sendNeedsRecipients()
{
    const ModelResult result = call(newMail(), u"Send"_s);
    QVERIFY(result.failure.has_value());
    QCOMPARE(result.failure->kind, FailureKind::Exception);
    QCOMPARE(result.failure->code, 4096);
    QVERIFY(m_environment->sent.isEmpty());
}

void tst_OutlookModel::sendRefusesUnknownNames()
{
    m_scenario.addresses.insert(u"nobody"_s, {false, u"SMTP"_s, {}});
    const ObjectReference mail = newMail();
    addRecipient(mail, u"a@example.com"_s, 1);
    addRecipient(mail, u"nobody"_s, 3);
    const ModelResult result = call(mail, u"Send"_s);
    QVERIFY(result.failure.has_value());
    QCOMPARE(result.failure->code, 4096);
    QVERIFY(m_environment->sent.isEmpty());
}

void tst_OutlookModel::sentItemIsGone()
{
    const ObjectReference mail = newMail();
    addRecipient(mail, u"a@example.com"_s, 1);
    call(mail, u"Display"_s);
    QVERIFY(!call(mail, u"Send"_s).failure.has_value());
    QVERIFY(m_environment->drafts.isEmpty());
    QCOMPARE(m_environment->sent.size(), 1);
    QVERIFY(!m_environment->sent.first().draft);
    QCOMPARE(set(mail, u"Subject"_s, u"s"_s).failure->kind, FailureKind::Exception);
}

void tst_OutlookModel::deletedItemIsGone()
{
    const ObjectReference mail = newMail();
    call(mail, u"Display"_s);
    const ObjectReference selection =
        query(query(query(query(mail, u"GetInspector"_s), u"WordEditor"_s), u"Application"_s), u"Selection"_s);
    QCOMPARE(selection.toString(), u"Selection#1"_s);
    call(mail, u"Delete"_s);
    QVERIFY(m_environment->drafts.isEmpty());
    QCOMPARE(call(mail, u"Display"_s).failure->kind, FailureKind::Exception);
    QCOMPARE(call(selection, u"InsertFile"_s, {u"/f"_s, u""_s, false, false, false}).failure->kind,
             FailureKind::Exception);
}

void tst_OutlookModel::displayedMailIsKeptUpToDate()
{
    const ObjectReference mail = newMail();
    call(mail, u"Display"_s);
    QVERIFY(m_environment->drafts.value(1).draft);
    set(mail, u"Subject"_s, u"later"_s);
    QCOMPARE(m_environment->drafts.value(1).subject, u"later"_s);
    const ObjectReference element = addRecipient(mail, u"a@example.com"_s, 2);
    QCOMPARE(m_environment->drafts.value(1).cc.size(), 1);
    QCOMPARE(get(element, u"Type"_s), QVariant(2));
}

void tst_OutlookModel::notDisplayedMailIsNotSaved()
{
    const ObjectReference mail = newMail();
    set(mail, u"Subject"_s, u"s"_s);
    query(mail, u"GetInspector"_s);
    QVERIFY(m_environment->drafts.isEmpty());
}

void tst_OutlookModel::messageHoldsWhatTheItemHas()
{
    m_environment->files.insert(u"/x/a.pdf"_s, "content");
    m_environment->files.insert(u"C:\\x\\b.pdf"_s, "content");
    m_scenario.addresses.insert(u"Kim"_s, {true, u"EX"_s, u"kim@example.com"_s});
    const ObjectReference mail = newMail();
    addRecipient(mail, u"Kim"_s, 1);
    addRecipient(mail, u"c@example.com"_s, 2);
    addRecipient(mail, u"b@example.com"_s, 3);
    query(query(mail, u"ReplyRecipients"_s), u"Add"_s, {u"r@example.com"_s});
    query(query(mail, u"Attachments"_s), u"Add"_s, {u"/x/a.pdf"_s});
    query(query(mail, u"Attachments"_s), u"Add"_s, {u"C:\\x\\b.pdf"_s});
    set(mail, u"Subject"_s, u"s"_s);
    set(mail, u"Importance"_s, 0);
    set(mail, u"ReadReceiptRequested"_s, true);
    set(mail, u"OriginatorDeliveryReportRequested"_s, true);
    set(mail, u"BodyFormat"_s, 1);
    set(mail, u"Body"_s, u"text"_s);
    call(mail, u"Display"_s);

    const MailMessage message = m_environment->drafts.value(1);
    QCOMPARE(message.to.size(), 1);
    QCOMPARE(message.to.first().text, u"Kim"_s);
    QCOMPARE(message.to.first().address, u"kim@example.com"_s);
    QCOMPARE(message.cc.size(), 1);
    QCOMPARE(message.bcc.size(), 1);
    QCOMPARE(message.replyTo.first().text, u"r@example.com"_s);
    QCOMPARE(message.subject, u"s"_s);
    QCOMPARE(message.importance, Importance::Low);
    QVERIFY(message.readReceipt);
    QVERIFY(message.deliveryReport);
    QVERIFY(!message.html);
    QCOMPARE(message.body, u"text"_s);
    QCOMPARE(message.attachments.size(), 2);
    QCOMPARE(message.attachments.last().fileName, u"b.pdf"_s);
    QCOMPARE(message.attachments.first().fileName, u"a.pdf"_s);
    QCOMPARE(message.attachments.first().content, "content");
}

void tst_OutlookModel::originator_data()
{
    QTest::addColumn<int>("account"); // 0: none is set
    QTest::addColumn<QString>("onBehalfOf");
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("sender");

    QTest::newRow("first account by itself") << 0 << u""_s << u"a@example.com"_s << u""_s;
    QTest::newRow("given account") << 2 << u""_s << u"b@example.com"_s << u""_s;
    QTest::newRow("on behalf") << 0 << u"Chief"_s << u"chief@example.com"_s << u"a@example.com"_s;
}

void tst_OutlookModel::originator()
{
    QFETCH(const int, account);
    QFETCH(const QString, onBehalfOf);
    m_scenario.accounts = {{u"A"_s, u"a@example.com"_s}, {u"B"_s, u"b@example.com"_s}};
    m_scenario.addresses.insert(u"Chief"_s, {true, u"EX"_s, u"chief@example.com"_s});
    const ObjectReference mail = newMail();
    if (account > 0)
        QVERIFY(!set(mail, u"SendUsingAccount"_s, call(query(session(), u"Accounts"_s), u"Item"_s, {account}).value)
                     .failure.has_value());
    if (!onBehalfOf.isEmpty())
        set(mail, u"SentOnBehalfOfName"_s, onBehalfOf);
    call(mail, u"Display"_s);
    QTEST(m_environment->drafts.value(1).from.address, "from");
    QTEST(m_environment->drafts.value(1).sender.address, "sender");
}

void tst_OutlookModel::missingAttachmentRaisesException()
{
    const ModelResult result = call(query(newMail(), u"Attachments"_s), u"Add"_s, {u"/missing"_s});
    QVERIFY(result.failure.has_value());
    QCOMPARE(result.failure->kind, FailureKind::Exception);
}

void tst_OutlookModel::attachmentHasNoWritableType()
{
    m_environment->files.insert(u"/a"_s, "x");
    const ObjectReference element = query(query(newMail(), u"Attachments"_s), u"Add"_s, {u"/a"_s});
    QCOMPARE(set(element, u"Type"_s, 1).failure->kind, FailureKind::Missing);
    QCOMPARE(get(element, u"Type"_s), QVariant(1));
}

void tst_OutlookModel::insertFileIntoPlainText()
{
    m_environment->files.insert(u"/f.html"_s, "<p>file</p>");
    const ObjectReference mail = newMail();
    set(mail, u"BodyFormat"_s, 1);
    set(mail, u"Body"_s, u" and text"_s);
    const ObjectReference selection =
        query(query(query(query(mail, u"GetInspector"_s), u"WordEditor"_s), u"Application"_s), u"Selection"_s);
    QVERIFY(!call(selection, u"InsertFile"_s, {u"/f.html"_s, u""_s, false, false, false}).failure.has_value());
    QCOMPARE(get(mail, u"Body"_s), QVariant(u"file and text"_s));
}

void tst_OutlookModel::insertMissingFileRaisesException()
{
    const ObjectReference selection =
        query(query(query(query(newMail(), u"GetInspector"_s), u"WordEditor"_s), u"Application"_s), u"Selection"_s);
    const ModelResult result = call(selection, u"InsertFile"_s, {u"/missing"_s, u""_s, false, false, false});
    QVERIFY(result.failure.has_value());
    QCOMPARE(result.failure->kind, FailureKind::Exception);
    QCOMPARE(result.failure->source, u"Microsoft Word"_s);
}

QTEST_GUILESS_MAIN(tst_OutlookModel)
#include "tst_outlookmodel.moc"

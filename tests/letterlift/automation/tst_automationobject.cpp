// What every AutomationObject does, whatever stands behind it. The objects are those of the backend that is built.

#include "automation/automation.h"
#include "automation/automationobject.h"
#include "automation/callpatience.h"
#include "testfile.h"

#include <QElapsedTimer>
#include <QFile>
#include <QPointer>
#include <QSignalSpy>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

class tst_AutomationObject : public QObject
{
    Q_OBJECT

public Q_SLOTS:
    void throwError(int code, const QString &, const QString &, const QString &);

private Q_SLOTS:
    void init();
    void cleanup();
    void createApplication();
    void unknownProgIdIsNull();
    void unavailableIsNull();
    void callsOnNullObject();
    void readProperty();
    void dynamicCallReadsPropertyToo();
    void enumerationKeyAsText();
    void subObjectIsChild();
    void subObjectDiesWithItsParent();
    void querySubObjectThatIsNoObject();
    void objectThatIsNull();
    void writeProperty();
    void objectAsPropertyValue();
    void disableMetaObjectLeavesCallsWorking();
    void missingMember_data();
    void missingMember();
    void tooManyArguments();
    void exceptionWithReceiver();
    void exceptionWithoutReceiver();
    void exceptionOfPropertyWrite();
    void thrownByReceiverPassesThroughTheCall_data();
    void thrownByReceiverPassesThroughTheCall();
    void propertiesNeedTheMetaObject();
    void valuesOfNoUse_data();
    void valuesOfNoUse();
    void valueOfAnotherType();
    void longTextGoesThere();
    void serverThatDies();
    void busyServerIsAskedAgain();
    void serverThatIsBusyForTooLong();
    void slowServerIsWaitedFor();
    void serverThatNeverAnswers();

private:
    void useScenario(const QByteArray &json);
    [[nodiscard]] std::unique_ptr<AutomationObject> application();

    std::unique_ptr<QTemporaryDir> m_directory;
    const QRegularExpression m_callError{u"^QAxBase: Error calling IDispatch member "_s};
};

namespace {

QRegularExpression callErrorOf(const QString &member)
{
    return QRegularExpression(
        u"^QAxBase: Error calling IDispatch member %1:"_s.arg(QRegularExpression::escape(member)));
}

} // namespace

void tst_AutomationObject::throwError(int code, const QString &, const QString &, const QString &)
{
    throw std::runtime_error("thrown by the receiver of " + std::to_string(code));
}

void tst_AutomationObject::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    qputenv("LETTERLIFT_OUTLOOK_STORE", QFile::encodeName(m_directory->filePath(u"store"_s)));
    qunsetenv("LETTERLIFT_OUTLOOK_SCENARIO");
    CallPatience::ofProcess() = CallPatience();
}

void tst_AutomationObject::cleanup()
{
    QCOMPARE(AutomationObject::liveCount(), 0);
}

void tst_AutomationObject::useScenario(const QByteArray &json)
{
    const QString path = writeTestFile(m_directory->filePath(u"scenario.json"_s), json);
    qputenv("LETTERLIFT_OUTLOOK_SCENARIO", QFile::encodeName(path));
}

std::unique_ptr<AutomationObject> tst_AutomationObject::application()
{
    return std::unique_ptr<AutomationObject>(createAutomationObject(u"Outlook.Application"_s, nullptr));
}

void tst_AutomationObject::createApplication()
{
    QObject parent;
    AutomationObject *const object = createAutomationObject(u"Outlook.Application"_s, &parent);
    QVERIFY(object != nullptr && !object->isNull());
    QCOMPARE(parent.children(), QObjectList{object});
}

void tst_AutomationObject::unknownProgIdIsNull()
{
    QTest::ignoreMessage(QtWarningMsg,
                         "QAxBase::setControl: requested control No.Such.Server could not be instantiated");
    const std::unique_ptr<AutomationObject> object(createAutomationObject(u"No.Such.Server"_s, nullptr));
    QVERIFY(object->isNull());
}

void tst_AutomationObject::unavailableIsNull()
{
    useScenario(R"({"available": false})");
    QTest::ignoreMessage(QtWarningMsg,
                         "QAxBase::setControl: requested control Outlook.Application could not be instantiated");
    QVERIFY(application()->isNull());
}

void tst_AutomationObject::callsOnNullObject()
{
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"could not be instantiated$"_s));
    const std::unique_ptr<AutomationObject> object(createAutomationObject(u"No.Such.Server"_s, nullptr));
    for (int call = 0; call < 4; ++call)
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^QAxBase: No server behind the object"_s));
    QCOMPARE(object->querySubObject("Session"), nullptr);
    QVERIFY(!object->dynamicCall("Display()").isValid());
    QVERIFY(!object->property("Version").isValid());
    QVERIFY(!object->setProperty("Subject", u"s"_s));
    QVERIFY(!object->asVariant().isValid());

    object->disableMetaObject();
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"^QAxBase: No server behind the object"_s));
    QVERIFY(!object->property("Version").isValid());
}

void tst_AutomationObject::readProperty()
{
    useScenario(R"({"version": "16.0.1.2", "accounts": [{}, {}]})");
    const auto object = application();
    QCOMPARE(object->property("Version"), QVariant(u"16.0.1.2"_s));
    AutomationObject *const accounts = object->querySubObject("Session")->querySubObject("Accounts");
    QCOMPARE(accounts->property("Count"), QVariant(2));
}

void tst_AutomationObject::dynamicCallReadsPropertyToo()
{
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    QVERIFY(mail->setProperty("BodyFormat", 1));
    QVERIFY(mail->setProperty("Body", u"text"_s));
    QCOMPARE(mail->dynamicCall("Body"), QVariant(u"text"_s));
}

void tst_AutomationObject::enumerationKeyAsText()
{
    const auto object = application();
    QVERIFY(object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s}) != nullptr);
    QVERIFY(object->querySubObject("CreateItem(OlItemType)", {0}) != nullptr);
    QTest::ignoreMessage(QtWarningMsg, m_callError);
    QCOMPARE(object->querySubObject("CreateItem(OlItemType)", {u"olNoSuchItem"_s}), nullptr);
}

void tst_AutomationObject::subObjectIsChild()
{
    const auto object = application();
    const AutomationObject *const session = object->querySubObject("Session");
    QVERIFY(session != nullptr);
    QCOMPARE(session->parent(), object.get());
    QVERIFY(!session->isNull());
    QVERIFY(object->querySubObject("Session") != session);
}

void tst_AutomationObject::subObjectDiesWithItsParent()
{
    auto object = application();
    const QPointer<AutomationObject> session = object->querySubObject("Session");
    const QPointer<AutomationObject> accounts = session->querySubObject("Accounts");
    QCOMPARE(AutomationObject::liveCount(), 3);
    delete session;
    QVERIFY(accounts.isNull());
    QCOMPARE(AutomationObject::liveCount(), 1);
    const QPointer<AutomationObject> another = object->querySubObject("Session");
    object.reset();
    QVERIFY(another.isNull());
}

void tst_AutomationObject::querySubObjectThatIsNoObject()
{
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QCOMPARE(application()->querySubObject("Version"), nullptr);
}

void tst_AutomationObject::objectThatIsNull()
{
    useScenario(R"({"globalAddressList": [{"exchangeUser": false}]})");
    const auto object = application();
    AutomationObject *const entries =
        object->querySubObject("Session")->querySubObject("GetGlobalAddressList()")->querySubObject("AddressEntries");
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QCOMPARE(entries->querySubObject("Item(QVariant)", {1})->querySubObject("GetExchangeUser()"), nullptr);
}

void tst_AutomationObject::writeProperty()
{
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    QVERIFY(mail->setProperty("Subject", u"Größe"_s));
    QVERIFY(mail->setProperty("Importance", 2));
    QVERIFY(mail->setProperty("ReadReceiptRequested", true));
    QCOMPARE(mail->property("Subject"), QVariant(u"Größe"_s));
    QCOMPARE(mail->property("Importance"), QVariant(2));
    QCOMPARE(mail->property("ReadReceiptRequested"), QVariant(true));
}

void tst_AutomationObject::objectAsPropertyValue()
{
    useScenario(R"({"accounts": [{"SmtpAddress": "a@example.com"}]})");
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    const AutomationObject *const account =
        object->querySubObject("Session")->querySubObject("Accounts")->querySubObject("Item(QVariant)", {1});
    QVERIFY(account->asVariant().isValid());
    QVERIFY(mail->setProperty("SendUsingAccount", account->asVariant()));
}

void tst_AutomationObject::disableMetaObjectLeavesCallsWorking()
{
    const auto object = application();
    AutomationObject *const session = object->querySubObject("Session");
    session->disableMetaObject();
    QVERIFY(session->querySubObject("Accounts") != nullptr);
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QVERIFY(!session->dynamicCall("Logon()").isValid());
}

void tst_AutomationObject::missingMember_data()
{
    using Call = std::function<bool(AutomationObject &)>;
    QTest::addColumn<Call>("failed");

    QTest::newRow("query") << Call([](AutomationObject &o) { return o.querySubObject("NoSuchMember()") == nullptr; });
    QTest::newRow("call") << Call([](AutomationObject &o) { return !o.dynamicCall("NoSuchMember()").isValid(); });
    QTest::newRow("read") << Call([](AutomationObject &o) { return !o.property("NoSuchMember").isValid(); });
    QTest::newRow("write") << Call([](AutomationObject &o) { return !o.setProperty("NoSuchMember", 1); });
    QTest::newRow("write of what can only be read")
        << Call([](AutomationObject &o) { return !o.setProperty("Version", u"1"_s); });
    QTest::newRow("too few arguments") << Call(
        [](AutomationObject &o) { return o.querySubObject("CreateItem(OlItemType)") == nullptr; });
}

void tst_AutomationObject::missingMember()
{
    QFETCH(const std::function<bool(AutomationObject &)>, failed);
    const auto object = application();
    QSignalSpy spy(object.get(), &AutomationObject::exception);
    QTest::ignoreMessage(QtWarningMsg, m_callError);
    QVERIFY(failed(*object));
    QCOMPARE(spy.count(), 0);
}

void tst_AutomationObject::tooManyArguments()
{
    const auto object = application();
    QTest::ignoreMessage(QtWarningMsg, m_callError);
    QVERIFY(!object->dynamicCall("Session", QVariantList(AutomationObject::maximumArguments + 1, 1)).isValid());
}

namespace {

// clang-format off
constexpr auto failingSend = R"x({"failures": [
    {"object": "MailItem", "member": "Send()", "kind": "exception", "code": 4711,
     "source": "Source", "description": "Description", "help": "Help [12]"},
    {"object": "MailItem", "member": "Subject", "code": -2147467259},
    {"object": "MailItem", "member": "Recipients"}]})x";
// clang-format on

} // namespace

void tst_AutomationObject::exceptionWithReceiver()
{
    useScenario(failingSend);
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    QSignalSpy spy(mail, &AutomationObject::exception);
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QVERIFY(!mail->dynamicCall("Send()").isValid());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first(), QVariantList({4711, u"Source"_s, u"Description"_s, u"Help [12]"_s}));
}

void tst_AutomationObject::exceptionWithoutReceiver()
{
    useScenario(failingSend);
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    // In how many lines, and with what between, is the backend's own affair.
    QTest::ignoreMessage(
        QtWarningMsg, QRegularExpression(u"^QAxBase: Error calling IDispatch member Send\\(\\).*\n.*4711.*\n.*Source.*"
                                         "\n.*Description.*\n.*Help \\[12\\]"_s));
    QVERIFY(!mail->dynamicCall("Send()").isValid());
}

void tst_AutomationObject::exceptionOfPropertyWrite()
{
    useScenario(failingSend);
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    QSignalSpy spy(mail, &AutomationObject::exception);
    mail->setProperty("Subject", u"s"_s);
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first().first(), QVariant(-2147467259));
}

void tst_AutomationObject::thrownByReceiverPassesThroughTheCall_data()
{
    using Call = std::function<void(AutomationObject &)>;
    QTest::addColumn<Call>("call");
    QTest::addColumn<QString>("text");

    QTest::newRow("call") << Call([](AutomationObject &o) { o.dynamicCall("Send()"); })
                          << u"thrown by the receiver of 4711"_s;
    QTest::newRow("write") << Call([](AutomationObject &o) { o.setProperty("Subject", u"s"_s); })
                           << u"thrown by the receiver of -2147467259"_s;
    QTest::newRow("read") << Call([](AutomationObject &o) { QVERIFY(!o.property("Subject").isValid()); })
                          << u"thrown by the receiver of -2147467259"_s;
    QTest::newRow("query") << Call([](AutomationObject &o) { QVERIFY(!o.querySubObject("Recipients")); })
                           << u"thrown by the receiver of 4096"_s;
}

void tst_AutomationObject::thrownByReceiverPassesThroughTheCall()
{
    QFETCH(const std::function<void(AutomationObject &)>, call);
    useScenario(failingSend);
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    // By name, as the program connects: the way through Qt's meta-call is the one to be tried.
    QVERIFY(connect(mail, SIGNAL(exception(int, QString, QString, QString)), this,
                    SLOT(throwError(int, QString, QString, QString))));
    QString text;
    try {
        call(*mail);
    } catch (const std::exception &e) {
        text = QString::fromUtf8(e.what());
    }
    QTEST(text, "text");
    // The object is still fit for use.
    QVERIFY(mail->setProperty("Importance", 1));
}

void tst_AutomationObject::propertiesNeedTheMetaObject()
{
    // So it is with ActiveQt; a program that reads one all the same is to be noticed here.
    const auto object = application();
    object->disableMetaObject();
    QTest::ignoreMessage(QtWarningMsg, m_callError);
    QVERIFY(!object->property("Version").isValid());
    QCOMPARE(object->dynamicCall("Version").typeId(), QMetaType::QString);
}

void tst_AutomationObject::valuesOfNoUse_data()
{
    QTest::addColumn<QByteArray>("failure");

    QTest::newRow("nothing") << QByteArray(R"("kind": "null")");
    QTest::newRow("null") << QByteArray(R"("kind": "value", "value": null)");
    QTest::newRow("error code") << QByteArray(R"("kind": "error", "code": -2147467259)");
}

void tst_AutomationObject::valuesOfNoUse()
{
    QFETCH(const QByteArray, failure);
    useScenario(R"({"failures": [{"object": "Application", "member": "Version", )" + failure +
                R"(}, {"object": "Application", "member": "Session", )" + failure + "}]}");
    const auto object = application();
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QVERIFY(!object->property("Version").isValid());
    QVERIFY(!object->dynamicCall("Version").isValid());
    QCOMPARE(object->querySubObject("Session"), nullptr);
}

void tst_AutomationObject::valueOfAnotherType()
{
    useScenario(R"({"failures": [{"object": "Application", "member": "Version", "kind": "value", "value": 16},
                                 {"object": "Application", "member": "Session", "kind": "value", "value": "text"}]})");
    const auto object = application();
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QCOMPARE(object->property("Version"), QVariant(16));
    QCOMPARE(object->querySubObject("Session"), nullptr);
    QCOMPARE(object->dynamicCall("Session"), QVariant(u"text"_s));
}

void tst_AutomationObject::longTextGoesThere()
{
    const auto object = application();
    AutomationObject *const mail = object->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
    const QString text = QString(2'000'000, u'ä') + u"\U0001F4E7"_s;
    QVERIFY(mail->setProperty("HTMLBody", text));
    QCOMPARE(mail->dynamicCall("HTMLBody"), QVariant(text));
}

void tst_AutomationObject::serverThatDies()
{
    useScenario(R"x({"failures": [{"object": "Session", "member": "Logon()", "kind": "death"}]})x");
    const auto object = application();
    AutomationObject *const session = object->querySubObject("Session");
    QSignalSpy spy(session, &AutomationObject::exception);
    QTest::ignoreMessage(QtWarningMsg, callErrorOf(u"Logon()"_s));
    QVERIFY(!session->dynamicCall("Logon()").isValid());
    QTest::ignoreMessage(QtWarningMsg, callErrorOf(u"Version"_s));
    QVERIFY(!object->property("Version").isValid());
    QTest::ignoreMessage(QtWarningMsg, callErrorOf(u"Accounts"_s));
    QCOMPARE(session->querySubObject("Accounts"), nullptr);
    QCOMPARE(spy.count(), 0);
}

namespace {

const auto busyAfterSession = R"({"failures": [{"object": "Application", "member": "Session", "kind": "busy",
                                                "milliseconds": %1}]})"_L1;

} // namespace

void tst_AutomationObject::busyServerIsAskedAgain()
{
    useScenario(QString(busyAfterSession).arg(2000).toUtf8());
    const auto object = application();
    QElapsedTimer timer;
    timer.start();
    AutomationObject *const session = object->querySubObject("Session");
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QVERIFY(session != nullptr && session->querySubObject("Accounts") != nullptr);
    // A little less, for clocks that tick slowly: it was busy, and the call has waited.
    QVERIFY2(timer.elapsed() >= 1900, qPrintable(QString::number(timer.elapsed())));
}

void tst_AutomationObject::serverThatIsBusyForTooLong()
{
    using namespace std::chrono_literals;
    useScenario(QString(busyAfterSession).arg(3000).toUtf8());
    CallPatience::ofProcess() = CallPatience(300ms);
    const auto object = application();
    AutomationObject *const session = object->querySubObject("Session");
    QSignalSpy spy(session, &AutomationObject::exception);
    QTest::ignoreMessage(QtWarningMsg, callErrorOf(u"Accounts"_s));
    QCOMPARE(session->querySubObject("Accounts"), nullptr);
    QTest::ignoreMessage(QtWarningMsg, callErrorOf(u"Version"_s));
    QVERIFY(!object->property("Version").isValid());
    QCOMPARE(spy.count(), 0);
}

void tst_AutomationObject::slowServerIsWaitedFor()
{
    useScenario(R"({"failures": [{"object": "Application", "member": "Version", "kind": "silence",
                                  "milliseconds": 500}]})");
    const auto object = application();
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QCOMPARE(object->property("Version").typeId(), QMetaType::QString);
}

void tst_AutomationObject::serverThatNeverAnswers()
{
    using namespace std::chrono_literals;
    useScenario(R"({"failures": [
        {"object": "Application", "member": "Version", "kind": "silence", "milliseconds": 2000, "call": 1},
        {"object": "Application", "member": "Version", "kind": "silence", "milliseconds": 1000, "call": 2},
        {"object": "Application", "member": "Version", "kind": "silence", "milliseconds": 1000, "call": 4}]})");
    CallPatience::ofProcess() = CallPatience(300ms, 1500ms, 500ms);
    const auto object = application();
    QTest::ignoreMessage(QtWarningMsg, callErrorOf(u"Version"_s));
    QVERIFY(!object->property("Version").isValid());
    // The next one isn't waited for as long.
    QTest::ignoreMessage(QtWarningMsg, callErrorOf(u"Version"_s));
    QVERIFY(!object->property("Version").isValid());
    // An answer in time brings the patience back. The server may still be about what the client has given up.
    QTest::qSleep(1500);
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QVERIFY(object->property("Version").isValid());
    QVERIFY(object->property("Version").isValid());
}

QTEST_GUILESS_MAIN(tst_AutomationObject)
#include "tst_automationobject.moc"

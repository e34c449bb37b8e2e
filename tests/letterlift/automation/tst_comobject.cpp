// The COM client against a server object of the test's own, for what no well-behaved server does.

#include "automation/callpatience.h"
#include "automation/comapartment.h"
#include "automation/comobject.h"
#include "automation/comvariant.h"
#include "automation/referencecounted.h"

#include <QRegularExpression>
#include <QSignalSpy>
#include <QTest>

#include <oleauto.h>

#include <functional>
#include <stdexcept>

using namespace Qt::Literals::StringLiterals;
using Microsoft::WRL::ComPtr;

namespace {

/// What the test has the server do, and what the server saw.
struct Script
{
    std::function<HRESULT(WORD flags, DISPPARAMS &parameters, VARIANT &result, EXCEPINFO &info, UINT &argument)> invoke;
    QStringList names; // asked for by GetIDsOfNames
    QList<WORD> flags; // of each Invoke
    int liveObjects = 0;
};

class FakeServer : public ReferenceCounted<IDispatch>
{
public:
    explicit FakeServer(Script &script)
        : m_script(script)
    {
        ++m_script.liveObjects;
    }
    ~FakeServer() override { --m_script.liveObjects; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *count) override
    {
        *count = 0;
        return S_OK;
    }

    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo **info) override
    {
        *info = nullptr;
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR *names, UINT, LCID, DISPID *ids) override
    {
        m_script.names.append(QString::fromWCharArray(names[0]));
        ids[0] = m_script.names.last() == u"Unknown"_s ? DISPID_UNKNOWN : DISPID(m_script.names.last().size());
        return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
    }

    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD flags, DISPPARAMS *parameters, VARIANT *result,
                                     EXCEPINFO *info, UINT *argument) override
    {
        m_script.flags.append(flags);
        return m_script.invoke ? m_script.invoke(flags, *parameters, *result, *info, *argument) : S_OK;
    }

private:
    [[nodiscard]] bool implements(REFIID iid) const override { return iid == __uuidof(IDispatch); }

    Script &m_script;
};

} // namespace

class tst_ComObject : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void memberIsLookedUpOnce();
    void queryAsksForMethodAndProperty();
    void propertyIsReadAsProperty();
    void argumentsGoFromLastToFirst();
    void argumentsByReference();
    void enumerationKeyWithoutTypeInformation();
    void plainTextIsNoEnumerationKey();
    void valueIsPut();
    void objectIsPutByReference();
    void objectIsPutByValueIfRefused();
    void otherRefusalIsNotTriedAgain();
    void resultOfUnknownInterface();
    void valuesOfNoUse_data();
    void valuesOfNoUse();
    void failures_data();
    void failures();
    void exceptionWithDeferredFillIn();
    void exceptionCodes_data();
    void exceptionCodes();
    void helpContext_data();
    void helpContext();
    void rejectionIsRepeated();
    void rejectionForTooLong();
    void cancelledCallIsNoAnswer();
    void thrownByReceiverLeavesNothingBehind();

private:
    [[nodiscard]] std::unique_ptr<ComObject> object();

    Script m_script;
    ComPtr<FakeServer> m_server;
};

void tst_ComObject::init()
{
    m_script = {};
    m_server = adopt(new FakeServer(m_script));
    CallPatience::ofProcess() = CallPatience(std::chrono::milliseconds(300));
}

void tst_ComObject::cleanup()
{
    QCOMPARE(AutomationObject::liveCount(), 0);
    m_server.Reset();
    QCOMPARE(m_script.liveObjects, 0); // every reference was given back
}

std::unique_ptr<ComObject> tst_ComObject::object()
{
    return std::make_unique<ComObject>(std::make_shared<ComApartment>(), m_server, nullptr);
}

void tst_ComObject::memberIsLookedUpOnce()
{
    const auto client = object();
    client->dynamicCall("Send()");
    client->dynamicCall("Send");
    client->dynamicCall("Subject");
    QCOMPARE(m_script.names, QStringList({u"Send"_s, u"Subject"_s}));
    const auto another = object();
    another->dynamicCall("Send()");
    QCOMPARE(m_script.names.size(), 3);
}

void tst_ComObject::queryAsksForMethodAndProperty()
{
    m_script.invoke = [this](WORD, DISPPARAMS &, VARIANT &result, EXCEPINFO &, UINT &) {
        V_VT(&result) = VT_DISPATCH;
        V_DISPATCH(&result) = new FakeServer(m_script);
        return S_OK;
    };
    const auto client = object();
    const AutomationObject *const child = client->querySubObject("Session");
    QVERIFY(child != nullptr && !child->isNull());
    QCOMPARE(m_script.flags, QList<WORD>{DISPATCH_METHOD | DISPATCH_PROPERTYGET});
    QCOMPARE(m_script.liveObjects, 2);
    delete child;
    QCOMPARE(m_script.liveObjects, 1);
}

void tst_ComObject::propertyIsReadAsProperty()
{
    QVERIFY(!object()->property("Subject").isValid());
    QCOMPARE(m_script.flags, QList<WORD>{DISPATCH_PROPERTYGET});
}

void tst_ComObject::argumentsGoFromLastToFirst()
{
    QVariantList seen;
    m_script.invoke = [&seen](WORD, DISPPARAMS &parameters, VARIANT &, EXCEPINFO &, UINT &) {
        for (UINT i = 0; i < parameters.cArgs; ++i)
            seen.append(fromComVariant(parameters.rgvarg[i]));
        return S_OK;
    };
    object()->dynamicCall("Add(QVariant, QVariant, QVariant)", {1, u"two"_s, true});
    QCOMPARE(seen, QVariantList({true, u"two"_s, 1}));
}

void tst_ComObject::argumentsByReference()
{
    QList<VARTYPE> types;
    QVariantList values;
    m_script.invoke = [&](WORD, DISPPARAMS &parameters, VARIANT &, EXCEPINFO &, UINT &) {
        for (UINT i = parameters.cArgs; i > 0; --i) {
            types.append(V_VT(&parameters.rgvarg[i - 1]));
            values.append(fromComVariant(parameters.rgvarg[i - 1]));
        }
        return S_OK;
    };
    object()->dynamicCall("InsertFile(QString, QVariant&, const QVariant&)", {u"a"_s, u"b"_s, 3});
    QCOMPARE(types, QList<VARTYPE>({VT_BSTR, VT_BYREF | VT_VARIANT, VT_I4}));
    QCOMPARE(values, QVariantList({u"a"_s, u"b"_s, 3}));
}

void tst_ComObject::enumerationKeyWithoutTypeInformation()
{
    QVariantList seen;
    m_script.invoke = [&seen](WORD, DISPPARAMS &parameters, VARIANT &, EXCEPINFO &, UINT &) {
        seen.append(fromComVariant(parameters.rgvarg[0]));
        return S_OK;
    };
    const auto client = object();
    client->dynamicCall("CreateItem(OlItemType)", {u"olMailItem"_s});
    client->dynamicCall("CreateItem(OlItemType)", {u"olPostItem"_s});
    client->dynamicCall("CreateItem(OlItemType)", {u"olNoSuchItem"_s});
    client->dynamicCall("CreateItem(OlOther)", {u"olMailItem"_s});
    QCOMPARE(seen, QVariantList({0, 6, u"olNoSuchItem"_s, u"olMailItem"_s}));
}

void tst_ComObject::plainTextIsNoEnumerationKey()
{
    QVariantList seen;
    m_script.invoke = [&seen](WORD, DISPPARAMS &parameters, VARIANT &, EXCEPINFO &, UINT &) {
        seen.append(fromComVariant(parameters.rgvarg[0]));
        return S_OK;
    };
    object()->dynamicCall("CreateRecipient(QString)", {u"olMailItem"_s});
    QCOMPARE(seen, QVariantList{u"olMailItem"_s});
}

void tst_ComObject::valueIsPut()
{
    DISPID name = DISPID_UNKNOWN;
    m_script.invoke = [&name](WORD, DISPPARAMS &parameters, VARIANT &, EXCEPINFO &, UINT &) {
        name = parameters.cNamedArgs == 1 ? parameters.rgdispidNamedArgs[0] : DISPID_UNKNOWN;
        return S_OK;
    };
    QVERIFY(object()->setProperty("Subject", u"s"_s));
    QCOMPARE(m_script.flags, QList<WORD>{DISPATCH_PROPERTYPUT});
    QCOMPARE(name, DISPID(DISPID_PROPERTYPUT));
}

void tst_ComObject::objectIsPutByReference()
{
    const auto client = object();
    QVERIFY(client->setProperty("SendUsingAccount", client->asVariant()));
    QCOMPARE(m_script.flags, QList<WORD>{DISPATCH_PROPERTYPUTREF});
}

void tst_ComObject::objectIsPutByValueIfRefused()
{
    m_script.invoke = [](WORD flags, DISPPARAMS &, VARIANT &, EXCEPINFO &, UINT &) {
        return flags == DISPATCH_PROPERTYPUTREF ? DISP_E_MEMBERNOTFOUND : S_OK;
    };
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    const auto client = object();
    QVERIFY(client->setProperty("SendUsingAccount", client->asVariant()));
    QCOMPARE(m_script.flags, QList<WORD>({DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT}));
}

void tst_ComObject::otherRefusalIsNotTriedAgain()
{
    m_script.invoke = [](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &, UINT &) {
        return DISP_E_TYPEMISMATCH;
    };
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Type mismatch in parameter 1$"_s));
    const auto client = object();
    QVERIFY(!client->setProperty("SendUsingAccount", client->asVariant()));
    QCOMPARE(m_script.flags.size(), 1);
}

void tst_ComObject::resultOfUnknownInterface()
{
    m_script.invoke = [this](WORD, DISPPARAMS &, VARIANT &result, EXCEPINFO &, UINT &) {
        V_VT(&result) = VT_UNKNOWN;
        V_UNKNOWN(&result) = new FakeServer(m_script);
        return S_OK;
    };
    const auto client = object();
    QVERIFY(client->querySubObject("Session") != nullptr);
}

void tst_ComObject::valuesOfNoUse_data()
{
    QTest::addColumn<int>("type");

    QTest::newRow("VT_ERROR") << int(VT_ERROR);
    QTest::newRow("VT_NULL") << int(VT_NULL);
    QTest::newRow("VT_EMPTY") << int(VT_EMPTY);
    QTest::newRow("null object") << int(VT_DISPATCH);
}

void tst_ComObject::valuesOfNoUse()
{
    QFETCH(const int, type);
    m_script.invoke = [type](WORD, DISPPARAMS &, VARIANT &result, EXCEPINFO &, UINT &) {
        VariantInit(&result);
        V_VT(&result) = VARTYPE(type);
        if (type == VT_ERROR)
            V_ERROR(&result) = E_FAIL;
        else
            V_DISPATCH(&result) = nullptr;
        return S_OK;
    };
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    const auto client = object();
    QVERIFY(!client->property("Version").isValid());
    QVERIFY(!client->dynamicCall("Body").isValid());
    QCOMPARE(client->querySubObject("Session"), nullptr);
}

void tst_ComObject::failures_data()
{
    QTest::addColumn<qint64>("status");
    QTest::addColumn<QString>("reason");

    const auto add = [](const char *name, HRESULT status, const QString &reason) {
        QTest::newRow(name) << qint64(status) << reason;
    };
    add("member not found", DISP_E_MEMBERNOTFOUND, u"Unknown member"_s);
    add("number of arguments", DISP_E_BADPARAMCOUNT, u"Invalid number of arguments"_s);
    add("type", DISP_E_TYPEMISMATCH, u"Type mismatch in parameter 2"_s);
    add("range", DISP_E_OVERFLOW, u"Type mismatch in parameter 2"_s);
    add("disconnected", RPC_E_DISCONNECTED, u"The server is gone"_s);
    add("server died", RPC_E_SERVER_DIED, u"The server is gone"_s);
    add("server not there", HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE), u"The server is gone"_s);
    add("server went in the call", HRESULT_FROM_WIN32(RPC_S_CALL_FAILED), u"The server is gone"_s);
    add("cancelled", RPC_E_CALL_CANCELED, u"The server is busy"_s);
    add("anything else", E_ACCESSDENIED, u"COM error 0x80070005"_s);
}

void tst_ComObject::failures()
{
    QFETCH(const qint64, status);
    QFETCH(const QString, reason);
    m_script.invoke = [status](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &, UINT &argument) {
        argument = 1; // the second of three, counted from the last
        return HRESULT(status);
    };
    const QString warning = u"QAxBase: Error calling IDispatch member Add(int, int, int): "_s + reason;
    QTest::ignoreMessage(QtWarningMsg, qPrintable(warning));
    QVERIFY(!object()->dynamicCall("Add(int, int, int)", {1, 2, 3}).isValid());
}

void tst_ComObject::exceptionWithDeferredFillIn()
{
    m_script.invoke = [](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &info, UINT &) {
        info.pfnDeferredFillIn = [](EXCEPINFO *late) -> HRESULT {
            late->wCode = 4711;
            late->bstrDescription = SysAllocString(L"Late");
            return S_OK;
        };
        return DISP_E_EXCEPTION;
    };
    const auto client = object();
    QSignalSpy spy(client.get(), &AutomationObject::exception);
    QVERIFY(!client->dynamicCall("Send()").isValid());
    QCOMPARE(spy.count(), 1);
    QCOMPARE(spy.first(), QVariantList({4711, u""_s, u"Late"_s, u""_s}));
}

void tst_ComObject::exceptionCodes_data()
{
    QTest::addColumn<int>("wCode");
    QTest::addColumn<qint64>("scode");
    QTest::addColumn<int>("code");

    QTest::newRow("wCode") << 4096 << qint64(0) << 4096;
    QTest::newRow("wCode of 16 bits") << 65535 << qint64(0) << 65535;
    QTest::newRow("wCode before scode") << 5 << qint64(E_FAIL) << 5;
    QTest::newRow("scode") << 0 << qint64(E_FAIL) << int(E_FAIL);
    QTest::newRow("neither") << 0 << qint64(0) << 0;
}

void tst_ComObject::exceptionCodes()
{
    QFETCH(const int, wCode);
    QFETCH(const qint64, scode);
    m_script.invoke = [=](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &info, UINT &) {
        info.wCode = WORD(wCode);
        info.scode = SCODE(scode);
        return DISP_E_EXCEPTION;
    };
    const auto client = object();
    QSignalSpy spy(client.get(), &AutomationObject::exception);
    QVERIFY(!client->setProperty("Subject", u"s"_s));
    QTEST(spy.first().first().toInt(), "code");
}

void tst_ComObject::helpContext_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("context");
    QTest::addColumn<QString>("help");

    QTest::newRow("both") << u"outlook.chm"_s << 12 << u"outlook.chm [12]"_s;
    QTest::newRow("no context") << u"outlook.chm"_s << 0 << u"outlook.chm"_s;
    QTest::newRow("no text") << u""_s << 12 << u""_s;
}

void tst_ComObject::helpContext()
{
    QFETCH(const QString, file);
    QFETCH(const int, context);
    m_script.invoke = [&](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &info, UINT &) {
        info.wCode = 1;
        info.bstrHelpFile = SysAllocString(reinterpret_cast<const OLECHAR *>(file.utf16()));
        info.dwHelpContext = DWORD(context);
        return DISP_E_EXCEPTION;
    };
    const auto client = object();
    QSignalSpy spy(client.get(), &AutomationObject::exception);
    client->dynamicCall("Send()");
    QTEST(spy.first().at(3).toString(), "help");
}

void tst_ComObject::rejectionIsRepeated()
{
    int rejections = 2;
    m_script.invoke = [&rejections](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &, UINT &) {
        return rejections-- > 0 ? RPC_E_SERVERCALL_RETRYLATER : S_OK;
    };
    QTest::failOnWarning(QRegularExpression(u".*"_s));
    QVERIFY(object()->setProperty("Subject", u"s"_s));
    QCOMPARE(m_script.flags.size(), 3);
}

void tst_ComObject::rejectionForTooLong()
{
    m_script.invoke = [](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &, UINT &) {
        return RPC_E_CALL_REJECTED;
    };
    const auto client = object();
    QTest::ignoreMessage(QtWarningMsg, "QAxBase: Error calling IDispatch member Send(): The server is busy");
    QVERIFY(!client->dynamicCall("Send()").isValid());
    QCOMPARE(m_script.flags.size(), 4);
    QTest::ignoreMessage(QtWarningMsg, "QAxBase: Error calling IDispatch member Send(): The server is busy");
    client->dynamicCall("Send()");
    QCOMPARE(m_script.flags.size(), 5);
}

void tst_ComObject::cancelledCallIsNoAnswer()
{
    HRESULT status = RPC_E_CALL_REJECTED;
    m_script.invoke = [&status](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &, UINT &) {
        return status;
    };
    const auto client = object();
    for (int call = 0; call < 3; ++call)
        QTest::ignoreMessage(QtWarningMsg, "QAxBase: Error calling IDispatch member Send(): The server is busy");
    client->dynamicCall("Send()");
    QCOMPARE(m_script.flags.size(), 4);
    status = RPC_E_CALL_CANCELED;
    client->dynamicCall("Send()");
    status = RPC_E_CALL_REJECTED;
    client->dynamicCall("Send()");
    QCOMPARE(m_script.flags.size(), 6); // with its patience back the client would have asked three times more
}

void tst_ComObject::thrownByReceiverLeavesNothingBehind()
{
    m_script.invoke = [](WORD, DISPPARAMS &, VARIANT &, EXCEPINFO &info, UINT &) {
        info.wCode = 4096;
        info.bstrDescription = SysAllocString(L"text");
        return DISP_E_EXCEPTION;
    };
    const auto client = object();
    connect(client.get(), &AutomationObject::exception, this, [] { throw std::runtime_error("thrown"); });
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, client->setProperty("SendUsingAccount", client->asVariant()));
}

QTEST_GUILESS_MAIN(tst_ComObject)
#include "tst_comobject.moc"

// The walk over the global address list through the COM client, against a bare loop on IDispatch over the same server
// that makes the same four calls an entry, and against one that asks for the numbers of the members besides. Prints one
// JSON object. usage: com_walk ENTRIES ROUNDS

#include "automation/automationobject.h"
#include "automation/referencecounted.h"
#include "outlook.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QTextStream>

#include <algorithm>
#include <oleauto.h>
#include <vector>

using namespace Qt::Literals::StringLiterals;
using Microsoft::WRL::ComPtr;

namespace {

[[noreturn]] void fail(const char *what)
{
    qFatal("com_walk: %s", what);
}

void writeScenario(const QString &path, int entries)
{
    QJsonArray list;
    for (int i = 0; i < entries; ++i) {
        list.append(
            QJsonObject{{u"Alias"_s, u"alias%1"_s.arg(i)}, {u"PrimarySmtpAddress"_s, u"user%1@example.com"_s.arg(i)}});
    }
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        fail("the scenario can't be written");
    file.write(QJsonDocument(QJsonObject{{u"globalAddressList"_s, list}}).toJson());
}

DISPID idOf(IDispatch &object, const wchar_t *name)
{
    DISPID id = DISPID_UNKNOWN;
    auto *text = const_cast<wchar_t *>(name);
    if (FAILED(object.GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id)))
        fail("a member isn't known");
    return id;
}

VARIANT invoked(IDispatch &object, DISPID id, VARIANT *argument = nullptr)
{
    VARIANT result;
    VariantInit(&result);
    DISPPARAMS parameters{argument, nullptr, argument != nullptr ? 1U : 0U, 0};
    if (FAILED(object.Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD | DISPATCH_PROPERTYGET, &parameters,
                             &result, nullptr, nullptr)))
        fail("a call has failed");
    return result;
}

ComPtr<IDispatch> objectOf(IDispatch &object, DISPID id, VARIANT *argument = nullptr)
{
    const VARIANT result = invoked(object, id, argument);
    return adopt(V_DISPATCH(&result));
}

/// With \a knowsKinds four calls an entry: the numbers of members are those of the first object of the kind, which
/// holds for Outlook. Without it three more, since each object is asked for the numbers, as a client has to do that
/// knows nothing of it but names.
int bareWalk(bool knowsKinds)
{
    CLSID classId{};
    ComPtr<IDispatch> application;
    if (FAILED(CLSIDFromProgID(L"Outlook.Application", &classId)) ||
        FAILED(CoCreateInstance(classId, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(application.GetAddressOf()))))
        fail("there is no Outlook");
    const auto session = objectOf(*application.Get(), idOf(*application.Get(), L"Session"));
    const auto list = objectOf(*session.Get(), idOf(*session.Get(), L"GetGlobalAddressList"));
    const auto entries = objectOf(*list.Get(), idOf(*list.Get(), L"AddressEntries"));
    const VARIANT count = invoked(*entries.Get(), idOf(*entries.Get(), L"Count"));

    const DISPID item = idOf(*entries.Get(), L"Item");
    DISPID exchangeUser = DISPID_UNKNOWN;
    DISPID alias = DISPID_UNKNOWN;
    DISPID address = DISPID_UNKNOWN;
    int characters = 0;
    for (int i = 1; i <= V_I4(&count); ++i) {
        VARIANT index;
        V_VT(&index) = VT_I4;
        V_I4(&index) = i;
        const auto entry = objectOf(*entries.Get(), item, &index);
        if (i == 1 || !knowsKinds)
            exchangeUser = idOf(*entry.Get(), L"GetExchangeUser");
        const auto user = objectOf(*entry.Get(), exchangeUser);
        if (i == 1 || !knowsKinds) {
            alias = idOf(*user.Get(), L"Alias");
            address = idOf(*user.Get(), L"PrimarySmtpAddress");
        }
        for (const DISPID property : {alias, address}) {
            VARIANT text = invoked(*user.Get(), property);
            characters += int(SysStringLen(V_BSTR(&text)));
            VariantClear(&text);
        }
    }
    return characters;
}

/// Up to and with the end of the objects, which the program has at the end of its run.
int clientWalk()
{
    Outlook outlook;
    if (!outlook.version().isValid())
        fail("there is no Outlook");
    return int(outlook.getPrimarySmtpAddressForAliasAddress(u"nobody@example.com"_s).size());
}

template<typename Walk>
double seconds(Walk walk)
{
    QElapsedTimer timer;
    timer.start();
    walk();
    return double(timer.nsecsElapsed()) / 1e9;
}

double median(std::vector<double> values)
{
    std::sort(values.begin(), values.end());
    return values.at(values.size() / 2);
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const int entries = QCoreApplication::arguments().value(1).toInt();
    const int rounds = QCoreApplication::arguments().value(2).toInt();
    if (entries < 1 || rounds < 1)
        fail("usage: com_walk ENTRIES ROUNDS");
    // The log line of the walk would be its only output otherwise.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    const QTemporaryDir folder;
    writeScenario(folder.filePath(u"scenario.json"_s), entries);
    qputenv("LETTERLIFT_OUTLOOK_SCENARIO", folder.filePath(u"scenario.json"_s).toUtf8());
    qputenv("LETTERLIFT_OUTLOOK_STORE", folder.filePath(u"store"_s).toUtf8());
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        fail("COM can't be initialised");

    std::vector<double> client;
    std::vector<double> bare;
    std::vector<double> bareKnowing;
    for (int round = 0; round < rounds; ++round) {
        client.push_back(seconds(clientWalk));
        bare.push_back(seconds([] { return bareWalk(false); }));
        bareKnowing.push_back(seconds([] { return bareWalk(true); }));
    }
    const QJsonObject result{
        {u"entries"_s, entries},
        {u"rounds"_s, rounds},
        {u"s_per_entry"_s, median(client) / entries},
        {u"yardstick_s_per_entry"_s, median(bare) / entries},
        {u"knowing_yardstick_s_per_entry"_s, median(bareKnowing) / entries},
    };
    QTextStream(stdout) << QJsonDocument(result).toJson(QJsonDocument::Compact) << Qt::endl;
    CoUninitialize();
    return 0;
}

// A COM local server that answers to "Outlook.Application" with the simulated Outlook.

#include "registration.h"
#include "standinserver.h"

#include <QCoreApplication>
#include <QTextStream>
#include <QTimer>

#include <objbase.h>

#include <chrono>
#include <thread>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

// A client that has had the server started comes at once, or not at all.
constexpr auto firstClientLimit = 60s;

/// In case that the process doesn't end by itself, which was seen under Wine 8, rarely and without a trace of why. It
/// would keep a test waiting that reads its error output.
void endAfterAll()
{
    std::this_thread::sleep_for(5s);
    TerminateProcess(GetCurrentProcess(), 0);
}

int fail(const QString &text)
{
    QTextStream(stderr) << "outlook-stand-in: " << text << Qt::endl;
    return 1;
}

bool isOption(const QString &argument, QLatin1StringView name)
{
    return (argument.startsWith(u'/') || argument.startsWith(u'-')) &&
           argument.sliced(1).compare(name, Qt::CaseInsensitive) == 0;
}

int serve(const QString &program)
{
    TypeLibrary library;
    if (!library.load(program))
        return fail(u"The type library can't be read."_s);
    StandInServer server(library);
    QObject::connect(&server, &StandInServer::finished, QCoreApplication::instance(), &QCoreApplication::quit,
                     Qt::QueuedConnection);
    QObject::connect(&server, &StandInServer::finished, [] { std::thread(endAfterAll).detach(); });
    if (!server.open())
        return fail(u"The class can't be made known to COM."_s);
    QTimer::singleShot(firstClientLimit, &server, [&server] {
        if (server.outlook() == nullptr)
            QCoreApplication::quit();
    });
    const int status = QCoreApplication::exec();
    // All that matters was done with the last object. Wine 8 winds COM down in anything from no time to seconds, and
    // the next client is not to meet a server that is about to end.
    TerminateProcess(GetCurrentProcess(), UINT(status));
    return status;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    // The name by which the default store is found, see QStandardPaths.
    QCoreApplication::setApplicationName(u"letterlift"_s);
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)))
        return fail(u"COM can't be initialised."_s);

    const QString program = QCoreApplication::applicationFilePath();
    const QString option = QCoreApplication::arguments().value(1);
    int status = 0;
    QString errorText;
    if (isOption(option, "RegServer"_L1))
        status = registerStandIn(program, errorText) ? 0 : fail(errorText);
    else if (isOption(option, "UnregServer"_L1))
        status = unregisterStandIn(errorText) ? 0 : fail(errorText);
    else if (option.isEmpty() || isOption(option, "Embedding"_L1))
        status = serve(program);
    else
        status = fail(u"usage: outlook-stand-in [/RegServer | /UnregServer]"_s);
    CoUninitialize();
    return status;
}

#include "automation.h"

#include "simulatedobject.h"
#include "simulation/outlookserver.h"
#include "simulation/outlookstore.h"

#include <QDebug>
#include <QFile>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A simulated Outlook with its mailbox from the scenario file and its store on the disk.
class SimulatedOutlook
{
public:
    SimulatedOutlook(const Scenario &scenario, std::unique_ptr<OutlookStore> store)
        : m_store(std::move(store))
        , m_server(scenario, *m_store)
    {
    }

    [[nodiscard]] OutlookServer &server() { return m_server; }

private:
    std::unique_ptr<OutlookStore> m_store;
    OutlookServer m_server;
};

std::shared_ptr<SimulatedOutlook> preparedOutlook;

std::optional<Scenario> loadScenario(QString &errorText)
{
    const QString path = qEnvironmentVariable("LETTERLIFT_OUTLOOK_SCENARIO");
    if (path.isEmpty())
        return builtInScenario();

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        errorText = u"The scenario %1 can't be read: %2"_s.arg(path, file.errorString());
        return std::nullopt;
    }
    QString reason;
    std::optional<Scenario> scenario = readScenario(file.readAll(), reason);
    if (!scenario)
        errorText = u"The scenario %1 is refused: %2"_s.arg(path, reason);
    return scenario;
}

QString storeDirectory()
{
    const QString path = qEnvironmentVariable("LETTERLIFT_OUTLOOK_STORE");
    return path.isEmpty() ? QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) + u"/outlook"_s
                          : path;
}

bool startSimulatedOutlook(QString &errorText)
{
    const std::optional<Scenario> scenario = loadScenario(errorText);
    if (!scenario)
        return false;
    auto store = std::make_unique<OutlookStore>(storeDirectory());
    if (!store->open(errorText))
        return false;
    preparedOutlook = std::make_shared<SimulatedOutlook>(*scenario, std::move(store));
    return true;
}

} // namespace

bool prepareAutomation(QString &errorMessage)
{
    QString errorText;
    if (startSimulatedOutlook(errorText))
        return true;
    errorMessage = u"Simulated Outlook: "_s + errorText;
    qWarning().noquote() << errorMessage;
    return false;
}

AutomationObject *createAutomationObject(const QString &progId, QObject *parent)
{
    QString errorMessage;
    if (preparedOutlook != nullptr || prepareAutomation(errorMessage)) {
        // The objects hold the simulated Outlook; it ends with the last of them, and the next run has its own.
        const std::shared_ptr<SimulatedOutlook> outlook = std::move(preparedOutlook);
        const std::shared_ptr<OutlookServer> server(outlook, &outlook->server());
        if (const std::optional<ObjectReference> application = server->create(progId))
            return new SimulatedObject(server, application, parent);
    }
    qWarning("QAxBase::setControl: requested control %s could not be instantiated", qUtf8Printable(progId));
    return new SimulatedObject(nullptr, std::nullopt, parent);
}

#include "simulatedoutlook.h"

#include "outlookstore.h"

#include <QFile>
#include <QStandardPaths>

using namespace Qt::Literals::StringLiterals;

namespace {

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

} // namespace

SimulatedOutlook::SimulatedOutlook(const Scenario &scenario, std::unique_ptr<OutlookStore> store)
    : m_store(std::move(store))
    , m_server(scenario, *m_store)
{
}

SimulatedOutlook::~SimulatedOutlook() = default;

std::unique_ptr<SimulatedOutlook> SimulatedOutlook::start(QString &errorText)
{
    const std::optional<Scenario> scenario = loadScenario(errorText);
    if (!scenario)
        return nullptr;
    auto store = std::make_unique<OutlookStore>(storeDirectory());
    if (!store->open(errorText))
        return nullptr;
    return std::unique_ptr<SimulatedOutlook>(new SimulatedOutlook(*scenario, std::move(store)));
}

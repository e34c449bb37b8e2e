#include "automation.h"

#include "simulatedobject.h"
#include "simulation/simulatedoutlook.h"

#include <QDebug>

using namespace Qt::Literals::StringLiterals;

namespace {

std::shared_ptr<SimulatedOutlook> preparedOutlook;

} // namespace

bool prepareAutomation(QString &errorMessage)
{
    QString errorText;
    preparedOutlook = SimulatedOutlook::start(errorText);
    if (preparedOutlook != nullptr)
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

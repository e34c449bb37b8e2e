#include "automation.h"

#include "comapartment.h"
#include "comobject.h"
#include "comserver.h"

#include <QDebug>

#include <memory>

bool prepareAutomation(QString &)
{
    return true;
}

AutomationObject *createAutomationObject(const QString &progId, QObject *parent)
{
    auto apartment = std::make_shared<ComApartment>();
    const Microsoft::WRL::ComPtr<IDispatch> server = createComServer(progId);
    if (server == nullptr)
        qWarning("QAxBase::setControl: requested control %s could not be instantiated", qUtf8Printable(progId));
    return new ComObject(std::move(apartment), server, parent);
}

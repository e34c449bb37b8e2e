#include "automation.h"

#include "activeqtobject.h"
#include "comapartment.h"
#include "comserver.h"

#include <QAxObject>

namespace {

/// Has a server that is busy asked again, which QAxObject's own way of starting one doesn't do.
class PatientAxObject : public QAxObject
{
protected:
    /// setControl() has made control() the number of the class, if there is such a class.
    bool initialize(IUnknown **object) override
    {
        if (*object != nullptr || control().isEmpty())
            return false;
        *object = createComServer(control()).Detach();
        return *object != nullptr;
    }
};

} // namespace

bool prepareAutomation(QString &)
{
    return true;
}

AutomationObject *createAutomationObject(const QString &progId, QObject *parent)
{
    auto apartment = std::make_shared<ComApartment>();
    auto object = std::make_unique<PatientAxObject>();
    // If there is no such server, QAxObject warns of it.
    object->setControl(progId);
    return new ActiveQtObject(std::move(apartment), std::move(object), parent);
}

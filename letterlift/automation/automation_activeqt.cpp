#include "automation.h"

#include "activeqtobject.h"
#include "comapartment.h"

#include <QAxObject>

bool prepareAutomation(QString &)
{
    return true;
}

AutomationObject *createAutomationObject(const QString &progId, QObject *parent)
{
    auto apartment = std::make_shared<ComApartment>();
    // If there is no such server, QAxObject has warned of it.
    auto object = std::make_unique<QAxObject>(progId);
    return new ActiveQtObject(std::move(apartment), std::move(object), parent);
}

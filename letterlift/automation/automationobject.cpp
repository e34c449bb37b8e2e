#include "automationobject.h"

#include <QDebug>

namespace {

int liveObjects = 0;

} // namespace

AutomationObject::AutomationObject(QObject *parent)
    : QObject(parent)
{
    ++liveObjects;
}

AutomationObject::~AutomationObject()
{
    --liveObjects;
}

int AutomationObject::liveCount()
{
    return liveObjects;
}

void AutomationObject::disableMetaObject()
{
    m_hasProperties = false;
}

void AutomationObject::reportNoServer(const char *member) const
{
    qWarning("QAxBase: No server behind the object to call %s of", member);
}

void AutomationObject::reportCallError(const char *member, const QString &reason) const
{
    qWarning("QAxBase: Error calling IDispatch member %s: %s", member, qUtf8Printable(reason));
}

void AutomationObject::reportCallError(const char *member, CallError error, int argument) const
{
    reportCallError(member, callErrorText(error, argument));
}

void AutomationObject::reportException(const char *member, const AutomationException &exception)
{
    if (receivers(SIGNAL(exception(int, QString, QString, QString))) > 0) {
        Q_EMIT this->exception(exception.code, exception.source, exception.description, exception.help);
        return;
    }
    qWarning("QAxBase: Error calling IDispatch member %s: The server raised an exception\n"
             "    Code: %d\n"
             "    Source: %s\n"
             "    Description: %s\n"
             "    Help: %s",
             member, exception.code, qUtf8Printable(exception.source), qUtf8Printable(exception.description),
             qUtf8Printable(exception.help));
}

bool AutomationObject::canCall(const char *member, const QVariantList &arguments) const
{
    if (isNull()) {
        reportNoServer(member);
        return false;
    }
    if (arguments.size() > maximumArguments) {
        reportCallError(member, CallError::TooManyArguments);
        return false;
    }
    return true;
}

/// ActiveQt reads and writes properties by the meta-object that it has generated; a program that switched it off must
/// not do better with another backend.
bool AutomationObject::canUseProperty(const char *name) const
{
    if (!canCall(name, {}))
        return false;
    if (!m_hasProperties)
        reportCallError(name, CallError::PropertiesOff);
    return m_hasProperties;
}

#include "automationobject.h"

#include <QDebug>

using namespace Qt::Literals::StringLiterals;

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

void AutomationObject::reportNoServer(const char *member) const
{
    qWarning("QAxBase: No server behind the object to call %s of", member);
}

void AutomationObject::reportCallError(const char *member, const QString &reason) const
{
    qWarning("QAxBase: Error calling IDispatch member %s: %s", member, qUtf8Printable(reason));
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

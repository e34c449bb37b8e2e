#include "boxobserverplugin.h"

#include "boxobserver.h"

#include <QCoreApplication>

using namespace Qt::Literals::StringLiterals;

QObject *BoxObserverPlugin::create(const QString &key, const QString &)
{
    if (key.compare(u"boxobserver"_s, Qt::CaseInsensitive) != 0)
        return nullptr;
    auto *const observer = new BoxObserver(qEnvironmentVariable("LETTERLIFT_BOX_REPORT"),
                                           qEnvironmentVariable("LETTERLIFT_BOX_CLOSE") == u"1"_s);
    QCoreApplication::instance()->installEventFilter(observer);
    return observer;
}

#include "standinserver.h"

#include "identifiers.h"
#include "outlookdispatch.h"
#include "simulation/simulatedoutlook.h"
#include "standinclass.h"

#include <QTextStream>

#include <objbase.h>
#include <wrl/client.h>

using namespace Qt::Literals::StringLiterals;
using Microsoft::WRL::ComPtr;

StandInServer::StandInServer(const TypeLibrary &library, QObject *parent)
    : QObject(parent)
    , m_library(library)
{
}

StandInServer::~StandInServer()
{
    close();
}

bool StandInServer::open()
{
    const ComPtr<IMessageFilter> filter = createBusyFilter(*this);
    const ComPtr<IClassFactory> factory = createStandInClass(*this);
    return SUCCEEDED(CoRegisterMessageFilter(filter.Get(), nullptr)) &&
           SUCCEEDED(CoRegisterClassObject(standInClassId, factory.Get(), CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE,
                                           &m_classCookie));
}

IDispatch *StandInServer::createApplication()
{
    if (m_outlook == nullptr) {
        QString errorText;
        m_outlook = SimulatedOutlook::start(errorText);
        if (m_outlook == nullptr) {
            QTextStream(stderr) << u"Simulated Outlook: "_s << errorText << Qt::endl;
            return nullptr;
        }
    }
    const std::optional<ObjectReference> application = m_outlook->server().create(u"Outlook.Application"_s);
    return application ? new OutlookDispatch(*this, *application) : nullptr;
}

void StandInServer::hold()
{
    ++m_holds;
}

void StandInServer::letGo()
{
    if (--m_holds > 0)
        return;
    // Before the client has its answer: it may ask for the next server at once, and that has to be another process.
    close();
    Q_EMIT finished();
}

void StandInServer::revoke()
{
    if (m_classCookie != 0)
        CoRevokeClassObject(m_classCookie);
    m_classCookie = 0;
}

void StandInServer::close()
{
    revoke();
    m_outlook.reset();
}

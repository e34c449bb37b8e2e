#include "outlook.h"

#include "automation/automationobject.h"
#include "runlog.h"

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

// Outlook's code for nearly everything that it refuses. On the mail item it means an address that it doesn't know.
constexpr int invalidAddressCode = 0x1000;

// OlImportance of Outlook's type library
constexpr int importanceLow = 0;
constexpr int importanceNormal = 1;
constexpr int importanceHigh = 2;

} // namespace

Outlook::Outlook(QObject *parent, const AutomationFactory &createObject)
    : QObject(parent)
    , m_application(createObject(u"Outlook.Application"_s, this))
{
    if (!logon())
        return;
    m_mailItem = createItem();
    if (m_mailItem != nullptr)
        connect(m_mailItem, "2exception(int, QString, QString, QString)", this, "1exception(int)");
}

Outlook::~Outlook()
{
    if (m_signatureItem != nullptr && m_signatureItem != m_mailItem) {
        logStream() << u"Deleting new mail item"_s;
        m_signatureItem->dynamicCall("Delete()");
        delete m_signatureItem;
    }
    // This lets go of the mail; it doesn't delete it.
    delete m_mailItem;
    logoff();
}

s3Version Outlook::version() const
{
    QString text;
    if (m_application != nullptr && !m_application->isNull()) {
        const QVariant value = m_application->property("Version");
        if (value.typeId() == QMetaType::QString)
            text = value.toString();
    }
    return s3Version(text);
}

void Outlook::display()
{
    logStream() << u"Displaying mail"_s;
    callMailMethod(u"Display()"_s);
}

void Outlook::sendMail()
{
    logStream() << u"Sending mail"_s;
    callMailMethod(u"Send()"_s);
}

void Outlook::setSubject(const QString &text)
{
    setMailProperty(u"Subject"_s, text);
}

void Outlook::setImportance(int priority)
{
    const int importance = priority < 3 ? importanceHigh : priority > 3 ? importanceLow : importanceNormal;
    setMailProperty(u"Importance"_s, importance);
}

void Outlook::setReadReceiptRequested(bool on)
{
    setMailProperty(u"ReadReceiptRequested"_s, on);
}

void Outlook::setDeliveryReportRequested(bool on)
{
    setMailProperty(u"OriginatorDeliveryReportRequested"_s, on);
}

void Outlook::exception(int code)
{
    if (code == invalidAddressCode)
        throw std::runtime_error("At least one originator or recipient is invalid.");
}

void Outlook::setMailProperty(const QString &name, const QVariant &value)
{
    if (m_mailItem != nullptr)
        m_mailItem->setProperty(name.toUtf8().constData(), value);
}

QVariant Outlook::callMailMethod(const QString &name)
{
    return m_mailItem != nullptr ? m_mailItem->dynamicCall(name.toUtf8().constData()) : QVariant();
}

AutomationObject *Outlook::session() const
{
    if (m_application == nullptr || m_application->isNull())
        return nullptr;
    return m_application->querySubObject("Session");
}

bool Outlook::logon()
{
    AutomationObject *const currentSession = session();
    if (currentSession == nullptr)
        return false;
    currentSession->dynamicCall("Logon()");
    delete currentSession;
    return true;
}

void Outlook::logoff()
{
    AutomationObject *const currentSession = session();
    if (currentSession == nullptr)
        return;
    logStream() << u"Logoff()"_s;
    currentSession->dynamicCall("Logoff()");
    delete currentSession;
}

AutomationObject *Outlook::createItem() const
{
    return m_application->querySubObject("CreateItem(OlItemType)", {u"olMailItem"_s});
}

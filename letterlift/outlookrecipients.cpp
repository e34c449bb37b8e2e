// The collections of the mail, the resolution of addresses, and the originator.

#include "outlook.h"

#include "automation/automationobject.h"
#include "runlog.h"
#include "s3elapsedtimer.h"

#include <memory>

using namespace Qt::Literals::StringLiterals;

namespace {

// OlMailRecipientType of Outlook's type library
constexpr int recipientTo = 1;
constexpr int recipientCc = 2;
constexpr int recipientBcc = 3;

// A value of another type than text counts as empty.
QString textProperty(AutomationObject &object, const char *name)
{
    const QVariant value = object.property(name);
    return value.typeId() == QMetaType::QString ? value.toString() : QString();
}

QString partAt(const QString &address, qsizetype index)
{
    return address.split(u'@', Qt::KeepEmptyParts, Qt::CaseSensitive).value(index);
}

} // namespace

void Outlook::addRecipients(const QStringList &addresses)
{
    addToCollection(u"Recipients"_s, addresses, recipientTo);
}

void Outlook::addCopyRecipients(const QStringList &addresses)
{
    addToCollection(u"Recipients"_s, addresses, recipientCc);
}

void Outlook::addBlindCopyRecipients(const QStringList &addresses)
{
    addToCollection(u"Recipients"_s, addresses, recipientBcc);
}

void Outlook::addReplyRecipients(const QStringList &addresses)
{
    addToCollection(u"ReplyRecipients"_s, addresses, QVariant());
}

void Outlook::addAttachments(const QStringList &paths)
{
    addToCollection(u"Attachments"_s, paths, QVariant());
}

void Outlook::addToCollection(const QString &collectionName, const QStringList &values, const QVariant &type)
{
    if (values.isEmpty() || m_mailItem == nullptr)
        return;
    // The collection takes the wrappers of its elements with it, also when a call throws.
    const std::unique_ptr<AutomationObject> collection(m_mailItem->querySubObject(collectionName.toUtf8().constData()));
    if (collection == nullptr)
        return;
    for (const QString &value : values) {
        AutomationObject *const element = collection->querySubObject("Add(const QVariant&)", {value});
        if (element != nullptr && !type.isNull())
            element->setProperty("Type", type);
    }
}

void Outlook::setOriginator(const QString &from)
{
    if (from.isEmpty())
        return;
    const QString address = resolveSmtpAddress(from);
    const AutomationObject *const account = findAccount(address);
    logStream() << u"Originator [%1]"_s.arg(address);
    if (account != nullptr)
        setMailProperty(u"SendUsingAccount"_s, account->asVariant());
    else
        setMailProperty(u"SentOnBehalfOfName"_s, address);
}

AutomationObject *Outlook::findAccount(const QString &address)
{
    AutomationObject *const currentSession = session();
    if (currentSession == nullptr)
        return nullptr;
    AutomationObject *const accounts = currentSession->querySubObject("Accounts");
    if (accounts == nullptr)
        return nullptr;
    const int count = accounts->property("Count").toInt();
    for (int i = 1; i <= count; ++i) {
        AutomationObject *const account = accounts->querySubObject("Item(QVariant)", {i});
        if (account == nullptr)
            continue;
        const QString displayName = textProperty(*account, "DisplayName");
        const QString smtpAddress = textProperty(*account, "SmtpAddress");
        if (address == displayName || address == smtpAddress)
            return account;
    }
    return nullptr;
}

QString Outlook::resolveSmtpAddress(const QString &address)
{
    AutomationObject *const currentSession = session();
    if (currentSession == nullptr)
        return address;
    const std::unique_ptr<AutomationObject> recipient(
        currentSession->querySubObject("CreateRecipient(QString)", {address}));
    if (recipient == nullptr || !recipient->dynamicCall("Resolve()").toBool())
        return address;
    AutomationObject *const entry = recipient->querySubObject("AddressEntry()");
    if (entry == nullptr)
        return address;

    const QString type = textProperty(*entry, "Type");
    if (type == u"EX"_s) {
        AutomationObject *const user = entry->querySubObject("GetExchangeUser()");
        return user != nullptr ? textProperty(*user, "PrimarySmtpAddress") : address;
    }
    if (type == u"SMTP"_s) {
        const QString primaryAddress = getPrimarySmtpAddressForAliasAddress(address);
        return primaryAddress.isEmpty() ? address : primaryAddress;
    }
    return address;
}

QString Outlook::getPrimarySmtpAddressForAliasAddress(const QString &address)
{
    s3ElapsedTimer timer(true);
    const QString result = primaryAddressInGlobalAddressList(address);
    logStream() << u"getPrimarySmtpAddressForAliasAddress(%1) = %2, elapsed = %3 ms"_s.arg(
        address, result, QString::number(timer.milliseconds(false)));
    return result;
}

QString Outlook::primaryAddressInGlobalAddressList(const QString &address)
{
    AutomationObject *const currentSession = session();
    if (currentSession == nullptr)
        return QString();
    AutomationObject *const list = currentSession->querySubObject("GetGlobalAddressList()");
    if (list == nullptr)
        return QString();
    AutomationObject *const entries = list->querySubObject("AddressEntries");
    if (entries == nullptr)
        return QString();

    const QString wantedAlias = partAt(address, 0);
    const QString wantedDomain = partAt(address, 1);
    const int count = entries->property("Count").toInt();
    for (int i = 1; i <= count; ++i) {
        AutomationObject *const entry = entries->querySubObject("Item(QVariant)", {i});
        if (entry == nullptr)
            continue;
        entry->disableMetaObject();
        AutomationObject *const user = entry->querySubObject("GetExchangeUser()");
        if (user == nullptr)
            continue;
        const QString alias = textProperty(*user, "Alias");
        const QString primaryAddress = textProperty(*user, "PrimarySmtpAddress");
        if (alias == wantedAlias && partAt(primaryAddress, 1) == wantedDomain)
            return primaryAddress;
    }
    return QString();
}

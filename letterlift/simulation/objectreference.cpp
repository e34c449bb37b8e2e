#include "objectreference.h"

#include <QStringList>

using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList &kindNames()
{
    static const QStringList names{u"Application"_s,     u"Session"_s,     u"Accounts"_s,       u"Account"_s,
                                   u"Recipient"_s,       u"AddressList"_s, u"AddressEntries"_s, u"AddressEntry"_s,
                                   u"ExchangeUser"_s,    u"MailItem"_s,    u"Recipients"_s,     u"ReplyRecipients"_s,
                                   u"Attachments"_s,     u"Element"_s,     u"Inspector"_s,      u"Document"_s,
                                   u"WordApplication"_s, u"Selection"_s};
    return names;
}

} // namespace

QString objectKindName(ObjectKind kind)
{
    return kindNames().at(int(kind));
}

std::optional<ObjectKind> objectKindFromName(const QString &name)
{
    const qsizetype index = kindNames().indexOf(name);
    return index < 0 ? std::nullopt : std::optional(ObjectKind(index));
}

QString ObjectReference::toString() const
{
    return objectKindName(kind) + u'#' + QString::number(number);
}

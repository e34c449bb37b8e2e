// Application, session, accounts and addresses.

#include "outlookmodel.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// OlItemType of Outlook's type library, by key or number
bool isMailItemType(const QVariant &type)
{
    constexpr int olMailItem = 0;
    bool isNumber = false;
    const int number = type.toInt(&isNumber);
    return type.toString() == u"olMailItem"_s || (isNumber && number == olMailItem);
}

ModelResult indexOutOfBounds()
{
    return ModelResult::outlookException(u"Array index out of bounds."_s);
}

/// The place that a 1-based \a index means in a list of \a count entries; -1 if there is none.
int placeOf(const QVariant &index, qsizetype count)
{
    const int number = index.toInt();
    return number >= 1 && number <= count ? number - 1 : -1;
}

} // namespace

void OutlookModel::addSessionMembers(MemberTable &table)
{
    using enum ObjectKind;
    addMember(table, Application, "Version", &OutlookModel::applicationVersion);
    addMember(table, Application, "Session", &OutlookModel::applicationSession);
    addMember(table, Application, "CreateItem(OlItemType)", &OutlookModel::createItem);

    addMember(table, Session, "Logon()", &OutlookModel::nothingToDo);
    addMember(table, Session, "Logoff()", &OutlookModel::nothingToDo);
    addMember(table, Session, "CreateRecipient(QString)", &OutlookModel::createRecipient);
    addMember(table, Session, "GetGlobalAddressList()", &OutlookModel::globalAddressList);
    addMember(table, Session, "Accounts", &OutlookModel::accounts);

    addMember(table, Accounts, "Count", &OutlookModel::accountCount);
    addMember(table, Accounts, "Item(QVariant)", &OutlookModel::accountItem);
    addMember(table, Account, "DisplayName", &OutlookModel::accountDisplayName);
    addMember(table, Account, "SmtpAddress", &OutlookModel::accountSmtpAddress);

    addMember(table, Recipient, "Resolve()", &OutlookModel::recipientResolve);
    addMember(table, Recipient, "AddressEntry()", &OutlookModel::recipientAddressEntry);
    addMember(table, AddressList, "AddressEntries", &OutlookModel::addressEntries);
    addMember(table, AddressEntries, "Count", &OutlookModel::addressEntryCount);
    addMember(table, AddressEntries, "Item(QVariant)", &OutlookModel::addressEntryItem);
    addMember(table, AddressEntry, "Type", &OutlookModel::addressEntryType);
    addMember(table, AddressEntry, "GetExchangeUser()", &OutlookModel::exchangeUser);
    addMember(table, ExchangeUser, "Alias", &OutlookModel::exchangeUserAlias);
    addMember(table, ExchangeUser, "PrimarySmtpAddress", &OutlookModel::exchangeUserAddress);
}

ModelResult OutlookModel::applicationVersion(const Node &, const QVariantList &)
{
    return ModelResult::of(m_scenario.version);
}

ModelResult OutlookModel::applicationSession(const Node &, const QVariantList &)
{
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::Session)));
}

ModelResult OutlookModel::createItem(const Node &, const QVariantList &arguments)
{
    if (!isMailItemType(arguments.first()))
        return ModelResult::refused(CallFault::TypeMismatch);
    m_mailItems.emplace_back();
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::MailItem, int(m_mailItems.size()) - 1)));
}

ModelResult OutlookModel::nothingToDo(const Node &, const QVariantList &)
{
    return ModelResult::nothing();
}

ModelResult OutlookModel::createRecipient(const Node &, const QVariantList &arguments)
{
    Node recipient;
    recipient.text = arguments.first().toString();
    recipient.index = int(m_nodes.at(size_t(ObjectKind::Recipient)).size()) + 1; // its own number
    return ModelResult::of(QVariant::fromValue(created(ObjectKind::Recipient, recipient)));
}

ModelResult OutlookModel::globalAddressList(const Node &, const QVariantList &)
{
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::AddressList)));
}

ModelResult OutlookModel::accounts(const Node &, const QVariantList &)
{
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::Accounts)));
}

ModelResult OutlookModel::accountCount(const Node &, const QVariantList &)
{
    return ModelResult::of(int(m_scenario.accounts.size()));
}

ModelResult OutlookModel::accountItem(const Node &, const QVariantList &arguments)
{
    const int place = placeOf(arguments.first(), m_scenario.accounts.size());
    if (place < 0)
        return indexOutOfBounds();
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::Account, 0, place)));
}

ModelResult OutlookModel::accountDisplayName(const Node &node, const QVariantList &)
{
    return ModelResult::of(m_scenario.accounts.at(node.index).displayName);
}

ModelResult OutlookModel::accountSmtpAddress(const Node &node, const QVariantList &)
{
    return ModelResult::of(m_scenario.accounts.at(node.index).smtpAddress);
}

ModelResult OutlookModel::recipientResolve(const Node &node, const QVariantList &)
{
    const bool resolves = lookUp(node.text).resolves;
    m_nodes.at(size_t(ObjectKind::Recipient)).at(size_t(node.index) - 1).resolved = resolves;
    return ModelResult::of(resolves);
}

ModelResult OutlookModel::recipientAddressEntry(const Node &node, const QVariantList &)
{
    if (!node.resolved)
        return ModelResult::nothing();
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::AddressEntry, node.index)));
}

ModelResult OutlookModel::addressEntries(const Node &, const QVariantList &)
{
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::AddressEntries)));
}

ModelResult OutlookModel::addressEntryCount(const Node &, const QVariantList &)
{
    return ModelResult::of(int(m_scenario.globalAddressList.size()));
}

ModelResult OutlookModel::addressEntryItem(const Node &, const QVariantList &arguments)
{
    const int place = placeOf(arguments.first(), m_scenario.globalAddressList.size());
    if (place < 0)
        return indexOutOfBounds();
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::AddressEntry, 0, place)));
}

ModelResult OutlookModel::addressEntryType(const Node &node, const QVariantList &)
{
    return ModelResult::of(listEntryOf(node) != nullptr ? u"EX"_s : lookUp(recipientText(node)).type);
}

ModelResult OutlookModel::exchangeUser(const Node &node, const QVariantList &)
{
    const ScenarioListEntry *const entry = listEntryOf(node);
    const bool isUser = entry != nullptr ? entry->exchangeUser : lookUp(recipientText(node)).type == u"EX"_s;
    if (!isUser)
        return ModelResult::nothing();
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::ExchangeUser, node.owner, node.index)));
}

ModelResult OutlookModel::exchangeUserAlias(const Node &node, const QVariantList &)
{
    if (const ScenarioListEntry *const entry = listEntryOf(node))
        return ModelResult::of(entry->alias);
    const QString address = lookUp(recipientText(node)).primarySmtpAddress;
    for (const ScenarioListEntry &entry : m_scenario.globalAddressList) {
        if (entry.exchangeUser && entry.primarySmtpAddress == address)
            return ModelResult::of(entry.alias);
    }
    return ModelResult::of(u""_s);
}

ModelResult OutlookModel::exchangeUserAddress(const Node &node, const QVariantList &)
{
    const ScenarioListEntry *const entry = listEntryOf(node);
    return ModelResult::of(entry != nullptr ? entry->primarySmtpAddress
                                            : lookUp(recipientText(node)).primarySmtpAddress);
}

/// Null for an entry that belongs to a recipient and not to the global address list.
const ScenarioListEntry *OutlookModel::listEntryOf(const Node &node) const
{
    return node.owner == 0 ? &m_scenario.globalAddressList.at(node.index) : nullptr;
}

const QString &OutlookModel::recipientText(const Node &entryNode) const
{
    return findNode({ObjectKind::Recipient, entryNode.owner})->text;
}

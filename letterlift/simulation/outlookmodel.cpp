#include "outlookmodel.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

ModelResult ModelResult::refused(CallFault fault)
{
    Failure failure = failureOf(FailureKind::Missing);
    failure.fault = fault;
    return {QVariant(), failure};
}

ModelResult ModelResult::outlookException(const QString &description)
{
    Failure failure;
    failure.source = u"Microsoft Outlook"_s;
    failure.description = description;
    return {QVariant(), failure};
}

OutlookModel::OutlookModel(const Scenario &scenario, OutlookEnvironment &environment)
    : m_scenario(scenario)
    , m_environment(environment)
{
}

ObjectReference OutlookModel::application()
{
    return shared(ObjectKind::Application);
}

ModelResult OutlookModel::perform(const ObjectReference &object, Access access, const QString &memberName,
                                  const QVariantList &arguments)
{
    const Node *const found = findNode(object);
    if (found == nullptr)
        return ModelResult::refused(CallFault::UnknownMember);
    const Node node = *found; // the list that holds it may grow

    const auto &members = memberTable().at(size_t(object.kind));
    const auto member = members.constFind(memberName);
    if (member == members.constEnd())
        return ModelResult::refused(CallFault::UnknownMember);
    if (belongsToMail(object.kind) && mailOf(node).gone)
        return ModelResult::outlookException(u"The item has been moved or deleted."_s);

    if (access == Access::Set) {
        if (member->write == nullptr)
            return ModelResult::refused(CallFault::UnknownMember);
        return (this->*member->write)(node, arguments.value(0));
    }
    if (member->read == nullptr || (member->method && access == Access::Get))
        return ModelResult::refused(CallFault::UnknownMember);
    if (arguments.size() != member->argumentCount)
        return ModelResult::refused(CallFault::ArgumentCount);
    return (this->*member->read)(node, arguments);
}

QString OutlookModel::memberSignature(ObjectKind kind, const QString &member)
{
    return QString::fromLatin1(memberTable().at(size_t(kind)).value(member).signature);
}

QList<OutlookModel::MemberTraits> OutlookModel::members(ObjectKind kind)
{
    const QHash<QString, Member> &table = memberTable().at(size_t(kind));
    QList<MemberTraits> list;
    for (auto member = table.begin(); member != table.end(); ++member) {
        list.append(
            {member.key(), member->argumentCount, member->method, member->read != nullptr, member->write != nullptr});
    }
    std::sort(list.begin(), list.end(), [](const MemberTraits &a, const MemberTraits &b) { return a.name < b.name; });
    return list;
}

const OutlookModel::MemberTable &OutlookModel::memberTable()
{
    static const MemberTable table = [] {
        MemberTable members;
        addSessionMembers(members);
        addMailMembers(members);
        return members;
    }();
    return table;
}

void OutlookModel::addMember(MemberTable &table, ObjectKind kind, const char *signature, Reader read, Writer write)
{
    const QString text = QString::fromLatin1(signature);
    const qsizetype parenthesis = text.indexOf(u'(');
    Member member;
    member.signature = signature;
    member.method = parenthesis >= 0;
    if (member.method && !text.endsWith("()"_L1))
        member.argumentCount = int(text.count(u',')) + 1;
    member.read = read;
    member.write = write;
    table.at(size_t(kind)).insert(text.left(parenthesis), member);
}

const OutlookModel::Node *OutlookModel::findNode(const ObjectReference &reference) const
{
    const std::vector<Node> &nodes = m_nodes.at(size_t(reference.kind));
    const auto index = size_t(reference.number) - 1;
    return index < nodes.size() ? &nodes[index] : nullptr;
}

ObjectReference OutlookModel::shared(ObjectKind kind, int owner, int index)
{
    const quint64 key = (quint64(kind) << 58U) | (quint64(owner) << 29U) | quint64(index);
    if (const auto number = m_sharedNumbers.constFind(key); number != m_sharedNumbers.constEnd())
        return {kind, *number};
    Node node;
    node.owner = owner;
    node.index = index;
    const ObjectReference reference = created(kind, node);
    m_sharedNumbers.insert(key, reference.number);
    return reference;
}

ObjectReference OutlookModel::created(ObjectKind kind, const Node &node)
{
    std::vector<Node> &nodes = m_nodes.at(size_t(kind));
    nodes.push_back(node);
    return {kind, int(nodes.size())};
}

ScenarioAddress OutlookModel::lookUp(const QString &text) const
{
    ScenarioAddress address = m_scenario.addresses.value(text, {true, u"SMTP"_s, QString()});
    if (address.primarySmtpAddress.isEmpty())
        address.primarySmtpAddress = text;
    return address;
}

#include "outlookserver.h"

using namespace Qt::Literals::StringLiterals;

namespace {

QString bareName(const QString &member)
{
    return member.left(member.indexOf(u'('));
}

OutlookModel::Access accessOf(Operation operation)
{
    switch (operation) {
    case Operation::Get:
        return OutlookModel::Access::Get;
    case Operation::Set:
        return OutlookModel::Access::Set;
    default:
        return OutlookModel::Access::Call;
    }
}

QString unknownMember()
{
    return u"Unknown member"_s;
}

} // namespace

OutlookServer::OutlookServer(const Scenario &scenario, OutlookEnvironment &environment)
    : m_scenario(scenario)
    , m_environment(environment)
    , m_model(m_scenario, environment)
{
    for (const PlannedFailure &planned : m_scenario.failures)
        m_calls.insert(objectKindName(planned.object) + u'.' + planned.member, 0);
}

std::optional<ObjectReference> OutlookServer::create(const QString &progId)
{
    const ObjectReference application = m_model.application();
    JournalEntry entry{application, Operation::Create, progId, {}, {}, {}};
    const bool created = m_scenario.available && progId == u"Outlook.Application"_s;
    if (created)
        entry.result = QVariant::fromValue(application);
    else
        entry.failure = Failure{FailureKind::NoServer, 0, {}, {}, {}};
    m_environment.record(entry);
    return created ? std::optional(application) : std::nullopt;
}

ModelResult OutlookServer::perform(Operation operation, const ObjectReference &object, const QString &member,
                                   const QVariantList &arguments)
{
    ModelResult result;
    if (const auto failure = plannedFailure(object.kind, member)) {
        result.failure = failure;
    } else if (OutlookModel::memberSignature(object.kind, bareName(member)) != member) {
        result = ModelResult::missing(unknownMember());
    } else {
        result = m_model.perform(object, accessOf(operation), bareName(member), arguments);
    }
    m_environment.record({object, operation, member, arguments, result.value, result.failure});
    return result;
}

void OutlookServer::release(const ObjectReference &object)
{
    m_environment.record({object, Operation::Release, QString(), {}, {}, {}});
}

std::optional<Failure> OutlookServer::plannedFailure(ObjectKind kind, const QString &member)
{
    if (m_calls.isEmpty())
        return std::nullopt;
    const auto call = m_calls.find(objectKindName(kind) + u'.' + member);
    if (call == m_calls.end())
        return std::nullopt;
    ++*call;
    for (const PlannedFailure &planned : m_scenario.failures) {
        if (planned.object == kind && planned.member == member && planned.call.value_or(*call) == *call) {
            Failure failure = planned.failure;
            if (failure.kind == FailureKind::Missing && failure.description.isEmpty())
                failure.description = unknownMember();
            return failure;
        }
    }
    return std::nullopt;
}

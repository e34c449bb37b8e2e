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

ModelResult failed(FailureKind kind)
{
    return {QVariant(), failureOf(kind)};
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
        entry.failure = failureOf(FailureKind::Null);
    m_environment.record(entry);
    return created ? std::optional(application) : std::nullopt;
}

ModelResult OutlookServer::perform(Operation operation, const ObjectReference &object, const QString &member,
                                   const QVariantList &arguments)
{
    if (m_dead)
        return failed(FailureKind::Gone);
    if (isBusy())
        return failed(FailureKind::Rejected);

    const auto perform = [&] {
        if (OutlookModel::memberSignature(object.kind, bareName(member)) != member)
            return ModelResult::refused(CallFault::UnknownMember);
        return m_model.perform(object, accessOf(operation), bareName(member), arguments);
    };
    const std::optional<Failure> failure = plannedFailure(object.kind, member);
    const ModelResult result = failure ? performPlanned(*failure, perform) : perform();
    m_environment.record({object, operation, member, arguments, result.value, result.failure});
    return result;
}

ModelResult OutlookServer::performPlanned(const Failure &failure, const std::function<ModelResult()> &perform)
{
    switch (failure.kind) {
    case FailureKind::Value:
        return {failure.value, failure};
    case FailureKind::Busy: {
        ModelResult result = perform();
        m_busy.setRemainingTime(failure.milliseconds);
        return result;
    }
    case FailureKind::Silence: {
        ModelResult result = perform();
        // With a failure of its own the client has no use for the delay.
        if (!result.failure)
            result.failure = failure;
        return result;
    }
    case FailureKind::Death:
        m_dead = true;
        break;
    default:
        break;
    }
    return {QVariant(), failure};
}

void OutlookServer::release(const ObjectReference &object)
{
    if (!m_dead)
        m_environment.record({object, Operation::Release, QString(), {}, {}, {}});
}

bool OutlookServer::isBusy() const
{
    return !m_busy.hasExpired();
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
        if (planned.object == kind && planned.member == member && planned.call.value_or(*call) == *call)
            return planned.failure;
    }
    return std::nullopt;
}

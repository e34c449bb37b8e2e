#include "simulatedobject.h"

#include "callpatience.h"
#include "simulation/outlookserver.h"

#include <QThread>

namespace {

CallError callErrorOf(CallFault fault)
{
    switch (fault) {
    case CallFault::ArgumentCount:
        return CallError::ArgumentCount;
    case CallFault::TypeMismatch:
        return CallError::TypeMismatch;
    case CallFault::UnknownMember:
        break;
    }
    return CallError::UnknownMember;
}

/// Whether silence ends with an answer depends on how long it is waited for.
bool isAnswered(const ModelResult &result)
{
    return !result.failure ||
           (result.failure->kind != FailureKind::Rejected && result.failure->kind != FailureKind::Silence);
}

} // namespace

SimulatedObject::SimulatedObject(std::shared_ptr<OutlookServer> server, std::optional<ObjectReference> reference,
                                 QObject *parent)
    : AutomationObject(parent)
    , m_server(std::move(server))
    , m_reference(reference)
{
}

SimulatedObject::~SimulatedObject()
{
    if (m_reference)
        m_server->release(*m_reference);
}

bool SimulatedObject::isNull() const
{
    return !m_reference;
}

AutomationObject *SimulatedObject::querySubObject(const char *name, const QVariantList &arguments)
{
    const std::optional<QVariant> result = perform(Operation::Query, name, arguments);
    if (!result || result->typeId() != qMetaTypeId<ObjectReference>())
        return nullptr;
    return new SimulatedObject(m_server, result->value<ObjectReference>(), this);
}

QVariant SimulatedObject::dynamicCall(const char *name, const QVariantList &arguments)
{
    return perform(Operation::Call, name, arguments).value_or(QVariant());
}

QVariant SimulatedObject::property(const char *name)
{
    return canUseProperty(name) ? perform(Operation::Get, name, {}).value_or(QVariant()) : QVariant();
}

bool SimulatedObject::setProperty(const char *name, const QVariant &value)
{
    return canUseProperty(name) && perform(Operation::Set, name, {value}).has_value();
}

QVariant SimulatedObject::asVariant() const
{
    return m_reference ? QVariant::fromValue(*m_reference) : QVariant();
}

std::optional<QVariant> SimulatedObject::perform(Operation operation, const char *name, const QVariantList &arguments)
{
    if (!canCall(name, arguments))
        return std::nullopt;
    CallPatience &patience = CallPatience::ofProcess();
    ModelResult result = m_server->perform(operation, *m_reference, QString::fromUtf8(name), arguments);
    while (result.failure && result.failure->kind == FailureKind::Rejected) {
        const std::optional<CallPatience::Duration> pause = patience.rejected();
        if (!pause)
            break;
        QThread::msleep(ulong(pause->count()));
        result = m_server->perform(operation, *m_reference, QString::fromUtf8(name), arguments);
    }
    if (isAnswered(result))
        patience.answered();
    if (!result.failure)
        return result.value;
    return report(name, result);
}

std::optional<QVariant> SimulatedObject::report(const char *name, const ModelResult &result)
{
    const Failure &failure = *result.failure;
    switch (failure.kind) {
    case FailureKind::Null:
    case FailureKind::Error:
        return QVariant();
    case FailureKind::Value:
    case FailureKind::Busy:
        return result.value;
    case FailureKind::Silence:
        if (CallPatience::ofProcess().unanswered(CallPatience::Duration(failure.milliseconds))) {
            reportCallError(name, CallError::ServerBusy);
            break;
        }
        QThread::msleep(ulong(failure.milliseconds));
        CallPatience::ofProcess().answered();
        return result.value;
    case FailureKind::Missing:
        reportCallError(name, callErrorOf(failure.fault));
        break;
    case FailureKind::Exception:
        reportException(name, {failure.code, failure.source, failure.description, failure.help});
        break;
    case FailureKind::Rejected:
        reportCallError(name, CallError::ServerBusy);
        break;
    case FailureKind::Death:
    case FailureKind::Gone:
        reportCallError(name, CallError::ServerGone);
        break;
    }
    return std::nullopt;
}

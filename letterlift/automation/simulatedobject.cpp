#include "simulatedobject.h"

#include "simulation/outlookserver.h"

using namespace Qt::Literals::StringLiterals;

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
    return checkProperties(name) ? perform(Operation::Get, name, {}).value_or(QVariant()) : QVariant();
}

bool SimulatedObject::setProperty(const char *name, const QVariant &value)
{
    return checkProperties(name) && perform(Operation::Set, name, {value}).has_value();
}

QVariant SimulatedObject::asVariant() const
{
    return m_reference ? QVariant::fromValue(*m_reference) : QVariant();
}

void SimulatedObject::disableMetaObject()
{
    m_hasProperties = false;
}

/// ActiveQt reads and writes properties by the meta-object that it has generated; a program that switched it off must
/// not do better here.
bool SimulatedObject::checkProperties(const char *name) const
{
    const bool switchedOff = m_reference && !m_hasProperties;
    if (switchedOff)
        reportCallError(name, u"The meta-object is switched off"_s);
    return !switchedOff;
}

std::optional<QVariant> SimulatedObject::perform(Operation operation, const char *name, const QVariantList &arguments)
{
    if (!m_reference) {
        reportNoServer(name);
        return std::nullopt;
    }
    if (arguments.size() > maximumArguments) {
        reportCallError(name, u"Too many arguments"_s);
        return std::nullopt;
    }
    const ModelResult result = m_server->perform(operation, *m_reference, QString::fromUtf8(name), arguments);
    if (!result.failure)
        return result.value;

    const Failure &failure = *result.failure;
    switch (failure.kind) {
    case FailureKind::NoServer:
        reportNoServer(name);
        break;
    case FailureKind::Missing:
        reportCallError(name, failure.description);
        break;
    case FailureKind::Exception:
        reportException(name, {failure.code, failure.source, failure.description, failure.help});
        break;
    }
    return std::nullopt;
}

#pragma once

#include "automationobject.h"
#include "simulation/objectreference.h"
#include "simulation/outlookenvironment.h"

#include <memory>
#include <optional>

class OutlookServer;
struct ModelResult;

/// An AutomationObject that stands for an object of a simulated Outlook in this process.
class SimulatedObject : public AutomationObject
{
    Q_OBJECT

public:
    /// Without \a reference, an object with no server behind it; \a server may be null then.
    SimulatedObject(std::shared_ptr<OutlookServer> server, std::optional<ObjectReference> reference, QObject *parent);
    ~SimulatedObject() override;

    [[nodiscard]] bool isNull() const override;
    [[nodiscard]] AutomationObject *querySubObject(const char *name, const QVariantList &arguments = {}) override;
    QVariant dynamicCall(const char *name, const QVariantList &arguments = {}) override;
    [[nodiscard]] QVariant property(const char *name) override;
    bool setProperty(const char *name, const QVariant &value) override;
    [[nodiscard]] QVariant asVariant() const override;

private:
    /// Empty if the operation failed, which is reported then.
    [[nodiscard]] std::optional<QVariant> perform(Operation operation, const char *name, const QVariantList &arguments);
    [[nodiscard]] std::optional<QVariant> report(const char *name, const ModelResult &result);

    std::shared_ptr<OutlookServer> m_server;
    std::optional<ObjectReference> m_reference;
};

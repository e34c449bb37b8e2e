#pragma once

#include "outlookenvironment.h"
#include "outlookmodel.h"
#include "scenario.h"

#include <QDeadlineTimer>
#include <QHash>

#include <functional>

/// A running simulated Outlook: the object model, with the scenario's failures made and every operation recorded. Each
/// client interface that stands in front of it hands its operations on to here. One thread at a time.
class OutlookServer
{
public:
    /// \a environment has to outlive the server.
    OutlookServer(const Scenario &scenario, OutlookEnvironment &environment);

    /// A client asks for the application object by \a progId. Empty if the scenario has no Outlook.
    [[nodiscard]] std::optional<ObjectReference> create(const QString &progId);

    /// \a member is in the form of OutlookModel::memberSignature(), which clients of the in-process interface pass
    /// themselves; another form is an unknown member. \a operation is any but create and release. What a busy or dead
    /// server is asked for isn't done and not recorded.
    [[nodiscard]] ModelResult perform(Operation operation, const ObjectReference &object, const QString &member,
                                      const QVariantList &arguments);

    /// A client lets go of one hold on the object.
    void release(const ObjectReference &object);

    /// True while calls are rejected.
    [[nodiscard]] bool isBusy() const;

private:
    [[nodiscard]] std::optional<Failure> plannedFailure(ObjectKind kind, const QString &member);
    [[nodiscard]] ModelResult performPlanned(const Failure &failure, const std::function<ModelResult()> &perform);

    const Scenario m_scenario;
    OutlookEnvironment &m_environment;
    OutlookModel m_model;
    QHash<QString, int> m_calls; // of members for which failures are planned, by kind and member
    QDeadlineTimer m_busy;
    bool m_dead = false;
};

#pragma once

#include "outlookserver.h"

#include <QString>

#include <memory>

class OutlookStore;

/// A simulated Outlook as the environment variables LETTERLIFT_OUTLOOK_SCENARIO and LETTERLIFT_OUTLOOK_STORE describe
/// it: its mailbox from the scenario file, or the built-in one, and its store on the disk. Main thread.
class SimulatedOutlook
{
public:
    /// Null, with the reason in \a errorText, if the scenario is refused or the store can't be written.
    [[nodiscard]] static std::unique_ptr<SimulatedOutlook> start(QString &errorText);

    ~SimulatedOutlook();

    [[nodiscard]] OutlookServer &server() { return m_server; }

private:
    Q_DISABLE_COPY_MOVE(SimulatedOutlook)

    SimulatedOutlook(const Scenario &scenario, std::unique_ptr<OutlookStore> store);

    std::unique_ptr<OutlookStore> m_store;
    OutlookServer m_server;
};

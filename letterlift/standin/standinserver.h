#pragma once

#include "typelibrary.h"

#include <QObject>

#include <memory>

class SimulatedOutlook;
struct IClassFactory;
struct IMessageFilter;

/// The simulated Outlook of this process, from the first object that a client asks for to the last one that it lets go
/// of. Then the server ends: it takes no more clients, and finished() is emitted. Main thread, in a single-threaded
/// apartment.
class StandInServer : public QObject
{
    Q_OBJECT

public:
    explicit StandInServer(const TypeLibrary &library, QObject *parent = nullptr);
    ~StandInServer() override;

    /// Makes the class known to COM. Returns false if that fails.
    [[nodiscard]] bool open();

    /// A client asks for the application. The result comes with one reference, for the caller; null if the scenario is
    /// refused or has no Outlook.
    [[nodiscard]] IDispatch *createApplication();

    [[nodiscard]] SimulatedOutlook *outlook() const { return m_outlook.get(); }
    [[nodiscard]] const TypeLibrary &library() const { return m_library; }

    /// Takes no more clients. Wine 8 goes on sending them to a process that has ended without this.
    void revoke();

    /// Each object and each lock of the class counts.
    void hold();
    void letGo();

Q_SIGNALS:
    void finished();

private:
    Q_DISABLE_COPY_MOVE(StandInServer)

    void close();

    const TypeLibrary &m_library;
    std::unique_ptr<SimulatedOutlook> m_outlook;
    DWORD m_classCookie = 0;
    int m_holds = 0;
};

#pragma once

#include "automation/automation.h"
#include "simulation/mailmessage.h"
#include "simulation/outlookserver.h"

#include <QMap>

#include <memory>

/// An environment of a simulated Outlook that keeps everything in memory.
class MemoryEnvironment : public OutlookEnvironment
{
public:
    void record(const JournalEntry &entry) override;
    [[nodiscard]] std::optional<QByteArray> readFile(const QString &path) const override;
    void saveDraft(int mailItem, const MailMessage &message) override;
    void removeDraft(int mailItem) override;
    void saveSent(const MailMessage &message) override;

    QList<JournalEntry> journal;
    QMap<QString, QByteArray> files;
    QMap<int, MailMessage> drafts;
    QList<MailMessage> sent;
};

/// A simulated Outlook for one test. The scenario is taken over when the first object is created.
class TestMailbox
{
public:
    [[nodiscard]] AutomationFactory factory();
    [[nodiscard]] AutomationObject *createApplication(QObject *parent);

    /// The operations up to now as short texts such as `MailItem#1 set Importance [2]`, releases left out.
    [[nodiscard]] QStringList operations() const;
    /// The same of one object or kind of objects, such as "MailItem#1" or "MailItem".
    [[nodiscard]] QStringList operationsOf(const QString &object) const;
    [[nodiscard]] QStringList releases() const;

    void addFailure(ObjectKind object, const QString &member, FailureKind kind, int code = outlookExceptionCode);

    Scenario scenario;
    MemoryEnvironment environment;

private:
    std::shared_ptr<OutlookServer> m_server;
};

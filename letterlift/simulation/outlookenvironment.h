#pragma once

#include "journal.h"

#include <QByteArray>
#include <QString>

#include <optional>

struct MailMessage;

/// What the simulated Outlook needs of the world: it keeps no files itself.
class OutlookEnvironment
{
public:
    virtual ~OutlookEnvironment() = default;

    virtual void record(const JournalEntry &entry) = 0;

    /// The content of a file that a client names; empty if it can't be read.
    [[nodiscard]] virtual std::optional<QByteArray> readFile(const QString &path) const = 0;

    /// The mail item with this number is on the screen, or has changed there.
    virtual void saveDraft(int mailItem, const MailMessage &message) = 0;
    /// The mail item has left the screen.
    virtual void removeDraft(int mailItem) = 0;
    virtual void saveSent(const MailMessage &message) = 0;

protected:
    OutlookEnvironment() = default;

private:
    Q_DISABLE_COPY_MOVE(OutlookEnvironment)
};

#pragma once

#include "objectreference.h"
#include "scenario.h"

#include <QVariant>

#include <optional>

struct MailMessage;

enum class Operation { Create, Query, Call, Get, Set, Release };

/// One operation on one object, with what came of it. Objects among arguments and result are ObjectReference values.
struct JournalEntry
{
    ObjectReference object;
    Operation operation = Operation::Call;
    QString member; ///< exactly as the client passed it; empty for a release
    QVariantList arguments;
    QVariant result;
    std::optional<Failure> failure;
};

/// The entry as one line of JSON, without line end.
[[nodiscard]] QByteArray journalLine(const JournalEntry &entry);

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
    virtual void saveSent(int mailItem, const MailMessage &message) = 0;

protected:
    OutlookEnvironment() = default;

private:
    Q_DISABLE_COPY_MOVE(OutlookEnvironment)
};

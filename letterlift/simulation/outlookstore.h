#pragma once

#include "outlookenvironment.h"

#include <QFile>
#include <QHash>

/// The directory in which the simulated Outlook leaves what was done with it: `journal.jsonl`, emptied at each start,
/// and the displayed and sent mails in `drafts` and `sent`.
class OutlookStore : public OutlookEnvironment
{
public:
    explicit OutlookStore(const QString &directory);

    /// Makes the directory ready. Returns false, with the reason in \a errorText, if it can't be written.
    [[nodiscard]] bool open(QString &errorText);

    void record(const JournalEntry &entry) override;
    [[nodiscard]] std::optional<QByteArray> readFile(const QString &path) const override;
    void saveDraft(int mailItem, const MailMessage &message) override;
    void removeDraft(int mailItem) override;
    void saveSent(const MailMessage &message) override;

private:
    [[nodiscard]] QString newFile(const QString &folder) const;
    static void save(const QString &path, const MailMessage &message);

    QString m_directory;
    QFile m_journal;
    bool m_journalFailed = false;
    QHash<int, QString> m_drafts; // the mail items' files
};

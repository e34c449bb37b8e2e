#include "outlookstore.h"

#include "mailmessage.h"
#include "messagewriter.h"

#include <QDebug>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

using namespace Qt::Literals::StringLiterals;

namespace {

void warnOfFile(const QFileDevice &file)
{
    qWarning().noquote() << u"Simulated Outlook: %1 can't be written: %2"_s.arg(file.fileName(), file.errorString());
}

} // namespace

OutlookStore::OutlookStore(const QString &directory)
    : m_directory(directory)
    , m_journal(QDir(directory).filePath(u"journal.jsonl"_s))
{
}

bool OutlookStore::open(QString &errorText)
{
    const QDir directory(m_directory);
    for (const QString &folder : {u"drafts"_s, u"sent"_s}) {
        if (!directory.mkpath(folder)) {
            errorText = u"The folder %1 can't be created."_s.arg(directory.filePath(folder));
            return false;
        }
    }
    // Appending, so that two programs with the same store mix their lines and don't overwrite each other's.
    m_journal.resize(0);
    if (!m_journal.open(QIODevice::WriteOnly | QIODevice::Append)) {
        errorText = u"The file %1 can't be written: %2"_s.arg(m_journal.fileName(), m_journal.errorString());
        return false;
    }
    return true;
}

void OutlookStore::record(const JournalEntry &entry)
{
    // On Windows appending begins at the end as it was when the file was opened.
    if (!m_journal.isSequential())
        m_journal.seek(m_journal.size());
    const bool written = m_journal.write(journalLine(entry) + '\n') >= 0;
    // Each line at once: a program that is killed is one more case to look at in the journal.
    if ((m_journal.flush() && written) || m_journalFailed)
        return;
    m_journalFailed = true;
    warnOfFile(m_journal);
}

std::optional<QByteArray> OutlookStore::readFile(const QString &path) const
{
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

void OutlookStore::saveDraft(int mailItem, const MailMessage &message)
{
    QString &path = m_drafts[mailItem];
    if (path.isEmpty())
        path = newFile(u"drafts"_s);
    save(path, message);
}

void OutlookStore::removeDraft(int mailItem)
{
    if (const QString path = m_drafts.take(mailItem); !path.isEmpty())
        QFile::remove(path);
}

void OutlookStore::saveSent(const MailMessage &message)
{
    save(newFile(u"sent"_s), message);
}

/// Takes a free number, searched for from behind the count of files. The file is made at once, so that no other process
/// takes the same.
QString OutlookStore::newFile(const QString &folder) const
{
    const QDir directory(QDir(m_directory).filePath(folder));
    for (qsizetype number = directory.entryList(QDir::Files).size() + 1;; ++number) {
        QFile file(directory.filePath(QString::number(number).rightJustified(4, u'0') + u".eml"_s));
        if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || !file.exists())
            return file.fileName();
    }
}

void OutlookStore::save(const QString &path, const MailMessage &message)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        warnOfFile(file);
        return;
    }
    file.write(writeMessage(message));
    if (!file.commit())
        warnOfFile(file);
}

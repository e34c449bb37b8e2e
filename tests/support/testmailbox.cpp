#include "testmailbox.h"

#include "automation/simulatedobject.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::Literals::StringLiterals;

void MemoryEnvironment::record(const JournalEntry &entry)
{
    journal.append(entry);
}

std::optional<QByteArray> MemoryEnvironment::readFile(const QString &path) const
{
    return files.contains(path) ? std::optional(files.value(path)) : std::nullopt;
}

void MemoryEnvironment::saveDraft(int mailItem, const MailMessage &message)
{
    drafts.insert(mailItem, message);
}

void MemoryEnvironment::removeDraft(int mailItem)
{
    drafts.remove(mailItem);
}

void MemoryEnvironment::saveSent(const MailMessage &message)
{
    sent.append(message);
}

AutomationFactory TestMailbox::factory()
{
    return [this](const QString &progId, QObject *parent) -> AutomationObject * {
        m_server = std::make_shared<OutlookServer>(scenario, environment);
        return new SimulatedObject(m_server, m_server->create(progId), parent);
    };
}

AutomationObject *TestMailbox::createApplication(QObject *parent)
{
    return factory()(u"Outlook.Application"_s, parent);
}

QStringList TestMailbox::operations() const
{
    QStringList texts;
    for (const JournalEntry &entry : environment.journal) {
        if (entry.operation == Operation::Release)
            continue;
        const QJsonObject line = QJsonDocument::fromJson(journalLine(entry)).object();
        QString text =
            line[u"object"].toString() + u' ' + line[u"operation"].toString() + u' ' + line[u"member"].toString();
        const QJsonArray arguments = line[u"arguments"].toArray();
        if (!arguments.isEmpty())
            text += u' ' + QString::fromUtf8(QJsonDocument(arguments).toJson(QJsonDocument::Compact));
        texts.append(text);
    }
    return texts;
}

QStringList TestMailbox::operationsOf(const QString &object) const
{
    const QString prefix = object + (object.contains(u'#') ? u' ' : u'#');
    QStringList texts = operations();
    texts.removeIf([&prefix](const QString &text) { return !text.startsWith(prefix); });
    return texts;
}

QStringList TestMailbox::releases() const
{
    QStringList texts;
    for (const JournalEntry &entry : environment.journal) {
        if (entry.operation == Operation::Release)
            texts.append(entry.object.toString());
    }
    return texts;
}

void TestMailbox::addFailure(ObjectKind object, const QString &member, FailureKind kind, int code)
{
    Failure failure = failureOf(kind, code);
    failure.source = u"Source"_s;
    failure.description = u"Description"_s;
    failure.help = u"Help"_s;
    scenario.failures.append({object, member, std::nullopt, failure});
}

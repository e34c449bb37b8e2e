// Whatever stands in a parameter file, reading it and asking for every key ends, and keeps what the accessors promise.

#include "mailrequest.h"

#include <QFile>
#include <QTemporaryDir>

#include <cstdlib>

using namespace Qt::Literals::StringLiterals;

namespace {

void require(bool condition)
{
    if (!condition)
        std::abort();
}

void requireList(const QStringList &list)
{
    QStringList unique = list;
    require(unique.removeDuplicates() == 0);
    for (const QString &entry : list)
        require(!entry.isEmpty() && entry == entry.trimmed());
}

QString writeInput(const uint8_t *data, size_t size)
{
    static const QTemporaryDir directory;
    QFile file(directory.filePath(u"mail.vxm"_s));
    require(file.open(QIODevice::WriteOnly));
    require(file.write(reinterpret_cast<const char *>(data), qint64(size)) == qint64(size));
    return file.fileName();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QString path = writeInput(data, size);
    const MailRequest mail(path);
    require(mail.fileName() == path);
    require(mail.priority() >= 1 && mail.priority() <= 5);
    for (const QStringList &list : {mail.to(), mail.cc(), mail.bcc(), mail.replyTo(), mail.attachments()})
        requireList(list);
    require(mail.send() == mail.boolValue(u"send"_s));
    require(mail.containsKey(u"SUBJECT"_s) || mail.subject() == u"(no subject)"_s);
    require(mail.containsKey(u"NEWLINE"_s) || mail.newline() == u";"_s);

    // A body file could name anything on this machine, an endless device among it.
    if (!mail.bodyFile().isEmpty())
        return 0;
    QString errorMessage;
    const QString body = mail.body(errorMessage);
    require(errorMessage.isEmpty());
    const QString newline = mail.newline();
    const QString separator = mail.htmlBody() ? u"<BR>"_s : u"\n"_s;
    if (newline.size() == 1 && !separator.contains(newline) && mail.listValue(u"BODYZ"_s).isEmpty())
        require(!body.contains(newline));
    return 0;
}

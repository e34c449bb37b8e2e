#include "mailrequest.h"

#include "s3dir.h"
#include "s3file.h"
#include "s3fileinfo.h"

#include <QTextStream>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

void appendLine(QString &text, const QString &separator, const QString &line)
{
    if (!text.isEmpty())
        text += separator;
    text += line;
}

void appendLinesOf(s3File &file, const QString &separator, QString &text)
{
    const QByteArray bytes = file.readAll();
    QTextStream stream(bytes, QIODevice::ReadOnly);
    ParameterFile::setDetectedEncoding(stream, bytes);
    while (!stream.atEnd())
        appendLine(text, separator, stream.readLine());
}

} // namespace

MailRequest::MailRequest(const QString &fileName)
    : ParameterFile(fileName, u"VEXAMAIL"_s)
{
}

bool MailRequest::send() const
{
    return boolValue(u"SEND"_s);
}

bool MailRequest::debug() const
{
    return boolValue(u"DEBUG"_s);
}

bool MailRequest::htmlBody() const
{
    return boolValue(u"HTMLBODY"_s);
}

bool MailRequest::useSignature() const
{
    return boolValue(u"USESIGNATURE"_s);
}

bool MailRequest::readReceipt() const
{
    return boolValue(u"READRECEIPT"_s);
}

bool MailRequest::deliveryReceipt() const
{
    return boolValue(u"DELIVERYRECEIPT"_s);
}

int MailRequest::priority() const
{
    return std::max(std::min(intValue(u"PRIORITY"_s, 3), 5), 1);
}

QString MailRequest::fromAddress() const
{
    const QString address = value(u"FROMADDRESS"_s, u""_s);
    // Some clients write the key with one "D".
    return address.isEmpty() ? value(u"FROMADRESS"_s, u""_s) : address;
}

QStringList MailRequest::to() const
{
    return uniqueList(u"TO"_s);
}

QStringList MailRequest::cc() const
{
    return uniqueList(u"CC"_s);
}

QStringList MailRequest::bcc() const
{
    return uniqueList(u"BCC"_s);
}

QStringList MailRequest::replyTo() const
{
    QStringList addresses = listValue(u"REPLY-TO"_s) + listValue(u"REPLYTO"_s);
    addresses.removeDuplicates();
    return addresses;
}

QStringList MailRequest::attachments() const
{
    QStringList existing;
    const QStringList paths = listValue(u"ATTACHMENT"_s);
    for (const QString &path : paths) {
        const QString absolute = fromParameterFileDirectory(path);
        if (s3FileInfo::exists(absolute))
            existing.append(absolute);
    }
    existing.removeDuplicates();
    return existing;
}

QString MailRequest::subject() const
{
    return value(u"SUBJECT"_s, u"(no subject)"_s);
}

QString MailRequest::newline() const
{
    return value(u"NEWLINE"_s, u";"_s);
}

QString MailRequest::bodyFile() const
{
    const QString path = value(u"BODYFILE"_s, u""_s);
    return path.isEmpty() ? path : fromParameterFileDirectory(path);
}

QString MailRequest::body(QString &errorMessage) const
{
    const QString separator = htmlBody() ? u"<BR>"_s : u"\n"_s;

    QString text = value(u"BODY"_s, u""_s);
    if (const QString lineBreak = newline(); !lineBreak.isEmpty())
        text.replace(lineBreak, separator, Qt::CaseSensitive);
    if (const QStringList lines = listValue(u"BODYZ"_s); !lines.isEmpty())
        appendLine(text, separator, lines.join(separator));

    const QString path = bodyFile();
    if (path.isEmpty())
        return text;

    s3File file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        if (const QString message = bodyFileErrorText(file.error(), path); !message.isEmpty())
            errorMessage = message;
        return text;
    }
    appendLinesOf(file, separator, text);
    return text;
}

QString MailRequest::bodyFileErrorText(QFileDevice::FileError error, const QString &path)
{
    switch (error) {
    case QFileDevice::OpenError:
        return u"Couldn't find body file "_s + path;
    case QFileDevice::ReadError:
        return u"Couldn't read body file "_s + path;
    case QFileDevice::PermissionsError:
        return u"Couldn't access body file "_s + path;
    default:
        return QString();
    }
}

QStringList MailRequest::uniqueList(const QString &prefix) const
{
    QStringList values = listValue(prefix);
    values.removeDuplicates();
    return values;
}

QString MailRequest::fromParameterFileDirectory(const QString &path) const
{
    if (!s3FileInfo(path).isRelative())
        return path;
    return s3Dir(s3FileInfo(fileName()).path()).absoluteFilePath(path);
}

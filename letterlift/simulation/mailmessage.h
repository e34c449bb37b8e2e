#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A text as it was given for an address, and the address that it stands for; the latter is empty if that isn't known.
struct MessageAddress
{
    QString text;
    QString address;
};

struct MessageAttachment
{
    QString fileName; ///< without directory
    QByteArray content;
};

enum class Importance { Low = 0, Normal = 1, High = 2 }; ///< OlImportance of Outlook's type library

/// All that a mail item holds, ready to be written as a message. Plain data.
struct MailMessage
{
    MessageAddress from;
    MessageAddress sender; ///< whoever sends on behalf of \a from; both texts empty if \a from sends it
    QList<MessageAddress> to;
    QList<MessageAddress> cc;
    QList<MessageAddress> bcc;
    QList<MessageAddress> replyTo;
    QString subject;
    Importance importance = Importance::Normal;
    bool readReceipt = false;
    bool deliveryReport = false;
    bool html = false;
    QString body;
    QList<MessageAttachment> attachments;
    bool draft = false;
};

#pragma once

#include "automation/automation.h"
#include "s3version.h"

#include <QObject>
#include <QStringList>
#include <QVariant>

class AutomationObject;

/// Drives Outlook for one mail: logs on and creates the mail item when it is constructed, fills the item in, shows or
/// sends it, and logs off when it is destroyed. Nothing here reports a failure, but for the one exception of the mail
/// item that means an invalid originator or recipient: a call on the mail item then throws std::runtime_error. Main
/// thread.
class Outlook : public QObject
{
    Q_OBJECT

public:
    explicit Outlook(QObject *parent = nullptr, const AutomationFactory &createObject = &createAutomationObject);
    ~Outlook() override;

    /// Outlook's version; an invalid one if there is no Outlook.
    [[nodiscard]] s3Version version() const;

    void display();
    void sendMail();

    /// \a from is an address, an alias address or an account's display name; empty for the user's own.
    void setOriginator(const QString &from);

    void addRecipients(const QStringList &addresses);
    void addCopyRecipients(const QStringList &addresses);
    void addBlindCopyRecipients(const QStringList &addresses);
    void addReplyRecipients(const QStringList &addresses);
    void addAttachments(const QStringList &paths);

    void setSubject(const QString &text);
    /// \a priority is 1 (high) to 5 (low).
    void setImportance(int priority);
    void setReadReceiptRequested(bool on);
    void setDeliveryReportRequested(bool on);

    /// \a text is HTML if \a html is set. The signature is read from Outlook and follows the text with nothing between.
    void setBody(const QString &text, bool html, bool useSignature);

    /// Inserts the file into the mail, which must be displayed by now; without \a useSignature the text that it has by
    /// then goes first.
    void setBodyFromHtmlFile(const QString &path, bool useSignature);

    /// The text to use as originator: the primary SMTP address that Outlook knows for \a address, or \a address itself.
    [[nodiscard]] QString resolveSmtpAddress(const QString &address);

    /// Walks the global address list for the Exchange user with the alias and the domain of \a address, and returns the
    /// user's primary SMTP address; empty if there is none. The list can be long, and each entry costs four calls.
    [[nodiscard]] QString getPrimarySmtpAddressForAliasAddress(const QString &address);

    /// The session's first account with \a address as display name or address, to the letter; null if there is none.
    /// Owned by the session's accounts.
    [[nodiscard]] AutomationObject *findAccount(const QString &address);

private Q_SLOTS:
    void exception(int code);

private:
    void setMailProperty(const QString &name, const QVariant &value);
    QVariant callMailMethod(const QString &name);

    /// A new wrapper of the session, owned by the application object; null without Outlook.
    [[nodiscard]] AutomationObject *session() const;
    bool logon();
    void logoff();
    [[nodiscard]] AutomationObject *createItem() const;

    /// An invalid \a type isn't written.
    void addToCollection(const QString &collectionName, const QStringList &values, const QVariant &type);
    [[nodiscard]] QString primaryAddressInGlobalAddressList(const QString &address);

    [[nodiscard]] QString readSignature(bool html);
    void insertFile(const QString &path);

    AutomationObject *m_application = nullptr;
    AutomationObject *m_mailItem = nullptr;
    // Either a second new item or the same as m_mailItem; null until the signature is read.
    AutomationObject *m_signatureItem = nullptr;
};

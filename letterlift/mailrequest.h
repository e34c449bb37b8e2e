#pragma once

#include "parameterfile.h"

#include <QFileDevice>

/// The typed view of one mail: one accessor a key of the section VEXAMAIL, with its default and meaning. Every call
/// reads the parsed file anew; nothing is cached.
class MailRequest : public ParameterFile
{
public:
    explicit MailRequest(const QString &fileName);

    [[nodiscard]] bool send() const;
    [[nodiscard]] bool debug() const;
    [[nodiscard]] bool htmlBody() const;
    [[nodiscard]] bool useSignature() const;
    [[nodiscard]] bool readReceipt() const;
    [[nodiscard]] bool deliveryReceipt() const;

    /// 1 (high) to 5 (low).
    [[nodiscard]] int priority() const;
    [[nodiscard]] QString fromAddress() const;
    [[nodiscard]] QStringList to() const;
    [[nodiscard]] QStringList cc() const;
    [[nodiscard]] QStringList bcc() const;
    [[nodiscard]] QStringList replyTo() const;

    /// The files that exist; a relative path counts from the parameter file's directory.
    [[nodiscard]] QStringList attachments() const;
    [[nodiscard]] QString subject() const;

    /// The text that stands for a line break in BODY; empty if none does.
    [[nodiscard]] QString newline() const;

    /// The path of the body file, whether it exists or not; empty if none is named.
    [[nodiscard]] QString bodyFile() const;

    /// The mail's text, from BODY, BODYZn and the body file. If the body file can't be opened, what was gathered so far
    /// is returned, and \a errorMessage gets an English text for the user where Qt's error code has one; it is left
    /// alone otherwise.
    [[nodiscard]] QString body(QString &errorMessage) const;

    /// The text of body() for a body file that can't be opened; empty for a code that has none.
    [[nodiscard]] static QString bodyFileErrorText(QFileDevice::FileError error, const QString &path);

private:
    [[nodiscard]] QStringList uniqueList(const QString &prefix) const;
    [[nodiscard]] QString fromParameterFileDirectory(const QString &path) const;
};

#pragma once

#include "mailrequest.h"
#include "outlook.h"

/// One mail from the parameter file to Outlook. Constructing it reads the file and starts Outlook; destroying it ends
/// the session. Main thread, with a QApplication.
class MailRun
{
public:
    explicit MailRun(const QString &vxmFile, const AutomationFactory &createObject = &createAutomationObject);

    /// Fills in the mail and shows or sends it. Returns the process's exit status: 0, or -1 after a failure, which the
    /// user has then seen in a box.
    [[nodiscard]] int run();

private:
    Q_DISABLE_COPY_MOVE(MailRun)

    /// Throws what its caller catches as std::exception. A body file that can't be read is told in \a errorMessage.
    void handOver(QString &errorMessage);
    /// The path of the html file to embed, empty if there is none; \a bodyText is the mail's text in that case.
    [[nodiscard]] QString readBody(QString &bodyText, QString &errorMessage) const;
    void fillIn();

    MailRequest m_request;
    Outlook m_outlook;
};

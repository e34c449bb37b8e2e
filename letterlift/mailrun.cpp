#include "mailrun.h"

#include "runlog.h"
#include "s3elapsedtimer.h"
#include "s3fileinfo.h"

#include <QMessageBox>

#include <stdexcept>

using namespace Qt::Literals::StringLiterals;

namespace {

void showError(const QString &text)
{
    QMessageBox::critical(nullptr, u""_s, text, QMessageBox::Ok, QMessageBox::NoButton);
}

} // namespace

MailRun::MailRun(const QString &vxmFile, const AutomationFactory &createObject)
    : m_request(vxmFile)
    , m_outlook(nullptr, createObject)
{
}

int MailRun::run()
{
    s3ElapsedTimer timer(true);
    setDebugLogging(m_request.debug());
    logStream() << u"Reading parameter from file "_s + m_request.fileName();

    const s3Version version = m_outlook.version();
    if (!version.isValid()) {
        showError(u"MS Outlook not found. Please install MS Outlook first."_s);
        return -1;
    }
    logStream() << u"Outlook Version found: "_s + version.toString();

    QString errorMessage;
    try {
        handOver(errorMessage);
        if (errorMessage.isEmpty()) {
            logStream() << u"run() elapsed = "_s + timer.text(false);
            return 0;
        }
    } catch (const std::exception &e) {
        errorMessage = u"Couldn't send email.\n\n"_s + QString::fromUtf8(e.what());
    }
    logStream() << errorMessage;
    showError(errorMessage);
    return -1;
}

void MailRun::handOver(QString &errorMessage)
{
    QString bodyText;
    const QString htmlFile = readBody(bodyText, errorMessage);
    if (!errorMessage.isEmpty())
        return;

    fillIn();
    if (!htmlFile.isEmpty()) {
        // Word's editor, through which the file goes in, is there only once the mail is on the screen.
        m_outlook.display();
        m_outlook.setBodyFromHtmlFile(htmlFile, m_request.useSignature());
        return;
    }
    m_outlook.setBody(bodyText, m_request.htmlBody(), m_request.useSignature());
    if (m_request.send())
        m_outlook.sendMail();
    else
        m_outlook.display();
}

QString MailRun::readBody(QString &bodyText, QString &errorMessage) const
{
    const QString bodyFile = m_request.bodyFile();
    if (s3FileInfo(bodyFile).completeSuffix() != u"html"_s) {
        bodyText = m_request.body(errorMessage);
        return QString();
    }
    if (!m_request.htmlBody())
        throw std::runtime_error("An HTML file can only be embedded in an HTML email, not in a plain text email.");
    if (m_request.send())
        throw std::runtime_error(
            "Sending an email with an embedded HTML file is not supported by Outlook due to technical limitations.");
    return bodyFile;
}

void MailRun::fillIn()
{
    m_outlook.setOriginator(m_request.fromAddress());

    const QStringList to = m_request.to();
    const QStringList cc = m_request.cc();
    const QStringList bcc = m_request.bcc();
    logList(to, u"Adding Recipient"_s);
    m_outlook.addRecipients(to);
    logList(cc, u"Adding Copy Recipient"_s);
    m_outlook.addCopyRecipients(cc);
    logList(bcc, u"Adding Blind Copy Recipient"_s);
    m_outlook.addBlindCopyRecipients(bcc);

    const QStringList replyTo = m_request.replyTo();
    logList(replyTo, u"Adding Reply Recipient"_s);
    m_outlook.addReplyRecipients(replyTo);

    m_outlook.setImportance(m_request.priority());
    m_outlook.setReadReceiptRequested(m_request.readReceipt());
    m_outlook.setDeliveryReportRequested(m_request.deliveryReceipt());

    const QStringList attachments = m_request.attachments();
    logList(attachments, u"Attaching"_s);
    m_outlook.addAttachments(attachments);

    const QString subject = m_request.subject();
    logStream() << u"Adding Subject [%1]"_s.arg(subject);
    m_outlook.setSubject(subject);
}

// The body of the mail, with or without the signature, and the embedded html file.

#include "outlook.h"

#include "automation/automationobject.h"
#include "runlog.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// OlBodyFormat of Outlook's type library
constexpr int bodyFormatPlain = 1;
constexpr int bodyFormatHtml = 2;

// From this version on the signature is read from an item of its own and not from the mail itself.
const s3Version &separateSignatureItemVersion()
{
    static const s3Version version(u"16.0.0.13231"_s);
    return version;
}

} // namespace

void Outlook::setBody(const QString &text, bool html, bool useSignature)
{
    logStream() << u"Adding Body [%1]"_s.arg(text);
    setMailProperty(u"BodyFormat"_s, html ? bodyFormatHtml : bodyFormatPlain);
    const QString property = html ? u"HTMLBody"_s : u"Body"_s;
    setMailProperty(property, useSignature ? QString(text + readSignature(html)) : text);
}

QString Outlook::readSignature(bool html)
{
    m_signatureItem = m_mailItem;
    if (version() >= separateSignatureItemVersion()) {
        logStream() << u"Creating new mail item (get signature)"_s;
        m_signatureItem = createItem();
    }
    if (m_signatureItem == nullptr)
        return QString();

    m_signatureItem->setProperty("BodyFormat", html ? bodyFormatHtml : bodyFormatPlain);
    // Outlook puts the signature in when the inspector is asked for; the inspector itself isn't needed.
    [[maybe_unused]] const AutomationObject *const inspector = m_signatureItem->querySubObject("GetInspector()");
    const QVariant signature = m_signatureItem->dynamicCall(html ? "HTMLBody" : "Body");
    return signature.typeId() == QMetaType::QString ? signature.toString() : QString();
}

void Outlook::setBodyFromHtmlFile(const QString &path, bool useSignature)
{
    if (!useSignature)
        setMailProperty(u"HTMLBody"_s, u""_s);
    setMailProperty(u"BodyFormat"_s, bodyFormatHtml);
    logStream() << u"Adding Body from html file [%1]"_s.arg(path);
    insertFile(path);
}

void Outlook::insertFile(const QString &path)
{
    AutomationObject *object = m_mailItem;
    for (const char *const step : {"GetInspector()", "WordEditor()", "Application()", "Selection()"}) {
        if (object == nullptr)
            return;
        object = object->querySubObject(step);
    }
    if (object == nullptr)
        return;

    const QString wholeFile = u""_s;
    const bool confirmConversions = false;
    const bool link = false;
    const bool attachment = false;
    object->dynamicCall("InsertFile(QString, QVariant&, QVariant&, QVariant&, QVariant&)",
                        {path, wholeFile, confirmConversions, link, attachment});
}

// Mail item, its collections, and the editor.

#include "mailtext.h"
#include "outlookmodel.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

// OlBodyFormat and OlMailRecipientType of Outlook's type library
constexpr int bodyFormatPlain = 1;
constexpr int bodyFormatHtml = 2;
constexpr int recipientTo = 1;
constexpr int recipientCc = 2;
constexpr int recipientBcc = 3;

// Word's number 5174: the file could not be found.
constexpr int wordFileNotFound = int(0x800A1436U);

QString fileNameOf(const QString &path)
{
    return path.sliced(std::max(path.lastIndexOf(u'/'), path.lastIndexOf(u'\\')) + 1);
}

template<typename T>
std::optional<T> converted(QVariant value)
{
    if (!value.convert(QMetaType::fromType<T>()))
        return std::nullopt;
    return value.value<T>();
}

} // namespace

void OutlookModel::addMailMembers(MemberTable &table)
{
    using enum ObjectKind;
    addMember(table, MailItem, "Display()", &OutlookModel::display);
    addMember(table, MailItem, "Send()", &OutlookModel::send);
    addMember(table, MailItem, "Delete()", &OutlookModel::deleteItem);
    addMember(table, MailItem, "GetInspector()", &OutlookModel::inspector);
    addMember(table, MailItem, "Subject", &OutlookModel::readField<&OutlookModel::MailItem::subject>,
              &OutlookModel::writeField<&OutlookModel::MailItem::subject>);
    addMember(table, MailItem, "Importance", &OutlookModel::readField<&OutlookModel::MailItem::importance>,
              &OutlookModel::writeImportance);
    addMember(table, MailItem, "ReadReceiptRequested", &OutlookModel::readField<&OutlookModel::MailItem::readReceipt>,
              &OutlookModel::writeField<&OutlookModel::MailItem::readReceipt>);
    addMember(table, MailItem, "OriginatorDeliveryReportRequested",
              &OutlookModel::readField<&OutlookModel::MailItem::deliveryReport>,
              &OutlookModel::writeField<&OutlookModel::MailItem::deliveryReport>);
    addMember(table, MailItem, "BodyFormat", &OutlookModel::readField<&OutlookModel::MailItem::bodyFormat>,
              &OutlookModel::writeBodyFormat);
    addMember(table, MailItem, "Body", &OutlookModel::readBody, &OutlookModel::writeBody);
    addMember(table, MailItem, "HTMLBody", &OutlookModel::readHtmlBody, &OutlookModel::writeHtmlBody);
    addMember(table, MailItem, "SendUsingAccount", nullptr, &OutlookModel::writeAccount);
    addMember(table, MailItem, "SentOnBehalfOfName", &OutlookModel::readField<&OutlookModel::MailItem::onBehalfOf>,
              &OutlookModel::writeField<&OutlookModel::MailItem::onBehalfOf>);
    addMember(table, MailItem, "Recipients", &OutlookModel::mailPart<Recipients>);
    addMember(table, MailItem, "ReplyRecipients", &OutlookModel::mailPart<ReplyRecipients>);
    addMember(table, MailItem, "Attachments", &OutlookModel::mailPart<Attachments>);

    addMember(table, Recipients, "Add(const QVariant&)", &OutlookModel::addRecipient);
    addMember(table, ReplyRecipients, "Add(const QVariant&)", &OutlookModel::addReplyRecipient);
    addMember(table, Attachments, "Add(const QVariant&)", &OutlookModel::addAttachment);
    addMember(table, Element, "Type", &OutlookModel::elementType, &OutlookModel::writeElementType);

    addMember(table, Inspector, "WordEditor()", &OutlookModel::mailPart<Document>);
    addMember(table, Document, "Application()", &OutlookModel::mailPart<WordApplication>);
    addMember(table, WordApplication, "Selection()", &OutlookModel::mailPart<Selection>);
    addMember(table, Selection, "InsertFile(QString, QVariant&, QVariant&, QVariant&, QVariant&)",
              &OutlookModel::insertFile);
}

bool OutlookModel::belongsToMail(ObjectKind kind)
{
    return kind >= ObjectKind::MailItem;
}

OutlookModel::MailItem &OutlookModel::mailOf(const Node &node)
{
    return m_mailItems.at(size_t(node.owner));
}

ModelResult OutlookModel::display(const Node &node, const QVariantList &)
{
    open(mailOf(node));
    mailOf(node).displayed = true;
    changed(node.owner);
    return ModelResult::nothing();
}

ModelResult OutlookModel::send(const Node &node, const QVariantList &)
{
    MailItem &mail = mailOf(node);
    if (mail.recipients.empty())
        return ModelResult::outlookException(u"A mail needs at least one recipient."_s);
    for (const MailRecipient &recipient : mail.recipients) {
        if (!lookUp(recipient.text).resolves)
            return ModelResult::outlookException(u"Outlook does not recognize one or more names."_s);
    }
    mail.gone = true;
    m_environment.saveSent(messageOf(mail));
    if (mail.displayed)
        m_environment.removeDraft(node.owner + 1);
    return ModelResult::nothing();
}

ModelResult OutlookModel::deleteItem(const Node &node, const QVariantList &)
{
    MailItem &mail = mailOf(node);
    if (mail.displayed)
        m_environment.removeDraft(node.owner + 1);
    mail.gone = true;
    return ModelResult::nothing();
}

ModelResult OutlookModel::inspector(const Node &node, const QVariantList &)
{
    open(mailOf(node));
    return ModelResult::of(QVariant::fromValue(shared(ObjectKind::Inspector, node.owner)));
}

template<auto field>
ModelResult OutlookModel::readField(const Node &node, const QVariantList &)
{
    return ModelResult::of(mailOf(node).*field);
}

template<auto field>
ModelResult OutlookModel::writeField(const Node &node, const QVariant &value)
{
    MailItem &mail = mailOf(node);
    const auto newValue = converted<std::remove_reference_t<decltype(mail.*field)>>(value);
    if (!newValue)
        return ModelResult::refused(CallFault::TypeMismatch);
    mail.*field = *newValue;
    changed(node.owner);
    return ModelResult::nothing();
}

ModelResult OutlookModel::writeImportance(const Node &node, const QVariant &value)
{
    const int importance = converted<int>(value).value_or(-1);
    if (importance < int(Importance::Low) || importance > int(Importance::High))
        return ModelResult::refused(CallFault::TypeMismatch);
    return writeField<&MailItem::importance>(node, importance);
}

ModelResult OutlookModel::writeBodyFormat(const Node &node, const QVariant &value)
{
    const int format = converted<int>(value).value_or(0);
    if (format != bodyFormatPlain && format != bodyFormatHtml)
        return ModelResult::refused(CallFault::TypeMismatch);
    MailItem &mail = mailOf(node);
    if (format != mail.bodyFormat)
        mail.text = format == bodyFormatHtml ? plainTextToHtml(mail.text) : htmlToPlainText(mail.text);
    mail.bodyFormat = format;
    changed(node.owner);
    return ModelResult::nothing();
}

ModelResult OutlookModel::readBody(const Node &node, const QVariantList &)
{
    const MailItem &mail = mailOf(node);
    return ModelResult::of(mail.bodyFormat == bodyFormatHtml ? htmlToPlainText(mail.text) : mail.text);
}

ModelResult OutlookModel::writeBody(const Node &node, const QVariant &value)
{
    const auto text = converted<QString>(value);
    if (!text)
        return ModelResult::refused(CallFault::TypeMismatch);
    MailItem &mail = mailOf(node);
    mail.text = mail.bodyFormat == bodyFormatHtml ? plainTextToHtml(*text) : *text;
    mail.textWritten = true;
    changed(node.owner);
    return ModelResult::nothing();
}

ModelResult OutlookModel::readHtmlBody(const Node &node, const QVariantList &)
{
    const MailItem &mail = mailOf(node);
    return ModelResult::of(mail.bodyFormat == bodyFormatHtml ? mail.text : plainTextToHtml(mail.text));
}

ModelResult OutlookModel::writeHtmlBody(const Node &node, const QVariant &value)
{
    const auto html = converted<QString>(value);
    if (!html)
        return ModelResult::refused(CallFault::TypeMismatch);
    MailItem &mail = mailOf(node);
    mail.bodyFormat = bodyFormatHtml;
    mail.text = *html;
    mail.textWritten = true;
    changed(node.owner);
    return ModelResult::nothing();
}

ModelResult OutlookModel::writeAccount(const Node &node, const QVariant &value)
{
    const auto reference = value.value<ObjectReference>();
    const OutlookModel::Node *const account = findNode(reference);
    if (reference.kind != ObjectKind::Account || account == nullptr)
        return ModelResult::refused(CallFault::TypeMismatch);
    mailOf(node).account = account->index;
    changed(node.owner);
    return ModelResult::nothing();
}

template<ObjectKind kind>
ModelResult OutlookModel::mailPart(const Node &node, const QVariantList &)
{
    return ModelResult::of(QVariant::fromValue(shared(kind, node.owner)));
}

ModelResult OutlookModel::addRecipient(const Node &node, const QVariantList &arguments)
{
    std::vector<MailRecipient> &recipients = mailOf(node).recipients;
    recipients.push_back({arguments.first().toString(), recipientTo});
    return newElement(ObjectKind::Recipients, node.owner, qsizetype(recipients.size()) - 1);
}

ModelResult OutlookModel::addReplyRecipient(const Node &node, const QVariantList &arguments)
{
    std::vector<MailRecipient> &recipients = mailOf(node).replyRecipients;
    recipients.push_back({arguments.first().toString(), recipientTo});
    return newElement(ObjectKind::ReplyRecipients, node.owner, qsizetype(recipients.size()) - 1);
}

ModelResult OutlookModel::addAttachment(const Node &node, const QVariantList &arguments)
{
    const QString path = arguments.first().toString();
    const std::optional<QByteArray> content = m_environment.readFile(path);
    if (!content)
        return ModelResult::outlookException(u"The file to attach can't be found: "_s + path);
    QList<MessageAttachment> &attachments = mailOf(node).attachments;
    attachments.append({fileNameOf(path), *content});
    return newElement(ObjectKind::Attachments, node.owner, attachments.size() - 1);
}

ModelResult OutlookModel::newElement(ObjectKind collection, int mailItem, qsizetype index)
{
    Node element;
    element.owner = mailItem;
    element.index = int(index);
    element.collection = collection;
    const ObjectReference reference = created(ObjectKind::Element, element);
    changed(mailItem);
    return ModelResult::of(QVariant::fromValue(reference));
}

/// Null for an attachment.
OutlookModel::MailRecipient *OutlookModel::recipientOf(const Node &elementNode)
{
    MailItem &mail = mailOf(elementNode);
    if (elementNode.collection == ObjectKind::Attachments)
        return nullptr;
    auto &list = elementNode.collection == ObjectKind::Recipients ? mail.recipients : mail.replyRecipients;
    return &list.at(size_t(elementNode.index));
}

ModelResult OutlookModel::elementType(const Node &node, const QVariantList &)
{
    constexpr int olByValue = 1; // OlAttachmentType
    const MailRecipient *const recipient = recipientOf(node);
    return ModelResult::of(recipient != nullptr ? recipient->type : olByValue);
}

ModelResult OutlookModel::writeElementType(const Node &node, const QVariant &value)
{
    MailRecipient *const recipient = recipientOf(node);
    if (recipient == nullptr)
        return ModelResult::refused(CallFault::UnknownMember);
    const int type = converted<int>(value).value_or(0);
    if (type < recipientTo || type > recipientBcc)
        return ModelResult::refused(CallFault::TypeMismatch);
    recipient->type = type;
    changed(node.owner);
    return ModelResult::nothing();
}

ModelResult OutlookModel::insertFile(const Node &node, const QVariantList &arguments)
{
    const QString path = arguments.first().toString();
    const std::optional<QByteArray> content = m_environment.readFile(path);
    if (!content) {
        Failure failure;
        failure.code = wordFileNotFound;
        failure.source = u"Microsoft Word"_s;
        failure.description = u"The file to insert can't be found: "_s + path;
        return {QVariant(), failure};
    }
    MailItem &mail = mailOf(node);
    const QString html = decodeHtmlFile(*content);
    mail.text = mail.bodyFormat == bodyFormatHtml ? insertHtml(html, mail.text) : htmlToPlainText(html) + mail.text;
    mail.textWritten = true;
    changed(node.owner);
    return ModelResult::nothing();
}

/// Outlook puts the signature in when an item gets its inspector, unless somebody has written its text before.
void OutlookModel::open(MailItem &mail)
{
    if (mail.opened)
        return;
    mail.opened = true;
    if (mail.textWritten)
        return;
    const QString &plain = m_scenario.plainSignature;
    const QString &html = m_scenario.htmlSignature;
    if (mail.bodyFormat == bodyFormatHtml)
        mail.text = html.isEmpty() ? plainTextToHtml(plain) : html;
    else
        mail.text = plain.isEmpty() ? htmlToPlainText(html) : plain;
}

void OutlookModel::changed(int mailItem)
{
    const MailItem &mail = m_mailItems.at(size_t(mailItem));
    if (mail.displayed)
        m_environment.saveDraft(mailItem + 1, messageOf(mail));
}

MessageAddress OutlookModel::addressOf(const QString &text) const
{
    return {text, m_scenario.addresses.value(text).primarySmtpAddress};
}

MailMessage OutlookModel::messageOf(const MailItem &mail) const
{
    MailMessage message;
    const qsizetype accountIndex = mail.account.value_or(0);
    if (accountIndex < m_scenario.accounts.size()) {
        const ScenarioAccount &account = m_scenario.accounts.at(accountIndex);
        message.from = {account.displayName, account.smtpAddress};
    }
    if (!mail.onBehalfOf.isEmpty()) {
        message.sender = message.from;
        message.from = addressOf(mail.onBehalfOf);
    }
    for (const MailRecipient &recipient : mail.recipients) {
        auto &list = recipient.type == recipientCc    ? message.cc
                     : recipient.type == recipientBcc ? message.bcc
                                                      : message.to;
        list.append(addressOf(recipient.text));
    }
    for (const MailRecipient &recipient : mail.replyRecipients)
        message.replyTo.append(addressOf(recipient.text));
    message.subject = mail.subject;
    message.importance = Importance(mail.importance);
    message.readReceipt = mail.readReceipt;
    message.deliveryReport = mail.deliveryReport;
    message.html = mail.bodyFormat == bodyFormatHtml;
    message.body = mail.text;
    message.attachments = mail.attachments;
    message.draft = !mail.gone;
    return message;
}

#include "messagewriter.h"

#include "mailmessage.h"

#include <QMimeDatabase>

#include <memory>

// GLib's headers use "signals" as a name.
#undef signals
#include <gmime/gmime.h>

using namespace Qt::Literals::StringLiterals;

namespace {

template<typename T>
struct Unref
{
    void operator()(T *object) const { g_object_unref(object); }
};

template<typename T>
using Owned = std::unique_ptr<T, Unref<T>>;

template<typename T>
Owned<T> owned(T *object)
{
    return Owned<T>(object);
}

constexpr const char *charset = "utf-8";

void initialiseLibrary()
{
    static const bool initialised = [] {
        g_mime_init();
        return true;
    }();
    Q_UNUSED(initialised)
}

bool isEmpty(const MessageAddress &address)
{
    return address.text.isEmpty() && address.address.isEmpty();
}

/// Who sends when the mailbox has no account; a message needs an originator.
MessageAddress unknownOriginator()
{
    return {u"Simulated Outlook"_s, u"outlook@localhost"_s};
}

/// Header texts go to the library as C strings, which a NUL would end.
QByteArray headerText(QString text)
{
    return text.replace(QChar(u'\0'), QChar(QChar::ReplacementCharacter)).toUtf8();
}

/// Whether \a addrSpec is a local part, one "@" and a domain, and \a text holds nothing but it and the name before it.
bool isWholeMailbox(QByteArray text, const QByteArray &name, const QByteArray &addrSpec)
{
    if (addrSpec.count('@') != 1 || addrSpec.startsWith('@') || addrSpec.endsWith('@'))
        return false;
    if (text == addrSpec)
        return true;
    if (!text.endsWith("<" + addrSpec + ">"))
        return false;
    text = text.chopped(addrSpec.size() + 2).trimmed();
    return text == name || text == '"' + name + '"';
}

/// The mailbox that \a text is; null if it is anything else, such as two of them or one with something behind it.
Owned<InternetAddress> parseMailbox(const QByteArray &text)
{
    const auto list = owned(internet_address_list_parse(nullptr, text.constData()));
    if (list == nullptr || internet_address_list_length(list.get()) != 1)
        return nullptr;
    InternetAddress *const address = internet_address_list_get_address(list.get(), 0);
    if (!INTERNET_ADDRESS_IS_MAILBOX(address))
        return nullptr;
    const QByteArray addrSpec = internet_address_mailbox_get_addr(INTERNET_ADDRESS_MAILBOX(address));
    if (!isWholeMailbox(text, internet_address_get_name(address), addrSpec))
        return nullptr;
    g_object_ref(address);
    return Owned<InternetAddress>(address);
}

/// A text with no address behind it becomes a group without members, which is the one form in which a message may name
/// a recipient that has no address (RFC 5322, 3.4).
void appendAddress(InternetAddressList *list, const MessageAddress &address)
{
    const QByteArray text = headerText(address.text);
    Owned<InternetAddress> entry = nullptr;
    if (!address.address.isEmpty()) {
        const char *const name = address.text != address.address ? text.constData() : nullptr;
        entry.reset(internet_address_mailbox_new(name, headerText(address.address).constData()));
    } else {
        entry = parseMailbox(text.trimmed());
    }
    if (entry == nullptr)
        entry.reset(internet_address_group_new(text.constData()));
    internet_address_list_add(list, entry.get());
}

void appendAddresses(InternetAddressList *list, const QList<MessageAddress> &addresses)
{
    for (const MessageAddress &address : addresses)
        appendAddress(list, address);
}

QByteArray addressText(const MessageAddress &address)
{
    const auto list = owned(internet_address_list_new());
    appendAddress(list.get(), address);
    char *const text = internet_address_list_to_string(list.get(), nullptr, TRUE);
    const QByteArray result(text);
    g_free(text);
    return result;
}

Owned<GMimeObject> textPart(const MailMessage &message)
{
    auto part = owned(g_mime_text_part_new_with_subtype(message.html ? "html" : "plain"));
    g_mime_text_part_set_charset(part.get(), charset);

    // Line ends are CRLF in a message; the content is encoded as it stands, so they have to be so before.
    QString text = message.body;
    text.replace(u"\r\n"_s, u"\n"_s).replace(u'\n', u"\r\n"_s);
    const QByteArray bytes = text.toUtf8();
    const auto stream = owned(g_mime_stream_mem_new_with_buffer(bytes.constData(), size_t(bytes.size())));
    const auto content = owned(g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
    g_mime_part_set_content(GMIME_PART(part.get()), content.get());
    g_mime_part_set_content_encoding(GMIME_PART(part.get()), GMIME_CONTENT_ENCODING_QUOTEDPRINTABLE);
    return Owned<GMimeObject>(GMIME_OBJECT(part.release()));
}

Owned<GMimeObject> attachmentPart(const MessageAttachment &attachment)
{
    const QString type = QMimeDatabase().mimeTypeForFileNameAndData(attachment.fileName, attachment.content).name();
    auto part = owned(g_mime_part_new_with_type(type.section(u'/', 0, 0).toUtf8().constData(),
                                                type.section(u'/', 1).toUtf8().constData()));
    g_mime_object_set_disposition(GMIME_OBJECT(part.get()), GMIME_DISPOSITION_ATTACHMENT);
    g_mime_part_set_filename(part.get(), headerText(attachment.fileName).constData());

    const QByteArray &bytes = attachment.content;
    const auto stream = owned(g_mime_stream_mem_new_with_buffer(bytes.constData(), size_t(bytes.size())));
    const auto content = owned(g_mime_data_wrapper_new_with_stream(stream.get(), GMIME_CONTENT_ENCODING_DEFAULT));
    g_mime_part_set_content(part.get(), content.get());
    g_mime_part_set_content_encoding(part.get(), GMIME_CONTENT_ENCODING_BASE64);
    return Owned<GMimeObject>(GMIME_OBJECT(part.release()));
}

Owned<GMimeObject> content(const MailMessage &message)
{
    Owned<GMimeObject> text = textPart(message);
    if (message.attachments.isEmpty())
        return text;
    auto multipart = owned(g_mime_multipart_new_with_subtype("mixed"));
    g_mime_multipart_add(multipart.get(), text.get());
    for (const MessageAttachment &attachment : message.attachments)
        g_mime_multipart_add(multipart.get(), attachmentPart(attachment).get());
    return Owned<GMimeObject>(GMIME_OBJECT(multipart.release()));
}

void setHeader(GMimeMessage *message, const char *name, const QByteArray &value)
{
    g_mime_object_set_header(GMIME_OBJECT(message), name, value.constData(), charset);
}

void setAddresses(GMimeMessage *target, const MailMessage &message)
{
    const MessageAddress from = isEmpty(message.from) ? unknownOriginator() : message.from;
    appendAddress(g_mime_message_get_from(target), from);
    if (!isEmpty(message.sender))
        appendAddress(g_mime_message_get_sender(target), message.sender);
    appendAddresses(g_mime_message_get_to(target), message.to);
    appendAddresses(g_mime_message_get_cc(target), message.cc);
    appendAddresses(g_mime_message_get_bcc(target), message.bcc);
    appendAddresses(g_mime_message_get_reply_to(target), message.replyTo);
    if (message.readReceipt)
        setHeader(target, "Disposition-Notification-To", addressText(from));
    if (message.deliveryReport)
        setHeader(target, "Return-Receipt-To", addressText(from));
}

void setImportance(GMimeMessage *target, Importance importance)
{
    const bool high = importance == Importance::High;
    const bool low = importance == Importance::Low;
    setHeader(target, "Importance", high ? "high" : low ? "low" : "normal");
    setHeader(target, "X-Priority", high ? "1" : low ? "5" : "3");
}

QByteArray toBytes(GMimeMessage *message)
{
    GMimeFormatOptions *const options = g_mime_format_options_new();
    g_mime_format_options_set_newline_format(options, GMIME_NEWLINE_FORMAT_DOS);
    const auto stream = owned(g_mime_stream_mem_new());
    g_mime_object_write_to_stream(GMIME_OBJECT(message), options, stream.get());
    g_mime_format_options_free(options);
    const GByteArray *const bytes = g_mime_stream_mem_get_byte_array(GMIME_STREAM_MEM(stream.get()));
    return QByteArray(reinterpret_cast<const char *>(bytes->data), qsizetype(bytes->len));
}

} // namespace

QByteArray writeMessage(const MailMessage &message)
{
    initialiseLibrary();
    const auto target = owned(g_mime_message_new(TRUE));
    setAddresses(target.get(), message);
    // An empty subject is a header of its own and not the absence of one.
    g_mime_message_set_subject(target.get(), headerText(message.subject).constData(), charset);

    GDateTime *const now = g_date_time_new_now_local();
    g_mime_message_set_date(target.get(), now);
    g_date_time_unref(now);
    char *const id = g_mime_utils_generate_message_id("localhost");
    g_mime_message_set_message_id(target.get(), id);
    g_free(id);

    setImportance(target.get(), message.importance);
    if (message.draft)
        setHeader(target.get(), "X-Unsent", "1");
    setHeader(target.get(), "MIME-Version", "1.0");
    g_mime_message_set_mime_part(target.get(), content(message).get());
    return toBytes(target.get());
}

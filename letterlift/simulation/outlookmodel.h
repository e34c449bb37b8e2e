#pragma once

#include "mailmessage.h"
#include "objectreference.h"
#include "outlookenvironment.h"
#include "scenario.h"

#include <QHash>
#include <QVariant>

#include <array>
#include <optional>
#include <vector>

/// What came of an operation: a value (an invalid one for nothing at all), or a failure.
struct ModelResult
{
    QVariant value;
    std::optional<Failure> failure;

    [[nodiscard]] static ModelResult nothing() { return {}; }
    [[nodiscard]] static ModelResult of(const QVariant &value) { return {value, std::nullopt}; }
    /// The member can't be called as asked for.
    [[nodiscard]] static ModelResult refused(CallFault fault);
    /// An exception, as Outlook raises it.
    [[nodiscard]] static ModelResult outlookException(const QString &description);
};

/// The object model of the simulated Outlook, as far as mail hand-over needs it: what each object holds, what its
/// members do. It knows no client interface, keeps no count of references, and touches no file but through the
/// environment. One thread at a time.
class OutlookModel
{
public:
    enum class Access {
        Call, ///< a method, or a property read in the form of a call
        Get,
        Set
    };

    /// Both have to outlive the model.
    OutlookModel(const Scenario &scenario, OutlookEnvironment &environment);

    [[nodiscard]] ObjectReference application();

    /// \a member is the bare name, without a signature. A value to set is the one argument.
    [[nodiscard]] ModelResult perform(const ObjectReference &object, Access access, const QString &member,
                                      const QVariantList &arguments);

    /// The one form in which a client may pass the member, such as "CreateItem(OlItemType)" for CreateItem; empty if
    /// the kind has no such member.
    [[nodiscard]] static QString memberSignature(ObjectKind kind, const QString &member);

    struct MemberTraits
    {
        QString name; ///< the bare name
        int argumentCount = 0;
        bool method = false;
        bool readable = false;
        bool writable = false;
    };
    /// All members of the kind, by name.
    [[nodiscard]] static QList<MemberTraits> members(ObjectKind kind);

private:
    struct MailRecipient
    {
        QString text;
        int type = 1; // OlMailRecipientType: 1 To, 2 Cc, 3 Bcc
    };

    struct MailItem
    {
        QString subject;
        int importance = 1;
        bool readReceipt = false;
        bool deliveryReport = false;
        int bodyFormat = 2; // OlBodyFormat: 1 plain, 2 HTML
        QString text;       // in the form that bodyFormat tells
        bool textWritten = false;
        std::optional<int> account; // an index of the scenario's accounts
        QString onBehalfOf;
        std::vector<MailRecipient> recipients;
        std::vector<MailRecipient> replyRecipients;
        QList<MessageAttachment> attachments;
        bool opened = false; // its inspector was asked for
        bool displayed = false;
        bool gone = false; // sent or deleted
    };

    // What stands behind a reference. Which fields have a meaning depends on the kind.
    struct Node
    {
        int owner = 0; // the mail item's place, or the recipient's number for an address entry and its user, else 0
        int index = 0; // a place in a list, from 0; for a recipient its own number
        ObjectKind collection = ObjectKind::Recipients; // of an element
        QString text;                                   // of a recipient
        bool resolved = false;                          // a recipient, by Resolve()
    };

    using Reader = ModelResult (OutlookModel::*)(const Node &node, const QVariantList &arguments);
    using Writer = ModelResult (OutlookModel::*)(const Node &node, const QVariant &value);
    struct Member
    {
        const char *signature = "";
        int argumentCount = 0;
        bool method = false;
        Reader read = nullptr;
        Writer write = nullptr;
    };
    using MemberTable = std::array<QHash<QString, Member>, size_t(objectKindCount)>;

    [[nodiscard]] static const MemberTable &memberTable();
    static void addSessionMembers(MemberTable &table);
    static void addMailMembers(MemberTable &table);
    static void addMember(MemberTable &table, ObjectKind kind, const char *signature, Reader read,
                          Writer write = nullptr);

    [[nodiscard]] const Node *findNode(const ObjectReference &reference) const;
    /// The one object of this kind with this owner and index, numbered when it is first asked for.
    [[nodiscard]] ObjectReference shared(ObjectKind kind, int owner = 0, int index = 0);
    [[nodiscard]] ObjectReference created(ObjectKind kind, const Node &node);

    // Application, session, accounts, addresses
    ModelResult applicationVersion(const Node &node, const QVariantList &arguments);
    ModelResult applicationSession(const Node &node, const QVariantList &arguments);
    ModelResult createItem(const Node &node, const QVariantList &arguments);
    ModelResult nothingToDo(const Node &node, const QVariantList &arguments);
    ModelResult createRecipient(const Node &node, const QVariantList &arguments);
    ModelResult globalAddressList(const Node &node, const QVariantList &arguments);
    ModelResult accounts(const Node &node, const QVariantList &arguments);
    ModelResult accountCount(const Node &node, const QVariantList &arguments);
    ModelResult accountItem(const Node &node, const QVariantList &arguments);
    ModelResult accountDisplayName(const Node &node, const QVariantList &arguments);
    ModelResult accountSmtpAddress(const Node &node, const QVariantList &arguments);
    ModelResult recipientResolve(const Node &node, const QVariantList &arguments);
    ModelResult recipientAddressEntry(const Node &node, const QVariantList &arguments);
    ModelResult addressEntries(const Node &node, const QVariantList &arguments);
    ModelResult addressEntryCount(const Node &node, const QVariantList &arguments);
    ModelResult addressEntryItem(const Node &node, const QVariantList &arguments);
    ModelResult addressEntryType(const Node &node, const QVariantList &arguments);
    ModelResult exchangeUser(const Node &node, const QVariantList &arguments);
    ModelResult exchangeUserAlias(const Node &node, const QVariantList &arguments);
    ModelResult exchangeUserAddress(const Node &node, const QVariantList &arguments);

    // Mail item, collections, editor
    ModelResult display(const Node &node, const QVariantList &arguments);
    ModelResult send(const Node &node, const QVariantList &arguments);
    ModelResult deleteItem(const Node &node, const QVariantList &arguments);
    ModelResult inspector(const Node &node, const QVariantList &arguments);
    template<auto field>
    ModelResult readField(const Node &node, const QVariantList &arguments);
    template<auto field>
    ModelResult writeField(const Node &node, const QVariant &value);
    ModelResult writeImportance(const Node &node, const QVariant &value);
    ModelResult writeBodyFormat(const Node &node, const QVariant &value);
    ModelResult readBody(const Node &node, const QVariantList &arguments);
    ModelResult writeBody(const Node &node, const QVariant &value);
    ModelResult readHtmlBody(const Node &node, const QVariantList &arguments);
    ModelResult writeHtmlBody(const Node &node, const QVariant &value);
    ModelResult writeAccount(const Node &node, const QVariant &value);
    template<ObjectKind kind>
    ModelResult mailPart(const Node &node, const QVariantList &arguments);
    ModelResult addRecipient(const Node &node, const QVariantList &arguments);
    ModelResult addReplyRecipient(const Node &node, const QVariantList &arguments);
    ModelResult addAttachment(const Node &node, const QVariantList &arguments);
    ModelResult elementType(const Node &node, const QVariantList &arguments);
    ModelResult writeElementType(const Node &node, const QVariant &value);
    ModelResult insertFile(const Node &node, const QVariantList &arguments);

    [[nodiscard]] ModelResult newElement(ObjectKind collection, int mailItem, qsizetype index);
    [[nodiscard]] MailRecipient *recipientOf(const Node &elementNode);
    [[nodiscard]] const ScenarioListEntry *listEntryOf(const Node &node) const;
    [[nodiscard]] const QString &recipientText(const Node &entryNode) const;
    [[nodiscard]] MailItem &mailOf(const Node &node);
    [[nodiscard]] static bool belongsToMail(ObjectKind kind);
    void open(MailItem &mail);
    void changed(int mailItem);
    [[nodiscard]] MailMessage messageOf(const MailItem &mail) const;
    [[nodiscard]] MessageAddress addressOf(const QString &text) const;
    [[nodiscard]] ScenarioAddress lookUp(const QString &text) const;

    const Scenario &m_scenario;
    OutlookEnvironment &m_environment;
    std::array<std::vector<Node>, size_t(objectKindCount)> m_nodes; // the one at i has the number i + 1
    QHash<quint64, int> m_sharedNumbers;                            // by kind, owner and index
    std::vector<MailItem> m_mailItems;
};

#pragma once

#include <QMetaType>
#include <QString>

#include <compare>
#include <optional>

/// The kinds of objects in the simulated Outlook.
enum class ObjectKind {
    Application,
    Session,
    Accounts,
    Account,
    Recipient,
    AddressList,
    AddressEntries,
    AddressEntry,
    ExchangeUser,
    MailItem,
    Recipients,
    ReplyRecipients,
    Attachments,
    Element,
    Inspector,
    Document,
    WordApplication,
    Selection
};

inline constexpr int objectKindCount = int(ObjectKind::Selection) + 1;

/// The kind's name, as journal and scenario write it.
[[nodiscard]] QString objectKindName(ObjectKind kind);
[[nodiscard]] std::optional<ObjectKind> objectKindFromName(const QString &name);

/// Names one object of the model: its kind and its number among the objects of that kind, in the order in which they
/// were first handed out, from 1. The same object always has the same number.
struct ObjectReference
{
    ObjectKind kind = ObjectKind::Application;
    int number = 0;

    /// As in "MailItem#1".
    [[nodiscard]] QString toString() const;

    friend auto operator<=>(const ObjectReference &, const ObjectReference &) = default;
};

Q_DECLARE_METATYPE(ObjectReference)

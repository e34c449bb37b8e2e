#pragma once

#include "objectreference.h"

#include <QHash>
#include <QList>
#include <QString>

#include <optional>

/// The three ways in which an operation of Automation fails.
enum class FailureKind {
    NoServer, ///< "null": no server object stands behind the one that is called
    Missing,  ///< "missing": the member can't be called as asked for
    Exception ///< "exception": the server raises an exception
};

[[nodiscard]] QString failureKindName(FailureKind kind);

/// The code that Outlook gives nearly all its exceptions.
inline constexpr int outlookExceptionCode = 4096;

/// What goes with a failure. Code, source and help have a meaning for an exception only, the description for a missing
/// member as well.
struct Failure
{
    FailureKind kind = FailureKind::Exception;
    int code = outlookExceptionCode;
    QString source;
    QString description;
    QString help;
};

/// A failure that a scenario makes: of the operation \a member, as clients pass it ("Send()", "Subject"), on any object
/// of the kind \a object, each time or at the call with one number only, counted from 1.
struct PlannedFailure
{
    ObjectKind object = ObjectKind::Application;
    QString member;
    std::optional<int> call;
    Failure failure;
};

struct ScenarioAccount
{
    QString displayName;
    QString smtpAddress;
};

struct ScenarioListEntry
{
    bool exchangeUser = true;
    QString alias;
    QString primarySmtpAddress;
};

/// What a text given as an address stands for.
struct ScenarioAddress
{
    bool resolves = true;
    QString type;
    QString primarySmtpAddress; ///< empty: the text itself
};

/// A mailbox and its surroundings. Plain data.
struct Scenario
{
    Scenario();

    bool available = true;
    QString version;
    QList<ScenarioAccount> accounts;
    QList<ScenarioListEntry> globalAddressList;
    QHash<QString, ScenarioAddress> addresses;
    QString plainSignature;
    QString htmlSignature;
    QList<PlannedFailure> failures;
};

/// Reads a scenario from JSON. Empty, with the place and the reason in \a errorText, if there is anything in it that is
/// not understood.
[[nodiscard]] std::optional<Scenario> readScenario(const QByteArray &json, QString &errorText);

/// The small mailbox that serves where no scenario is given.
[[nodiscard]] Scenario builtInScenario();

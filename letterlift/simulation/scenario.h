#pragma once

#include "objectreference.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariant>

#include <optional>

/// What an operation does instead of what it should.
enum class FailureKind {
    Null,      ///< "null": it succeeds and gives nothing, neither object nor value
    Missing,   ///< "missing": the member can't be called as asked for
    Exception, ///< "exception": the server raises an exception
    Value,     ///< "value": it succeeds and gives another value than it should, perhaps of another type
    Error,     ///< "error": it succeeds and gives a value that is an error code (`VT_ERROR`)
    Busy,      ///< "busy": it succeeds, and the server rejects what is asked of it in the time after
    Death,     ///< "death": the server ends without an answer
    Silence,   ///< "silence": the server answers only after some time
    Rejected,  ///< not planned: the server is busy
    Gone       ///< not planned: the server has ended before
};

/// As scenario and journal write it.
[[nodiscard]] QString failureKindName(FailureKind kind);
[[nodiscard]] std::optional<FailureKind> plannedFailureKindFromName(const QString &name);

/// What is wrong with a call of a member, in the terms of Automation.
enum class CallFault {
    UnknownMember, ///< `DISP_E_MEMBERNOTFOUND`
    ArgumentCount, ///< `DISP_E_BADPARAMCOUNT`
    TypeMismatch   ///< `DISP_E_TYPEMISMATCH`, of the first argument
};

/// The code that Outlook gives nearly all its exceptions.
inline constexpr int outlookExceptionCode = 4096;

/// What goes with a failure. Each kind has fields of its own.
struct Failure
{
    FailureKind kind = FailureKind::Exception;
    CallFault fault = CallFault::UnknownMember; // Missing
    QVariant value;                             // Value
    int milliseconds = 0;                       // Busy, Silence
    int code = outlookExceptionCode;            // Exception, with the texts; Error
    QString source;
    QString description;
    QString help;
};

[[nodiscard]] Failure failureOf(FailureKind kind, int code = outlookExceptionCode);

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

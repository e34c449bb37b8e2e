#include "scenario.h"

using namespace Qt::Literals::StringLiterals;

namespace {

const auto builtInMailbox = R"({
    "accounts": [
        {"DisplayName": "Robin Example", "SmtpAddress": "robin@example.com"},
        {"DisplayName": "Order desk", "SmtpAddress": "orders@example.com"}
    ],
    "globalAddressList": [
        {"Alias": "robin", "PrimarySmtpAddress": "robin@example.com"},
        {"Alias": "kim", "PrimarySmtpAddress": "kim.sample@example.com"},
        {"exchangeUser": false}
    ],
    "addresses": {
        "Kim Sample": {"Type": "EX", "PrimarySmtpAddress": "kim.sample@example.com"}
    },
    "signature": {
        "plain": "\n\n-- \nRobin Example\nExample Trading Company\n",
        "html": "<p>-- <br><b>Robin Example</b><br>Example Trading Company</p>"
    }
})";

} // namespace

Scenario::Scenario()
    : version(u"16.0.17928.20114"_s)
{
}

Failure failureOf(FailureKind kind, int code)
{
    Failure failure;
    failure.kind = kind;
    failure.code = code;
    return failure;
}

QString failureKindName(FailureKind kind)
{
    switch (kind) {
    case FailureKind::Null:
        return u"null"_s;
    case FailureKind::Missing:
        return u"missing"_s;
    case FailureKind::Value:
        return u"value"_s;
    case FailureKind::Error:
        return u"error"_s;
    case FailureKind::Busy:
        return u"busy"_s;
    case FailureKind::Death:
        return u"death"_s;
    case FailureKind::Silence:
        return u"silence"_s;
    case FailureKind::Rejected:
        return u"rejected"_s;
    case FailureKind::Gone:
        return u"gone"_s;
    case FailureKind::Exception:
        break;
    }
    return u"exception"_s;
}

std::optional<FailureKind> plannedFailureKindFromName(const QString &name)
{
    using enum FailureKind;
    for (const FailureKind kind : {Null, Missing, Exception, Value, Error, Busy, Death, Silence}) {
        if (name == failureKindName(kind))
            return kind;
    }
    return std::nullopt;
}

Scenario builtInScenario()
{
    QString errorText;
    const std::optional<Scenario> scenario = readScenario(builtInMailbox, errorText);
    Q_ASSERT_X(scenario.has_value(), "builtInScenario", qPrintable(errorText));
    return scenario.value_or(Scenario());
}

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

QString failureKindName(FailureKind kind)
{
    switch (kind) {
    case FailureKind::NoServer:
        return u"null"_s;
    case FailureKind::Missing:
        return u"missing"_s;
    case FailureKind::Exception:
        break;
    }
    return u"exception"_s;
}

Scenario builtInScenario()
{
    QString errorText;
    const std::optional<Scenario> scenario = readScenario(builtInMailbox, errorText);
    Q_ASSERT_X(scenario.has_value(), "builtInScenario", qPrintable(errorText));
    return scenario.value_or(Scenario());
}

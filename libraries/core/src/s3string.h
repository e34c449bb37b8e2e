#pragma once

#include <QString>

/// The core's text helpers. Free functions without state; every one may be called from any thread.
namespace s3String {

/// Replaces `%NAME%`, then `${NAME}`, by the environment's values. A name that isn't in the environment leaves its
/// reference as it is. Names are matched as the platform's environment matches them.
void expandEnvironmentStrings(QString &text);

/// \a value with at most \a decimals decimals (trailing zeros disappear), and with \a groupSeparator between the
/// thousands unless that is empty.
[[nodiscard]] QString formatNumber(double value, int decimals, const QString &decimalSeparator,
                                   const QString &groupSeparator);

/// Each "\" becomes "/". Every path passes through this before Qt sees it.
[[nodiscard]] QString toSlashes(const QString &text);

} // namespace s3String

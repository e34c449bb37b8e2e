#pragma once

#include <QString>

// What regular expressions need, which match nothing at all in a text that isn't well-formed UTF-16. From any thread.

/// \a text with U+FFFD for each unpaired surrogate. All positions stay.
[[nodiscard]] QString s3WellFormed(QString text);

/// Whether a surrogate pair of \a text has one half before \a position and the other behind it.
[[nodiscard]] bool s3SplitsPair(const QString &text, qsizetype position);

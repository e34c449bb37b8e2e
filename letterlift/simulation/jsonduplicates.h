#pragma once

#include <QByteArray>

#include <optional>

struct DuplicateKey
{
    QByteArray key;       ///< as it stands in the text, without the quotation marks
    qsizetype offset = 0; ///< of its opening quotation mark
};

/// The first key that stands twice in one object of \a json, which has to be well-formed. Keys are compared as they are
/// written: escapes aren't resolved.
[[nodiscard]] std::optional<DuplicateKey> findDuplicateKey(const QByteArray &json);

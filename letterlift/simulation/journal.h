#pragma once

#include "objectreference.h"
#include "scenario.h"

#include <QVariant>

#include <optional>

enum class Operation { Create, Query, Call, Get, Set, Release };

/// One operation on one object, with what came of it. Objects among arguments and result are ObjectReference values.
struct JournalEntry
{
    ObjectReference object;
    Operation operation = Operation::Call;
    QString member; ///< exactly as the client passed it; empty for a release
    QVariantList arguments;
    QVariant result;
    std::optional<Failure> failure;
};

/// The entry as one line of JSON, without line end.
[[nodiscard]] QByteArray journalLine(const JournalEntry &entry);

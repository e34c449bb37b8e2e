#pragma once

#include "dictionary.h"

#include <QByteArray>

#include <optional>

/// The file's bytes; nothing, with the reason in \a error, if the format has no room for them.
[[nodiscard]] std::optional<QByteArray> encodeDictionary(const Dictionary &dictionary, QString &error);

/// What the system reads of a file, with all lengths and offsets checked; nothing, with the reason in \a error, if the
/// file is broken or holds what no catalogue can. Which way the texts are looked up is not told by a file.
[[nodiscard]] std::optional<Dictionary> decodeDictionary(const QByteArray &file, QString &error);

#pragma once

#include "dictionary.h"

#include <QByteArray>

#include <limits>
#include <optional>

/// What the offsets of a file can count.
constexpr qsizetype maximumPoolSize = std::numeric_limits<quint32>::max();

/// The file's bytes; nothing, with the reason in \a error, if the format has no room for them. Each pool may have so
/// many bytes as \a poolSize, which is another one in tests alone.
[[nodiscard]] std::optional<QByteArray> encodeDictionary(const Dictionary &dictionary, QString &error,
                                                         qsizetype poolSize = maximumPoolSize);

/// What the system reads of a file, with all lengths and offsets checked; nothing, with the reason in \a error, if the
/// file is broken or holds what no catalogue can. Which way the texts are looked up is not told by a file.
[[nodiscard]] std::optional<Dictionary> decodeDictionary(const QByteArray &file, QString &error);

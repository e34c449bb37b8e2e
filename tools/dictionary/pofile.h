#pragma once

#include "defect.h"

#include <QList>
#include <QString>

#include <optional>

struct PoMessage
{
    QString context;
    QString id;
    QString text;
    /// The translator's ("# "), a line each.
    QString comments;
    /// Those of the template ("#. "), a line each.
    QString extractedComments;
    bool fuzzy = false;
    bool plural = false;

    bool operator==(const PoMessage &) const = default;
};

/// A catalogue as gettext sees it: without the obsolete messages, and with the header apart from the others.
struct PoFile
{
    QString header;
    QList<PoMessage> messages;

    /// Empty if the header doesn't have the field.
    [[nodiscard]] QString field(const QString &name) const;

    bool operator==(const PoFile &) const = default;
};

/// Nothing if the file can't be read at all. Each defect bears \a name. Not for several threads.
[[nodiscard]] std::optional<PoFile> readPo(const QString &path, const QString &name, Defects &defects);

/// Returns what went wrong, or an empty text; in the latter case the file reads as \a file.
[[nodiscard]] QString writePo(const QString &path, const PoFile &file);

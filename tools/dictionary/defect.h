#pragma once

#include <QList>
#include <QString>

/// What is wrong with a catalogue.
struct Defect
{
    enum Weight {
        /// A dictionary file can be made nevertheless.
        Tolerable,
        Fatal,
    };

    Weight weight = Fatal;
    /// The file; with the line behind a colon where only that is known.
    QString catalogue;
    /// The entry as "#1204"; empty if it isn't about one.
    QString entry;
    QString reason;
};

using Defects = QList<Defect>;

/// One line, without a line feed.
QString describe(const Defect &defect);

[[nodiscard]] bool hasFatalDefect(const Defects &defects);

#pragma once

#include <QString>

// What catalogues have beside the texts, in words that msgmerge and translators' editors keep.

/// The template's file name, in each folder.
inline const QString templateName = QStringLiteral("template.pot");

/// Of a template's header: "number" or "source".
inline const QString keyField = QStringLiteral("X-Dictionary-Key");
inline const QString keyIsNumber = QStringLiteral("number");
inline const QString keyIsSource = QStringLiteral("source");
/// Of a template's header, where the highest number isn't that of the last text.
inline const QString textCountField = QStringLiteral("X-Dictionary-Text-Count");
inline const QString languageField = QStringLiteral("Language");

/// Begins an extracted comment of the template.
inline const QString symbolMark = QStringLiteral("symbol: ");
/// A translator's comment at a text that is meant to be empty, which is elsewhere no translation ...
inline const QString emptyMark = QStringLiteral("s3dictc: empty");
/// ... and at one that is read in German where there is no translation.
inline const QString asGermanMark = QStringLiteral("s3dictc: as German");

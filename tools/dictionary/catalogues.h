#pragma once

#include "defect.h"
#include "dictionary.h"

/// The catalogues of a folder: the template, which has the numbers, source texts and symbols, and one for each language
/// that there are translations for. What the defects leave is in the result.
[[nodiscard]] Dictionary readCatalogues(const QString &folder, Defects &defects);

/// Makes the folder, with the template and a catalogue for each language. Returns what went wrong, or an empty text; in
/// the former case nothing is left behind.
[[nodiscard]] QString writeCatalogues(const Dictionary &dictionary, const QString &folder);

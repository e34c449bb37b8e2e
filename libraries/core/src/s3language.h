#pragma once

#include <QString>

/// Makes the language with the ERP's \a letter current and sets the default QLocale. Returns false, and changes
/// nothing, for a letter that is no language. So far the table holds only "A", United States English. Main thread.
bool setLanguage(const QString &letter, const QString &isoCodeForIndividual);

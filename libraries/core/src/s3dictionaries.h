#pragma once

#include <QString>

/// Opens the text dictionaries. Returns false, with the reason in \a errorText, if the program can't run without what
/// is missing. There are no dictionary files yet, so there is nothing that could be missing.
[[nodiscard]] bool openDictionaries(QString &errorText);

/// The text for \a sourceText in the current language; \a sourceText itself where no dictionary has it.
[[nodiscard]] QString translate(const QString &sourceText);

/// The message dictionary's text for \a number in the current language; "*** number ***" where it has none.
[[nodiscard]] QString messageText(int number);

/// The symbol of the message dictionary's text \a number; null where it has none.
[[nodiscard]] QString messageSymbol(int number);

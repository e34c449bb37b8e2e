#pragma once

#include <QString>

// The two dictionaries of the process: that of the GUI, whose texts are known by their source texts, and that of the
// messages, whose texts have numbers. Each function may be called before main() and before the dictionaries are open.

/// Opens both. Returns false, with the path and the reason in \a errorText, if the message dictionary can't be used,
/// without which a program can't run. Without that of the GUI it speaks the language of its source texts. Main thread,
/// before there is another.
[[nodiscard]] bool openDictionaries(QString &errorText);

/// The highest text number of the GUI dictionary.
[[nodiscard]] qint32 guiTextCount();

/// The text for \a sourceText in the current language; \a sourceText itself where the dictionary doesn't have it. Main
/// thread.
[[nodiscard]] QString translate(const QString &sourceText);

/// The same for other threads: neither the text nor that it isn't known is remembered, and "..." at the end is part of
/// the text. Any thread.
[[nodiscard]] QString guiTranslation(const QString &sourceText);

/// Whether the GUI dictionary has \a sourceText. Any thread.
[[nodiscard]] bool guiHasSourceText(const QString &sourceText);

/// The source text for \a number in the GUI dictionary; empty where the number isn't in use. Any thread.
[[nodiscard]] QString guiSourceText(qint32 number);

/// The GUI dictionary's text; "*** number ***" where it has none. Any thread.
[[nodiscard]] QString guiText(qint32 number, qint32 language);

/// Whether the GUI dictionary has a text of the language's own, see s3Dictionary::hasText(). Any thread.
[[nodiscard]] bool guiHasText(qint32 number, qint32 language);

/// The message dictionary's text for \a number, in the current language unless it is given, with the short name of the
/// product; "*** number ***" where it has none. Any thread.
[[nodiscard]] QString messageText(qint32 number);
[[nodiscard]] QString messageText(qint32 number, qint32 language);

/// The symbol of the message dictionary's text \a number; null where there is no such number. Any thread.
[[nodiscard]] QString messageSymbol(qint32 number);

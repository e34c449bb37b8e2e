#pragma once

#include <QString>
#include <QStringList>

class QLocale;

// The table of the languages that the system can speak, and the current one. The ERP names a language by a letter; its
// index, the place in the order of all letters, is also the column of its texts in the dictionary files. The digits 1
// to 3 are letters too: languages of the customer's own ("individual" ones).
//
// All of it works before main(). What only reads may be called from any thread unless its comment says otherwise, as
// long as nobody changes the language or an individual one; that is for the main thread, near the start. Nothing fails
// but by its result.

/// The letters in the order of their indexes, a text of one character each.
[[nodiscard]] QStringList languageLetters();

[[nodiscard]] qint32 languageCount();

/// The index of \a letter, in any case; -1 if it is no language.
[[nodiscard]] qint32 indexOfLetter(const QString &letter);

/// Empty for an \a index without a language.
[[nodiscard]] QString letterAt(qint32 index);

/// That of German, 0, until a language has been set.
[[nodiscard]] qint32 currentLanguageIndex();
[[nodiscard]] QString currentLetter();

/// The ISO code, such as "en" or "en-US". An individual language has the one that it was given, or else its letter.
/// Empty for no language.
[[nodiscard]] QString isoCode(const QString &letter);
[[nodiscard]] QString isoCode(qint32 index);
[[nodiscard]] QString currentIsoCode();

/// What QLocale is asked for: "de_DE". For an individual language without an ISO code it is the digit.
[[nodiscard]] QString currentLocaleName();

/// Makes the language with \a letter, in any case, current, and sets the default QLocale, unless there is none for the
/// language, and the application's layout direction. \a isoCodeForIndividual counts only for an individual language;
/// an empty one leaves what it had. Returns false, and changes nothing, for a letter that is no language. Main thread;
/// an application that is there already has to be a QGuiApplication.
bool setLanguage(const QString &letter, const QString &isoCodeForIndividual);

/// The letter for a \a text that is, in any case, a letter, an ISO code, or what letterForDisplayName() knows. Empty if
/// it is none.
[[nodiscard]] QString letterForText(const QString &text);

/// letterForText() of each part between the white space of \a text, without those that are no language.
[[nodiscard]] QStringList lettersForTexts(const QString &text);

/// By language and territory, else by the language alone. Empty for the C locale and for a language that isn't here.
[[nodiscard]] QString letterForLocale(const QLocale &locale);

/// The letter for a language's name, in any case: that of an individual one, or the name in any language of the message
/// dictionary. Empty if it is none.
[[nodiscard]] QString letterForDisplayName(const QString &text);

/// The name to show to the user, in the current language. It is the message dictionary's placeholder where that has
/// none, and empty for no language.
[[nodiscard]] QString displayName(const QString &letter);

/// Looks it up only when the current letter has changed, not when an individual language gets another name. Main
/// thread.
[[nodiscard]] QString currentDisplayName();

/// The letter and "/"; empty for "D", exactly so, unless forceSubdirectory() is set.
[[nodiscard]] QString dictionarySubdirectory(const QString &letter);
[[nodiscard]] QString currentDictionarySubdirectory();
[[nodiscard]] bool forceSubdirectory();
void setForceSubdirectory(bool force);

[[nodiscard]] bool isIndividual(const QString &letter);
[[nodiscard]] bool isIndividual(qint32 index);
[[nodiscard]] bool isCurrentIndividual();

/// The name and the ISO code of an individual language; its letter where it was given no code. Empty for any other
/// language. Setting them returns false, and changes nothing, for an empty value or another language.
[[nodiscard]] QString individualName(const QString &letter);
bool setIndividualName(const QString &letter, const QString &name);
[[nodiscard]] QString individualIsoCode(const QString &letter);
bool setIndividualIsoCode(const QString &letter, const QString &code);

/// Whether the current language is written from right to left. Test flag 229 says so for each.
[[nodiscard]] bool isRightToLeft();

/// How the current language is written: the value and the name of a QFontDatabase::WritingSystem, the name and the
/// number of a Windows character set. For an individual language these are 0, nothing, nothing and 1, the default
/// character set.
[[nodiscard]] qint32 writingSystem();
[[nodiscard]] QString writingSystemName();
[[nodiscard]] QString charsetName();
[[nodiscard]] qint32 charsetNumber();

/// The value of an Accept-Language header, such as "de,en-US;q=0.9,en;q=0.8".
[[nodiscard]] QString acceptLanguage();

/// The message dictionary's word for yes or no, in the language that was current when the word was first asked for.
[[nodiscard]] QString yesText(bool yes);

/// Whether \a text is, to the case, the word for yes.
[[nodiscard]] bool isYesText(const QString &text);

/// Sets the language at the start of a program: the letter \a first, else the letter \a second, else what \a third
/// means to letterForText() or, if it means nothing, \a locale, else "A". Returns the letters that are to be the user's
/// when he has none yet, that is, when \a first is empty: that for \a third or \a locale in front of "D". Main thread.
QStringList chooseLanguage(const QString &first, const QString &second, const QString &third, const QLocale &locale);

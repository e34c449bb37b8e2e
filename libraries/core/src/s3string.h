#pragma once

#include <QString>
#include <QStringList>

#include <concepts>

class QByteArray;
class QColor;
class QModelIndex;
class QPoint;
class QRect;
class QSize;

/// The core's text helpers. Free functions without state; unless its comment says otherwise, each may be called from
/// any thread, and none throws or shows a box. Positions and lengths count UTF-16 units. Functions that take a `QString
/// &` change it in place.
namespace s3String {

// Environment and message references

/// Replaces `%NAME%`, then `${NAME}`, by the environment's values. A name that isn't in the environment leaves its
/// reference as it is. Names are matched as the platform's environment matches them. A value that holds a reference of
/// the first form brings in no more than what the text refers to as well. Test flag 277 switches the expansion off, 276
/// traces it.
void expandEnvironmentStrings(QString &text);

/// Replaces `Xmsg(number)` and `Xmsg(number,"text")` by the message dictionary's text for the number with \a asText, by
/// its symbol in parentheses without. A number that is 0 or can't be read leaves its reference. Returns how many were
/// replaced. Every "Xmsg(" has to have its right parenthesis: the first without one ends the scan. Main thread.
int expandMessageReferences(QString &text, bool asText);

// Booleans and numbers

/// True for "true" in any case with white space around it, and for a whole decimal number of 32 bits
/// other than 0.
[[nodiscard]] bool toBool(const QString &text);

/// "true" or "false".
[[nodiscard]] QString fromBool(bool value);

/// The number in \a text, 0 where it is none. \a groupSeparator is dropped wherever it stands; either separator may be
/// empty.
[[nodiscard]] double toDouble(const QString &text, const QString &decimalSeparator, const QString &groupSeparator);

/// \a value with at most \a decimals decimals (trailing zeros disappear), and with \a groupSeparator between the
/// thousands unless that is empty.
[[nodiscard]] QString formatNumber(double value, int decimals, const QString &decimalSeparator,
                                   const QString &groupSeparator);

/// QString::number().
template<std::integral T>
[[nodiscard]] QString number(T value, int base = 10)
{
    return QString::number(value, base);
}

/// \a value in lower-case hexadecimal digits, filled up with "0" to \a width and never cut; a width of 0 means 16. With
/// \a prefix, "0x" stands in front and doesn't count.
[[nodiscard]] QString toHex(quint64 value, int width, bool prefix);

// How values look in traces and logs

/// "(x, y)"
[[nodiscard]] QString fromPoint(const QPoint &point);

/// "(width x height)"
[[nodiscard]] QString fromSize(const QSize &size);

/// "((left, top), (right, bottom), (width x height))", right and bottom as QRect has them.
[[nodiscard]] QString fromRect(const QRect &rectangle);

/// "(row, column)"
[[nodiscard]] QString fromModelIndex(const QModelIndex &index);

/// "#rrggbb", with ", 0xaa" behind it unless opaque; "invalid", and nothing for the transparent black.
[[nodiscard]] QString fromColor(const QColor &color);

/// `{ "a", "b" }`, "{ }" when empty. Nothing is escaped.
[[nodiscard]] QString fromStringList(const QStringList &list);

/// "(text)"
[[nodiscard]] QString inParentheses(const QString &text);

/// \a text between double quotation marks. Nothing is escaped.
[[nodiscard]] QString quoted(const QString &text);

/// What stands between the double quotation marks at both ends; \a text where they aren't there.
[[nodiscard]] QString unquoted(const QString &text);

// Line ends and lines

/// Removes every carriage return, and replaces each line feed.
void replaceLineEnds(QString &text, const QString &replacement);

/// Copies with the line ends "\r\n", "\n" and ";".
[[nodiscard]] QString withCrLf(const QString &text);
[[nodiscard]] QString withLf(const QString &text);
[[nodiscard]] QString withSemicolons(const QString &text);

/// Removes one line end from the end of \a text, together with the ASCII white space behind it.
void removeTrailingLineEnd(QString &text);

/// 0 for an empty text, otherwise 1 more than there are line feeds.
[[nodiscard]] qsizetype lineCount(const QString &text);

/// The length of the longest line; both "\r" and "\n" end one.
[[nodiscard]] qsizetype longestLine(const QString &text);

/// The lines \a first to \a last, counted from 1, with "\n" between them and, with \a keepLineEnd, behind the last one
/// unless that is empty. Where
/// there is no line \a first, the text is taken from its start.
[[nodiscard]] QString lines(const QString &text, qsizetype first, qsizetype last, bool keepLineEnd);

// Affixes and trimming

/// Removes \a prefix if \a text starts with it, and tells whether it did. An empty prefix is never there.
bool removePrefix(QString &text, const QString &prefix, Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive);
bool removePrefix(QString &text, QChar prefix);
bool removePrefix(QString &text, QChar prefix, Qt::CaseSensitivity caseSensitivity);

/// The same with the first of \a prefixes that \a text starts with.
bool removePrefix(QString &text, const QStringList &prefixes, Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive);

/// Remove every \a character at the start, at the end, and at both.
void trimLeft(QString &text, QChar character);
void trimRight(QString &text, QChar character);
void trim(QString &text, QChar character);

/// trim() with a blank, which no other white space is.
void trimBlanks(QString &text);

// Paths and escapes

/// Each "/" becomes "\".
[[nodiscard]] QString toBackslashes(const QString &text);
void toBackslashes(QString &text);

/// Each "\" becomes "/". Every path passes through this before Qt sees it.
[[nodiscard]] QString toSlashes(const QString &text);

/// Each "\" becomes two.
[[nodiscard]] QString doubleBackslashes(const QString &text);

/// Percent-encodes the UTF-8 form, but for letters, digits and "-._~". The first leaves "!/()*':%" too, so that text
/// that has been encoded before passes through whole.
[[nodiscard]] QString percentEncodeKeepingPercent(const QString &text);
[[nodiscard]] QString percentEncode(const QString &text);

/// Undoes percentEncode(), and makes blanks of "+". A "%" without two hexadecimal digits behind it stays. What is no
/// UTF-8 becomes U+FFFD, and a mark U+FEFF at the start is lost.
[[nodiscard]] QString percentDecode(const QString &text);

/// Each UTF-16 unit that isn't printable (a half of a surrogate pair isn't) becomes "\" and its code in at least three
/// decimal digits; tab, line feed and carriage return stay.
[[nodiscard]] QString escapeNonPrintable(const QString &text);

/// Removes the marks of keyboard shortcuts: "&&" becomes "&", and any other "&" disappears unless it is the last.
void removeMnemonics(QString &text);

/// The character behind the first single "&"; null if there is none.
[[nodiscard]] QChar mnemonic(const QString &text);

/// At most \a width characters of \a text, three of them "..." in place of what is missing (in the middle of a path, at
/// the end of any other text) unless \a width is 3 or less. 0 and less means any width.
[[nodiscard]] QString elide(const QString &text, int width);

/// Each "vexa ERP" becomes "Vexa".
void replaceProductName(QString &text);

// Search

/// The place of the \a n-th \a c from \a from; -1 if \a n is less than 1 or there are too few.
[[nodiscard]] qsizetype nthIndexOf(const QString &text, QChar c, int n, qsizetype from = 0,
                                   Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive);

/// The part number \a index, counted from 0, of what \a separator separates; empty where there is no such part.
[[nodiscard]] QString section(const QString &text, QChar separator, int index,
                              Qt::CaseSensitivity caseSensitivity = Qt::CaseSensitive);

/// The first place of \a word at or behind \a from, -1 if there is none. With \a wholeWord, one without word characters
/// around it. But where the word does stand in the text, and nowhere as a whole one, its last place is the result: look
/// at what stands around it where that matters.
[[nodiscard]] qsizetype findWord(const QString &text, const QString &word, qsizetype from, bool caseSensitive,
                                 bool wholeWord);

/// What stands between the white space of \a text, without empty parts.
[[nodiscard]] QStringList splitAtBlanks(const QString &text);

/// Whether \a text consists of white space; an empty one does.
[[nodiscard]] bool isBlank(const QString &text);

/// A letter, a number, a mark or "_".
[[nodiscard]] bool isWordChar(QChar c);

/// A character below 32 that has no business in a text: all but the null character, 9, 10, 11, 13, 16, 19, 24 and 31.
[[nodiscard]] bool isControlChar(QChar c);

/// Whether there are only bytes below 128 up to the terminating zero; false for a null pointer.
[[nodiscard]] bool isAscii(const char *text);

/// A number for \a text, the same in each run and on each machine. Not for what an attacker may choose.
[[nodiscard]] quint32 hash(const QString &text);

// The core's byte encoding: code page 850 with 28 positions changed. Other characters are a byte 255 and their UTF-8.

/// U+FEFF gives nothing, and half of a surrogate pair "?".
[[nodiscard]] QByteArray toByteText(const QString &text);

/// Reads up to the terminating zero; a null pointer gives an empty text, and broken UTF-8 what QString::fromUtf8()
/// does.
[[nodiscard]] QString fromByteText(const char *bytes);

} // namespace s3String

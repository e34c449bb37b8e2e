#pragma once

#include <QString>

/// \a text for those who show it as it stands: what Qt's boxes take for HTML without its tags, comments and what isn't
/// seen (style, script and title), with a line for each block, and with what is meant by the references lt, gt, amp,
/// quot, apos, nbsp and those by number; other text with "\n" as its line ends. No null characters. Made by hand, since
/// a QTextDocument asks for fonts. Any thread.
[[nodiscard]] QString s3ReadableText(const QString &text);

/// The start of \a text, with "[...]" below it, if it has more lines or characters than a box on a small screen has
/// room for.
[[nodiscard]] QString s3ShortenedText(const QString &text);

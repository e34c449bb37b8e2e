#pragma once

#include <QString>

// Conversions between the two forms that the text of a mail has. Any thread.

[[nodiscard]] QString plainTextToHtml(const QString &text);
[[nodiscard]] QString htmlToPlainText(const QString &html);

/// The text of an html file: by byte order mark or the file's own declaration, else UTF-8 where it is valid, else
/// Latin-1.
[[nodiscard]] QString decodeHtmlFile(const QByteArray &bytes);

/// \a inserted in front of \a existing, as one document where both are whole documents.
[[nodiscard]] QString insertHtml(const QString &inserted, const QString &existing);

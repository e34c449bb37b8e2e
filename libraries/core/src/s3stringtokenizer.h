#pragma once

#include <QRegularExpression>
#include <QString>

/// Splits a text at delimiters, which may be others for each token. The delimiters go into the character class of a
/// regular expression as they stand, so "]", "\", "^" and "-" are pattern syntax; where that makes no valid pattern
/// there is no token. One object belongs to one thread.
class s3StringTokenizer
{
public:
    /// With \a trim, blanks are removed from both ends of the tokens that nextToken() without arguments gives.
    s3StringTokenizer(const QString &text, const QString &delimiters, bool trim);

    /// The next token, empty when there is none left, but also where trimming leaves nothing of one. Valid until the
    /// next call.
    const QString &nextToken();

    /// The same with other delimiters for this one token; empty ones mean those of the object.
    const QString &nextToken(const QString &delimiters, bool trim);

    /// All that follows, from the first character that is no delimiter. The position stays.
    const QString &rest(bool trim);

    /// What the last call has given.
    [[nodiscard]] const QString &token() const { return m_token; }

private:
    [[nodiscard]] static QRegularExpression tokenPattern(const QString &delimiters);
    [[nodiscard]] static QRegularExpression delimiterPattern(const QString &delimiters);

    const QString &readToken(const QRegularExpression &tokenPattern, const QRegularExpression &delimiterPattern,
                             bool trim);
    [[nodiscard]] qsizetype find(const QRegularExpression &pattern, qsizetype from) const;
    void setToken(qsizetype begin, qsizetype end, bool trim);

    QString m_text;
    QString m_token;
    qint64 m_position = 0;
    bool m_trim = false;
    QRegularExpression m_tokenPattern;
    QRegularExpression m_delimiterPattern;
    QString m_subject; // the text, with U+FFFD for each unpaired surrogate: patterns match only what is well-formed
};

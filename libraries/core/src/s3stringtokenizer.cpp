#include "s3stringtokenizer.h"

#include "s3string.h"
#include "s3wellformed.h"

using namespace Qt::Literals::StringLiterals;

s3StringTokenizer::s3StringTokenizer(const QString &text, const QString &delimiters, bool trim)
    : m_text(text)
    , m_trim(trim)
    , m_tokenPattern(tokenPattern(delimiters))
    , m_delimiterPattern(delimiterPattern(delimiters))
    , m_subject(s3WellFormed(text))
{
}

const QString &s3StringTokenizer::nextToken()
{
    return readToken(m_tokenPattern, m_delimiterPattern, m_trim);
}

const QString &s3StringTokenizer::nextToken(const QString &delimiters, bool trim)
{
    if (delimiters.isEmpty())
        return readToken(m_tokenPattern, m_delimiterPattern, trim);
    return readToken(tokenPattern(delimiters), delimiterPattern(delimiters), trim);
}

const QString &s3StringTokenizer::rest(bool trim)
{
    m_token.clear();
    const qsizetype start = find(m_tokenPattern, m_position);
    if (start >= 0)
        setToken(start, m_text.size(), trim);
    return m_token;
}

QRegularExpression s3StringTokenizer::tokenPattern(const QString &delimiters)
{
    return QRegularExpression(u"[^%1]"_s.arg(delimiters));
}

QRegularExpression s3StringTokenizer::delimiterPattern(const QString &delimiters)
{
    return QRegularExpression(u"[%1]"_s.arg(delimiters));
}

const QString &s3StringTokenizer::readToken(const QRegularExpression &tokenPattern,
                                            const QRegularExpression &delimiterPattern, bool trim)
{
    m_token.clear();
    if (m_position >= m_text.size())
        return m_token;
    const qsizetype start = find(tokenPattern, m_position);
    const qsizetype delimiter = start < 0 ? -1 : find(delimiterPattern, start);
    const qsizetype end = delimiter < 0 ? m_text.size() : delimiter;
    if (start < 0 || end <= start) {
        m_position = m_text.size();
        return m_token;
    }
    setToken(start, end, trim);
    m_position = end;
    return m_token;
}

qsizetype s3StringTokenizer::find(const QRegularExpression &pattern, qsizetype from) const
{
    if (!pattern.isValid()) // matching it would write a warning into the log
        return -1;
    // The subject is known to be well-formed. The check is one of all that follows, for each token anew.
    const auto option = s3SplitsPair(m_subject, from) ? QRegularExpression::NoMatchOption
                                                      : QRegularExpression::DontCheckSubjectStringMatchOption;
    return pattern.match(m_subject, from, QRegularExpression::NormalMatch, option).capturedStart();
}

void s3StringTokenizer::setToken(qsizetype begin, qsizetype end, bool trim)
{
    m_token = m_text.sliced(begin, end - begin);
    if (trim)
        s3String::trimBlanks(m_token);
}

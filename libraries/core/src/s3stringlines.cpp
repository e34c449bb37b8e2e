#include "s3replaceall.h"
#include "s3string.h"

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

QString withLineEnds(QString text, const QString &lineEnd)
{
    s3String::replaceLineEnds(text, lineEnd);
    return text;
}

/// What "\s" of a regular expression matches.
bool isAsciiSpace(QChar c)
{
    return c == u' ' || (c >= u'\t' && c <= u'\r');
}

} // namespace

void s3String::replaceLineEnds(QString &text, const QString &replacement)
{
    text.remove(u'\r');
    if (replacement.isEmpty())
        text.remove(u'\n');
    else if (replacement != u"\n")
        text = s3ReplaceAll(text, u"\n", replacement);
}

QString s3String::withCrLf(const QString &text)
{
    return withLineEnds(text, u"\r\n"_s);
}

QString s3String::withLf(const QString &text)
{
    return withLineEnds(text, u"\n"_s);
}

QString s3String::withSemicolons(const QString &text)
{
    return withLineEnds(text, u";"_s);
}

void s3String::removeTrailingLineEnd(QString &text)
{
    // What the pattern (\r*\n[^\S\n]*)\z matches. The pattern itself would be tried at every carriage return and every
    // line end of a long text, each time over all that follows.
    const auto behindBlanks =
        std::find_if(text.crbegin(), text.crend(), [](QChar c) { return c == u'\n' || !isAsciiSpace(c); });
    if (behindBlanks == text.crend() || *behindBlanks != u'\n')
        return;
    const auto kept = std::find_if(behindBlanks + 1, text.crend(), [](QChar c) { return c != u'\r'; });
    text.truncate(text.crend() - kept);
}

qsizetype s3String::lineCount(const QString &text)
{
    return text.isEmpty() ? 0 : text.count(u'\n') + 1;
}

qsizetype s3String::longestLine(const QString &text)
{
    qsizetype longest = 0;
    qsizetype length = 0;
    for (const QChar c : text) {
        length = c == u'\r' || c == u'\n' ? 0 : length + 1;
        longest = std::max(longest, length);
    }
    return longest;
}

QString s3String::lines(const QString &text, qsizetype first, qsizetype last, bool keepLineEnd)
{
    if (last < first)
        return {};

    qsizetype start = 0;
    qsizetype end = text.size() - 1;
    qsizetype line = 1;
    for (qsizetype lineEnd = text.indexOf(u'\n'); lineEnd >= 0; lineEnd = text.indexOf(u'\n', lineEnd + 1)) {
        if (line >= last) {
            end = lineEnd - 1;
            break;
        }
        ++line;
        if (line == first)
            start = lineEnd + 1;
    }
    if (end < start)
        return {};

    QString result = text.sliced(start, end - start + 1);
    if (keepLineEnd && !result.endsWith(u'\n'))
        result += u'\n';
    return withLf(result);
}

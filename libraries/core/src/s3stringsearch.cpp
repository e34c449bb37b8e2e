#include "s3string.h"

#include "s3wellformed.h"

#include <QRegularExpression>

#include <algorithm>
#include <bit>

using namespace Qt::Literals::StringLiterals;

namespace {

bool isWholeWord(const QString &text, qsizetype begin, qsizetype end)
{
    return (begin == 0 || !s3String::isWordChar(text.at(begin - 1))) &&
           (end == text.size() || !s3String::isWordChar(text.at(end)));
}

} // namespace

qsizetype s3String::nthIndexOf(const QString &text, QChar c, int n, qsizetype from, Qt::CaseSensitivity caseSensitivity)
{
    if (n < 1)
        return -1;
    qsizetype position = text.indexOf(c, from, caseSensitivity);
    for (int i = 1; i < n && position >= 0; ++i)
        position = text.indexOf(c, position + 1, caseSensitivity);
    return position;
}

QString s3String::section(const QString &text, QChar separator, int index, Qt::CaseSensitivity caseSensitivity)
{
    qsizetype begin = 0;
    if (index != 0) {
        begin = nthIndexOf(text, separator, index, 0, caseSensitivity) + 1;
        if (begin == 0)
            return {};
    }
    const qsizetype end = text.indexOf(separator, begin, caseSensitivity);
    return text.sliced(begin, (end < 0 ? text.size() : end) - begin);
}

qsizetype s3String::findWord(const QString &text, const QString &word, qsizetype from, bool caseSensitive,
                             bool wholeWord)
{
    if (text.isEmpty() || word.isEmpty())
        return -1;
    const Qt::CaseSensitivity caseSensitivity = caseSensitive ? Qt::CaseSensitive : Qt::CaseInsensitive;
    qsizetype refused = -1;
    for (qsizetype hit = text.indexOf(word, from, caseSensitivity); hit >= 0;
         hit = text.indexOf(word, hit + 1, caseSensitivity)) {
        if (!wholeWord || isWholeWord(text, hit, hit + word.size()))
            return hit;
        refused = hit;
    }
    return refused;
}

QStringList s3String::splitAtBlanks(const QString &text)
{
    static const QRegularExpression part(u"\\S+"_s);
    QStringList parts;
    QRegularExpressionMatchIterator matches = part.globalMatch(s3WellFormed(text));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        parts.append(text.sliced(match.capturedStart(), match.capturedLength()));
    }
    return parts;
}

bool s3String::isBlank(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.isSpace(); });
}

bool s3String::isWordChar(QChar c)
{
    return c.isLetterOrNumber() || c.isMark() || c == u'_';
}

bool s3String::isControlChar(QChar c)
{
    if (c.isPrint() || c.isNull())
        return false;
    constexpr QStringView passed = u"\x09\x0a\x0d\x0b\x10\x13\x1f";
    return c.unicode() < 32 && c.unicode() != 24 && !passed.contains(c);
}

bool s3String::isAscii(const char *text)
{
    if (text == nullptr)
        return false;
    while (*text != '\0' && static_cast<unsigned char>(*text) < 128)
        ++text;
    return *text == '\0';
}

quint32 s3String::hash(const QString &text)
{
    const qsizetype size = text.size();
    quint32 value = quint32(size);
    const auto mixIn = [&value](quint32 word) {
        value = word ^ std::rotl(value, 5);
    };
    for (qsizetype i = 0; i + 1 < size; i += 2)
        mixIn(text.at(i).unicode() | quint32(text.at(i + 1).unicode()) << 16);
    if (size % 2 != 0) {
        mixIn(text.back().unicode());
        mixIn(0); // the terminating null
    }
    return value;
}

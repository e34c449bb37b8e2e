#include "s3replaceall.h"
#include "s3string.h"

#include <QFileInfo>

#include <algorithm>

using namespace Qt::Literals::StringLiterals;

namespace {

/// -1 for a byte that is no hexadecimal digit.
int hexDigit(char byte)
{
    if (byte >= '0' && byte <= '9')
        return byte - '0';
    const char lower = char(byte | 0x20);
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

QByteArray percentDecoded(const QByteArray &encoded)
{
    QByteArray decoded(encoded.size(), Qt::Uninitialized);
    char *out = decoded.data();
    const char *const end = encoded.constData() + encoded.size();
    for (const char *in = encoded.constData(); in != end; ++in) {
        const bool complete = *in == '%' && end - in > 2;
        const int high = complete ? hexDigit(in[1]) : -1;
        const int low = complete ? hexDigit(in[2]) : -1;
        if (high >= 0 && low >= 0) {
            *out++ = char(high * 16 + low);
            in += 2;
        } else {
            *out++ = *in == '+' ? ' ' : *in;
        }
    }
    decoded.truncate(out - decoded.constData());
    return decoded;
}

bool needsEscape(QChar c)
{
    return !c.isPrint() && c != u'\t' && c != u'\n' && c != u'\r';
}

} // namespace

QString s3String::toBackslashes(const QString &text)
{
    QString result = text;
    toBackslashes(result);
    return result;
}

void s3String::toBackslashes(QString &text)
{
    text.replace(u'/', u'\\');
}

QString s3String::toSlashes(const QString &text)
{
    QString result = text;
    result.replace(u'\\', u'/');
    return result;
}

QString s3String::doubleBackslashes(const QString &text)
{
    return s3ReplaceAll(text, u"\\", u"\\\\");
}

QString s3String::percentEncodeKeepingPercent(const QString &text)
{
    const QByteArray encoded = text.toUtf8().toPercentEncoding("!/()*':"_ba);
    return s3ReplaceAll(QString::fromLatin1(encoded), u"%25", u"%");
}

QString s3String::percentEncode(const QString &text)
{
    return QString::fromLatin1(text.toUtf8().toPercentEncoding());
}

QString s3String::percentDecode(const QString &text)
{
    const QByteArray encoded = text.toUtf8();
    const QByteArray decoded = percentDecoded(encoded);
    return decoded == encoded ? text : QString::fromUtf8(decoded);
}

QString s3String::escapeNonPrintable(const QString &text)
{
    auto escaped = std::find_if(text.cbegin(), text.cend(), needsEscape);
    if (escaped == text.cend())
        return text;

    QString result;
    result.reserve(text.size());
    auto run = text.cbegin();
    while (escaped != text.cend()) {
        result.append(QStringView(run, escaped)).append(u'\\');
        result.append(QString::number(escaped->unicode()).rightJustified(3, u'0'));
        run = escaped + 1;
        escaped = std::find_if(run, text.cend(), needsEscape);
    }
    return result.append(QStringView(run, text.cend()));
}

void s3String::removeMnemonics(QString &text)
{
    qsizetype mark = text.indexOf(u'&');
    if (mark < 0)
        return;

    QString result;
    result.reserve(text.size());
    qsizetype copied = 0;
    while (mark >= 0 && mark + 1 < text.size()) {
        result.append(QStringView(text).sliced(copied, mark - copied));
        copied = mark + 1;
        mark = text.indexOf(u'&', copied + 1);
    }
    text = result.append(QStringView(text).sliced(copied));
}

QChar s3String::mnemonic(const QString &text)
{
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text.at(i) != u'&')
            continue;
        if (text.at(i + 1) != u'&')
            return text.at(i + 1);
        ++i;
    }
    return {};
}

QString s3String::elide(const QString &text, int width)
{
    const QString dots = u"..."_s;
    if (width <= 0 || text.size() <= width)
        return text;
    if (width <= dots.size())
        return text.first(width);

    const qsizetype kept = width - dots.size();
    if (QFileInfo(text).fileName() == text)
        return text.first(kept) + dots;
    return text.first((kept + 1) / 2) + dots + text.last(kept / 2);
}

void s3String::replaceProductName(QString &text)
{
    text = s3ReplaceAll(text, u"vexa ERP", u"Vexa");
}

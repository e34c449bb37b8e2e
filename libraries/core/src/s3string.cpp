#include "s3string.h"

#include "s3replaceall.h"

#include <QColor>
#include <QModelIndex>
#include <QPoint>
#include <QRect>
#include <QRegularExpression>
#include <QSize>

#include <algorithm>
#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

void insertGroupSeparators(QString &text, qsizetype decimalPoint, const QString &separator)
{
    const bool negative = text.startsWith(u'-');
    for (qsizetype position = decimalPoint - 3; position >= 1; position -= 3) {
        if (position > 1 || !negative)
            text.insert(position, separator);
    }
}

} // namespace

bool s3String::toBool(const QString &text)
{
    static const QRegularExpression trueWord(u"^\\s*true\\s*$"_s, QRegularExpression::CaseInsensitiveOption);
    return trueWord.match(text).hasMatch() || text.toInt() != 0;
}

QString s3String::fromBool(bool value)
{
    return value ? u"true"_s : u"false"_s;
}

double s3String::toDouble(const QString &text, const QString &decimalSeparator, const QString &groupSeparator)
{
    QString number = text;
    if (!groupSeparator.isEmpty())
        number = s3ReplaceAll(number, groupSeparator, {});
    if (!decimalSeparator.isEmpty())
        number = s3ReplaceAll(number, decimalSeparator, u".");
    return number.toDouble();
}

QString s3String::formatNumber(double value, int decimals, const QString &decimalSeparator,
                               const QString &groupSeparator)
{
    // A value such as 1.005 is held a hair below itself; without the guard it would be rounded down.
    constexpr double guard = 1e-10;
    QString text = QString::number(value + (value >= 0 ? guard : -guard), 'f', decimals);
    if (decimals > 0) {
        while (text.endsWith(u'0'))
            text.chop(1);
        while (text.endsWith(u'.'))
            text.chop(1);
    }

    const qsizetype point = text.indexOf(u'.');
    const qsizetype integerEnd = point < 0 ? text.size() : point;
    if (point >= 0)
        text.replace(point, 1, decimalSeparator);
    if (!groupSeparator.isEmpty() && std::abs(value) >= 1000)
        insertGroupSeparators(text, integerEnd, groupSeparator);
    return text;
}

QString s3String::toHex(quint64 value, int width, bool prefix)
{
    const QString digits = QString::number(value, 16).rightJustified(width == 0 ? 16 : width, u'0');
    return prefix ? u"0x"_s + digits : digits;
}

QString s3String::fromPoint(const QPoint &point)
{
    return u"(%1, %2)"_s.arg(point.x()).arg(point.y());
}

QString s3String::fromSize(const QSize &size)
{
    return u"(%1 x %2)"_s.arg(size.width()).arg(size.height());
}

QString s3String::fromRect(const QRect &rectangle)
{
    return u"(%1, %2, %3)"_s.arg(fromPoint(rectangle.topLeft()), fromPoint(rectangle.bottomRight()),
                                 fromSize(rectangle.size()));
}

QString s3String::fromModelIndex(const QModelIndex &index)
{
    return u"(%1, %2)"_s.arg(index.row()).arg(index.column());
}

QString s3String::fromColor(const QColor &color)
{
    if (!color.isValid())
        return u"invalid"_s;
    if (color == QColor(0, 0, 0, 0))
        return {};
    const QString name = color.name();
    return color.alpha() == 255 ? name : name + u", "_s + toHex(quint64(color.alpha()), 2, true);
}

QString s3String::fromStringList(const QStringList &list)
{
    return list.isEmpty() ? u"{ }"_s : u"{ "_s + quoted(list.join(u"\", \""_s)) + u" }"_s;
}

QString s3String::inParentheses(const QString &text)
{
    return u'(' + text + u')';
}

QString s3String::quoted(const QString &text)
{
    return u'"' + text + u'"';
}

QString s3String::unquoted(const QString &text)
{
    const bool isQuoted = text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"');
    return isQuoted ? text.sliced(1, text.size() - 2) : text;
}

bool s3String::removePrefix(QString &text, const QString &prefix, Qt::CaseSensitivity caseSensitivity)
{
    if (prefix.isEmpty() || !text.startsWith(prefix, caseSensitivity))
        return false;
    text.remove(0, prefix.size());
    return true;
}

bool s3String::removePrefix(QString &text, QChar prefix)
{
    return removePrefix(text, prefix, Qt::CaseSensitive);
}

bool s3String::removePrefix(QString &text, QChar prefix, Qt::CaseSensitivity caseSensitivity)
{
    return removePrefix(text, QString(prefix), caseSensitivity);
}

bool s3String::removePrefix(QString &text, const QStringList &prefixes, Qt::CaseSensitivity caseSensitivity)
{
    return std::any_of(prefixes.cbegin(), prefixes.cend(), [&text, caseSensitivity](const QString &prefix) {
        return removePrefix(text, prefix, caseSensitivity);
    });
}

void s3String::trimLeft(QString &text, QChar character)
{
    const auto isOther = [character](QChar c) {
        return c != character;
    };
    text.remove(0, std::find_if(text.cbegin(), text.cend(), isOther) - text.cbegin());
}

void s3String::trimRight(QString &text, QChar character)
{
    const auto isOther = [character](QChar c) {
        return c != character;
    };
    text.chop(std::find_if(text.crbegin(), text.crend(), isOther) - text.crbegin());
}

void s3String::trim(QString &text, QChar character)
{
    trimRight(text, character);
    trimLeft(text, character);
}

void s3String::trimBlanks(QString &text)
{
    trim(text, u' ');
}

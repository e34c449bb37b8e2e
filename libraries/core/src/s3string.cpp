#include "s3string.h"

#include <QProcessEnvironment>
#include <QRegularExpression>

#include <cmath>

using namespace Qt::Literals::StringLiterals;

namespace {

void expandReferences(QString &text, const QRegularExpression &pattern, const QProcessEnvironment &environment)
{
    // The matches are those of the text before this pass: a reference that a value brings in isn't expanded by it.
    QRegularExpressionMatchIterator matches = pattern.globalMatch(QString(text));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        const QString name = match.captured(2);
        if (environment.contains(name))
            text.replace(match.captured(1), environment.value(name), Qt::CaseSensitive);
    }
}

void insertGroupSeparators(QString &text, qsizetype decimalPoint, const QString &separator)
{
    const bool negative = text.startsWith(u'-');
    for (qsizetype position = decimalPoint - 3; position >= 1; position -= 3) {
        if (position > 1 || !negative)
            text.insert(position, separator);
    }
}

} // namespace

void s3String::expandEnvironmentStrings(QString &text)
{
    static const QRegularExpression percentPattern(uR"((\%([^\%]+)\%))"_s);
    static const QRegularExpression dollarPattern(uR"((\$\{([^\}]+)\}))"_s);

    const QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    expandReferences(text, percentPattern, environment);
    expandReferences(text, dollarPattern, environment);
}

QString s3String::formatNumber(double value, int decimals, const QString &decimalSeparator,
                               const QString &groupSeparator)
{
    // A value such as 0.125 may be held a hair below itself; without the guard it would be rounded down.
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

QString s3String::toSlashes(const QString &text)
{
    QString result = text;
    result.replace(u'\\', u'/');
    return result;
}
